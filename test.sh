#!/usr/bin/env bash
# Installs what the tests need, builds, and runs all tests: the whole suite as released and under Address- and
# UndefinedBehaviorSanitizer, the threading tests under ThreadSanitizer.
set -euo pipefail
cd "$(dirname "$0")"
cmake/install-packages.sh library tool tests

for preset in asan tsan release; do
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
done
ctest --preset asan
ctest --preset tsan
ctest --preset release
