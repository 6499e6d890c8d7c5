#!/usr/bin/python3
"""Draws how the grammar matcher and Oniguruma grow with nesting depth and with text length.

    bench/plot-growth.py [BUILD_DIR] [OUTPUT_PNG]
    bench/plot-growth.py --paste CALC [EARLIER_CALC] [OUTPUT_PNG]

Runs BUILD_DIR/bin/vantrel-bench (default: build) on the BM_Depth_* and BM_Length_* benchmarks of
both engines with JSON output and plots CPU time per search against depth and against length, both
engines on each chart, on log scales, into OUTPUT_PNG (default: docs/matcher-growth.png). Searches
that Oniguruma gave up at its effort bound are marked with a cross.

With --paste it times whole vantrel-calc processes instead: both readings, eager and lazy, of
pasted texts of every shape the field can hold, from 1 to 32,767 characters, and plots CPU time
and peak memory against length (default output docs/paste-growth.png); given an earlier
vantrel-calc as well, it draws that one's figures beside, dashed.

The paste mode also needs GNU time (/usr/bin/time). Needs Debian's python3-matplotlib (apt-get install python3-matplotlib), hence /usr/bin/python3.
"""

import json
import random
import re
import subprocess
import sys
from pathlib import Path

try:
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt
except ImportError:
    sys.exit("plot-growth.py needs matplotlib: apt-get install python3-matplotlib")

ROOT = Path(__file__).resolve().parent.parent
NAME = re.compile(r"BM_(Depth|Length)_(Closed|Unclosed)_(GrammarMatcher|Oniguruma)/(\d+)$")
ENGINES = {"GrammarMatcher": ("grammar matcher", "tab:blue"), "Oniguruma": ("Oniguruma", "tab:red")}
CLOSINGS = {"Closed": "-", "Unclosed": "--"}


def run_benchmarks(build):
    binary = build / "bin" / "vantrel-bench"
    if not binary.exists():
        sys.exit(f"{binary} not found: build with -DVANTREL_BENCH=ON first")
    result = subprocess.run(
        [str(binary), "--benchmark_filter=BM_(Depth|Length)_.*_(GrammarMatcher|Oniguruma)",
         "--benchmark_format=json", "--benchmark_min_time=0.05"],
        check=True, capture_output=True, text=True)
    return json.loads(result.stdout)["benchmarks"]


def to_microseconds(benchmark):
    scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[benchmark["time_unit"]]
    return benchmark["cpu_time"] * scale


def collect(benchmarks):
    series = {}
    for benchmark in benchmarks:
        match = NAME.match(benchmark["name"])
        if not match:
            continue
        axis, closing, engine, argument = match.groups()
        x = int(argument) if axis == "Depth" else int(benchmark["chars"])
        gave_up = benchmark.get("matched_chars", 1) == 0
        series.setdefault((axis, closing, engine), []).append(
            (x, to_microseconds(benchmark), gave_up))
    return series


def save(figure, output):
    figure.tight_layout()
    output.parent.mkdir(parents=True, exist_ok=True)
    figure.savefig(output)
    print(f"wrote {output}")


def plot(series, output):
    figure, (by_depth, by_length) = plt.subplots(1, 2, figsize=(10, 4.2), dpi=90)
    for (axis, closing, engine), points in sorted(series.items()):
        points.sort()
        label, colour = ENGINES[engine]
        chart = by_depth if axis == "Depth" else by_length
        xs = [x for x, _, _ in points]
        ys = [y for _, y, _ in points]
        chart.plot(xs, ys, CLOSINGS[closing], color=colour, marker=".",
                   label=f"{label}, {closing.lower()}")
        given_up = [(x, y) for x, y, gave_up in points if gave_up]
        if given_up:
            chart.plot([x for x, _ in given_up], [y for _, y in given_up], "x", color=colour,
                       markersize=9, label=f"{label} gave up ({closing.lower()})")
    by_depth.set_title("Nesting: 1+(1+(…1…)), closed and unclosed")
    by_depth.set_xlabel("levels of parentheses")
    by_length.set_title("Length: sums of timestamps, numbers, ( )")
    by_length.set_xlabel("characters")
    by_length.set_xscale("log")
    for chart in (by_depth, by_length):
        chart.set_yscale("log")
        chart.set_ylabel("CPU time per search (µs)")
        chart.axhline(1000, color="grey", linewidth=0.8, linestyle=":")
        chart.grid(True, which="major", linewidth=0.4)
        chart.legend(fontsize=7)
    save(figure, output)


PASTE_SHAPES = {
    "(1+ repeated": lambda n: ("(1+" * n)[:n],
    "closed nesting": lambda n: "(" * ((n - 1) // 4) + "1" + "+1)" * ((n - 1) // 4),
    "( alone": lambda n: "(" * n,
    "01:00:00.00|25+ repeated": lambda n: ("01:00:00.00|25+" * n)[:n],
    "(01:00:39.08-01:00:00.00)+ repeated": lambda n: ("(01:00:39.08-01:00:00.00)+" * n)[:n],
    "(1:00*2+ repeated": lambda n: ("(1:00*2+" * n)[:n],
    "digits": lambda n: ("1234567890" * n)[:n],
    "random": lambda n: "".join(random.Random(n).choice("0123456789:.|+-*/() ") for _ in range(n)),
}
PASTE_LENGTHS = [1, 10, 100, 1000, 3000, 10000, 20000, 32767]


def run_paste(calc, text, lazy):
    """CPU seconds and peak resident megabytes of one vantrel-calc process on the text, as GNU
    time reports them: a process started from Python would count Python's memory as its own."""
    result = subprocess.run(["/usr/bin/time", "-f", "%U %S %M", calc, "-d", "number"]
                            + (["-l"] if lazy else []),
                            input=text.encode(), stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, check=False)
    user, system, kilobytes = result.stderr.decode().split()[-3:]
    return float(user) + float(system), int(kilobytes) / 1024


def plot_paste(calcs, output):
    figure, (by_time, by_memory) = plt.subplots(1, 2, figsize=(11, 4.6), dpi=90)
    for style, calc in zip(("-", "--"), calcs):
        for colour, (shape, make) in zip(plt.cm.tab10.colors, PASTE_SHAPES.items()):
            # Eager or lazy, whichever costs more, for each figure on its own.
            runs = [[run_paste(calc, make(n), lazy) for lazy in (False, True)] for n in PASTE_LENGTHS]
            figures = [tuple(map(max, zip(*pair))) for pair in runs]
            label = shape if style == "-" else None
            by_time.plot(PASTE_LENGTHS, [1000 * cpu for cpu, _ in figures], style, color=colour,
                         marker=".", label=label)
            by_memory.plot(PASTE_LENGTHS, [mb for _, mb in figures], style, color=colour,
                           marker=".")
    by_time.set_ylabel("CPU per process, ms (eager or lazy, the larger)")
    by_memory.set_ylabel("peak memory of the process, MB")
    for chart, goal in ((by_time, 100), (by_memory, 50)):
        chart.set_xscale("log")
        chart.set_xlabel("characters pasted" + ("; dashed: earlier build" if len(calcs) > 1 else ""))
        chart.axhline(goal, color="grey", linewidth=0.8, linestyle=":")
        chart.grid(True, which="major", linewidth=0.4)
    by_time.legend(fontsize=7)
    save(figure, output)


def main():
    if len(sys.argv) > 2 and sys.argv[1] == "--paste":
        arguments = sys.argv[2:]
        output = ROOT / "docs" / "paste-growth.png"
        if arguments[-1].endswith(".png"):
            output = Path(arguments.pop())
        plot_paste(arguments, output)
        return
    build = Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "build"
    output = Path(sys.argv[2]) if len(sys.argv) > 2 else ROOT / "docs" / "matcher-growth.png"
    plot(collect(run_benchmarks(build)), output)


if __name__ == "__main__":
    main()
