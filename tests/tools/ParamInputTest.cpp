// The parameter-text reader on the hand-written forms the batch never produces.
#include <gtest/gtest.h>

#include "ParamInput.h"
#include "base/Codepage.h"
#include "base/MessageKeys.h"

namespace tarvolin::sprmaker {
namespace {

BuildPlan Parse(std::string_view text) {
    auto r = ParseParamText(text);
    EXPECT_TRUE(r.ok()) << (r.ok() ? "" : r.error().Detail);
    return r.ok() ? r.value() : BuildPlan{};
}

// "file group,item x,y", then what its option blocks set.
std::string Show(const SpriteEntry& s) {
    return s.File + " " + std::to_string(s.GroupNo) + "," + std::to_string(s.ItemNo) + " " + std::to_string(s.AxisX) +
           "," + std::to_string(s.AxisY) + (s.LinkDuplicate ? "" : " unlinked") +
           (s.OwnPalette ? (*s.OwnPalette ? " own" : " previous") : "");
}

TEST(ParamInput, HandWrittenFormsCommentsOptionsAndNumbers) {
    const BuildPlan p = Parse(
        "; a comment before the name\n"
        "#\nnoise\n1\nmore noise\n1\n"  // individual palette, with lines passed over
        "out/x.sff\n"
        ";first\n"
        "A.pcx\n  12\n+3\n\t-7 \n;comment between numbers\n8\n"
        "#\n2\n2\n"  // don't link this duplicate
        "a.PCX\n1\n1\n0\n0\n"
        "#\n1\n2\n"  // previous sprite's palette
        "a.pcx\n65535\n65535\n32767\n-32768");  // ends without a line end
    EXPECT_FALSE(p.SharedPalette);
    EXPECT_EQ(p.OutputName, "out/x.sff");
    ASSERT_EQ(p.Sprites.size(), 3u);
    EXPECT_EQ(Show(p.Sprites[0]), "A.pcx 12,3 -7,8");
    EXPECT_EQ(Show(p.Sprites[1]), "a.PCX 1,1 0,0 unlinked");
    EXPECT_EQ(Show(p.Sprites[2]), "a.pcx 65535,65535 32767,-32768 previous");

    // Names are CP932 and come out as the file system's UTF-8.
    const BuildPlan j = Parse(*ToCp932("技.sff\r\n作業/表.pcx\r\n1\r\n2\r\n3\r\n4\r\n"));
    EXPECT_EQ(j.OutputName, "技.sff");
    ASSERT_EQ(j.Sprites.size(), 1u);
    EXPECT_EQ(j.Sprites[0].File, "作業/表.pcx");
}

// CR LF, LF and a lone CR each end a line, so CR CR is two. An empty line ends the
// sprites; lines with text after it (a comment counts, blanks don't) are counted.
TEST(ParamInput, LineEndsAndTheEmptyLineThatEndsTheSprites) {
    const struct { const char* Text; long EndLine; long NotRead; } cases[] = {
        {"x.sff\r\na.pcx\r\n1\r\n2\r\n-3\r\n4\r\n\r\n", 7, 0},
        {"x.sff\ra.pcx\r1\r2\r-3\r4\r\r", 7, 0},
        {"x.sff\r\na.pcx\n1\r2\r\n-3\n4\r", 0, 0},
        {"x.sff\na.pcx\n1\n2\n-3\n4", 0, 0},
        {"x.sff\ra.pcx\r1\r2\r-3\r4\r\rb.pcx\r1\r2\r3\r4\r", 7, 5},
        {"x.sff\na.pcx\n1\n2\n-3\n4\n\nb.pcx\n \t\n;c\n\n1\n", 7, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Text);
        const BuildPlan p = Parse(c.Text);
        EXPECT_EQ(p.OutputName, "x.sff");
        ASSERT_EQ(p.Sprites.size(), 1u);
        EXPECT_EQ(Show(p.Sprites[0]), "a.pcx 1,2 -3,4");
        EXPECT_EQ(p.EndLine, c.EndLine);
        EXPECT_EQ(p.LinesNotRead, c.NotRead);
    }
}

// Every refusal names the line, and its text where it has one; a text without an output name
// or sprite names the line where it had to stand.
TEST(ParamInput, EveryRefusalNamesItsLine) {
    const std::string none = "an SFF needs at least one sprite; nothing is made";
    const std::string group = "group number must be a whole number from 0 to 65535";
    const std::string image = "image number must be a whole number from 0 to 65535";
    const std::string axis = " axis must be a whole number from -32768 to 32767";
    const std::pair<std::string, std::string> cases[] = {
        {"x.sff\na.pcx\n1\nabc\n3\n4\n", "line 4 \"abc\": " + image},
        {"x.sff\na.pcx\n65536\n0\n3\n4\n", "line 3 \"65536\": " + group},
        {"x.sff\na.pcx\n-1\n0\n3\n4\n", "line 3 \"-1\": " + group},
        {"x.sff\na.pcx\n1\n0\n32768\n4\n", "line 5 \"32768\": X" + axis},
        {"x.sff\na.pcx\n1\n0\n3\n99999999999999999999\n", "line 6 \"99999999999999999999\": Y" + axis},
        {"x.sff\na.pcx\n1\n\n3\n4\n", "line 4 \"\": " + image},
        {"x.sff\na.pcx\n12abc\n0\n3\n4\n", "line 3 \"12abc\": " + group},
        {"x.sff\ra.pcx\r1\r0x10\r3\r4\r", "line 4 \"0x10\": " + image},
        {"x.sff\na.pcx\n1\n0\n5.9\n4\n", "line 5 \"5.9\": X" + axis},
        {"x.sff\na.pcx\n1\n0\n3\n- 4\n", "line 6 \"- 4\": Y" + axis},
        {"x.sff\na.pcx\n1\n0\n+\n4\n", "line 5 \"+\": X" + axis},
        {"x.sff\na.pcx\n1 2\n0\n3\n4\n", "line 3 \"1 2\": " + group},
        {"x.sff\na.pcx\n1\n0\n3\n4 ;foot\n", "line 6 \"4 ;foot\": Y" + axis},
        {"x.sff\r\n;c\r\na.pcx\r\n1\r\n2\r\n", "line 3 \"a.pcx\": the input ends before the sprite's X axis"},
        {"x.sff\na\x97\n1\n2\n3\n4\n", "line 2 "},  // a lead byte without its trail: only the start is pinned
        {"\x80\xff.sff\n", "line 1 "},
        {"", "line 1: the input ends before the name of the SFF to make; nothing is made"},
        {";only a comment\r\n", "line 2: the input ends before the name of the SFF to make; nothing is made"},
        {"#\n1\n2\n", "line 4: the input ends before the name of the SFF to make; nothing is made"},
        {"\r\nx.sff\r\n",
         "line 1 \"\": an empty line stands where the name of the SFF to make must be; nothing is made (not read: 1 "
         "line with text after it)"},
        {"x.sff\n", "line 2: the input ends before the first sprite: " + none},
        {"x.sff\r#\r1\r", "line 4: the input ends before the first sprite: " + none},
        {"x.sff\n;c\n\n", "line 3 \"\": the empty line ends the list before its first sprite: " + none},
        {"x.sff\n\na.pcx\n1\n2\n3\n4\n",
         "line 2 \"\": the empty line ends the list before its first sprite: " + none +
             " (not read: 5 lines with text after it)"},
    };
    for (const auto& [text, says] : cases) {
        SCOPED_TRACE(text);
        auto r = ParseParamText(text);
        ASSERT_FALSE(r.ok());
        EXPECT_EQ(r.error().Key, msg::ParamLine);
        EXPECT_EQ(says.size() > 7 ? r.error().Detail : r.error().Detail.substr(0, 7), says);
    }
    EXPECT_NE(ParseParamText("\x80\xff.sff\n").error().Detail.find("not valid Shift JIS"), std::string::npos);
}

}  // namespace
}  // namespace tarvolin::sprmaker
