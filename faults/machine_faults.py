"""Faults of the machine, of the bundle and of its configuration."""

import os
import socket
import subprocess
import time

from rig.page_server import page
from table import fault


# The machine

def limit(it, what, value):
    """Limits a resource of the running program for the next command; /back restores it."""
    def set_limit(limit, answer):
        subprocess.run(["prlimit", "--pid", str(it.process.pid), f"--{what}={limit}:"], check=True)
        return answer
    it.answers["/command"] = lambda request: set_limit(value(), page("command"))
    it.answers["/back"] = lambda request: set_limit(1000, page("back"))


def open_files(it):
    """The limit that leaves no descriptor free."""
    taken = {int(name) for name in os.listdir(f"/proc/{it.process.pid}/fd")}
    return min(set(range(len(taken) + 1)) - taken)


@fault("no more open files for getstate", "page back", "page back; install tool ran 1×")
def _(it):
    it.first("getstate")
    limit(it, "nofile", lambda: open_files(it))
    it.start()


@fault("no more open files for uninstall", "page command; admin tool ran 1×")
def _(it):
    it.first("uninstall", reportUrl="r")
    limit(it, "nofile", lambda: open_files(it))
    it.start()


@fault("no more processes for getstate", "page back", needs="process limit")
def _(it):
    it.first("getstate")
    limit(it, "nproc", lambda: 1)
    it.start()


@fault("no more processes for uninstall", "ended by a signal", needs="process limit")
def _(it):
    it.first("uninstall", reportUrl="r")
    limit(it, "nproc", lambda: 1)
    it.start()


@fault("few open files from the start", "page first", "ended by a signal")
def _(it):
    it.before = ["prlimit", "--nofile=32"]
    it.start()


@fault("no processes from the start", "ended by a signal", needs="process limit")
def _(it):
    it.before = ["prlimit", "--nproc=1"]
    it.start()


def forbid_namespaces(it):
    forbid = 'echo 0 >/proc/sys/user/max_user_namespaces && exec setpriv --ambient-caps -all --inh-caps -all "$0"'
    it.before = ["unshare", "--user", f"--map-user={os.getuid()}", f"--map-group={os.getgid()}", "--keep-caps",
                 "sh", "-c", forbid]


@fault("no user namespaces",
       "sheet: The web view cannot start: this system blocks the user namespaces that its sandbox needs.  Ask your "
       "administrator to allow them with this command: sysctl user.max_user_namespaces=10000", needs="namespaces")
def _(it):
    forbid_namespaces(it)
    it.start()


@fault("no user namespaces, in a container of its own", "page first", needs="namespaces")
def _(it):
    forbid_namespaces(it)
    it.environment |= {"SNAP": "/snap/vok/1", "SNAP_NAME": "vok", "SNAP_REVISION": "1"}
    it.start()


@fault("home directory read-only", "page first", needs="permissions")
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


@fault("temporary directory and home full", "page first", "ended by a signal", needs="tmpfs")
def _(it):
    it.environment |= {"TMPDIR": str(it.home), "XDG_RUNTIME_DIR": str(it.home)}
    it.before = ["unshare", "-rm", "sh", "-c", 'mount -t tmpfs -o size=64k none "$HOME" && '
                 'cat /dev/zero >"$HOME/full" 2>&-; exec "$0" "$@"']
    it.start()


# A bus that starts no services: accessibility would be asked for where the last one ran.
BUS = """<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context="default">
<allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy></busconfig>"""


def bus(it, variable):
    """A separate message bus, which ends when /first has loaded and asks for /lost. That request may fail: the
    network process may end with its bus."""
    (it.directory / "bus.conf").write_text(BUS)
    daemon = subprocess.Popen(["dbus-daemon", f"--config-file={it.directory}/bus.conf", "--nofork", "--print-address"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    it.environment[variable] = daemon.stdout.readline().strip()
    it.answers["/first"] = page("first") + """<script>
        onload = () => fetch('/lost').finally(() => location = '/next')</script>"""
    it.answers["/lost"] = lambda request: daemon.kill() or time.sleep(1) or page("lost")


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


# Bundle and configuration

for name, called in {
        "blanks": "Vok Fault 20.app", "quotation marks": 'Vok "20".app', "per cent signs": "Vok%20%.app",
        "number signs": "Vok #20.app", "brackets": "Vok [20].app", "other letters": "Größe 日.app",
        "shell characters": "Vok $HOME`.app"}.items():
    @fault(f"{name} in the bundle's path", "page back; install tool ran 1×", called=called)
    def _(it):
        it.first("getstate")
        it.start()


@fault("question mark in the bundle's path", "page back; install tool ran 1×", called="Vok?.app")
def _(it):
    it.first("getstate")
    it.start()


@fault("apostrophe in the bundle's path", "page back", called="Vok's.app")
def _(it):
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


for name, content in {"is not a property list": b"garbage",
                      "nested 200,000 levels deep": b"<plist>" + b"<dict><key>a</key>" * 200_000}.items():
    @fault(f"configuration {name}", "sheet: Initialization failed. Failed to load app config from the "
           "'/tmp/vok-*/Vok Installer.app/Contents/MacOS/Tools/installer_config.plist' file.")
    def _(it, content=content):
        it.configuration = content
        it.start()
