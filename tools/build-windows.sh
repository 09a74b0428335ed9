#!/usr/bin/env bash
# Cross-builds brindle.dll for 64-bit Windows with MinGW-w64 (Release, warnings as errors),
# checks its export table against include/brindle.h, that it needs no MinGW runtime DLL and that
# it imports the bundled openNURBS DLL (brindle_opennurbs.dll, copied beside every test program),
# then runs the Windows test programs under wine when wine can be installed.
#
#   bash tools/build-windows.sh            # build, check, test
#   BRINDLE_WINE=0 bash tools/build-windows.sh   # build and check only
#
# Output goes to build/windows (the library and tests) and build/windows-deps (GoogleTest built
# with the same toolchain, reused by later runs).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
jobs=$(nproc)
toolchain=$root/cmake/mingw-w64-x86_64.cmake
triple=x86_64-w64-mingw32

bash tools/install-deps.sh g++-mingw-w64-x86-64 binutils-mingw-w64-x86-64 googletest

# wine runs the tests; it is large and optional, so a failed install only skips the tests.
# xvfb gives the window tests a display; without it they report themselves skipped.
run_tests=0
if [ "${BRINDLE_WINE:-1}" != 0 ]; then
  if bash tools/install-deps.sh wine wine64 && command -v wine >/dev/null; then
    run_tests=1
    bash tools/install-deps.sh xvfb xauth || echo "xvfb is not available: window tests skip"
  else
    echo "wine is not available: the Windows tests are not run"
  fi
fi

build=$root/build/windows
deps=$root/build/windows-deps
emulator=()
if [ "$run_tests" = 1 ]; then
  # GoogleTest from Debian's source package, built once with the cross toolchain.
  if [ ! -f "$deps/install/lib/cmake/GTest/GTestConfig.cmake" ]; then
    cmake -S /usr/src/googletest -B "$deps/googletest" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
          -DCMAKE_BUILD_TYPE=Release -DBUILD_GMOCK=OFF -DCMAKE_INSTALL_PREFIX="$deps/install"
    cmake --build "$deps/googletest" -j "$jobs"
    cmake --install "$deps/googletest"
  fi
  # Every wine process of this build shares one prefix inside the build tree; the .NET and
  # HTML engines wine would offer to download are switched off.
  export WINEPREFIX=$deps/wineprefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  mkdir -p "$WINEPREFIX"
  trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
  wineboot --init >/dev/null 2>&1 || true
  emulator=(-DCMAKE_CROSSCOMPILING_EMULATOR="/usr/bin/env;WINEPREFIX=$WINEPREFIX;WINEDEBUG=-all;WINEDLLOVERRIDES=$WINEDLLOVERRIDES;wine")
fi

tests_flag=OFF
[ "$run_tests" = 1 ] && tests_flag=ON
cmake -S . -B "$build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
      -DBRINDLE_WERROR=ON -DBRINDLE_BUILD_BENCH=OFF -DBRINDLE_BUILD_TESTS=$tests_flag \
      -DEigen3_DIR=/usr/share/eigen3/cmake -DGTest_DIR="$deps/install/lib/cmake/GTest" \
      "${emulator[@]}" "$@"
cmake --build "$build" -j "$jobs"

cmake -DLIBRARY="$build/src/brindle.dll" -DHEADER="$root/include/brindle.h" \
      -DOBJDUMP=$triple-objdump -DREQUIRED_IMPORTS=brindle_opennurbs.dll \
      -P tests/check_dll_exports.cmake

if [ "$run_tests" = 1 ]; then
  display=()
  command -v xvfb-run >/dev/null && display=(xvfb-run -a)
  "${display[@]}" ctest --test-dir "$build" --output-on-failure -j "$jobs"
fi
