#!/usr/bin/env bash
# Sets the page of black and white text that ships with the project, with ImageMagick and the DejaVu fonts.
# Usage: make_text.sh OUT.bmp
set -euo pipefail
text=""
for line in "A raster is a grid of samples. What a scanner saw as a line" "becomes a row of small squares, each of them black or white." \
    "Making such a page smaller asks for care: a sample that is" "skipped takes a stroke with it, and a letter is lost. The mean" \
    "of its neighbours keeps the stroke, though it turns gray." "" "0123456789  (x + y)^2 = x^2 + 2xy + y^2  {[<&@>]}"; do
    text+="$line"$'\n'
done
convert -size 1000x740 xc:white -fill black \
    -font DejaVu-Serif-Bold -pointsize 58 -annotate +40+90 "On thumbnails" \
    -font DejaVu-Serif -pointsize 30 -annotate +40+160 "$text" \
    -font DejaVu-Sans -pointsize 16 -annotate +40+470 "$text" \
    -font DejaVu-Sans-Mono -pointsize 10 -annotate +40+620 "$text" \
    -draw "line 560,450 960,700 line 560,700 960,450 line 560,575 960,575 rectangle 730,520 731,630" \
    -colors 2 -type bilevel "BMP3:$1"
