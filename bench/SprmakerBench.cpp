// sprmaker's builder making an SFF of 10,000 sprites (about 100 MB) beside reading all
// its inputs and writing as many bytes into one file.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "BenchFiles.h"
#include "SffBuilder.h"
#include "base/FileRead.h"
#include "formats/Pcx.h"
#include "base/MessageKeys.h"

namespace tarvolin::bench {
namespace {

constexpr int kSprites = 10000;

// The pictures on disk and the plan that names them, made once.
struct Inputs {
    ScratchDir Dir;
    sprmaker::BuildPlan Plan;
    uint64_t OutputBytes = 512;  // what the SFF comes to: header, subfile headers, data
    Inputs() {
        Plan.OutputName = "big.sff";
        Plan.SharedPalette = true;
        for (int i = 0; i < kSprites; ++i) {
            sprmaker::SpriteEntry e;
            e.File = "s" + std::to_string(i) + ".pcx";
            e.GroupNo = static_cast<uint16_t>(i / 100);
            e.ItemNo = static_cast<uint16_t>(i % 100);
            // A palette of its own now and then, the sprites after it on the same palette: they
            // are stored without it (one whose palette differed would keep its own).
            e.OwnPalette = i % 50 == 0;
            const auto pcx = NoisyPcx(100, 100, static_cast<uint32_t>(i), static_cast<uint32_t>(i / 50));
            PlainWrite(Dir.Path() + e.File, pcx);
            OutputBytes += 32 + pcx.size() - (*e.OwnPalette ? 0 : 768);
            Plan.Sprites.push_back(std::move(e));
        }
    }
};

// The plain way: every input read whole, and as many bytes as the SFF holds written into
// one file with one write.
void ReadInputsWriteSameBytes(const Inputs& in) {
    std::vector<uint8_t> all;
    all.reserve(in.OutputBytes);
    for (const auto& e : in.Plan.Sprites) {
        auto bytes = ReadWholeFile(in.Dir.Path() + e.File, msg::PcxUnreadable, kMaxPcxFileBytes);
        if (!bytes) std::abort();
        all.insert(all.end(), bytes.value().begin(), bytes.value().end());
    }
    all.resize(in.OutputBytes);
    PlainWrite(in.Dir.Path() + "plain.bin", all);
}

void BM_SprmakerBuild(benchmark::State& st) {
    static const Inputs in;
    Paired(
        st,
        [&] {
            auto r = sprmaker::BuildSff(in.Plan, {}, in.Dir.Path());
            if (!r || r.value().Bytes != in.OutputBytes) st.SkipWithError("build failed");
            std::filesystem::remove(in.Dir.Path() + "big.sff.bak");
        },
        [&] { ReadInputsWriteSameBytes(in); });
    st.counters["MB"] = static_cast<double>(in.OutputBytes) / 1e6;
}

BENCHMARK(BM_SprmakerBuild)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1)->Repetitions(6);

}  // namespace
}  // namespace tarvolin::bench

BENCHMARK_MAIN();
