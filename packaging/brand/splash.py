"""Mistakes in a product's splash page, which is shown before the network is there."""
import html.parser
import os
import re
import urllib.parse

# Attributes by which a page loads something, of every element but a link to click on.
LOADING = ("src", "srcset", "href", "xlink:href", "data", "poster", "background", "style", "content")


class References(html.parser.HTMLParser):
    """Collects what a page loads by itself."""

    def __init__(self):
        super().__init__()
        self.found = []
        self.element = None

    def handle_starttag(self, tag, attributes):
        self.element = tag
        for name, value in attributes:
            if not value or name not in LOADING or (tag == "a" and name == "href"):
                continue
            if name == "style":
                self.take_style(value)
            elif name == "srcset":
                self.found += [candidate.split()[0] for candidate in value.split(",") if candidate.split()]
            elif name == "content":
                self.found += re.findall(r"^\s*[\d.]+\s*[;,]\s*(?:url\s*=\s*)?['\"]?([^'\"]+)", value, re.IGNORECASE)
            else:
                self.found.append(value.strip())

    def handle_endtag(self, tag):
        self.element = None

    def handle_data(self, data):
        if self.element == "style":
            self.take_style(data)
        elif self.element == "script":
            self.found += re.findall(r"""["'`]((?:https?:)?//[^"'`\s]+)""", data)

    def take_style(self, text):
        self.found += re.findall(r"""url\(\s*["']?([^"')]+)""", text, re.IGNORECASE)
        self.found += re.findall(r"""@import\s+["']([^"']+)""", text, re.IGNORECASE)


def mistakes_in(tools):
    try:
        text = (tools / "splash.html").read_text("utf-8")
    except FileNotFoundError:
        return ["Tools/splash.html is missing."]
    except UnicodeDecodeError:
        return ["Tools/splash.html is not in UTF-8."]
    references = References()
    references.feed(text)
    references.close()
    sentences = [sentence_about(reference, tools) for reference in references.found]
    return [f"Tools/splash.html: {sentence}." for sentence in sentences if sentence]


def sentence_about(reference, tools):
    if re.match("(data|about):", reference, re.IGNORECASE):
        return None
    if re.match("([a-z][a-z0-9+.-]*:|//)", reference, re.IGNORECASE):
        return f"'{reference}' lies elsewhere, but the page is shown before anything can be loaded"
    path = urllib.parse.unquote(re.split("[?#]", reference)[0])
    inside = not os.path.normpath(path).startswith(("..", "/"))
    return None if not path or inside and (tools / path).is_file() else f"'{reference}' is not in Tools"
