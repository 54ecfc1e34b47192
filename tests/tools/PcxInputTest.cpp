// What sprmaker.exe makes of a picture file: refused only when no engine could show it, else
// taken with its palette's place found by decoding the picture by its header.
#include <gtest/gtest.h>

#include "PcxInput.h"
#include "RunLengthScan.h"
#include "support/TestData.h"

namespace tarvolin::sprmaker {
namespace {

using Bytes = std::vector<uint8_t>;

const Bytes kPalette(768, 0x21);

TEST(PcxInput, EachKindOfPictureAndWhereItsPaletteLies) {
    const Bytes plain = test::MakePcx(9, 5, 1);
    // Repair: a part of the warning, or "" for none.
    struct Case { const char* Name; Bytes File; PictureKind Kind; bool PaletteBehind; const char* Repair; };
    Bytes trueColour = test::PcxImage(3, 1, 4, {}, 3);  // three planes of 4 bytes a line: 24 literal bytes
    for (uint8_t v = 0; v < 24; ++v) trueColour.push_back(v);
    Bytes pcxLike = test::PcxImage(3, 3, 4);  // 768 bytes that are all picture
    pcxLike.resize(768, 0x21);
    const Case cases[] = {
        {"ordinary", plain, PictureKind::Indexed, true, ""},
        {"picture data alone", Bytes(plain.begin(), plain.end() - 769), PictureKind::Indexed, false,
         "only 0 bytes after"},
        {"no 0x0C", test::Then(Bytes(plain.begin(), plain.end() - 769), kPalette), PictureKind::Indexed, true,
         "no 0x0C between"},
        {"padding", test::Then(test::Then(test::Bare(plain), Bytes(6, 0)), kPalette), PictureKind::Indexed, true,
         "7 bytes between the picture data and the palette"},
        {"two palettes", test::Then(plain, kPalette), PictureKind::Indexed, true, "769 bytes between"},
        {"bare 0x0C", test::Bare(plain), PictureKind::Indexed, false, "only 1 byte after the picture data, no room"},
        {"24-bit", trueColour, PictureKind::TrueColour, false, "a 24-bit picture"},
        {"empty file", Bytes{}, PictureKind::Empty, false, "an empty file"},
        {"a palette alone", kPalette, PictureKind::Empty, false, "768 bytes and no PCX header"},
        {"768 bytes of picture", pcxLike, PictureKind::Indexed, false, "no room for a palette"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        auto taken = TakePicture(c.File, "/art/x.pcx");
        ASSERT_TRUE(taken) << taken.error().Detail;
        EXPECT_EQ(taken.value().Kind, c.Kind);
        EXPECT_EQ(taken.value().PaletteBehind, c.PaletteBehind);
        if (*c.Repair == '\0') {
            EXPECT_EQ(taken.value().Repair, "");
        } else {
            EXPECT_NE(taken.value().Repair.find(c.Repair), std::string::npos) << taken.value().Repair;
        }
    }
}

// The end of the run-length data, found 64 bytes at a time, against a byte-by-byte reading:
// noisy data with few or many run codes, and every place the picture may be full in.
TEST(PcxInput, RunLengthDataEndWhereAByteByByteReadingEnds) {
    const auto reference = [](const Bytes& d, uint64_t cells) {
        size_t at = 0;
        for (uint64_t n = 0; n < cells && at < d.size(); at += d[at] > 0xC0 ? 2 : 1) n += d[at] > 0xC0 ? d[at] & 0x3F : 1;
        return std::min(at, d.size());
    };
    uint32_t x = 7;
    for (const uint32_t codesIn256 : {0u, 20u, 64u, 200u, 256u}) {
        Bytes data(1000);
        for (uint8_t& b : data) {
            x = x * 1103515245u + 12345u;
            b = (x >> 24) % 256 < codesIn256 ? static_cast<uint8_t>(0xC0 + (x >> 8) % 64) : static_cast<uint8_t>(x >> 16);
        }
        for (uint64_t cells = 0; cells < 4000; cells += 7)
            ASSERT_EQ(RunLengthEnd(data, cells), reference(data, cells)) << codesIn256 << " " << cells;
    }
}

}  // namespace
}  // namespace tarvolin::sprmaker
