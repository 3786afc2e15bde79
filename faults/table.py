"""The table of faults: what is broken, and what the user sees."""

import pathlib
import re
import subprocess
import time

from rig import desktop
from rig.installer import TITLE, Installer
from rig.waiting import wait_for

FAULTS = []

# What a row may need of the machine: why it cannot be tried here, and the command that checks.
NEEDS = {
    "namespaces": ("an ordinary user can make no user namespace", "unshare -rm true"),
    "tmpfs": ("an ordinary user cannot mount a file system", "unshare -rm mount -t tmpfs none /mnt"),
    "process limit": ("the limit of processes does not bind this user",
                      "! prlimit --nproc=1 sh -c '/bin/true & wait' 2>/dev/null"),
    "permissions": ("file permissions do not bind this user", "! touch /proc/version 2>/dev/null"),
}


def fault(name, *outcomes, seconds=60, needs=None, **bundle):
    """Adds a fault: a function that breaks an installer and starts it, and what may be seen in the end, within so many
    seconds; "*" stands for the random part of the bundle's directory. Where systems differ, there is more than one
    outcome. `needs` is a key of NEEDS."""
    return lambda function: FAULTS.append((name, outcomes, seconds, needs, bundle, function)) or function


def shown(it):
    """What the user sees, in one line."""
    status = it.process.poll()
    if status is not None:
        return "ended by a signal" if status < 0 else f"ended with {status}"
    if texts := [text for text in it.sheet() if text not in ("Error", "OK")]:
        return "sheet: " + " ".join(texts).replace("\n", " ")
    if desktop.is_blank(TITLE):
        return "blank window"
    pages = re.findall(r"^(?:frameUrl = (?:\w+://[^/]*([^?\n]*)).*|Failed to load .* \((.*)\)\.)$", it.log(), re.M)
    path, reason = pages[-1] if pages else ("nothing", "")
    return f"error page: {reason}" if reason else f"page {pathlib.PurePath(path).name}"


def seen(it):
    """What the user sees, and how often each tool ran."""
    runs = ((tool, len(it.calls(tool))) for tool in ("install tool", "admin tool"))
    return (shown(it) + "".join(f"; {tool} ran {count}×" for tool, count in runs if count)).replace(
        str(it.directory), "/tmp/vok-*")


def try_one(name, outcomes, seconds, bundle, function):
    """Tries a fault, prints a line, and returns whether it ends with one of its outcomes, and stays so."""
    it = Installer(**bundle)
    try:
        function(it)
        wait_for(lambda: seen(it) in outcomes, seconds)
        time.sleep(1)
        outcome = seen(it)
        passed = outcome in outcomes
        if not passed:
            print(it.log())
    finally:
        it.close()
    print(f"{name} | {outcome} | {'ok' if passed else 'NOT OK, expected: ' + ' or: '.join(outcomes)}", flush=True)
    return passed


def try_out(names):
    """Tries the faults whose names match, and returns how many have an unexpected outcome."""
    try:
        chosen = [fault for fault in FAULTS if re.search(names, fault[0])]
    except re.error as error:
        raise SystemExit(f"'{names}' is not a regular expression: {error}.") from None
    if not chosen:
        raise SystemExit(f"No fault's name matches '{names}'.")
    available = {need: subprocess.run(["sh", "-c", command], check=False, capture_output=True).returncode == 0
                 for need, (_, command) in NEEDS.items()}
    results = []
    for name, outcomes, seconds, needs, bundle, function in chosen:
        if needs and not available[needs]:
            print(f"{name} | not tried: {NEEDS[needs][0]}", flush=True)
        else:
            results.append(try_one(name, outcomes, seconds, bundle, function))
    failed = results.count(False)
    print(f"{results.count(True)} passed, {failed} failed, {len(chosen) - len(results)} skipped")
    return failed
