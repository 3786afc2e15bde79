"""Sends commands through the window and compares what the program holds at two counts: soak.py COUNT COUNT KIB

Fails when its resident memory grows by so many KiB, or when it has an open file or a child process more.
"""

import os
import pathlib
import sys
import time

from rig.installer import Installer
from rig.page_server import page

COMMANDS = ("getbrowsers", "cancel", "hide", "getstate")


def measure(process):
    """The program's resident memory in KiB, its open files and its children."""
    proc = pathlib.Path(f"/proc/{process}")
    memory = next(int(line.split()[1]) for line in (proc / "status").read_text().splitlines()
                  if line.startswith("VmRSS"))
    children = (proc / f"task/{process}/children").read_text().split()
    return memory, len(os.listdir(proc / "fd")), len(children)


def run(installer, counts):
    """The measurements at each of the counts, and the program's exit status."""
    measures = []
    count = 0

    def next_command(_):
        nonlocal count
        if count in counts:
            measures.append(measure(installer.process.pid))
            print("{:6} commands: {:6} KiB, {} open files, {} children".format(count, *measures[-1]), flush=True)
        name = COMMANDS[count % len(COMMANDS)] if count < counts[-1] else "finish"
        count += 1
        return page(name, installer.command(name, number=str(count)))

    installer.answers |= {"/first": next_command, "/back": next_command, "/command": page("command")}
    begin = time.monotonic()
    installer.start()
    status = installer.process.wait()
    print(f"Ended with {status} after {time.monotonic() - begin:.0f} seconds.")
    return measures, status


def main():
    *counts, growth_limit = map(int, sys.argv[1:])
    installer = Installer()
    installer.tool("install tool", """echo 'Install info {{"installed": 1, "version": "1.2.3"}'""")
    try:
        measures, status = run(installer, counts)
    finally:
        installer.close()
    memory, files, children = (after - before for before, after in zip(*measures))
    print(f"Growth: {memory} KiB, {files} files, {children} children")
    passed = status == 0 and memory < growth_limit and files <= 0 and children <= 0
    print("1 passed, 0 failed" if passed else "0 passed, 1 failed")
    sys.exit(not passed)


main()
