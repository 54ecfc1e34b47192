#pragma once
// Generated pictures and plain file writes for the benchmarks: nothing here reads a real
// file. Scratch folders are the tests' TempDir, removed when their owner goes.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "support/TempDir.h"

namespace tarvolin::bench {

using ScratchDir = test::TempDir;

// A 256-colour PCX of w x h pixels with little repetition (so that run-length coding
// hardly shrinks it), its pixels depending on `seed`, its palette on `paletteSeed`.
std::vector<uint8_t> NoisyPcx(int w, int h, uint32_t seed, uint32_t paletteSeed);

// The plain way of writing a file: open, one write, close. Aborts the benchmark run on
// failure, since the figures would mean nothing.
void PlainWrite(const std::string& path, const std::vector<uint8_t>& bytes);

// Seconds taken by `work`.
template <class F>
double Seconds(F&& work);

// Runs the tool's way and the plain way alternately, one pair an iteration, so that both
// meet the same load of a shared machine. The order swaps from one run to the next, so
// that neither always pays for the disk's writeback of the other's files. The tool's
// time is the benchmark's time; the counters give the plain way's time and the ratio.
template <class Tool, class Plain>
void Paired(benchmark::State& st, Tool&& tool, Plain&& plain) {
    static int runs = 0;
    double toolTotal = 0, plainTotal = 0;
    for (auto _ : st) {
        const bool plainFirst = runs++ % 2 == 0;
        if (plainFirst) plainTotal += Seconds(plain);
        const double t = Seconds(tool);
        if (!plainFirst) plainTotal += Seconds(plain);
        toolTotal += t;
        st.SetIterationTime(t);
    }
    st.counters["plain_ms"] = 1000.0 * plainTotal / static_cast<double>(st.iterations());
    st.counters["ratio"] = plainTotal > 0 ? toolTotal / plainTotal : 0;
}

template <class F>
double Seconds(F&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace tarvolin::bench
