// OpenSff on a generated SFF of 10,000 sprites (about 100 MB), beside the time to read the
// same file into memory: the ratio of the two is the figure that matters.
#include <benchmark/benchmark.h>

#include "GeneratedSff.h"
#include "base/FileRead.h"
#include "base/MessageKeys.h"
#include "config/AppIni.h"
#include "sff/SffReader.h"

namespace tarvolin {
namespace {

void BM_ReadFileIntoMemory(benchmark::State& st) {
    const std::string& path = bench::GeneratedSffPath(10000);
    for (auto _ : st) {
        auto bytes = ReadWholeFile(path, msg::SffUnreadable, UINT32_MAX);
        benchmark::DoNotOptimize(bytes.value().data());
    }
}

void BM_OpenSff(benchmark::State& st) {
    const std::string& path = bench::GeneratedSffPath(10000);
    const AppIni ini = DefaultAppIni();
    for (auto _ : st) {
        SffState state;
        SpriteTable table;
        auto r = OpenSff(path, "bench.sff", state, table, ini, [](const std::string&, int) { return true; });
        if (!r || table.RowCount() != 10000) st.SkipWithError("open failed");
        benchmark::DoNotOptimize(table.RowCount());
    }
}

BENCHMARK(BM_ReadFileIntoMemory)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_OpenSff)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
}  // namespace tarvolin

BENCHMARK_MAIN();
