#!/usr/bin/env bash
# Runs every benchmark program of a Release build and keeps the results as JSON beside them.
set -euo pipefail
build=$1
out="$build/bench-results"
mkdir -p "$out"
for bench in "$build"/bench/*Bench; do
    [ -x "$bench" ] || continue
    name=$(basename "$bench")
    echo "== $name"
    "$bench" --benchmark_out="$out/$name.json" --benchmark_out_format=json
done
