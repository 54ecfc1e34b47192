#!/usr/bin/env bash
# Makes the Debian package of Tarvolin with CPack from a Release build (in build-release,
# or the folder given) and puts it at the top of the repository: tarvolin_VERSION_ARCH.deb.
# What goes in and what it depends on: desktop/CMakeLists.txt. Install it with
# `apt install ./tarvolin_*.deb`; scripts/check-package.sh checks it.
set -euo pipefail
cd "$(dirname "$0")/.."
dir="${1:-build-release}"
bash scripts/setup.sh
bash scripts/build.sh "$dir" -DCMAKE_BUILD_TYPE=Release -DTARVOLIN_TESTS=OFF -DTARVOLIN_BENCH=OFF
rm -rf "$dir/package"
cpack --config "$dir/CPackConfig.cmake" -B "$dir/package" >/dev/null
rm -f tarvolin_*.deb
cp "$dir"/package/tarvolin_*.deb .
echo "package: $(ls tarvolin_*.deb)"
