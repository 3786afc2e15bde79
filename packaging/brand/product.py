"""A maker's product directory: what it holds, and every mistake in it."""
import dataclasses
import pathlib
import re
import unicodedata

import addresses
import configuration
import distribution
import programs
import splash
import text
from icon import find_icon

# The keys of product.conf; `depends` may be left out.
KEYS = ("name", "version", "identifier", "summary", "description", "maintainer", "homepage", "license", "depends")

PACKAGE = r"[a-z0-9][a-z0-9.+-]+( \((<<|<=|=|>=|>>) [\w.+:~-]+\))?"

# The form of each value, and its description.
FORMS = {
    "name": (r"""[^/\\"'$`?.][^/\\"'$`?]*""",
             "is part of a path that a shell and an address are made of: it must not begin with a full stop, "
             "nor contain any of / \\ ? \" ' $ `"),
    "version": (r"\d+(\.\d+){0,3}", "must be one to four numbers with full stops between them, such as 1.4.0"),
    "identifier": (r"[A-Za-z_][\w-]*(\.[A-Za-z_][\w-]*){2,}", "must be at least three words of letters, digits and - "
                   "with full stops between them, such as com.example.Installer"),
    "summary": (r"[^\\]*[^.\\]", "must be a line without a backslash and without a full stop at its end"),
    "maintainer": (r"[^][()<>,@;\"]+ <[\w.+-]+@([a-z0-9-]+\.)+[a-z][a-z0-9-]+>",
                   "must be a name without commas, brackets and quotes and a mail address, "
                   "such as Example <mail@example.com>"),
    "homepage": (r"https://[^\s<>\"]+", "must be an https address"),
    "license": (r"[A-Za-z0-9.+-]+", "must be the short name of a licence, such as MIT or LicenseRef-proprietary"),
    "depends": (f"{PACKAGE}( ?[,|] ?{PACKAGE})*", "must be names of Debian packages with commas between them"),
}

# Longest values in bytes of UTF-8. Files are named after name, identifier and version.
LIMITS = {"name": 120, "version": 40, "identifier": 120, "summary": 90, "maintainer": 200, "homepage": 1000,
          "license": 60, "description": 4000, "depends": 4000}

EXAMPLE_IDENTIFIER = "org.vok.Installer"


@dataclasses.dataclass
class Product:
    directory: pathlib.Path
    values: dict
    icon: pathlib.Path
    notes: list  # what may be unintended, but is not a mistake

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


def read_product(directory, template=None, for_package=False):
    """The product in `directory` and the list of the mistakes found there; without mistakes, it is usable."""
    directory = pathlib.Path(directory)
    if not directory.is_dir():
        return None, [f"There is no directory '{directory}'."]
    values, mistakes = read_values(directory / "product.conf")
    icon, icon_mistakes = find_icon(directory)
    mistakes += icon_mistakes + license_mistakes(directory / "LICENSE")
    product = Product(directory, values, icon, [])
    depends = values["depends"] or "" if for_package else None
    if product.tools.is_dir():
        mistakes += programs.mistakes_in_files(product.tools, product.tools)
        mistakes += configuration_mistakes(product, template, depends)
        mistakes += splash.mistakes_in(product.tools)
    else:
        mistakes.append("The directory Tools is missing: the configuration, the splash page and your tools.")
    if not mistakes:
        product.notes += notes_on(values)
    return product, [text.printable(mistake) for mistake in mistakes]


def configuration_mistakes(product, template, depends):
    name = "Tools/installer_config.plist"
    try:
        values = configuration.read_values(product.directory / name)
    except text.Unreadable as error:
        return [f"{name} {error}."]
    mistakes = [f"{name}: {sentence}."
                for sentence in configuration.sentences(values, product.tools, template, depends)]
    if not mistakes:
        product.notes += [f"{name}: {sentence}." for sentence in configuration.notes_on(values)]
    return mistakes


def read_values(file):
    """The values of product.conf, and the mistakes in it. None stands for a value with a mistake."""
    try:
        lines = text.read_text(file).split("\n")
    except text.Unreadable as error:
        return {"depends": ""}, [f"product.conf {error}."]
    values, mistakes, key = {}, [], None
    for number, line in enumerate(lines, 1):
        if not line.strip() or line.lstrip().startswith("#"):
            continue
        name, equals, value = (part.strip() for part in line.partition("="))
        hidden = text.invisible_character(line.replace("\t", " "))
        if line[0].isspace() and key:
            values[key] = None if hidden or values[key] is None else f"{values[key]} {line.strip()}"
        elif line.lstrip().startswith("["):
            mistakes.append(f"product.conf, line {number}: '{line.strip()}' is a section heading; leave it out.")
        elif not equals:
            mistakes.append(f"product.conf, line {number}: a line must be key = value, or begin with a blank to "
                            "continue the line above it.")
        else:
            key = name.lower()
            if key in values:
                mistakes.append(f"product.conf, line {number}: '{key}' occurs twice.")
            values[key] = None if hidden else " ".join(value.split())
        if hidden:
            mistakes.append(f"product.conf, line {number}: it contains a character that cannot be shown, {hidden}.")
    return {"depends": ""} | values, mistakes + [f"product.conf: {sentence}." for sentence in sentences(values)]


def sentences(values):
    for key in values:
        if key not in KEYS:
            yield f"unknown key '{key}'; the keys are {', '.join(KEYS)}"
    for key in KEYS:
        value = values.get(key, "")
        if value is None:
            continue
        length = len(value.encode())
        if not value and key != "depends":
            yield f"'{key}' is missing"
        elif length > LIMITS[key]:
            yield f"'{key}' is too long: {length} bytes, and at most {LIMITS[key]} are possible"
        elif value and key in FORMS and not re.fullmatch(FORMS[key][0], value, re.ASCII):
            yield f"{key} '{value}' {FORMS[key][1]}"
        elif value and key in MORE:
            yield from (f"{key} '{value}' {sentence}" for sentence in MORE[key](values))


def name_sentences(values):
    package = package_name(values["name"])
    if len(package) < 2 or not package[0].isalpha() and not re.search("[a-z]", package):
        yield "has too few letters from a to z for a package name"
    elif distribution.is_taken(package, values.get("maintainer")):
        yield (f"becomes the package name '{package}', which another program has; put a word of your own before or "
               f"after it")


def homepage_sentences(values):
    host = addresses.split_url(values["homepage"])[1]
    yield from addresses.netloc_sentences(host, 443)


MORE = {"name": name_sentences, "homepage": homepage_sentences}


def notes_on(values):
    for package in distribution.unknown_packages(values.get("depends", "")):
        yield f"product.conf: depends names '{package}', which this computer's package lists do not have."
    if values["identifier"] == EXAMPLE_IDENTIFIER:
        yield f"product.conf: identifier '{EXAMPLE_IDENTIFIER}' is the example's; a product needs its own."


def license_mistakes(file):
    try:
        content = text.read_text(file)
    except text.Unreadable as error:
        return [f"LICENSE {error}; packages have to carry your product's licence."]
    return [] if content.strip() else ["LICENSE is empty; packages have to carry your product's licence."]
