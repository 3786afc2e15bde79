"""Runs scripts/brand on a good product and on what a maker may get wrong: brand_test.py BUNDLE"""
import os
import pathlib
import plistlib
import socket
import struct
import subprocess
import sys
import tarfile
import tempfile
import unittest
import zlib

SOURCE = pathlib.Path(__file__).resolve().parents[1]
TEMPLATE = pathlib.Path(sys.argv.pop())
sys.path.append(str(SOURCE / "packaging/brand"))
import product as products  # noqa: E402


def png(width, height, pixels=None):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    pixels = zlib.compress(bytes((width + 1) * height)) if pixels is None else pixels
    header = struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


def program(**changes):
    """The installer's own program, with some bytes of its header changed."""
    head = bytearray((TEMPLATE / "Contents/MacOS/vok-installer").read_bytes()[:4096])
    for position, value in changes.values():
        head[position:position + len(value)] = value
    return bytes(head)


def svg(attributes, content="<path d='M0 0h9v9z'/>"):
    return f"<svg xmlns='http://www.w3.org/2000/svg' {attributes}>{content}</svg>".encode()


CONF = {
    "name": "Größe & Söhne", "version": "2.10", "identifier": "com.example.Agent-Setup",
    "summary": "Install the agent", "description": "Installs.\n  More; $HOME \"quoted\" \\ 100 %.",
    "maintainer": "Größe <a@example.com>", "homepage": "https://example.com/", "license": "LicenseRef-proprietary",
}
CONFIGURATION = {
    "firstInstallationPageUrl": "https://example.com/first.html", "analyticParams": "a=1&b=x y",
    "commandUrlPrefix": "https://example.com/command", "installTool": "install tool", "launchAsAdminTool": "admin",
    "agentId": "A-1", "targetDir": "/opt/my agent", "lang": "pt-BR", "pageHosts": "example.com",
}
HEAD = "<meta charset='utf-8'>"
SPLASH = HEAD + ("<style>body { background: url(data:x) }</style><link rel=stylesheet href=style.css>"
                 "<img src='logo.svg'><a href='https://example.com'>Help</a><script src='a%20b.js'></script>")
FILES = {
    "LICENSE": b"All rights reserved.\n", "icon.svg": svg("viewBox='0 0 1 1'"), "Tools/splash.html": SPLASH.encode(),
    "Tools/logo.svg": svg("width='9' height='9'"), "Tools/style.css": b"i { background: url(logo.svg) }",
    "Tools/a b.js": b"if (location.hash === '#x') document.title = 'x'", "Tools/admin": b"#!/usr/bin/perl\n",
    "Tools/install tool": b"#!/bin/sh\n",
}
TOOL = "installTool 'install tool' "
NO_HOST = "needs a host name such as setup.example.com"

# One mistake in a value, and what is said of it. None leaves the value out.
VALUES = [
    ("name", None, "product.conf: 'name' is missing"),
    ("name", "Bob's", "product.conf: name 'Bob's' is part of a path"),
    ("name", "日本", "too few letters from a to z"),
    ("name", "Bash", "becomes the package name 'bash', which another program has"),
    ("name", "Firefox", "becomes the package name 'firefox'"),
    ("name", "systemd", "becomes the package name 'systemd'"),
    ("name", "Coreutils!", "becomes the package name 'coreutils'"),
    ("name", "a\u202eb", "line 1: it contains a character that cannot be shown, U+202E (right-to-left override)"),
    ("name", "a\x1bb", "line 1: it contains a character that cannot be shown, U+001B (control character)"),
    ("name", "n" * 300, "'name' is too long: 300 bytes"),
    ("version", "2.0-beta", "product.conf: version '2.0-beta' must be one to four numbers"),
    ("version", "1" * 99, "'version' is too long"),
    ("identifier", "com.1example.Agent", "identifier 'com.1example.Agent' must be"),
    ("identifier", "com.example." + "x" * 200, "'identifier' is too long"),
    ("summary", "Installs.", "without a full stop at its end"),
    ("maintainer", "Somebody", "maintainer 'Somebody' must be"),
    ("maintainer", "Acme, Inc. <a@example.com>", "must be a name without commas"),
    ("maintainer", "(Acme) <a@example.com>", "must be a name without commas, brackets"),
    ("maintainer", "Acme <root@localhost>", "must be a name without commas"),
    ("maintainer", "Acme <a@example..com>", "must be a name without commas"),
    ("homepage", "http://example.com", "must be an https address"),
    ("homepage", "https://-/", NO_HOST),
    ("license", "my licence", "must be the short name of a licence"),
    ("depends", "curl jq", "depends 'curl jq' must be names"),
    ("licence", "MIT", "unknown key 'licence'"),
    ("installTool", None, "'installTool' is missing"),
    ("installTool", "../tool", "installTool '../tool' must be the plain name"),
    ("installTool", "other", "installTool 'other' is not in Tools"),
    ("installTool", "x" * 300, "is longer than 255 bytes"),
    ("installTool", "a$b", "contains $ which the shell"),
    ("installTool", "admin", "installTool and launchAsAdminTool are the same file"),
    ("launchAsAdminTool", "splash.html", "launchAsAdminTool 'splash.html' is not executable"),
    ("launchAsAdminTool", "", "'launchAsAdminTool' is empty"),
    ("agentId", "$(id)", "agentId '$(id)' contains $"),
    ("agentId", "a&b", "which are special in an address"),
    ("agentId", 5, "'agentId' must be a string"),
    ("agentId", "a\u2066b", "'agentId' contains a line break or another character that cannot be shown, U+2066"),
    ("targetDir", "opt/\"x\\", "targetDir 'opt/\"x\\' must be an absolute path"),
    ("targetDir", "/opt/\"x\\", "contains \" \\"),
    ("targetDir", "/", "targetDir '/' is a directory of the system"),
    ("targetDir", "/usr//local/", "is a directory of the system"),
    ("targetDir", "/usr/bin/agent", "is in a directory of the system"),
    ("targetDir", "/opt/../etc", "must not contain .. as a part"),
    ("targetDir", "/opt/" + "x" * 300, "contains a name longer than 255 bytes"),
    ("lang", "en_GB", "lang 'en_GB' must be a language tag"),
    ("installtool", "x", "unknown key 'installtool'"),
    ("analyticParams", "a=1&b", "analyticParams 'a=1&b' must be key=value pairs"),
    ("commandUrlPrefix", "https://example.com", "must have a path after the host"),
    ("commandUrlPrefix", "https://example.com/", "every page of the host would be a command"),
    ("commandUrlPrefix", "https://example.com/first", "would be taken for a command"),
    ("commandUrlPrefix", "https://Example.com/command", "must have its host in lower-case"),
    ("commandUrlPrefix", "HTTPS://example.com/command", "must be an address"),
    ("commandUrlPrefix", "https://example.com:443/command", "must leave out the port 443"),
    ("commandUrlPrefix", "https://example.com/a/../b", "must not contain . or .."),
    ("firstInstallationPageUrl", "http://example.com/first", "must use https"),
    ("firstInstallationPageUrl", "https://example.com/first?a=b", "must not contain a query"),
    ("firstInstallationPageUrl", "https://[::1/first", NO_HOST),
    ("firstInstallationPageUrl", "first.html", "must be an address that begins with https://"),
    ("firstInstallationPageUrl", "https://-example.com/first", NO_HOST),
    ("firstInstallationPageUrl", "https://example..com/first", NO_HOST),
    ("firstInstallationPageUrl", "https://256.1.1.1/first", NO_HOST),
    ("firstInstallationPageUrl", "https://127.1/first", NO_HOST),
    ("firstInstallationPageUrl", "https://example.com:70000/first", "must be a number from 1 to 65535"),
    ("firstInstallationPageUrl", "https://example.com:0443/first", "must be a number from 1 to 65535"),
    ("firstInstallationPageUrl", "https://example.com:6000/first", "uses the port 6000, which the web view refuses"),
    ("firstInstallationPageUrl", "https://me@example.com/first", "must not contain a user name"),
    ("pageHosts", " ", "'pageHosts' is empty"),
    ("pageHosts", "*.example.com example.com", "contains '*.example.com', but must hold exact host names"),
    ("pageHosts", "https://example.com", "contains 'https://example.com', but must hold exact host names"),
    ("pageHosts", "example.com:443", "contains 'example.com:443', which must leave out the port 443"),
    ("pageHosts", "help.example.com", "pageHosts lacks 'example.com', the host of commandUrlPrefix"),
    ("developerMode", "yes", "developerMode is for trying pages out"),
    ("developerMode", "no", "must be yes; to switch it off, leave the key out"),
]

# One file that is wrong: its content, None when it is missing.
CONTENTS = [
    ("product.conf", None, "product.conf is missing"),
    ("product.conf", b"\xef\xbb\xbfname = x\n", "product.conf begins with a byte order mark"),
    ("product.conf", "name = x\n".encode("utf-16"), "product.conf is in UTF-16"),
    ("product.conf", b"a = b\nname = \xe9\n", "product.conf is not in UTF-8: see line 2"),
    ("product.conf", b"[product]\nname = x\n", "line 1: '[product]' is a section heading"),
    ("product.conf", b"name = x\nname = y\n", "line 2: 'name' is there for the second time"),
    ("product.conf", b"name\n", "line 1: a line must be key = value"),
    ("LICENSE", None, "LICENSE is missing"),
    ("LICENSE", b" \n", "LICENSE is empty"),
    ("LICENSE", b"\xff\xff", "LICENSE is not in UTF-8"),
    ("icon.png", png(512, 512), "There must be one icon"),
    ("icon.svg", None, "There must be one icon"),
    ("icon.svg", b"<html/>", "icon.svg is not an SVG image"),
    ("icon.svg", b"<svg", "icon.svg is not an SVG image: see line 1"),
    ("icon.svg", b"\x1f\x8b", "icon.svg is not an SVG image"),
    ("icon.svg", b"<?xml version='1.0' encoding='x-none'?><svg/>", "icon.svg is not an SVG image"),
    ("icon.svg", svg(""), "icon.svg has no size"),
    ("icon.svg", svg("viewBox='0 0 0 0'"), "icon.svg has no size"),
    ("icon.svg", svg("width='100%' height='100%'"), "icon.svg has no size"),
    ("icon.svg", svg("viewBox='0 0 64 32'"), "icon.svg is 64 by 32; it must be square"),
    ("icon.svg", svg("viewBox='0 0 9 9'", ""), "icon.svg draws nothing"),
    ("Tools/installer_config.plist", None, "Tools/installer_config.plist is missing"),
    ("Tools/installer_config.plist", b"", "Tools/installer_config.plist is no XML or binary property list"),
    ("Tools/installer_config.plist", b"<plist>\n<dict>\n</plist>", "property list: see line 3"),
    ("Tools/installer_config.plist", b"<plist><dict><key>a</key><date>x</date></dict></plist>", "is no XML or binary"),
    ("Tools/installer_config.plist", b"<plist>" + b"<array>" * 5000, "is no XML or binary"),
    ("Tools/installer_config.plist", b"bplist00" + bytes(40), "is no XML or binary property list"),
    ("Tools/installer_config.plist", plistlib.dumps(["a"]), "must hold a dictionary"),
    ("Tools/install tool", b"", TOOL + "is empty"),
    ("Tools/install tool", b"echo\n", TOOL + "does not begin with #!"),
    ("Tools/install tool", b"\xef\xbb\xbf#!/bin/sh\n", TOOL + "begins with a byte order mark"),
    ("Tools/install tool", b"#!/bin/sh\r\necho\r\n", TOOL + "has Windows line ends (CRLF)"),
    ("Tools/install tool", b"#!/opt/none/sh\n", TOOL + "needs the interpreter '/opt/none/sh', which is not on"),
    ("Tools/install tool", b"#!/usr/bin/env -S nonesuch -x\n", TOOL + "needs the interpreter 'nonesuch', which is not on"),
    ("Tools/install tool", b"#!/usr/bin/env\n", TOOL + "must name its interpreter"),
    ("Tools/install tool", b"#!python3\n", TOOL + "must name its interpreter by an absolute path"),
    ("Tools/install tool", b"#!/bin/sh " + b"x" * 300, TOOL + "has a first line of more than 255 bytes"),
    ("Tools/install tool", b"#!/usr/bin/env python3\n", "does not name its package 'python3' in depends"),
    ("Tools/install tool", program(machine=(18, b"\x28\0")), TOOL + "is a program for another architecture"),
    ("Tools/install tool", program(kind=(16, b"\1\0")), TOOL + "is no program but an object file"),
    ("Tools/install tool", program()[:20], TOOL + "is cut off"),
    ("Tools/install tool", b"MZ\x90\0", TOOL + "is a program for Windows"),
    ("Tools/a\u202eb", b"", "has a character in its name that cannot be shown"),
    ("Tools/splash.html", None, "Tools/splash.html is missing"),
    ("Tools/splash.html", b"<p>", "Tools/splash.html: it names no character set"),
    ("Tools/splash.html", b"<meta charset='latin1'>", "its character set is 'latin1', but must be utf-8"),
    ("Tools/logo.svg", svg("", "<image href='https://cdn.example/x.png'/>"), "Tools/logo.svg: 'https://cdn.example"),
    ("Tools/style.css", b"@import 'https://cdn.example/x.css'", "Tools/style.css: 'https://cdn.example/x.css' is remote"),
    ("Tools/style.css", b"i { background: url('gone.png') }", "Tools/style.css: 'gone.png' is not in Tools"),
    ("Tools/a b.js", b"fetch('https://e.example/x')", "Tools/a b.js: 'https://e.example/x' is remote"),
    ("Tools/a b.js", b"location.replace('first.html')", "Tools/a b.js: it goes to another page by itself"),
]

PNGS = [
    (b"\x89PNG", "icon.png is not a PNG image"),
    (png(512, 400), "icon.png is 512 by 400 pixels; it must be square"),
    (png(64, 64), "icon.png is 64 by 64 pixels"),
    (png(0, 0), "icon.png is 0 by 0 pixels"),
    (png(512, 512)[:-30], "icon.png is damaged or cut off"),
    (png(512, 512, b"x"), "its pixels cannot be unpacked"),
    (png(512, 512, zlib.compress(b"\0")), "some of its pixels are missing"),
]

SPLASHES = [
    ("<script src=//cdn.example/x.js></script>", "'//cdn.example/x.js' is remote"),
    ("<style>@import 'https://cdn.example/x.css'</style>", "'https://cdn.example/x.css' is remote"),
    ("<meta http-equiv=refresh content='0; url=x.html'>", "it goes to another page by itself"),
    ("<script>window.location.href = 'x'</script>", "it goes to another page by itself"),
    ("<body onload='document.forms[0].submit()'>", "it goes to another page by itself"),
    ("<img src=gone.png>", "'gone.png' is not in Tools"),
    ("<img src='../icon.svg'>", "'../icon.svg' is not in Tools"),
]


class BrandTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)

    def write(self, values=(), files=()):
        """A good product with these values and files in it, None for those that are left out."""
        self.product = pathlib.Path(tempfile.mkdtemp(dir=self.scratch, prefix="my product "))
        values = CONF | CONFIGURATION | dict(values)
        values = {key: value for key, value in values.items() if value is not None}
        in_conf = (*CONF, "depends", "licence")
        conf = "".join(f"{key} = {value}\n" for key, value in values.items() if key in in_conf)
        configuration = {key: value for key, value in values.items() if key not in in_conf}
        made = {"product.conf": conf.encode(),
                "Tools/installer_config.plist": plistlib.dumps(configuration, fmt=plistlib.FMT_BINARY)}
        for name, content in (FILES | made | dict(files)).items():
            if content is not None:
                file = self.product / name
                file.parent.mkdir(exist_ok=True)
                file.write_bytes(content)
        for tool in ("install tool", "admin"):
            (self.product / "Tools" / tool).chmod(0o700)

    def mistakes(self):
        return "\n".join(products.read_product(self.product, TEMPLATE, for_package=True)[1])

    def brand(self, output, **environment):
        command = [SOURCE / "scripts/brand", self.product, self.scratch / output, TEMPLATE]
        result = subprocess.run(command, text=True, capture_output=True, check=False, env=os.environ | environment)
        self.assertNotIn("Traceback", result.stderr)
        return result

    def made(self, output, **environment):
        result = self.brand(output, **environment)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return (self.scratch / output).read_bytes() if (self.scratch / output).is_file() else None

    def test_a_good_product_becomes_a_bundle(self):
        self.write()
        self.made("Any name.app")
        contents = self.scratch / "Any name.app/Contents"
        info = plistlib.loads((contents / "Info.plist").read_bytes())
        self.assertEqual([info[key] for key in ("CFBundleDisplayName", "CFBundleVersion", "CFBundleIdentifier")],
                         ["Größe & Söhne", "2.10", "com.example.Agent-Setup"])
        self.assertEqual({file.name for file in (contents / "MacOS/Tools").iterdir()},
                         {"installer_config.plist", *(name[6:] for name in FILES if name.startswith("Tools/"))})
        self.assertTrue((contents / "Resources/icons/hicolor/scalable/apps/com.example.Agent-Setup.svg").is_file())
        self.assertTrue(os.access(contents / "MacOS/vok-installer", os.X_OK))
        self.assertEqual((contents / "MacOS/Tools/install tool").stat().st_mode & 0o777, 0o755)
        self.assertIn("exists already", self.brand("Any name.app").stderr)

    def test_package_and_archive_are_the_same_each_time(self):
        self.write([("depends", "curl | wget (>= 1.0)")], [("icon.svg", None), ("icon.png", png(512, 512))])
        for ending in (".deb", ".tar.xz"):
            first = self.made(f"first{ending}", SOURCE_DATE_EPOCH="1700000000")
            (self.product / "Tools/admin").touch()
            self.assertEqual(first, self.made(f"second{ending}", SOURCE_DATE_EPOCH="1700000000"), ending)
        with tarfile.open(self.scratch / "first.tar.xz") as tar:
            self.assertEqual({(entry.uid, entry.gname, entry.mtime) for entry in tar}, {(0, "root", 1700000000)})
        self.assertIn("SOURCE_DATE_EPOCH must be", self.brand("x.deb", SOURCE_DATE_EPOCH="now").stderr)

    def test_each_mistake_is_told(self):
        rows = [([(key, value)], (), sentence) for key, value, sentence in VALUES]
        rows += [((), [(name, content)], sentence) for name, content, sentence in CONTENTS]
        rows += [((), [("icon.svg", None), ("icon.png", content)], sentence) for content, sentence in PNGS]
        rows += [((), [("Tools/splash.html", (HEAD + page).encode())], sentence) for page, sentence in SPLASHES]
        for values, files, sentence in rows:
            with self.subTest(values=values, files=[name for name, _ in files], sentence=sentence):
                self.write(values, files)
                self.assertIn(sentence, self.mistakes())

    def test_mistakes_of_the_file_system_are_told(self):
        self.write()
        tools = self.product / "Tools"
        (tools / "gone").symlink_to("nowhere")
        (tools / "loop").symlink_to(".")
        os.mkfifo(tools / "pipe")
        (tools / "install tool").unlink()
        (tools / "install tool").hardlink_to(tools / "admin")
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(tools / "socket"))
        mistakes = self.mistakes()
        for sentence in ("gone is a link to nothing.", "loop is a link to a directory that contains it.",
                         "pipe is not a file.", "socket is not a file.", "are the same file."):
            self.assertIn(sentence, mistakes)

    def test_all_mistakes_are_told_at_once_and_nothing_is_written(self):
        values = {key: (value, sentence) for key, value, sentence in VALUES
                  if (key, value) not in (("installTool", "admin"), ("launchAsAdminTool", "")) and key != "pageHosts"}
        values["name"] = next((value, sentence) for key, value, sentence in VALUES if value == "Bash")
        files = {name: (content, sentence) for name, content, sentence in CONTENTS
                 if name.startswith("Tools/") and name not in ("Tools/installer_config.plist", "Tools/install tool")}
        files |= {"LICENSE": (b"", "LICENSE is empty"), "icon.svg": (svg(""), "icon.svg has no size"),
                  "Tools/splash.html": (SPLASH.replace("utf-8", "latin1").encode(), "its character set is 'latin1'")}
        self.write([(key, value) for key, (value, _) in values.items()],
                   [(name, content) for name, (content, _) in files.items()])
        result = self.brand("out.deb")
        self.assertEqual(result.returncode, 1)
        for _, sentence in (*values.values(), *files.values()):
            self.assertIn(sentence, result.stderr)
        for line in result.stderr.splitlines():
            self.assertRegex(line, "^(product.conf|LICENSE|icon.svg|'?Tools/).*[.]$")
        self.assertEqual(list(self.scratch.glob("out*")), [])

    def test_an_empty_directory_has_five_mistakes(self):
        self.product = self.scratch / "empty"
        (self.product / "Tools").mkdir(parents=True)
        self.assertEqual(len(self.brand("x.app").stderr.splitlines()), 5)

    def test_what_may_not_be_meant_is_noted(self):
        self.write([("pageHosts", None), ("commandUrlPrefix", "https://run.example.com/command"),
                    ("developerMode", "yes"), ("depends", "no-such-package-anywhere")])
        result = self.brand("x.tar.xz")
        self.assertEqual(result.returncode, 0)
        for note in ("commandUrlPrefix is on another host", "pageHosts is missing", "developerMode is on",
                     "'example.com run.example.com' keeps other hosts out"):
            self.assertIn(note, result.stderr)
        self.write([("pageHosts", "example.com cdn.example.com")])
        self.assertIn("lets the pages of 'cdn.example.com' run commands", self.brand("y.tar.xz").stderr)

    def test_an_output_that_cannot_be_is_told(self):
        self.write()
        for output, sentence in ((f"{'x' * 300}.deb", "The result's name is longer"), ("none/x.deb", "There is no directory"),
                                 ("x.rpm", "must end in .deb, .tar.xz, .app")):
            with self.subTest(output=output):
                self.assertIn(sentence, self.brand(output).stderr)


unittest.main()
