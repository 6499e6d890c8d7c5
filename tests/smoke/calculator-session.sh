# Shared by the smoke tests: run the calling script inside a fresh Xvfb, and start the calculator
# there with preferences and an instance socket of its own, so a calculator the user runs
# meanwhile is neither read nor disturbed. Source it, then call start_calculator BINARY; it sets
# $work (a scratch folder), $pid and $window.

if [ -z "${VANTREL_SMOKE_DISPLAY:-}" ]; then
    export VANTREL_SMOKE_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config
export XDG_RUNTIME_DIR=$work/run
mkdir -m 700 "$XDG_RUNTIME_DIR"

start_calculator() {
    "$1" &
    pid=$!
    window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Vantrel$' | head -n 1)
    [ -n "$window" ] || { echo "the calculator window did not appear" >&2; exit 1; }
    # Without a window manager the keyboard follows the pointer: rest it on the window.
    xdotool mousemove --window "$window" 200 120
    sleep 0.3
}
