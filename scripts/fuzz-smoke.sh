#!/usr/bin/env bash
# Runs every fuzz target found in the fuzz build for a few seconds each. A crash, a leak
# or undefined behaviour stops the run with the fuzzer's report.
set -euo pipefail
build=$1
seconds=${2:-30}
corpus_root=$(cd "$(dirname "$0")/.." && pwd)/tests/fuzz/corpus
found=0
for target in "$build"/tests/fuzz/fuzz_*; do
    [ -x "$target" ] || continue
    found=$((found + 1))
    name=$(basename "$target")
    work=$(mktemp -d)
    starts=()
    [ -d "$corpus_root/$name" ] && starts=("$corpus_root/$name")
    echo "== $name for ${seconds}s"
    UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
        "$target" -max_total_time="$seconds" -print_final_stats=1 -rss_limit_mb=2048 \
        -artifact_prefix="$work/" "$work" "${starts[@]}" 2>&1 | tail -n 12
    rm -rf "$work"
done
if [ "$found" -eq 0 ]; then
    echo "no fuzz targets found in $build/tests/fuzz" >&2
    exit 1
fi
echo "$found fuzz targets ran for ${seconds}s each without a finding"
