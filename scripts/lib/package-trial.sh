# What scripts/check-package does with the packages in the clean root, on a desk (desk.sh). Sourced, not run.

packages_in_root() {
    in_root dpkg-query -W -f '${Package}\n'
}

expect() {
    local what=$1
    shift
    "$@" || die "not so: $what"
    say "$what"
}

expect_not() {
    local what=$1
    shift
    ! "$@" || die "not so: $what"
    say "$what"
}

has_qt() {
    packages_in_root | grep -qi '^libqt\|^qt'
}

agent_process() {
    in_root sh -c 'for exe in /proc/[0-9]*/exe; do
        case $(readlink "$exe") in /usr/bin/vantrel*) exe=${exe%/exe}; echo "${exe#/proc/}" ;; esac
    done'
}

agent_runs() {
    [[ -n $(agent_process) ]]
}

agent_is_gone() {
    ! agent_runs
}

end_agent() {
    kill "$(agent_process)"
    wait_until agent_is_gone || die 'the agent does not end'
}

in_session() {
    as_person DISPLAY="$DISPLAY" DBUS_SESSION_BUS_ADDRESS=unix:path=/tmp/session-bus "$@"
}

start_session_bus() {
    in_session dbus-daemon --session --address=unix:path=/tmp/session-bus --nofork 2>/dev/null &
    wait_until test -S "$clean_root/tmp/session-bus" || die 'no session bus'
}

settings_sum() {
    in_root sha256sum /home/person/.config/vantrel/defaults.sqlite3
}

# The package's file in a directory below build/package, as the clean root sees it.
file_of() {
    local file
    for file in "$package_directory/$1/$2"_*.deb; do
        printf '/packages/%s' "${file#"$package_directory/"}"
    done
}

try_install() {
    step 'Installing'
    apt_in_root update
    apt_in_root install "$(file_of deb vantrel)"
    expect 'vantrel is installed' in_root dpkg-query -W vantrel
    expect_not 'it needs no Qt' has_qt
    expect 'it starts and says its version' in_root vantrel --version
    local status=0
    in_root vantrel || status=$?
    expect 'without a display it ends with 1' test "$status" = 1
}

try_in_session() {
    step 'Using it in a session'
    apt_in_root install dbus-daemon desktop-file-utils libglib2.0-bin xdg-utils
    in_root useradd --create-home --uid 1000 person
    start_desk "$package_directory"
    start_session_bus
    to_first_display
    in_session vantrel &
    expect 'Hyper + D carries the pointer to the second display' wait_until pressing_reaches_second
    to_first_display
    in_session xdg-open vantrel://next
    expect 'xdg-open reaches the agent' wait_until pointer_is_on_second
    expect 'and there is one agent' test "$(agent_process | wc -w)" = 1
    end_agent

    to_first_display
    in_session gdbus call --session --dest org.vantrel.Vantrel --object-path /org/vantrel/Vantrel \
        --method org.freedesktop.Application.Open "['vantrel://next']" '{}'
    expect 'opening a URL on the bus starts the agent, which obeys it' wait_until pointer_is_on_second
    expect 'and the agent stays' agent_runs
    to_first_display
    expect 'with its hot keys' wait_until pressing_reaches_second
}

try_upgrade() {
    step "Upgrading, with the settings window and GNOME's extension"
    apt_in_root install "$(file_of next/deb vantrel)" "$(file_of next/deb vantrel-settings)" \
        "$(file_of next/deb vantrel-gnome-shell)"
    expect 'the next version is there' in_root dpkg-query -W vantrel vantrel-settings vantrel-gnome-shell
    expect 'the extension is where GNOME Shell looks for it' \
        in_root test -f /usr/share/gnome-shell/extensions/vantrel@vantrel.org/metadata.json
    expect_not 'it brings no GNOME Shell' in_root test -e /usr/bin/gnome-shell
    to_first_display
    expect 'the agent that runs goes on' wait_until pressing_reaches_second
    end_agent
    to_first_display
    # Where no agent runs it becomes one, and xdg-open waits for it.
    in_session xdg-open vantrel://next &
    expect 'xdg-open starts the next version, which obeys it' wait_until pointer_rests_on_second
    in_session vantrel
    expect 'a second start opens the menu' wait_until window_is_seen --name '^Vantrel menu$'
    xdotool key Down Down Down Down Down Return
    expect 'which opens the settings window' wait_until window_is_seen --name 'Vantrel Settings'
    end_agent
}

# A systemd for the person, as a login starts it; it looks for systemd as process 1 and wants a control group.
start_user_systemd() {
    mkdir -p "$clean_root/run/systemd/system" "$clean_root/run/user/1000" "$clean_root/sys/fs/cgroup"
    mount -t cgroup2 cgroup2 "$clean_root/sys/fs/cgroup"
    control_group=$(mktemp -d "$clean_root/sys/fs/cgroup/vantrel-trial.XXXXXX")
    chown -R 1000:1000 "$clean_root/run/user/1000" "$control_group"
    # A desktop's own target, which brings the one that the unit belongs to.
    mkdir -p "$clean_root/home/person/.config/systemd/user"
    printf '[Unit]\nBindsTo=graphical-session.target\nBefore=graphical-session.target\n' \
        >"$clean_root/home/person/.config/systemd/user/desktop-session.target"
    chown -R 1000:1000 "$clean_root/home/person/.config"
    (
        echo "$BASHPID" >"$control_group/cgroup.procs"
        in_login /lib/systemd/systemd --user
    ) >"$package_directory/systemd.log" 2>&1 &
    user_systemd=$!
    wait_until test -S "$clean_root/run/user/1000/systemd/private" || die 'no systemd for the person'
}

end_user_systemd() {
    in_login systemctl --user exit
    wait "$user_systemd" || true
    find "$control_group" -depth -type d -exec rmdir {} +
}

in_login() {
    as_person XDG_RUNTIME_DIR=/run/user/1000 "$@"
}

agent_is_another_than() {
    agent_runs && [[ $(agent_process) != "$1" ]]
}

unit_property() {
    in_login systemctl --user show --value --property "$1" vantrel
}

unit_has_failed() {
    [[ $(unit_property ActiveState) == failed ]]
}

try_login() {
    local process
    step 'Starting it at login'
    apt_in_root install systemd
    start_user_systemd
    in_login systemctl --user set-environment "DISPLAY=$DISPLAY"
    in_login systemctl --user start desktop-session.target
    expect_not 'it does not start unasked' agent_runs
    in_login systemctl --user enable --now vantrel 2>/dev/null
    expect 'enabled, it runs' wait_until agent_runs
    in_login systemctl --user stop graphical-session.target
    expect 'the end of the session ends it' wait_until agent_is_gone
    in_login systemctl --user start desktop-session.target
    expect 'the next session starts it' wait_until agent_runs
    to_first_display
    expect 'with its hot keys' wait_until pressing_reaches_second
    process=$(agent_process)
    kill -SEGV "$process"
    expect 'after a crash it comes back' wait_until agent_is_another_than "$process"
    to_first_display
    expect 'with its hot keys' wait_until pressing_reaches_second
    kill "$desk_process"
    expect 'without the X server it ends' wait_until unit_has_failed
    # Longer than the unit's own pause before a restart.
    sleep 3
    expect_not 'and stays away' agent_runs
    expect 'having been started again only after the crash' test "$(unit_property NRestarts)" = 1
    in_login systemctl --user disable vantrel 2>/dev/null
    end_user_systemd
}

try_removal() {
    local before
    step 'Removing and purging'
    before=$(settings_sum)
    apt_in_root remove vantrel-settings vantrel-gnome-shell vantrel
    expect_not 'nothing of it is left' has_files
    apt_in_root purge vantrel-settings vantrel-gnome-shell vantrel
    expect "the person's settings are as they were" test "$(settings_sum)" = "$before"
}

has_files() {
    in_root find / -xdev -path /home -prune -o -path /packages -prune -o -path '/var/lib/*' -prune -o \
        -iname '*vantrel*' -print | grep .
}

try_packages() {
    mount_clean_root
    # The X server runs outside of the root.
    mount --bind /tmp/.X11-unix "$clean_root/tmp/.X11-unix"
    mkdir -p "$clean_root/packages"
    mount --bind "$package_directory" "$clean_root/packages"
    try_install
    try_in_session
    try_upgrade
    try_login
    try_removal
}
