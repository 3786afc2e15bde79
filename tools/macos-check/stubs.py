#!/usr/bin/python3
"""Writes the stub libraries that no file in sysroot/ can hold.

    stubs.py SYSROOT ARCHIVE...

libc++ has what LLVM's own library of the same version has. Poco and JsonCpp have what the archives use of their
namespaces: the names in Debian's libraries are those of another C++ library and cannot be compared.
"""
import pathlib
import re
import subprocess
import sys

STUB = """--- !tapi-tbd
tbd-version: 4
targets: [ x86_64-macos, arm64-macos ]
install-name: '{path}'
exports:
  - targets: [ x86_64-macos, arm64-macos ]
    symbols: [ {symbols} ]
...
"""
LLVM_LIBRARIES = ["/usr/lib/llvm-14/lib/libc++.so.1.0", "/usr/lib/llvm-14/lib/libc++abi.so.1.0"]
NAMESPACES = {"PocoFoundation": "4Poco", "jsoncpp": "4Json"}


def names(*command):
    output = subprocess.run(["llvm-nm-14", "--just-symbol-name", *command], check=True, stdout=subprocess.PIPE,
                            text=True)
    return {line.split("@")[0] for line in output.stdout.split("\n") if line and not line.endswith(":")}


def main(sysroot, *archives):
    # A Mach-O name has one more underscore than an ELF name.
    exports = {"c++": {"_" + name for name in names("--dynamic", "--defined-only", *LLVM_LIBRARIES)}}
    used = names("--undefined-only", *archives)
    for library, namespace in NAMESPACES.items():
        exports[library] = {name for name in used if re.match(rf"__Z(T[ISV])?NK?{namespace}", name)}
    for library, symbols in exports.items():
        path = f"/usr/lib/lib{library}.tbd"
        stub = STUB.format(path=path.replace(".tbd", ".dylib"), symbols=", ".join(sorted(symbols)))
        pathlib.Path(sysroot + path).write_text(stub)


main(*sys.argv[1:])
