#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "config/MessageCatalog.h"
#include "rebuild/ParamText.h"
#include "sff/Codepage.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

SpriteRow Row(std::string name, std::string path, std::string group, std::string item, std::string ax,
              std::string ay, std::string palType) {
    SpriteRow r;
    r[Column::PcxName] = std::move(name);
    r[Column::PcxPath] = std::move(path);
    r[Column::GroupNo] = std::move(group);
    r[Column::ItemNo] = std::move(item);
    r[Column::AxisX] = std::move(ax);
    r[Column::AxisY] = std::move(ay);
    r[Column::PalType] = std::move(palType);
    return r;
}

SpriteTable WorkedExample() {
    SpriteTable t;
    t.AddRow(Row("fighter_09000_00000.pcx", "", "9000", "0", "0", "0", "0"));
    t.AddRow(Row("fighter_09000_00001.pcx", "", "9000", "1", "0", "0", "0"));
    t.AddRow(Row("fighter_00000_00000.pcx", "", "0", "0", "36", "105", "1"));
    t.AddRow(Row("fighter_00000_00001.pcx", "", "0", "1", "36", "105", "1"));
    t.AddRow(Row("new.pcx", "C:\\art\\", "200", "0", "-3", "90", "0"));
    return t;
}

std::string Text(const SpriteTable& t, const std::string& caption = "fighter.sff") {
    auto r = ParamTextBytes(t, caption);
    EXPECT_TRUE(r.ok());
    return r.ok() ? r.value() : std::string();
}

long Lines(const std::string& text) { return static_cast<long>(std::count(text.begin(), text.end(), '\n')); }

TEST(ParamText, WorkedExampleGives42LinesAnd252Bytes) {
    const std::string text = Text(WorkedExample());
    EXPECT_EQ(Lines(text), 42);
    EXPECT_EQ(text.size(), 252u);
    const std::string block = "#\r\n1\r\n1\r\n";
    EXPECT_EQ(text, "#\r\n1\r\n2\r\nfighter.sff\r\n" + block +
                        "fighter_09000_00000.pcx\r\n9000\r\n0\r\n0\r\n0\r\n" + block +
                        "fighter_09000_00001.pcx\r\n9000\r\n1\r\n0\r\n0\r\n" + block +
                        "fighter_00000_00000.pcx\r\n0\r\n0\r\n36\r\n105\r\n"
                        "fighter_00000_00001.pcx\r\n0\r\n1\r\n36\r\n105\r\n" +
                        block + "C:\\art\\new.pcx\r\n200\r\n0\r\n-3\r\n90\r\n\r\n");
}

TEST(ParamText, PaletteBlocksFollowThePlaceAndPalType) {
    SpriteTable one;
    one.AddRow(Row("a.pcx", "", "1", "2", "-3", "-4", "1"));
    EXPECT_EQ(Text(one), "#\r\n1\r\n2\r\nfighter.sff\r\n#\r\n1\r\n1\r\na.pcx\r\n1\r\n2\r\n-3\r\n-4\r\n\r\n");
    EXPECT_EQ(Lines(Text(one)), 13);

    // Three rows of PalType 1: each has a block; from row 4 on the blocks stop.
    SpriteTable shared;
    for (int i = 0; i < 6; ++i) shared.AddRow(Row("s.pcx", "", "0", std::to_string(i), "0", "0", "1"));
    EXPECT_EQ(Lines(Text(shared)), 4 + 3 * 8 + 3 * 5 + 1);

    // After deleting row 1 the former row 4 stands at place 3 and gets a block.
    SpriteTable t = WorkedExample();
    t.RemoveRow(1);
    const std::string after = Text(t);
    EXPECT_NE(after.find("105\r\n#\r\n1\r\n1\r\nfighter_00000_00001.pcx"), std::string::npos);
    EXPECT_EQ(Lines(after), 4 + 8 + 8 + 8 + 8 + 1);

    // PalType is read as a number: " 0" is 0, "2" is not.
    SpriteTable numbers = WorkedExample();
    numbers.SetCell(4, Column::PalType, " 0");
    numbers.SetCell(5, Column::PalType, "2");
    const std::string n = Text(numbers);
    EXPECT_NE(n.find("105\r\n#\r\n1\r\n1\r\nfighter_00000_00001.pcx"), std::string::npos);
    EXPECT_NE(n.find("105\r\nC:\\art\\new.pcx"), std::string::npos);
}

TEST(ParamText, CellsGoOutInCp932AndACharacterOutsideItRefusesTheFile) {
    SpriteTable t;
    t.AddRow(Row("技_00000_00000.pcx", "/作業/", "0", "0", "0", "0", "0"));
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
}

TEST(ParamText, WriteReplacesALongerFileAndFailsInAMissingFolder) {
    test::TempDir dir;
    const std::string path = dir / "fighter_SFF.txt";
    test::WriteFile(path, std::vector<uint8_t>(1000, 'x'));
    ASSERT_TRUE(WriteParamText(path, WorkedExample(), "fighter.sff").ok());
    EXPECT_EQ(test::ReadFile(path).size(), 252u);

    const std::string missing = dir / "gone/fighter_SFF.txt";
    auto s = WriteParamText(missing, WorkedExample(), "fighter.sff");
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.error().Key, msg::WriteFailed);
    EXPECT_EQ(s.error().File, missing);
    EXPECT_FALSE(std::filesystem::exists(dir / "gone"));
}

}  // namespace
}  // namespace tarvolin
