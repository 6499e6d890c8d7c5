#!/usr/bin/env bash
# Starts Vantrel twice in one X session: the second start must hand over to the first and end,
# leaving one process and one calculator window, which keeps what was typed into it.
#
#   single-instance.sh VANTREL_BINARY
set -euo pipefail

binary=$1

source "$(dirname "$0")/calculator-session.sh"
start_calculator "$binary"
first=$pid
xdotool type --delay 20 '1+2'

timeout 10 "$binary" || { echo "the second start did not end by itself" >&2; exit 1; }

kill -0 "$first" || { echo "the first calculator ended" >&2; exit 1; }
windows=$(xdotool search --onlyvisible --name '^Vantrel$' | wc -l)
[ "$windows" -eq 1 ] || { echo "expected one calculator window, found $windows" >&2; exit 1; }
echo "second start handed over to the running calculator"
