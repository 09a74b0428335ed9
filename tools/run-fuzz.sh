#!/usr/bin/env bash
# Builds the libFuzzer harnesses (clang, AddressSanitizer + UndefinedBehaviorSanitizer, leak
# detection on) in build/fuzz and runs each one from its committed seed corpus for a bounded
# time. Any crash, sanitizer report, leak, hang (-timeout) or oversized allocation
# (-malloc_limit_mb / -rss_limit_mb, and the harnesses' own 64 MiB allocation cap) fails the
# script. New inputs go to a scratch directory, never into the repository.
# Usage: tools/run-fuzz.sh [seconds per harness, default 60] [harness ...]
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh clang libclang-rt-14-dev
seconds=${1:-60}
shift || true
harnesses=("$@")
[ ${#harnesses[@]} -gt 0 ] || harnesses=(volume surface cutting meshtools encodings study)

launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cc=$(command -v clang-14 || command -v clang)
cxx=$(command -v clang++-14 || command -v clang++)
cmake -S . -B build/fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER="$cc" \
      -DCMAKE_CXX_COMPILER="$cxx" -DBRINDLE_FUZZ=ON -DBRINDLE_BUILD_TESTS=OFF \
      -DBRINDLE_BUILD_BENCH=OFF -DBRINDLE_BUILD_APPS=OFF -DBRINDLE_WERROR=ON "${launcher[@]}"
targets=()
for h in "${harnesses[@]}"; do targets+=("fuzz_$h"); done
cmake --build build/fuzz -j "$(nproc)" --target "${targets[@]}"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0
for h in "${harnesses[@]}"; do
  mkdir -p "$scratch/$h" "$scratch/artifacts-$h"
  echo "--- fuzz_$h for ${seconds}s"
  if ! build/fuzz/tests/fuzz/fuzz_$h "$scratch/$h" "tests/fuzz/corpus/$h" \
      -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -malloc_limit_mb=2048 \
      -close_fd_mask=3 -print_final_stats=1 -artifact_prefix="$scratch/artifacts-$h/" \
      > "$scratch/$h.log" 2>&1; then
    failed=1
    grep -v '^#\|^INFO' "$scratch/$h.log" | tail -60
    for artifact in "$scratch/artifacts-$h"/*; do
      [ -e "$artifact" ] || continue
      echo "reproducer $(basename "$artifact") (base64):"
      base64 "$artifact" | head -c 20000
      echo
    done
  fi
  grep -E '^#[0-9]+[[:space:]]+DONE|stat::number_of_executed_units|stat::peak_rss_mb' "$scratch/$h.log" || true
done
exit $failed
