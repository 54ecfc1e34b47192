#!/usr/bin/env bash
# Configures and builds Tarvolin. Usage: scripts/build.sh [BUILD_DIR] [extra cmake options]
# The configure step always runs, so that options given to an existing folder take effect.
# TARVOLIN_WERROR=ON (as CI sets it) makes warnings errors.
set -euo pipefail
cd "$(dirname "$0")/.."
dir="${1:-build}"
shift || true
extra=()
if [ -n "${TARVOLIN_WERROR:-}" ]; then extra+=("-DCMAKE_COMPILE_WARNING_AS_ERROR=${TARVOLIN_WERROR}"); fi
cmake -S . -B "$dir" -G Ninja "${extra[@]}" "$@" >/dev/null
cmake --build "$dir"
