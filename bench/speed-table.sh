#!/usr/bin/env bash
# The speed table: each command on the generated big SFF (10,000 sprites, 117 MB) beside
# the plain program that does the same file work, whole processes, run by turns and the
# median of RUNS runs taken. Prints each ratio against its aim.
#   bash bench/speed-table.sh [BIN_DIR]     (default build/bin; RUNS=5; TMPDIR=/dev/shm)
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(cd "${1:-build/bin}" && pwd)
runs=${RUNS:-5}
work=$(mktemp -d "${TMPDIR:-/dev/shm}/tarvolin-speed.XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work"

"$bin/bench_make_sff" big.sff
# A file written in the last two seconds is also watched for writes after opening, which
# costs a wait for the kernel when the command ends; the table measures the usual case.
touch -d '1 hour ago' big.sff
size=$(stat -c %s big.sff)
# The inputs of sprmaker.exe: the export and parameter text of the big file.
"$bin/tarvolin-cli" build big.sff inputs >/dev/null
sff_bytes=$(stat -c %s inputs/big.sff)

# Runs "$@" as a whole process; appends "SECONDS PEAK_KB" to the file named by $out.
timed() { "$bin/bench_baselines" run "$@" 2>>"$out" >/dev/null; }
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
peak() { sort -n -k2 | tail -1 | awk '{ print $2 }'; }

# One row: a name, the aim, then the tool's steps and the baseline's steps as shell
# functions `tool` and `plain`, each run once per round, by turns.
row() {
    local name=$1 aim=$2
    : >"$work/tool.txt" >"$work/plain.txt"
    for ((i = 0; i < runs; i++)); do
        out="$work/tool.txt" tool
        out="$work/plain.txt" plain
    done
    local t p
    t=$(median <"$work/tool.txt")
    p=$(median <"$work/plain.txt")
    awk -v n="$name" -v t="$t" -v p="$p" -v a="$aim" \
        'BEGIN { r = t / p; printf "%-14s %8.3f s %8.3f s %7.2f %7s  %s\n", n, t, p, r, "<= " a, (r <= a ? "met" : "NOT met") }'
    tool_peak=$(peak <"$work/tool.txt")
}

printf "%-14s %10s %10s %7s %7s\n" "command" "today" "baseline" "ratio" "aim"

tool() { timed "$bin/tarvolin-cli" list big.sff; }
plain() { timed "$bin/bench_baselines" walk big.sff; }
row "list" 3

mkdir -p ex bx
tool() { timed "$bin/tarvolin-cli" export big.sff ex; }
plain() { timed "$bin/bench_baselines" export big.sff bx; }
row "export" 1.15
export_peak=$tool_peak

tool() { rm -f inputs/big.sff.bak*; cd inputs; timed /bin/sh -c "exec '$bin/sprmaker.exe' < big_SFF.txt > CreateLog.txt"; cd ..; }
plain() { timed "$bin/bench_baselines" inputs inputs/big_SFF.txt "$sff_bytes" inputs/plain.bin; }
row "sprmaker.exe" 1.3

# A build into a fresh folder each time; the plain way exports, reads the inputs, writes
# the SFF and reads it back, each step a process of its own, the times added.
tool() { rm -rf bd; timed "$bin/tarvolin-cli" build big.sff bd; }
plain() {
    rm -rf pd && mkdir pd
    local steps="$work/steps.txt"
    : >"$steps"
    out=$steps timed "$bin/bench_baselines" export big.sff pd
    out=$steps timed "$bin/bench_baselines" inputs inputs/big_SFF.txt "$sff_bytes" pd/big.sff
    out=$steps timed "$bin/bench_baselines" read pd/big.sff
    awk '{ s += $1; if ($2 > m) m = $2 } END { print s, m }' "$steps" >>"$out"
}
row "build" 1.3
build_peak=$tool_peak

awk -v e="$export_peak" -v b="$build_peak" -v f="$size" 'BEGIN {
    printf "peak memory    export %.0f MB, build %.0f MB; file %.0f MB: %.2fx  aim <= 1.2x  %s\n",
        e * 1.024 / 1000, b * 1.024 / 1000, f / 1e6, (e > b ? e : b) * 1024 / f, ((e > b ? e : b) * 1024 / f <= 1.2 ? "met" : "NOT met") }'
