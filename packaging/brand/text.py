"""Reads a maker's files, and finds characters that an editor does not show."""
import codecs
import unicodedata


class Unreadable(Exception):
    """A file cannot be used; the message completes a sentence that begins with the file's name."""


def read_text(file):
    """The text of a file in UTF-8, with LF for each line end."""
    if not file.exists():
        raise Unreadable("is missing")
    if not file.is_file():
        raise Unreadable("is not a file")
    data = file.read_bytes()
    if data.startswith((codecs.BOM_UTF16_LE, codecs.BOM_UTF16_BE)):
        raise Unreadable("is in UTF-16; save it in UTF-8")
    if data.startswith(codecs.BOM_UTF8):
        raise Unreadable("begins with a byte order mark; save it in UTF-8 without one")
    try:
        return data.decode().replace("\r\n", "\n")
    except UnicodeDecodeError as error:
        line = data.count(b"\n", 0, error.start) + 1
        raise Unreadable(f"is not in UTF-8: see line {line}") from None


def invisible_character(text):
    """Names the first control, formatting or unusual blank character, such as a bidirectional override; or None."""
    for character in text:
        if not character.isprintable():
            return f"U+{ord(character):04X} ({unicodedata.name(character, 'control character').lower()})"
    return None


def printable(sentence):
    """The sentence, with characters escaped that a terminal would not show or would interpret."""
    return "".join(character if character.isprintable() else character.encode("unicode_escape").decode()
                   for character in sentence)
