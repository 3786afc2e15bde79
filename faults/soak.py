"""Sends 10,000 commands through the real window and compares what the program holds at 1,000 and at the end."""

import os
import pathlib
import sys
import time

from rig import Installer, page

COMMANDS = ("getbrowsers", "cancel", "hide", "getstate")
MEASURED = (1_000, 10_000)
GREATEST_GROWTH = 5 * 1024  # KiB


def measure(process):
    """The program's resident memory in KiB, its open files and its children."""
    proc = pathlib.Path(f"/proc/{process}")
    memory = next(int(line.split()[1]) for line in (proc / "status").read_text().splitlines()
                  if line.startswith("VmRSS"))
    children = (proc / f"task/{process}/children").read_text().split()
    return memory, len(os.listdir(proc / "fd")), len(children)


def main():
    installer = Installer(sys.argv[1])
    installer.tool("install tool", """echo 'Install info {{"installed": 1, "version": "1.2.3"}'""")
    measures = {}
    count = 0

    def next_command(_):
        nonlocal count
        if count in MEASURED:
            measures[count] = measure(installer.process.pid)
            print(f"{count:6} commands: {measures[count][0]:6} KiB, {measures[count][1]} open files, "
                  f"{measures[count][2]} children", flush=True)
        command = COMMANDS[count % len(COMMANDS)] if count < MEASURED[-1] else "finish"
        count += 1
        return page(command, installer.command(command, number=count))

    installer.answers |= {"/first": next_command, "/back": next_command}
    try:
        begin = time.monotonic()
        installer.start()
        status = installer.process.wait()
        print(f"Ended with {status} after {time.monotonic() - begin:.0f} seconds.")
    finally:
        installer.close()

    (memory, files, children), (memory_then, files_then, children_then) = measures.values()
    print(f"Growth: {memory_then - memory} KiB, {files_then - files} files, {children_then - children} children")
    sys.exit(status or memory_then - memory >= GREATEST_GROWTH or files_then > files or children_then > children)


main()
