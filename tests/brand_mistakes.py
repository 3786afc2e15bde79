"""A valid product, and mistakes in one, each with the expected message."""
import pathlib
import plistlib
import struct
import zlib


def png(width, height, pixels=None):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    pixels = zlib.compress(bytes((width + 1) * height)) if pixels is None else pixels
    header = struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


def program(position=0, value=b""):
    """The beginning of a program for this computer, with some bytes of its header changed."""
    head = bytearray(pathlib.Path("/usr/bin/python3").read_bytes()[:4096])
    head[position:position + len(value)] = value
    return bytes(head)


def svg(attributes, content="<path d='M0 0h9v9z'/>"):
    return f"<svg xmlns='http://www.w3.org/2000/svg' {attributes}>{content}</svg>".encode()


CONF = {
    "name": "Größe & Söhne", "version": "2.10", "identifier": "com.example.Agent-Setup",
    "summary": "Install the agent", "description": "Installs.\n  More; $HOME \"quoted\" \\ 100 %.",
    "maintainer": "Größe <a@example.com>", "homepage": "https://example.com/", "license": "LicenseRef-proprietary",
}
CONFIGURATION = {
    "firstInstallationPageUrl": "https://example.com/first.html", "analyticParams": "a=1&b=x y",
    "commandUrlPrefix": "https://example.com/command", "installTool": "install tool", "launchAsAdminTool": "admin",
    "agentId": "A-1", "targetDir": "/opt/my agent", "lang": "pt-BR", "pageHosts": "example.com",
}
HEAD = "<meta charset='utf-8'>"
SPLASH = HEAD + ("<style>body { background: url(data:x) }</style><link rel=stylesheet href=style.css>"
                 "<img src='logo.svg'><a href='https://example.com'>Help</a><script src='a%20b.js'></script>")
FILES = {
    "LICENSE": b"All rights reserved.\n", "icon.svg": svg("viewBox='0 0 1 1'"), "Tools/splash.html": SPLASH.encode(),
    "Tools/logo.svg": svg("width='9' height='9'"), "Tools/style.css": b"i { background: url(logo.svg) }",
    "Tools/a b.js": b"if (location.hash === '#x') document.title = 'x'", "Tools/admin": b"#!/usr/bin/perl\n",
    "Tools/install tool": b"#!/bin/sh\n",
}
TOOL = "installTool 'install tool' "
INTERPRETER = TOOL + "needs the interpreter "
HIDDEN = "contains a character that cannot be shown, U+"
NO_HOST = "needs a host name such as setup.example.com"
NO_LIST = "Tools/installer_config.plist is not an XML or binary property list"
NAVIGATES = "it navigates to another page"

# An expected message, a key, and values that each lead to it. None omits the key.
VALUES = [
    ("product.conf: 'name' is missing", "name", None),
    ("product.conf: name 'Bob's' is part of a path", "name", "Bob's"),
    ("too few letters from a to z", "name", "日本"),
    ("becomes the package name 'bash', which another program has", "name", "Bash", "Bash!"),
    (f"line 1: it {HIDDEN}202E (right-to-left override)", "name", "a\u202eb"),
    (f"line 1: it {HIDDEN}001B (control character)", "name", "a\x1bb"),
    ("'name' is too long: 300 bytes", "name", "n" * 300),
    ("product.conf: version '2.0-beta' must be one to four numbers", "version", "2.0-beta"),
    ("identifier 'com.1example.Agent' must be", "identifier", "com.1example.Agent"),
    ("without a full stop at its end", "summary", "Installs."),
    ("must be a name without commas, brackets", "maintainer", "Somebody", "Acme, Inc. <a@example.com>",
     "(Acme) <a@example.com>", "Acme <root@localhost>", "Acme <a@example..com>"),
    ("must be an https address", "homepage", "http://example.com"),
    (NO_HOST, "homepage", "https://-/"),
    ("must be the short name of a licence", "license", "my licence"),
    ("depends 'curl jq' must be names", "depends", "curl jq"),
    ("unknown key 'licence'", "licence", "MIT"),
    ("'installTool' is missing", "installTool", None),
    ("installTool '../tool' must be the plain name", "installTool", "../tool"),
    ("installTool 'other' is not in Tools", "installTool", "other"),
    ("is longer than 255 bytes", "installTool", "x" * 300),
    ("contains $ which the shell", "installTool", "a$b"),
    ("installTool and launchAsAdminTool are the same file", "installTool", "admin"),
    ("launchAsAdminTool 'splash.html' is not executable", "launchAsAdminTool", "splash.html"),
    ("agentId '$(id)' contains $", "agentId", "$(id)"),
    ("which are special in an address", "agentId", "a&b"),
    ("'agentId' must be a string", "agentId", 5),
    ("'agentId' contains a line break or another character that cannot be shown, U+2066", "agentId", "a\u2066b"),
    ("must be an absolute path", "targetDir", "opt/agent"),
    ("contains \" \\", "targetDir", "/opt/\"x\\"),
    ("is a directory of the system", "targetDir", "/", "/usr//local/"),
    ("is in a directory of the system", "targetDir", "/usr/bin/agent"),
    ("must not contain .. as a part", "targetDir", "/opt/../etc"),
    ("contains a name longer than 255 bytes", "targetDir", "/opt/" + "x" * 300),
    ("lang 'en_GB' must be a language tag", "lang", "en_GB"),
    ("unknown key 'installtool'", "installtool", "x"),
    ("analyticParams 'a=1&b' must be key=value pairs", "analyticParams", "a=1&b"),
    ("must have a path after the host", "commandUrlPrefix", "https://example.com"),
    ("every page of the host would be a command", "commandUrlPrefix", "https://example.com/"),
    ("would be taken for a command", "commandUrlPrefix", "https://example.com/first"),
    ("must have its host in lower-case", "commandUrlPrefix", "https://Example.com/command"),
    ("must be an address that begins with https://", "commandUrlPrefix", "HTTPS://example.com/command", "command"),
    ("must leave out the port 443", "commandUrlPrefix", "https://example.com:443/command"),
    ("must not contain . or ..", "commandUrlPrefix", "https://example.com/a/../b"),
    ("must use https", "firstInstallationPageUrl", "http://example.com/first"),
    ("must not contain a query", "firstInstallationPageUrl", "https://example.com/first?a=b"),
    (NO_HOST, "firstInstallationPageUrl", "https://[::1/first", "https://-example.com/first",
     "https://example..com/first", "https://256.1.1.1/first", "https://127.1/first"),
    ("must be a number from 1 to 65535", "firstInstallationPageUrl", "https://example.com:70000/first",
     "https://example.com:0443/first"),
    ("uses the port 6000, which the web view refuses", "firstInstallationPageUrl", "https://example.com:6000/first"),
    ("must not contain a user name", "firstInstallationPageUrl", "https://me@example.com/first"),
    ("'pageHosts' is empty", "pageHosts", " "),
    ("but must hold exact host names", "pageHosts", "*.example.com example.com", "https://example.com"),
    ("contains 'example.com:443', which must leave out the port 443", "pageHosts", "example.com:443"),
    ("pageHosts lacks 'example.com', the host of commandUrlPrefix", "pageHosts", "help.example.com"),
    ("developerMode is for trying pages out", "developerMode", "yes"),
    ("must be yes; to switch it off, leave the key out", "developerMode", "no"),
]

# An expected message, a file, and contents that each lead to it. None omits the file.
CONTENTS = [
    ("product.conf is missing", "product.conf", None),
    ("product.conf begins with a byte order mark", "product.conf", b"\xef\xbb\xbfname = x\n"),
    ("product.conf is in UTF-16", "product.conf", "name = x\n".encode("utf-16")),
    ("product.conf is not in UTF-8: see line 2", "product.conf", b"a = b\nname = \xe9\n"),
    ("line 1: '[product]' is a section heading", "product.conf", b"[product]\nname = x\n"),
    ("line 2: 'name' occurs twice", "product.conf", b"name = x\nname = y\n"),
    ("line 1: a line must be key = value", "product.conf", b"name\n"),
    ("LICENSE is missing", "LICENSE", None),
    ("LICENSE is empty", "LICENSE", b" \n"),
    ("There must be one icon", "icon.png", png(512, 512)),
    ("There must be one icon", "icon.svg", None),
    ("icon.svg is not an SVG image", "icon.svg", b"<html/>", b"\x1f\x8b",
     b"<?xml version='1.0' encoding='x-none'?><svg/>"),
    ("icon.svg is not an SVG image: see line 1", "icon.svg", b"<svg"),
    ("icon.svg has no size", "icon.svg", svg(""), svg("viewBox='0 0 0 0'"), svg("width='100%' height='100%'")),
    ("icon.svg is 64 by 32; it must be square", "icon.svg", svg("viewBox='0 0 64 32'")),
    ("icon.svg draws nothing", "icon.svg", svg("viewBox='0 0 9 9'", "")),
    ("Tools/installer_config.plist is missing", "Tools/installer_config.plist", None),
    (NO_LIST, "Tools/installer_config.plist", b"", b"<plist><dict><key>a</key><date>x</date></dict></plist>",
     b"<plist>" + b"<array>" * 5000, b"bplist00" + bytes(40)),
    (f"{NO_LIST}: see line 3", "Tools/installer_config.plist", b"<plist>\n<dict>\n</plist>"),
    ("must be a dictionary", "Tools/installer_config.plist", plistlib.dumps(["a"])),
    (TOOL + "is empty", "Tools/install tool", b""),
    (TOOL + "does not begin with #!", "Tools/install tool", b"echo\n"),
    (TOOL + "begins with a byte order mark", "Tools/install tool", b"\xef\xbb\xbf#!/bin/sh\n"),
    (TOOL + "has Windows line ends (CRLF)", "Tools/install tool", b"#!/bin/sh\r\necho\r\n"),
    (INTERPRETER + "'/opt/none/sh', which is not on", "Tools/install tool", b"#!/opt/none/sh\n"),
    (INTERPRETER + "'nonesuch', which is not on", "Tools/install tool", b"#!/usr/bin/env -S nonesuch -x\n"),
    (TOOL + "must name its interpreter by an absolute path", "Tools/install tool", b"#!/usr/bin/env\n", b"#!python3\n"),
    (TOOL + "has a first line of more than 255 bytes", "Tools/install tool", b"#!/bin/sh " + b"x" * 300),
    ("does not name its package 'python3' in depends", "Tools/install tool", b"#!/usr/bin/env python3\n"),
    (TOOL + "is a program for another architecture", "Tools/install tool", program(18, b"\x28\0")),
    (TOOL + "is an object file", "Tools/install tool", program(16, b"\1\0")),
    (TOOL + "is truncated", "Tools/install tool", program()[:20]),
    (TOOL + "is a program for Windows", "Tools/install tool", b"MZ\x90\0"),
    ("has a character in its name that cannot be shown", "Tools/a\u202eb", b""),
    ("Tools/splash.html is missing", "Tools/splash.html", None),
    ("Tools/splash.html: it names no character set", "Tools/splash.html", b"<p>"),
    ("its character set is 'latin1', but must be utf-8", "Tools/splash.html", b"<meta charset='latin1'>"),
    ("Tools/logo.svg: 'https://cdn.example", "Tools/logo.svg", svg("", "<image href='https://cdn.example/x.png'/>")),
    ("Tools/style.css: 'https://cdn.example/x' is remote", "Tools/style.css", b"@import 'https://cdn.example/x'"),
    ("Tools/style.css: 'gone.png' is not in Tools", "Tools/style.css", b"i { background: url('gone.png') }"),
    ("Tools/a b.js: 'https://e.example/x' is remote", "Tools/a b.js", b"fetch('https://e.example/x')"),
    (f"Tools/a b.js: {NAVIGATES}", "Tools/a b.js", b"location.replace('first.html')"),
]

# The same for icon.png in place of icon.svg.
PNGS = [
    ("icon.png is not a PNG image", b"\x89PNG"),
    ("icon.png is 512 by 400 pixels; it must be square", png(512, 400)),
    ("pixels; it must be square, with 512 to", png(64, 64), png(0, 0)),
    ("icon.png is damaged or truncated", png(512, 512)[:-30]),
    ("its pixels cannot be unpacked", png(512, 512, b"x")),
    ("some of its pixels are missing", png(512, 512, zlib.compress(b"\0"))),
]

# The same for the body of the splash page.
SPLASHES = [
    ("'//cdn.example/x.js' is remote", "<script src=//cdn.example/x.js></script>"),
    ("'https://cdn.example/x.css' is remote", "<style>@import 'https://cdn.example/x.css'</style>"),
    (NAVIGATES, "<meta http-equiv=refresh content='0; url=x.html'>", "<script>window.location.href = 'x'</script>",
     "<body onload='document.forms[0].submit()'>"),
    ("'gone.png' is not in Tools", "<img src=gone.png>"),
    ("'a\\x1b[31m\\nb' is not in Tools", "<img src='a\x1b[31m\nb'>"),
    ("'../icon.svg' is not in Tools", "<img src='../icon.svg'>"),
]
