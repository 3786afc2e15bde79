"""A product's Debian package: the bundle under /opt, and its integration into the desktop."""
import email.utils
import gzip
import os
import plistlib
import re
import shutil
import subprocess
import textwrap
import time
import xml.sax.saxutils

from bundle import SOURCE, make_bundle
from icon import draw

LINUX = SOURCE / "packaging/linux"
ICON_SIZES = (16, 24, 32, 48, 64, 128, 256, 512)

# The programs that building a package needs, and their Debian packages.
NEEDED = {"cpack": "cmake", "dpkg-shlibdeps": "dpkg-dev", "rsvg-convert": "librsvg2-bin"}

# Not dependencies of any library: https in the web view, and drawing the icon.
DEPENDS = "glib-networking, librsvg2-common"


class Failure(Exception):
    """A package could not be made. `output` is what the program that failed printed, if there was one."""

    def __init__(self, sentence, output=""):
        super().__init__(sentence)
        self.output = output


def missing_programs():
    missing = [package for program, package in NEEDED.items() if not shutil.which(program)]
    return [f"To make a package, install {' '.join(missing)}: apt-get install {' '.join(missing)}"] if missing else []


def make_package(product, template, scratch):
    """Makes the package below `scratch` and returns its path."""
    tree = scratch / "tree"
    lay_out(product, template, tree)
    values = product.values
    depends = [DEPENDS, program_dependencies(template), tool_dependencies(tree, scratch), values["depends"]]
    settings = {
        "CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA": ";".join(maintainer_scripts(product, scratch)),
        "CPACK_DEBIAN_PACKAGE_DEPENDS": simplified(depends),
        "CPACK_DEBIAN_PACKAGE_HOMEPAGE": values["homepage"],
        "CPACK_DEBIAN_PACKAGE_MAINTAINER": values["maintainer"],
        "CPACK_INSTALLED_DIRECTORIES": f"{tree};/",
        "CPACK_PACKAGE_DESCRIPTION": textwrap.fill(values["description"], 78),
        "CPACK_PACKAGE_DESCRIPTION_SUMMARY": values["summary"],
        "CPACK_PACKAGE_DIRECTORY": str(scratch),
        "CPACK_PACKAGE_NAME": product.package,
        "CPACK_PACKAGE_VERSION": values["version"],
    }
    definitions = [word for name, value in settings.items() for word in ("-D", f"{name}={value}")]
    run(["cpack", "--config", LINUX / "CPackConfig.cmake", *definitions], cwd=scratch)
    return next(scratch.glob("*.deb"))


def maintainer_scripts(product, scratch):
    """The paths of the written scripts that run when the package is installed and removed."""
    for name in ("postinst", "prerm"):
        write(scratch / name, filled(name, {"package": product.package}))
        (scratch / name).chmod(0o755)
        yield str(scratch / name)


def program_dependencies(template):
    """The packages that the bundle's program and libraries need; Debian 12's names are known to later releases, too."""
    try:
        return (template / "Contents/Resources/dependencies").read_text("utf-8").strip()
    except FileNotFoundError:
        raise Failure(f"'{template}' has no libraries of its own: "
                      "start from an archive or an installed bundle.") from None


def tool_dependencies(tree, scratch):
    """The packages of the libraries that the product's own tools need and the bundle does not bring."""
    contents = next(tree.glob("opt/*/*.app/Contents"))
    programs = [file for file in sorted((contents / "MacOS/Tools").rglob("*")) if file.is_file() and is_program(file)]
    if not programs:
        return ""
    bundled = [file.name.replace(".so.", " ") for file in (contents / "Frameworks").iterdir()]
    write(scratch / "debian/control", "Source: product\n\nPackage: product\nArchitecture: any\n")
    write(scratch / "debian/shlibs.local", "\n".join(bundled) + "\n")  # these need no package
    search = f"-l{contents / 'Frameworks'}"
    found = run(["dpkg-shlibdeps", search, "--ignore-missing-info", "-O", *programs], cwd=scratch)
    return found.strip().removeprefix("shlibs:Depends=")


def simplified(depends):
    """The dependencies with each package named once, in its highest version."""
    script = "my $all = deps_parse(shift); $all->simplify_deps(Dpkg::Deps::KnownFacts->new); print $all->output;"
    return run(["perl", "-MDpkg::Deps", "-e", script, ", ".join(filter(None, depends))])


def is_program(file):
    with file.open("rb") as stream:
        return stream.read(4) == b"\x7fELF"


def run(command, **options):
    """The command's output; a failure when it does not exit with 0."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)
    if result.returncode:
        output = (result.stderr + result.stdout).decode(errors="replace")
        library = re.search(r"cannot find library (\S+) needed by .*/(Tools/.+?) \(", output)
        raise Failure(f"{library[2]} needs the library '{library[1]}', which is not on this computer." if library
                      else f"The package could not be made, because {command[0]} failed.", output)
    return result.stdout.decode()


def lay_out(product, template, tree):
    """Puts every file of the package where it will be installed below `tree`."""
    values, package = product.values, product.package
    identifier = values["identifier"]
    share = tree / "usr/share"
    bundle = f"opt/{package}/{values['name']}.app"
    make_bundle(product, template, tree / bundle)
    (tree / "usr/bin").mkdir(parents=True)
    (tree / "usr/bin" / package).symlink_to(f"/{bundle}/Contents/MacOS/vok-installer")
    install_icons(product.icon, identifier, share / "icons/hicolor")

    now = int(os.environ.get("SOURCE_DATE_EPOCH", time.time()))
    configuration = plistlib.loads((product.tools / "installer_config.plist").read_bytes())
    texts = values | {
        "action": re.sub("[^a-z0-9.-]", "-", f"{identifier.lower()}.launch-as-admin"),
        "launch_as_admin": f"/{bundle}/Contents/MacOS/Tools/{configuration['launchAsAdminTool']}",
        "package": package,
        "title": package.upper(),
        "developer": values["maintainer"].partition(" <")[0],
        "developer_id": identifier.rpartition(".")[0].lower(),
        "date": time.strftime("%Y-%m-%d", time.gmtime(now)),
        "changelog_date": email.utils.formatdate(now),
        "license_text": paragraph(product.directory / "LICENSE"),
        "installer_license_text": paragraph(SOURCE / "LICENSE"),
    }
    markup = {name: xml.sax.saxutils.escape(text) for name, text in texts.items()}
    write(share / f"applications/{identifier}.desktop", filled("product.desktop", texts))
    write(share / f"metainfo/{identifier}.metainfo.xml", filled("product.metainfo.xml", markup))
    write(share / f"polkit-1/actions/{identifier}.policy", filled("product.policy", markup))
    write(share / f"doc/{package}/copyright", filled("copyright", texts))
    write(share / f"doc/{package}/changelog.gz", filled("changelog", texts))
    write(share / f"man/man1/{package}.1.gz", filled("vok-installer.1", texts))
    write(share / f"lintian/overrides/{package}", filled("lintian-overrides", texts))
    pattern = re.sub(r"([][{}*^,])", r"\\\1", values["name"] + ".app")
    write(tree / f"opt/{package}/apparmor", filled("apparmor", texts | {"bundle_pattern": pattern}))


def install_icons(icon, identifier, theme):
    for size in ICON_SIZES:
        target = theme / f"{size}x{size}/apps/{identifier}.png"
        target.parent.mkdir(parents=True)
        target.write_bytes(draw(icon, size))


def filled(template, texts):
    """The template's text with a value for each @key@ in it."""
    return re.sub(r"@(\w+)@", lambda key: texts[key[1]], (LINUX / template).read_text("utf-8"))


def paragraph(file):
    """A string in the form of the copyright file: indented, a full stop for an empty line."""
    return "\n".join(f" {line.rstrip() or '.'}" for line in file.read_text("utf-8").strip().splitlines())


def write(file, text):
    file.parent.mkdir(parents=True, exist_ok=True)
    data = text.encode()
    file.write_bytes(gzip.compress(data, mtime=0) if file.suffix == ".gz" else data)
    file.chmod(0o644)
