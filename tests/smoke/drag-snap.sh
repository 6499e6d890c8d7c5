#!/usr/bin/env bash
# Drags the height of the real calculator window with the pointer under a real window manager
# (openbox, which runs the drag itself), three rounds of three drags by the frame's bottom edge,
# and checks where each ends once released: from 252 to 300 snaps open to 317, to 400 stays,
# back to 265 snaps shut to 252.
#
#   drag-snap.sh VANTREL_BINARY
set -euo pipefail

binary=$1

. "$(dirname "$0")/x-session.sh"
trap 'kill ${pid:-} ${wm:-} "$x_server" 2>/dev/null || true; rm -rf "$work"' EXIT

openbox --config-file /etc/xdg/openbox/rc.xml >/dev/null 2>&1 &
wm=$!
sleep 1
"$binary" &
pid=$!
window=$(find_windows '^Vantrel$' 20 | head -n 1)
[ -n "$window" ] || { echo "the calculator window did not appear" >&2; exit 1; }
sleep 0.5

# The client area's place and size on the screen, as X sees it.
geometry() {
    xwininfo -id "$window" | awk '/Absolute upper-left X/ {x = $4} /Absolute upper-left Y/ {y = $4}
        /Width/ {w = $2} /Height/ {h = $2} END {print x, y, w, h}'
}

# Presses on the frame just below the client area, moves the pointer in steps, lets go, and
# waits for the height to settle.
drag_to() {
    local target=$1 x y w h
    read -r x y w h < <(geometry)
    local column=$((x + w / 2)) row=$((y + h + 3))
    xdotool mousemove "$column" "$row"
    sleep 0.2
    xdotool mousedown 1
    for step in 1 2 3 4 5 6; do
        xdotool mousemove "$column" $((row + (target - h) * step / 6))
        sleep 0.08
    done
    xdotool mouseup 1
    sleep 0.8
    read -r x y w h < <(geometry)
    echo "$h"
}

for round in 1 2 3; do
    for drag in "300 317" "400 400" "265 252"; do
        read -r target expected <<<"$drag"
        height=$(drag_to "$target")
        [ "$height" -eq "$expected" ] || {
            echo "round $round: a drag to $target ended at $height, not $expected" >&2
            exit 1
        }
    done
done
echo "three rounds of drags under openbox ended where they snap"
