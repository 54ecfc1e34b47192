#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for N seconds (default 60), two at
# a time, on a seed corpus made from ../shared/data (when present), the English settings
# file and synthetic files.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
bash scripts/setup.sh
if [ ! -f build-fuzz/build.ninja ]; then
  CXX=clang++-14 cmake -S . -B build-fuzz -G Ninja -DTARVOLIN_FUZZ=ON -DTARVOLIN_UI=OFF -DTARVOLIN_TESTS=OFF \
    -DTARVOLIN_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
fuzzers=(fuzz_sff fuzz_settings fuzz_pcx fuzz_paramtext fuzz_batch fuzz_textwriters fuzz_build fuzz_png)
cmake --build build-fuzz --target make_fuzz_seeds "${fuzzers[@]}"
# Whole real SFF files (up to megabytes) made the SFF fuzzer crawl; the seeds are now cut
# small, and copies an older run left in the corpus go.
if [ -d build-fuzz/corpus/fuzz_sff ]; then find build-fuzz/corpus/fuzz_sff -type f -size +64k -delete; fi
build-fuzz/bin/make_fuzz_seeds build-fuzz/corpus ../shared/data docs/tarvolin.en.ini

# Runs one fuzzer; on a failure prints the end of its log and the crashing input's name.
run_one() {
  local name=$1 corpus="build-fuzz/corpus/$1" log="build-fuzz/$1.log"
  mkdir -p "$corpus" "build-fuzz/crashes"
  if "build-fuzz/bin/$name" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=10 \
      -artifact_prefix="build-fuzz/crashes/$name-" "$corpus" >"$log" 2>&1; then
    echo "$name: $(grep -E '^Done [0-9]+ runs' "$log" || tail -n 1 "$log")"
  else
    tail -n 60 "$log"
    echo "$name found a failure (input saved under build-fuzz/crashes/)"
    return 1
  fi
}

status=0
for ((i = 0; i < ${#fuzzers[@]}; i += 2)); do
  pids=()
  for name in "${fuzzers[@]:i:2}"; do
    run_one "$name" & pids+=($!)
  done
  for pid in "${pids[@]}"; do wait "$pid" || status=1; done
done
exit $status
