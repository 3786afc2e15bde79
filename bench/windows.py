"""Start-up, memory and command round trip, in real windows on the current desktop."""
import collections
import pathlib
import shutil
import tempfile
import time

import pages
import programs

TRIPS = 10


def start_up(site, run):
    (start,) = site.times("/welcome.html")
    (loaded,) = site.times("/loaded")
    time.sleep(max(0.0, loaded + 1 - time.monotonic()))
    tree = run.tree()
    return {
        "start to first request": start - run.started,
        "start to first page loaded": loaded - run.started,
        "memory of the program": programs.proportional_memory(tree[0]),
        "memory of all its processes": sum(map(programs.proportional_memory, tree)),
    }


def first_picture(site, run):
    (drawn,) = site.times("/drawn")
    return {"start to the splash page's first picture": drawn - run.started}


def first_request(site, run):
    (start,) = site.times("/welcome.html")
    return {"start to first request, accounts after 300 ms": start - run.started}


def round_trips(site, _):
    left = site.times("/leaving", TRIPS)
    arrived = site.times("/arrived", TRIPS + 1)[1:]
    return {"command round trip": [end - begin for begin, end in zip(left, arrived)]}


def in_rounds(site, commands, runs, measure):
    """The values that `measure` returns, by what is measured and by program. Each round runs each program once, so that
    background load affects all equally, and starts with another one. One more round warms up."""
    values = collections.defaultdict(lambda: collections.defaultdict(list))
    names = list(commands)
    for number in range(-1 if runs > 1 else 0, runs):
        for name in names:
            site.forget()
            run = programs.Run(commands[name])
            try:
                found = measure(site, run)
            finally:
                run.end()
            if number >= 0:
                for what, value in found.items():
                    values[what][name] += value if isinstance(value, list) else [value]
        names = names[1:] + names[:1]
    return values


def measure(build, runs):
    """All measurements in windows, and a sentence for each program that is not installed."""
    site = pages.Site()
    with tempfile.TemporaryDirectory() as directory:
        shown = programs.bundle_for(pathlib.Path(directory) / "shown", site, "/welcome.html")
        sent = programs.bundle_for(pathlib.Path(directory) / "sent", site, "/trip")
        page = site.url("/welcome.html")
        commands = {
            "installer": programs.installer(shown),
            "bare program": programs.bare(build, shown, page),
            "MiniBrowser": programs.mini_browser(page),
            "Chromium": programs.chromium(page),
        }
        missing = [name for name, command in commands.items() if not shutil.which(command[0])]
        for name in missing:
            del commands[name]
        values = in_rounds(site, commands, runs, start_up)

        with programs.slow_accounts_service():
            values |= in_rounds(site, {"installer": commands["installer"]}, runs, first_request)

        drawn = programs.bundle_for(pathlib.Path(directory) / "drawn", site, "/after-drawn")
        splash = drawn / "Contents/MacOS/Tools/splash.html"
        splash.write_text(splash.read_text() + pages.TELL_DRAWN % site.url("/drawn"))
        commands = {
            "installer": programs.installer(drawn),
            "bare program": programs.bare(build, drawn, site.url("/after-drawn")),
        }
        values |= in_rounds(site, commands, runs, first_picture)

        trip = site.url("/trip")
        commands = {
            "installer": programs.installer(sent),
            "bare program": programs.bare(build, sent, trip, site.url("/command"), trip + "?action=cancel"),
        }
        values |= in_rounds(site, commands, runs, round_trips)
    return values, [f"{name} is not installed and was left out." for name in missing]
