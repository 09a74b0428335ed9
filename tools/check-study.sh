#!/usr/bin/env bash
# CI check of the study tool: builds and runs the built-in examples, then checks the key
# figures of summary.json against hand calculations and the known results.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$root/build/check-study"
rm -rf "$out"
# Reuse the Release tree of the test run when there is one.
[ -f "$root/build/release/CMakeCache.txt" ] && export BRINDLE_STUDY_BUILD_DIR="$root/build/release"
bash "$root/tools/run-study.sh" --output "$out"
summary="$out/summary.json"

# value KEY [OCCURRENCE]: the number after "KEY": in the summary (first occurrence by default).
value() {
  grep -o "\"$1\": [-0-9][-0-9.eE+]*" "$summary" | sed -n "${2:-1}p" | awk '{print $2}'
}
failures=0
# check NAME VALUE LOW HIGH
check() {
  if awk -v v="$2" -v lo="$3" -v hi="$4" 'BEGIN { exit !(v != "" && v >= lo && v <= hi) }'; then
    printf '  ok    %-48s %s\n' "$1" "$2"
  else
    printf '  FAIL  %-48s %s (expected %s .. %s)\n' "$1" "$2" "$3" "$4"
    failures=$((failures + 1))
  fi
}

echo "checking $summary"
u_hand=$(value U_by_hand_W_per_m2K)
u_model=$(value U_from_model_W_per_m2K)
check "2-D undisturbed wall U / series U" "$(awk -v a="$u_model" -v b="$u_hand" 'BEGIN{print a/b}')" 0.999 1.001
check "2-D isotherm flow spread" "$(value isotherm_flow_spread)" 0 0.005
check "2-D psi change between finest meshes" "$(value finest_change)" 0 0.01
check "2-D L2D, W/(m K)" "$(value L2D_W_per_mK)" 1.271 1.297
check "2-D psi, W/(m K)" "$(value psi_W_per_mK)" 0.839 0.856
check "2-D f_Rsi" "$(value fRsi 1)" 0.830 0.840
check "3-D chi, W/K" "$(value chi_W_per_K)" 0.045 0.050
check "3-D f_Rsi" "$(value fRsi 2)" 0.950 0.960
for f in slab-2d.svg wall-2d.svg slab-2d.vtk wall-2d.vtk slab-2d.mesh slab-2d.json steel-3d.vtk \
         steel-3d.mesh steel-3d.json; do
  [ -s "$out/$f" ] && printf '  ok    %-48s\n' "$f written" \
    || { printf '  FAIL  %-48s\n' "$f missing"; failures=$((failures + 1)); }
done
# The example's own study file, run again as a user would, gives the example's L2D.
study_bin="${BRINDLE_STUDY_BUILD_DIR:-$root/build/study}/apps/brindle-study"
"$study_bin" --study "$out/slab-2d.json" --output "$out/again" > "$out/again.log" 2>&1 \
  || { cat "$out/again.log"; failures=$((failures + 1)); }
l_again=$(grep -o '"outside": [-0-9][-0-9.eE+]*' "$out/again/summary.json" | head -1 | awk '{print $2}')
check "2-D study file run again: L / L2D" \
  "$(awk -v a="$l_again" -v b="$(value L2D_W_per_mK)" 'BEGIN{print a/b}')" 0.999999 1.000001

if ((failures)); then
  echo "study check: $failures failure(s)"
  exit 1
fi
echo "study check passed"
