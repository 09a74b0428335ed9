#!/usr/bin/env bash
# Runs the reference-case validation of the study tool (`brindle-study --validate`): builds the
# tool if needed (reusing the tests' Release tree when there is one), prints the tables and
# fails when any figure is out of its tolerance. Results go to build/validation.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="${1:-$root/build/validation}"
[ -f "$root/build/release/CMakeCache.txt" ] && export BRINDLE_STUDY_BUILD_DIR="$root/build/release"
bash "$root/tools/run-study.sh" --validate --output "$out"
