"""The programs that are measured, and one run of one of them."""
import contextlib
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

from rig.bundle import copy_bundle, update_plist

SIZE = (900, 680)
MINI_BROWSER = pathlib.Path("/usr/lib/x86_64-linux-gnu/webkitgtk-6.0/MiniBrowser")


def bundle_for(directory, site, page):
    """A copy of the installed bundle in `directory` whose first page is `page` of the site."""
    bundle = copy_bundle(directory / "Vok Installer.app")
    update_plist(bundle / "Contents/MacOS/Tools/installer_config.plist",
                 {"firstInstallationPageUrl": site.url(page), "commandUrlPrefix": site.url("/command"),
                  "pageHosts": site.url().removeprefix("http://")})
    return bundle


def installer(bundle):
    return [bundle / "Contents/MacOS/vok-installer"]


def bare(build, bundle, *urls):
    return [build / "bench/bare_webview", (bundle / "Contents/MacOS/Tools/splash.html").as_uri(), *urls]


def mini_browser(url):
    return [MINI_BROWSER, "--geometry={}x{}".format(*SIZE), url]


def chromium(url):
    root = ["--no-sandbox"] if os.geteuid() == 0 else []
    return ["chromium", *root, "--no-first-run", "--window-size={},{}".format(*SIZE), "--app=" + url]


@contextlib.contextmanager
def slow_accounts_service():
    """An accounts service on the system bus that lists no account, after 300 ms."""
    name, path = "org.freedesktop.Accounts", "/org/freedesktop/Accounts"
    service = subprocess.Popen([sys.executable, "-m", "dbusmock", "--system", "-l", "/dev/null", name, path, name])
    try:
        subprocess.run(["gdbus", "wait", "--system", "--timeout", "20", name], check=True)
        subprocess.run(["gdbus", "call", "--system", "-d", name, "-o", path,
                        "-m", "org.freedesktop.DBus.Mock.AddMethod", name,
                        "ListCachedUsers", "", "ao", "import time; time.sleep(0.3); ret = []"],
                       check=True, stdout=subprocess.DEVNULL)
        yield
    finally:
        service.terminate()
        service.wait()


class Run:
    """A program from its start to the end of its process tree."""

    def __init__(self, command):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        own = ["--user-data-dir=" + self.profile.name] if command[0] == "chromium" else []
        self.started = time.monotonic()
        self.process = subprocess.Popen([*command, *own], start_new_session=True)

    def tree(self):
        """The program's process and all its descendants."""
        parents = {}
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            with contextlib.suppress(OSError):
                parents[int(stat.parent.name)] = int(stat.read_text().rpartition(")")[2].split()[1])
        tree = [self.process.pid]
        for pid in tree:
            tree += [child for child, parent in parents.items() if parent == pid]
        return tree

    def end(self):
        for pid in self.tree():
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, signal.SIGKILL)
        self.process.wait()
        self.profile.cleanup()


def proportional_memory(pid):
    """Bytes of a process; shared pages are divided among their processes."""
    with contextlib.suppress(OSError):
        for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
            if line.startswith("Pss:"):
                return int(line.split()[1]) * 1024
    return 0
