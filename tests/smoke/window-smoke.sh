#!/usr/bin/env bash
# Starts the real calculator in a real X server and uses it from the keyboard alone: types an
# expression, finishes it with Return, opens and closes the history menu and presses Return again,
# switches the display with a menu shortcut, saves the log through File > Save Log (Ctrl+S), takes
# a screenshot and starts Vantrel a second time, then once more at twice the pixels. Passes when the
# window appeared and drew its pictures without an SVG renderer at both scales, the saved file holds
# the calculation line in Mac OS Roman, and the second start handed over to the first.
#
#   window-smoke.sh VANTREL_BINARY SCREENSHOT.xwd
set -euo pipefail

binary=$1
screenshot=$2

. "$(dirname "$0")/x-session.sh"
trap 'kill ${pid:-} "$x_server" 2>/dev/null || true; rm -rf "$work"' EXIT

"$binary" &
pid=$!
window=$(find_windows '^Vantrel$' 20 | head -n 1)
[ -n "$window" ] || { echo "the calculator window did not appear" >&2; exit 1; }
# Without a window manager the keyboard follows the pointer: rest it on the window.
xdotool mousemove --window "$window" 200 120
sleep 0.3

xdotool type --delay 20 '01:00:00.00|25*2'
xdotool key Return
sleep 0.6
# Its pictures were drawn while building: showing them loads no SVG renderer.
if grep -q libQt6Svg "/proc/$pid/maps"; then
    echo "the window loaded an SVG renderer to draw its pictures" >&2
    exit 1
fi
# A menu opened and closed between two Returns does not end the editing: the second Return logs
# nothing more.
xdotool key ctrl+r
sleep 0.4
xdotool key Escape
sleep 0.2
xdotool key Return
sleep 0.3
xdotool key ctrl+2
sleep 0.3
xdotool key ctrl+s
dialog=$(find_windows '^Save Log$' 20 | head -n 1)
[ -n "$dialog" ] || { echo "the save dialog did not appear" >&2; exit 1; }
xdotool mousemove --window "$dialog" 100 60
sleep 0.3
xdotool type --delay 10 "$work/session"
xdotool key Return
# The machine may be busy: give the write up to ten seconds.
for _ in $(seq 1 100); do [ -s "$work/session.txt" ] && break; sleep 0.1; done
xwd -root -silent -out "$screenshot"

kill -0 "$pid" || { echo "the calculator is no longer running" >&2; exit 1; }
expected='01:00:00.00|25*2 = 02:00:00.00|24 (PT)'
[ "$(cat "$work/session.txt" 2>/dev/null)" = "$expected" ] || {
    echo "the saved log does not hold the calculation:" >&2
    cat "$work/session.txt" >&2 || true
    exit 1
}
grep -q 'CalculatorExpressionHistory=01:00:00.00|25\*2' "$work/config/Glessik/Vantrel.conf"

# A second start hands over to the running calculator and ends, leaving one window.
timeout 10 "$binary" || { echo "the second start did not end by itself" >&2; exit 1; }
windows=$(find_windows '^Vantrel$' | wc -l)
kill -0 "$pid" && [ "$windows" -eq 1 ] || { echo "expected one calculator, found $windows" >&2; exit 1; }

# At two device pixels to a point, too, the pictures and the window icon were drawn while building.
kill "$pid"
wait "$pid" 2>/dev/null || true
QT_SCALE_FACTOR=2 "$binary" &
pid=$!
[ -n "$(find_windows '^Vantrel$' 20)" ] && kill -0 "$pid" || {
    echo "the calculator did not start again at twice the pixels" >&2
    exit 1
}
sleep 0.5
if grep -q libQt6Svg "/proc/$pid/maps"; then
    echo "at twice the pixels the window loaded an SVG renderer to draw its pictures" >&2
    exit 1
fi
echo "window used from the keyboard, log saved, screenshot in $screenshot"
