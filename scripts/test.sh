#!/usr/bin/env bash
# Sets everything up, builds, and runs every test (core tests without a display, widget
# tests offscreen). Real sample files are read from ../shared/data when it is there.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh build
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2 --timeout 600
