#!/usr/bin/env bash
# Regenerates the Tandrel images:
#   assets/Splash.png   - the splash window's title card (480x270)
#   assets/tandrel.png  - the 256x256 program icon, rendered from assets/tandrel.svg
# Run from the repository root:  bash assets/tools/make_images.sh
# Needs ImageMagick (convert) and the Leckerli One and Liberation Serif fonts.
set -euo pipefail

if [ ! -f assets/tandrel.svg ]; then
    echo "make_images.sh: run me from the repository root" >&2
    exit 1
fi

LECKERLI=/usr/share/fonts/truetype/leckerli-one/LeckerliOne-Regular.ttf
SERIF_ITALIC=/usr/share/fonts/truetype/liberation2/LiberationSerif-Italic.ttf
SERIF_BOLD=/usr/share/fonts/truetype/liberation2/LiberationSerif-Bold.ttf

for f in "$LECKERLI" "$SERIF_ITALIC" "$SERIF_BOLD"; do
    if [ ! -f "$f" ]; then
        echo "make_images.sh: missing font $f" >&2
        exit 1
    fi
done

PEACH='rgb(255,224,192)'
BLUEGREY='rgb(201,207,214)'
BROWN='rgb(160,110,60)'
GREEN='rgb(0,128,0)'
DARKRED='rgb(139,0,0)'

# Splash title card: brown frame, peach card, "Tandrel" with a brown drop
# shadow, a dark red subtitle, and a blue-grey question row reading
# "Christmas" followed by a green blank to fill in.
convert -size 480x270 xc:"$BROWN" \
    -fill "$PEACH" -draw 'roundrectangle 8,8 471,261 18,18' \
    -font "$LECKERLI" -pointsize 92 -gravity north \
    -fill "$BROWN" -annotate +3+9 'Tandrel' \
    -fill black -annotate +0+6 'Tandrel' \
    -font "$SERIF_ITALIC" -pointsize 24 \
    -fill "$DARKRED" -annotate +0+122 'The fill-in-the-blank party game' \
    -gravity northwest \
    -fill "$BLUEGREY" -stroke "$BROWN" -strokewidth 3 \
    -draw 'roundrectangle 60,172 419,236 12,12' \
    -stroke none -font "$SERIF_BOLD" -pointsize 34 \
    -fill black -annotate +84+184 'Christmas' \
    -fill "$GREEN" -draw 'rectangle 254,220 396,225' \
    -strip -depth 8 -colors 64 \
    PNG8:assets/Splash.png

# Program icon, rendered from the hand-written SVG.
convert -background none assets/tandrel.svg \
    -resize 256x256 -strip -depth 8 \
    PNG32:assets/tandrel.png

echo "Wrote assets/Splash.png and assets/tandrel.png"
