"""Makes a product of its own from the installer; scripts/brand runs this."""
import os
import pathlib
import shutil
import sys
import tempfile

import bundle
import debian
import product as products


def archive(product, template, scratch):
    """Makes a tar archive of the bundle, which runs from wherever it is unpacked, and returns its path."""
    bundle.make_bundle(product, template, scratch / "tree" / f"{product.values['name']}.app")
    return pathlib.Path(shutil.make_archive(scratch / "archive", "xztar", scratch / "tree", owner="root", group="root"))


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
        yield f"'{template}' is no bundle of the installer."
    if make is None:
        yield f"'{output.name}' must end in {', '.join(MAKERS)}: that says what is made."
    if not output.parent.is_dir():
        yield f"There is no directory '{output.parent}' for the result."
    if output.is_dir() or make is plain_bundle and output.exists():
        yield f"'{output}' exists already."
    if make is debian.make_package:
        yield from debian.missing_programs()


def main(config_directory, output, template=None):
    output = pathlib.Path(output).absolute()
    template = pathlib.Path(template) if template else bundle.find_template()
    make = maker_for(output)
    product, mistakes = products.read_product(config_directory)
    mistakes += mistakes_about(output, make, template)
    if mistakes:
        sys.exit("\n".join(mistakes))
    os.umask(0o022)  # everybody may read what was made
    with tempfile.TemporaryDirectory() as scratch:
        try:
            result = make(product, template, pathlib.Path(scratch))
        except debian.Failure as failure:
            sys.exit(str(failure))
        shutil.move(result, output)
    print(f"Made '{output}'.")


try:
    main(*sys.argv[1:])
except OSError as error:
    sys.exit(f"'{error.filename}': {error.strerror}.")
