#!/usr/bin/env bash
# Runs every benchmark program of a bench build and prints each result beside its
# baseline from the same run as a ratio (ours / baseline).
#   scripts/run-benchmarks.sh <bench build dir> [extra Google Benchmark flags]
set -euo pipefail
build=${1:?bench build directory}
shift || true
root=$(cd "$(dirname "$0")/.." && pwd)
out="$build/bench-results"
mkdir -p "$out"
shopt -s nullglob
for bin in "$build"/bench/telor-bench-*; do
  name=$(basename "$bin")
  echo "== $name"
  "$bin" --benchmark_repetitions=3 --benchmark_report_aggregates_only=true \
         --benchmark_out="$out/$name.json" --benchmark_out_format=json "$@" >/dev/null
  python3 "$root/scripts/bench-ratios.py" "$out/$name.json"
done
