"""Mistakes in a product's installer_config.plist."""
import os
import plistlib
import re

import addresses
import programs
import text

# The keys that the installer knows: src/config/ConfigurationKeys.h.
NEEDED = ("firstInstallationPageUrl", "analyticParams", "commandUrlPrefix", "installTool", "launchAsAdminTool")
OPTIONAL = ("agentId", "targetDir", "lang", "pageHosts", "developerMode")
TOOLS = ("installTool", "launchAsAdminTool")

# The installer passes these to a shell unquoted.
SHELL_CHARACTERS = "\"'$`\\"
LONGEST = 255  # bytes of a file's name; enough for every value but an address

# Directories that products share, and those in which only the system installs files.
SHARED_DIRECTORIES = set("""
    / /etc /home /media /mnt /opt /root /srv /tmp /usr /usr/include /usr/lib /usr/lib32 /usr/lib64 /usr/libexec
    /usr/local /usr/local/bin /usr/local/etc /usr/local/lib /usr/local/sbin /usr/local/share /usr/share /usr/src
    /var /var/cache /var/lib /var/log /var/opt /var/spool /var/tmp /Applications /Library /System /Users /private
    /etc/opt
""".split())
SYSTEM_DIRECTORIES = ("/bin", "/boot", "/dev", "/lib", "/lib32", "/lib64", "/proc", "/run", "/sbin", "/sys", "/usr/bin",
                      "/usr/sbin", "/var/lib/dpkg", "/System")


def read_values(file):
    """The configuration; raises Unreadable."""
    if not file.exists():
        raise text.Unreadable("is missing")
    if not file.is_file():
        raise text.Unreadable("is not a file")
    try:
        values = plistlib.loads(file.read_bytes())
    except OSError:
        raise
    except Exception as error:  # plistlib lets through whatever a malformed value raises
        line = f": see line {error.lineno}" if hasattr(error, "lineno") else ""
        raise text.Unreadable(f"is not an XML or binary property list{line}") from None
    if not isinstance(values, dict):
        raise text.Unreadable("must be a dictionary")
    return values


def sentences(values, tools, template, depends):
    """The mistakes. `depends` are the package's dependencies, None when no package is made."""
    for key in NEEDED:
        if key not in values:
            yield f"'{key}' is missing"
    usable = {}
    for key, value in values.items():
        if key not in CHECKS:
            yield f"unknown key '{key}'"
        elif not isinstance(value, str):
            yield f"'{key}' must be a string"
        elif key != "analyticParams" and not value.strip():
            yield f"'{key}' is empty"
        elif hidden := text.invisible_character(value):
            yield f"'{key}' contains a line break or another character that cannot be shown, {hidden}"
        else:
            usable[key] = value
    for key, value in usable.items():
        yield from (f"{key} '{value}' {sentence}" for sentence in CHECKS[key](value))
    yield from addresses.uncovered_sentences(usable)
    page, prefix = usable.get("firstInstallationPageUrl", ""), usable.get("commandUrlPrefix")
    if prefix and page.startswith(prefix):
        yield f"firstInstallationPageUrl '{page}' begins with commandUrlPrefix, so it would be taken for a command"
    yield from tools_sentences({key: usable[key] for key in TOOLS if key in usable}, tools, template, depends)
    if "developerMode" in usable and depends is not None:
        yield "developerMode is for trying pages out, in a bundle or an archive; a package must not have it"


def notes_on(values):
    """Notes on what may be unintended. The values have no mistakes."""
    yield from addresses.notes_on_hosts(values)
    if "developerMode" in values:
        yield "developerMode is on: whoever uses this installer can inspect and change its pages"


def tools_sentences(names, tools, template, depends):
    for key, name in names.items():
        if set(name) & set(SHELL_CHARACTERS):
            continue  # said already
        if sentence := file_sentence(name, tools / name):
            yield f"{key} '{name}' {sentence}"
        else:
            yield from (f"{key} '{name}' {sentence}"
                        for sentence in programs.sentences_about(tools / name, template, depends))
    files = [tools / name for name in names.values() if os.path.isfile(tools / name)]
    if len(files) == 2 and os.path.samefile(*files):
        yield "installTool and launchAsAdminTool are the same file"


def file_sentence(name, file):
    if "/" in name or name in (".", ".."):
        return "must be the plain name of a file in Tools"
    if len(name.encode()) > LONGEST:
        return f"is longer than {LONGEST} bytes"
    if not file.is_file():
        return "is not a file in Tools" if file.exists() else "is not in Tools"
    return None if os.access(file, os.X_OK) else "is not executable"


def shell_sentences(value):
    found = " ".join(character for character in SHELL_CHARACTERS if character in value)
    if found:
        yield f"contains {found} which the shell that starts the tools would interpret"


def analytics_sentences(value):
    if not re.fullmatch(r"([^=&#%]+=[^&#%]*(&|$))*", value) or value.endswith("&"):
        yield "must be key=value pairs with & between them, without # and % (the installer escapes them itself)"


def agent_sentences(value):
    if set(value) & set("&#%+?= /"):
        yield "must not contain blanks or any of & # % + ? = /, which are special in an address or a path"
    if len(value.encode()) > LONGEST:
        yield f"is longer than {LONGEST} bytes"
    yield from shell_sentences(value)


def directory_sentences(value):
    path = os.path.normpath(value)
    if not value.startswith("/"):
        yield "must be an absolute path"
    elif ".." in value.split("/"):
        yield "must not contain .. as a part of its path"
    elif path in SHARED_DIRECTORIES or path.startswith("//"):
        yield "is a directory of the system; the product needs one of its own"
    elif any(path == directory or path.startswith(f"{directory}/") for directory in SYSTEM_DIRECTORIES):
        yield "is in a directory of the system"
    if any(len(part.encode()) > LONGEST for part in value.split("/")):
        yield f"contains a name longer than {LONGEST} bytes"
    yield from shell_sentences(value)


def language_sentences(value):
    if not re.fullmatch("[A-Za-z]{2,8}(-[A-Za-z0-9]{1,8})*", value):
        yield "must be a language tag such as en or pt-BR"


def developer_mode_sentences(value):
    if value != "yes":
        yield "must be yes; to switch it off, leave the key out"


CHECKS = {
    "firstInstallationPageUrl": addresses.page_sentences,
    "analyticParams": analytics_sentences,
    "commandUrlPrefix": addresses.prefix_sentences,
    "installTool": shell_sentences,
    "launchAsAdminTool": shell_sentences,
    "agentId": agent_sentences,
    "targetDir": directory_sentences,
    "lang": language_sentences,
    "pageHosts": addresses.host_list_sentences,
    "developerMode": developer_mode_sentences,
}
