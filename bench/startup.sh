#!/usr/bin/env bash
# Starts each program in turn, several rounds interleaved, in a real X server (Xvfb), and measures
# the time from starting it to its window being on screen and its resident memory after a few
# calculations typed into it. Prints each run, then the medians side by side with the median of
# each round's ratio to the first program listed. It measures only; it never fails on a slow
# figure.
#
#   bench/startup.sh [-n RUNS] [PROGRAM...]
#
# Defaults: 9 rounds of build/bin/vantrel-bare-window (one line edit, the yardstick),
# build/bin/vantrel-widget-kinds-window (the calculator's kinds of widget without its code: what
# the widgets alone take) and build/bin/vantrel. To compare two builds:
# bench/startup.sh BARE EARLIER/vantrel build/bin/vantrel
set -euo pipefail
# Decimal points, whatever the user's locale: EPOCHREALTIME, printf and sort -n all follow it.
export LC_ALL=C.UTF-8

runs=9
if [ "${1:-}" = -n ]; then
    runs=$2
    shift 2
fi
[ $# -gt 0 ] ||
    set -- build/bin/vantrel-bare-window build/bin/vantrel-widget-kinds-window build/bin/vantrel

if [ -z "${VANTREL_BENCH_DISPLAY:-}" ]; then
    export VANTREL_BENCH_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" -n "$runs" "$@"
fi

work=$(mktemp -d)
trap 'kill "${maps_PID:-}" 2>/dev/null; rm -rf "$work"' EXIT


median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

# One start of program $2, the $1-th in the list, in round $3: its figures go to $work/$1.shown and
# $1.rss. The clock is bash's own, read in place in microseconds: reading it through a process or
# a subshell would add the time to start one to every figure.
measure() {
    local index=$1 program=$2 round=$3 start end pid window shown rss_kb line
    # Fresh preferences and instance socket each time, as on a first start.
    export XDG_CONFIG_HOME=$work/config-$index-$round XDG_RUNTIME_DIR=$work/run-$index-$round
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    # Events left from the program before (its menus, its windows going away) are not this one's.
    while read -r -t 0.05 line <&"${maps[0]}"; do :; done
    start=${EPOCHREALTIME/./}
    "$program" 2>/dev/null &
    pid=$!
    # The first window mapped on the screen after the start. One watcher that the X server tells,
    # rather than a poll that would start a process every few milliseconds beside the program.
    until read -r -t 20 line <&"${maps[0]}" && [[ $line == MapNotify* ]]; do
        if ! kill -0 "$pid" 2>/dev/null; then
            echo "$program ended without a window" >&2
            exit 1
        fi
        if [ $((${EPOCHREALTIME/./} - start)) -gt 20000000 ]; then
            echo "$program: no window after 20 s" >&2
            exit 1
        fi
    done
    end=${EPOCHREALTIME/./}
    shown=$(awk -v d=$((end - start)) 'BEGIN { printf "%.1f", d / 1000 }')
    window=$(xdotool search --sync --onlyvisible --name '^Vantrel$' | head -n 1)
    xdotool mousemove --window "$window" 200 40 click 1
    for expression in '01:00:10.12|25+00:00:05.00' '00:42:17.03|29d*3' '(1:00+0123)*4/2'; do
        xdotool type --delay 5 "$expression"
        xdotool key Return
    done
    sleep 0.5
    rss_kb=$(awk '/^VmRSS/ { print $2 }' "/proc/$pid/status")
    kill "$pid"
    wait "$pid" 2>/dev/null || true
    echo "$shown" >>"$work/$index.shown"
    echo "$rss_kb" >>"$work/$index.rss"
    printf '%-40s window shown after %6.1f ms, resident memory %5.1f MB\n' "$program" "$shown" \
        "$(awk -v k="$rss_kb" 'BEGIN { print k / 1024 }')"
}

coproc maps { exec stdbuf -oL xev -root -event substructure; }
sleep 0.5

# Each round starts with the next program, so that none is always the one started right after
# the round before has ended.
programs=("$@")
for run in $(seq 1 "$runs"); do
    for turn in $(seq 0 $((${#programs[@]} - 1))); do
        index=$(((turn + run) % ${#programs[@]}))
        measure "$index" "${programs[$index]}" "$run"
    done
done

# The ratio is taken within each round, against the start of the first program listed in that
# round, and the median of those is given: a machine busier in one round than in another slows every program
# of the round alike, and the pairing cancels it.
echo "medians of $runs interleaved runs (ratio: median of the rounds' ratios):"
index=0
for program in "$@"; do
    shown=$(median <"$work/$index.shown")
    ratio=$(paste "$work/$index.shown" "$work/0.shown" | awk '{ print $1 / $2 }' | median)
    rss=$(median <"$work/$index.rss")
    printf '%-40s window shown after %6.1f ms (%.2f x), resident memory %5.1f MB\n' "$program" \
        "$shown" "$ratio" "$(awk -v k="$rss" 'BEGIN { print k / 1024 }')"
    index=$((index + 1))
done
