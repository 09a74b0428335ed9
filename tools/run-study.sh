#!/usr/bin/env bash
# Builds brindle-study (Release) on a fresh Debian machine and runs it. Without arguments it
# runs the built-in thermal-bridge examples and writes its results to ./study-output; any
# arguments are passed on to the tool (see `bash tools/run-study.sh --help`).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/tools/install-deps.sh"
mkdir -p "$root/build"
# BRINDLE_STUDY_BUILD_DIR reuses an existing Release build tree (CI points it at the tests'
# build) instead of configuring a separate one.
build="${BRINDLE_STUDY_BUILD_DIR:-$root/build/study}"
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DBRINDLE_BUILD_TESTS=OFF \
        -DBRINDLE_BUILD_BENCH=OFF > "$build.log" 2>&1 || { cat "$build.log"; exit 1; }
fi
cmake --build "$build" --target brindle-study -j "$(nproc)" >> "$build.log" 2>&1 \
  || { tail -n 50 "$build.log"; exit 1; }
exec "$build/apps/brindle-study" "$@"
