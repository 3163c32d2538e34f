# Installs the Debian packages that a job needs and that are not there. Sourced, not run.

# The lines of the groups in packages.txt.
package_lines_of() {
    local group
    for group in "$@"; do
        sed -n "/^# $group\(:\|$\)/,/^$/p" "$repository_root/scripts/lib/packages.txt" | sed '/^#/d; /^$/d'
    done
}

# The packages of the groups in packages.txt.
packages_of() {
    package_lines_of "$@" | sed 's/ ?$//'
}

# Those of them that a release of Debian may be without.
dispensable_packages_of() {
    package_lines_of "$@" | sed -n 's/ ?$//p'
}

has_candidate() {
    # Not through a pipe, whose reader would end apt-cache early: that counts as a failure.
    [[ $(LC_ALL=C apt-cache policy "$1") == *'Candidate: '[^\(]* ]]
}

is_installed() {
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

as_root() {
    if ((EUID == 0)); then
        "$@"
    else
        sudo "$@"
    fi
}

# ensure_packages REASON GROUP...: nothing happens, and no network is touched, when all of them are there.
ensure_packages() {
    local reason=$1 package
    local -a missing=()
    shift
    if ! command -v dpkg-query >/dev/null; then
        say "This is not Debian, so nothing is installed. Needed $reason: $(packages_of "$@" | tr '\n' ' ')"
        return
    fi
    for package in $(packages_of "$@"); do
        is_installed "$package" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local log
    log=$(mktemp)
    if may_install; then
        as_root apt-get -q update >"$log" 2>&1 || fail_to_install "$log"
    fi
    leave_out_what_the_release_lacks "$(dispensable_packages_of "$@")"
    if ((${#missing[@]})); then
        say "Installing what is missing $reason:"
        printf '    %s\n' "${missing[@]}"
        may_install || die "this needs root. Run as root: apt-get install --no-install-recommends ${missing[*]}"
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends \
            "${missing[@]}" >>"$log" 2>&1 || fail_to_install "$log"
    fi
    rm -f "$log"
}

may_install() {
    ((EUID == 0)) || command -v sudo >/dev/null
}

fail_to_install() {
    tail -n 30 "$1" >&2
    rm -f "$1"
    die 'the packages could not be installed'
}

# Takes from the list "missing" of the caller what this release of Debian does not have.
leave_out_what_the_release_lacks() {
    local dispensable=$1 package
    local -a there=()
    for package in "${missing[@]}"; do
        if [[ $'\n'$dispensable$'\n' != *$'\n'"$package"$'\n'* ]] || has_candidate "$package"; then
            there+=("$package")
        else
            say "This release of Debian has no package $package: the tests that need it are skipped."
        fi
    done
    missing=("${there[@]}")
}
