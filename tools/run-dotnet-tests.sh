#!/usr/bin/env bash
# Builds the .NET binding (bindings/dotnet) with Mono's C# compiler and runs its tests under Mono
# against the Release library in build/release (built here if it is missing or stale).
# Arguments: an optional filter on the test names ("Suite.Test" substrings).
# The library's progress traces go to build/dotnet/native-trace.log; the test report goes to
# standard error and ends with "N passed, N failed".
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh mono-mcs mono-runtime

if [ ! -f build/release/CMakeCache.txt ]; then
  cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DBRINDLE_WERROR=ON
fi
cmake --build build/release --target brindle -j "$(nproc)"

out=build/dotnet
mkdir -p "$out"
mcs -target:library -langversion:7.2 -warnaserror -nowarn:1591 -doc:"$out/Brindle.Net.xml" \
    -out:"$out/Brindle.Net.dll" bindings/dotnet/Brindle.Net/*.cs
mcs -target:exe -langversion:7.2 -warnaserror -r:"$out/Brindle.Net.dll" \
    -out:"$out/BrindleTests.exe" bindings/dotnet/tests/*.cs

# DllImport("brindle") resolves to libbrindle.so through the loader path, and so do the shared
# libraries libbrindle.so itself needs from the same build; every library folder of the build
# goes on the path.
library_dirs=$(find build/release -name 'lib*.so*' -not -path '*/CMakeFiles/*' -printf '%h\n' |
               sort -u | sed "s|^|$PWD/|" | paste -sd: -)
export LD_LIBRARY_PATH="$library_dirs${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}"
if ! mono --debug "$out/BrindleTests.exe" "$@" >"$out/native-trace.log"; then
  echo "the library's output is in $out/native-trace.log" >&2
  exit 1
fi
