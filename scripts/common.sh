# For the scripts that source it.

# quietly WORDS COMMAND...: says in one line what happens. What the command itself says goes to a file, which is shown, and kept,
# when it fails.
quietly() {
    echo "$1" >&2
    shift
    quietly_log=$(mktemp)
    if "$@" > "$quietly_log" 2>&1; then
        rm -f "$quietly_log"
    else
        quietly_status=$?
        cat "$quietly_log" >&2
        echo "failed: $* (what it said is in $quietly_log)" >&2
        return "$quietly_status"
    fi
}

# need_root COMMAND: sets as_root to what runs a command as root. Without a way to, it prints the command that would have been
# run and ends the script.
need_root() {
    if [ "$(id -u)" -eq 0 ]; then
        as_root=
    elif command -v sudo > /dev/null; then
        as_root=sudo
    else
        printf '%s: this needs root, and there is no sudo. As root, run\n    %s\n' "$0" "$1" >&2
        exit 1
    fi
}
