#!/usr/bin/python3
"""Checks that a bundle's Info.plist can be read, and that the executable and the principal class it names exist.

    bundle.py BUNDLE
"""
import pathlib
import plistlib
import subprocess
import sys


def main(bundle):
    contents = pathlib.Path(bundle) / "Contents"
    information = plistlib.loads((contents / "Info.plist").read_bytes())
    program = contents / "MacOS" / information["CFBundleExecutable"]
    symbols = subprocess.run(["llvm-nm-14", "--defined-only", "--just-symbol-name", str(program)], check=True,
                             stdout=subprocess.PIPE, text=True).stdout.split()
    principal = information["NSPrincipalClass"]
    if f"_OBJC_CLASS_$_{principal}" not in symbols:
        raise SystemExit(f"{program}: the principal class of Info.plist, '{principal}', is not in it.")


main(*sys.argv[1:])
