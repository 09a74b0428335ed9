#!/usr/bin/env bash
# Installs what is missing, then builds and runs the whole test suite twice: a Release build
# with warnings as errors, and an AddressSanitizer + UndefinedBehaviorSanitizer build.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh
jobs=$(nproc)

cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DBRINDLE_WERROR=ON "$@"
cmake --build build/release -j "$jobs"
ctest --test-dir build/release --output-on-failure -j "$jobs"

cmake -S . -B build/sanitize -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBRINDLE_WERROR=ON \
      -DBRINDLE_SANITIZE=ON -DBRINDLE_BUILD_BENCH=OFF "$@"
cmake --build build/sanitize -j "$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build/sanitize --output-on-failure -j "$jobs"
