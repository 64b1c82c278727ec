#!/usr/bin/env bash
# Installs what the build needs, builds, and does the library's main job on a photograph: a thumbnail, a smaller PNG and a
# smaller JPEG, with colour profile and metadata kept, and what colours can be made of it.
# Usage: ./demo.sh [picture]
set -euo pipefail
picture="$(realpath "${1:-$(dirname "$0")/examples/pictures/lake.jpg}")"
cd "$(dirname "$0")"
cmake/install-packages.sh library tool
cmake --preset demo >/dev/null
cmake --build --preset demo --target rasterloom-tool

tool=build/demo/bin/rasterloom
out=demo-output
mkdir -p "$out"
run() { echo; echo "\$ rasterloom $*"; "$tool" "$@"; }

run info "$picture"
run thumbnail --force "$picture" "$out/thumbnail.jpg" --size 160x160
run convert --force "$picture" "$out/half.png" --resize 50% --interpolation Lanczos3Filter
run convert --force "$picture" "$out/half.jpg" --resize 50% --quality 90 --progressive
run convert --force "$picture" "$out/half-srgb.jpg" --resize 50% --profile-out srgb
run convert --force "$picture" "$out/turned.png" --resize 50% --rotate 17 --background "#204060"
run convert --force "$picture" "$out/sixteen-colours.png" --resize 50% --palette 16 --dither Jarvis
run convert --force "$picture" "$out/gray.bmp" --resize 50% --pixel-format 8bppGrayScale
run info "$out/half.png" "$out/sixteen-colours.png"
run info --metadata "$out/half.jpg"
echo
echo "The pictures are in $PWD/$out:"
ls -l "$out"
