#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for N seconds (default 60) on a
# seed corpus made from ../shared/data (when present) and from synthetic files.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
bash scripts/setup.sh
CXX=clang++-14 bash scripts/build.sh build-fuzz -DTARVOLIN_FUZZ=ON -DTARVOLIN_UI=OFF -DTARVOLIN_TESTS=OFF \
  -DTARVOLIN_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo
shopt -s nullglob
build-fuzz/bin/make_fuzz_seeds build-fuzz/corpus ../shared/data
for fuzzer in build-fuzz/bin/fuzz_*; do
  name=$(basename "$fuzzer")
  corpus="build-fuzz/corpus/$name"
  mkdir -p "$corpus"
  echo "== $name for ${seconds}s"
  log="build-fuzz/$name.log"
  if ! "$fuzzer" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=10 "$corpus" >"$log" 2>&1; then
    tail -n 60 "$log"
    echo "$name found a failure (see above; the crashing input is in the current folder)"
    exit 1
  fi
  grep -E '^Done [0-9]+ runs' "$log" || tail -n 2 "$log"
done
