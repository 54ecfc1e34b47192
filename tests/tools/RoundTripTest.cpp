// Every sprite goes through export -> parameter text -> sprmaker.exe and must come back
// with the same numbers, axis, pixels and palette; rows that named one file are linked.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>

#include "support/EngineView.h"
#include "base/TextHelpers.h"
#include "formats/Pcx.h"
#include "rebuild/ParamText.h"
#include "sff/PcxExport.h"
#include "sff/SffReader.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

bool SamePixels(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
    const PcxPixels pa = PcxRle(a, ReadPcxHeader(a));
    const PcxPixels pb = PcxRle(b, ReadPcxHeader(b));
    return pa.LastColumn == pb.LastColumn && pa.LastLine == pb.LastLine && pa.Cells == pb.Cells;
}

// Opens `path`, rebuilds it through sprmaker.exe in a fresh folder and compares.
void RoundTrip(const std::string& path) {
    SCOPED_TRACE(path);
    SffState state;
    SpriteTable table;
    auto opened = OpenSff(path, GetFileName(path), state, table, AppIni{}, [](const std::string&, int) { return true; });
    ASSERT_TRUE(opened.ok()) << opened.error().Detail;

    test::TempDir dir;
    ASSERT_TRUE(SaveAllPcx(state, table, dir.Path()).ok());
    const std::string textName = state.SffBaseName + "_SFF.txt";
    ASSERT_TRUE(WriteParamText(dir / textName, table, state.SffNameCaption).ok());
    const auto run = test::RunProgram(test::BinDir() + "sprmaker.exe", {}, dir / textName, dir.Path());
    ASSERT_EQ(run.Status, 0) << run.Out << run.Err;

    const test::EngineFile rebuilt = test::EngineView(test::ReadFile(dir / state.SffNameCaption));
    ASSERT_EQ(rebuilt.Sprites.size(), static_cast<size_t>(table.RowCount()));
    EXPECT_EQ(rebuilt.PaletteMode, 1);

    int pixelsSame = 0, palettesSame = 0, linked = 0;
    std::map<std::string, size_t> firstWithName;
    for (int place = 1; place <= table.RowCount(); ++place) {
        SCOPED_TRACE("row " + std::to_string(place));
        const SpriteRow& row = table.Row(place);
        const test::EngineSprite& s = rebuilt.Sprites[static_cast<size_t>(place - 1)];
        EXPECT_EQ(DecimalText(s.GroupNo), row[Column::GroupNo]);
        EXPECT_EQ(DecimalText(s.ItemNo), row[Column::ItemNo]);
        EXPECT_EQ(DecimalText(s.AxisX), row[Column::AxisX]);
        EXPECT_EQ(DecimalText(s.AxisY), row[Column::AxisY]);

        const SubfileRecord& record = state.Subfiles[std::stoul(row[Column::PPos])];
        pixelsSame += SamePixels(CutSubfile(state, record), s.Picture);
        const auto exported = test::ReadFile(dir / row[Column::PcxName]);
        ASSERT_GE(exported.size(), 768u);
        palettesSame += std::equal(exported.end() - 768, exported.end(), s.Colours.begin());

        std::string name = row[Column::PcxName];
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
        auto [first, isNew] = firstWithName.emplace(name, static_cast<size_t>(place - 1));
        EXPECT_EQ(s.Linked, !isNew);
        EXPECT_EQ(isNew ? s.LinkIndex : first->second, s.LinkIndex);
        linked += !isNew;
    }
    EXPECT_EQ(pixelsSame, table.RowCount());
    EXPECT_EQ(palettesSame, table.RowCount());

    // The new file opens again with the same rows.
    SffState again;
    SpriteTable againTable;
    ASSERT_TRUE(OpenSff(dir / state.SffNameCaption, state.SffNameCaption, again, againTable, AppIni{},
                        [](const std::string&, int) { return false; })
                    .ok());
    EXPECT_EQ(againTable.RowCount(), table.RowCount());

    std::printf("[ round trip ] %s: %d rows, %d pixels equal, %d palettes equal, %d linked again, %zu bytes\n",
                GetFileName(path).c_str(), table.RowCount(), pixelsSame, palettesSame, linked,
                test::ReadFile(dir / state.SffNameCaption).size());
}

TEST(SprmakerRoundTrip, EveryRealSffComesBackSpriteForSprite) {
    TARVOLIN_REQUIRE_SHARED_DATA(data);
    ASSERT_FALSE(test::SharedSffFiles().empty());
    for (const std::string& file : test::SharedSffFiles()) RoundTrip(file);
}

TEST(SprmakerRoundTrip, SyntheticFilesComeBackSpriteForSprite) {
    test::TempDir dir;
    // Shared palette, a linked pair, odd widths, negative axes, a sprite with its own
    // palette behind the shared ones.
    std::vector<SffSprite> shared = {
        test::MakeSprite(9000, 0, 0, true, 0, 0, 25, 25),  test::MakeSprite(9000, 1, 0, true, 0, 0, 120, 140),
        test::MakeSprite(0, 0, 0, true, 36, 105, 61, 99),  test::MakeSprite(0, 1, 1, false, -36, -105, 7, 3),
        test::MakeSprite(0, 2, 1, false, 32767, -32768),   test::MakeSprite(0, 3, 1, false),
        test::MakeSprite(200, 0, 0, true, -3, 90, 1, 1),   test::MakeSprite(65535, 65535, 1, false, 1, 1, 9, 9),
    };
    shared[5].Data.clear();
    shared[5].LinkIndex = 3;
    test::WriteFile(dir / "synth.sff", EncodeSff(kSharedPaletteMode, shared));
    RoundTrip(dir / "synth.sff");

    // Individual palettes in every sprite, which opening warns about.
    std::vector<SffSprite> individual;
    for (uint16_t i = 0; i < 6; ++i) individual.push_back(test::MakeSprite(i, i, 0, true, static_cast<int16_t>(-i), 3, 3 + i, 5));
    test::WriteFile(dir / "indiv.sff", EncodeSff(kIndividualPaletteMode, individual));
    RoundTrip(dir / "indiv.sff");
}

}  // namespace
}  // namespace tarvolin
