#!/usr/bin/env bash
# Configures and builds Tarvolin. Usage: scripts/build.sh [BUILD_DIR] [extra cmake options]
set -euo pipefail
cd "$(dirname "$0")/.."
dir="${1:-build}"
shift || true
if [ ! -f "$dir/build.ninja" ]; then
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
fi
cmake --build "$dir"
