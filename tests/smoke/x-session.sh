# Sourced by the smoke tests: starts a fresh X server of the test's own ($x_server, which the test's
# exit trap stops), then gives the calculator preferences and an instance socket of its own in the
# scratch folder $work, so that a copy the user runs meanwhile is neither read nor disturbed.
work=$(mktemp -d)
# Until the test sets its own trap, which stops the server too.
trap 'kill ${x_server:-} 2>/dev/null || true; rm -rf "$work"' EXIT

# The server picks a free display itself and names it (-displayfd): two tests started together
# never share one, as they can with xvfb-run -a. It stays up when its last client goes (-noreset):
# while it would reset, a program started again could not connect. Only clients with this run's
# cookie get in; the server takes every cookie in its file, whatever display it is listed under.
cookie=$(mcookie)
touch "$work/server-auth" "$work/client-auth"
xauth -q -f "$work/server-auth" add :0 . "$cookie"
mkfifo "$work/x-ready"
Xvfb -displayfd 3 -auth "$work/server-auth" -screen 0 1024x768x24 -nolisten tcp -noreset \
    3>"$work/x-ready" >/dev/null 2>"$work/x-server.log" &
x_server=$!
read -r -t 20 x_display <"$work/x-ready" || true
[ -n "$x_display" ] || {
    echo "no X server started:" >&2
    cat "$work/x-server.log" >&2
    exit 1
}
export DISPLAY=:$x_display XAUTHORITY=$work/client-auth
xauth -q -f "$XAUTHORITY" add "$DISPLAY" . "$cookie"

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
