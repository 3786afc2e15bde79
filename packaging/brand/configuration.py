"""Mistakes in a product's installer_config.plist."""
import os
import plistlib
import re
import urllib.parse
import xml.parsers.expat

# The keys that the installer knows: src/config/ConfigurationKeys.h.
NEEDED = ("firstInstallationPageUrl", "analyticParams", "commandUrlPrefix", "installTool", "launchAsAdminTool")
OPTIONAL = ("agentId", "targetDir", "lang")

# The installer hands these to a shell as they stand.
SHELL_CHARACTERS = "\"'$`\\"
THIS_COMPUTER = ("127.0.0.1", "localhost")
DEFAULT_PORTS = {"http": 80, "https": 443}


def mistakes_in(tools):
    file = tools / "installer_config.plist"
    try:
        with file.open("rb") as stream:
            values = plistlib.load(stream)
    except FileNotFoundError:
        return ["Tools/installer_config.plist is missing."]
    except (plistlib.InvalidFileException, xml.parsers.expat.ExpatError, ValueError, OverflowError,
            AttributeError) as error:
        return [f"Tools/installer_config.plist is no property list: {error}."]
    if not isinstance(values, dict):
        return ["Tools/installer_config.plist must hold a dictionary."]
    return [f"Tools/installer_config.plist: {sentence}." for sentence in sentences(values, tools)]


def sentences(values, tools):
    for key in NEEDED:
        if key not in values:
            yield f"'{key}' is missing"
    for key, value in values.items():
        if key not in NEEDED + OPTIONAL:
            yield f"'{key}' means nothing to the installer"
        elif not isinstance(value, str):
            yield f"'{key}' must be a text"
        elif key != "analyticParams" and not value:
            yield f"'{key}' is empty"
        elif not value.isprintable():
            yield f"'{key}' contains a line break or another control character"
        else:
            yield from (f"{key} '{value}' {sentence}" for sentence in CHECKS[key](value, tools))
    page, prefix = values.get("firstInstallationPageUrl"), values.get("commandUrlPrefix")
    if isinstance(page, str) and isinstance(prefix, str) and prefix and page.startswith(prefix):
        yield f"firstInstallationPageUrl '{page}' begins with commandUrlPrefix, so it would be taken for a command"


def url_sentences(value, _tools):
    """What is compared with, or put before a query, has to be an address in the form in which the web view says it."""
    try:
        url = urllib.parse.urlsplit(value)
        host, port = url.hostname, url.port
    except ValueError as error:
        yield f"is no address: {error}"
        return
    if url.scheme not in DEFAULT_PORTS or not host or not value.startswith(f"{url.scheme}://"):
        yield "must be an address that begins with https:// and a host"
        return
    if url.scheme == "http" and host not in THIS_COMPUTER:
        yield "must use https: whoever can change its pages on their way can run commands on the person's computer"
    if "@" in url.netloc:
        yield "must not contain a user name"
    elif not re.fullmatch(r"[a-z0-9.-]+(:\d+)?", url.netloc):
        yield "must have a host in lower-case letters, digits, full stops and hyphens"
    if port == DEFAULT_PORTS[url.scheme]:
        yield f"must leave out the port {port}, as the web view does"
    if set(value) & set("?#"):
        yield "must not contain a query or a fragment"
    if not re.fullmatch(r"[A-Za-z0-9/._~!()*,;:@&=+-]*", url.path):
        yield "must have a path without blanks, escapes and other special characters"
    if {".", ".."} & set(url.path.split("/")):
        yield "must not contain . or .. as a part of its path"


def page_sentences(value, tools):
    yield from url_sentences(value, tools)
    if re.fullmatch(r"https?://[^/]+", value):
        yield "must have a path, at least /"


def prefix_sentences(value, tools):
    yield from url_sentences(value, tools)
    if re.fullmatch(r"https?://[^/]*", value):
        yield (f"must have a path after the host: every address that begins with it is a command, "
               f"also '{value}.example.net'")
    elif re.fullmatch(r"https?://[^/]*/+", value):
        yield "must have a path of its own after the host: every page of the host would be a command"


def analytics_sentences(value, _tools):
    if not re.fullmatch(r"([^=&#%]+=[^&#%]*(&|$))*", value) or value.endswith("&"):
        yield "must be key=value pairs with & between them, without # and % (the installer escapes them itself)"


def tool_sentences(value, tools):
    file = tools / value
    if "/" in value or value in (".", ".."):
        yield "must be the plain name of a file in Tools"
    elif set(value) & set(SHELL_CHARACTERS):
        yield from shell_sentences(value, tools)
    elif not file.is_file():
        yield "is not in Tools"
    elif not os.access(file, os.X_OK):
        yield "is not executable"


def shell_sentences(value, _tools):
    found = " ".join(character for character in SHELL_CHARACTERS if character in value)
    if found:
        yield f"contains {found} which the shell that starts the tools would take as its own"


def agent_sentences(value, tools):
    if set(value) & set("&#%+?= "):
        yield "must not contain blanks or any of & # % + ? =, which mean something else in an address"
    yield from shell_sentences(value, tools)


def directory_sentences(value, tools):
    if not value.startswith("/"):
        yield "must be an absolute path"
    yield from shell_sentences(value, tools)


def language_sentences(value, _tools):
    if not re.fullmatch("[A-Za-z]{2,8}(-[A-Za-z0-9]{1,8})*", value):
        yield "must be the tag of a language, such as en or pt-BR"


CHECKS = {
    "firstInstallationPageUrl": page_sentences,
    "analyticParams": analytics_sentences,
    "commandUrlPrefix": prefix_sentences,
    "installTool": tool_sentences,
    "launchAsAdminTool": tool_sentences,
    "agentId": agent_sentences,
    "targetDir": directory_sentences,
    "lang": language_sentences,
}
