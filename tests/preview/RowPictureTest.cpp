// A sprite of the open SFF brought onto the screen: its palette is the last 768 bytes cut
// out for it (every real file's sprites against the engine's colours: RoundTripTest).
#include <gtest/gtest.h>

#include "preview/RowPicture.h"

namespace tarvolin {
namespace {

TEST(RowPicture, AnIndexOutsideTheTableOrBytesTooFewForAPaletteKeepThePalette) {
    SffState sff;
    sff.SffBytes = {10, 5, 1, 8};
    sff.Subfiles.emplace_back().DataEnd = 3;
    PreviewState state;
    state.PcxPalette[0] = 77;
    for (const int64_t index : {int64_t{-1}, int64_t{1}}) {
        LoadSubfilePicture(state, sff, index);
        EXPECT_TRUE(state.PcxBytes.empty()) << index;
    }
    LoadSubfilePicture(state, sff, 0);
    EXPECT_EQ(state.PcxBytes, sff.SffBytes);
    EXPECT_EQ(state.PcxPalette[0], 77);

    std::vector<uint8_t> longer = {10, 5, 1, 8};
    longer.resize(800, 0);
    longer.back() = 9;  // the last byte: blue of colour 255
    sff.SffBytes = longer;
    sff.Subfiles[0].DataEnd = 799;
    LoadSubfilePicture(state, sff, 0);
    EXPECT_EQ(state.PcxPalette[0], 0);
    EXPECT_EQ(state.PalletTable[255].Color, 9u << 16);
}

}  // namespace
}  // namespace tarvolin
