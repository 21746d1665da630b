# SPDX-License-Identifier: MIT
"""The page and the plot of the benchmarks."""
import math
import os
import pathlib
import platform
import re
import subprocess
import xml.sax.saxutils

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
        "flags": "preset `release`: -O3, linked as a whole",
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


def plot(result):
    rows = result["rows"]
    left, right, line, top = 430, 70, 21, 44
    width = 960
    # A figure stands beyond the end of its bar, hence the room.
    low = min(-1, math.floor(math.log2(min(row["ratio"] for row in rows)) - 0.7))
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
    lines = [
        "# How fast it is",
        "",
        "<!-- Written by scripts/bench: change that, not this. -->",
        "",
        "Each member beside what a user would call instead, on the same texts in the same run. A bar to the right is the number",
        "of times the member is as fast, one to the left means that it is slower.",
        "",
        "![How many times as fast as what you would call instead](performance.svg)",
        "",
        f"{len(rows) - len(slower)} of {len(rows)} pairs are at least as fast as their neighbour.",
        "",
        "## Where and how",
        "",
        "| | |",
        "|---|---|",
        f"| machine | {about['processor']}, {about['processors']} processors |",
        f"| system | {about['system']} |",
        f"| compiler | {about['compiler']}, {about['flags']} |",
        f"| libraries | {about['libraries']} |",
        f"| date | {result['date']}, load of the machine at the start {about['load']:.1f} |",
        "| command | `scripts/bench` |",
        "",
        f"Every time is the median of {result['repetitions']} repetitions of a tenth of a second, the benchmarks of a program in",
        "random order, on one processor, in processor time. `scripts/bench` keeps what it measured outside the checkout and",
        "names what has become more than 10 % slower since the last run on the same processor.",
        "",
        "Where the neighbour does less than the member, or something else, the last column says so.",
    ]
    for topic, members in topics(rows):
        lines += ["", f"## {topic}", "", "| member | time | beside | time | times as fast | the neighbour |",
                  "|---|--:|---|--:|--:|---|"]
        for row in members:
            lines.append(
                f"| {row['what']} | {duration(row['ours_ns'])} | {row['beside']} | {duration(row['theirs_ns'])} "
                f"| {times(row['ratio'])} | {row['difference']} |")
    return "\n".join(lines) + "\n"


def write(folder, result):
    folder.mkdir(exist_ok=True)
    (folder / "performance.svg").write_text(plot(result), encoding="utf-8")
    (folder / "performance.md").write_text(page(result), encoding="utf-8")
