"""Runs the demo's launch-as-admin tool with a pkexec that answers as the real one does."""
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import urllib.parse

from rig.page_server import PageServer

TOOL = pathlib.Path(__file__).resolve().parents[1] / "examples/demo/Tools/launch-as-admin"
USED = ("basename", "cat", "curl", "dirname", "grep", "sed", "sh", "tr", "uname")

# Like the real one, it must not ask in a terminal, and needs a running parent.
PKEXEC = """[ "$1" = --disable-internal-agent ] && shift || exit 99
grep -q launch-as-admin /proc/$PPID/cmdline || { echo 'Refusing to render service to dead parents.' >&2; exit 127; }
"""
ALLOWED = 'PKEXEC_UID=1000 exec "$@"'
ERROR = "echo 'Error executing command as another user: {}' >&2; exit {}"


class LaunchAsAdminTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        contents = pathlib.Path(scratch.name) / "My Product.app/Contents"
        self.tools = contents / "MacOS/Tools"
        self.bin = contents / "bin"
        self.tools.mkdir(parents=True)
        self.bin.mkdir()
        shutil.copy(TOOL, self.tools)
        for name in USED:
            (self.bin / name).symlink_to(shutil.which(name))
        self.write(self.bin / "id", "[ $PKEXEC_UID ] && echo 0 || echo 1000")
        self.write(self.bin / "logger", f'echo "$*" >>"{contents}/log"')
        self.log = contents / "log"
        self.server = PageServer()
        self.server.open()
        self.addCleanup(self.server.close)
        self.reports = []
        self.server.answers["/report"] = self.take_report

    def write(self, file, script):
        file.write_text(f"#!/bin/sh\n{script}\n")
        file.chmod(0o755)

    def take_report(self, request):
        self.reports.append(dict(urllib.parse.parse_qsl(urllib.parse.urlsplit(request.path).query)))
        return "{}"

    def launch(self, pkexec, tool="", program="tool"):
        """Runs the tool's script with the answer of pkexec, or without a pkexec."""
        (self.bin / "pkexec").unlink(missing_ok=True)
        if pkexec is not None:
            self.write(self.bin / "pkexec", PKEXEC + pkexec)
        self.write(self.tools / "tool", tool)
        self.reports.clear()
        self.log.write_text("")
        command = [self.tools / "launch-as-admin", self.tools / program, "command=Install", "pid=P", "agentId=a b",
                   f"reportUrl={self.server.url('/report?job=7')}"]
        done = subprocess.run(command, check=False, capture_output=True, text=True, timeout=60,
                              env={"PATH": str(self.bin), "no_proxy": "*"})
        self.assertEqual([], self.server.faults())
        return done

    def test_reports_that_the_tool_did_not_start_or_crashed(self):
        for status, message, pkexec, tool in (
                (126, "The request for administrator rights was dismissed.",
                 ERROR.format("Request dismissed", 126), ""),
                (127, "Administrator rights were not granted.", ERROR.format("Not authorized", 127), ""),
                (127, "Administrator rights cannot be requested: no polkit agent is running on this desktop.",
                 ERROR.format("No authentication agent found.", 127), ""),
                (127, "Administrator rights could not be requested. The log has the reason.",
                 "echo 'Error getting authority: could not be started' >&2; exit 127", ""),
                (127, "Administrator rights cannot be requested: pkexec is not installed.", None, ""),
                (137, "The install tool crashed (signal 9).", ALLOWED, "kill -9 $$")):
            with self.subTest(message):
                done = self.launch(pkexec, tool)
                self.assertEqual(status, done.returncode)
                self.assertEqual([{"job": "7", "pid": "P", "agentId": "a b", "action": "install", "event": "finished",
                                   "result": "failed", "message": message}], self.reports)
                self.assertIn(f"-t my-product launch-as-admin: {message}\n", self.log.read_text())
                if pkexec and "Error" in pkexec:
                    self.assertIn("launch-as-admin: Error ", self.log.read_text())

    def test_leaves_reports_to_a_tool_that_has_started(self):
        for status in (0, 3, 126, 127, 143, 255):
            with self.subTest(status):
                done = self.launch(ALLOWED, f'echo out; echo "$@"; echo error >&2; exit {status}')
                self.assertEqual(status, done.returncode)
                url = self.server.url("/report?job=7")
                self.assertEqual(f"out\ncommand=Install pid=P agentId=a b reportUrl={url}\n", done.stdout)
                self.assertEqual(("error\n", [], ""), (done.stderr, self.reports, self.log.read_text()))

    def test_gives_rights_to_programs_of_its_own_directory_only(self):
        self.write(self.bin / "other", "echo ran")
        done = self.launch(ALLOWED, program="../../bin/other")
        self.assertEqual((127, ""), (done.returncode, done.stdout))


unittest.main()
