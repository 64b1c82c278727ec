#!/usr/bin/env bash
# Installs what the build needs, builds, and does the library's main job on a picture: load, resize, convert, save.
# Usage: ./demo.sh [picture]
set -euo pipefail
picture="$(realpath "${1:-$(dirname "$0")/examples/pictures/lake.bmp}")"
cd "$(dirname "$0")"
cmake/install-packages.sh library tool
cmake --preset demo >/dev/null
cmake --build --preset demo --target rasterloom-tool

tool=build/demo/bin/rasterloom
out=demo-output
mkdir -p "$out"
run() { echo; echo "\$ rasterloom $*"; "$tool" "$@"; }

run info "$picture"
run convert --force "$picture" "$out/half-lanczos.png" --resize 50% --interpolation Lanczos3Filter
run convert --force "$picture" "$out/quarter.jpg" --resize 25% --quality 90 --progressive
run thumbnail --force "$picture" "$out/thumbnail.jpg" --size 160x120
run convert --force "$picture" "$out/turned.png" --rotate 17 --background "#204060"
run convert --force "$picture" "$out/sixteen-colours.png" --pixel-format Format4bppIndexed --dither Jarvis
run convert --force "$picture" "$out/gray.bmp" --pixel-format Format8bppGrayScale
run info "$out/half-lanczos.png"
echo
echo "The pictures are in $PWD/$out:"
ls -l "$out"
