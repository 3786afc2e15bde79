"""Breaks what the program rests on, one thing at a time, and compares what the person then sees."""

import os
import re
import socket
import ssl
import subprocess
import sys
import threading
import time

from rig import Installer, page

FAULTS = []


def fault(name, outcome, seconds=30, **bundle):
    """Notes a fault: a function that breaks an installer and starts it, and what is to be seen in the end, within
    so many seconds; "*" stands for the random part of the bundle's directory."""
    return lambda function: FAULTS.append((name, outcome, seconds, bundle, function)) or function


# Processes of the web view

WEB, NETWORK = "WebKitWebProces", "WebKitNetworkPr"

# A page whose process has more memory than any other, and that then asks for "/lost".
large = page("large") + "<script>onload = () => { window.kept = new Uint8Array(2e8).fill(1); fetch('/lost') }</script>"


@fault("web process killed during the splash page", "page first")
def _(it):
    it.lost = threading.Event()
    it.splash = large.replace("'/lost'", f"'{it.pages.address}/lost'")
    it.answers["/first"] = lambda handler: page("first") if it.lost.wait(30) else None
    def lost(handler):
        it.splash_file.write_text(page("splash"))
        it.kill_largest(WEB)
        it.lost.set()
    it.answers["/lost"] = lost
    it.start()


@fault("web process killed during an ordinary page", "page first")
def _(it):
    it.answers["/first"] = large
    def lost(handler):
        it.answers["/first"] = page("first")
        it.kill_largest(WEB)
    it.answers["/lost"] = lost
    it.start()


@fault("web process killed on a command URL", "page first; admin tool ran 1×")
def _(it):
    it.first("uninstall", reportUrl="r")
    it.answers["/command"] = large
    def lost(handler):
        it.wait_for(it.ran)
        it.answers["/first"] = page("first")
        it.kill_largest(WEB)
    it.answers["/lost"] = lost
    it.start()


@fault("web process killed on every page", "sheet: The page cannot be displayed. Close the installer and start it again.")
def _(it):
    it.answers |= {"/first": large, "/lost": lambda handler: it.kill_largest(WEB)}
    it.start()


@fault("network process killed during a load", "failure page: WebKit encountered an internal error")
def _(it):
    it.answers["/first"] = lambda handler: it.kill_largest(NETWORK)
    it.start()


@fault("network process killed between two pages", "page next")
def _(it):
    it.answers["/first"] = page("first") + "<script>onload = () => fetch('/lost').catch(() => location = '/next')</script>"
    it.answers["/lost"] = lambda handler: it.kill_largest(NETWORK)
    it.start()


# Page server

@fault("page server gone in mid-page", "page first")
def _(it):
    def half(handler):
        handler.send_response(200)
        handler.send_header("Content-Type", "text/html")
        handler.send_header("Content-Length", "100000")
        handler.end_headers()
        handler.wfile.write(page("half").encode())
    it.answers["/first"] = half
    it.start()


@fault("page server gone in mid-page of a command URL", "page command; admin tool ran 1×")
def _(it):
    it.first("uninstall", reportUrl="r")
    def half(handler):
        handler.send_response(200)
        handler.send_header("Content-Type", "text/html")
        handler.send_header("Content-Length", "100000")
        handler.end_headers()
        handler.wfile.write(page("half").encode())
    it.answers["/command"] = half
    it.start()


@fault("first page answers 500 with a page", "page first")
def _(it):
    it.answers["/first"] = lambda handler: handler.answer(page("sorry"), 500)
    it.start()


@fault("first page answers 500 without a body", "failure page: The server answered 500 Internal Server Error.")
def _(it):
    it.answers["/first"] = lambda handler: handler.answer("", 500)
    it.start()


@fault("first page answers 404 without a body or its length", "failure page: The server answered 404 Not Found.")
def _(it):
    def answer(handler):
        handler.send_response(404)
        handler.end_headers()
    it.answers["/first"] = answer
    it.start()


@fault("command URL answers 500 with a page", "page back; install tool ran 1×")
def _(it):
    it.first("getstate")
    it.answers["/command"] = lambda handler: handler.answer(page("sorry"), 500)
    it.start()


@fault("command URL answers 500 without a body", "page back; install tool ran 1×")
def _(it):
    it.first("getstate")
    it.answers["/command"] = lambda handler: handler.answer("", 500)
    it.start()


@fault("first page's server hangs up", "failure page: Connection terminated unexpectedly")
def _(it):
    it.answers["/first"] = lambda handler: None
    it.start()


@fault("first page's server is not there", "failure page: Could not connect to 127.0.0.1: Connection refused")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "http://127.0.0.1:1/first"
    it.start()


@fault("first page's host has no address", "failure page: Error resolving “pages.invalid”: Name or service not known")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "http://pages.invalid/first"
    it.start()


@fault("first page's server accepts but never answers", "failure page: The server does not answer.", seconds=90)
def _(it):
    it.answers["/first"] = lambda handler: time.sleep(3600)
    it.start()


@fault("first page redirects for ever", "failure page: Load cannot follow more than 20 redirections")
def _(it):
    it.answers["/first"] = lambda handler: handler.answer("", 302, Location=f"/first?{time.monotonic()}")
    it.start()


@fault("first page is a download", "failure page: A file of the type 'application/x-file' cannot be shown here.")
def _(it):
    it.answers["/first"] = lambda handler: handler.answer("file", Content_Type="application/x-file")
    it.start()


@fault("first page is an attachment", "failure page: It is a file to download, which cannot be shown here.")
def _(it):
    it.answers["/first"] = lambda handler: handler.answer("file", Content_Disposition="attachment; filename=a.html")
    it.start()


@fault("first page has a refused port", "failure page: This address is not allowed.")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "http://127.0.0.1:25/first"
    it.start()


@fault("first page is no address", "failure page: The URL can’t be shown")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "no address"
    it.start()


@fault("first page is a script", "failure page: This address is not allowed.")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "javascript:1"
    it.start()


@fault("first page has an unknown certificate", "failure page: The certificate of the server cannot be trusted.")
def _(it):
    certificate = it.directory / "certificate"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=127.0.0.1",
                    "-keyout", certificate, "-out", certificate], check=True, capture_output=True)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate)
    it.pages.socket = context.wrap_socket(it.pages.socket, server_side=True)
    it.configuration["firstInstallationPageUrl"] = it.pages.address.replace("http", "https") + "/first"
    it.start()


# Commands

@fault("command URL redirects to an ordinary page", "page elsewhere")
def _(it):
    it.first("uninstall", reportUrl="r")
    it.answers["/command"] = lambda handler: handler.answer("", 302, Location="/elsewhere")
    it.start()


@fault("ordinary page redirects to a command URL", "page back; install tool ran 1×")
def _(it):
    it.answers["/first"] = page("first", "/elsewhere")
    it.answers["/elsewhere"] = lambda handler: handler.answer("", 302, Location=it.command("getstate"))
    it.start()


@fault("same command twice, the second before the first has loaded", "page command; admin tool ran 1×")
def _(it):
    uninstall = it.command("uninstall", reportUrl="r")
    it.answers["/first"] = page("first") + f"<script>onload = () => {{ location = '{uninstall}'; setTimeout(() => location = '{uninstall}', 300) }}</script>"
    it.answers["/command"] = lambda handler: time.sleep(1) or page("command")
    it.start()


@fault("same command twice, one after the other", "page command; admin tool ran 2×")
def _(it):
    it.first("uninstall", reportUrl="r")
    it.answers["/command"] = page("command") + "<script>onload = () => setTimeout(() => { if (!sessionStorage.again) { sessionStorage.again = 1; location.reload() } })</script>"
    it.start()


@fault("two commands while a sheet is open", "sheet: Failed to execute command. Unsupported command (command = 'wrong').; install tool ran 2×")
def _(it):
    states = iter((it.command("getstate", number=1), it.command("getstate", number=2)))
    it.first("wrong")
    it.answers["/command"] = lambda handler: page("command", next(states, None)) if "wrong" in handler.path else page("command")
    it.answers["/back"] = lambda handler: page("back", next(states, None))
    it.start()


@fault("zero byte in a command's name", "sheet: Failed to execute command. Unsupported command (command = 'uninstall\N{REPLACEMENT CHARACTER}').")
def _(it):
    it.first("uninstall\0", reportUrl="r")
    it.start()


@fault("zero byte in an address for the install tool", "page command; admin tool ran 1×")
def _(it):
    it.tool("admin tool", '[[ ${*: -1} == "reportUrl=a%00b" ]] || echo >>"$0.runs"')
    it.first("uninstall", reportUrl="a\0b")
    it.answers["/command"] = page("command")
    it.start()


@fault("zero byte in the callback's address", "failure page: This address is not allowed.")
def _(it):
    it.first("cancel", callbackUrl=it.pages.address + "/back\0end")
    it.start()


# Install tool

def tool_fault(name, does, outcome="page back; install tool ran 1×", log="Command failed (code = 1)"):
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


# The machine

def limit(it, what, value):
    """Takes from the running program what it needs for the next command; /back gives it back."""
    def set_limit(limit, answer):
        subprocess.run(["prlimit", "--pid", str(it.process.pid), f"--{what}={limit}:"], check=True)
        return answer
    it.answers["/command"] = lambda handler: set_limit(value(), page("command"))
    it.answers["/back"] = lambda handler: set_limit(1000, page("back"))


def open_files(it):
    return len(os.listdir(f"/proc/{it.process.pid}/fd"))


@fault("no more open files for a question", "page back")
def _(it):
    it.first("getstate")
    limit(it, "nofile", lambda: open_files(it))
    it.start()


@fault("no more open files for an order", "page command; admin tool ran 1×")
def _(it):
    it.first("uninstall", reportUrl="r")
    limit(it, "nofile", lambda: open_files(it))
    it.start()


@fault("no more processes for a question", "page back")
def _(it):
    it.first("getstate")
    limit(it, "nproc", lambda: 1)
    it.start()


@fault("no more processes for an order", "ended by a signal")
def _(it):
    it.first("uninstall", reportUrl="r")
    limit(it, "nproc", lambda: 1)
    it.start()


@fault("few open files from the start", "page first")
def _(it):
    it.before = ["prlimit", "--nofile=32"]
    it.start()


@fault("no processes from the start", "ended by a signal")
def _(it):
    it.before = ["prlimit", "--nproc=1"]
    it.start()


@fault("home directory read-only", "page first")
def _(it):
    it.home.chmod(0o555)
    it.start()


@fault("home directory missing", "page first")
def _(it):
    it.environment["HOME"] = "/nonexistent"
    it.start()


@fault("HOME not set", "page first")
def _(it):
    del it.environment["HOME"]
    it.start()


@fault("locale not set", "page first")
def _(it):
    for name in [name for name in it.environment if name.startswith(("LC_", "LANG"))]:
        del it.environment[name]
    it.start()


@fault("temporary directory and home full", "page first")
def _(it):
    it.environment |= {"TMPDIR": str(it.home), "XDG_RUNTIME_DIR": str(it.home)}
    it.before = ["unshare", "-rm", "sh", "-c", 'mount -t tmpfs -o size=64k none "$HOME" && '
                 'cat /dev/zero >"$HOME/full" 2>&-; exec "$0" "$@"']
    it.start()


@fault("no message buses", "page first")
def _(it):
    it.environment |= dict.fromkeys(("DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"), "unix:path=/nonexistent")
    it.start()


def bus(it, variable):
    """A message bus of its own, which ends when /first has loaded and asks for /lost."""
    daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True)
    it.environment[variable] = daemon.stdout.readline().strip()
    it.answers["/first"] = page("first") + "<script>onload = () => fetch('/lost').then(() => location = '/next')</script>"
    it.answers["/lost"] = lambda handler: daemon.kill() or time.sleep(1) or page("lost")


for kind in "SESSION", "SYSTEM":
    @fault(f"{kind.lower()} bus ends", "page next")
    def _(it, variable=f"DBUS_{kind}_BUS_ADDRESS"):
        bus(it, variable)
        it.start()


for kind in "SESSION", "SYSTEM":
    @fault(f"{kind.lower()} bus accepts but never answers", "page first")
    def _(it, variable=f"DBUS_{kind}_BUS_ADDRESS"):
        it.silent = socket.socket(socket.AF_UNIX)
        it.silent.bind(str(it.directory / "bus"))
        it.silent.listen()
        it.environment[variable] = f"unix:path={it.directory}/bus"
        it.start()


# What pages cannot do

def refused(name, script, outcome="page refused"):
    """A first page that tries something; it goes on to /got when it got it."""
    @fault(name, outcome)
    def _(it):
        it.answers["/first"] = page("first") + f"""<script>
            const got = () => location = '/got', refused = () => location = '/refused'
            onload = () => {{ {script.replace("LOCAL", f"file://{it.tools}")} }}</script>"""
        (it.tools / "picture.svg").write_text("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")
        it.start()


refused("page fetches a local file", "fetch('LOCAL/splash.html').then(got, refused)")
refused("page shows a local picture", "const i = new Image; i.onload = got; i.onerror = refused; i.src = 'LOCAL/picture.svg'")
refused("page goes to a local file", "location = 'LOCAL/splash.html'", "page first")
refused("page asks where the person is", "navigator.geolocation.getCurrentPosition(got, refused)")
refused("page asks for the camera", "navigator.mediaDevices.getUserMedia({video: true}).then(got, refused)")
refused("page closes the window", "window.close(); setTimeout(refused, 1000)")
refused("page opens an address of another program", "location = 'mailto:somebody@example.com'; setTimeout(refused, 1000)",
        "failure page: The URL can’t be shown")


@fault("command URL in a sub-frame", "page first")
def _(it):
    it.answers["/first"] = page("first") + f"<iframe src='{it.command('uninstall', reportUrl='r')}'></iframe>"
    it.start()


# Bundle and configuration

for character, name in {" ": "blanks", '"': "quotation marks", "%": "per cent signs", "#": "number signs", "?": "question marks",
                        "[]": "brackets", "ü日": "other letters", "$HOME`": "shell characters"}.items():
    @fault(f"{name} in the bundle's path", "page back; install tool ran 1×", called=f"Vok{character}20 {character}.app")
    def _(it):
        it.first("getstate")
        it.start()


@fault("question mark in the bundle's path", "failure page: Error opening file /tmp/vok-*/Vok: No such file or directory",
       called="Vok?.app")
def _(it):
    it.first("getstate")
    it.start()


@fault("apostrophe in the bundle's path", "page back", called="Vok's.app")
def _(it):
    it.first("getstate")
    it.start()


@fault("program reached by a symbolic link", "page back; install tool ran 1×")
def _(it):
    link = it.directory / "link"
    link.symlink_to(it.program)
    it.program = link
    it.first("getstate")
    it.start()


@fault("bundle reached by a symbolic link", "page back; install tool ran 1×")
def _(it):
    link = it.directory / "link"
    link.symlink_to(it.bundle)
    it.program = link / "Contents/MacOS/vok-installer"
    it.first("getstate")
    it.start()


@fault("configuration of 10 MB", "page first")
def _(it):
    it.configuration["more"] = "x" * 10_000_000
    it.start()


def bad_configuration(name, content):
    @fault(f"configuration {name}", "sheet: Initialization failed. Failed to load app config from the '/tmp/vok-*/Vok Installer.app/Contents/MacOS/Tools/installer_config.plist' file.")
    def _(it):
        it.configuration = content
        it.start()


bad_configuration("nested 200,000 levels deep", b"<plist>" + b"<dict><key>a</key>" * 200_000)
bad_configuration("cut off", b"<plist><dict><key>agentId</key><str")
bad_configuration("empty", b"")


def main():
    program, only = sys.argv[1], re.compile(sys.argv[2] if len(sys.argv) > 2 else "")
    failed = 0
    for name, outcome, seconds, bundle, function in FAULTS:
        if not only.search(name):
            continue
        it = Installer(program, **bundle)
        try:
            function(it)
            seen = it.outcome(outcome, seconds)
            if seen != outcome:
                print(it.log())
        finally:
            it.close()
        good = seen == outcome
        failed += not good
        print(f"{name} | {seen} | {'ok' if good else 'NOT OK, expected: ' + outcome}", flush=True)
    print(f"{failed} faults end otherwise than they should." if failed else "All faults end as they should.")
    sys.exit(failed > 0)


main()
