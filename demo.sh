#!/usr/bin/env bash
# Installs what the build needs, builds, and does the library's main job on a picture: load, resize, convert, save.
# Usage: ./demo.sh [picture.bmp]
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
run convert --force "$picture" "$out/half-lanczos.bmp" --resize 50% --interpolation Lanczos3Filter
run convert --force "$picture" "$out/thumbnail.bmp" --resize 160x120 --interpolation Bilinear
run convert --force "$picture" "$out/gray.bmp" --pixel-format Format8bppGrayScale
run info "$out/half-lanczos.bmp"
echo
echo "The pictures are in $PWD/$out:"
ls -l "$out"
