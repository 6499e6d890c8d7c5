#!/usr/bin/env bash
# Starts Vantrel twice in one X session: the second start must hand over to the first and end,
# leaving one process and one calculator window, which keeps what was typed into it.
#
#   single-instance.sh VANTREL_BINARY
set -euo pipefail

binary=$1

if [ -z "${VANTREL_SMOKE_DISPLAY:-}" ]; then
    export VANTREL_SMOKE_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

work=$(mktemp -d)
trap 'kill "$first" 2>/dev/null || true; rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config
# A socket name of its own, so a calculator the user runs meanwhile is not disturbed.
export USER="vantrel-smoke-$$"

"$binary" &
first=$!
window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Vantrel$' | head -n 1)
[ -n "$window" ] || { echo "the calculator window did not appear" >&2; exit 1; }
xdotool mousemove --window "$window" 200 120
xdotool type --delay 20 '1+2'

timeout 10 "$binary" || { echo "the second start did not end by itself" >&2; exit 1; }

kill -0 "$first" || { echo "the first calculator ended" >&2; exit 1; }
windows=$(xdotool search --onlyvisible --name '^Vantrel$' | wc -l)
[ "$windows" -eq 1 ] || { echo "expected one calculator window, found $windows" >&2; exit 1; }
echo "second start handed over to the running calculator"
