"""A product's bundle: the template's program with the product's name, tools and icon."""
import os
import pathlib
import plistlib
import shutil

from icon import can_draw, draw

SOURCE = pathlib.Path(__file__).resolve().parents[2]

# Where the template bundle is searched: in the unpacked archive, installed as a package.
TEMPLATES = (
    SOURCE / "Vok Installer.app",
    pathlib.Path("/opt/vok-installer/Vok Installer.app"),
)

# Common to the bundles of all products: the program, its libraries, their licences, the packages they depend on.
COMMON = ("MacOS/vok-installer", "Frameworks", "Resources/licenses", "Resources/dependencies")


def find_template():
    return next((bundle for bundle in TEMPLATES if (bundle / "Contents/Info.plist").is_file()), None)


def copy(source, target):
    """Copies a file; all users may read it, and run it if its owner may."""
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
    target.chmod(0o755 if source.stat().st_mode & 0o100 else 0o644)


def copy_files(source, target):
    """Copies a file, or every file of a directory; nothing when there is neither."""
    if source.is_file():
        copy(source, target)
    for directory, _, names in os.walk(source, followlinks=True):
        for name in names:
            file = pathlib.Path(directory, name)
            copy(file, target / file.relative_to(source))


def make_bundle(product, template, bundle):
    for name in COMMON:
        copy_files(template / "Contents" / name, bundle / "Contents" / name)
    copy_files(product.tools, bundle / "Contents/MacOS/Tools")
    place_icon(product.icon, product.values["identifier"], bundle / "Contents/Resources/icons/hicolor")
    info = plistlib.loads((template / "Contents/Info.plist").read_bytes())
    info |= {
        "CFBundleDisplayName": product.values["name"],
        "CFBundleIdentifier": product.values["identifier"],
        "CFBundleName": product.values["name"],
        "CFBundleShortVersionString": product.values["version"],
        "CFBundleVersion": product.values["version"],
    }
    (bundle / "Contents/Info.plist").write_bytes(plistlib.dumps(info))


def place_icon(icon, identifier, theme):
    """Puts the window's icon into the icon theme: drawn, if possible, since for an SVG the program loads librsvg."""
    if can_draw():
        target = theme / f"128x128/apps/{identifier}.png"
        target.parent.mkdir(parents=True)
        target.write_bytes(draw(icon, 128))
    else:
        size = "scalable" if icon.suffix == ".svg" else "512x512"
        copy(icon, theme / f"{size}/apps/{identifier}{icon.suffix}")
