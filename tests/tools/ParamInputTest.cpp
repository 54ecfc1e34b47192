#include <gtest/gtest.h>

#include "ParamInput.h"
#include "config/MessageCatalog.h"
#include "sff/Codepage.h"

namespace tarvolin::sprmaker {
namespace {

BuildPlan Parse(std::string_view text) {
    auto r = ParseParamText(text);
    EXPECT_TRUE(r.ok()) << (r.ok() ? "" : r.error().Detail);
    return r.ok() ? r.value() : BuildPlan{};
}

std::string ErrorOf(std::string_view text) {
    auto r = ParseParamText(text);
    EXPECT_FALSE(r.ok());
    if (r.ok()) return {};
    EXPECT_EQ(r.error().Key, msg::ParamLine);
    return r.error().Detail;
}

TEST(ParamInput, TarvolinsOwnTextSetsSharedModeAndOwnPalettesWhereBlocksStand) {
    const BuildPlan p = Parse(
        "#\r\n1\r\n2\r\nfighter.sff\r\n"
        "#\r\n1\r\n1\r\nfighter_09000_00000.pcx\r\n9000\r\n0\r\n0\r\n0\r\n"
        "fighter_00000_00001.pcx\r\n0\r\n1\r\n36\r\n105\r\n"
        "#\r\n1\r\n1\r\n/art/new.pcx\r\n200\r\n0\r\n-3\r\n90\r\n\r\n");
    EXPECT_FALSE(p.Aborted);
    EXPECT_TRUE(p.SharedPalette);
    EXPECT_EQ(p.OutputName, "fighter.sff");
    ASSERT_EQ(p.Sprites.size(), 3u);
    EXPECT_EQ(p.Sprites[0].OwnPalette, true);
    EXPECT_EQ(p.Sprites[0].GroupNo, 9000);
    EXPECT_EQ(p.Sprites[0].Line, 8);
    EXPECT_EQ(p.Sprites[1].OwnPalette, std::nullopt);
    EXPECT_EQ(p.Sprites[1].AxisX, 36);
    EXPECT_EQ(p.Sprites[1].AxisY, 105);
    EXPECT_EQ(p.Sprites[2].File, "/art/new.pcx");
    EXPECT_EQ(p.Sprites[2].AxisX, -3);
}

TEST(ParamInput, HandWrittenFormsCommentsOptionsAndNumbers) {
    const BuildPlan p = Parse(
        "; a comment before the name\n"
        "#\nnoise\n1\nmore noise\n1\n"  // individual palette, with lines passed over
        "out/x.sff\n"
        ";first\n"
        "A.pcx\n  12\n+3\n-7 trailing words\n;comment between numbers\n8\n"
        "#\n2\n2\n"  // don't link this duplicate
        "a.PCX\n1\n1\n0\n0\n"
        "#\n1\n2\n"  // previous sprite's palette
        "a.pcx\n65535\n65535\n32767\n-32768");  // ends without a line end
    EXPECT_FALSE(p.SharedPalette);
    EXPECT_EQ(p.OutputName, "out/x.sff");
    ASSERT_EQ(p.Sprites.size(), 3u);
    EXPECT_EQ(p.Sprites[0].GroupNo, 12);
    EXPECT_EQ(p.Sprites[0].ItemNo, 3);
    EXPECT_EQ(p.Sprites[0].AxisX, -7);
    EXPECT_EQ(p.Sprites[0].AxisY, 8);
    EXPECT_FALSE(p.Sprites[1].LinkDuplicate);
    EXPECT_EQ(p.Sprites[1].OwnPalette, std::nullopt);
    EXPECT_TRUE(p.Sprites[2].LinkDuplicate);
    EXPECT_EQ(p.Sprites[2].OwnPalette, false);
    EXPECT_EQ(p.Sprites[2].GroupNo, 65535);
    EXPECT_EQ(p.Sprites[2].AxisY, -32768);

    // Names are CP932 and come out as the file system's UTF-8.
    const BuildPlan j = Parse(*ToCp932("技.sff\r\n作業/表.pcx\r\n1\r\n2\r\n3\r\n4\r\n"));
    EXPECT_EQ(j.OutputName, "技.sff");
    ASSERT_EQ(j.Sprites.size(), 1u);
    EXPECT_EQ(j.Sprites[0].File, "作業/表.pcx");
}

TEST(ParamInput, NoOutputNameAbortsAndAnEmptyLineEndsTheSprites) {
    EXPECT_TRUE(Parse("").Aborted);
    EXPECT_TRUE(Parse(";only a comment\r\n").Aborted);
    EXPECT_TRUE(Parse("\r\nx.sff\r\n").Aborted);
    EXPECT_TRUE(Parse("#\n1\n2\n").Aborted);
    const BuildPlan none = Parse("x.sff\n");
    EXPECT_FALSE(none.Aborted);
    EXPECT_TRUE(none.Sprites.empty());
    EXPECT_EQ(Parse("x.sff\na.pcx\n1\n2\n3\n4\n\nb.pcx\n1\n2\n3\n4\n").Sprites.size(), 1u);
}

TEST(ParamInput, BadNumbersNameTheLineAndItsText) {
    EXPECT_EQ(ErrorOf("x.sff\na.pcx\n1\nabc\n3\n4\n"),
              "line 4 \"abc\": image number must be a whole number from 0 to 65535");
    EXPECT_EQ(ErrorOf("x.sff\na.pcx\n65536\n0\n3\n4\n"),
              "line 3 \"65536\": group number must be a whole number from 0 to 65535");
    EXPECT_EQ(ErrorOf("x.sff\na.pcx\n-1\n0\n3\n4\n"),
              "line 3 \"-1\": group number must be a whole number from 0 to 65535");
    EXPECT_EQ(ErrorOf("x.sff\na.pcx\n1\n0\n32768\n4\n"),
              "line 5 \"32768\": X axis must be a whole number from -32768 to 32767");
    EXPECT_EQ(ErrorOf("x.sff\na.pcx\n1\n0\n3\n99999999999999999999\n"),
              "line 6 \"99999999999999999999\": Y axis must be a whole number from -32768 to 32767");
    EXPECT_EQ(ErrorOf("x.sff\na.pcx\n1\n\n3\n4\n"), "line 4 \"\": image number must be a whole number from 0 to 65535");
    EXPECT_EQ(ErrorOf("x.sff\na\x97\n1\n2\n3\n4\n").substr(0, 7), "line 2 ");  // a lead byte without its trail
    EXPECT_NE(ErrorOf("\x80\xff.sff\n").find("not valid Shift JIS"), std::string::npos);
    EXPECT_EQ(ErrorOf("x.sff\r\n;c\r\na.pcx\r\n1\r\n2\r\n"),
              "line 3 \"a.pcx\": the input ends before the sprite's X axis");
}

}  // namespace
}  // namespace tarvolin::sprmaker
