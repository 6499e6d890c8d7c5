# Sourced by the smoke tests with their arguments: runs the test again inside a fresh X server,
# then gives the calculator preferences and an instance socket of its own in the scratch folder
# $work, so that a copy the user runs meanwhile is neither read nor disturbed.
if [ -z "${VANTREL_X_SESSION:-}" ]; then
    export VANTREL_X_SESSION=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

work=$(mktemp -d)
export XDG_CONFIG_HOME=$work/config
export XDG_RUNTIME_DIR=$work/run
mkdir -m 700 "$XDG_RUNTIME_DIR"

# The ids of the windows on screen whose name matches $1, one a line, waiting up to $2 seconds
# (none by default) for one to appear. A window that closes while xdotool reads the window tree (a
# menu, a tool tip, a process that has just ended) makes it fail with BadWindow: that reading does
# not count, and it reads again.
find_windows() {
    local pattern=$1 appear_by=$((SECONDS + ${2:-0})) output
    local give_up=$((appear_by + 5))
    while [ "$SECONDS" -le "$give_up" ]; do
        output=$(xdotool search --onlyvisible --name "$pattern" 2>&1) || true
        if [[ $output != *"X Error"* ]]; then
            output=$(grep -E '^[0-9]+$' <<<"$output" || true)
            if [ -n "$output" ] || [ "$SECONDS" -ge "$appear_by" ]; then
                [ -z "$output" ] || echo "$output"
                return 0
            fi
        fi
        sleep 0.1
    done
}
