"""Shows a product's pages in the installer, on a simulated machine; scripts/preview runs this."""
import argparse
import json
import pathlib
import plistlib
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import urllib.parse

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "brand"))
import bundle
import configuration
import text
from site_server import serve

STATES = ("not-installed", "installed", "failing", "slow", "refused")
TOOLS = {"installTool": "simulated-tool", "launchAsAdminTool": "simulated-launcher"}
ADDRESSES = ("firstInstallationPageUrl", "commandUrlPrefix")


def arguments():
    parser = argparse.ArgumentParser(prog="preview", description=__doc__)
    parser.add_argument("directory", type=pathlib.Path,
                        help="the product, of which Tools/installer_config.plist is needed")
    parser.add_argument("state", nargs="?", default="not-installed",
                        help=f"{', '.join(STATES)}; a version may follow: installed=1.0.0")
    parser.add_argument("--pages", type=pathlib.Path,
                        help="serve the pages from this directory, the root of their host")
    parser.add_argument("--bundle", type=pathlib.Path, default=bundle.find_template(), help="the installer to start")
    return parser.parse_args()


def mistake_in(given):
    if given.state.partition("=")[0] not in STATES:
        return f"The state '{given.state}' is unknown; there are {', '.join(STATES)}."
    if not given.bundle or not (given.bundle / "Contents/MacOS/vok-installer").is_file():
        return "There is no built installer to start: unpack its archive, or build it here."
    if given.pages and not given.pages.is_dir():
        return f"There is no directory '{given.pages}'."
    return None


def read_configuration(directory):
    try:
        values = configuration.read_values(directory / "Tools/installer_config.plist")
    except text.Unreadable as error:
        sys.exit(f"Tools/installer_config.plist {error}.")
    missing = [key for key in ADDRESSES if not isinstance(values.get(key), str)]
    if missing:
        sys.exit(f"Tools/installer_config.plist: '{missing[0]}' is missing.")
    return values


def local_addresses(values, pages):
    """The addresses on a server of this computer that serves `pages`."""
    paths = {key: urllib.parse.urlsplit(values[key]).path for key in ADDRESSES}
    first = paths["firstInstallationPageUrl"].lstrip("/")
    if not (pages / urllib.parse.unquote(first)).exists():
        sys.exit(f"'{pages}' has no '{first}': it must be the directory that is the root of the pages' host.")
    host = serve(pages, paths["commandUrlPrefix"])
    return {key: f"http://{host}{path}" for key, path in paths.items()} | {"pageHosts": host}


def simulated_bundle(given, values, scratch):
    """A copy of the installer's bundle with the product's configuration and splash page and with simulated tools."""
    made = scratch / "Preview.app"
    shutil.copytree(given.bundle, made, ignore=shutil.ignore_patterns("Tools"))
    tools = made / "Contents/MacOS/Tools"
    product = given.directory / "Tools"
    shutil.copytree(product, tools)
    if not (tools / "splash.html").is_file():
        shutil.copy(given.bundle / "Contents/MacOS/Tools/splash.html", tools)
    (tools / "installer_config.plist").write_bytes(plistlib.dumps(values))
    name, _, version = given.state.partition("=")
    state = scratch / "state.json"
    state.write_text(json.dumps({"behaviour": name, "installed": (version or "1.2.3") if name == "installed" else "",
                                 "offered": version or "1.2.3"}))
    tool = shlex.join(["/usr/bin/python3", "-B", str(HERE / "simulated_tool.py"), str(state)])
    write_program(tools / TOOLS["installTool"], f'exec {tool} "$@"')
    write_program(tools / TOOLS["launchAsAdminTool"], "sleep 2; exit 126" if name == "refused" else 'exec "$@"')
    info = made / "Contents/Info.plist"
    shown = plistlib.loads(info.read_bytes())
    info.write_bytes(plistlib.dumps(shown | {"CFBundleIdentifier": f"{shown['CFBundleIdentifier']}.Preview"}))
    return made


def write_program(file, command):
    file.write_text(f"#!/bin/sh\n{command}\n")
    file.chmod(0o755)


def main():
    given = arguments()
    if mistake := mistake_in(given):
        sys.exit(mistake)
    values = read_configuration(given.directory) | TOOLS | {"developerMode": "yes"}
    if given.pages:
        values |= local_addresses(values, given.pages)
    with tempfile.TemporaryDirectory() as scratch:
        made = simulated_bundle(given, values, pathlib.Path(scratch))
        print(f"The first page is {values['firstInstallationPageUrl']}. The preview ends with its window.", flush=True)
        sys.exit(subprocess.run([made / "Contents/MacOS/vok-installer"], check=False).returncode)


signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))  # ends the installer, too
try:
    main()
except OSError as error:
    sys.exit(f"'{error.filename}': {error.strerror}.")
except KeyboardInterrupt:
    sys.exit(130)
