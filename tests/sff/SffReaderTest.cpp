// OpenSff on synthetic files: numbering, keys, links, the palette owner, every refusal. What
// each sprite shows once rebuilt, real files included: the round trip in tests/tools.
#include <gtest/gtest.h>

#include "base/Bytes.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "formats/SffLayout.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using sff_layout::PaletteOwner;
using test::MakeLink;
using test::MakeSprite;
using test::PaletteOf;
using test::Then;
using Bytes = std::vector<uint8_t>;

struct Opened {
    SffState State;
    SpriteTable Table;
};

// Opens bytes as `name`, answering `yes` to the palette-mode warning.
Result<OpenReport> Open(Opened& o, Bytes bytes, const std::string& name = "fighter.sff", bool yes = true) {
    auto ask = [yes](const std::string&, int) { return yes; };
    return OpenSffBytes(std::move(bytes), "/tmp/" + name, name, o.State, o.Table, DefaultAppIni(), ask);
}

Bytes Sff(const std::vector<SffSprite>& sprites) { return EncodeSff(kSharedPaletteMode, sprites); }
Bytes Cut(const Opened& o, size_t record) { return CutSubfile(o.State, o.State.Subfiles.at(record)); }

// A column's cells from the first row down, joined by '|'.
std::string Cells(const SpriteTable& t, Column c) {
    std::string s;
    for (int i = 1; i <= t.RowCount(); ++i) s += (i > 1 ? "|" : "") + t.Cell(i, c);
    return s;
}

void ExpectOneNotice(const Result<OpenReport>& opened, const char* key, const std::string& detail) {
    ASSERT_TRUE(opened);
    ASSERT_EQ(opened.value().Notices.size(), 1u);
    EXPECT_EQ(opened.value().Notices[0].Key, key);
    EXPECT_EQ(opened.value().Notices[0].File, "/tmp/fighter.sff");
    EXPECT_EQ(opened.value().Notices[0].Detail, detail);
}

TEST(SffReader, WorkedFourSubfileCase) {
    const std::vector<SffSprite> sprites = {MakeSprite(9000, 0, 0, true), MakeSprite(0, 0, 0, true),
                                            MakeSprite(0, 1, 1, false), MakeLink(0, 2, 1, 2)};
    Opened o;
    ASSERT_TRUE(Open(o, Sff(sprites)));
    EXPECT_EQ(Cells(o.Table, Column::SortNo), "01|02|03|04");
    EXPECT_EQ(Cells(o.Table, Column::GroupNo), "9000|0|0|0");
    EXPECT_EQ(Cells(o.Table, Column::ItemNo), "0|0|1|2");
    EXPECT_EQ(Cells(o.Table, Column::PalType), "0|1|1|1");
    EXPECT_EQ(Cells(o.Table, Column::SortKey), " 0000000000|00000000000|00000000001|00000000002");
    EXPECT_EQ(Cells(o.Table, Column::PPos), "0|1|2|3");
    EXPECT_EQ(Cells(o.Table, Column::PcxName),
              "fighter_09000_00000.pcx|fighter_00000_00000.pcx|fighter_00000_00001.pcx|fighter_00000_00001.pcx");
    // Record 1 owns the palette: its last 768 bytes, cut off its range and put back behind it.
    EXPECT_EQ(Bytes(o.State.SharedPalette.begin(), o.State.SharedPalette.end()), PaletteOf(sprites[1].Data));
    EXPECT_EQ(Cut(o, 1), sprites[1].Data);
    EXPECT_EQ(Cut(o, 3), Cut(o, 2));
    EXPECT_EQ(o.State.SffBaseName + " " + o.State.ImageCaption + " " + o.State.SffNameCaption, "fighter 4 fighter.sff");
}

// The chain begins where the header says; a subfile-header size other than 32 is only noted.
TEST(SffReader, TheFirstSubfileIsWhereTheHeaderPutsIt) {
    const std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false)};
    Bytes moved = Sff(sprites);
    constexpr uint32_t kPad = 88;
    moved.insert(moved.begin() + 512, kPad, 0);
    WriteU32(moved.data() + 24, 512 + kPad);
    WriteU32(moved.data() + 28, 512);
    for (size_t at = 512 + kPad; at < moved.size(); at = ReadU32(moved.data() + at))
        WriteU32(moved.data() + at, ReadU32(moved.data() + at) + kPad);
    Opened o;
    const auto opened = Open(o, moved);
    ASSERT_TRUE(opened);
    EXPECT_EQ(Cut(o, 0), sprites[0].Data);
    EXPECT_EQ(Cut(o, 1), Then(sprites[1].Data, PaletteOf(sprites[0].Data)));
    ASSERT_EQ(opened.value().Quirks.size(), 2u);
    EXPECT_EQ(opened.value().Quirks[0].Kind, QuirkKind::FirstSubfileOffset);
    EXPECT_EQ(opened.value().Quirks[1].Kind, QuirkKind::SubfileHeaderLength);
}

TEST(SffReader, SortNoWidthFollowsTheRowCount) {
    for (int n : {9, 10}) {
        std::vector<SffSprite> sprites;
        for (int i = 0; i < n; ++i) sprites.push_back(MakeSprite(1, static_cast<uint16_t>(i), 0, true));
        Opened o;
        ASSERT_TRUE(Open(o, Sff(sprites)));
        EXPECT_EQ(o.Table.Cell(1, Column::SortNo) + " " + o.Table.Cell(n, Column::SortNo), n == 9 ? "01 09" : "001 010");
    }
}

// Shared-palette rows first, own-palette rows last, 9000,0 and 9000,1 before all. Record 0
// owns the palette here (flag 0, then flag 1), so it joins the shared block.
TEST(SffReader, RowsComeInThreeBlocksBySortKey) {
    Opened o;
    ASSERT_TRUE(Open(o, Sff({MakeSprite(5, 0, 0, true), MakeSprite(0, 5, 1, false), MakeSprite(9000, 2, 1, false),
                             MakeSprite(9000, 1, 0, true), MakeSprite(200, 12, 0, true)})));
    EXPECT_EQ(Cells(o.Table, Column::SortKey), " 0000000001|00000000005|00000500000|00900000002|10020000012");
    EXPECT_EQ(SortKeyFor(1, 2, 3), "-20000100002");  // a flag other than 0 or 1 keeps its sign
}

TEST(SffReader, ChainShorterOrLongerThanTheHeaderCount) {
    const Bytes bytes = Sff({MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false), MakeSprite(1, 2, 1, false)});
    Bytes more = bytes;
    WriteU32(more.data() + 20, 5);
    Opened o;
    const auto opened = Open(o, more);
    ExpectOneNotice(opened, msg::SffNoData, "the chain of subfiles ends after 3 of 5 images: 2 row(s) have no picture");
    ASSERT_EQ(o.Table.RowCount(), 5);
    EXPECT_EQ(o.State.ImageCaption, "5");
    EXPECT_EQ(o.Table.Cell(5, Column::SortKey), "10000000000");
    EXPECT_EQ(o.Table.Cell(5, Column::PcxName), "");
    EXPECT_TRUE(Cut(o, 4).empty());

    // A next offset of 0 ends the chain too; the last data then run for the length field.
    WriteU32(more.data() + o.State.Subfiles[2].DataStart - 32, 0);
    ASSERT_TRUE(Open(o, more));
    EXPECT_EQ(o.State.Subfiles[2].DataEnd, static_cast<int32_t>(more.size()) - 1);

    Bytes fewer = bytes;  // the third subfile is never looked at
    WriteU32(fewer.data() + 20, 2);
    const auto opened2 = Open(o, fewer);
    ASSERT_TRUE(opened2);
    EXPECT_EQ(o.Table.RowCount(), 2);
    EXPECT_TRUE(opened2.value().Notices.empty());
}

// A subfile with data shows them whatever its link index; one without shows the earlier one
// its index names, 0 included, or nothing: one notice names the first five of each kind.
TEST(SffReader, LinksAsTheEngineFollowsThem) {
    std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false), MakeLink(1, 2, 0, 901),
                                      MakeSprite(1, 3, 1, false), MakeLink(1, 4, 1, 0), MakeLink(1, 5, 1, 5),
                                      MakeLink(1, 6, 1, 7), MakeSprite(1, 7, 1, false)};
    sprites[3].LinkIndex = 900;  // stale: data of its own
    Opened o;
    const auto opened = Open(o, Sff(sprites));
    ExpectOneNotice(opened, msg::SffLinkIgnored,
                    "3 subfile(s) without data of their own link to no earlier subfile (to itself: subfile(s) 5; to a "
                    "later subfile: subfile(s) 6; at or beyond the image count 8: subfile(s) 2): they show no picture; "
                    "a rebuild stores a 1x1 transparent picture there");
    std::string links;
    for (const SubfileRecord& r : o.State.Subfiles) links += std::to_string(r.LinkIndex) + " ";
    EXPECT_EQ(links, "-1 -1 -1 -1 0 -1 -1 -1 ");
    EXPECT_EQ(Cut(o, 5), PaletteOf(Cut(o, 1)));  // no picture: only the palette it would take

    std::vector<SffSprite> many = {MakeSprite(2, 0, 0, true)};
    for (uint16_t i = 1; i <= 7; ++i) many.push_back(MakeLink(2, i, 0, 40000));
    ExpectOneNotice(Open(o, Sff(many)), msg::SffLinkIgnored,
                    "7 subfile(s) without data of their own link to no earlier subfile (at or beyond the image count "
                    "8: subfile(s) 1, 2, 3, 4, 5, ...): they show no picture; a rebuild stores a 1x1 transparent "
                    "picture there");
}

// The first subfile takes its own last 768 bytes whatever its flag; a flag-1 sprite before
// any stored palette takes the shared one. (Sprites among several palettes: the round trip.)
TEST(SffReader, TheFirstSubfileAndFlagOneBeforeAnyStoredPalette) {
    const std::vector<SffSprite> first = {MakeSprite(1, 0, 1, true), MakeSprite(1, 1, 0, true),
                                          MakeSprite(1, 2, 1, false)};
    Opened o;
    ASSERT_TRUE(Open(o, Sff(first)));
    EXPECT_EQ(Cut(o, 0), first[0].Data);
    EXPECT_EQ(Cut(o, 2), Then(first[2].Data, PaletteOf(first[1].Data)));

    const std::vector<SffSprite> none = {MakeLink(3, 0, 1, 0), MakeSprite(3, 1, 1, false), MakeSprite(3, 2, 0, true),
                                         MakeSprite(3, 3, 1, false)};
    ASSERT_TRUE(Open(o, Sff(none)));
    EXPECT_TRUE(Cut(o, 0).empty());
    EXPECT_EQ(Cut(o, 1), Then(none[1].Data, PaletteOf(none[2].Data)));

    // An owner without data (here a link to itself) stores no palette: the first one stored
    // is the shared palette. A later sprite with its numbers names a file of its own.
    const std::vector<SffSprite> empty = {MakeLink(4, 0, 0, 0), MakeSprite(4, 1, 1, false), MakeSprite(4, 2, 0, true),
                                          MakeSprite(4, 0, 1, false)};
    ASSERT_TRUE(Open(o, Sff(empty)));
    EXPECT_EQ(Bytes(o.State.SharedPalette.begin(), o.State.SharedPalette.end()), PaletteOf(empty[2].Data));
    EXPECT_EQ(Cut(o, 1), Then(empty[1].Data, PaletteOf(empty[2].Data)));
    EXPECT_EQ(o.State.Subfiles[3].PcxName, "fighter_00004_00000_2.pcx");
}

// Links take their target's values as they stand: before the owner is shortened.
TEST(SffReader, LinksResolveBeforeTheOwnerIsShortened) {
    Opened o;
    ASSERT_TRUE(Open(o, Sff({MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 0, true), MakeSprite(1, 2, 1, false),
                             MakeLink(1, 3, 1, 1), MakeLink(1, 4, 3, 3)})));
    const SubfileTable& r = o.State.Subfiles;
    EXPECT_EQ(r[3].DataEnd, r[1].DataEnd + 768);
    EXPECT_EQ(r[4].DataEnd, r[3].DataEnd);
    EXPECT_EQ(r[4].PcxName, "fighter_00001_00001.pcx");
    EXPECT_EQ(o.Table.Cell(5, Column::PPos) + " " + o.Table.Cell(5, Column::PalType), "0 0");
}

// A first sprite without room for a palette, as sprmaker.exe stores it: the shared palette is
// the 768 bytes before its end, yet it cuts out as its own.
TEST(SffReader, OwnerShorterThanAPaletteKeepsItsBytes) {
    const std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, false, 0, 0, 20, 12), MakeSprite(1, 1, 1, false)};
    const size_t ownerEnd = 512 + 32 + sprites[0].Data.size();
    ASSERT_TRUE(sprites[0].Data.size() < 768 && ownerEnd >= 768);
    const Bytes bytes = Sff(sprites);
    Opened o;
    ASSERT_TRUE(Open(o, bytes));
    const Bytes palette = PaletteOf(Bytes(bytes.begin(), bytes.begin() + static_cast<long>(ownerEnd)));
    EXPECT_EQ(Bytes(o.State.SharedPalette.begin(), o.State.SharedPalette.end()), palette);
    EXPECT_EQ(o.State.Subfiles[0].PalFlag, 0);
    EXPECT_EQ(Cut(o, 0), sprites[0].Data);
    EXPECT_EQ(Cut(o, 1), Then(sprites[1].Data, palette));
}

TEST(SffReader, RepeatedNumbersGetFilesOfTheirOwn) {
    Opened o;
    ASSERT_TRUE(Open(o, Sff({MakeSprite(1, 0, 0, true), MakeSprite(1, 0, 0, true, 0, 0, 5, 5),
                             MakeSprite(1, 1, 1, false), MakeSprite(1, 0, 1, false), MakeLink(1, 0, 1, 1)})));
    std::string names;
    for (const SubfileRecord& r : o.State.Subfiles) names += r.PcxName + " ";
    EXPECT_EQ(names, "fighter_00001_00000.pcx fighter_00001_00000_2.pcx fighter_00001_00001.pcx "
                     "fighter_00001_00000_3.pcx fighter_00001_00000_2.pcx ");
    // Rows with the same numbers stay in chain order, whatever their flags.
    EXPECT_EQ(Cells(o.Table, Column::PPos), "2|0|1|3|4");
}

// The reader's use of the owner: the worked case (record 1) and the sort blocks (record 0).
TEST(SffReader, PaletteOwnerIsTheFlagZeroBeforeTheFirstFlagOne) {
    const auto ownerOf = [](std::vector<uint8_t> f) { return PaletteOwner(f.size(), [&](size_t i) { return f[i]; }); };
    EXPECT_EQ(ownerOf({0, 0, 1, 1}), 1u);
    EXPECT_EQ(ownerOf({1, 1, 1}), 0u);
    EXPECT_EQ(ownerOf({0, 0, 0}), 0u);
    EXPECT_EQ(ownerOf({0, 2, 0, 1}), 2u);  // flag 2 counts as not 0
}

TEST(SffReader, BaseNameCutsFourCharacters) {
    const Bytes bytes = Sff({MakeSprite(1, 1, 0, true)});
    for (auto [name, base] : std::vector<std::pair<std::string, std::string>>{
             {"a.b.sff", "a.b"}, {"sprites", "spr"}, {"キャラ絵.sff", "キャラ絵"}, {"abcd", ""}}) {
        Opened o;
        ASSERT_TRUE(Open(o, bytes, name)) << name;
        EXPECT_EQ(o.Table.Cell(1, Column::PcxName), base + "_00001_00001.pcx");
    }
}

// Yes opens the file as any other (the real individual-mode file of the round trip).
TEST(SffReader, NoToThePaletteModeWarningEmptiesTheTable) {
    const Bytes individual = EncodeSff(kIndividualPaletteMode, {MakeSprite(1, 1, 0, true), MakeSprite(1, 2, 0, true)});
    Opened o;
    ASSERT_TRUE(Open(o, Sff({MakeSprite(1, 1, 0, true)})));
    const auto declined = Open(o, individual, "fighter.sff", false);
    ASSERT_TRUE(declined);
    EXPECT_EQ(declined.value().Outcome, OpenOutcome::Declined);
    EXPECT_EQ(o.Table.RowCount(), 0);
}

TEST(SffReader, RefusalsNameTheFileAndChangeNothing) {
    const std::vector<SffSprite> sprites = {MakeSprite(1, 0, 0, true), MakeSprite(1, 1, 1, false),
                                            MakeSprite(1, 2, 1, false)};
    const Bytes good = Sff(sprites);
    const size_t second = 512 + 32 + sprites[0].Data.size();  // the header of subfile 1
    auto patched = [&](size_t at, uint32_t v) {
        Bytes b = good;
        WriteU32(b.data() + at, v);
        return b;
    };
    Bytes tinyOwner = Sff({MakeSprite(1, 0, 0, true, 0, 0, 1, 1)});
    tinyOwner.resize(600);
    WriteU32(tinyOwner.data() + 512, 600);  // the owner's data end at offset 600
    const struct { const char* Name; Bytes File; const char* Key; const char* Says; } cases[] = {  // Says: a part
        {"header only", Bytes(good.begin(), good.begin() + 20), msg::SffTooShort, "20 bytes"},
        {"count 0", patched(20, 0), msg::SffImageCount, "image count 0"},
        {"count negative", patched(20, 0xFFFFFFFF), msg::SffImageCount, "image count -1"},
        {"count 32768", patched(20, 32768), msg::SffImageCount, "image count 32768"},
        {"no signature", patched(0, 0x6C6C6548), msg::SffFormat, "bytes 48 65 6C 6C 62 79"},
        {"version 2", patched(12, 0x02000100), msg::SffVersion, "an SFF of version 2"},
        {"version bytes 0", patched(12, 0), msg::SffVersion, "version bytes 00 00 00 00"},
        {"first subfile inside the header", patched(24, 100), msg::SffRange, "offset 100 lies inside the 512-byte"},
        {"first subfile beyond the file", patched(24, 1 << 30), msg::SffOffset, "1073741824 lies beyond the end"},
        {"next beyond the file", patched(second, static_cast<uint32_t>(good.size() + 1)), msg::SffOffset,
         "lies beyond the end of the file"},
        {"next at or above 2^31", patched(second, 0x80000000u), msg::SffOffset, "next offset 2147483648 lies beyond"},
        {"next inside its own header", patched(second, static_cast<uint32_t>(second + 8)), msg::SffRange,
         "inside the subfile's own 32-byte header"},
        {"next back to an earlier subfile", patched(second, 512), msg::SffRange,
         "points back to the header of subfile 0"},
        {"truncated subfile header", Bytes(good.begin(), good.begin() + long(second + 10)), msg::SffTooShort,
         "runs past the end"},
        {"owner ends before 768", tinyOwner, msg::SffPalette, "before 768 bytes"},
        {"no palette anywhere", Sff({MakeLink(5, 0, 0, 0), MakeSprite(5, 1, 1, false)}), msg::SffPalette,
         "no data of its own, and no subfile stores a palette"},
    };
    Opened o;
    ASSERT_TRUE(Open(o, good));
    o.Table.SetCell(2, Column::GroupNo, "77");  // an edit the refusal must not lose
    o.Table.Select(3);
    const SpriteTable tableBefore = o.Table;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        const auto r = Open(o, c.File, "other.sff");
        ASSERT_FALSE(r);
        EXPECT_EQ(r.error().Key, c.Key);
        EXPECT_EQ(r.error().File, "/tmp/other.sff");
        EXPECT_NE(r.error().Detail.find(c.Says), std::string::npos) << r.error().Detail;
        EXPECT_EQ(Cells(o.Table, Column::GroupNo), Cells(tableBefore, Column::GroupNo));
        EXPECT_EQ(o.Table.Selected(), 3);
        EXPECT_TRUE(o.State.SffBytes == good);
        EXPECT_EQ(o.State.SffNameCaption, "fighter.sff");
    }
    EXPECT_EQ(Open(o, good, "a.s").error().Key, msg::SffNameShort);

    // A folder is named as one, whatever its name's length (what else is refused: FileReadTest).
    test::TempDir dir;
    for (const std::string& path : {dir / "none.sff", dir.Path()}) {
        const auto unreadable = OpenSff(path, GetFileName(path), o.State, o.Table, DefaultAppIni(), {});
        ASSERT_FALSE(unreadable);
        EXPECT_EQ(unreadable.error().Key, msg::SffUnreadable);
        EXPECT_EQ(unreadable.error().File, path);
    }
}

}  // namespace
}  // namespace tarvolin
