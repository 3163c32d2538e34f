# A private desk with two displays side by side, and its keys. Sourced, not run.

# Asks until the command succeeds, for 20 s, or for the seconds in the variable patience.
wait_until() {
    local deadline=$((SECONDS + ${patience-20}))
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}

# start_desk DIRECTORY: sets DISPLAY and desk_process. Ends with the namespace, or by the caller.
start_desk() {
    local configuration=$1/xorg.conf number=$1/display
    cat >"$configuration" <<'END'
Section "Device"
    Identifier "Card"
    Driver "dummy"
    VideoRam 256000
EndSection
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
END
    : >"$number"
    # Without access control, because the agent runs as another person.
    /usr/lib/xorg/Xorg -displayfd 3 -config "$configuration" -logfile "$1/xorg.log" \
        -seat vantrel-private -noreset -nolisten tcp -ac 3>"$number" 2>/dev/null &
    desk_process=$!
    wait_until test -s "$number" || die 'no private X server'
    DISPLAY=:$(<"$number")
    export DISPLAY
    setxkbmap -rules evdev -model pc105 -layout us
    xrandr --newmode small 65 1024 1048 1184 1344 768 771 777 806
    xrandr --addmode DUMMY1 small
    xrandr --output DUMMY0 --mode 1024x768 --pos 0x0 --primary --output DUMMY1 --mode small --pos 1024x0
}

# The display that the pointer is on, by its left edge.
pointer_is_on_second() {
    local X=0
    eval "$(xdotool getmouselocation --shell 2>/dev/null)"
    ((X >= 1024))
}

pointer_is_on_first() {
    ! pointer_is_on_second
}

# A glide passes over what opens meanwhile, and whatever follows the pointer follows it.
pointer_rests_on_second() {
    local before
    before=$(xdotool getmouselocation 2>/dev/null)
    sleep 0.1
    pointer_is_on_second && [[ $(xdotool getmouselocation 2>/dev/null) == "$before" ]]
}

# Presses until the agent that is starting takes the key.
pressing_reaches_second() {
    xdotool key --clearmodifiers ctrl+alt+shift+super+d
    sleep 0.3
    pointer_is_on_second
}

to_first_display() {
    xdotool mousemove 500 400
}

# By xdotool's conditions, such as --name.
window_is_seen() {
    xdotool search --onlyvisible "$@" >/dev/null 2>&1
}

no_window_is_seen() {
    ! window_is_seen "$@"
}
