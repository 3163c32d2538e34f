# What has to do with Debian: its release, a copy of the sources, the packages. Sourced, not run.

package_directory=$repository_root/build/package

project_version() {
    sed -n 's/^project(Vantrel VERSION \([0-9.]*\).*/\1/p' "$repository_root/CMakeLists.txt"
}

# The code name of this machine's release; empty on other systems.
debian_release() {
    # shellcheck source=/dev/null
    (. /etc/os-release && [[ $ID == debian ]] && printf '%s' "${VERSION_CODENAME-}") || true
}

# export_tree DIRECTORY: the sources as they are now, without what was built of them.
export_tree() {
    rm -rf "$1"
    mkdir -p "$1"
    tar -c --exclude-vcs --exclude=./build --exclude='./build-*' --exclude=./.cache . | tar -x -C "$1"
}

# What debian/control says is needed to build. A compiler is there anyway and must not be named.
build_dependencies() {
    { echo 'debhelper-compat (= 13)' && packages_of build | grep -vx g++; } | paste -sd, | sed 's/,/, /g'
}

# write_changelog VERSION: the one entry that the tools want; what changed is in CHANGELOG.md.
write_changelog() {
    cat <<END
vantrel ($1) unstable; urgency=medium

  * Build of Vantrel $1. See CHANGELOG.md for what changed.

 -- $(sed -n 's/^Maintainer: //p' packaging/debian/control.in)  $(date -R)
END
}

# export_source DIRECTORY VERSION: the sources as they are now, with debian/ where the tools look for it.
export_source() {
    local directory=$1 version=$2
    export_tree "$directory"
    cp -r packaging/debian "$directory/debian"
    rm "$directory/debian/control.in"
    sed "s/@BUILD_DEPENDS@/$(build_dependencies)/" packaging/debian/control.in >"$directory/debian/control"
    write_changelog "$version" >"$directory/debian/changelog"
}

# build_packages OUTPUT VERSION: leaves the .deb files, and nothing else, in the directory.
build_packages() {
    local output=$1 version=$2 work=$package_directory/work
    rm -rf "$work" "$output"
    mkdir -p "$output"
    # A name without the version, so that the compiler cache knows the files again.
    export_source "$work/vantrel" "$version"
    (
        cd "$work/vantrel"
        # The compiler cache is found like any compiler; debhelper gives the build a home of its own.
        [[ ! -d /usr/lib/ccache ]] || PATH=/usr/lib/ccache:$PATH
        CCACHE_DIR=${CCACHE_DIR-$HOME/.cache/ccache} DEB_BUILD_OPTIONS=terse dpkg-buildpackage --build=binary --no-sign
    ) >"$work/log" 2>&1 || {
        tail -n 40 "$work/log" | cut -c 1-300 >&2
        return 1
    }
    mv "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$output"
    rm -rf "$work/vantrel"
}

# check_packages DIRECTORY: fails on anything that lintian has to say, remarks about style excepted. The packages are
# published nowhere, so nobody can be written to about them yet: that the maintainer's address is none is no news.
check_packages() {
    lintian --allow-root --tag-display-limit 0 --display-info --fail-on error,warning,info \
        --suppress-tags bogus-mail-host,bogus-mail-host-in-debian-changelog "$1"/*.changes
}
