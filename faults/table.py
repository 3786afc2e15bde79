"""The table of faults: what is broken, and what the person then sees."""

import re

from rig import Installer

FAULTS = []


def fault(name, outcome, seconds=30, **bundle):
    """Notes a fault: a function that breaks an installer and starts it, and what is to be seen in the end, within
    so many seconds; "*" stands for the random part of the bundle's directory."""
    return lambda function: FAULTS.append((name, outcome, seconds, bundle, function)) or function


def try_out(program, names):
    """Tries the faults whose names match, prints a line for each, and returns how many end otherwise."""
    chosen = [fault for fault in FAULTS if re.search(names, fault[0])]
    if not chosen:
        raise SystemExit(f"No fault's name matches '{names}'.")
    failed = 0
    for name, outcome, seconds, bundle, function in chosen:
        it = Installer(program, **bundle)
        try:
            function(it)
            seen = it.outcome(outcome, seconds)
            if seen != outcome:
                failed += 1
                print(it.log())
        finally:
            it.close()
        print(f"{name} | {seen} | {'ok' if seen == outcome else 'NOT OK, expected: ' + outcome}", flush=True)
    print(f"{failed} faults end otherwise than they should." if failed else "All faults end as they should.")
    return failed
