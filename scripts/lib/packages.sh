# Installs the Debian packages that a job needs and that are not there. Sourced, not run.

# The packages of the groups in packages.txt.
packages_of() {
    local group
    for group in "$@"; do
        sed -n "/^# $group\(:\|$\)/,/^$/p" "$repository_root/scripts/lib/packages.txt" | sed '/^#/d; /^$/d'
    done
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

    say "Installing what is missing $reason:"
    printf '    %s\n' "${missing[@]}"
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        die "this needs root. Run as root: apt-get install --no-install-recommends ${missing[*]}"
    fi
    local log
    log=$(mktemp)
    if ! as_root apt-get -q update >"$log" 2>&1 ||
        ! as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends \
            "${missing[@]}" >>"$log" 2>&1; then
        tail -n 30 "$log" >&2
        rm -f "$log"
        die 'the packages could not be installed'
    fi
    rm -f "$log"
}
