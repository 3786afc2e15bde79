#!/usr/bin/python3
"""Measures the release build and writes one table in Markdown. scripts/bench builds and calls it, on a desktop.

Usage: report.py BUILD_DIRECTORY RUNS TABLE_FILE
"""
import pathlib
import statistics
import sys

import windows

OURS = "installer"


def text(value, what):
    if what.startswith("memory"):
        return f"{value / 1e6:.0f} MB"
    return f"{value * 1e3:.1f} ms"


def rows(values):
    """A line for each program that ours is compared with: medians, and ours over the other."""
    for what, by_program in values.items():
        medians = {name: statistics.median(found) for name, found in by_program.items()}
        ours = medians.pop(OURS)
        for name, other in medians.items():
            yield what, text(ours, what), name, text(other, what), f"{ours / other:.2f}"


def main():
    build, runs, table = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]), pathlib.Path(sys.argv[3])
    values, remarks = windows.measure(build, build / "Vok Installer.app", runs)
    lines = ["| What | Installer | Compared with | It | Ratio |", "|---|---:|---|---:|---:|"]
    lines += ["| " + " | ".join(row) + " |" for row in rows(values)]
    lines += ["\n" + remark for remark in remarks]
    table.write_text("\n".join(lines) + "\n", encoding="utf-8")


main()
