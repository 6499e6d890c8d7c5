#!/usr/bin/env bash
# Measures, over several runs in a real X server (Xvfb), the time from starting the calculator to
# its window being on screen, and its resident memory after a few calculations. Prints each run
# and the medians. It measures only; it never fails on a slow figure.
#
#   bench/startup.sh [VANTREL_BINARY] [RUNS]     (defaults: build/bin/vantrel, 9)
set -euo pipefail

binary=${1:-build/bin/vantrel}
runs=${2:-9}

if [ -z "${VANTREL_BENCH_DISPLAY:-}" ]; then
    export VANTREL_BENCH_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$binary" "$runs"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config USER="vantrel-bench-$$"

now_ms() { date +%s%3N; }

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

for run in $(seq 1 "$runs"); do
    start=$(now_ms)
    "$binary" &
    pid=$!
    # Poll every few milliseconds: xdotool's own --sync waits in half-second steps.
    until window=$(xdotool search --onlyvisible --name '^Vantrel$' 2>/dev/null | head -n 1) &&
        [ -n "$window" ]; do
        sleep 0.005
    done
    shown=$(( $(now_ms) - start ))
    xdotool mousemove --window "$window" 200 120
    for expression in '01:00:10.12|25+00:00:05.00' '00:42:17.03|29d*3' '(1:00+0123)*4/2'; do
        xdotool type --delay 5 "$expression"
        xdotool key Return
    done
    sleep 0.5
    rss_kb=$(awk '/^VmRSS/ { print $2 }' "/proc/$pid/status")
    kill "$pid"
    wait "$pid" 2>/dev/null || true
    echo "run $run: window shown after $shown ms, resident memory $((rss_kb / 1024)) MB"
    echo "$shown" >>"$work/shown"
    echo "$rss_kb" >>"$work/rss"
done
echo "median: window shown after $(median <"$work/shown") ms," \
    "resident memory $(( $(median <"$work/rss" | cut -d. -f1) / 1024 )) MB"
