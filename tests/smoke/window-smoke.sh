#!/usr/bin/env bash
# Starts the real calculator in a real X server and uses it from the keyboard alone: types an
# expression, finishes it with Return, switches the display with a menu shortcut, saves the log
# through File > Save Log (Ctrl+S) and takes a screenshot. Passes when the window appeared, the
# program is still running, and the saved file holds the calculation line in Mac OS Roman.
#
#   window-smoke.sh VANTREL_BINARY SCREENSHOT.xwd
set -euo pipefail

binary=$1
screenshot=$2

if [ -z "${VANTREL_SMOKE_DISPLAY:-}" ]; then
    export VANTREL_SMOKE_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config
# A socket name of its own, so a calculator the user runs meanwhile is not disturbed.
export USER="vantrel-smoke-$$"

"$binary" &
pid=$!

window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Vantrel$' | head -n 1)
[ -n "$window" ] || { echo "the calculator window did not appear" >&2; exit 1; }

# Without a window manager the keyboard follows the pointer: rest it on the window.
xdotool mousemove --window "$window" 200 120
sleep 0.3
xdotool type --delay 20 '01:00:00.00|25*2'
xdotool key Return
sleep 0.6
xdotool key ctrl+2
sleep 0.3
xdotool key ctrl+s
sleep 1.5
xdotool type --delay 10 "$work/session"
xdotool key Return
sleep 1
xwd -root -silent -out "$screenshot"

kill -0 "$pid" || { echo "the calculator is no longer running" >&2; exit 1; }
expected='01:00:00.00|25*2 = 02:00:00.00|24 (PT)'
[ "$(cat "$work/session.txt" 2>/dev/null)" = "$expected" ] || {
    echo "the saved log does not hold the calculation:" >&2
    cat "$work/session.txt" >&2 || true
    exit 1
}
grep -q 'CalculatorExpressionHistory=01:00:00.00|25\*2' "$work/config/Glessik/Vantrel.conf"
echo "window used from the keyboard, log saved, screenshot in $screenshot"
