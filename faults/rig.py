"""What the faults and the soak are made of: a server of pages, a bundle for them, and the program on them."""

import contextlib
import http.server
import os
import pathlib
import plistlib
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import urllib.parse


def page(text, then=None):
    """A page that reads `text`, and goes on to the address `then` when it has loaded."""
    go = f"<script>onload = () => location = '{then}'</script>" if then else ""
    return f"<!doctype html><title>{text}</title><h1 style='text-align: center; margin: 40vh 0'>{text}</h1>{go}"


def output(*command, **options):
    """What a command prints, as far as it gets within a few seconds."""
    try:
        return subprocess.run(command, capture_output=True, timeout=10, **options).stdout
    except subprocess.TimeoutExpired:
        return b""


class Pages(http.server.ThreadingHTTPServer):
    """Serves `answers` on 127.0.0.1: by path, a page or a function that answers the handler's request itself.
    A path without an answer is an ordinary page."""

    daemon_threads = True
    address_family = 2

    def __init__(self, answers):
        super().__init__(("127.0.0.1", 0), Handler)
        self.answers = answers
        threading.Thread(target=self.serve_forever, daemon=True).start()

    @property
    def address(self):
        return f"http://127.0.0.1:{self.server_port}"


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        path = urllib.parse.urlsplit(self.path).path
        answer = self.server.answers.get(path, page(path))
        if callable(answer):
            answer = answer(self)
        if answer is not None:
            self.answer(answer)

    def answer(self, body, status=200, **headers):
        """Sends a whole answer."""
        content = body.encode()
        self.send_response(status)
        for name, value in ({"Content-Type": "text/html", "Content-Length": len(content)} | headers).items():
            self.send_header(name.replace("_", "-"), str(value))
        self.end_headers()
        self.wfile.write(content)

    def handle(self):
        with contextlib.suppress(ConnectionError):  # the client hangs up
            super().handle()

    def log_message(self, *_):
        pass


class Installer:
    """A bundle in a directory of its own, its pages, and the program that shows them."""

    def __init__(self, program, called="Vok Installer.app"):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="vok-"))
        self.home = self.directory / "home"
        self.home.mkdir()
        self.bundle = self.directory / called
        self.tools = self.bundle / "Contents/MacOS/Tools"
        self.tools.mkdir(parents=True)
        self.program = self.bundle / "Contents/MacOS/vok-installer"
        shutil.copy(program, self.program)
        self.answers = {"/first": page("first")}
        self.pages = Pages(self.answers)
        self.splash = page("splash")
        self.splash_file = self.tools / "splash.html"
        self.configuration = {
            "agentId": "AGENT", "targetDir": "/opt/target", "installTool": "install tool",
            "launchAsAdminTool": "admin tool", "analyticParams": "src=faults",
            "firstInstallationPageUrl": self.pages.address + "/first",
            "commandUrlPrefix": self.pages.address + "/command"}
        self.environment = os.environ | {"HOME": str(self.home), "LC_ALL": "C.UTF-8"}
        self.before = []
        self.process = None
        self.tool("install tool", "")
        self.tool("admin tool", "")

    def tool(self, name, does):
        """A tool that notes that it ran and goes on with the shell commands `does`."""
        file = self.tools / name
        file.write_text(f'#!/bin/bash\necho >>"$0.runs"\n{does}\n')
        file.chmod(0o755)

    def command(self, name, **parameters):
        """The path and query of a command URL that reports to /back."""
        query = {"command": name, "callbackUrl": self.pages.address + "/back"} | parameters
        return "/command?" + urllib.parse.urlencode(query, quote_via=urllib.parse.quote)

    def first(self, name, **parameters):
        """Lets the first page go on to a command URL."""
        self.answers["/first"] = page("first", self.command(name, **parameters))

    def start(self):
        """Starts the program, by the words of `before` if there are any."""
        with open(self.bundle / "Contents/Info.plist", "wb") as file:
            plistlib.dump({"CFBundleVersion": "1", "CFBundleDisplayName": "Vok Faults"}, file)
        self.splash_file.write_text(self.splash)
        configuration = self.configuration
        if isinstance(configuration, dict):
            configuration = plistlib.dumps(configuration)
        (self.tools / "installer_config.plist").write_bytes(configuration)
        with open(self.directory / "log", "ab") as log:
            self.process = subprocess.Popen([*self.before, str(self.program)], env=self.environment, stderr=log,
                                            stdin=subprocess.DEVNULL, stdout=log, start_new_session=True)

    def close(self):
        """Ends the program with all its children, and removes the bundle."""
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        self.pages.shutdown()
        self.pages.server_close()
        subprocess.run(["chmod", "-R", "u+w", self.directory], check=True)
        shutil.rmtree(self.directory)

    def log(self):
        return (self.directory / "log").read_text(errors="replace")

    def wait_for(self, condition, limit=15):
        """Looks until `condition` holds; whether it came to hold."""
        end = time.monotonic() + limit
        while not (held := condition()) and time.monotonic() < end:
            time.sleep(0.05)
        return held

    def wait_for_log(self, text):
        self.wait_for(lambda: text in self.log())

    def kill_largest(self, name):
        """Kills the program's process of that name with the most memory."""
        found = output("pgrep", "-d,", "-g", str(self.process.pid), name).strip()
        largest = output("ps", "-o", "pid=", "--sort=-rss", "-p", found)
        os.kill(int(largest.split()[0]), signal.SIGKILL)

    def sheet(self):
        """The message of the sheets that are open, if any."""
        texts = output(os.environ["SHEET"], str(self.process.pid)).decode()
        return re.sub(r"Error\|(.*?)\|OK\|", r"\1", texts, flags=re.S).replace("\n", " ")

    def blank(self):
        """Whether the middle of the window has but one colour."""
        window = output("xdotool", "search", "--onlyvisible", "--name", "^Vok Faults$").split()
        picture = output("import", "-window", window[0], "png:-") if window else b""
        middle = ("-gravity", "center", "-crop", "90%x80%+0+0")
        return output("convert", "png:-", *middle, "-format", "%k", "info:", input=picture) in (b"", b"1")

    def shown(self):
        """What the person sees, in one line."""
        status = self.process.poll()
        if status is not None:
            return "ended by a signal" if status < 0 else f"ended with {status}"
        if sheet := self.sheet():
            return "sheet: " + sheet
        if self.blank():
            return "blank window"
        pages = re.findall(r"^(?:frameUrl = (?:\w+://[^/]*([^?\n]*)).*|Failed to load .* \((.*)\)\.)$",
                           self.log(), re.M)
        path, reason = pages[-1] if pages else ("nothing", "")
        return f"failure page: {reason}" if reason else f"page {pathlib.PurePath(path).name}"

    def ran(self):
        """How often each tool ran."""
        runs = {name: (self.tools / f"{name}.runs").read_text().count("\n")
                for name in ("install tool", "admin tool") if (self.tools / f"{name}.runs").exists()}
        return "".join(f"; {name} ran {count}×" for name, count in runs.items())

    def outcome(self, expected, limit):
        """What is there in the end: `expected` when that comes and stays, else what is there after a while."""
        look = lambda: (self.shown() + self.ran()).replace(str(self.directory), "/tmp/vok-*")
        self.wait_for(lambda: look() == expected, limit)
        time.sleep(1)
        return look()
