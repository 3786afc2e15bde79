"""A product's icon: the mistakes in it, and its drawing."""
import base64
import re
import shutil
import struct
import subprocess
import xml.etree.ElementTree
import zlib

SMALLEST, LARGEST = 512, 4096  # pixels
SVG = "{http://www.w3.org/2000/svg}"
CHANNELS = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}  # of each colour type of PNG


class Undecodable(Exception):
    """The icon cannot be drawn; the message completes a sentence that begins with its name."""


def find_icon(directory):
    """The icon's file, None unless there is exactly one, and the mistakes in it."""
    icons = [directory / name for name in ("icon.svg", "icon.png") if (directory / name).is_file()]
    if len(icons) != 1:
        return None, ["There must be one icon: icon.svg, or icon.png of at least "
                      f"{SMALLEST} by {SMALLEST} pixels."]
    check = check_svg if icons[0].suffix == ".svg" else check_png
    try:
        check(icons[0].read_bytes())
    except Undecodable as error:
        return icons[0], [f"{icons[0].name} {error}."]
    return icons[0], []


def check_svg(data):
    try:
        root = xml.etree.ElementTree.fromstring(data)
    except (xml.etree.ElementTree.ParseError, ValueError, LookupError) as error:
        line = f": see line {error.position[0]}" if hasattr(error, "position") else ""
        raise Undecodable(f"is not an SVG image{line}") from None
    if root.tag != f"{SVG}svg":
        raise Undecodable("is not an SVG image: its first element must be svg, in the namespace "
                          "http://www.w3.org/2000/svg")
    width, height = size_of_svg(root)
    if width <= 0 or height <= 0:
        raise Undecodable("has no size: give its svg element a viewBox")
    if abs(width - height) > 0.01 * max(width, height):
        raise Undecodable(f"is {width:g} by {height:g}; it must be square")
    if not len(root):
        raise Undecodable("draws nothing")
    if can_draw():
        drawn = subprocess.run(["rsvg-convert", "--width=16", "--height=16"], input=data, capture_output=True,
                               check=False)
        if drawn.returncode:
            raise Undecodable("cannot be drawn by librsvg, which desktops draw icons with")


def size_of_svg(root):
    """Width and height, 0 when they are not given: those of the viewBox or, without one, the attributes'."""
    try:
        numbers = [float(number) for number in re.split(r"[\s,]+", root.get("viewBox", "").strip()) if number]
    except ValueError:
        return 0, 0
    if numbers:
        return numbers[2:] if len(numbers) == 4 else (0, 0)
    lengths = [re.fullmatch(r"\s*(\d*\.?\d+)(px|pt|pc|mm|cm|in)?\s*", root.get(name, ""))
               for name in ("width", "height")]
    return [float(length[1]) if length else 0 for length in lengths]


def check_png(data):
    if not data.startswith(b"\x89PNG\r\n\x1a\n"):
        raise Undecodable("is not a PNG image")
    chunks = list(chunks_of(data))
    if not chunks or chunks[0][0] != b"IHDR" or len(chunks[0][1]) != 13:
        raise Undecodable("is not a PNG image: it has no header")
    width, height, depth, color, *_, interlaced = struct.unpack(">IIBBBBB", chunks[0][1])
    if width != height or not SMALLEST <= width <= LARGEST:
        raise Undecodable(f"is {width} by {height} pixels; it must be square, with {SMALLEST} to {LARGEST}")
    if color not in CHANNELS or depth not in (1, 2, 4, 8, 16):
        raise Undecodable("is damaged: its pixels are of an unknown kind")
    row = 1 + (width * depth * CHANNELS[color] + 7) // 8
    try:
        pixels = zlib.decompress(b"".join(content for kind, content in chunks if kind == b"IDAT"))
    except zlib.error:
        raise Undecodable("is damaged: its pixels cannot be unpacked") from None
    if not interlaced and (len(pixels) < row * height or max(pixels[::row]) > 4):
        raise Undecodable("is damaged: some of its pixels are missing")


def chunks_of(data):
    """Kind and content of each chunk up to the end."""
    position = 8
    while True:
        length, kind = struct.unpack_from(">I4s", data.ljust(position + 8, b"\0"), position)
        content = data[position + 8:position + 8 + length]
        checksum = data[position + 8 + length:position + 12 + length]
        if len(checksum) < 4 or zlib.crc32(kind + content) != int.from_bytes(checksum, "big"):
            raise Undecodable("is damaged or truncated")
        yield kind, content
        if kind == b"IEND":
            return
        position += 12 + length


def can_draw():
    return shutil.which("rsvg-convert")


def draw(icon, size):
    """The icon as PNG, `size` pixels wide and high."""
    source = icon.read_bytes()
    if icon.suffix == ".png":
        data = base64.b64encode(source).decode()
        source = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 1 1"><image width="1" height="1" '
                  f'href="data:image/png;base64,{data}"/></svg>').encode()
    command = ["rsvg-convert", f"--width={size}", f"--height={size}"]
    return subprocess.run(command, input=source, stdout=subprocess.PIPE, check=True).stdout
