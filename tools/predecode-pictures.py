#!/usr/bin/env python3
"""Decodes every PNG picture of a Qt resource file into a C++ source file.

    predecode-pictures.py <resources.qrc> <output.cpp>

The output defines `predecodedPictures`: for each PNG of the resource file its
resource path, its size and its pixels as premultiplied 32-bit ARGB words, the
words a QImage::Format_ARGB32_Premultiplied image holds, each rounded as Qt
premultiplies. The program draws those instead of decoding the PNG when a
picture is first shown, and without copying them: they are the pixel format
Qt paints from. The build runs this script
whenever a picture or the resource file changes, so the two never differ.
Pictures must be 8-bit RGBA PNGs without interlacing, as
tools/render-images.sh writes them.
"""
import os
import struct
import sys
import xml.etree.ElementTree as ElementTree
import zlib


def chunks(data):
    i = 8
    while i < len(data):
        length, kind = struct.unpack(">I4s", data[i : i + 8])
        yield kind, data[i + 8 : i + 8 + length]
        i += 12 + length


def decode(path):
    """Returns width, height and the unfiltered RGBA rows of a PNG file."""
    data = open(path, "rb").read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        sys.exit(f"{path}: not a PNG file")
    header = b"".join(c for k, c in chunks(data) if k == b"IHDR")
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", header)
    if depth != 8 or colour != 6 or interlace:
        sys.exit(f"{path}: not an 8-bit RGBA PNG without interlacing")
    stride = width * 4
    raw = zlib.decompress(b"".join(c for k, c in chunks(data) if k == b"IDAT"))
    rows = []
    previous = bytearray(stride)
    for y in range(height):
        kind = raw[y * (stride + 1)]
        line = bytearray(raw[y * (stride + 1) + 1 : (y + 1) * (stride + 1)])
        for x in range(stride):
            a = line[x - 4] if x >= 4 else 0
            b = previous[x]
            c = previous[x - 4] if x >= 4 else 0
            if kind == 1:
                line[x] = (line[x] + a) & 255
            elif kind == 2:
                line[x] = (line[x] + b) & 255
            elif kind == 3:
                line[x] = (line[x] + (a + b) // 2) & 255
            elif kind == 4:
                pa, pb, pc = abs(b - c), abs(a - c), abs(a + b - 2 * c)
                line[x] = (line[x] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
        rows.append(bytes(line))
        previous = line
    return width, height, b"".join(rows)


def premultiplied(rgba):
    """Returns the premultiplied ARGB words of 8-bit RGBA pixels."""
    words = []
    for i in range(0, len(rgba), 4):
        alpha = rgba[i + 3]
        word = alpha << 24
        for shift, value in ((16, rgba[i]), (8, rgba[i + 1]), (0, rgba[i + 2])):
            product = value * alpha
            word |= ((product + (product >> 8) + 0x80) >> 8) << shift
        words.append(word)
    return words


def pictures(qrc):
    """Yields the resource path and the file of each PNG in a resource file."""
    folder = os.path.dirname(os.path.abspath(qrc))
    for resource in ElementTree.parse(qrc).getroot().iter("qresource"):
        prefix = resource.get("prefix", "/").rstrip("/")
        for entry in resource.iter("file"):
            name = entry.get("alias") or entry.text
            if name.lower().endswith(".png"):
                yield f":{prefix}/{name}", os.path.join(folder, entry.text)


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: predecode-pictures.py <resources.qrc> <output.cpp>")
    qrc, output = sys.argv[1:]
    entries = sorted(pictures(qrc))
    lines = [
        f"// Made from {os.path.basename(qrc)} by tools/predecode-pictures.py; do not edit.",
        '#include "tabs/PictureLabel.h"',
        "",
        "namespace",
        "{",
    ]
    table = []
    for index, (name, path) in enumerate(entries):
        width, height, pixels = decode(path)
        words = premultiplied(pixels)
        lines.append(f"const unsigned int picture{index}[] = {{")
        for start in range(0, len(words), 8):
            lines.append("    " + ", ".join(f"0x{word:08x}" for word in words[start : start + 8]) + ",")
        lines.append("};")
        table.append(f'    {{ "{name}", {width}, {height}, picture{index} }},')
    lines += ["} // namespace", "", "const PredecodedPicture predecodedPictures[] = {"]
    lines += table
    lines += ["};", f"const int predecodedPictureCount = {len(table)};", ""]
    with open(output, "w") as out:
        out.write("\n".join(lines))


main()
