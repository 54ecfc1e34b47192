#!/usr/bin/env bash
# Prints the test-to-code ratio: non-blank lines of the .cpp/.h files under tests/ against
# those under src/ and tools/ (files git knows, and new ones it does not ignore).
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files -co --exclude-standard -- "$@" | grep -E '\.(cpp|h)$' | xargs -r cat | grep -cv '^\s*$' || true; }
tests=$(count tests)
code=$(count src tools)
echo "tests $tests, code $code, ratio $(awk -v t="$tests" -v c="$code" 'BEGIN { printf "%.3f", t / c }')"
