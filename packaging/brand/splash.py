"""Mistakes in a product's splash page, which is shown before anything can be loaded from the network."""
import html.parser
import os
import re
import urllib.parse

import text

# Attributes by which a page loads something, of every element but a link to click on.
LOADING = ("src", "srcset", "href", "xlink:href", "data", "poster", "background", "style", "content")

# What a script does to leave the page that it is in.
NAVIGATION = re.compile(r"\blocation\s*(\.\s*href\s*)?=(?!=)|\blocation\s*\.\s*(assign|replace|reload)\s*\(|"
                        r"\bnavigation\s*\.\s*navigate\s*\(|\.\s*(request)?submit\s*\(|\bwindow\s*\.\s*open\s*\(",
                        re.IGNORECASE)


class Page(html.parser.HTMLParser):
    """Collects what a page loads by itself, its character set, and whether it goes to another page."""

    def __init__(self):
        super().__init__()
        self.found = []
        self.charset = None
        self.navigates = False
        self.element = None

    def handle_starttag(self, tag, attributes):
        self.element = tag
        values = {name: value or "" for name, value in attributes}
        if tag == "meta":
            self.take_meta(values)
        for name, value in values.items():
            if name.startswith("on"):
                self.take_script(value)
            elif not value or name not in LOADING or (tag, name) == ("a", "href") or tag == "meta":
                continue
            elif name == "style":
                self.found += in_style(value)
            elif name == "srcset":
                self.found += [candidate.split()[0] for candidate in value.split(",") if candidate.split()]
            else:
                self.found.append(value.strip())

    def handle_endtag(self, tag):
        self.element = None

    def handle_data(self, data):
        if self.element == "style":
            self.found += in_style(data)
        elif self.element == "script":
            self.take_script(data)

    def take_meta(self, values):
        content = values.get("content", "")
        if values.get("http-equiv", "").lower() == "refresh":
            self.navigates = True
        charset = re.search(r"charset\s*=\s*([\w-]+)", content)
        self.charset = self.charset or values.get("charset") or (charset and charset[1])

    def take_script(self, script):
        self.found += in_script(script)
        self.navigates = self.navigates or bool(NAVIGATION.search(script))


def in_style(style):
    plain = re.sub(r"/\*.*?\*/", "", style, flags=re.DOTALL)
    return (re.findall(r"""url\(\s*["']?([^"')]+)""", plain, re.IGNORECASE) +
            re.findall(r"""@import\s+["']([^"']+)""", plain, re.IGNORECASE))


def in_script(script):
    """The remote addresses in a script; local files that it loads cannot be found."""
    return re.findall(r"""["'`]((?:(?:https?|wss?):)?//[^"'`\s]+)""", script)


def mistakes_in(tools):
    try:
        page = parsed(tools / "splash.html")
    except text.Unreadable as error:
        return [f"Tools/splash.html {error}."]
    mistakes = []
    if not page.charset:
        mistakes.append("Tools/splash.html: it names no character set; put <meta charset=\"utf-8\"> into its head.")
    elif page.charset.lower() not in ("utf-8", "utf8"):
        mistakes.append(f"Tools/splash.html: its character set is '{page.charset}', but must be utf-8.")
    return mistakes + list(dict.fromkeys(mistakes_about("splash.html", page, tools, set())))


def parsed(file):
    page = Page()
    content = text.read_text(file)
    if file.suffix == ".css":
        page.found += in_style(content)
    elif file.suffix in (".js", ".mjs"):
        page.take_script(content)
    else:
        page.feed(content)
        page.close()
    return page


def mistakes_about(name, page, tools, seen):
    """Mistakes in what the page, style sheet or script `name` in Tools loads, recursively."""
    seen.add(name)
    if page.navigates:
        yield (f"Tools/{name}: it navigates to another page, "
               "but the first installation page follows the splash page.")
    for reference in page.found:
        if re.match("(data|about|javascript):|#", reference, re.IGNORECASE):
            continue
        if re.match("([a-z][a-z0-9+.-]*:|//)", reference, re.IGNORECASE):
            yield f"Tools/{name}: '{reference}' is remote, but the page is shown before anything can be loaded."
            continue
        path = urllib.parse.unquote(re.split("[?#]", reference)[0])
        target = os.path.normpath(os.path.join(os.path.dirname(name), path))
        if path and (target.startswith(("..", "/")) or "\0" in target or not (tools / target).is_file()):
            yield f"Tools/{name}: '{reference}' is not in Tools."
        elif path and target not in seen and target.endswith((".css", ".js", ".mjs", ".html", ".htm", ".svg")):
            try:
                yield from mistakes_about(target, parsed(tools / target), tools, seen)
            except text.Unreadable as error:
                yield f"Tools/{target} {error}."
