// The PCX header tests and the run-length decoder, on hand-made images and on the real
// pictures of the shared data folder (compared with netpbm's pcxtoppm).
#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

#include "PcxImages.h"
#include "preview/Pcx.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

std::vector<uint8_t> Image(uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine, std::vector<uint8_t> data) {
    return test::PcxImage(xmax, ymax, bytesPerLine, data);
}

PcxPixels Decode(const std::vector<uint8_t>& bytes) { return PcxRle(bytes, ReadPcxHeader(bytes)); }

TEST(PcxHeader, TestsInOrderAnyVersionPasses) {
    auto image = Image(3, 0, 4, {});
    for (uint8_t version : {0, 5}) {
        image[1] = version;
        EXPECT_TRUE(PcxHeaderAccepted(ReadPcxHeader(image))) << int(version);
    }
    struct Case {
        size_t Offset;
        uint8_t Value;
        const char* Reason;
    };
    for (const Case& c : {Case{0, 11, "Manufacturer"}, Case{2, 0, "Encoding"}, Case{65, 3, "NPlanes 3"},
                          Case{3, 4, "BitsPerPixel 4"}}) {
        auto bad = image;
        bad[c.Offset] = c.Value;
        const auto header = ReadPcxHeader(bad);
        EXPECT_FALSE(PcxHeaderAccepted(header)) << c.Reason;
        ASSERT_TRUE(PcxRefusal(header));
        EXPECT_NE(PcxRefusal(header)->find(c.Reason), std::string::npos) << *PcxRefusal(header);
    }
    // Too short to hold a header: the missing bytes read as zero and the picture is refused.
    EXPECT_FALSE(PcxHeaderAccepted(ReadPcxHeader(std::vector<uint8_t>{10, 5})));
    EXPECT_FALSE(PcxHeaderAccepted(ReadPcxHeader({})));
}

TEST(PcxHeader, BoundsOutsideWhatTheScreenTakesAreRefused) {
    EXPECT_FALSE(PcxRefusal(ReadPcxHeader(Image(8191, 8191, 8192, {}))));
    EXPECT_TRUE(PcxRefusal(ReadPcxHeader(Image(8192, 8192, 8194, {}))));   // 8194 x 8193 cells
    EXPECT_TRUE(PcxRefusal(ReadPcxHeader(Image(0xFFFF, 0, 0xFFFF, {}))));  // Xmax -1: last column -1
    EXPECT_TRUE(PcxRefusal(ReadPcxHeader(Image(3, 0xFFFE, 4, {}))));       // Ymax -2
}

TEST(PcxBounds, LastColumnFormula) {
    int32_t c = 0, l = 0;
    ASSERT_TRUE(PcxBounds(ReadPcxHeader(Image(99, 9, 100, {})), c, l));
    EXPECT_EQ(c, 99);  // even width 100: 199 / 2 = 99.5
    EXPECT_EQ(l, 9);
    ASSERT_TRUE(PcxBounds(ReadPcxHeader(Image(100, 0, 102, {})), c, l));
    EXPECT_EQ(c, 101);  // odd width 101 padded to 102: the pad column stays
    ASSERT_TRUE(PcxBounds(ReadPcxHeader(Image(100, 0, 101, {})), c, l));
    EXPECT_EQ(c, 100);  // odd width with BytesPerLine = width
}

TEST(PcxRle, MarkersAndRuns) {
    // 0xC0 is a literal pixel and moves the source by one.
    auto p = Decode(Image(1, 0, 2, {0xC0, 0x07}));
    EXPECT_EQ(p.Cells, (std::vector<uint8_t>{0xC0, 0x07}));
    // 0xC1 0x05 is one pixel 5; the next byte is read as the next code.
    p = Decode(Image(1, 0, 2, {0xC1, 0x05, 0x09}));
    EXPECT_EQ(p.Cells, (std::vector<uint8_t>{5, 9}));
    // 0xFF 0x05 is 63 pixels of 5.
    p = Decode(Image(63, 0, 64, {0xFF, 0x05, 0x07}));
    ASSERT_EQ(p.Columns(), 64);
    EXPECT_EQ(std::count(p.Cells.begin(), p.Cells.begin() + 63, 5), 63);
    EXPECT_EQ(p.At(63, 0), 7);
}

TEST(PcxRle, RunsCrossLinesAndStopAtThePicturesEnd) {
    // 2 x 2: a run of 3 continues from line 0 into line 1.
    auto p = Decode(Image(1, 1, 2, {0xC3, 0x09, 0x01}));
    EXPECT_EQ(p.Cells, (std::vector<uint8_t>{9, 9, 9, 1}));
    // A run longer than what is left is cut, and whatever follows the picture is not read.
    const auto exact = Image(1, 1, 2, {0xC5, 0x04});
    auto trailing = exact;
    trailing.insert(trailing.end(), {0xC9, 0x63, 0x11, 0xC0});
    EXPECT_EQ(Decode(exact).Cells, (std::vector<uint8_t>{4, 4, 4, 4}));
    EXPECT_EQ(Decode(trailing).Cells, Decode(exact).Cells);
}

TEST(PcxRle, ShortDataLeaveTheRestZero) {
    EXPECT_EQ(Decode(Image(1, 1, 2, {0x03})).Cells, (std::vector<uint8_t>{3, 0, 0, 0}));
    // A run code whose value byte is missing ends the data.
    EXPECT_EQ(Decode(Image(1, 1, 2, {0x03, 0xC2})).Cells, (std::vector<uint8_t>{3, 0, 0, 0}));
    // Only a header: all zero, right size.
    const auto p = Decode(Image(4, 2, 6, {}));
    EXPECT_EQ(p.Columns(), 6);
    EXPECT_EQ(p.Lines(), 3);
    EXPECT_EQ(std::count(p.Cells.begin(), p.Cells.end(), 0), 18);
}

TEST(PcxRle, LayoutFollowsTheFormulaNotTheFileLines) {
    // Odd width 3, padded to 4: the pad byte is a fourth column.
    auto p = Decode(Image(2, 1, 4, {1, 2, 3, 0x3E, 4, 5, 6, 0x3F}));
    ASSERT_EQ(p.Columns(), 4);
    EXPECT_EQ(p.At(3, 0), 0x3E);
    EXPECT_EQ(p.At(0, 1), 4);
    // BytesPerLine 10 with Xmax 3: last column (10 + 3) / 2 = 6, so the file's lines shift
    // against the rows: row 1 starts with byte 7 of file line 0.
    std::vector<uint8_t> data;
    for (uint8_t i = 0; i < 20; ++i) data.push_back(i + 1);
    p = Decode(Image(3, 1, 10, data));
    ASSERT_EQ(p.Columns(), 7);
    EXPECT_EQ(p.At(6, 0), 7);
    EXPECT_EQ(p.At(0, 1), 8);
    EXPECT_EQ(p.At(6, 1), 14);
    // Xmin plays no part in the width.
    auto shifted = Image(1, 0, 2, {1, 2});
    shifted[4] = 10;
    EXPECT_EQ(Decode(shifted).Columns(), 2);
}

// pcxtoppm's P6 output: width, height and RGB triples.
struct Ppm {
    int Width = 0;
    int Height = 0;
    std::vector<uint8_t> Rgb;
};

std::optional<Ppm> RunPcxToPpm(const std::string& path) {
    FILE* pipe = popen(("pcxtoppm '" + path + "' 2>/dev/null").c_str(), "r");
    if (!pipe) return std::nullopt;
    Ppm ppm;
    int maxval = 0;
    if (std::fscanf(pipe, "P6 %d %d %d", &ppm.Width, &ppm.Height, &maxval) != 3 || std::fgetc(pipe) == EOF) {
        pclose(pipe);
        return std::nullopt;
    }
    ppm.Rgb.resize(static_cast<size_t>(ppm.Width) * ppm.Height * 3);
    const size_t got = std::fread(ppm.Rgb.data(), 1, ppm.Rgb.size(), pipe);
    if (pclose(pipe) != 0 || got != ppm.Rgb.size()) return std::nullopt;
    return ppm;
}

TEST(PcxRle, RealPicturesMatchPcxToPpm) {
    TARVOLIN_REQUIRE_SHARED_DATA(dir);
    struct Case {
        const char* Name;
        int Width;
        int Columns;  // the decoder keeps the pad column of an odd width
    };
    for (const Case& c : {Case{"elecbyte_ko4_97x49_oddwidth.pcx", 97, 98}, Case{"elecbyte_lifefr0l_128x6.pcx", 128, 128},
                          Case{"elecbyte_w_chouhi_11x13_oddwidth.pcx", 11, 12}}) {
        SCOPED_TRACE(c.Name);
        const auto bytes = test::ReadFile(dir + c.Name);
        const auto header = ReadPcxHeader(bytes);
        ASSERT_FALSE(PcxRefusal(header));
        const PcxPixels p = PcxRle(bytes, header);
        const auto ppm = RunPcxToPpm(dir + c.Name);
        ASSERT_TRUE(ppm) << "pcxtoppm failed";
        ASSERT_EQ(ppm->Width, c.Width);
        ASSERT_EQ(p.Columns(), c.Columns);
        ASSERT_EQ(p.Lines(), ppm->Height);
        const uint8_t* palette = bytes.data() + bytes.size() - 768;
        int mismatches = 0;
        for (int y = 0; y < ppm->Height; ++y)
            for (int x = 0; x < ppm->Width; ++x) {
                const uint8_t* want = ppm->Rgb.data() + (static_cast<size_t>(y) * ppm->Width + x) * 3;
                const uint8_t* got = palette + 3 * p.At(x, y);
                mismatches += !std::equal(want, want + 3, got);
            }
        EXPECT_EQ(mismatches, 0);
    }
}

}  // namespace
}  // namespace tarvolin
