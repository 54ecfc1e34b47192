#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/Codepage.h"
#include "base/MessageKeys.h"
#include "rebuild/ParamText.h"
#include "support/TempDir.h"
#include "support/TestData.h"

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

long Lines(const std::string& text) { return static_cast<long>(std::count(text.begin(), text.end(), '\n')); }

const std::string kBlock = "#\r\n1\r\n1\r\n";

TEST(ParamText, WorkedExampleGives42LinesAnd252Bytes) {
    const std::string text = Text(WorkedExample());
    EXPECT_EQ(Lines(text), 42);
    EXPECT_EQ(text.size(), 252u);
    EXPECT_EQ(text, "#\r\n1\r\n2\r\nfighter.sff\r\n" + kBlock + "fighter_09000_00000.pcx\r\n9000\r\n0\r\n0\r\n0\r\n" +
                        kBlock + "fighter_09000_00001.pcx\r\n9000\r\n1\r\n0\r\n0\r\n" + kBlock +
                        "fighter_00000_00000.pcx\r\n0\r\n0\r\n36\r\n105\r\n"
                        "fighter_00000_00001.pcx\r\n0\r\n1\r\n36\r\n105\r\n" +
                        kBlock + "C:\\art\\new.pcx\r\n200\r\n0\r\n-3\r\n90\r\n\r\n");
}

TEST(ParamText, PaletteBlocksFollowThePlaceAndPalType) {
    SpriteTable one;
    Add(one, {"a.pcx", "", "1", "2", "-3", "-4", "1"});
    EXPECT_EQ(Text(one), "#\r\n1\r\n2\r\nfighter.sff\r\n" + kBlock + "a.pcx\r\n1\r\n2\r\n-3\r\n-4\r\n\r\n");
    EXPECT_EQ(Lines(Text(one)), 13);

    // Six rows of PalType 1: rows 1-3 have a block, the later ones none.
    SpriteTable shared;
    for (int i = 0; i < 6; ++i) Add(shared, {"s.pcx", "", "0", std::to_string(i), "0", "0", "1"});
    EXPECT_EQ(Lines(Text(shared)), 4 + 3 * 8 + 3 * 5 + 1);

    // After deleting row 1 the former row 4 stands at place 3 and gets a block.
    SpriteTable t = WorkedExample();
    t.RemoveRow(1);
    const std::string after = Text(t);
    EXPECT_NE(after.find("105\r\n" + kBlock + "fighter_00000_00001.pcx"), std::string::npos);
    EXPECT_EQ(Lines(after), 4 + 4 * 8 + 1);

    // PalType is read as a number: " 0" is 0, "2" is not.
    t = WorkedExample();
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

    test::TempDir dir;
    const std::string path = dir / "out_SFF.txt";
    test::WriteFile(path, {'o', 'l', 'd'});
    t.SetCell(1, Column::PcxPath, "/그림/");  // Hangul: not in CP932
    auto s = WriteParamText(path, t, "技.sff");
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.error().Key, msg::NotCp932);
    EXPECT_EQ(s.error().File, path);
    EXPECT_NE(s.error().Detail.find("line 8"), std::string::npos);
    EXPECT_EQ(test::ReadFile(path), (std::vector<uint8_t>{'o', 'l', 'd'}));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);

    // So does a control character, shown as \xNN: a line break would make a line of its own.
    t.SetCell(1, Column::PcxPath, "/a/");
    t.SetCell(1, Column::GroupNo, "1\x7F");
    auto control = ParamTextBytes(t, "x.sff");
    ASSERT_FALSE(control.ok());
    EXPECT_EQ(control.error().Key, msg::ControlCharacter);
    EXPECT_EQ(control.error().Detail, "line 9: 1\\x7F");
}

}  // namespace
}  // namespace tarvolin
