"""A copy of the installed program, with recording tools, pages and a default browser."""

import contextlib
import os
import pathlib
import platform
import plistlib
import shutil
import signal
import subprocess
import tempfile
import urllib.parse

from rig import accessibility, desktop
from rig.bundle import copy_bundle, update_plist
from rig.page_server import PageServer, page
from rig.waiting import output, wait_for

TITLE = "Vok Prüfung"
WEB_PROCESS, NETWORK_PROCESS = "WebKitWebProces", "WebKitNetworkPr"

# Appends a line "[argument][argument]..." for each call.
RECORD = """#!/bin/bash
printf -v call '[%s]' "$@"
echo "$call" >>"$0.calls"
"""


class Installer:
    """Everything may be changed until `start` is called; afterwards the tools, the splash page and the answers."""

    def __init__(self, called="Vok Installer.app"):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="vok-"))
        self.home = self.directory / "home"
        self.bundle = copy_bundle(self.directory / called)
        self.tools = self.bundle / "Contents/MacOS/Tools"
        self.program = self.bundle / "Contents/MacOS/vok-installer"
        self.splash = self.tools / "splash.html"
        self.configuration_file = self.tools / "installer_config.plist"
        self.server = PageServer()
        self.answers = self.server.answers
        self.configuration = {
            "agentId": "AGENT", "targetDir": "/opt/target dir", "installTool": "install tool",
            "launchAsAdminTool": "admin tool", "analyticParams": "src=a b&utm=ü",
            "firstInstallationPageUrl": self.server.url("/first"), "commandUrlPrefix": self.server.url("/command")}
        self.environment = os.environ | {"HOME": str(self.home), "LC_ALL": "C.UTF-8", "LANGUAGE": "en_GB"}
        self.before = []  # words of a command that starts the program
        self.process = None
        self.replace_tools()
        self.make_default_browser()
        self.identify(CFBundleVersion="1.2.3", CFBundleDisplayName=TITLE)

    def replace_tools(self):
        shutil.rmtree(self.tools, ignore_errors=True)
        self.tools.mkdir()
        self.splash.write_text("<!doctype html><meta charset=utf-8><title>splash</title><h1>splash</h1>")
        for name in "install tool", "admin tool", "browser":
            self.tool(name)

    def make_default_browser(self):
        self.desktop_entry("browser", f'"{self.tools}/browser" %u')
        config = self.home / ".config"
        config.mkdir()
        (config / "mimeapps.list").write_text("[Default Applications]\nx-scheme-handler/http=browser.desktop\n")

    def desktop_entry(self, name, command):
        """Makes a desktop entry for a browser."""
        applications = self.home / ".local/share/applications"
        applications.mkdir(parents=True, exist_ok=True)
        (applications / f"{name}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Browser\nExec={command}\n")

    def identify(self, **information):
        """Changes values of the bundle's Info.plist."""
        update_plist(self.bundle / "Contents/Info.plist", information)

    def tool(self, name, does=""):
        """Creates a tool that records its call and then runs the shell commands `does`."""
        file = self.tools / name
        file.write_text(f"{RECORD}{does}\n")
        file.chmod(0o755)

    # Addresses

    def command(self, name, callback="/back", **parameters):
        """The path and query of a command URL. `name` is already escaped."""
        parameters = ({"callbackUrl": self.server.url(callback)} if callback else {}) | parameters
        quoted = (f"&{key}={urllib.parse.quote(value, safe='')}" for key, value in parameters.items())
        return f"/command?command={name}{''.join(quoted)}"

    def first_path(self):
        """The path and query of the first page."""
        unescaped = "!*'();/:@&=+$,"
        os_name = f"Mac OS {platform.freedesktop_os_release()['PRETTY_NAME']}"
        os_name = urllib.parse.quote(urllib.parse.quote(os_name, unescaped), unescaped)
        return f"/first?agentId=AGENT&version=1.2.3&os={os_name}&lang=en-GB&src=a%20b&utm=%C3%BC"

    def first(self, name, **parameters):
        """Lets the first page navigate to a command URL."""
        self.answers["/first"] = page("first", self.command(name, **parameters))

    # The program

    def start(self, *arguments, open_server=True):
        if open_server:
            self.server.open()
        content = self.configuration
        self.configuration_file.write_bytes(content if isinstance(content, bytes) else plistlib.dumps(content))
        self.process = self.launch(*arguments)

    def launch(self, *arguments):
        """Starts the program once more and returns its process."""
        with open(self.directory / "log", "ab") as log:
            return subprocess.Popen([*self.before, self.program, *arguments], env=self.environment, stderr=log,
                                    stdin=subprocess.DEVNULL, stdout=log, start_new_session=True)

    def close(self):
        """Ends the program with all its children, and removes the bundle."""
        if self.process:
            kill_group(self.process)
        self.server.close()
        subprocess.run(["chmod", "-R", "u+w", self.directory], check=True)
        shutil.rmtree(self.directory)

    def exit_status(self):
        """The program's exit status; None while it runs."""
        return self.process.wait(60)

    def is_running(self):
        return self.process.poll() is None

    def log(self):
        return (self.directory / "log").read_text(errors="replace")

    def calls(self, tool, count=0):
        """The recorded calls of a tool, once there are `count` of them."""
        file = self.tools / f"{tool}.calls"
        read = lambda: file.read_text().splitlines() if file.exists() else []
        wait_for(lambda: len(read()) >= count)
        return read()

    def processes(self, name):
        """The process numbers of the program's processes of that name, the one with the least memory first."""
        found = output("pgrep", "-d,", "-g", str(self.process.pid), name).strip()
        return [int(number) for number in output("ps", "-o", "pid=", "--sort=rss", "-p", found).split()]

    def kill_largest(self, name):
        """Kills the program's process of that name with the most memory."""
        os.kill(self.processes(name)[-1], signal.SIGKILL)

    # What the user sees

    def sheet(self):
        """The strings of the open sheets: of each its title, its message and its buttons."""
        return [element.name for element in accessibility.elements(self.process.pid) if element.role == "label"]

    def menu(self):
        """The items of the open context menu."""
        return [element.name for element in accessibility.elements(self.process.pid) if element.role == "menu item"]

    def press_sheet_button(self):
        accessibility.press(self.process.pid, "push button")

    # Waiting, for tests

    def wait_for_requests(self):
        wait_for(lambda: not self.server.missing() or not self.is_running(), 60)
        assert self.server.faults() == []

    def wait_for_log(self, text):
        assert wait_for(lambda: text in self.log()), f"'{text}' is not in the log"

    def wait_for_sheet(self, *texts):
        assert wait_for(lambda: self.sheet() == list(texts)), f"the sheet is {self.sheet()}"

    def wait_for_no_sheet(self):
        assert wait_for(lambda: not self.sheet()), f"the sheet is {self.sheet()}"

    def close_window(self):
        """Closes the window as the window manager does; the program must exit with 0."""
        assert desktop.press_until("alt+F4", lambda: not self.is_running()), "the window stays"
        assert self.process.returncode == 0


def kill_group(process):
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, signal.SIGKILL)
    process.wait()
