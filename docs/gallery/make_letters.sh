#!/usr/bin/env bash
# Draws the letters of the labels (ASCII 32 to 126, 9 by 18 pixels each, in one row) with ImageMagick and the DejaVu fonts.
# Usage: make_letters.sh OUT.png
set -euo pipefail
cells=()
for code in $(seq 32 126); do
    letter=$(printf "\\$(printf %o "$code")")
    case $letter in
    \\) letter='\\' ;;
    %) letter='%%' ;;
    esac
    cells+=("(" -size 9x18 xc:white -font DejaVu-Sans-Mono -pointsize 14 -fill black -annotate "+0+14" "$letter" ")")
done
convert "${cells[@]}" +append -colorspace Gray -depth 8 -define png:color-type=0 -strip "$1"
