"""Waiting for other processes."""

import subprocess
import time

LIMIT = 30  # seconds; generous, since the machine may be busy


def wait_for(condition, limit=LIMIT):
    """Polls until `condition` holds or `limit` seconds have passed; returns its last value."""
    end = time.monotonic() + limit
    while not (value := condition()) and time.monotonic() < end:
        time.sleep(0.05)
    return value


def output(*command, **options):
    """The standard output of a command, empty when it takes longer than a few seconds."""
    try:
        return subprocess.run(command, capture_output=True, timeout=20, check=False, **options).stdout
    except subprocess.TimeoutExpired:
        return b""
