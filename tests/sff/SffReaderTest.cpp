// OpenSff on synthetic files made with the project's writer: the worked four-subfile case,
// numbering, keys, links, the palette owner, and every refusal.
#include <gtest/gtest.h>

#include "base/Bytes.h"
#include "base/MessageKeys.h"
#include "config/AppIni.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::MakeSprite;

struct Opened {
    SffState State;
    SpriteTable Table;
    int Asked = 0;
};

// Opens bytes as `name`, answering `yes` to the palette-mode warning.
Result<OpenReport> Open(Opened& o, std::vector<uint8_t> bytes, const std::string& name = "fighter.sff",
                         bool yes = true) {
    static const AppIni ini = DefaultAppIni();
    auto ask = [&](const std::string&, int) {
        ++o.Asked;
        return yes;
    };
    return OpenSffBytes(std::move(bytes), "/tmp/" + name, name, o.State, o.Table, ini, ask);
}

std::vector<std::string> ColumnOf(const SpriteTable& t, Column c) {
    std::vector<std::string> v;
    for (int i = 1; i <= t.RowCount(); ++i) v.push_back(t.Cell(i, c));
    return v;
}

TEST(SffReader, WorkedFourSubfileCase) {
    std::vector<SffSprite> sprites = {MakeSprite(9000, 0, 0, true), MakeSprite(0, 0, 0, true),
                                      MakeSprite(0, 1, 1, false), MakeSprite(0, 2, 1, false)};
    sprites[3].Data.clear();
    sprites[3].LinkIndex = 2;
    const std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, sprites);
    Opened o;
    ASSERT_TRUE(Open(o, bytes));
    EXPECT_EQ(o.Asked, 0);

    EXPECT_EQ(ColumnOf(o.Table, Column::SortNo), (std::vector<std::string>{"01", "02", "03", "04"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::GroupNo), (std::vector<std::string>{"9000", "0", "0", "0"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::ItemNo), (std::vector<std::string>{"0", "0", "1", "2"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::PalType), (std::vector<std::string>{"0", "1", "1", "1"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::SortKey),
              (std::vector<std::string>{" 0000000000", "00000000000", "00000000001", "00000000002"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::PPos), (std::vector<std::string>{"0", "1", "2", "3"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::PcxName),
              (std::vector<std::string>{"fighter_09000_00000.pcx", "fighter_00000_00000.pcx",
                                        "fighter_00000_00001.pcx", "fighter_00000_00001.pcx"}));
    EXPECT_EQ(ColumnOf(o.Table, Column::PcxPath), (std::vector<std::string>(4, "")));
    EXPECT_EQ(o.Table.Selected(), 1);

    // Record 1 owns the palette: its last 768 bytes, and its range shortened by them.
    const SubfileRecord& owner = o.State.Subfiles[1];
    EXPECT_EQ(owner.PalFlag, 1);
    EXPECT_EQ(owner.DataEnd, owner.NextOffset - 1 - 768);
    EXPECT_TRUE(std::equal(o.State.SharedPalette.begin(), o.State.SharedPalette.end(),
                           bytes.begin() + owner.NextOffset - 768));
    // The owner cut out with the shared palette behind it is the file's bytes again.
    EXPECT_EQ(CutSubfile(o.State, owner), sprites[1].Data);
    // Record 3 took record 2's range and name.
    EXPECT_EQ(o.State.Subfiles[3].DataStart, o.State.Subfiles[2].DataStart);
    EXPECT_EQ(o.State.Subfiles[3].DataEnd, o.State.Subfiles[2].DataEnd);
    EXPECT_EQ(o.State.SffBaseName, "fighter");
    EXPECT_EQ(o.State.ImageCaption, "4");
    EXPECT_EQ(o.State.SffNameCaption, "fighter.sff");
}

TEST(SffReader, SortNoWidthFollowsTheRowCount) {
    for (int n : {9, 10}) {
        std::vector<SffSprite> sprites;
        for (int i = 0; i < n; ++i) sprites.push_back(MakeSprite(1, static_cast<uint16_t>(i), 0, true));
        Opened o;
        ASSERT_TRUE(Open(o, EncodeSff(kSharedPaletteMode, sprites)));
        EXPECT_EQ(o.Table.Cell(1, Column::SortNo), n == 9 ? "01" : "001");
        EXPECT_EQ(o.Table.Cell(n, Column::SortNo), n == 9 ? "09" : "010");
    }
}

TEST(SffReader, RowsComeInThreeBlocksBySortKey) {
    // own-palette sprites after shared ones, 9000/0-1 first, 9000/2 an ordinary key
    // record 0 owns the palette (flag 0 followed by flag 1) and so joins the shared block
    std::vector<SffSprite> sprites = {MakeSprite(5, 0, 0, true), MakeSprite(0, 5, 1, false),
                                      MakeSprite(9000, 2, 1, false), MakeSprite(9000, 1, 0, true),
                                      MakeSprite(200, 12, 0, true)};
    Opened o;
    ASSERT_TRUE(Open(o, EncodeSff(kSharedPaletteMode, sprites)));
    EXPECT_EQ(ColumnOf(o.Table, Column::SortKey),
              (std::vector<std::string>{" 0000000001", "00000000005", "00000500000", "00900000002",
                                        "10020000012"}));
    EXPECT_EQ(SortKeyFor(200, 12, 0), "10020000012");
    EXPECT_EQ(SortKeyFor(9000, 1, 1), " 0000000001");
    EXPECT_EQ(SortKeyFor(1, 2, 3), "-20000100002");  // a flag other than 0/1 keeps its sign
}

TEST(SffReader, ChainShorterOrLongerThanTheHeaderCount) {
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false),
                                      MakeSprite(1, 2, 1, false)};
    std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, sprites);

    // Header says 5: the walk ends with the chain, the rest stay empty rows.
    std::vector<uint8_t> more = bytes;
    WriteU32(more.data() + 20, 5);
    Opened o;
    auto opened = Open(o, more);
    ASSERT_TRUE(opened);
    ASSERT_EQ(o.Table.RowCount(), 5);
    EXPECT_EQ(o.State.ImageCaption, "5");
    EXPECT_EQ(o.Table.Cell(5, Column::SortKey), "10000000000");
    EXPECT_EQ(o.Table.Cell(5, Column::GroupNo), "0");
    EXPECT_EQ(o.Table.Cell(5, Column::PcxName), "");
    EXPECT_TRUE(CutSubfile(o.State, o.State.Subfiles[4]).empty());  // no data, and none borrowed
    // One notice says so, with the count.
    ASSERT_EQ(opened.value().Notices.size(), 1u);
    const Error& notice = opened.value().Notices[0];
    EXPECT_EQ(notice.Key, msg::SffNoData);
    EXPECT_EQ(notice.File, "/tmp/fighter.sff");
    EXPECT_NE(notice.Detail.find("after 3 of 5 images: 2 row(s) have no picture"), std::string::npos) << notice.Detail;

    // The same with a next offset of 0 ending the chain; its data run for the length field.
    std::vector<uint8_t> zeroEnd = more;
    const size_t lastHeader = static_cast<size_t>(o.State.Subfiles[2].DataStart - 32);
    WriteU32(zeroEnd.data() + lastHeader, 0);
    Opened z;
    ASSERT_TRUE(Open(z, zeroEnd));
    EXPECT_EQ(z.State.Subfiles[2].DataEnd, static_cast<int32_t>(zeroEnd.size()) - 1);

    // Header says 2: the third subfile is never looked at, and nothing is missing.
    std::vector<uint8_t> fewer = bytes;
    WriteU32(fewer.data() + 20, 2);
    Opened f;
    auto fewerOpened = Open(f, fewer);
    ASSERT_TRUE(fewerOpened);
    EXPECT_EQ(f.Table.RowCount(), 2);
    EXPECT_TRUE(fewerOpened.value().Notices.empty());
}

// The palette a sprite's data end in, for one made by MakeSprite with its palette.
std::vector<uint8_t> PaletteOf(const SffSprite& withPalette) {
    return std::vector<uint8_t>(withPalette.Data.end() - 768, withPalette.Data.end());
}
std::vector<uint8_t> LastPaletteOf(const std::vector<uint8_t>& cut) {
    return cut.size() < 768 ? cut : std::vector<uint8_t>(cut.end() - 768, cut.end());
}

TEST(SffReader, LinksAreFollowedOnlyBySubfilesWithoutDataOfTheirOwn) {
    // 2: data and a stale link to 1; 3: data and a link beyond the table; 4: no data and a
    // link beyond the table; 5: no data, linked to 2.
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false),
                                      MakeSprite(1, 2, 1, false, 0, 0, 6, 2), MakeSprite(1, 3, 1, false, 0, 0, 2, 6),
                                      MakeSprite(1, 4, 0, false), MakeSprite(1, 5, 1, false)};
    sprites[2].LinkIndex = 1;
    sprites[3].LinkIndex = 900;
    sprites[4].Data.clear();
    sprites[4].LinkIndex = 901;
    sprites[5].Data.clear();
    sprites[5].LinkIndex = 2;
    const std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, sprites);
    Opened o;
    auto opened = Open(o, bytes);
    ASSERT_TRUE(opened) << opened.error().Detail;
    const SubfileTable& r = o.State.Subfiles;
    const std::vector<uint8_t> shared = PaletteOf(sprites[0]);
    for (size_t i : {2u, 3u}) {
        SCOPED_TRACE(i);
        EXPECT_EQ(r[i].LinkIndex, 0);
        auto own = sprites[i].Data;
        own.insert(own.end(), shared.begin(), shared.end());
        EXPECT_EQ(CutSubfile(o.State, r[i]), own);
        EXPECT_EQ(r[i].PcxName, "fighter_00001_0000" + std::to_string(i) + ".pcx");
    }
    EXPECT_EQ(r[4].LinkIndex, 0);
    EXPECT_TRUE(CutSubfile(o.State, r[4]).empty());  // an empty sprite, flag 0: nothing at all
    EXPECT_EQ(r[5].LinkIndex, 2);
    EXPECT_EQ(CutSubfile(o.State, r[5]), CutSubfile(o.State, r[2]));
    EXPECT_EQ(r[5].PcxName, r[2].PcxName);

    // One notice for the two indices beyond the table; the stale one is read silently.
    ASSERT_EQ(opened.value().Notices.size(), 1u);
    const Error& notice = opened.value().Notices[0];
    EXPECT_EQ(notice.Key, msg::SffLinkIgnored);
    EXPECT_EQ(notice.File, "/tmp/fighter.sff");
    EXPECT_NE(notice.Detail.find("2 subfile(s)"), std::string::npos) << notice.Detail;
    EXPECT_NE(notice.Detail.find("image count 6"), std::string::npos) << notice.Detail;
    EXPECT_NE(notice.Detail.find("subfile(s) 3, 4"), std::string::npos) << notice.Detail;

    // Many such links: the notice names the first five.
    std::vector<SffSprite> many = {MakeSprite(2, 0, 0, true)};
    for (uint16_t i = 1; i <= 7; ++i) {
        many.push_back(MakeSprite(2, i, 0, true));
        many.back().LinkIndex = 40000;
    }
    Opened m;
    auto manyOpened = Open(m, EncodeSff(kSharedPaletteMode, many));
    ASSERT_TRUE(manyOpened);
    ASSERT_EQ(manyOpened.value().Notices.size(), 1u);
    EXPECT_NE(manyOpened.value().Notices[0].Detail.find("7 subfile(s)"), std::string::npos);
    EXPECT_NE(manyOpened.value().Notices[0].Detail.find("subfile(s) 1, 2, 3, 4, 5, ..."), std::string::npos)
        << manyOpened.value().Notices[0].Detail;
}

TEST(SffReader, AFlagOneSpriteIsCutWithThePaletteInForceInTheFile) {
    // 9000,1 owns the shared palette; 7,0 stores another that 7,1 to 7,4 take; 7,2 still
    // carries an old palette of its own, which the engine passes over; 7,3 and 7,4 are
    // linked to 7,1, with flag 1 and 0.
    std::vector<SffSprite> sprites = {MakeSprite(9000, 0, 0, true), MakeSprite(9000, 1, 0, true),
                                      MakeSprite(0, 0, 1, false),   MakeSprite(7, 0, 0, true),
                                      MakeSprite(7, 1, 1, false),   MakeSprite(7, 2, 1, true),
                                      MakeSprite(7, 3, 1, false),   MakeSprite(7, 4, 0, false)};
    for (size_t i : {6u, 7u}) {
        sprites[i].Data.clear();
        sprites[i].LinkIndex = 4;
    }
    Opened o;
    ASSERT_TRUE(Open(o, EncodeSff(kSharedPaletteMode, sprites)));
    const SubfileTable& r = o.State.Subfiles;
    const auto shared = PaletteOf(sprites[1]);
    const auto seven = PaletteOf(sprites[3]);
    EXPECT_EQ(std::vector<uint8_t>(o.State.SharedPalette.begin(), o.State.SharedPalette.end()), shared);
    EXPECT_EQ(CutSubfile(o.State, r[0]), sprites[0].Data);
    EXPECT_EQ(CutSubfile(o.State, r[1]), sprites[1].Data);
    EXPECT_EQ(LastPaletteOf(CutSubfile(o.State, r[2])), shared);
    EXPECT_EQ(CutSubfile(o.State, r[3]), sprites[3].Data);
    auto sevenOne = sprites[4].Data;
    sevenOne.insert(sevenOne.end(), seven.begin(), seven.end());
    EXPECT_EQ(CutSubfile(o.State, r[4]), sevenOne);
    auto sevenTwo = sprites[5].Data;  // its own old palette, then the one in force
    sevenTwo.insert(sevenTwo.end(), seven.begin(), seven.end());
    EXPECT_EQ(CutSubfile(o.State, r[5]), sevenTwo);
    EXPECT_EQ(CutSubfile(o.State, r[6]), sevenOne);
    EXPECT_EQ(CutSubfile(o.State, r[7]), sevenOne);

    // A first subfile with flag 1 takes its own last 768 bytes, as the engine does: nothing
    // goes behind them. The flag-1 sprite after the owner takes the owner's.
    std::vector<SffSprite> first = {MakeSprite(1, 0, 1, true), MakeSprite(1, 1, 0, true), MakeSprite(1, 2, 1, false)};
    Opened f;
    ASSERT_TRUE(Open(f, EncodeSff(kSharedPaletteMode, first)));
    EXPECT_EQ(CutSubfile(f.State, f.State.Subfiles[0]), first[0].Data);
    EXPECT_EQ(LastPaletteOf(CutSubfile(f.State, f.State.Subfiles[2])), PaletteOf(first[1]));

    // No palette stored before a flag-1 sprite (the first sprite is empty): it takes the
    // shared one, the owner's behind it.
    std::vector<SffSprite> none = {MakeSprite(3, 0, 1, false), MakeSprite(3, 1, 1, false), MakeSprite(3, 2, 0, true),
                                   MakeSprite(3, 3, 1, false)};
    none[0].Data.clear();
    Opened n;
    ASSERT_TRUE(Open(n, EncodeSff(kSharedPaletteMode, none)));
    EXPECT_TRUE(CutSubfile(n.State, n.State.Subfiles[0]).empty());
    EXPECT_EQ(LastPaletteOf(CutSubfile(n.State, n.State.Subfiles[1])), PaletteOf(none[2]));
}

TEST(SffReader, LinksResolveBeforeTheOwnerIsShortened) {
    // 0: owner (flag 0), 1: flag 1, 2: linked to 0, 3: linked to 4 (later: still empty), 4: flag 1
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false),
                                      MakeSprite(1, 2, 1, false), MakeSprite(1, 3, 1, false),
                                      MakeSprite(1, 4, 1, false)};
    sprites[2].Data.clear();
    sprites[2].LinkIndex = 0;  // index 0 is "no link": stays its own empty range
    sprites[3].Data.clear();
    sprites[3].LinkIndex = 4;
    Opened o;
    ASSERT_TRUE(Open(o, EncodeSff(kSharedPaletteMode, sprites)));
    const auto& r = o.State.Subfiles;
    EXPECT_EQ(r[2].DataEnd, r[2].DataStart - 1);       // not linked, empty
    EXPECT_EQ(r[3].DataStart, r[4].DataStart);         // later record: its own values at that moment
    EXPECT_EQ(r[3].PcxName, "fighter_00001_00004.pcx");

    // A sprite linked to the owner keeps the range with the palette bytes still in it.
    std::vector<SffSprite> s2 = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 0, true), MakeSprite(1, 2, 1, false),
                                 MakeSprite(1, 3, 1, false)};
    s2[3].Data.clear();
    s2[3].LinkIndex = 1;
    Opened p;
    ASSERT_TRUE(Open(p, EncodeSff(kSharedPaletteMode, s2)));
    EXPECT_EQ(p.State.Subfiles[1].DataEnd + 768, p.State.Subfiles[3].DataEnd);
    EXPECT_EQ(p.Table.Cell(4, Column::PPos), "0");     // record 0 keeps its own palette: last block
    EXPECT_EQ(p.Table.Cell(4, Column::PalType), "0");
}

TEST(SffReader, OwnerShorterThanAPaletteKeepsItsBytes) {
    // A first sprite stored without room for a palette behind its picture, as sprmaker.exe
    // stores such a file: the shared palette is the 768 bytes before its end, and the
    // sprite still cuts out as its own bytes rather than as those 768.
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, false, 0, 0, 20, 12), MakeSprite(1, 1, 1, false)};
    const size_t ownerEnd = 512 + 32 + sprites[0].Data.size();
    ASSERT_LT(sprites[0].Data.size(), 768u);
    ASSERT_GE(ownerEnd, 768u);
    const std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, sprites);
    Opened o;
    ASSERT_TRUE(Open(o, bytes));
    const SubfileRecord& owner = o.State.Subfiles[0];
    EXPECT_EQ(owner.PalFlag, 0);
    EXPECT_EQ(CutSubfile(o.State, owner), sprites[0].Data);
    const auto palette = bytes.begin() + static_cast<long>(ownerEnd - 768);
    EXPECT_TRUE(std::equal(o.State.SharedPalette.begin(), o.State.SharedPalette.end(), palette));
    std::vector<uint8_t> second = sprites[1].Data;
    second.insert(second.end(), palette, palette + 768);
    EXPECT_EQ(CutSubfile(o.State, o.State.Subfiles[1]), second);
}

TEST(SffReader, RepeatedNumbersGetFilesOfTheirOwn) {
    // 1,0 three times with data of its own, and once linked to the second of them.
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 0, 0, true, 0, 0, 5, 5),
                                      MakeSprite(1, 1, 1, false), MakeSprite(1, 0, 1, false), MakeSprite(1, 0, 1, false)};
    sprites[4].Data.clear();
    sprites[4].LinkIndex = 1;
    Opened o;
    ASSERT_TRUE(Open(o, EncodeSff(kSharedPaletteMode, sprites)));
    std::vector<std::string> names;
    for (const SubfileRecord& r : o.State.Subfiles) names.push_back(r.PcxName);
    EXPECT_EQ(names, (std::vector<std::string>{"fighter_00001_00000.pcx", "fighter_00001_00000_2.pcx",
                                               "fighter_00001_00001.pcx", "fighter_00001_00000_3.pcx",
                                               "fighter_00001_00000_2.pcx"}));
}

TEST(SffReader, PaletteOwnerRules) {
    auto ownerOf = [](std::vector<uint8_t> flags) {
        std::vector<SffSprite> sprites;
        for (size_t i = 0; i < flags.size(); ++i) sprites.push_back(MakeSprite(2, static_cast<uint16_t>(i), flags[i], true));
        Opened o;
        EXPECT_TRUE(Open(o, EncodeSff(kSharedPaletteMode, sprites)));
        int owner = -1;
        for (size_t i = 0; i < o.State.Subfiles.size(); ++i)
            if (o.State.Subfiles[i].DataEnd == o.State.Subfiles[i].NextOffset - 1 - 768) owner = static_cast<int>(i);
        return owner;
    };
    EXPECT_EQ(ownerOf({0, 0, 1, 1}), 1);
    EXPECT_EQ(ownerOf({1, 1, 1}), 0);
    EXPECT_EQ(ownerOf({0, 0, 0}), 0);
    EXPECT_EQ(ownerOf({0, 2, 0, 1}), 2);  // flag 2 counts as not 0
}

TEST(SffReader, BaseNameCutsFourCharacters) {
    std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, {MakeSprite(1, 1, 0, true)});
    for (auto [name, base] : std::vector<std::pair<std::string, std::string>>{
             {"a.b.sff", "a.b"}, {"sprites", "spr"}, {"キャラ絵.sff", "キャラ絵"}, {"abcd", ""}}) {
        Opened o;
        ASSERT_TRUE(Open(o, bytes, name)) << name;
        EXPECT_EQ(o.State.SffBaseName, base);
        EXPECT_EQ(o.Table.Cell(1, Column::PcxName), base + "_00001_00001.pcx");
    }
}

TEST(SffReader, PaletteModeWarningAsksAndNoEmptiesTheTable) {
    std::vector<uint8_t> good = EncodeSff(kSharedPaletteMode, {MakeSprite(1, 1, 0, true)});
    std::vector<uint8_t> individual = EncodeSff(kIndividualPaletteMode, {MakeSprite(1, 1, 0, true), MakeSprite(1, 2, 0, true)});
    Opened o;
    ASSERT_TRUE(Open(o, good));
    auto declined = Open(o, individual, "fighter.sff", false);
    ASSERT_TRUE(declined);
    EXPECT_EQ(declined.value().Outcome, OpenOutcome::Declined);
    EXPECT_EQ(o.Asked, 1);
    EXPECT_EQ(o.Table.RowCount(), 0);
    EXPECT_EQ(o.State.SffNameCaption, "");
    EXPECT_EQ(o.State.ImageCaption, "");

    auto accepted = Open(o, individual, "fighter.sff", true);
    ASSERT_TRUE(accepted);
    EXPECT_EQ(accepted.value().Outcome, OpenOutcome::Opened);
    EXPECT_EQ(o.Table.RowCount(), 2);
    EXPECT_EQ(o.State.Subfiles[0].PalFlag, 1);  // record 0 becomes the owner
    EXPECT_EQ(PaletteModeWarning(DefaultAppIni()),
              "このSFFファイルは共有パレットモードではありません。\r\nこのSFFを正しくデコードすることは出来ません。"
              "\r\n\r\nデコード結果から、正しくSFFを再構築出来る保証はありません。\r\n処理を続行しますか？");
}

TEST(SffReader, RefusalsNameTheFileAndChangeNothing) {
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false),
                                      MakeSprite(1, 2, 1, false)};
    const std::vector<uint8_t> good = EncodeSff(kSharedPaletteMode, sprites);
    const size_t second = 512 + 32 + sprites[0].Data.size();  // header of subfile 1

    auto patched = [&](size_t at, uint32_t v) {
        std::vector<uint8_t> b = good;
        WriteU32(b.data() + at, v);
        return b;
    };
    std::vector<uint8_t> truncated(good.begin(), good.begin() + static_cast<long>(second + 10));
    std::vector<uint8_t> tinyOwner = EncodeSff(kSharedPaletteMode, {MakeSprite(1, 0, 0, true, 0, 0, 1, 1)});
    tinyOwner.resize(600);
    WriteU32(tinyOwner.data() + 512, 600);  // owner ends at offset 600: palette before 768? no, 600 < 768

    struct Case {
        const char* Name;
        std::vector<uint8_t> Bytes;
        const char* Key;
    };
    std::vector<Case> cases = {
        {"header only", std::vector<uint8_t>(good.begin(), good.begin() + 20), msg::SffTooShort},
        {"count 0", patched(20, 0), msg::SffImageCount},
        {"count negative", patched(20, 0xFFFFFFFF), msg::SffImageCount},
        {"count 32768", patched(20, 32768), msg::SffImageCount},
        {"next beyond the file", patched(second, static_cast<uint32_t>(good.size() + 1)), msg::SffOffset},
        {"next inside own header", patched(second, static_cast<uint32_t>(second + 8)), msg::SffRange},
        {"truncated subfile header", truncated, msg::SffTooShort},
        {"owner ends before 768", tinyOwner, msg::SffPalette},
    };

    Opened o;
    ASSERT_TRUE(Open(o, good));
    o.Table.SetCell(2, Column::GroupNo, "77");  // an edit the refusal must not lose
    o.Table.Select(3);
    const SpriteTable tableBefore = o.Table;
    const std::vector<uint8_t> bytesBefore = o.State.SffBytes;
    for (Case& c : cases) {
        auto r = Open(o, c.Bytes, "other.sff");
        ASSERT_FALSE(r) << c.Name;
        EXPECT_EQ(r.error().Key, c.Key) << c.Name;
        EXPECT_EQ(r.error().File, "/tmp/other.sff") << c.Name;
        EXPECT_FALSE(r.error().Detail.empty()) << c.Name;
        EXPECT_EQ(o.Table.RowCount(), 3) << c.Name;
        EXPECT_EQ(o.Table.Cell(2, Column::GroupNo), "77") << c.Name;
        EXPECT_EQ(o.Table.Selected(), 3) << c.Name;
        EXPECT_EQ(o.State.SffBytes, bytesBefore) << c.Name;
        EXPECT_EQ(o.State.SffNameCaption, "fighter.sff") << c.Name;
    }
    auto shortName = Open(o, good, "a.s");
    ASSERT_FALSE(shortName);
    EXPECT_EQ(shortName.error().Key, msg::SffNameShort);
}

TEST(SffReader, UnreadableFilesAreRefused) {
    test::TempDir dir;
    SffState state;
    SpriteTable table;
    const AppIni ini = DefaultAppIni();
    auto never = [](const std::string&, int) { return true; };
    auto missing = OpenSff(dir / "none.sff", "none.sff", state, table, ini, never);
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().Key, msg::SffUnreadable);
    EXPECT_EQ(missing.error().File, dir / "none.sff");
    auto folder = OpenSff(dir.Path(), "x.sff", state, table, ini, never);
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().Key, msg::SffUnreadable);

    test::WriteFile(dir / "ok.sff", EncodeSff(kSharedPaletteMode, {MakeSprite(3, 4, 0, true)}));
    auto ok = OpenSff(dir / "ok.sff", "ok.sff", state, table, ini, never);
    ASSERT_TRUE(ok);
    EXPECT_EQ(table.Cell(1, Column::PcxName), "ok_00003_00004.pcx");
}

}  // namespace
}  // namespace tarvolin
