#!/usr/bin/env bash
# Runs every libFuzzer target of a fuzz build for a fixed time.
#   scripts/run-fuzzers.sh <fuzz build dir> <seconds per target>
# Each target starts from the seeds its seed program writes and from its committed
# regressions. New inputs go to <build>/corpus/<name>; a failing input is written to
# <build>/artifacts/<name>/ and makes the script fail.
set -euo pipefail
build=${1:?fuzz build directory}
seconds=${2:-20}
root=$(cd "$(dirname "$0")/.." && pwd)
status=0
shopt -s nullglob
for bin in "$build"/fuzz/fuzz-*; do
  name=$(basename "$bin")
  case "$name" in fuzz-seeds-*|fuzz-replay-*) continue ;; esac
  target=${name#fuzz-}
  corpus="$build/corpus/$target"
  artifacts="$build/artifacts/$target"
  mkdir -p "$corpus" "$artifacts"
  "$build/fuzz/fuzz-seeds-$target" "$build/seeds/$target" >/dev/null
  dirs=("$corpus" "$build/seeds/$target")
  [ -d "$root/fuzz/$target/regressions" ] && dirs+=("$root/fuzz/$target/regressions")
  echo "== fuzzing $target for ${seconds}s"
  log="$build/fuzz-$target.log"
  if ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1:quarantine_size_mb=64 \
     "$bin" "${dirs[@]}" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
       -malloc_limit_mb=512 -print_final_stats=1 -artifact_prefix="$artifacts/" >"$log" 2>&1; then
    grep -E 'stat::number_of_executed_units|stat::peak_rss_mb' "$log" | sed "s/^/   $target: /"
  else
    echo "!! $target failed; last lines of $log:"
    tail -40 "$log"
    status=1
  fi
done
exit $status
