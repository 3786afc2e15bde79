"""An install tool that only changes its answers: simulated_tool.py STATE KEY=VALUE..."""
import json
import pathlib
import sys
import time
import urllib.parse
import urllib.request

STEPS = range(0, 100, 10)  # percent
FAILS_AT = 40
SECONDS_PER_STEP = {"slow": 4.0}
SECONDS_PER_ANSWER = {"slow": 5.0}

file = pathlib.Path(sys.argv[1])
state = json.loads(file.read_text())
given = dict(argument.partition("=")[::2] for argument in sys.argv[2:])
command = given["command"].lower()


def report(event, percent, message, result="", version=""):
    pairs = {"pid": given["pid"], "agentId": given["agentId"], "action": command, "event": event, "percent": percent,
             "message": message, "result": result, "version": version}
    url = given["reportUrl"]
    query = urllib.parse.urlencode(pairs, quote_via=urllib.parse.quote)
    try:
        urllib.request.urlopen(f"{url}{'&' if '?' in url else '?'}{query}", timeout=10).close()
    except (OSError, ValueError) as error:
        print(f"The simulated tool's report to '{url}' was lost: {error}", file=sys.stderr)


def print_info():
    time.sleep(SECONDS_PER_ANSWER.get(state["behaviour"], 0))
    members = {"installed": int(bool(state["installed"]))}
    if state["installed"]:
        members["version"] = state["installed"]
    print(given["print_info_prefix"] + json.dumps(members)[1:-1] + given["print_info_suffix"])


def change():
    for percent in STEPS:
        report("progress", percent, f"Step {percent // 10 + 1} of {len(STEPS)} (simulated)")
        if state["behaviour"] == "failing" and percent == FAILS_AT:
            report("finished", percent, "The disk is full (simulated).", "failed")
            return
        time.sleep(SECONDS_PER_STEP.get(state["behaviour"], 0.3))
    version = "" if command == "uninstall" else state["offered"]
    file.write_text(json.dumps(state | {"installed": version}))
    report("finished", 100, f"{command} is done (simulated).", "success", version)


if command == "print_installed_product_info":
    print_info()
else:
    change()
