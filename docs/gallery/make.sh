#!/usr/bin/env bash
# Builds the library and draws the gallery anew. Usage: docs/gallery/make.sh
set -euo pipefail
cd "$(dirname "$0")/../.."
cmake/install-packages.sh library tool tests
cmake --preset release >/dev/null
cmake --build --preset release --target gallery
build/release/bin/gallery examples/pictures docs/gallery/letters.png docs/gallery
ls -l docs/gallery/*.png
