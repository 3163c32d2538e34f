# Brings the extension to the GNOME session that scripts/run starts the program in. Sourced, not run.

extension=vantrel@vantrel.org

# It stays after the run: GNOME looks for new ones at a login alone. Switching it on is left to the person.
bring_extension_to_gnome() {
    local source=extensions/gnome-shell/$extension changed=no removal
    local folder=${XDG_DATA_HOME:-$HOME/.local/share}/gnome-shell/extensions/$extension
    # Some desktops are GNOME in name alone.
    command -v gnome-shell >/dev/null || return 0
    if ! grep -q "\"$(gnome_version)\"" "$source/metadata.json"; then
        say "Its extension was not made for GNOME $(gnome_version), which lets no program move the pointer without one."
        return
    fi
    removal="gnome-extensions uninstall $extension"
    # Of the person's and a package's GNOME takes the person's.
    if [[ ! -e $folder ]] && has_extension_of_package; then
        removal=''
    elif ! diff -r "$source" "$folder" >/dev/null 2>&1; then
        rm -rf "$folder"
        mkdir -p "$(dirname "$folder")"
        cp -r "$source" "$folder"
        changed=yes
    fi

    if ! gnome_lists_extension; then
        say 'GNOME lets only an extension move the pointer, and learns of a new one at a login. Log out and in once, then:'
        say "    gnome-extensions enable $extension"
        # What GNOME does not know it cannot uninstall.
        removal=${removal:+"rm -r $(printf %q "$folder")"}
    elif ! gnome_lists_extension --enabled; then
        say "GNOME lets only an extension move the pointer, and Vantrel's is off. To switch it on:"
        say "    gnome-extensions enable $extension"
    elif [[ $changed == yes ]]; then
        say 'The extension in GNOME has changed: log out and in once.'
    fi
    [[ -z $removal ]] || say "The extension stays in $folder. To take it away: $removal"
}

# 48 for 48.7.
gnome_version() {
    gnome-shell --version | sed 's/^GNOME Shell \([0-9]*\).*/\1/'
}

has_extension_of_package() {
    local directory
    local -a directories
    IFS=: read -r -a directories <<<"${XDG_DATA_DIRS:-/usr/local/share:/usr/share}"
    for directory in "${directories[@]}"; do
        [[ ! -e $directory/gnome-shell/extensions/$extension ]] || return 0
    done
    return 1
}

# gnome_lists_extension [--enabled]: as the running shell has it.
gnome_lists_extension() {
    [[ $'\n'$(gnome-extensions list "$@" 2>/dev/null)$'\n' == *$'\n'"$extension"$'\n'* ]]
}
