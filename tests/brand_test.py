"""Runs scripts/brand on a good product and on one that is wrong in every way: brand_test.py BUNDLE"""
import os
import pathlib
import plistlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[1]
TEMPLATE = sys.argv.pop()
sys.path.append(str(SOURCE / "packaging/brand"))
import configuration  # noqa: E402
import product as products  # noqa: E402
ICON = '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 1 1"/>'

CONF = {
    "name": "Größe & Söhne", "version": "2.10", "identifier": "com.example.Agent-Setup",
    "summary": "Install the agent", "description": "Installs.\n  More.", "maintainer": "Größe <a@example.com>",
    "homepage": "https://example.com/", "license": "LicenseRef-proprietary",
}
CONFIGURATION = {
    "firstInstallationPageUrl": "https://example.com/first.html", "analyticParams": "a=1&b=x y",
    "commandUrlPrefix": "https://example.com/command", "installTool": "install tool", "launchAsAdminTool": "admin",
    "agentId": "A-1", "targetDir": "/opt/my agent", "lang": "pt-BR",
}
SPLASH = "<style>body { background: url(data:x) }</style><img src='logo.svg'><a href='https://example.com'>Help</a>"

# Each a slip in one value, and what is said of it.
SLIPS = [
    ("name", "Bob's", "product.conf: name 'Bob's' is part of a path"),
    ("name", "日本", "too few letters from a to z"),
    ("version", "2.0-beta", "product.conf: version '2.0-beta' must be one to four numbers"),
    ("identifier", "com.1example.Agent", "identifier 'com.1example.Agent' must be"),
    ("maintainer", "Somebody", "maintainer 'Somebody' must be"),
    ("depends", "curl jq", "depends 'curl jq' must be names"),
    ("licence", "MIT", "'licence' means nothing here"),
    ("installTool", "../tool", "installTool '../tool' must be the plain name"),
    ("installTool", "other", "installTool 'other' is not in Tools"),
    ("launchAsAdminTool", "splash.html", "launchAsAdminTool 'splash.html' is not executable"),
    ("agentId", "$(id)", "agentId '$(id)' contains $"),
    ("agentId", "a&b", "mean something else in an address"),
    ("agentId", 5, "'agentId' must be a text"),
    ("targetDir", "opt/\"x\\", "targetDir 'opt/\"x\\' must be an absolute path"),
    ("targetDir", "/opt/\"x\\", "contains \" \\"),
    ("lang", "en_GB", "lang 'en_GB' must be the tag"),
    ("installtool", "x", "'installtool' means nothing to the installer"),
    ("analyticParams", "a=1&b", "analyticParams 'a=1&b' must be key=value pairs"),
    ("commandUrlPrefix", "https://example.com", "must have a path after the host"),
    ("commandUrlPrefix", "https://example.com/", "every page of the host would be a command"),
    ("commandUrlPrefix", "https://example.com/first", "would be taken for a command"),
    ("commandUrlPrefix", "https://Example.com/command", "must have a host in lower-case"),
    ("commandUrlPrefix", "HTTPS://example.com/command", "must be an address"),
    ("commandUrlPrefix", "https://example.com:443/command", "must leave out the port 443"),
    ("commandUrlPrefix", "https://example.com/a/../b", "must not contain . or .."),
    ("firstInstallationPageUrl", "http://example.com/first", "must use https"),
    ("firstInstallationPageUrl", "https://example.com/first?a=b", "must not contain a query"),
    ("firstInstallationPageUrl", "https://[::1/first", "is no address"),
    ("firstInstallationPageUrl", "first.html", "must be an address that begins with https://"),
    ("splash", "<script src=//cdn.example/x.js></script>", "'//cdn.example/x.js' lies elsewhere"),
    ("splash", "<style>@import 'https://cdn.example/x.css'</style>", "'https://cdn.example/x.css' lies elsewhere"),
    ("splash", "<meta http-equiv=refresh content='0; url=https://e.example'>", "'https://e.example' lies elsewhere"),
    ("splash", "<img src=gone.png>", "'gone.png' is not in Tools"),
    ("icon.png", "\x89PNG", "There must be one icon"),
    ("icon.svg", "<html/>", "icon.svg is no SVG"),
]


class BrandTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)
        self.product = self.scratch / "my product"

    def write(self, slips=()):
        values = CONF | CONFIGURATION | {"splash": SPLASH, "icon.svg": ICON} | dict(slips)
        tools = self.product / "Tools"
        tools.mkdir(parents=True, exist_ok=True)
        conf = [f"{key} = {value}\n" for key, value in values.items() if key in (*CONF, "depends", "licence")]
        configuration = {key: values[key] for key in (*CONFIGURATION, "installtool") if key in values}
        (self.product / "product.conf").write_text("".join(conf), "utf-8")
        (self.product / "LICENSE").write_text("All rights reserved.\n")
        (tools / "installer_config.plist").write_bytes(plistlib.dumps(configuration, fmt=plistlib.FMT_BINARY))
        (tools / "splash.html").write_text(values["splash"], "utf-8")
        (tools / "logo.svg").write_text(ICON)
        for icon in ("icon.svg", "icon.png"):
            (self.product / icon).unlink(missing_ok=True)
            if icon in values:
                (self.product / icon).write_text(values[icon], "latin-1")
        for tool in ("install tool", "admin"):
            (tools / tool).write_text("#!/bin/sh\n")
            (tools / tool).chmod(0o700)

    def brand(self, output):
        command = [SOURCE / "scripts/brand", self.product, output, TEMPLATE]
        return subprocess.run(command, text=True, capture_output=True, check=False)

    def test_program_brand_and_readme_know_the_same_keys(self):
        header = (SOURCE / "src/config/ConfigurationKeys.h").read_text()
        keys = re.findall(r'constexpr auto (\w+) = "(\w+)";', header)
        known = [(key, key) for key in configuration.NEEDED + configuration.OPTIONAL]
        self.assertEqual(keys, known)
        table = (SOURCE / "README.md").read_text().partition("| Key |")[2].partition("\n\n")[0]
        self.assertEqual(re.findall(r"^\| `(\w+)`", table, re.MULTILINE), [key for key, _ in known])

    def test_a_good_product_becomes_a_bundle(self):
        self.write()
        bundle = self.scratch / "Any name.app"
        result = self.brand(bundle)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        contents = bundle / "Contents"
        info = plistlib.loads((contents / "Info.plist").read_bytes())
        self.assertEqual([info[key] for key in ("CFBundleDisplayName", "CFBundleVersion", "CFBundleIdentifier")],
                         ["Größe & Söhne", "2.10", "com.example.Agent-Setup"])
        files = [str(file.relative_to(contents)) for file in contents.rglob("*") if file.is_file()]
        tools = ("admin", "install tool", "installer_config.plist", "logo.svg", "splash.html")
        self.assertEqual(sorted(files), [
            "Info.plist", *(f"MacOS/Tools/{tool}" for tool in tools), "MacOS/vok-installer",
            "Resources/icons/hicolor/scalable/apps/com.example.Agent-Setup.svg"])
        self.assertTrue(os.access(contents / "MacOS/vok-installer", os.X_OK))
        self.assertEqual((contents / "MacOS/Tools/install tool").stat().st_mode & 0o777, 0o755)
        self.assertIn("exists already", self.brand(bundle).stderr)

    def test_each_slip_is_said_in_a_sentence(self):
        for key, value, sentence in SLIPS:
            with self.subTest(key=key, value=value):
                self.write([(key, value)])
                self.assertIn(sentence, "\n".join(products.read_product(self.product)[1]))

    def test_all_mistakes_are_said_at_once_and_nothing_is_written(self):
        (self.product / "Tools").mkdir(parents=True)
        output = self.scratch / "out.tar.xz"
        result = self.brand(output)
        self.assertEqual(result.returncode, 1)
        self.assertEqual([line.split()[0] for line in result.stderr.splitlines()],
                         ["product.conf", "There", "LICENSE", "Tools/installer_config.plist", "Tools/splash.html"])
        self.assertFalse(output.exists())


unittest.main()
