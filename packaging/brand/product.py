"""A maker's product directory: what it holds, and every mistake in it."""
import configparser
import dataclasses
import pathlib
import re
import struct
import unicodedata
import xml.etree.ElementTree

import configuration
import splash

# The keys of product.conf; `depends` may be left out.
KEYS = ("name", "version", "identifier", "summary", "description", "maintainer", "homepage", "license", "depends")

# What each value has to look like, and how that is said.
FORMS = {
    "name": (r"""[^/\\"'$`?.][^/\\"'$`?]*""", "is part of a path that a shell and an address are made of: it must not begin "
             "with a full stop, nor contain any of / \\ ? \" ' $ `"),
    "version": (r"\d+(\.\d+){0,3}", "must be one to four numbers with full stops between them, such as 1.4.0"),
    "identifier": (r"[A-Za-z_][\w-]*(\.[A-Za-z_][\w-]*){2,}", "must be at least three words of letters, digits and - "
                   "with full stops between them, such as com.example.Installer"),
    "summary": (r"[^\\]{1,89}[^.\\]", "must be a line of at most 90 characters, without a backslash and without a full "
                "stop at its end"),
    "maintainer": (r"[^<>]+ <[^<>@\s]+@[^<>@\s]+>", "must be a name and a mail address, such as "
                   "Example <mail@example.com>"),
    "homepage": (r"https://[^\s<>\"]+", "must be an https address"),
    "license": (r"[A-Za-z0-9.+-]+", "must be the short name of a licence, such as MIT or LicenseRef-proprietary"),
}

PACKAGE = r"[a-z0-9][a-z0-9.+-]+( \((<<|<=|=|>=|>>) [\w.+:~-]+\))?"
FORMS["depends"] = (f"{PACKAGE}( ?[,|] ?{PACKAGE})*", "must be names of Debian packages with commas between them")

SMALLEST_ICON = 512


@dataclasses.dataclass
class Product:
    directory: pathlib.Path
    values: dict
    icon: pathlib.Path

    @property
    def tools(self):
        return self.directory / "Tools"

    @property
    def package(self):
        """Name of the package, of the command and of the directory below /opt, made from the product's name."""
        return package_name(self.values["name"])


def package_name(name):
    plain = unicodedata.normalize("NFKD", name.casefold()).encode("ascii", "ignore").decode()
    return re.sub("[^a-z0-9]+", "-", plain).strip("-")


def read_product(directory):
    """The product in `directory` and the list of the mistakes found there; without mistakes it can be used."""
    directory = pathlib.Path(directory)
    if not directory.is_dir():
        return None, [f"There is no directory '{directory}'."]
    values, mistakes = read_values(directory / "product.conf")
    icon, icon_mistakes = find_icon(directory)
    mistakes += icon_mistakes
    mistakes += license_mistakes(directory / "LICENSE")
    if (directory / "Tools").is_dir():
        mistakes += [f"{file.relative_to(directory)} is a link to nothing."
                     for file in sorted((directory / "Tools").rglob("*")) if not file.exists()]
        mistakes += configuration.mistakes_in(directory / "Tools")
        mistakes += splash.mistakes_in(directory / "Tools")
    else:
        mistakes.append("The directory Tools is missing: the configuration, the splash page and your tools.")
    return Product(directory, values, icon), mistakes


def read_values(file):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=", comment_prefixes="#")
    try:
        parser.read_string("[product]\n" + file.read_text("utf-8"), str(file))
    except FileNotFoundError:
        return {}, ["product.conf is missing: name, version and identifier of your product."]
    except (configparser.Error, UnicodeDecodeError) as error:
        return {}, [f"product.conf cannot be read: {' '.join(str(error).split())}."]
    # A value may go over several lines.
    values = {key: " ".join(value.split()) for key, value in parser["product"].items()}
    return {"depends": ""} | values, list(mistakes_in_values(values))


def mistakes_in_values(values):
    for key in values:
        if key not in KEYS:
            yield f"product.conf: '{key}' means nothing here; the keys are {', '.join(KEYS)}."
    for key in KEYS:
        value = values.get(key, "")
        if not value and key != "depends":
            yield f"product.conf: '{key}' is missing."
        elif value and key in FORMS:
            pattern, sentence = FORMS[key]
            if not re.fullmatch(pattern, value, re.ASCII) or not value.isprintable():
                yield f"product.conf: {key} '{value}' {sentence}."
    if values.get("name") and len(package_name(values["name"])) < 2:
        yield f"product.conf: name '{values['name']}' has too few letters from a to z to name a package by."


def license_mistakes(file):
    try:
        file.read_text("utf-8")
    except FileNotFoundError:
        return ["LICENSE is missing: the text of your product's licence, which packages have to carry."]
    except UnicodeDecodeError:
        return ["LICENSE is not in UTF-8."]
    return []


def find_icon(directory):
    icons = [directory / name for name in ("icon.svg", "icon.png") if (directory / name).is_file()]
    if len(icons) != 1:
        return None, ["There must be one icon: icon.svg, or icon.png of at least "
                      f"{SMALLEST_ICON} by {SMALLEST_ICON} pixels."]
    sentence = svg_mistake(icons[0]) if icons[0].suffix == ".svg" else png_mistake(icons[0])
    return icons[0], [f"{icons[0].name} {sentence}."] if sentence else []


def svg_mistake(file):
    try:
        root = xml.etree.ElementTree.parse(file).getroot()
    except xml.etree.ElementTree.ParseError as error:
        return f"is no SVG: {error}"
    return None if root.tag == "{http://www.w3.org/2000/svg}svg" else f"is no SVG: its root is '{root.tag}'"


def png_mistake(file):
    head = file.read_bytes()[:24]
    if len(head) < 24 or not head.startswith(b"\x89PNG\r\n\x1a\n"):
        return "is no PNG"
    width, height = struct.unpack(">II", head[16:])
    if width != height or width < SMALLEST_ICON:
        return f"is {width} by {height} pixels; it must be square, with at least {SMALLEST_ICON}"
    return None
