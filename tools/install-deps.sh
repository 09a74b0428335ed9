#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing.
set -euo pipefail
packages=(cmake g++ make libeigen3-dev libgtest-dev libbenchmark-dev binutils pkg-config
          nlohmann-json3-dev libgmsh-dev gmsh "$@")
missing=()
# The study tool's report reads its summary with nlohmann-json3-dev; a test renders it in chromium.
packages+=(nlohmann-json3-dev chromium)
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -eq 0 ] || sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi
