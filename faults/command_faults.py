"""Faults of commands and of the tools that they start."""

import time

from rig.page_server import page, redirect
from table import fault


# Commands

@fault("command URL redirects to an ordinary page", "page elsewhere")
def _(it):
    it.first("uninstall", reportUrl="r")
    it.answers["/command"] = redirect("/elsewhere")
    it.start()


@fault("same command twice, the second before the first has loaded", "page command; admin tool ran 1×")
def _(it):
    uninstall = it.command("uninstall", reportUrl="r")
    it.answers["/first"] = page("first") + f"""<script>onload = () => {{
        location = '{uninstall}'; setTimeout(() => location = '{uninstall}', 300) }}</script>"""
    it.answers["/command"] = lambda request: time.sleep(1) or page("command")
    it.start()


@fault("same command twice, one after the other", "page command; admin tool ran 2×")
def _(it):
    it.first("uninstall", reportUrl="r")
    it.answers["/command"] = page("command") + """<script>onload = () => setTimeout(() => {
        if (!sessionStorage.again) { sessionStorage.again = 1; location.reload() } })</script>"""
    it.start()


@fault("two commands while a sheet is open",
       "sheet: Failed to execute command. Unsupported command (command = 'wrong').; install tool ran 2×")
def _(it):
    states = iter((it.command("getstate", number="1"), it.command("getstate", number="2")))
    it.first("wrong")
    it.answers["/command"] = lambda request: page("command", next(states) if "wrong" in request.path else None)
    it.answers["/back"] = lambda request: page("back", next(states, None))
    it.start()


@fault("zero byte in a URL for the install tool", "page command; admin tool ran 1×")
def _(it):
    it.tool("admin tool", '[[ ${*: -1} == "reportUrl=a%00b" ]] || echo "$*" >>"$0.calls"')
    it.first("uninstall", reportUrl="a\0b")
    it.answers["/command"] = page("command")
    it.start()


@fault("zero byte in the callback URL", "error page: This address is not allowed.")
def _(it):
    it.first("cancel", callbackUrl=it.server.url("/back\0end"))
    it.start()


# Install tool

def tool_fault(name, does, outcome="page back; install tool ran 1×"):
    @fault(f"install tool {name}", outcome)
    def _(it):
        it.tool("install tool", does)
        it.first("getstate")
        it.start()


tool_fault("hangs for 20 seconds", "sleep 20")
tool_fault("is killed by a signal", "kill -9 $$")
tool_fault("floods standard output with 100 MB", "yes | head -c 100M")
tool_fault("floods standard output with 100 MB that match", "yes 'Install info {{}}' | head -c 100M")
tool_fault("floods standard error with 100 MB", "yes | head -c 100M >&2")
tool_fault("prints zero bytes and invalid UTF-8", r"printf 'Install info {{\0\xff\xfe}}\n'")


@fault("install tool missing", "page back")
def _(it):
    (it.tools / "install tool").unlink()
    it.first("getstate")
    it.start()


@fault("install tool not executable", "page back")
def _(it):
    (it.tools / "install tool").chmod(0o644)
    it.first("getstate")
    it.start()


@fault("launch-as-admin tool missing", "page command")
def _(it):
    (it.tools / "admin tool").unlink()
    it.first("uninstall", reportUrl="r")
    it.start()


@fault("egrep not on the path", "page back; install tool ran 1×")
def _(it):
    it.environment["PATH"] = str(it.home)
    it.first("getstate")
    it.start()
