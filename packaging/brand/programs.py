"""Whether the product's tools can run, on this computer and where the package is installed."""
import codecs
import os
import pathlib
import shutil
import struct

import distribution
import text

PROGRAMS_OF_OTHER_SYSTEMS = {
    b"MZ": "Windows", b"\xcf\xfa\xed\xfe": "macOS", b"\xce\xfa\xed\xfe": "macOS", b"\xca\xfe\xba\xbe": "macOS",
}
SEARCH_PATH = "/usr/bin:/bin:/usr/sbin:/sbin:/usr/local/bin"
LONGEST_FIRST_LINE = 255  # what Linux reads of it
ELF_HEADER = 64
EXECUTABLE, SHARED = 2, 3


def mistakes_in_files(directory, tools, above=()):
    """What cannot be copied into a bundle, in `directory` and below it; names are relative to `tools`."""
    above += (directory.resolve(),)
    for file in sorted(directory.iterdir()):
        name = f"Tools/{file.relative_to(tools)}"
        if text.invisible_character(file.name):
            yield f"{ascii(name)} has a character in its name that cannot be shown."
        elif not file.exists():
            yield f"{name} is a broken link."
        elif not os.access(file, os.R_OK):
            yield f"{name} cannot be read."
        elif file.is_dir() and file.resolve() in above:
            yield f"{name} is a link to a directory that contains it."
        elif file.is_dir():
            yield from mistakes_in_files(file, tools, above)
        elif not file.is_file():
            yield f"{name} is not a file."


def sentences_about(file, template, depends):
    """Why this program cannot run. `depends` are the package's dependencies, None when no package is made."""
    head = first_bytes(file)
    others = [system for magic, system in PROGRAMS_OF_OTHER_SYSTEMS.items() if head.startswith(magic)]
    if not head:
        yield "is empty"
    elif head.startswith(b"\x7fELF"):
        yield from elf_sentences(head, template)
    elif head.startswith(b"#!"):
        yield from script_sentences(head, depends)
    elif head.startswith(codecs.BOM_UTF8):
        yield "begins with a byte order mark, which hides its #! from the system"
    elif others:
        yield f"is a program for {others[0]}"
    else:
        yield "does not begin with #! and its interpreter, so the system cannot start it"


def first_bytes(file):
    with file.open("rb") as stream:
        return stream.read(4096)


def elf_sentences(head, template):
    if len(head) < ELF_HEADER:
        yield "is truncated"
        return
    order = "<" if head[5] == 1 else ">"
    kind, = struct.unpack_from(order + "H", head, 16)
    entry, = struct.unpack_from(order + "Q" if head[4] == 2 else order + "I", head, 24)
    installer = first_bytes(template / "Contents/MacOS/vok-installer") if template else b""
    # Word size and byte order, then the machine.
    if installer.startswith(b"\x7fELF") and (installer[4:6], installer[18:20]) != (head[4:6], head[18:20]):
        yield "is a program for another architecture than the installer"
    elif kind not in (EXECUTABLE, SHARED) or not entry:
        yield "is an object file or a library, not a program"


def script_sentences(head, depends):
    line = head.partition(b"\n")[0]
    words = line[2:].decode(errors="replace").split()
    interpreter = interpreter_of(words)
    if line.endswith(b"\r"):
        yield "has Windows line ends (CRLF), which become part of the interpreter's name; save it with LF"
    elif len(line) > LONGEST_FIRST_LINE:
        yield f"has a first line of more than {LONGEST_FIRST_LINE} bytes, of which the system does not read the rest"
    elif not words or not words[0].startswith("/") or interpreter is None:
        yield "must name its interpreter by an absolute path after #!, such as /bin/bash"
    elif not found(interpreter):
        yield f"needs the interpreter '{interpreter}', which is not on this computer"
    elif depends is not None:
        yield from package_sentences(found(interpreter), depends)


def interpreter_of(words):
    """The interpreter that a first line names, itself or as the argument of env; None when there is none."""
    if words and pathlib.PurePath(words[0]).name == "env":
        return next((word for word in words[1:] if not word.startswith("-") and "=" not in word), None)
    return words[0] if words else None


def found(interpreter):
    path = shutil.which(interpreter, path=SEARCH_PATH)
    return path and pathlib.Path(path)


def package_sentences(interpreter, depends):
    """An interpreter must come with the package's dependencies, unless every Debian system has it."""
    owner = distribution.owner_of(interpreter)
    if owner is None:
        yield f"needs the interpreter '{interpreter}', which is in no Debian package"
    elif not distribution.is_brought_by(owner, depends):
        yield (f"needs the interpreter '{interpreter}', but product.conf does not name its package "
               f"'{owner.removesuffix('-minimal')}' in depends")
