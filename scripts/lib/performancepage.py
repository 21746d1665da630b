# SPDX-License-Identifier: MIT
"""The page and the plots of the benchmarks."""
import math
import os
import pathlib
import platform
import re
import shlex
import subprocess
import xml.sax.saxutils

# The presets that are measured, with what a reader of the page calls them.
BUILDS = {"plain": "plain", "release": "as a whole"}

# What a compiler says that it may use of a processor, weakest first for each.
ABILITIES = {"__SSE2__": "SSE2", "__SSE4_2__": "SSE4.2", "__AVX2__": "AVX2", "__AVX512BW__": "AVX-512BW",
             "__ARM_NEON": "NEON", "__VX__": "vector facility"}

STYLE = """
    text { font: 13px system-ui, "Segoe UI", "Noto Sans", sans-serif; fill: #1f2328; }
    .topic { font-weight: 600; font-size: 14px; }
    .beside, .axis { fill: #57606a; }
    .grid { stroke: #d8dee4; }
    .one { stroke: #57606a; stroke-width: 1.5; }
    .faster { fill: #1a7f5a; }
    .slower { fill: #c4602c; }
    .paper { fill: #ffffff; }
    @media (prefers-color-scheme: dark) {
      text { fill: #e6edf3; }
      .beside, .axis { fill: #9aa4af; }
      .grid { stroke: #30363d; }
      .one { stroke: #9aa4af; }
      .faster { fill: #3fb68b; }
      .slower { fill: #e58a57; }
      .paper { fill: #0d1117; }
    }
"""


def first(pattern, path):
    """What the pattern's group finds in the file; empty when there is neither."""
    try:
        found = re.search(pattern, pathlib.Path(path).read_text(encoding="utf-8", errors="replace"), re.MULTILINE)
    except OSError:
        return ""
    return found[1].strip().strip('"') if found else ""


def machine(build):
    cache = build / "CMakeCache.txt"

    def cached(name):
        return first(rf"^{name}:[A-Z]+=(.*)$", cache)

    compiler = cached("CMAKE_CXX_COMPILER")
    version = subprocess.run([compiler, "--version"], capture_output=True, text=True, check=True).stdout.splitlines()[0]
    flags = shlex.split(f"{cached('CMAKE_CXX_FLAGS')} {cached('CMAKE_CXX_FLAGS_RELEASE')}")
    macros = subprocess.run([compiler, *flags, "-dM", "-E", "-x", "c++", os.devnull], capture_output=True, text=True,
                            check=True).stdout
    libraries = {
        "Qt": first(r'set\(PACKAGE_VERSION "([^"]+)"', f"{cached('Qt6_DIR')}/Qt6ConfigVersionImpl.cmake"),
        "ICU": first(r'define U_ICU_VERSION "([^"]+)"', f"{cached('ICU_INCLUDE_DIR')}/unicode/uvernum.h"),
        "Google Benchmark": first(
            r'set\(PACKAGE_VERSION "([^"]+)"', f"{cached('benchmark_DIR')}/benchmarkConfigVersion.cmake"),
    }
    return {
        "processor": first(r"^model name\s*:\s*(.+)$", "/proc/cpuinfo") or platform.processor() or platform.machine(),
        "processors": os.cpu_count(),
        "system": first(r"^PRETTY_NAME=(.+)$", "/etc/os-release") or platform.platform(terse=True),
        "compiler": version,
        "abilities": [name for macro, name in ABILITIES.items() if f"#define {macro} " in macros],
        "libraries": ", ".join(f"{name} {found}" for name, found in libraries.items() if found),
        "load": os.getloadavg()[0] if hasattr(os, "getloadavg") else 0.0,
    }


def duration(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def times(ratio):
    return f"{ratio:.2f}" if ratio < 10 else f"{ratio:,.0f}"


def topics(rows):
    found = {}
    for row in rows:
        found.setdefault(row["topic"], []).append(row)
    return found.items()


def plot(rows):
    left, right, line, top = 430, 70, 21, 44
    width = 960
    # A figure stands beyond the end of its bar, hence the room.
    low = min(-2, math.floor(math.log2(min(row["ratio"] for row in rows)) - 0.7))
    high = max(1, math.ceil(math.log2(max(row["ratio"] for row in rows))))
    step = (width - left - right) / (high - low)

    def x(ratio):
        return left + (math.log2(ratio) - low) * step

    def text(at, y, content, css="", anchor="start"):
        escaped = xml.sax.saxutils.escape(content)
        return f'<text x="{at:.1f}" y="{y}" class="{css}" text-anchor="{anchor}">{escaped}</text>'

    bars, y = [], top
    for topic, members in topics(rows):
        y += line + 4
        bars.append(text(12, y - 5, topic, "topic"))
        for row in members:
            start, end = sorted((x(1), x(row["ratio"])))
            css = "faster" if row["ratio"] >= 1 else "slower"
            tip = f'{row["what"]}: {times(row["ratio"])} times as fast as {row["beside"]}'
            bars.append(
                f'<rect x="{start:.1f}" y="{y + 3}" width="{max(end - start, 1):.1f}" height="{line - 6}" rx="2" class="{css}">'
                f"<title>{xml.sax.saxutils.escape(tip)}</title></rect>")
            bars.append(text(12, y + 15, row["what"]))
            bars.append(text(left - 12, y + 15, row["beside"], "beside", "end"))
            outside = (end + 6, "start") if row["ratio"] >= 1 else (start - 6, "end")
            bars.append(text(outside[0], y + 15, times(row["ratio"]), "", outside[1]))
            y += line
    height = y + 16

    grid = []
    for power in range(low, high + 1):
        at, label = left + (power - low) * step, f"{2 ** power}×" if power >= 0 else f"1/{2 ** -power}×"
        grid.append(f'<line x1="{at:.1f}" x2="{at:.1f}" y1="{top}" y2="{y}" class="{"one" if power == 0 else "grid"}"/>')
        if power % 2 == 0:
            grid.append(text(at, top - 8, label, "axis", "middle"))
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" '
        'role="img" aria-labelledby="title">',
        '<title id="title">How many times as fast as what you would call instead, on a logarithmic scale</title>',
        f"<style>{STYLE}</style>",
        f'<rect width="{width}" height="{height}" class="paper"/>',
        text(12, top - 26, "Member", "topic"),
        text(left - 12, top - 26, "beside", "beside", "end"),
        text(x(1) + 8, top - 26, "faster →", "axis"),
        text(x(1) - 8, top - 26, "← slower", "axis", "end"),
        *grid, *bars, "</svg>", ""])


def page(result):
    about, rows = result["machine"], result["rows"]
    slower = [row for row in rows if row["ratio"] < 1]
    builds = result["builds"]
    abilities = ", ".join(about["abilities"]) or "nothing beyond its baseline"
    records = "of the postal code table" if result["table"] else "made up, of the shape of the postal code table"
    lines = [
        "# How fast it is",
        "",
        "<!-- Written by scripts/bench: change that, not this. -->",
        "",
        "Each member beside what a user would call instead, on the same texts in the same run. Everything is measured in two",
        "builds: *plain* is what a program gets that includes the tree (Release, no link-time optimisation), *as a whole* is the",
        "preset `release`. A pair is judged by the worse of the two, which is also the length of its bar: to the right, the member",
        "is so many times as fast; to the left, it is slower.",
        "",
        "![How many times as fast as what you would call instead](performance.svg)",
        "",
        f"{len(rows) - len(slower)} of {len(rows)} pairs are at least as fast as their neighbour.",
    ]
    if slower:
        lines += ["", "## Slower than their neighbour", "", "| member | beside | times as fast | why |", "|---|---|--:|---|"]
        lines += [f"| {row['what']} | {row['beside']} | {times(row['ratio'])} | {row['reason']} |" for row in slower]
    lines += [
        "",
        "## Where and how",
        "",
        "| | |",
        "|---|---|",
        f"| machine | {about['processor']}, {about['processors']} processors |",
        f"| abilities used | {abilities}: what the compiler takes for granted, and nothing is chosen at run time. "
        "Qt, ICU and the C library choose more by themselves |",
        f"| system | {about['system']} |",
        f"| compiler | {about['compiler']}, -O3 |",
        f"| libraries | {about['libraries']} |",
        f"| records | {records} |",
        f"| date | {result['date']}, load of the machine at the start {about['load']:.1f} |",
        "| command | `scripts/bench` |",
        "",
        f"Every time is the median of {result['repetitions']} repetitions of a tenth of a second, the benchmarks of a program in",
        "random order, on one processor, in processor time. `scripts/bench` keeps what it measured outside the checkout and",
        "names what has become more than 10 % slower since the last run on the same processor.",
        "",
        "Where the neighbour does less than the member, or something else, the last column says so. Its time is that of the plain",
        "build.",
    ]
    heads = " | ".join(BUILDS[build] for build in builds)
    for topic, members in topics(rows):
        lines += ["", f"## {topic}", "", f"| member | {heads} | beside | time | times, {heads.replace('| ', '| times, ')} | the neighbour |",
                  f"|---|{'--:|' * len(builds)}---|--:|{'--:|' * len(builds)}---|"]
        for row in members:
            found = [row["builds"][build] for build in builds]
            lines.append(
                f"| {row['what']} | {' | '.join(duration(one['ours_ns']) for one in found)} | {row['beside']} "
                f"| {duration(found[0]['theirs_ns'])} | {' | '.join(times(one['ratio']) for one in found)} "
                f"| {row['difference']} |")
    return "\n".join(lines) + "\n"


def write(folder, result):
    folder.mkdir(exist_ok=True)
    short = [row for row in result["rows"] if row["short"]]
    (folder / "performance.svg").write_text(plot(result["rows"]), encoding="utf-8")
    (folder / "performance-short.svg").write_text(plot(short), encoding="utf-8")
    (folder / "performance.md").write_text(page(result), encoding="utf-8")
