#!/usr/bin/env bash
# Installs what the tests need, builds, and runs all tests: the whole suite as released and under Address- and
# UndefinedBehaviorSanitizer, the threading tests under ThreadSanitizer.
set -euo pipefail
cd "$(dirname "$0")"
cmake/install-packages.sh g++ cmake ninja-build ccache python3 libfmt-dev libhwy-dev libexpat1-dev libcli11-dev \
    nlohmann-json3-dev libgtest-dev imagemagick netpbm pkgconf libimage-exiftool-perl exiv2

for preset in asan tsan release; do
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
done
ctest --preset asan
ctest --preset tsan
ctest --preset release
