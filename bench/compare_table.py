#!/usr/bin/env python3
"""Prints the comparison table from the JSON reports of the five comparison programs.

The reports are those of bench_module (ours), bench_gettext, bench_icu, bench_boost_locale and
bench/fluent/bench_fluent.mjs, given in that order. Each comes from a run with
--benchmark_repetitions and --benchmark_report_aggregates_only=true: our figures are shown as
the median with the minimum and maximum of the repetitions, the other libraries' as their
median, and each ratio is ours divided by theirs (above 1: ours takes longer or uses more
memory).

Usage: compare_table.py OURS.json GETTEXT.json ICU.json BOOST_LOCALE.json FLUENT.json
"""

import json
import sys

UNIT_NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
SPEED_UP_TARGET = 1.8
# A host that works in UTF-8 pays for the conversion of the module's UTF-16 text: a lookup
# with the UTF-8 copy may take at most this much longer than with the UTF-16 copy.
UTF8_COPY_TARGET = 1.15
# The module's goals: the largest median each workload may take (the peak resident set: the
# largest it may reach).
GOALS = {
    "W1 lookup, 1 thread": 60,
    "W2 plural + parameter": 150,
    "W3 first string, 10k": 10,
    "W3 first string, 100k": 100,
    "W4 release, 100k": 1,
    "peak RSS, 100k read once": 40,
}
# The goals set against another library: the largest ours/theirs each workload's median may
# reach (the peak resident set's: its one run), the two measured in the same run.
RATIO_GOALS = [
    ("peak RSS, 100k read once", "gettext", 1.0),
    ("W3 first string, 100k", "Fluent", 0.12),
    ("W3 first string, 10k", "Boost.Locale", 0.1),
    ("W1 lookup, 1 thread", "gettext", 0.2),
    ("W2 plural, ours in UTF-8", "gettext", 0.69),
]
PEERS = ["gettext", "ICU", "Boost.Locale", "Fluent"]


class Report:
    def __init__(self, path):
        with open(path, encoding="utf-8") as report:
            data = json.load(report)
        self.context = data["context"]
        # (benchmark name without its iteration and time suffixes, threads) -> {statistic: run}
        self.runs = {}
        for run in data["benchmarks"]:
            name = run["run_name"].split("/iterations:")[0]
            statistic = run.get("aggregate_name", "") if run["run_type"] == "aggregate" else "one"
            self.runs.setdefault((name, run.get("threads", 1)), {})[statistic] = run

    def run(self, name, threads, statistic):
        runs = self.runs.get((name, threads), {})
        # A benchmark with a single repetition reports that run and no aggregates.
        return runs.get(statistic) or runs.get("one")

    def time(self, name, threads, statistic, unit):
        run = self.run(name, threads, statistic)
        if run is None or run.get("error_occurred"):
            return None
        return run["real_time"] * UNIT_NANOSECONDS[run["time_unit"]] / UNIT_NANOSECONDS[unit]

    def counter(self, name, counter):
        run = self.run(name, 1, "median")
        return None if run is None else run.get(counter)

    def repetitions(self):
        return max((run.get("repetitions", 1) for runs in self.runs.values()
                    for run in runs.values()), default=1)


def number(value):
    if value is None:
        return "-"
    if value >= 100:
        return f"{value:.0f}"
    if value >= 10:
        return f"{value:.1f}"
    if value >= 0.1:
        return f"{value:.2f}"
    return f"{value:.3f}"


def ratio(ours, other):
    if ours is None or other is None or other == 0:
        return "-"
    return number(ours / other)


def speed_up(report, statistic, name="W1_Lookup"):
    one = report.time(name, 1, statistic, "ns")
    two = report.time(name, 2, statistic, "ns")
    # Both times are wall time per call over all threads: their quotient is the throughput
    # gained by the second thread.
    return None if one is None or two is None or two == 0 else one / two


def main(argv):
    if len(argv) != 1 + len(PEERS):
        sys.exit(__doc__.strip().splitlines()[-1])
    reports = [Report(path) for path in argv]
    ours = reports[0]

    # (label, unit, [ours, then each peer's median], ours' minimum, ours' maximum, compared)
    rows = []

    def timed(label, unit, name, threads=1, ours_name=None):
        """A row of `name` for every library; `ours_name` is our own variant of it, when the
        others have only one (their text in their one encoding)."""
        ours_name = ours_name or name
        time_unit = unit.split("/")[0]
        medians = [ours.time(ours_name, threads, "median", time_unit)]
        medians += [report.time(name, threads, "median", time_unit) for report in reports[1:]]
        low = ours.time(ours_name, threads, "min", time_unit)
        high = ours.time(ours_name, threads, "max", time_unit)
        rows.append((label, unit, medians, low, high, True))

    timed("W1 lookup, 1 thread", "ns/call", "W1_Lookup")
    timed("W1 lookup, ours in UTF-8", "ns/call", "W1_Lookup", ours_name="W1_LookupUtf8")
    timed("W1 lookup, 2 threads", "ns/call", "W1_Lookup", threads=2)
    rows.append(("W1 2-thread speed-up", "x",
                 [speed_up(report, "median") for report in reports], None, None, False))
    rows.append(("  machine, spin loop", "x",
                 [speed_up(report, "median", "Machine_SpinLoop") for report in reports],
                 None, None, False))
    timed("W2 plural + parameter", "ns/call", "W2_PluralParameter")
    timed("W2 plural, ours in UTF-8", "ns/call", "W2_PluralParameter",
          ours_name="W2_PluralParameterUtf8")
    timed("W3 first string, 10k", "ms", "W3_FirstString/10k")
    timed("W3 first string, 100k", "ms", "W3_FirstString/100k")
    timed("W4 release, 100k", "ms", "W4_Release/100k")
    rows.append(("peak RSS, 100k read once", "MiB",
                 [report.counter("Memory_ReadEveryKey/100k", "peak_RSS_MiB")
                  for report in reports], None, None, True))
    rows.append(("  process before loading", "MiB",
                 [report.counter("Memory_ReadEveryKey/100k", "baseline_RSS_MiB")
                  for report in reports], None, None, False))

    header = (("workload", "unit", "ours: median [min .. max]") + tuple(PEERS)
              + tuple(f"ours/{peer}" for peer in PEERS))
    lines = []
    for label, unit, (mine, *theirs), low, high, compare in rows:
        spread = f" [{number(low)} .. {number(high)}]" if low is not None else ""
        lines.append((label, unit, number(mine) + spread)
                     + tuple(number(value) for value in theirs)
                     + tuple(ratio(mine, value) if compare else "" for value in theirs))
    widths = [max(len(line[column]) for line in lines + [header])
              for column in range(len(header))]

    def show(line):
        cells = [line[0].ljust(widths[0]), line[1].ljust(widths[1])]
        cells += [cell.rjust(width) for cell, width in zip(line[2:], widths[2:])]
        print("  ".join(cells).rstrip())

    load = [report.context.get("load_avg", [0])[0] for report in reports]
    print(f"Repetitions: {ours.repetitions()}; CPUs: {ours.context.get('num_cpus')}; "
          "1-minute load average when each program started (ours, "
          + ", ".join(PEERS) + "): " + ", ".join(f"{value:.2f}" for value in load))
    show(header)
    show(tuple("-" * width for width in widths))
    for line in lines:
        show(line)
    for label, unit, (mine, *_), _, _, _ in rows:
        if label in GOALS and mine is not None:
            verdict = "met" if mine <= GOALS[label] else "NOT met"
            print(f"Goal {label}: at most {GOALS[label]} {unit}, ours {number(mine)} ({verdict}).")
    medians = {label: values for label, _, values, _, _, _ in rows}
    for label, peer, most in RATIO_GOALS:
        mine, theirs = medians[label][0], medians[label][1 + PEERS.index(peer)]
        if mine is not None and theirs:
            # Three digits, so that a ratio just over its bound does not print as equal to it.
            verdict = "met" if mine / theirs <= most else "NOT met"
            print(f"Goal {label}: at most {most}x {peer}'s, ours/{peer} {mine / theirs:.3g} "
                  f"({verdict}).")
        else:
            print(f"Goal {label}: at most {most}x {peer}'s, not measured in this run.")
    gained = speed_up(ours, "median")
    if gained is not None:
        verdict = "met" if gained >= SPEED_UP_TARGET else "NOT met"
        print(f"Goal two-thread speed-up: at least {SPEED_UP_TARGET}, ours {gained:.2f} "
              f"({verdict}).")
    utf16 = ours.time("W1_Lookup", 1, "median", "ns")
    utf8 = ours.time("W1_LookupUtf8", 1, "median", "ns")
    if utf16 and utf8 is not None:
        verdict = "met" if utf8 / utf16 <= UTF8_COPY_TARGET else "NOT met"
        print(f"Goal W1 with the UTF-8 copy: at most {UTF8_COPY_TARGET}x the UTF-16 copy, ours "
              f"{utf8 / utf16:.2f}x ({verdict}).")
    machine = speed_up(ours, "median", "Machine_SpinLoop")
    if machine is not None and machine < SPEED_UP_TARGET:
        print(f"The machine itself gave a second thread only {machine:.2f}x on a spin loop: "
              "other work was using the CPUs, so the two-thread figures, and the times with "
              "them, are unreliable.")
    elif max(load) > 0.5 * (ours.context.get("num_cpus") or 1):
        print("The machine was busy when the programs started: the times may be unreliable.")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
