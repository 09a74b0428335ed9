#!/usr/bin/env bash
# Checks the library's own code (every .cpp file under src/ and the headers it includes from
# src/) with clang-tidy and the repository's .clang-tidy (the naming rules). Any finding fails.
#
# The Linux sources are checked with the compile database of the Release build in build/release
# (the one tools/run-tests.sh makes; configured here if it is missing, never built: the checks
# need only the configure step). The Windows-only sources, src/infowindow/*_win32.cpp, are in no
# Linux database: a MinGW cross configure in build/tidy-windows gives theirs, and clang reads
# them for the MinGW target with the cross compiler's own C++ library headers.
#
#   bash tools/run-clang-tidy.sh
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
bash tools/install-deps.sh clang-tidy g++-mingw-w64-x86-64 binutils-mingw-w64-x86-64
jobs=$(nproc)
triple=x86_64-w64-mingw32

launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

# Linux: reuse the Release build's cache, adding only the compile database.
linux=$root/build/release
if [ -f "$linux/CMakeCache.txt" ]; then
  cmake -S . -B "$linux" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON > /dev/null
else
  cmake -S . -B "$linux" -DCMAKE_BUILD_TYPE=Release -DBRINDLE_WERROR=ON \
        -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "${launcher[@]}" > /dev/null
fi

# Windows: the library alone, configured with the MinGW toolchain.
windows=$root/build/tidy-windows
cmake -S . -B "$windows" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" \
      -DCMAKE_BUILD_TYPE=Release -DBRINDLE_BUILD_TESTS=OFF -DBRINDLE_BUILD_BENCH=OFF \
      -DBRINDLE_BUILD_APPS=OFF -DEigen3_DIR=/usr/share/eigen3/cmake \
      -DCMAKE_EXPORT_COMPILE_COMMANDS=ON > /dev/null
# clang has no MinGW C++ library of its own: it takes the cross compiler's (the posix-threads
# variant the build uses) in place of the build machine's. GCC builds these sources, so clang's
# word on GCC-only attributes (printf checking in the MinGW flavour) is not a finding.
windows_args=(-extra-arg-before=--target=$triple -extra-arg=-nostdinc++
              -extra-arg=-Wno-ignored-attributes)
while read -r dir; do
  windows_args+=("-extra-arg=-isystem$dir")
done < <($triple-g++-posix -std=c++17 -E -x c++ -v /dev/null -o /dev/null 2>&1 |
         sed -n '/<...> search starts here/,/End of search list/p' | grep '/include/c++' |
         sed 's/^ *//')

# CMake's hidden-inlines flag for MinGW is GCC's alone; clang would refuse the whole command.
sed -i 's/ -fno-keep-inline-dllexport//g' "$windows/compile_commands.json"
if ! grep -q '_win32\.cpp"' "$windows/compile_commands.json"; then
  echo "clang-tidy: the MinGW compile database lists no Windows-only source" >&2
  exit 1
fi

escaped_root=$(printf '%s' "$root" | sed 's/[][\.*^$+?(){}|/]/\\&/g')
windows_only="^$escaped_root/src/[a-z0-9_]+/[a-z0-9_]+_win32\\.cpp\$"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
echo "clang-tidy: src/ with $linux/compile_commands.json"
run-clang-tidy -p "$linux" -j "$jobs" -quiet "^$escaped_root/src/" > "$log" 2>&1 || status=1
echo "clang-tidy: src/*/*_win32.cpp with $windows/compile_commands.json for $triple"
run-clang-tidy -p "$windows" -j "$jobs" -quiet "${windows_args[@]}" "$windows_only" \
  >> "$log" 2>&1 || status=1

# run-clang-tidy colours its output; a header finding comes once per file including the header.
sed -i 's/\x1b\[[0-9;]*m//g' "$log"
findings=$(grep -E '^/[^ ]+:[0-9]+:[0-9]+: (error|warning):' "$log" | sort -u || true)
count=0
[ -z "$findings" ] || count=$(printf '%s\n' "$findings" | wc -l)
if [ "$status" != 0 ] || [ "$count" != 0 ]; then
  if [ "$count" != 0 ]; then
    printf '%s\n' "$findings" | sed "s|^$root/||"
  else
    cat "$log"
  fi
  echo "clang-tidy: $count finding(s)"
  exit 1
fi
echo "clang-tidy: no findings"
