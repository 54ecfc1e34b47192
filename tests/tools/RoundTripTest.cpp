// Every SFF goes open -> export -> parameter text -> sprmaker.exe -> open again, and every row
// comes back as the engine showed it: real files (as PCX and PNG files), and synthetic quirks.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <set>

#include "base/AtomicFile.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "formats/SffWriter.h"
#include "rebuild/ParamText.h"
#include "sff/PcxExport.h"
#include "sff/PngExport.h"
#include "sff/SffReader.h"
#include "support/EngineView.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::MakeSprite;
using Bytes = std::vector<uint8_t>;

struct Trip {
    int Rows = 0;
    int Equal = 0;
    int Linked = 0;
    std::map<std::string, int> Reasons;  // why rows differ, and how many do for each reason
    std::string Examples;                // the first few differing rows
    std::vector<Error> Notices;          // what opening the original repaired
    std::string Log;                     // sprmaker.exe's
    test::EngineFile After;              // the new SFF as the engine shows it
};

// Why the rebuilt sprite doesn't show what the original showed. Where that shows nothing, the
// new file holds a 1x1 picture of colour 0, drawn transparent (an empty subfile is a link).
std::set<std::string> EngineDifferences(const test::EngineSprite& before, const test::EngineSprite& after) {
    if (after.Empty || after.SelfLinked) return {"no picture in the new file"};
    if (before.Empty) {
        if (after.Pixels == test::EnginePixels{1, 1, 1, {0}}) return {};
        return {"no 1x1 transparent picture where the original shows none"};
    }
    std::set<std::string> reasons;
    if (before.Pixels != after.Pixels) reasons.insert("the engine's pictures differ");
    if (before.HasColours != after.HasColours || before.Colours != after.Colours)
        reasons.insert("the engine's palettes differ");
    return reasons;
}

// The pictures go to sprmaker.exe as the PCX export or `tarvolin-cli export --format png` writes them.
enum class Route { Pcx, Png };

// Opens `path` (Yes to the palette-mode warning), lets `edit` change the table, rebuilds it and
// holds row n against the new sprite n - 1 and the original (by P.Pos): numbers, links, pictures.
Trip RoundTrip(const std::string& path, const std::function<void(SpriteTable&)>& edit = {},
               Route route = Route::Pcx) {
    SCOPED_TRACE(path);
    Trip trip;
    SffState state;
    SpriteTable table;
    const auto fail = [&trip](const std::string& why) {
        ADD_FAILURE() << why;
        return trip;
    };
    const auto yes = [](const std::string&, int) { return true; };
    auto opened = OpenSff(path, GetFileName(path), state, table, DefaultAppIni(), yes);
    if (!opened) return fail("refused: " + opened.error().Key + " " + opened.error().Detail);
    trip.Notices = opened.value().Notices;
    if (edit) edit(table);
    const test::EngineFile before = test::EngineView(test::ReadFile(path), false);

    test::TempDir dir;
    const std::string text = dir / (state.SffBaseName + "_SFF.txt");
    Status written = Ok();
    if (route == Route::Pcx) {
        written = SaveAllPcx(state, table, dir.Path());
    } else {
        const auto exported = test::RunProgram(test::BinDir() + "tarvolin-cli", {"export", "--format", "png", path, dir.Path()});
        if (exported.Status != 0) return fail("tarvolin-cli export --format png: " + exported.Err);
        for (int place = 1; place <= table.RowCount(); ++place)
            table.SetCell(place, Column::PcxName, PngName(table.Cell(place, Column::PcxName)));
    }
    if (written) written = WriteFileAtomically(text, ParamTextBytes(table, state.SffNameCaption).value());
    if (!written) return fail(written.error().File + ": " + written.error().Detail);
    const auto run = test::RunProgram(test::BinDir() + "sprmaker.exe", {}, text, dir.Path());
    trip.Log = run.Out;
    if (run.Status != 0) return fail("sprmaker.exe: " + run.Err);
    const Bytes bytes = test::ReadFile(dir / state.SffNameCaption);
    trip.After = test::EngineView(bytes);
    EXPECT_EQ(trip.After.PaletteMode, 1);
    trip.Rows = table.RowCount();
    if (trip.After.Sprites.size() != size_t(trip.Rows)) return fail("the new SFF's sprites are not the rows");

    // The sprite that holds each file's picture. The first sprite can't be linked to (link
    // index 0 means no link), so its first duplicate holds it again.
    std::map<std::string, size_t> holder;
    for (int place = 1; place <= trip.Rows; ++place) {
        const SpriteRow& row = table.Row(place);
        const size_t index = size_t(place - 1), pos = std::stoul(row[Column::PPos]);
        const test::EngineSprite& after = trip.After.Sprites[index];
        std::set<std::string> reasons = EngineDifferences(before.Sprites.at(pos), after);
        if (DecimalText(after.GroupNo) != row[Column::GroupNo] || DecimalText(after.ItemNo) != row[Column::ItemNo] ||
            DecimalText(after.AxisX) != row[Column::AxisX] || DecimalText(after.AxisY) != row[Column::AxisY])
            reasons.insert("numbers or axis");
        auto [first, isNew] = holder.emplace(row[Column::PcxName], index);
        const bool linkExpected = !isNew && first->second != 0;
        if (!isNew && !linkExpected) first->second = index;
        if (after.Linked != linkExpected || (linkExpected && after.LinkIndex != first->second))
            reasons.insert("not linked as the rows name files");
        trip.Linked += after.Linked;
        if (reasons.empty()) {
            ++trip.Equal;
            continue;
        }
        std::string example = "\n  row " + std::to_string(place) + " (P.Pos " + row[Column::PPos] + "):";
        for (const std::string& reason : reasons) ++trip.Reasons[reason], example += " " + reason + ";";
        if (place - trip.Equal <= 3) trip.Examples += example;
    }
    std::string line = GetFileName(path) + (route == Route::Png ? " as PNG" : "") + ": " + std::to_string(trip.Rows) + " rows, " + std::to_string(trip.Equal) +
                       " equal, " + std::to_string(trip.Linked) + " linked";
    for (const auto& [reason, count] : trip.Reasons) line += "; " + std::to_string(count) + " " + reason;
    EXPECT_EQ(trip.Equal, trip.Rows) << line << trip.Examples;

    // The new file opens again, with as many rows and nothing to repair.
    SffState again;
    SpriteTable rows;
    auto reopened = OpenSffBytes(bytes, path, state.SffNameCaption, again, rows, DefaultAppIni(), yes);
    EXPECT_TRUE(reopened && reopened.value().Notices.empty());
    EXPECT_EQ(rows.RowCount(), trip.Rows);
    std::printf("[ round trip ] %s; %zu notice(s) at opening\n", line.c_str(), trip.Notices.size());
    return trip;
}

TEST(SprmakerRoundTrip, EveryRealSffComesBackAsTheEngineShowedIt) {
    TARVOLIN_REQUIRE_SHARED_DATA(data);
    std::vector<std::string> files = test::SharedSffFiles();
    const std::vector<std::string> corpus = test::SharedSffFiles("corpus/");
    if (corpus.empty()) std::printf("[ round trip ] %scorpus/ holds no SFF\n", data.c_str());
    files.insert(files.end(), corpus.begin(), corpus.end());
    ASSERT_FALSE(files.empty());
    for (const Route route : {Route::Pcx, Route::Png}) {
        int rows = 0, equal = 0;
        for (const std::string& file : files) {
            const Trip trip = RoundTrip(file, {}, route);
            rows += trip.Rows;
            equal += trip.Equal;
        }
        std::printf("[ round trip ] %s: %zu files, %d rows, %d equal\n", route == Route::Pcx ? "PCX" : "PNG",
                    files.size(), rows, equal);
    }
}

using test::Bare;
using test::PaletteOf;
using test::Then;

// What real files do beyond those of ../shared/data: one file with every quirk, in the order
// of a chain, and one whose palette owner is a 24-bit picture.
std::vector<SffSprite> EveryQuirk() {
    std::vector<SffSprite> q = {MakeSprite(9000, 0, 0, true), MakeSprite(9000, 1, 0, true, 0, 0, 120, 140),
                                MakeSprite(0, 0, 1, false, 5, 5, 9, 7)};
    auto add = [&q](uint16_t group, uint16_t item, uint8_t flag, Bytes data, uint16_t link = 0) {
        q.push_back(MakeSprite(group, item, flag, false));
        q.back().Data = std::move(data);
        q.back().LinkIndex = link;
    };
    const auto picture = [](int w, int h, int seed) { return test::MakePcx(w, h, seed, seed); };
    const auto here = [&q] { return static_cast<uint16_t>(q.size()); };
    add(10, 0, 0, test::TrueColourPcx(20, 15, 20));                             // 24-bit: carries no palette
    add(10, 1, 1, Bare(picture(5, 5, 3)));                                      // takes 9000,1's palette
    add(11, 0, 1, Bare(picture(6, 4, 4)), 999);                                 // link beyond the table, data
    add(11, 1, 1, {}, 999);                                                     // link beyond the table, none
    add(12, 0, 0, {});                                                          // link index 0: the first sprite
    add(12, 1, 1, {}, here());                                                  // linked to itself
    add(12, 2, 0, {}, here() + 2);                                              // linked to a later subfile
    add(12, 3, 1, {}, here() - 2);                                              // linked to the one linked to itself
    add(13, 0, 0, Then(picture(8, 8, 5), Bytes(50, 0xEE)));                    // garbage after the palette
    add(13, 1, 0, Then(Then(Bare(picture(8, 3, 6)), Bytes(9, 0)), PaletteOf(q[0].Data)));  // padding
    add(20, 0, 0, picture(10, 10, 7));                                          // a second palette holder
    add(20, 1, 1, Bare(picture(3, 3, 8)));
    add(20, 2, 1, picture(4, 3, 9));                                            // flag 1, old palette kept
    Bytes wideLines = test::PcxImage(3, 1, 10);  // 4 x 2 with 10 bytes a line
    for (uint8_t v = 1; v <= 20; ++v) wideLines.push_back(v);
    add(30, 0, 1, Then(wideLines, {0x0C}));                                     // BytesPerLine > width + 1
    add(31, 0, 0, Bare(picture(40, 30, 10)));                                   // own flag, 0x0C, no palette
    add(32, 0, 0, Then(picture(6, 6, 11), PaletteOf(q[1].Data)));                    // 0x0C and two palettes
    add(0, 1, 1, {}, 2);                                                        // linked to 0,0
    add(33, 0, 1, Bare(picture(3, 5, 12)), 2);                                  // data and a stale link
    // Extreme numbers and axes, a large odd width with a palette of its own.
    q.insert(q.end(), {MakeSprite(0, 2, 1, false, 32767, -32768), MakeSprite(200, 0, 0, true, -36, -105, 61, 99),
                       MakeSprite(65535, 65535, 1, false, 1, 1, 9, 9)});
    return q;
}

std::vector<SffSprite> TrueColourOwner() {
    std::vector<SffSprite> sprites = {MakeSprite(9000, 0, 0, true), MakeSprite(9000, 1, 0, false)};
    sprites[1].Data = test::TrueColourPcx(30, 20, 30);  // flag 0 before the first flag 1: the palette owner
    for (uint16_t item = 0; item < 4; ++item) sprites.push_back(MakeSprite(0, item, 1, false, 1, 2, 6 + item, 5));
    return sprites;
}

TEST(SprmakerRoundTrip, SyntheticFilesWithEveryQuirkComeBackAsTheEngineShowedThem) {
    test::TempDir dir;
    const struct { const char* Name; std::vector<SffSprite> Sprites; size_t Notices; } files[] = {
        {"quirks.sff", EveryQuirk(), 1}, {"truecolour.sff", TrueColourOwner(), 0}};
    for (const auto& file : files) {
        test::WriteFile(dir / file.Name, EncodeSff(kSharedPaletteMode, file.Sprites));
        const Trip trip = RoundTrip(dir / file.Name);
        EXPECT_EQ(trip.Rows, static_cast<int>(file.Sprites.size()));
        ASSERT_EQ(trip.Notices.size(), file.Notices);
        for (const Error& notice : trip.Notices) EXPECT_EQ(notice.Key, msg::SffLinkIgnored);
    }
}

// A row deleted before a rebuild must not change the colours of the rows that stay.
TEST(SprmakerRoundTrip, DeletingTheSharedPaletteRowKeepsEveryColour) {
    // 9000,1 holds the palette that 0,0 to 0,3 use; 7,0 stores another one, which 7,1 and
    // 7,2 use. With 9000,1 gone the table's rows 1 to 3, which always get a palette of
    // their own, are others.
    std::vector<SffSprite> sprites = {MakeSprite(9000, 0, 0, true, 0, 0, 6, 6), MakeSprite(9000, 1, 0, true, 0, 0, 8, 5)};
    for (uint16_t item = 0; item < 4; ++item) sprites.push_back(MakeSprite(0, item, 1, false, 10, 20, 5 + item, 4));
    sprites.push_back(MakeSprite(7, 0, 0, true, 1, 1, 9, 9));
    sprites.push_back(MakeSprite(7, 1, 1, false, 2, 2, 4, 4));
    sprites.push_back(MakeSprite(7, 2, 1, false, 3, 3, 7, 2));
    test::TempDir dir;
    test::WriteFile(dir / "fighter.sff", EncodeSff(kSharedPaletteMode, sprites));
    const Trip trip = RoundTrip(dir / "fighter.sff", [](SpriteTable& t) {
        ASSERT_EQ(t.Cell(2, Column::GroupNo) + "," + t.Cell(2, Column::ItemNo), "9000,1");
        t.RemoveRow(2);
    });
    // 7,1 follows the shared rows in the table, so the builder keeps its own palette; 7,2
    // follows 7,1 and takes it.
    EXPECT_NE(trip.Log.find("fighter_00007_00001.pcx: asked for the previous palette, but its own differs"),
              std::string::npos) << trip.Log;
    ASSERT_EQ(trip.After.Sprites.size(), 8u);
    EXPECT_EQ(trip.After.Sprites[5].PalFlag, 0);
    EXPECT_EQ(trip.After.Sprites[6].PalFlag, 1);
}

}  // namespace
}  // namespace tarvolin
