# Sourced by the smoke tests: starts a fresh X server of the test's own ($x_server, for the test to
# stop), then gives the calculator preferences and an instance socket of its own in the scratch
# folder $work, so that a copy the user runs meanwhile is neither read nor disturbed.

# The server picks a free display itself and names it (-displayfd): two tests started together
# never share one, as they can with xvfb-run -a. It stays up when its last client goes (-noreset):
# while it would reset, a program started again could not connect.
x_ready=$(mktemp -u)
mkfifo "$x_ready"
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$x_ready" >/dev/null 2>&1 &
x_server=$!
read -r x_display <"$x_ready" || true
rm -f "$x_ready"
[ -n "$x_display" ] || { echo "no X server started" >&2; exit 1; }
export DISPLAY=:$x_display

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
