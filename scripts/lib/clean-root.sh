# A Debian with nothing in it, to try things in. Sourced, not run. Needs root, and a mount namespace of its own for what is
# mounted. Its place is in the variable clean_root, which the script that sources this sets.

# make_clean_root SUITE: from the mirror of this machine's own apt.
make_clean_root() {
    local suite=$1 mirror
    mirror=$(mirror_of_this_machine)
    [[ -n $mirror ]] || die 'apt knows no mirror of Debian'
    rm -rf --one-file-system "$clean_root"
    mkdir -p "$clean_root"
    debootstrap --variant=minbase "$suite" "$clean_root" "$mirror" >"$clean_root.log" 2>&1 || {
        tail -n 20 "$clean_root.log" >&2
        return 1
    }
    if [[ $suite == "$(debian_release)" ]]; then
        use_apt_sources_of_this_machine
    fi
    cp -L /etc/resolv.conf "$clean_root/etc/resolv.conf"
    # Proxies and the like, but no hooks.
    apt-config dump | grep '^Acquire::' >"$clean_root/etc/apt/apt.conf.d/99host"
    printf '#!/bin/sh\nexit 101\n' >"$clean_root/usr/sbin/policy-rc.d"
    chmod +x "$clean_root/usr/sbin/policy-rc.d"
}

mirror_of_this_machine() {
    apt-get indextargets --format '$(REPO_URI)' \
        'Created-By: Packages' "Codename: $(debian_release)" 'Component: main' | head -n 1
}

use_apt_sources_of_this_machine() {
    local path
    rm -f "$clean_root/etc/apt/sources.list"
    for path in /etc/apt/sources.list /etc/apt/sources.list.d /etc/apt/keyrings /etc/apt/trusted.gpg.d \
        /usr/share/keyrings; do
        [[ ! -e $path ]] || cp -rL --no-target-directory "$path" "$clean_root$path"
    done
}

# Until the mount namespace ends.
mount_clean_root() {
    mount -t proc proc "$clean_root/proc"
    mount -t tmpfs tmpfs "$clean_root/tmp"
    mkdir "$clean_root/tmp/.X11-unix"
    chmod 1777 "$clean_root/tmp/.X11-unix"
}

in_root() {
    chroot "$clean_root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}

apt_in_root() {
    in_root apt-get -q -y --no-install-recommends "$@" >>"$clean_root.log" 2>&1 || {
        tail -n 30 "$clean_root.log" >&2
        return 1
    }
}

# as_person NAME=VALUE... COMMAND...: as somebody without rights, whose home the check of the packages made.
as_person() {
    in_root setpriv --reuid=1000 --regid=1000 --clear-groups /usr/bin/env HOME=/home/person USER=person "$@"
}
