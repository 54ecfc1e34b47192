// Sprites of an opened SFF brought onto the screen: every sprite of every shared SFF
// passes the acceptance check and decodes, with the palette the engine shows it with.
#include <gtest/gtest.h>

#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "preview/RowPicture.h"
#include "sff/SffReader.h"
#include "support/EngineView.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

TEST(RowPicture, EverySpriteOfEverySharedSffDecodesWithTheEnginesPalette) {
    TARVOLIN_REQUIRE_SHARED_DATA(dir);
    const AppIni ini = DefaultAppIni();
    for (const std::string& path : test::SharedSffFiles()) {
        SCOPED_TRACE(path);
        SffState sff;
        SpriteTable table;
        auto opened = OpenSff(path, GetFileName(path), sff, table, ini, [](const std::string&, int) { return true; });
        ASSERT_TRUE(opened) << opened.error().Detail;
        ASSERT_GT(table.RowCount(), 0);
        const test::EngineFile engine = test::EngineView(sff.SffBytes, false);
        for (int place = 1; place <= table.RowCount(); ++place) {
            const int64_t pos = std::stoll(table.Cell(place, Column::PPos));
            PreviewState state;
            LoadSubfilePicture(state, sff, pos);
            const auto refusal = PcxRefusal(state.PcxBytes);
            ASSERT_FALSE(refusal) << "row " << place << ": " << *refusal;
            const auto header = ReadPcxHeader(state.PcxBytes);
            const PcxPixels pixels = PcxRle(state.PcxBytes, header);
            EXPECT_EQ(pixels.Cells.size(), static_cast<size_t>(pixels.Columns()) * pixels.Lines());
            // Flag-1 sprites of files with several palettes among them: not always the shared one.
            const test::EngineSprite& shown = engine.Sprites.at(static_cast<size_t>(pos));
            ASSERT_TRUE(shown.HasColours);
            EXPECT_EQ(state.PcxPalette, shown.Colours) << "row " << place;
            EXPECT_EQ(state.PalletTable[255].Color, shown.Colours[765] | shown.Colours[766] << 8 | shown.Colours[767] << 16);
        }
    }
}

TEST(RowPicture, OutOfRangeIndexAndShortBytesKeepThePalette) {
    SffState sff;
    sff.SffBytes = {10, 5, 1, 8};
    sff.Subfiles.emplace_back().DataEnd = 3;  // a sprite of four bytes, too short for a palette
    PreviewState state;
    state.PcxPalette[0] = 77;
    LoadSubfilePicture(state, sff, 5);
    EXPECT_TRUE(state.PcxBytes.empty());
    LoadSubfilePicture(state, sff, 0);
    EXPECT_EQ(state.PcxBytes.size(), 4u);
    EXPECT_EQ(state.PcxPalette[0], 77);
}

}  // namespace
}  // namespace tarvolin
