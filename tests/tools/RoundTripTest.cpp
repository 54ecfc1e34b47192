// Every SFF goes through open -> export -> parameter text -> sprmaker.exe -> open again,
// and every row must come back as the engine showed it: numbers, axis, pixels, palette,
// links. The real files of ../shared/data and of its corpus, and synthetic ones for the
// quirks that no real file there has.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "RoundTrip.h"
#include "base/Bytes.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "formats/SffWriter.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::MakeSprite;

struct Trip {
    test::RowTally Tally;
    std::vector<Error> Notices;  // what opening the original repaired
    std::string Log;             // sprmaker.exe's
};

// Opens `path`, rebuilds it through sprmaker.exe in a fresh folder, compares row by row
// and prints one line for the file.
Trip RoundTrip(const std::string& path) {
    SCOPED_TRACE(path);
    Trip trip;
    test::OpenedSff o;
    if (!test::OpenForRebuild(path, o)) return trip;
    trip.Notices = o.Notices;
    const test::EngineFile before = test::EngineView(o.State.SffBytes, false);
    test::TempDir dir;
    const std::vector<uint8_t> bytes = test::Rebuild(o, dir.Path(), trip.Log);
    if (bytes.empty()) return trip;
    const test::EngineFile after = test::EngineView(bytes);
    EXPECT_EQ(after.PaletteMode, 1);
    trip.Tally = test::CompareRows(o, before, dir.Path(), after);
    std::string examples;
    for (const std::string& e : trip.Tally.Examples) examples += "\n  " + e;
    EXPECT_EQ(trip.Tally.Equal, trip.Tally.Rows) << test::TallyLine(GetFileName(path), trip.Tally) << examples;

    // The new file opens again, with as many rows and nothing to repair.
    SffState again;
    SpriteTable rows;
    auto reopened = OpenSffBytes(bytes, dir / o.State.SffNameCaption, o.State.SffNameCaption, again, rows,
                                 DefaultAppIni(), [](const std::string&, int) { return false; });
    EXPECT_TRUE(reopened && reopened.value().Notices.empty());
    EXPECT_EQ(rows.RowCount(), o.Table.RowCount());

    size_t warnings = 0;
    for (size_t at = trip.Log.find("\nWarning: "); at != std::string::npos; at = trip.Log.find("\nWarning: ", at + 1))
        ++warnings;
    std::printf("[ round trip ] %s; %zu notice(s) at opening, %zu warning(s) in the log\n",
                test::TallyLine(GetFileName(path), trip.Tally).c_str(), trip.Notices.size(), warnings);
    return trip;
}

// Every SFF of ../shared/data and of its corpus folder, sorted by name within each.
std::vector<std::string> RealSffFiles(const std::string& data) {
    std::vector<std::string> files = test::SharedSffFiles();
    std::vector<std::string> corpus;
    if (std::filesystem::is_directory(data + "corpus"))
        for (const auto& e : std::filesystem::directory_iterator(data + "corpus"))
            if (e.path().extension() == ".sff") corpus.push_back(e.path().string());
    std::sort(corpus.begin(), corpus.end());
    files.insert(files.end(), corpus.begin(), corpus.end());
    return files;
}

TEST(SprmakerRoundTrip, EveryRealSffComesBackAsTheEngineShowedIt) {
    TARVOLIN_REQUIRE_SHARED_DATA(data);
    const auto files = RealSffFiles(data);
    ASSERT_FALSE(files.empty());
    if (!std::filesystem::is_directory(data + "corpus")) std::printf("[ round trip ] %scorpus is absent\n", data.c_str());
    int rows = 0, equal = 0;
    for (const std::string& file : files) {
        const Trip trip = RoundTrip(file);
        rows += trip.Tally.Rows;
        equal += trip.Tally.Equal;
    }
    std::printf("[ round trip ] %zu files, %d rows, %d equal\n", files.size(), rows, equal);
}

// A 24-bit picture of w x h (w even): three planes of w bytes a line, no palette.
std::vector<uint8_t> TrueColourPcx(int w, int h) {
    std::vector<uint8_t> b = test::MakePcx(w, h, 0);
    b.resize(128);
    b[65] = 3;
    WriteU16(b.data() + 66, static_cast<uint16_t>(w));
    for (int i = 0; i < w * h * 3; ++i) {
        const auto v = static_cast<uint8_t>(i * 7 + i / w);
        if (v >= 0xC0) b.push_back(0xC1);
        b.push_back(v);
    }
    return b;
}

std::vector<uint8_t> Then(std::vector<uint8_t> bytes, const std::vector<uint8_t>& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return bytes;
}
std::vector<uint8_t> PaletteOf(const SffSprite& s) { return {s.Data.end() - 768, s.Data.end()}; }

TEST(SprmakerRoundTrip, SyntheticFilesWithEveryQuirkComeBackAsTheEngineShowedThem) {
    test::TempDir dir;
    // Shared palette, a linked pair, odd widths, negative axes, a sprite with its own
    // palette behind the shared ones.
    std::vector<SffSprite> shared = {
        MakeSprite(9000, 0, 0, true, 0, 0, 25, 25),  MakeSprite(9000, 1, 0, true, 0, 0, 120, 140),
        MakeSprite(0, 0, 0, true, 36, 105, 61, 99),  MakeSprite(0, 1, 1, false, -36, -105, 7, 3),
        MakeSprite(0, 2, 1, false, 32767, -32768),   MakeSprite(0, 3, 1, false),
        MakeSprite(200, 0, 0, true, -3, 90, 1, 1),   MakeSprite(65535, 65535, 1, false, 1, 1, 9, 9),
    };
    shared[5].Data.clear();
    shared[5].LinkIndex = 3;
    test::WriteFile(dir / "synth.sff", EncodeSff(kSharedPaletteMode, shared));
    RoundTrip(dir / "synth.sff");

    // Individual palettes in every sprite, which opening warns about.
    std::vector<SffSprite> individual;
    for (uint16_t i = 0; i < 6; ++i) individual.push_back(MakeSprite(i, i, 0, true, static_cast<int16_t>(-i), 3, 3 + i, 5));
    test::WriteFile(dir / "indiv.sff", EncodeSff(kIndividualPaletteMode, individual));
    RoundTrip(dir / "indiv.sff");

    // What real files do beyond those of ../shared/data, in the order of a chain.
    std::vector<SffSprite> q = {MakeSprite(9000, 0, 0, true), MakeSprite(9000, 1, 0, true),
                                MakeSprite(0, 0, 1, false, 5, 5, 9, 7)};
    auto add = [&q](uint16_t group, uint16_t item, uint8_t flag, std::vector<uint8_t> data, uint16_t link = 0) {
        SffSprite s = MakeSprite(group, item, flag, false);
        s.Data = std::move(data);
        s.LinkIndex = link;
        q.push_back(std::move(s));
    };
    const auto picture = [](int w, int h, int seed) { return test::MakePcx(w, h, seed, seed); };
    const auto bare = [](std::vector<uint8_t> pcx) { return pcx.resize(pcx.size() - 768), pcx; };  // ends in 0x0C
    add(10, 0, 0, TrueColourPcx(20, 15));                                      // 24-bit; its tail is "a palette"
    add(10, 1, 1, bare(picture(5, 5, 3)));                                      // takes the 24-bit tail
    add(11, 0, 1, bare(picture(6, 4, 4)), 999);                                 // link beyond the table, data
    add(11, 1, 1, {}, 999);                                                     // link beyond the table, none
    add(12, 0, 0, {});                                                          // an empty sprite
    add(13, 0, 0, Then(picture(8, 8, 5), std::vector<uint8_t>(50, 0xEE)));     // garbage after the palette
    add(13, 1, 0, Then(Then(bare(picture(8, 3, 6)), std::vector<uint8_t>(9, 0)), PaletteOf(q[0])));  // padding
    add(20, 0, 0, picture(10, 10, 7));                                          // a second palette holder
    add(20, 1, 1, bare(picture(3, 3, 8)));
    add(20, 2, 1, picture(4, 3, 9));                                            // flag 1, old palette kept
    std::vector<uint8_t> wideLines = test::MakePcx(4, 2, 1);  // 4 x 2 with 10 bytes a line
    wideLines.resize(128);
    WriteU16(wideLines.data() + 66, 10);
    for (uint8_t v = 1; v <= 20; ++v) wideLines.push_back(v);
    add(30, 0, 1, Then(wideLines, {0x0C}));                                     // BytesPerLine > width + 1
    add(31, 0, 0, bare(picture(40, 30, 10)));                                   // own flag, 0x0C, no palette
    add(32, 0, 0, Then(picture(6, 6, 11), PaletteOf(q[1])));                    // 0x0C and two palettes
    add(0, 1, 1, {}, 2);                                                        // linked to 0,0
    add(33, 0, 1, bare(picture(3, 5, 12)), 2);                                  // data and a stale link
    test::WriteFile(dir / "quirks.sff", EncodeSff(kSharedPaletteMode, q));
    const Trip trip = RoundTrip(dir / "quirks.sff");
    EXPECT_EQ(trip.Tally.Rows, static_cast<int>(q.size()));

    ASSERT_EQ(trip.Notices.size(), 1u);
    EXPECT_EQ(trip.Notices[0].Key, msg::SffLinkIgnored);
    EXPECT_NE(trip.Notices[0].Detail.find("subfile(s) 5, 6"), std::string::npos) << trip.Notices[0].Detail;
}

}  // namespace
}  // namespace tarvolin
