#!/usr/bin/env bash
# Installs everything Tarvolin needs to build, run and test, from Debian's archive only.
# Idempotent: when every package is present it only checks and returns.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev libpng-dev zlib1g-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  clang-14 libclang-rt-14-dev
  fonts-ipafont-gothic fonts-liberation2
  xvfb xauth x11-apps imagemagick
  netpbm
  help2man dpkg-dev file desktop-file-utils shared-mime-info xdg-utils
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done

if [ "${#missing[@]}" -gt 0 ]; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  echo "setup: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  $sudo_cmd apt-get update -qq
  $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
echo "setup: all dependencies present"
