"""Runs scripts/brand on a valid product and on products with mistakes: brand_test.py BUNDLE"""
import os
import pathlib
import plistlib
import re
import socket
import subprocess
import sys
import tarfile
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[1]
TEMPLATE = pathlib.Path(sys.argv.pop())
sys.path.append(str(SOURCE / "packaging/brand"))
import configuration
import product as products
from brand_mistakes import CONF, CONFIGURATION, CONTENTS, FILES, HEAD, PNGS, SPLASHES, VALUES, png, svg


class BrandTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)

    def write(self, values=(), files=()):
        """Writes a valid product with these values and files; None omits one."""
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

    def test_program_brand_and_document_know_the_same_keys(self):
        header = (SOURCE / "src/config/ConfigurationKeys.h").read_text()
        keys = re.findall(r'constexpr auto (\w+) = "(\w+)";', header)
        known = [(key, key) for key in configuration.NEEDED + configuration.OPTIONAL]
        self.assertEqual(keys, known)
        table = (SOURCE / "docs/packaging.md").read_text().partition("| Key |")[2].partition("\n\n")[0]
        self.assertEqual(re.findall(r"^\| `(\w+)`", table, re.MULTILINE), [key for key, _ in known])

    def test_a_good_product_becomes_a_bundle(self):
        self.write()
        self.made("Any name.app")
        contents = self.scratch / "Any name.app/Contents"
        info = plistlib.loads((contents / "Info.plist").read_bytes())
        self.assertEqual([info[key] for key in ("CFBundleDisplayName", "CFBundleVersion", "CFBundleIdentifier")],
                         ["Größe & Söhne", "2.10", "com.example.Agent-Setup"])
        self.assertEqual({file.name for file in (contents / "MacOS/Tools").iterdir()},
                         {"installer_config.plist", *(name[6:] for name in FILES if name.startswith("Tools/"))})
        self.assertTrue((contents / "Resources/icons/hicolor/128x128/apps/com.example.Agent-Setup.png").is_file())
        for directory in ("Frameworks", "Resources/licenses"):
            libraries = {file.name for file in pathlib.Path(TEMPLATE, "Contents", directory).iterdir()}
            self.assertEqual({file.name for file in (contents / directory).iterdir()}, libraries)
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
        rows = [([(key, value)], (), sentence) for sentence, key, *values in VALUES for value in values]
        files = [(sentence, [(name, content)]) for sentence, name, *contents in CONTENTS for content in contents]
        files += [(sentence, [("icon.svg", None), ("icon.png", content)])
                  for sentence, *contents in PNGS for content in contents]
        files += [(sentence, [("Tools/splash.html", (HEAD + page).encode())])
                  for sentence, *pages in SPLASHES for page in pages]
        for values, files, sentence in rows + [((), changed, sentence) for sentence, changed in files]:
            with self.subTest(values=values, files=files, sentence=sentence):
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
        for sentence in ("gone is a broken link.", "loop is a link to a directory that contains it.",
                         "pipe is not a file.", "socket is not a file.", "are the same file."):
            self.assertIn(sentence, mistakes)

    def test_all_mistakes_are_told_at_once_and_nothing_is_written(self):
        self.write([("name", "Bash"), ("summary", "Installs."), ("installTool", "../tool"), ("lang", "en_GB")],
                   [("LICENSE", b""), ("icon.svg", svg("")), ("Tools/splash.html", b"<p>")])
        result = self.brand("out.deb")
        self.assertEqual(result.returncode, 1)
        for line, beginning in zip(result.stderr.splitlines(), (
                "product.conf: name 'Bash'", "product.conf: summary 'Installs.'", "icon.svg ", "LICENSE ",
                "Tools/installer_config.plist: lang", "Tools/installer_config.plist: installTool",
                "Tools/splash.html: "), strict=True):
            self.assertRegex(line, f"^{re.escape(beginning)}.*[.]$")
        self.assertEqual(list(self.scratch.glob("out*")), [])
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
        for output, sentence in ((f"{'x' * 300}.deb", "The result's name is longer"),
                                 ("none/x.deb", "There is no directory"),
                                 ("x.rpm", "must end in .deb, .tar.xz, .app")):
            with self.subTest(output=output):
                self.assertIn(sentence, self.brand(output).stderr)


unittest.main()
