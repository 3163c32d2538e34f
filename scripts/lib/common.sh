# Shared by the scripts: where things are, and how they speak. Sourced, not run.

# Looked up before the directory changes: the script may be called by a name relative to where it is called from.
script_file=$(realpath "$0")
repository_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$repository_root" || exit

say() {
    printf '%s\n' "$*"
}

die() {
    printf '%s: %s\n' "$(basename "$script_file")" "$*" >&2
    exit 1
}

current_step=''

# Names the step that begins, with the seconds since the start.
step() {
    current_step=$1
    printf '\n=== %4d s  %s\n' "$SECONDS" "$current_step"
}

report_failure() {
    local status=$?
    if ((status != 0)) && [[ -n $current_step ]]; then
        printf '\n=== %4d s  FAILED: %s\n' "$SECONDS" "$current_step" >&2
    fi
}
trap report_failure EXIT

# The first line of a script's own usage comment to the first line that is no comment.
print_usage() {
    sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$script_file"
}
