// Save All PCX of 10,000 sprites beside plain writes of the same bytes into as many files.
#include <benchmark/benchmark.h>

#include "BenchFiles.h"
#include "formats/SffWriter.h"
#include "sff/PcxExport.h"
#include "sff/SffReader.h"

namespace tarvolin::bench {
namespace {

constexpr int kSprites = 10000;

struct OpenedSff {
    SffState State;
    SpriteTable Table;
    OpenedSff() {
        std::vector<SffSprite> sprites;
        for (int i = 0; i < kSprites; ++i) {
            SffSprite s;
            s.GroupNo = static_cast<uint16_t>(i / 100);
            s.ItemNo = static_cast<uint16_t>(i % 100);
            s.PalFlag = i == 0 ? 0 : 1;
            s.Data = NoisyPcx(40, 30, static_cast<uint32_t>(i), 0);
            if (i > 0) s.Data.resize(s.Data.size() - 768);
            sprites.push_back(std::move(s));
        }
        auto r = OpenSffBytes(EncodeSff(kSharedPaletteMode, sprites), "bench.sff", "bench.sff", State, Table,
                              AppIni{}, [](const std::string&, int) { return true; });
        if (!r) std::abort();
    }
};

// The plain way: the same bytes under the same names, cut from the SFF the same way,
// each written with open/write/close into a folder of its own.
void PlainExport(const OpenedSff& sff, const std::string& folder) {
    for (int row = 1; row <= sff.Table.RowCount(); ++row) {
        const SpriteRow& r = sff.Table.Row(row);
        PlainWrite(folder + r[Column::PcxName], CutSubfile(sff.State, sff.State.Subfiles[std::stoul(r[Column::PPos])]));
    }
}

void BM_SaveAllPcx(benchmark::State& st) {
    static const OpenedSff sff;
    ScratchDir toolDir, plainDir;
    Paired(
        st,
        [&] {
            if (!SaveAllPcx(sff.State, sff.Table, toolDir.Path())) st.SkipWithError("export failed");
        },
        [&] { PlainExport(sff, plainDir.Path()); });
    st.SetItemsProcessed(st.iterations() * kSprites);
}

BENCHMARK(BM_SaveAllPcx)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1)->Repetitions(6);

}  // namespace
}  // namespace tarvolin::bench

BENCHMARK_MAIN();
