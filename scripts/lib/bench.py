# SPDX-License-Identifier: MIT
"""Runs the pairs of benchmarks/pairs.csv; called by scripts/bench."""
import argparse
import csv
import datetime
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

import performancepage

SLOWER = 1.10  # by more than this factor is a regression


def say(text):
    print(text, file=sys.stderr, flush=True)


def settle_down():
    """On one processor, before others: what is left of the noise then hits both of a pair alike."""
    if hasattr(os, "sched_setaffinity"):
        os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})
    try:
        os.nice(-10)
    except OSError:
        pass  # not everybody may


def measure(program, names, repetitions):
    """The processor times of each benchmark in nanoseconds, one per repetition."""
    pattern = "|".join(re.escape(name) for name in sorted(names))
    # In random order, or a machine that slows down half way would slow down one of the two only.
    command = [
        program, f"--benchmark_filter=^({pattern})$", f"--benchmark_repetitions={repetitions}",
        "--benchmark_min_time=0.1", "--benchmark_enable_random_interleaving=true", "--benchmark_format=json",
    ]
    run = subprocess.run(command, check=True, capture_output=True, text=True)
    times = {}
    for entry in json.loads(run.stdout)["benchmarks"]:
        if entry["run_type"] != "iteration" or entry.get("error_occurred"):
            continue
        unit = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
        # The filter and the entry's own name differ by what was added to it, such as "/repeats:9".
        name = entry["name"].split("/repeats:")[0]
        times.setdefault(name, []).append(entry["cpu_time"] * unit)
    return times


def convert_table(build, root, repetitions):
    """The whole postal code table through the example and through a Python program that does the same."""
    table = os.environ.get("POSTAL_TABLE")
    if not table:
        return {}
    commands = {
        "postal_pass": [build / "examples" / "postal_pass"],
        "postal_check": [sys.executable, root / "examples" / "postal_check.py", "--job"],
    }
    found = {}
    with tempfile.TemporaryDirectory() as folder:
        for _ in range(repetitions):
            for name, command in commands.items():
                run = subprocess.run([*command, table, f"{folder}/output"], check=True, capture_output=True, text=True)
                milliseconds = re.search(r"processor: (\d+) ms", run.stdout)[1]
                found.setdefault(f"examples/postal_pass:{name}", []).append(float(milliseconds) * 1e6)
    return found


def measure_all(pairs, build, root, repetitions):
    wanted = {}
    for pair in pairs:
        wanted.setdefault(pair["program"], set()).update((pair["ours"], pair["theirs"]))
    times = {}
    for number, (program, names) in enumerate(wanted.items(), 1):
        say(f"{build.name} [{number}/{len(wanted)}] {program}: {len(names)} benchmarks, {repetitions} times each")
        if program == "examples/postal_pass":
            times.update(convert_table(build, root, repetitions))
            continue
        found = measure(build / "benchmarks" / pathlib.Path(program).name, names, repetitions)
        times.update({f"{program}:{name}": values for name, values in found.items()})
    return times


def join(pairs, times):
    """The pairs with their medians for each build. What they are beside may not be there."""
    rows = []
    for pair in pairs:
        builds = {}
        for build, found in times.items():
            ours = found.get(f"{pair['program']}:{pair['ours']}")
            theirs = found.get(f"{pair['program']}:{pair['theirs']}")
            if not ours and not pair["program"].startswith("examples/"):
                sys.exit(f"benchmarks/pairs.csv names {pair['ours']}, which {pair['program']} does not have")
            if ours and theirs:
                ours, theirs = statistics.median(ours), statistics.median(theirs)
                builds[build] = {"ours_ns": ours, "theirs_ns": theirs, "ratio": theirs / ours}
        if builds:
            worse = min(found["ratio"] for found in builds.values())
            rows.append({**pair, "builds": builds, "ratio": worse})
            if worse < 1 and not pair["reason"]:
                say(f"benchmarks/pairs.csv has no reason why this is slower: {pair['what']} beside {pair['beside']}")
        else:
            say(f"Left out, nothing to measure beside: {pair['what']} and {pair['beside']}")
    return rows


def key(row):
    return f"{row['program']}:{row['ours']} beside {row['theirs']}"


def regressions(rows, previous):
    """What takes longer than last time, by the clock and beside its neighbour. A busy machine slows down both of a pair,
    and a neighbour that has become faster is no loss."""
    before = {key(row): row for row in previous["rows"]}
    for row in rows:
        for build, now in row["builds"].items():
            old = before.get(key(row), row)["builds"][build]
            if now["ours_ns"] > SLOWER * old["ours_ns"] and now["ratio"] * SLOWER < old["ratio"]:
                yield (f"{row['what']} ({build}): {old['ours_ns']:,.1f} ns, now {now['ours_ns']:,.1f} ns; "
                       f"{old['ratio']:.2f} times {row['beside']}, now {now['ratio']:.2f}")


def latest(results, machine):
    for path in sorted(results.glob("*.json"), reverse=True):
        result = json.loads(path.read_text(encoding="utf-8"))
        # Results from before there were two builds have no list of them.
        if result["machine"]["processor"] == machine["processor"] and "builds" in result:
            return path, result
    return None, None


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--root", type=pathlib.Path, required=True)
    options.add_argument("--results", type=pathlib.Path, required=True)
    options.add_argument("--only", default="")
    options.add_argument("--repetitions", type=int, default=9)
    arguments = options.parse_args()

    builds = {name: arguments.root / "build" / name for name in performancepage.BUILDS}
    with open(arguments.root / "benchmarks" / "pairs.csv", encoding="utf-8", newline="") as table:
        pairs = [row for row in csv.DictReader(table) if arguments.only.lower() in ",".join(row.values()).lower()]
    if not pairs:
        sys.exit(f'No line of benchmarks/pairs.csv has "{arguments.only}" in it')

    machine = performancepage.machine(builds["plain"])
    settle_down()
    times = {name: measure_all(pairs, build, arguments.root, arguments.repetitions) for name, build in builds.items()}
    rows = join(pairs, times)
    for row in rows:
        ratios = " ".join(f"{found['ratio']:8.2f}" for found in row["builds"].values())
        print(f"{ratios}  {row['what']} beside {row['beside']}")

    old_path, old = latest(arguments.results, machine)
    slower = list(regressions(rows, old)) if old else []
    if old:
        print(f"Compared with {old_path}: " + (f"{len(slower)} slower" if slower else "nothing has become slower"))
    for line in slower:
        print(f"SLOWER {line}")

    # A part of the pairs is nobody's next point of comparison.
    if not arguments.only:
        now = datetime.datetime.now(datetime.timezone.utc)
        arguments.results.mkdir(parents=True, exist_ok=True)
        path = arguments.results / f"{now:%Y%m%dT%H%M%SZ}.json"
        result = {"date": f"{now:%Y-%m-%d}", "machine": machine, "repetitions": arguments.repetitions,
                  "table": bool(os.environ.get("POSTAL_TABLE")), "builds": list(builds), "rows": rows, "times": times}
        path.write_text(json.dumps(result, indent=1, ensure_ascii=False), encoding="utf-8")
        performancepage.write(arguments.root / "docs", result)
        print(f"Wrote docs/performance.md, its plots and {path}")
    return 1 if slower else 0


if __name__ == "__main__":
    sys.exit(main())
