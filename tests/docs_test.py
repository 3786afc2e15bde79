"""Finds links, files, commands, presets and faults that the documents name and that do not exist."""
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[1]
sys.path.append(str(SOURCE / "faults"))
import command_faults  # noqa: F401  each adds its faults to the table
import machine_faults  # noqa: F401
import page_faults  # noqa: F401
import table

DOCUMENTS = [*SOURCE.glob("*.md"), *SOURCE.glob("docs/*.md"), SOURCE / "tools/macos-check/README.md"]
# Paths in documents are relative to the repository or to the directory of the rooms.
ROOTS = (SOURCE, SOURCE / "src")


def found(pattern):
    """What the pattern's groups match in the documents, with the document first."""
    matches = [(document, *match.groups()) for document in DOCUMENTS
               for match in re.finditer(pattern, document.read_text(), re.MULTILINE)]
    assert matches, pattern
    return matches


def anchors(document):
    """The anchors of a document's headings."""
    headings = re.findall(r"^#+ (.*)$", document.read_text(), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def link_exists(document, path, fragment):
    target = (document.parent / path).resolve() if path else document
    return target.exists() and (not fragment or fragment in anchors(target))


def is_of_the_sources(path):
    """Other paths belong to a build, a bundle or a product."""
    first = path.split("/")[0]
    return first != "build" and any((root / first).is_dir() for root in ROOTS)


class DocsTest(unittest.TestCase):
    def test_links(self):
        links = found(r"\]\((?!\w+://)([^)#\s]*)#?([^)\s]*)\)")
        self.assertEqual([], [(str(link[0]), *link[1:]) for link in links if not link_exists(*link)])

    def test_files(self):
        named = found(r"`([\w.-]+/[\w./-]+)`") + found(r"^    (?:.* )?((?:packaging|tests|examples)/[\w./-]+)")
        paths = [path for _, path in named if is_of_the_sources(path)]
        self.assertEqual([], [path for path in paths if not any((root / path).exists() for root in ROOTS)])

    def test_scripts_and_their_options(self):
        scripts = [(SOURCE / name, options) for _, name, options in found(r"(scripts/\w[\w-]*)((?: --[\w-]+)*)")]
        self.assertEqual([], [script for script, _ in scripts if not script.is_file()])
        self.assertEqual([], [(script, option) for script, options in scripts for option in options.split()
                              if option not in script.read_text()])

    def test_scripts_print_their_usage_instead_of_running(self):
        with tempfile.TemporaryDirectory() as project:  # without sources, where a script that runs fails
            scripts = pathlib.Path(shutil.copytree(SOURCE / "scripts", pathlib.Path(project) / "scripts"))
            scripts = [script for script in scripts.iterdir() if script.name != "lib.sh"]
            def results(option):
                ran = [(script.name, subprocess.run([script, option], capture_output=True, text=True, timeout=60))
                       for script in scripts]
                return {name: (run.returncode, f"scripts/{name}" in run.stdout) for name, run in ran}
            self.assertEqual({script.name: (0, True) for script in scripts}, results("--help"))
            self.assertEqual({script.name: (2, False) for script in scripts}, results("--no-such-option"))

    def test_presets(self):
        presets = json.loads((SOURCE / "CMakePresets.json").read_text())
        names = {program: [preset["name"] for preset in presets[kind]] for program, kind in
                 {"cmake": "configurePresets", "cmake --build": "buildPresets", "ctest": "testPresets"}.items()}
        used = found(r"\b(cmake|cmake --build|ctest) --preset ([\w-]+)")
        self.assertEqual([], [(program, name) for _, program, name in used if name not in names[program]])

    def test_faults(self):
        section = (SOURCE / "docs/reliability.md").read_text().partition("## Soak")[0]
        cells = re.findall(r"^\| ([^|]*) \|.*\|$", section, re.MULTILINE)
        faults = [fault for cell in cells for fault in cell.split("; ") if not fault.endswith("(*w*)")]
        names = "\n".join(["Fault", *(fault[0] for fault in table.FAULTS)])
        self.assertGreater(len(faults), 40)
        self.assertEqual([], [fault for fault in faults if fault not in names])


unittest.main()
