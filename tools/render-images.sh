#!/usr/bin/env bash
# Renders the hand-drawn SVG sources in resources/svg into the PNG and ICO
# files compiled into the application (resources/images). The results are
# committed, so a build never needs this script; run it after editing an SVG.
# Needs rsvg-convert (librsvg2-bin) and python3. The build decodes the PNG
# pictures itself (tools/predecode-pictures.py), so they are stored compressed.
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
