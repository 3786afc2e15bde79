"""Copies of the installed bundle, which the environment variable VOK_BUNDLE names."""

import os
import pathlib
import plistlib
import shutil


def copy_bundle(target):
    """Copies the whole installed bundle to `target` and returns that path."""
    if "VOK_BUNDLE" not in os.environ:
        raise SystemExit("VOK_BUNDLE must name the installed bundle; scripts/test installs one and sets it.")
    return pathlib.Path(shutil.copytree(os.environ["VOK_BUNDLE"], target, symlinks=True))


def update_plist(file, values):
    """Sets some values of a property list file."""
    file.write_bytes(plistlib.dumps(plistlib.loads(file.read_bytes()) | values))
