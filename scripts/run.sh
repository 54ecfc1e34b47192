#!/usr/bin/env bash
# Sets everything up, builds, and starts Tarvolin. Without a display it says so and shows
# the sprite table of the built-in sample SFF on the terminal instead.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh build
if [ -x build/bin/tarvolin ] && { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }; then
  exec build/bin/tarvolin "$@"
fi
if [ -x build/bin/tarvolin ]; then
  echo "No display found (DISPLAY is not set): showing the sample SFF's table on the terminal instead." >&2
fi
exec build/bin/tarvolin-cli list build/sample/sample.sff
