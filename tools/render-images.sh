#!/usr/bin/env bash
# Renders the hand-drawn SVG sources in resources/svg into the PNG and ICO
# files compiled into the application (resources/images). The results are
# committed, so a build never needs this script; run it after editing an SVG.
# Needs rsvg-convert (librsvg2-bin) and python3.
set -euo pipefail
cd "$(dirname "$0")/../resources"
out=images
mkdir -p "$out"

# Icons shown greyed out on the menu page when the unit lacks the feature.
greyed="background energy heater Full tablet"

for svg in svg/*.svg; do
    name="$(basename "$svg" .svg)"
    [ "$name" = Min ] && continue # only needed as an ICO
    rsvg-convert "$svg" -o "$out/$name.png"
done

for name in $greyed; do
    # Desaturate and fade the coloured drawing.
    sed -e 's|<svg \([^>]*\)>|<svg \1><filter id="zuGrey"><feColorMatrix type="saturate" values="0"/></filter><g filter="url(#zuGrey)" opacity="0.55">|' \
        -e 's|</svg>|</g></svg>|' "svg/$name.svg" >"/tmp/zu-$name-grey.svg"
    rsvg-convert "/tmp/zu-$name-grey.svg" -o "$out/${name}Grey.png"
    rm -f "/tmp/zu-$name-grey.svg"
done

# The pictures are stored uncompressed (unfiltered rows in stored zlib
# blocks): a few kilobytes more each, read without inflating on the first
# frame, which draws about twenty of them. The menu icons' SVGs give the size
# the menu shows them, 60 x 60, so that none is scaled either.
python3 - "$out"/*.png <<'PY'
import struct, sys, zlib

def chunks(data):
    i = 8
    while i < len(data):
        length, kind = struct.unpack(">I4s", data[i : i + 8])
        yield kind, data[i + 8 : i + 8 + length]
        i += 12 + length

def rows(path):
    data = open(path, "rb").read()
    header = b"".join(c for k, c in chunks(data) if k == b"IHDR")
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", header)
    if depth != 8 or colour not in (2, 6) or interlace:
        sys.exit(f"{path}: not 8-bit RGB or RGBA, or interlaced")
    size = 4 if colour == 6 else 3
    stride = width * size
    raw = zlib.decompress(b"".join(c for k, c in chunks(data) if k == b"IDAT"))
    previous = bytearray(stride)
    for y in range(height):
        kind = raw[y * (stride + 1)]
        line = bytearray(raw[y * (stride + 1) + 1 : (y + 1) * (stride + 1)])
        for x in range(stride):
            a = line[x - size] if x >= size else 0
            b = previous[x]
            c = previous[x - size] if x >= size else 0
            if kind == 1:
                line[x] = (line[x] + a) & 255
            elif kind == 2:
                line[x] = (line[x] + b) & 255
            elif kind == 3:
                line[x] = (line[x] + (a + b) // 2) & 255
            elif kind == 4:
                pa, pb, pc = abs(b - c), abs(a - c), abs(a + b - 2 * c)
                line[x] = (line[x] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
        yield bytes(line)
        previous = line

def chunk(kind, content):
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

for path in sys.argv[1:]:
    header = b"".join(c for k, c in chunks(open(path, "rb").read()) if k == b"IHDR")
    pixels = b"".join(b"\0" + line for line in rows(path))
    open(path, "wb").write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
        + chunk(b"IDAT", zlib.compress(pixels, 0)) + chunk(b"IEND", b""))
PY

# The slider end icons of the Display page: 32 x 32 PNG images inside an ICO
# container (a directory entry followed by the PNG data).
for name in Min Full; do
    rsvg-convert -w 32 -h 32 "svg/$name.svg" -o "/tmp/zu-$name-32.png"
    python3 - "/tmp/zu-$name-32.png" "$out/$name.ico" <<'PY'
import struct, sys
png = open(sys.argv[1], "rb").read()
header = struct.pack("<HHH", 0, 1, 1)
entry = struct.pack("<BBBBHHII", 32, 32, 0, 0, 1, 32, len(png), 6 + 16)
open(sys.argv[2], "wb").write(header + entry + png)
PY
    rm -f "/tmp/zu-$name-32.png"
done
