"""Runs the example install tool as the installer does, against a server with good and bad payloads."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import urllib.parse

from rig.page_server import PageServer

TOOL = pathlib.Path(__file__).resolve().parents[1] / "examples/install-tool/install-tool"


class InstallToolTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)
        self.target = self.scratch / "target dir"
        self.tool = pathlib.Path(shutil.copy(TOOL, self.scratch))
        self.server = PageServer()
        self.server.open()
        self.addCleanup(self.server.close)
        self.reports = []
        self.server.answers |= {"/report": self.take_report, "/agent.conf": "key=value\n"}
        self.offer("1.0.0\n")

    def openssl(self, *arguments):
        subprocess.run(["openssl", *arguments], cwd=self.scratch, check=True, capture_output=True)

    def take_report(self, request):
        query = urllib.parse.urlsplit(request.path).query
        self.reports.append(dict(urllib.parse.parse_qsl(query, keep_blank_values=True)))
        return "{}"

    def offer(self, content):
        """Serves a signed payload."""
        (self.scratch / "payload").write_text(content)
        if not (self.scratch / "key.pem").exists():
            self.openssl("genpkey", "-algorithm", "ed25519", "-out", "key.pem")
            self.openssl("pkey", "-in", "key.pem", "-pubout", "-out", "public-key.pem")
        self.openssl("pkeyutl", "-sign", "-rawin", "-inkey", "key.pem", "-in", "payload", "-out", "payload.sig")
        self.server.answers |= {"/agent": content, "/agent.sig": (self.scratch / "payload.sig").read_bytes()}

    def run_tool(self, command, **values):
        given = {"command": command, "pid": "P", "agentId": "A", "targetDir": self.target,
                 "configTemplateUrl": self.server.url("/agent.conf"), "installerUrl": self.server.url("/agent"),
                 "reportUrl": self.server.url("/report?job=7"), "print_info_prefix": "Install info {{",
                 "print_info_suffix": "}"} | values
        self.reports.clear()
        done = subprocess.run([self.tool, *(f"{key}={value}" for key, value in given.items())], check=True,
                              capture_output=True, text=True, timeout=60, cwd=self.scratch,
                              env=os.environ | {"no_proxy": "*"})
        self.assertEqual([], self.server.faults())
        return done.stdout

    def assert_refused(self, message, **values):
        """The last report is a failure with the message, and what is installed has not changed."""
        before = self.installed()
        self.run_tool("upgrade", **values)
        self.assertEqual(("finished", "failed"), (self.reports[-1]["event"], self.reports[-1]["result"]))
        self.assertIn(message, self.reports[-1]["message"])
        self.assertEqual(before, self.installed())

    def installed(self):
        return {file.name: file.read_text() for file in self.target.glob("*")}

    def test_installs_reports_and_uninstalls(self):
        self.run_tool("Install")
        self.assertEqual({"agent": "1.0.0\n", "agent.conf": "key=value\n"}, self.installed())
        self.assertEqual({("7", "P", "install")},
                         {(each["job"], each["pid"], each["action"]) for each in self.reports})
        events = [each["event"] for each in self.reports]
        self.assertEqual(["progress"] * (len(events) - 1) + ["finished"], events)
        percents = [int(each["percent"]) for each in self.reports]
        self.assertGreater(len(percents), 2)
        self.assertEqual((sorted(percents), 100), (percents, percents[-1]))
        self.assertEqual("success", self.reports[-1]["result"])
        self.assertEqual('Install info {{"installed": 1, "version": "1.0.0"}\n',
                         self.run_tool("print_installed_product_info"))
        (self.target / "notes").write_text("the user's")
        self.run_tool("uninstall")
        self.assertEqual({"notes": "the user's"}, self.installed())
        self.assertEqual('Install info {{"installed": 0}\n', self.run_tool("print_installed_product_info"))

    def test_refuses_before_it_changes_anything(self):
        self.run_tool("install")
        self.assertEqual("success", self.reports[-1]["result"])
        self.offer("2.0.0\n")
        too_large = lambda request: request.answer("", Content_Length=10**18)
        for message, changed, values in (
                ("not enough free space", {"/agent": too_large}, {}),
                ("not signed by the maker", {"/agent": "evil\n"}, {}),
                ("not signed by the maker", {"/agent.sig": b"x" * 64}, {}),
                ("download failed", {"/agent.sig": lambda request: request.answer("", 404)}, {}),
                ("is not trusted", {}, {"installerUrl": "http://other.invalid/agent"}),
                ("not possible", {}, {"targetDir": "relative"})):
            with self.subTest(message, changed=[*changed]):
                good = self.server.answers.copy()
                self.server.answers |= changed
                self.assert_refused(message, **values)
                self.server.answers = good


unittest.main()
