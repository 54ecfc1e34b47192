#include <gtest/gtest.h>

#include "base/Codepage.h"
#include "base/MessageKeys.h"
#include "rebuild/ParamText.h"

namespace tarvolin {
namespace {

// Cells in the order name, path, group, item, axis X, axis Y, PalType.
void Add(SpriteTable& t, std::array<std::string, 7> c) {
    SpriteRow r;
    const Column columns[] = {Column::PcxName, Column::PcxPath, Column::GroupNo, Column::ItemNo,
                              Column::AxisX,   Column::AxisY,   Column::PalType};
    for (size_t i = 0; i < c.size(); ++i) r[columns[i]] = c[i];
    t.AddRow(r);
}

SpriteTable WorkedExample() {
    SpriteTable t;
    Add(t, {"fighter_09000_00000.pcx", "", "9000", "0", "0", "0", "0"});
    Add(t, {"fighter_09000_00001.pcx", "", "9000", "1", "0", "0", "0"});
    Add(t, {"fighter_00000_00000.pcx", "", "0", "0", "36", "105", "1"});
    Add(t, {"fighter_00000_00001.pcx", "", "0", "1", "36", "105", "1"});
    Add(t, {"new.pcx", "C:\\art\\", "200", "0", "-3", "90", "0"});
    return t;
}

std::string Text(const SpriteTable& t, const std::string& caption = "fighter.sff") {
    auto r = ParamTextBytes(t, caption);
    EXPECT_TRUE(r.ok());
    return r.ok() ? r.value() : std::string();
}

const std::string kBlock = "#\r\n1\r\n1\r\n";

TEST(ParamText, PaletteBlocksFollowThePlaceAndPalType) {
    // Rows 1 to 3 have a block whatever their PalType; later rows only with PalType 0.
    EXPECT_EQ(Text(WorkedExample()),
              "#\r\n1\r\n2\r\nfighter.sff\r\n" + kBlock + "fighter_09000_00000.pcx\r\n9000\r\n0\r\n0\r\n0\r\n" + kBlock +
                  "fighter_09000_00001.pcx\r\n9000\r\n1\r\n0\r\n0\r\n" + kBlock +
                  "fighter_00000_00000.pcx\r\n0\r\n0\r\n36\r\n105\r\n"
                  "fighter_00000_00001.pcx\r\n0\r\n1\r\n36\r\n105\r\n" +
                  kBlock + "C:\\art\\new.pcx\r\n200\r\n0\r\n-3\r\n90\r\n\r\n");

    // PalType is read as a number: " 0" is 0, "2" is not.
    SpriteTable t = WorkedExample();
    t.SetCell(4, Column::PalType, " 0");
    t.SetCell(5, Column::PalType, "2");
    const std::string n = Text(t);
    EXPECT_NE(n.find("105\r\n" + kBlock + "fighter_00000_00001.pcx"), std::string::npos);
    EXPECT_NE(n.find("105\r\nC:\\art\\new.pcx"), std::string::npos);
}

TEST(ParamText, CellsGoOutInCp932AndACharacterOutsideItOrAControlRefusesTheFile) {
    SpriteTable t;
    Add(t, {"技_00000_00000.pcx", "/作業/", "0", "0", "0", "0", "0"});
    const std::string text = Text(t, "技.sff");
    EXPECT_EQ(text.substr(9, 8), *ToCp932("技.sff\r\n"));
    EXPECT_NE(text.find(*ToCp932("/作業/技_00000_00000.pcx\r\n")), std::string::npos);

    // A name in Shift JIS bytes, as files from Japanese systems come, goes out unchanged;
    // joined on one line with UTF-8 text (which no reading of the line finds again), and
    // bytes that are neither UTF-8 nor CP932, are refused like a character CP932 lacks.
    const std::string sjis = *ToCp932("技");
    t.SetCell(1, Column::PcxName, sjis + "_00000_00000.pcx");
    EXPECT_EQ(ParamTextBytes(t, "x.sff").error().Key, msg::NotCp932);
    t.SetCell(1, Column::PcxPath, "/a/");
    EXPECT_NE(Text(t, sjis + ".sff").find("/a/" + sjis + "_00000_00000.pcx\r\n"), std::string::npos);
    t.SetCell(1, Column::PcxPath, "/\x81/");  // a lead byte alone
    EXPECT_EQ(ParamTextBytes(t, "x.sff").error().Key, msg::NotCp932);

    t.SetCell(1, Column::PcxPath, "/그림/");  // Hangul: not in CP932
    auto s = ParamTextBytes(t, "技.sff");
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.error().Key, msg::NotCp932);
    EXPECT_NE(s.error().Detail.find("line 8"), std::string::npos);

    // So does a control character, in a cell or in the SFF's name, shown as \xNN: a line
    // break would make a line of its own.
    t.SetCell(1, Column::PcxPath, "/a/");
    EXPECT_EQ(ParamTextBytes(t, "kfm\n.sff").error().Detail, "line 4: kfm\\x0A.sff");
    t.SetCell(1, Column::GroupNo, "1\x7F");
    auto control = ParamTextBytes(t, "x.sff");
    ASSERT_FALSE(control.ok());
    EXPECT_EQ(control.error().Key, msg::ControlCharacter);
    EXPECT_EQ(control.error().Detail, "line 9: 1\\x7F");
}

}  // namespace
}  // namespace tarvolin
