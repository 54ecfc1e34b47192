// A sprite brought onto the screen: its bytes, picture and palette (real ones: RoundTripTest).
#include <gtest/gtest.h>

#include <filesystem>

#include "base/MessageKeys.h"
#include "config/Settings.h"
#include "formats/SffWriter.h"
#include "preview/RowPicture.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

TEST(RowPicture, BytesPictureAndPalette) {
    SffState sff;
    const std::vector<uint8_t> pcx = test::MakePcx(3, 2, 1, 4);
    sff.SffBytes = pcx;
    sff.Subfiles.emplace_back().DataEnd = static_cast<int32_t>(pcx.size()) - 1;
    PreviewState state;
    state.PcxPalette[0] = 77;
    for (const int64_t index : {int64_t{-1}, int64_t{1}}) {
        EXPECT_TRUE(LoadSubfilePicture(state, sff, index));
        DecodePicture(state);
        EXPECT_FALSE(state.HasPicture) << index;
    }
    EXPECT_TRUE(LoadSubfilePicture(state, sff, 0));
    state.PcxHeaderInfo = ReadPcxHeader(state.PcxBytes);
    DecodePicture(state);
    EXPECT_EQ(state.Columns() * 10 + state.Lines(), 42);  // an odd width keeps its pad column
    EXPECT_EQ(std::vector<uint8_t>(state.PcxPalette.begin(), state.PcxPalette.end()), test::PaletteOf(pcx));

    // Bytes too few for a palette, and a 24-bit picture, keep the palette shown before.
    for (auto bytes : {test::PcxImage(0, 0, 2, {5}), test::PcxImage(0, 0, 2, std::vector<uint8_t>(800, 9), 3)}) {
        state.PcxBytes = bytes;
        state.PcxHeaderInfo = ReadPcxHeader(bytes);
        DecodePicture(state);
        EXPECT_EQ(state.PcxPalette[0], test::PaletteOf(pcx)[0]);
    }
    EXPECT_TRUE(state.TrueColour);
    EXPECT_EQ(state.TrueColourPixels.Rgb, (std::vector<uint8_t>{9, 9, 9}));
}

// The open SFF cut short on disk: no picture of it reaches the screen; the change is told.
TEST(RowPicture, AFileChangedSinceOpeningIsNotShown) {
    test::TempDir dir;
    const std::string path = dir / "cut.sff";
    test::WriteFile(path, EncodeSff(kSharedPaletteMode, {test::MakeSprite(0, 0, 0, true)}));
    SffState sff;
    SpriteTable table;
    ASSERT_TRUE(OpenSff(path, "cut.sff", sff, table, DefaultAppIni(), [](const std::string&, int) { return true; }));
    std::filesystem::resize_file(path, 600);
    PreviewState state;
    const Status cut = LoadSubfilePicture(state, sff, 0);
    ASSERT_FALSE(cut);
    EXPECT_EQ(cut.error().Key, msg::FileChanged);
    EXPECT_TRUE(state.PcxBytes.empty());
}

}  // namespace
}  // namespace tarvolin
