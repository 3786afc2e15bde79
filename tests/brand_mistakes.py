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


def program(**changes):
    """The beginning of a program for this computer, with some bytes of its header changed."""
    head = bytearray(pathlib.Path("/usr/bin/python3").read_bytes()[:4096])
    for position, value in changes.values():
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
NO_HOST = "needs a host name such as setup.example.com"

# A mistake in a value, and the expected message. None omits the value.
VALUES = [
    ("name", None, "product.conf: 'name' is missing"),
    ("name", "Bob's", "product.conf: name 'Bob's' is part of a path"),
    ("name", "日本", "too few letters from a to z"),
    ("name", "Bash", "becomes the package name 'bash', which another program has"),
    ("name", "Firefox", "becomes the package name 'firefox'"),
    ("name", "systemd", "becomes the package name 'systemd'"),
    ("name", "Coreutils!", "becomes the package name 'coreutils'"),
    ("name", "a\u202eb", "line 1: it contains a character that cannot be shown, U+202E (right-to-left override)"),
    ("name", "a\x1bb", "line 1: it contains a character that cannot be shown, U+001B (control character)"),
    ("name", "n" * 300, "'name' is too long: 300 bytes"),
    ("version", "2.0-beta", "product.conf: version '2.0-beta' must be one to four numbers"),
    ("version", "1" * 99, "'version' is too long"),
    ("identifier", "com.1example.Agent", "identifier 'com.1example.Agent' must be"),
    ("identifier", "com.example." + "x" * 200, "'identifier' is too long"),
    ("summary", "Installs.", "without a full stop at its end"),
    ("maintainer", "Somebody", "maintainer 'Somebody' must be"),
    ("maintainer", "Acme, Inc. <a@example.com>", "must be a name without commas"),
    ("maintainer", "(Acme) <a@example.com>", "must be a name without commas, brackets"),
    ("maintainer", "Acme <root@localhost>", "must be a name without commas"),
    ("maintainer", "Acme <a@example..com>", "must be a name without commas"),
    ("homepage", "http://example.com", "must be an https address"),
    ("homepage", "https://-/", NO_HOST),
    ("license", "my licence", "must be the short name of a licence"),
    ("depends", "curl jq", "depends 'curl jq' must be names"),
    ("licence", "MIT", "unknown key 'licence'"),
    ("installTool", None, "'installTool' is missing"),
    ("installTool", "../tool", "installTool '../tool' must be the plain name"),
    ("installTool", "other", "installTool 'other' is not in Tools"),
    ("installTool", "x" * 300, "is longer than 255 bytes"),
    ("installTool", "a$b", "contains $ which the shell"),
    ("installTool", "admin", "installTool and launchAsAdminTool are the same file"),
    ("launchAsAdminTool", "splash.html", "launchAsAdminTool 'splash.html' is not executable"),
    ("launchAsAdminTool", "", "'launchAsAdminTool' is empty"),
    ("agentId", "$(id)", "agentId '$(id)' contains $"),
    ("agentId", "a&b", "which are special in an address"),
    ("agentId", 5, "'agentId' must be a string"),
    ("agentId", "a\u2066b", "'agentId' contains a line break or another character that cannot be shown, U+2066"),
    ("targetDir", "opt/\"x\\", "targetDir 'opt/\"x\\' must be an absolute path"),
    ("targetDir", "/opt/\"x\\", "contains \" \\"),
    ("targetDir", "/", "targetDir '/' is a directory of the system"),
    ("targetDir", "/usr//local/", "is a directory of the system"),
    ("targetDir", "/usr/bin/agent", "is in a directory of the system"),
    ("targetDir", "/opt/../etc", "must not contain .. as a part"),
    ("targetDir", "/opt/" + "x" * 300, "contains a name longer than 255 bytes"),
    ("lang", "en_GB", "lang 'en_GB' must be a language tag"),
    ("installtool", "x", "unknown key 'installtool'"),
    ("analyticParams", "a=1&b", "analyticParams 'a=1&b' must be key=value pairs"),
    ("commandUrlPrefix", "https://example.com", "must have a path after the host"),
    ("commandUrlPrefix", "https://example.com/", "every page of the host would be a command"),
    ("commandUrlPrefix", "https://example.com/first", "would be taken for a command"),
    ("commandUrlPrefix", "https://Example.com/command", "must have its host in lower-case"),
    ("commandUrlPrefix", "HTTPS://example.com/command", "must be an address"),
    ("commandUrlPrefix", "https://example.com:443/command", "must leave out the port 443"),
    ("commandUrlPrefix", "https://example.com/a/../b", "must not contain . or .."),
    ("firstInstallationPageUrl", "http://example.com/first", "must use https"),
    ("firstInstallationPageUrl", "https://example.com/first?a=b", "must not contain a query"),
    ("firstInstallationPageUrl", "https://[::1/first", NO_HOST),
    ("firstInstallationPageUrl", "first.html", "must be an address that begins with https://"),
    ("firstInstallationPageUrl", "https://-example.com/first", NO_HOST),
    ("firstInstallationPageUrl", "https://example..com/first", NO_HOST),
    ("firstInstallationPageUrl", "https://256.1.1.1/first", NO_HOST),
    ("firstInstallationPageUrl", "https://127.1/first", NO_HOST),
    ("firstInstallationPageUrl", "https://example.com:70000/first", "must be a number from 1 to 65535"),
    ("firstInstallationPageUrl", "https://example.com:0443/first", "must be a number from 1 to 65535"),
    ("firstInstallationPageUrl", "https://example.com:6000/first", "uses the port 6000, which the web view refuses"),
    ("firstInstallationPageUrl", "https://me@example.com/first", "must not contain a user name"),
    ("pageHosts", " ", "'pageHosts' is empty"),
    ("pageHosts", "*.example.com example.com", "contains '*.example.com', but must hold exact host names"),
    ("pageHosts", "https://example.com", "contains 'https://example.com', but must hold exact host names"),
    ("pageHosts", "example.com:443", "contains 'example.com:443', which must leave out the port 443"),
    ("pageHosts", "help.example.com", "pageHosts lacks 'example.com', the host of commandUrlPrefix"),
    ("developerMode", "yes", "developerMode is for trying pages out"),
    ("developerMode", "no", "must be yes; to switch it off, leave the key out"),
]

# A mistake in a file: its content, or None when it is missing.
CONTENTS = [
    ("product.conf", None, "product.conf is missing"),
    ("product.conf", b"\xef\xbb\xbfname = x\n", "product.conf begins with a byte order mark"),
    ("product.conf", "name = x\n".encode("utf-16"), "product.conf is in UTF-16"),
    ("product.conf", b"a = b\nname = \xe9\n", "product.conf is not in UTF-8: see line 2"),
    ("product.conf", b"[product]\nname = x\n", "line 1: '[product]' is a section heading"),
    ("product.conf", b"name = x\nname = y\n", "line 2: 'name' occurs twice"),
    ("product.conf", b"name\n", "line 1: a line must be key = value"),
    ("LICENSE", None, "LICENSE is missing"),
    ("LICENSE", b" \n", "LICENSE is empty"),
    ("LICENSE", b"\xff\xff", "LICENSE is not in UTF-8"),
    ("icon.png", png(512, 512), "There must be one icon"),
    ("icon.svg", None, "There must be one icon"),
    ("icon.svg", b"<html/>", "icon.svg is not an SVG image"),
    ("icon.svg", b"<svg", "icon.svg is not an SVG image: see line 1"),
    ("icon.svg", b"\x1f\x8b", "icon.svg is not an SVG image"),
    ("icon.svg", b"<?xml version='1.0' encoding='x-none'?><svg/>", "icon.svg is not an SVG image"),
    ("icon.svg", svg(""), "icon.svg has no size"),
    ("icon.svg", svg("viewBox='0 0 0 0'"), "icon.svg has no size"),
    ("icon.svg", svg("width='100%' height='100%'"), "icon.svg has no size"),
    ("icon.svg", svg("viewBox='0 0 64 32'"), "icon.svg is 64 by 32; it must be square"),
    ("icon.svg", svg("viewBox='0 0 9 9'", ""), "icon.svg draws nothing"),
    ("Tools/installer_config.plist", None, "Tools/installer_config.plist is missing"),
    ("Tools/installer_config.plist", b"", "Tools/installer_config.plist is not an XML or binary property list"),
    ("Tools/installer_config.plist", b"<plist>\n<dict>\n</plist>", "property list: see line 3"),
    ("Tools/installer_config.plist", b"<plist><dict><key>a</key><date>x</date></dict></plist>", "is not an XML"),
    ("Tools/installer_config.plist", b"<plist>" + b"<array>" * 5000, "is not an XML or binary"),
    ("Tools/installer_config.plist", b"bplist00" + bytes(40), "is not an XML or binary property list"),
    ("Tools/installer_config.plist", plistlib.dumps(["a"]), "must be a dictionary"),
    ("Tools/install tool", b"", TOOL + "is empty"),
    ("Tools/install tool", b"echo\n", TOOL + "does not begin with #!"),
    ("Tools/install tool", b"\xef\xbb\xbf#!/bin/sh\n", TOOL + "begins with a byte order mark"),
    ("Tools/install tool", b"#!/bin/sh\r\necho\r\n", TOOL + "has Windows line ends (CRLF)"),
    ("Tools/install tool", b"#!/opt/none/sh\n", TOOL + "needs the interpreter '/opt/none/sh', which is not on"),
    ("Tools/install tool", b"#!/usr/bin/env -S nonesuch -x\n",
     TOOL + "needs the interpreter 'nonesuch', which is not on"),
    ("Tools/install tool", b"#!/usr/bin/env\n", TOOL + "must name its interpreter"),
    ("Tools/install tool", b"#!python3\n", TOOL + "must name its interpreter by an absolute path"),
    ("Tools/install tool", b"#!/bin/sh " + b"x" * 300, TOOL + "has a first line of more than 255 bytes"),
    ("Tools/install tool", b"#!/usr/bin/env python3\n", "does not name its package 'python3' in depends"),
    ("Tools/install tool", program(machine=(18, b"\x28\0")), TOOL + "is a program for another architecture"),
    ("Tools/install tool", program(kind=(16, b"\1\0")), TOOL + "is an object file"),
    ("Tools/install tool", program()[:20], TOOL + "is truncated"),
    ("Tools/install tool", b"MZ\x90\0", TOOL + "is a program for Windows"),
    ("Tools/a\u202eb", b"", "has a character in its name that cannot be shown"),
    ("Tools/splash.html", None, "Tools/splash.html is missing"),
    ("Tools/splash.html", b"<p>", "Tools/splash.html: it names no character set"),
    ("Tools/splash.html", b"<meta charset='latin1'>", "its character set is 'latin1', but must be utf-8"),
    ("Tools/logo.svg", svg("", "<image href='https://cdn.example/x.png'/>"), "Tools/logo.svg: 'https://cdn.example"),
    ("Tools/style.css", b"@import 'https://cdn.example/x.css'",
     "Tools/style.css: 'https://cdn.example/x.css' is remote"),
    ("Tools/style.css", b"i { background: url('gone.png') }", "Tools/style.css: 'gone.png' is not in Tools"),
    ("Tools/a b.js", b"fetch('https://e.example/x')", "Tools/a b.js: 'https://e.example/x' is remote"),
    ("Tools/a b.js", b"location.replace('first.html')", "Tools/a b.js: it navigates to another page"),
]

PNGS = [
    (b"\x89PNG", "icon.png is not a PNG image"),
    (png(512, 400), "icon.png is 512 by 400 pixels; it must be square"),
    (png(64, 64), "icon.png is 64 by 64 pixels"),
    (png(0, 0), "icon.png is 0 by 0 pixels"),
    (png(512, 512)[:-30], "icon.png is damaged or truncated"),
    (png(512, 512, b"x"), "its pixels cannot be unpacked"),
    (png(512, 512, zlib.compress(b"\0")), "some of its pixels are missing"),
]

SPLASHES = [
    ("<script src=//cdn.example/x.js></script>", "'//cdn.example/x.js' is remote"),
    ("<style>@import 'https://cdn.example/x.css'</style>", "'https://cdn.example/x.css' is remote"),
    ("<meta http-equiv=refresh content='0; url=x.html'>", "it navigates to another page"),
    ("<script>window.location.href = 'x'</script>", "it navigates to another page"),
    ("<body onload='document.forms[0].submit()'>", "it navigates to another page"),
    ("<img src=gone.png>", "'gone.png' is not in Tools"),
    ("<img src='a\x1b[31m\nb'>", "'a\\x1b[31m\\nb' is not in Tools"),
    ("<img src='../icon.svg'>", "'../icon.svg' is not in Tools"),
]
