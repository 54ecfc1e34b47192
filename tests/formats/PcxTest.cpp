// The PCX header tests and decoder, on hand-made images and real pictures (against pcxtoppm).
#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

#include "formats/Pcx.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::PcxImage;
using Bytes = std::vector<uint8_t>;

PcxPixels Decode(const Bytes& bytes) { return PcxRle(bytes, ReadPcxHeader(bytes)); }
// The image with byte `offset` set to `value`.
Bytes With(Bytes image, size_t offset, uint8_t value) { return image[offset] = value, image; }

// Taken: any version, 24 bits where asked for, 8192 x 8192 cells, one line 32767 wide. Refused
// besides: more cells, Xmax or Ymax negative as signed numbers, a width of 32768 or more.
TEST(PcxHeader, TestsInOrderAnyVersionPassesAndTheBounds) {
    const auto image = PcxImage(3, 0, 4, {0});
    for (const Bytes& taken : {With(image, 1, 0), PcxImage(8191, 8191, 8192, {0}), PcxImage(32766, 0, 32767, {0})})
        EXPECT_FALSE(PcxRefusal(taken));
    EXPECT_FALSE(PcxRefusal(With(image, 65, 3), PcxLayouts::IndexedOrTrueColour));
    const struct { Bytes Image; const char* Reason; PcxLayouts Layouts = PcxLayouts::Indexed; } cases[] = {
        {With(image, 0, 11), "Manufacturer"},
        {With(image, 2, 0), "Encoding"},
        {With(image, 65, 3), "NPlanes 3"},
        {With(image, 3, 4), "BitsPerPixel 4"},
        {With(With(image, 65, 3), 3, 4), "BitsPerPixel 4", PcxLayouts::IndexedOrTrueColour},
        {Bytes{10, 5}, "Encoding"},  // too short for a header: the missing bytes read as zero
        {Bytes{}, "no bytes at all: a sprite without a picture"},
        {PcxImage(3, 0, 4), "no picture data"},
        {PcxImage(8192, 8191, 8194, {0}), "last column 8193, last line 8191: picture too large"},
        {PcxImage(8192, 8192, 8194, {0}), "last line 8192"},
        {PcxImage(0xFFFF, 0, 0xFFFF, {0}), "Xmax 65535, Ymax 0, BytesPerLine 65535: beyond 32767"},
        {PcxImage(3, 0xFFFE, 4, {0}), "Ymax 65534"}, {PcxImage(32767, 0, 32768, {0}), "BytesPerLine 32768"},
        {PcxImage(40000, 0, 40000, {0}), "Xmax 40000"}, {PcxImage(65534, 0, 65534, {0}), "Xmax 65534"},
    };
    for (const auto& c : cases) {
        const auto refusal = PcxRefusal(c.Image, c.Layouts);
        ASSERT_TRUE(refusal) << c.Reason;
        EXPECT_NE(refusal->find(c.Reason), std::string::npos) << *refusal;
    }
}

TEST(PcxRle, Cases) {
    // Columns: the last column (Xmax + BytesPerLine) / 2, plus one.
    struct Case { const char* Name; uint16_t Xmax, Ymax, BytesPerLine; Bytes Data; int Columns; Bytes Cells; };
    const Case cases[] = {
        {"0xC0 is a literal pixel", 1, 0, 2, {0xC0, 0x07}, 2, {0xC0, 7}},
        {"0xC1 0x05 is one pixel", 1, 0, 2, {0xC1, 5, 9}, 2, {5, 9}},
        {"0xFF 0x05 is 63 pixels", 63, 0, 64, {0xFF, 5, 7}, 64, test::Then(Bytes(63, 5), {7})},
        {"a run crosses a line", 1, 1, 2, {0xC3, 9, 1}, 2, {9, 9, 9, 1}},
        {"a long run is cut; bytes after the picture are not read", 1, 1, 2, {0xC5, 4, 0xC9, 0x63, 0x11, 0xC0}, 2,
         {4, 4, 4, 4}},
        {"short data leave the rest zero", 1, 1, 2, {3}, 2, {3, 0, 0, 0}},
        {"a run code without its value ends the data", 1, 1, 2, {3, 0xC2}, 2, {3, 0, 0, 0}},
        {"even width 100, header only", 99, 9, 100, {}, 100, Bytes(1000, 0)},
        {"odd width 3 keeps the pad column", 2, 1, 4, {1, 2, 3, 0x3E, 4, 5, 6, 0x3F}, 4, {1, 2, 3, 0x3E, 4, 5, 6, 0x3F}},
        {"odd width, BytesPerLine = width", 100, 0, 101, {}, 101, Bytes(101, 0)},
        // 7 columns from 10 bytes per file line: the file's lines shift against the rows.
        {"BytesPerLine above Xmax + 2", 3, 1, 10, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}, 7,
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        const PcxPixels p = Decode(PcxImage(c.Xmax, c.Ymax, c.BytesPerLine, c.Data));
        EXPECT_EQ(p.Columns(), c.Columns);
        EXPECT_EQ(p.Lines(), c.Ymax + 1);
        EXPECT_EQ(p.Cells, c.Cells);
    }
    auto shifted = PcxImage(1, 0, 2, {1, 2});
    shifted[4] = 10;  // Xmin plays no part in the width
    EXPECT_EQ(Decode(shifted).Columns(), 2);

    // 24 bits: each line holds its red, green and blue planes; the pad byte of each plane
    // is not a column, and a run crosses from one plane into the next.
    const auto rgb = PcxImage(2, 1, 4, {1, 2, 3, 0xC2, 9, 6, 7, 0, 8, 9, 10, 0, 0xCC, 1}, 3);
    const TrueColourPixels t = PcxRleTrueColour(rgb, ReadPcxHeader(rgb));
    EXPECT_EQ(t.Columns, 3);
    EXPECT_EQ(t.Lines, 2);
    EXPECT_EQ(t.Rgb, (Bytes{1, 9, 8, 2, 6, 9, 3, 7, 10, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
}

struct Ppm { int Width = 0, Height = 0; Bytes Rgb; };  // pcxtoppm's P6 output

Ppm RunPcxToPpm(const std::string& path) {
    FILE* pipe = popen(("pcxtoppm '" + path + "' 2>/dev/null").c_str(), "r");
    Ppm ppm;
    int maxval = 0;
    if (pipe && std::fscanf(pipe, "P6 %d %d %d", &ppm.Width, &ppm.Height, &maxval) == 3 && std::fgetc(pipe) != EOF) {
        ppm.Rgb.resize(static_cast<size_t>(ppm.Width) * ppm.Height * 3);
        ppm.Rgb.resize(std::fread(ppm.Rgb.data(), 1, ppm.Rgb.size(), pipe));
    }
    if (pipe) pclose(pipe);
    return ppm;
}

TEST(PcxRle, RealPicturesMatchPcxToPpm) {
    TARVOLIN_REQUIRE_SHARED_DATA(dir);
    struct Case { const char* Name; int Width; int Columns; };  // the decoder keeps an odd width's pad column
    for (const Case& c : {Case{"elecbyte_ko4_97x49_oddwidth.pcx", 97, 98}, Case{"elecbyte_lifefr0l_128x6.pcx", 128, 128},
                          Case{"elecbyte_w_chouhi_11x13_oddwidth.pcx", 11, 12}}) {
        SCOPED_TRACE(c.Name);
        const auto bytes = test::ReadFile(dir + c.Name);
        ASSERT_FALSE(PcxRefusal(bytes));
        const PcxPixels p = Decode(bytes);
        const Ppm ppm = RunPcxToPpm(dir + c.Name);
        ASSERT_EQ(ppm.Width, c.Width) << "pcxtoppm failed";
        ASSERT_EQ(ppm.Rgb.size(), size_t(ppm.Width * ppm.Height * 3));
        ASSERT_EQ(p.Columns(), c.Columns);
        ASSERT_EQ(p.Lines(), ppm.Height);
        const uint8_t* palette = bytes.data() + bytes.size() - 768;
        int mismatches = 0;
        for (int y = 0; y < ppm.Height; ++y)
            for (int x = 0; x < ppm.Width; ++x) {
                const uint8_t* want = ppm.Rgb.data() + (static_cast<size_t>(y) * ppm.Width + x) * 3;
                mismatches += !std::equal(want, want + 3, palette + 3 * p.At(x, y));
            }
        EXPECT_EQ(mismatches, 0);
    }
}

}  // namespace
}  // namespace tarvolin
