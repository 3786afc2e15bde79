"""Makes a product from the installer; scripts/brand runs this."""
import lzma
import os
import pathlib
import shutil
import sys
import tarfile
import tempfile
import time

import bundle
import debian
import product as products

LONGEST_NAME = 251  # bytes, so that .log can follow


def archive(product, template, scratch):
    """Makes a tar archive of the bundle, which runs from wherever it is unpacked, and returns its path."""
    name = f"{product.values['name']}.app"
    bundle.make_bundle(product, template, scratch / name)
    made = int(os.environ.get("SOURCE_DATE_EPOCH", time.time()))

    def reproducible(entry):
        entry.mtime, entry.uid, entry.gid, entry.uname, entry.gname = made, 0, 0, "root", "root"
        return entry

    with lzma.open(scratch / "archive", "wb") as packed, tarfile.open(fileobj=packed, mode="w") as tar:
        tar.add(scratch / name, name, filter=reproducible)  # sorts each directory
    return scratch / "archive"


def plain_bundle(product, template, scratch):
    bundle.make_bundle(product, template, scratch / "bundle")
    return scratch / "bundle"


MAKERS = {".deb": debian.make_package, ".tar.xz": archive, ".app": plain_bundle}


def maker_for(output):
    return next((maker for ending, maker in MAKERS.items() if output.name.endswith(ending)), None)


def mistakes_about(output, make, template):
    if template is None:
        yield "There is no built installer to start from: unpack its archive, or build it here."
    elif not os.access(template / "Contents/MacOS/vok-installer", os.X_OK):
        yield f"'{template}' is not a bundle of the installer."
    if make is None:
        yield f"'{output.name}' must end in {', '.join(MAKERS)}; the ending selects what is made."
    if len(os.fsencode(output.name)) > LONGEST_NAME:
        yield f"The result's name is longer than {LONGEST_NAME} bytes."
    elif not output.parent.is_dir():
        yield f"There is no directory '{output.parent}' for the result."
    elif not os.access(output.parent, os.W_OK):
        yield f"Nothing can be written into '{output.parent}'."
    elif output.is_dir() or make is plain_bundle and output.exists():
        yield f"'{output}' exists already."
    if not os.environ.get("SOURCE_DATE_EPOCH", "0").isdecimal():
        yield "The environment variable SOURCE_DATE_EPOCH must be a number of seconds."
    if make is debian.make_package:
        yield from debian.missing_programs()


def logged(details, output):
    """Saves another program's output beside the result, and reports the file."""
    if not details:
        return ""
    log = output.with_name(f"{output.name}.log")
    log.write_text(details, "utf-8")
    return f" The details are in '{log}'."


def main(config_directory, output, template=None):
    output = pathlib.Path(output).absolute()
    template = pathlib.Path(template) if template else bundle.find_template()
    make = maker_for(output)
    product, mistakes = products.read_product(config_directory, template, make is debian.make_package)
    mistakes += mistakes_about(output, make, template)
    if mistakes:
        sys.exit("\n".join(mistakes))
    for note in product.notes:
        print("Note:", note, file=sys.stderr)
    os.umask(0o022)  # all users may read the output
    with tempfile.TemporaryDirectory() as scratch:
        try:
            result = make(product, template, pathlib.Path(scratch))
        except debian.Failure as failure:
            sys.exit(f"{failure}{logged(failure.output, output)}")
        shutil.move(result, output)
    print(f"Made '{output}'.")


sys.stdout.reconfigure(errors="backslashreplace")
try:
    main(*sys.argv[1:])
except OSError as error:
    reason = error.strerror or "it could not be copied"
    sys.exit(f"'{error.filename}': {reason}." if error.filename else f"Nothing was made: {reason}.")
except KeyboardInterrupt:
    sys.exit(130)
