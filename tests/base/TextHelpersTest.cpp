#include <gtest/gtest.h>

#include "base/TextHelpers.h"

namespace tarvolin {
namespace {

TEST(TextHelpers, CountAndCutInCp932Bytes) {
    EXPECT_EQ(LenAnsi("ab"), 2);
    EXPECT_EQ(LenAnsi("作業"), 4);  // two double-byte characters
    EXPECT_EQ(LenAnsi("ｱ"), 1);     // half-width katakana is one byte in CP932
    EXPECT_EQ(MidAnsi("ab作業cd", 3, 4), "作業");
    EXPECT_EQ(MidAnsi("ab作業cd", 4, 2), "");      // would cut both characters in half
    EXPECT_EQ(MidAnsi("abc", 2, 100), "bc");
    EXPECT_EQ(PadZero(2, "A"), "0A");
    EXPECT_EQ(PadZero(2, "ABC"), "ABC");
    EXPECT_EQ(PadZero(5, "作"), "000作");
}

TEST(TextHelpers, NumbersAndRounding) {
    EXPECT_EQ(WordFromBytes(0xFF, 0xFF), -1);
    EXPECT_EQ(WordFromBytes(0x7F, 0xFF), 32767);
    EXPECT_EQ(FixToLong(-2.7), -2);
    EXPECT_EQ(FixToLong(2.7), 2);
    for (auto [value, even] : {std::pair{2.5, 2}, {3.5, 4}, {-2.5, -2}}) EXPECT_EQ(RoundHalfEven(value), even) << value;
    EXPECT_FALSE(RoundToInt32(3e9).has_value());
    for (auto [text, value] : {std::pair{"-3", -3.0}, {"1.5", 1.5}, {"1e2", 100.0}, {".5", 0.5}})
        EXPECT_EQ(*ParseNumber(text), value) << text;
    for (const char* bad : {"", "-", "+", "abc", "1e", "1.2.3", "12a", "."}) EXPECT_FALSE(ParseNumber(bad)) << bad;
}

TEST(TextHelpers, SplitPaths) {
    EXPECT_EQ(GetFileName("/home/u/fighter.sff"), "fighter.sff");
    EXPECT_EQ(GetFileName("/home/u/"), "");
    EXPECT_EQ(GetFileName(""), "");
    EXPECT_EQ(GetFolder("/作業/絵.pcx"), "/作業/");
    // A character CP932 can't hold must not shift the cut: the folder keeps its '/'.
    EXPECT_EQ(GetFolder("/tmp/Café/a.pcx"), "/tmp/Café/");
    EXPECT_EQ(GetFolder("/tmp/😀dir/😀.pcx"), "/tmp/😀dir/");
}

}  // namespace
}  // namespace tarvolin
