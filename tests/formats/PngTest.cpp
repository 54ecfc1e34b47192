// PNG files in and out: every kind of PNG becomes the PCX picture the engine shows alike, and
// a sprite written as a PNG comes back the same. Refusals: SprmakerRunTest.
#include <gtest/gtest.h>

#include "base/MessageKeys.h"
#include "formats/PictureFile.h"
#include "formats/PngConvert.h"
#include "support/EngineView.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using Bytes = std::vector<uint8_t>;
using test::MakePng;

Bytes PaletteEntries(const Bytes& pcx, size_t entries) { return {pcx.end() - 768, pcx.end() - 768 + long(entries * 3)}; }

TEST(PngIn, EveryKindBecomesA256ColourPcxOfTheSamePicture) {
    Bytes distinct;  // 256 colours, one a pixel
    for (int i = 0; i < 256; ++i) distinct.insert(distinct.end(), {uint8_t(i), uint8_t(255 - i), 7});
    Bytes ramp(256);
    for (int i = 0; i < 256; ++i) ramp[size_t(i)] = uint8_t(i);
    const struct { const char* Name; Bytes Png; int Width; Bytes Cells; Bytes Palette; } cases[] = {  // first entries
        {"a palette: indices as they are, missing entries black", MakePng(3, 2, 8, 3, {0, 1, 2, 5, 1, 0}, {10, 20, 30, 40, 50, 60, 70, 80, 90}),
         3, {0, 1, 2, 5, 1, 0}, {10, 20, 30, 40, 50, 60, 70, 80, 90, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"2 bits a pixel widened", MakePng(3, 1, 2, 3, {0xD8}, {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}), 3, {3, 1, 2},
         {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}},
        {"RGB: the top-left colour becomes 0", MakePng(3, 2, 8, 2, {1, 1, 1, 2, 2, 2, 1, 1, 1, 3, 3, 3, 2, 2, 2, 1, 1, 1}),
         3, {0, 1, 0, 2, 1, 0}, {1, 1, 1, 2, 2, 2, 3, 3, 3}},
        {"RGBA: transparent pixels become 0, half-transparent ones keep their colour",
         MakePng(3, 1, 8, 6, {5, 5, 5, 255, 9, 9, 9, 0, 6, 6, 6, 128}), 3, {1, 0, 2}, {9, 9, 9, 5, 5, 5, 6, 6, 6}},
        {"an RGB colour marked transparent by tRNS", MakePng(2, 1, 8, 2, {1, 2, 3, 4, 5, 6}, {}, {0, 4, 0, 5, 0, 6}), 2,
         {1, 0}, {4, 5, 6, 1, 2, 3}},
        {"grey of 4 bits", MakePng(2, 1, 4, 0, {0xF0}), 2, {0, 1}, {255, 255, 255, 0, 0, 0}},
        {"grey with alpha", MakePng(2, 1, 8, 4, {200, 255, 100, 0}), 2, {1, 0}, {100, 100, 100, 200, 200, 200}},
        {"256 colours fill the palette", MakePng(16, 16, 8, 2, distinct), 16, ramp, Bytes(distinct.begin(), distinct.begin() + 12)},
    };
    test::TempDir dir;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        test::WriteFile(dir / "picture.pcx", c.Png);  // known by its signature, not its name
        auto pcx = ReadPictureFile(dir / "picture.pcx");
        ASSERT_TRUE(pcx) << pcx.error().Key << " " << pcx.error().Detail;
        const test::EnginePixels shown = test::DecodeAsEngine(pcx.value());
        EXPECT_EQ(shown.Width, c.Width);
        EXPECT_EQ(shown.Cells, c.Cells);
        EXPECT_EQ(PaletteEntries(pcx.value(), c.Palette.size() / 3), c.Palette);
    }
}

TEST(PngOut, ASpriteComesBackAsThePictureTheEngineShows) {
    Bytes wideLines = test::PcxImage(3, 1, 8, {1, 2, 3, 4, 9, 9, 9, 9, 5, 6, 7, 8, 9, 9, 9, 9, 0x0C});
    wideLines.resize(wideLines.size() + 768, 40);
    Bytes shifted = test::MakePcx(6, 2, 3);
    shifted[4] = 2;  // Xmin 2: the engine shows 4 columns
    const struct { const char* Name; Bytes Pcx; } cases[] = {
        {"an odd width, its pad column left out", test::MakePcx(5, 3, 1, 2)},
        {"lines longer than the picture", wideLines},
        {"Xmin above 0", shifted},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        auto png = PngFromPcx(c.Pcx, "12,-3", "out.png");
        ASSERT_TRUE(png) << png.error().Detail;
        const std::string text(png.value().begin(), png.value().end());
        EXPECT_NE(text.find("tRNS"), std::string::npos);
        EXPECT_NE(text.find(std::string("tEXttarvolin:axis\0" "12,-3", 23)), std::string::npos);
        auto back = PcxFromPng(png.value(), "out.png");
        ASSERT_TRUE(back);
        EXPECT_EQ(test::DecodeAsEngine(back.value()), test::DecodeAsEngine(c.Pcx));
        EXPECT_EQ(test::PaletteOf(back.value()), test::PaletteOf(c.Pcx));
    }

    // 24 bits: an RGB PNG, whose colours come back as a palette.
    const Bytes rgb = test::TrueColourPcx(3, 2, 4);
    auto png = PngFromPcx(rgb, "0,0", "rgb.png");
    ASSERT_TRUE(png);
    EXPECT_EQ(png.value()[25], 2);  // colour type RGB
    auto back = PcxFromPng(png.value(), "rgb.png");
    ASSERT_TRUE(back);
    const test::EnginePixels before = test::DecodeAsEngine(rgb), after = test::DecodeAsEngine(back.value());
    ASSERT_EQ(after.Cells.size(), 6u);
    for (size_t y = 0; y < 2; ++y)
        for (size_t x = 0; x < 3; ++x)
            for (size_t plane = 0; plane < 3; ++plane)
                EXPECT_EQ(back.value()[back.value().size() - 768 + after.Cells[y * 3 + x] * 3 + plane],
                          before.Cells[(y * 3 + plane) * 3 + x]);

    Bytes fourBit = test::MakePcx(4, 3, 1), noColumns = test::MakePcx(4, 3, 1);
    fourBit[3] = 4;
    noColumns[4] = 9;  // Xmin beyond Xmax
    for (const Bytes& refused : {fourBit, noColumns}) {
        auto r = PngFromPcx(refused, "0,0", "bad.png");
        ASSERT_FALSE(r);
        EXPECT_EQ(r.error().Key, msg::PcxFormat);
        EXPECT_EQ(r.error().File, "bad.png");
    }
}

}  // namespace
}  // namespace tarvolin
