#!/usr/bin/python3
"""Measures the installed program and writes one table in Markdown. scripts/bench builds and calls it, on a desktop.

Usage: report.py BUILD_DIRECTORY RUNS TABLE_FILE
"""
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

import functions
import windows

OURS = "installer"


def duration(seconds):
    for factor, unit in ((1e3, "ms"), (1e6, "µs"), (1e9, "ns")):
        if seconds * factor >= 1:
            break
    return f"{seconds * factor:.3g} {unit}" if seconds < 1 else f"{seconds * 1e3:.0f} ms"


def cell(what, value, size):
    if what.startswith("memory"):
        return f"{value / 1e6:.0f} MB"
    if size:
        return f"{duration(value)} ({size / value / 1e6:.0f} MB/s)"
    return duration(value)


def rows(values, sizes):
    """A line for each compared program or library: the medians and their ratio."""
    for what, by_whom in values.items():
        medians = {name: statistics.median(found) for name, found in by_whom.items()}
        ours = medians.pop(OURS)
        for name, other in medians.items() or [("", None)]:
            compared = ("", "") if other is None else (cell(what, other, sizes.get(what)), f"{ours / other:.2f}")
            yield what, cell(what, ours, sizes.get(what)), name, *compared


def installed_sizes():
    files = {file.name: file.stat().st_size for file in pathlib.Path(os.environ["VOK_BUNDLE"]).rglob("*")
             if file.is_file()}
    yield "size of the program", f"{files['vok-installer'] / 1e3:.0f} kB", "", "", ""
    yield "size of the bundle, with the demo's tools", f"{sum(files.values()) / 1e3:.0f} kB", "", "", ""


def machine(runs):
    processor = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8"))
    engine = subprocess.run(["pkg-config", "--modversion", "webkitgtk-6.0"], check=True, stdout=subprocess.PIPE)
    return (f"Medians of {runs}, on {platform.freedesktop_os_release()['PRETTY_NAME']}, {os.cpu_count()} cores of "
            f"{processor[1] if processor else platform.machine()}, under Xvfb without a GPU, with WebKitGTK "
            f"{engine.stdout.decode().strip()}.")


def main():
    build, runs, table = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]), pathlib.Path(sys.argv[3])
    values, remarks = windows.measure(build, runs)
    sizes = {}
    for program in ("getstate_bench", "urls_bench"):
        seconds, bytes_worked_on = functions.measure(build / "bench" / program, runs)
        values |= seconds
        sizes |= bytes_worked_on
    lines = ["| What | Installer | Compared with | It | Ratio |", "|---|---:|---|---:|---:|"]
    lines += ["| " + " | ".join(row) + " |" for row in [*rows(values, sizes), *installed_sizes()]]
    lines += ["\n" + remark for remark in [machine(runs), *remarks]]
    table.write_text("\n".join(lines) + "\n", encoding="utf-8")


main()
