#!/usr/bin/env bash
# Starts the real calculator in a real X server, types an expression, finishes it with Return and
# takes a screenshot. Passes when the window appeared, the program is still running afterwards and
# the finished expression reached the preferences store.
#
#   window-smoke.sh VANTREL_BINARY SCREENSHOT.xwd
set -euo pipefail

binary=$1
screenshot=$2

if [ -z "${DISPLAY_FOR_SMOKE:-}" ]; then
    export DISPLAY_FOR_SMOKE=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

config=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$config"' EXIT
export XDG_CONFIG_HOME=$config

"$binary" &
pid=$!

window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Vantrel$' | head -n 1)
[ -n "$window" ] || { echo "the calculator window did not appear" >&2; exit 1; }

# Click into the expression field (below the top row of buttons), type, finish.
xdotool mousemove --window "$window" 120 47 click 1
xdotool type --delay 20 '01:00:00.00|25*2'
xdotool key Return
sleep 1
xwd -root -silent -out "$screenshot"

kill -0 "$pid" || { echo "the calculator is no longer running" >&2; exit 1; }
grep -q 'CalculatorExpressionHistory=01:00:00.00|25\*2' "$config/Glessik/Vantrel.conf" || {
    echo "the finished expression did not reach the preferences:" >&2
    cat "$config/Glessik/Vantrel.conf" >&2
    exit 1
}
echo "window shown, expression finished, screenshot in $screenshot"
