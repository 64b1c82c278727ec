#!/usr/bin/env bash
# Builds the fuzz targets and runs each for the given number of seconds (default 600): fuzz/run.sh [seconds] [target...]
# New inputs go to build/fuzz/corpus, findings to build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-600}"
shift || true
cmake/install-packages.sh library fuzz
cmake --preset fuzz >/dev/null
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=($(basename -s .cpp fuzz/fuzz_*.cpp))
cmake --build --preset fuzz --target "${targets[@]}"
mkdir -p build/fuzz/findings
# Frames that exceptions leave behind fill the sanitizer's second stack, until every call takes ten times as long.
export ASAN_OPTIONS=detect_stack_use_after_return=0 UBSAN_OPTIONS=print_stacktrace=1
status=0
for target in "${targets[@]}"; do
    mkdir -p "build/fuzz/corpus/$target" "fuzz/corpus/$target"
    echo "== $target, $seconds s"
    "build/fuzz/bin/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/findings/$target-" "build/fuzz/corpus/$target" "fuzz/corpus/$target" \
        > "build/fuzz/$target.log" 2>&1 || status=1
    grep -E 'stat::number_of_executed_units|SUMMARY' "build/fuzz/$target.log" || true
done
exit $status
