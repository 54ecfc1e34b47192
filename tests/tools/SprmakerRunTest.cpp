// sprmaker.exe run as the build batch runs it: errors, the .bak rule, the options and the
// two real hand-written texts.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "base/Bytes.h"
#include "base/FolderLock.h"
#include "base/TextHelpers.h"
#include "formats/PcxEncode.h"
#include "support/EngineView.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

// sprmaker.exe in `dir` with `text` on its standard input, which lies outside `dir`.
test::ProgramRun Sprmaker(const test::TempDir& dir, const std::string& text, std::vector<std::string> args = {}) {
    test::TempDir input;
    test::WriteFile(input / "in.txt", std::vector<uint8_t>(text.begin(), text.end()));
    return test::RunProgram(test::BinDir() + "sprmaker.exe", args, input / "in.txt", dir.Path());
}

// The builder's lock file (empty, hidden) stays in the folder once a build took it.
std::set<std::string> FilesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& e : fs::recursive_directory_iterator(folder)) names.insert(fs::relative(e.path(), folder).string());
    names.erase(kBuilderLock);
    return names;
}

void Put(const test::TempDir& dir, const std::string& name, const std::vector<uint8_t>& bytes) {
    fs::create_directories(fs::path(dir / name).parent_path());
    test::WriteFile(dir / name, bytes);
}

std::string Entry(const std::string& name, int group, int item, int x, int y) {
    return name + "\r\n" + std::to_string(group) + "\r\n" + std::to_string(item) + "\r\n" + std::to_string(x) +
           "\r\n" + std::to_string(y) + "\r\n";
}

// Each failure exits 1, says why on standard error and in the log, and leaves the folder
// as it was: no SFF, no temporary file.
TEST(SprmakerRun, EveryErrorIsNamedAndLeavesNothingBehind) {
    test::TempDir dir;
    const auto ok = test::MakePcx(4, 3, 1);
    Put(dir, "ok.pcx", ok);
    auto bad = ok;
    bad[3] = 4;  // 4 bits per pixel
    Put(dir, "fourbit.pcx", bad);
    bad = ok;
    bad[2] = 0;  // not run-length encoded
    Put(dir, "raw.pcx", bad);
    Put(dir, "short.pcx", {10, 5, 1, 8});
    Put(dir, "header.pcx", std::vector<uint8_t>(ok.begin(), ok.begin() + 128));  // no byte of picture data
    auto sized = [&ok](uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine) {
        auto b = ok;
        WriteU16(b.data() + 8, xmax), WriteU16(b.data() + 10, ymax), WriteU16(b.data() + 66, bytesPerLine);
        return b;
    };
    Put(dir, "wide.pcx", sized(32767, 0, 32768));    // 32768 pixels wide
    Put(dir, "large.pcx", sized(8192, 8191, 8194));  // 8193 x 8192
    const auto before = FilesIn(dir.Path());

    const struct {
        std::vector<std::string> Args;
        std::string Text;
        int Status;
        std::string Says;  // on standard error for status 1, on standard output for 0
    } cases[] = {
        {{}, "x.sff\r\n" + Entry("ok.pcx", 0, 0, 0, 0) + "ok.pcx\r\n1\r\nabc\r\n", 1, "line 9 \"abc\": image number"},
        {{}, "x.sff\r\nok.pcx\r\n70000\r\n0\r\n0\r\n0\r\n", 1, "line 3 \"70000\": group number"},
        {{}, "x.sff\r\nok.pcx\r\n1\r\n2\r\n3\r\n", 1, "line 2 \"ok.pcx\": the input ends before the sprite's Y axis"},
        {{}, "x.sff\r\n" + Entry("missing.pcx", 0, 0, 0, 0), 1,
         "missing.pcx: No such file or directory (sprite on line 2)"},
        {{}, "x.sff\r\n" + Entry("ok.pcx", 0, 0, 0, 0) + Entry("fourbit.pcx", 0, 1, 0, 0), 1,
         "fourbit.pcx: NPlanes 1, BitsPerPixel 4, 1 plane (256 colours) or 3 planes (24-bit) of 8 bits expected "
         "(sprite on line 7)"},
        {{}, "x.sff\r\n" + Entry("raw.pcx", 0, 0, 0, 0), 1, "raw.pcx: Encoding 0, 1 expected (run-length encoded)"},
        {{}, "x.sff\r\n" + Entry("short.pcx", 0, 0, 0, 0), 1, "short.pcx: NPlanes 0"},
        {{}, "x.sff\r\n" + Entry("header.pcx", 0, 0, 0, 0), 1, "header.pcx: only 128 bytes: no picture data"},
        {{}, "x.sff\r\n" + Entry("wide.pcx", 0, 0, 0, 0), 1, "wide.pcx: Xmax 32767, Ymax 0, BytesPerLine 32768"},
        {{}, "x.sff\r\n" + Entry("large.pcx", 0, 0, 0, 0), 1, "large.pcx: last column 8193, last line 8191: picture too large"},
        {{}, "no/such/folder/x.sff\r\n" + Entry("ok.pcx", 0, 0, 0, 0), 1, "no/such/folder/x.sff: "},
        {{"-z"}, "x.sff\r\n", 1, "unknown option '-z'"},
        {{}, "\r\nx.sff\r\n", 1, "line 1 \"\": an empty line stands where the name of the SFF to make must be"},
        {{"-?"}, "", 0, "usage: sprmaker.exe"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Text);
        const auto r = Sprmaker(dir, c.Text, c.Args);
        EXPECT_EQ(r.Status, c.Status);
        EXPECT_NE((c.Status ? r.Err : r.Out).find(c.Says), std::string::npos) << r.Out << r.Err;
        if (c.Status == 1 && c.Args.empty()) {  // a build's error is in its log too
            EXPECT_NE(r.Out.find(r.Err), std::string::npos) << r.Out;
        }
        EXPECT_EQ(FilesIn(dir.Path()), before);
    }
}

TEST(SprmakerRun, AReplacedSffIsKeptAsBakAndAFailedBuildTouchesNeither) {
    test::TempDir dir;
    Put(dir, "a.pcx", test::MakePcx(4, 3, 1));
    auto build = [&](const std::string& file, int group) {
        return Sprmaker(dir, "x.sff\r\n" + Entry(file, group, 0, 0, 0));
    };
    ASSERT_EQ(build("a.pcx", 1).Status, 0);
    EXPECT_FALSE(fs::exists(dir / "x.sff.bak"));
    const auto first = test::ReadFile(dir / "x.sff");

    const auto second = build("a.pcx", 2);
    ASSERT_EQ(second.Status, 0);
    EXPECT_NE(second.Out.find("kept as x.sff.bak"), std::string::npos);
    EXPECT_EQ(test::ReadFile(dir / "x.sff.bak"), first);
    const auto secondBytes = test::ReadFile(dir / "x.sff");
    EXPECT_EQ(test::EngineView(secondBytes).Sprites.at(0).GroupNo, 2);

    // A third build keeps the second file as .bak2 beside the first; a failing one touches none.
    ASSERT_EQ(build("a.pcx", 3).Status, 0);
    EXPECT_EQ(test::ReadFile(dir / "x.sff.bak"), first);
    EXPECT_EQ(test::ReadFile(dir / "x.sff.bak2"), secondBytes);
    const auto third = test::ReadFile(dir / "x.sff");
    EXPECT_EQ(build("gone.pcx", 4).Status, 1);
    EXPECT_EQ(test::ReadFile(dir / "x.sff"), third);
    EXPECT_EQ(test::ReadFile(dir / "x.sff.bak2"), secondBytes);
    EXPECT_EQ(FilesIn(dir.Path()), (std::set<std::string>{"a.pcx", "x.sff", "x.sff.bak", "x.sff.bak2"}));
}

TEST(SprmakerRun, PalettesLinksOptionsAndTheLog) {
    test::TempDir dir;
    Put(dir, "a.pcx", test::MakePcx(4, 3, 1, 7));
    Put(dir, "b.pcx", test::MakePcx(5, 3, 2, 7));  // the same palette as a.pcx
    Put(dir, "c.pcx", test::MakePcx(5, 3, 2, 7));  // the same bytes as b.pcx
    const std::string text = "#\r\n1\r\n2\r\nx.sff\r\n" + Entry("a.pcx", 0, 0, 1, 2) + Entry("b.pcx", 0, 1, 3, 4) +
                             "#\r\n1\r\n1\r\n" + Entry("c.pcx", 0, 2, 0, 0) + Entry("A.PCX", 5, 0, -1, -2) +
                             "#\r\n2\r\n2\r\n" + Entry("a.pcx", 5, 1, 0, 0) + Entry("a.pcx", 5, 2, 0, 0) + "\r\n";
    auto build = [&](std::vector<std::string> args) {
        const auto r = Sprmaker(dir, text, args);
        EXPECT_EQ(r.Status, 0) << r.Err;
        return std::make_pair(r.Out, test::EngineView(test::ReadFile(dir / "x.sff")));
    };

    // Shared mode: b uses the previous palette; c asks for its own; A.PCX is a.pcx again,
    // but the first sprite can't be linked to (link index 0 is no link): it is stored again
    // from the bytes read for it, and a.pcx's next duplicate links to that copy.
    auto [log, f] = build({});
    ASSERT_EQ(f.Sprites.size(), 6u);
    EXPECT_EQ(f.PaletteMode, 1);
    EXPECT_EQ(f.GroupCount, 2u);
    const auto a = test::ReadFile(dir / "a.pcx");
    const auto b = test::ReadFile(dir / "b.pcx");
    EXPECT_EQ(f.Sprites[1].PalFlag, 1);
    EXPECT_EQ(f.Sprites[1].Picture, std::vector<uint8_t>(b.begin(), b.end() - 768));  // 0x0C kept
    EXPECT_EQ(f.Sprites[2].PalFlag, 0);
    EXPECT_FALSE(f.Sprites[2].Linked);
    EXPECT_FALSE(f.Sprites[3].Linked);
    EXPECT_EQ(f.Sprites[3].PalFlag, 1);  // its palette is the one in force
    EXPECT_EQ(f.Sprites[3].Picture, std::vector<uint8_t>(a.begin(), a.end() - 768));
    EXPECT_EQ(f.Sprites[3].AxisX, -1);
    EXPECT_FALSE(f.Sprites[4].Linked);  // linking switched off for it
    EXPECT_TRUE(f.Sprites[5].Linked);
    EXPECT_EQ(f.Sprites[5].LinkIndex, 3);
    EXPECT_NE(log.find("#3 A.PCX  group 5, image 0  axis -1,-2  flag 1\n"), std::string::npos) << log;
    EXPECT_NE(log.find("#5 a.pcx  group 5, image 2  axis 0,0  flag 1  linked to 3"), std::string::npos) << log;
    EXPECT_NE(log.find("unique images: 5"), std::string::npos);
    EXPECT_NE(log.find("palettes: 2"), std::string::npos);  // a and c; the rest are on the previous one

    // -f links c to b (same bytes), -p drops c's palette (equal to the last stored one).
    f = build({"-f"}).second;
    EXPECT_TRUE(f.Sprites[2].Linked);
    EXPECT_EQ(f.Sprites[2].LinkIndex, 1);
    f = build({"-p"}).second;
    EXPECT_FALSE(f.Sprites[2].Linked);
    EXPECT_EQ(f.Sprites[2].PalFlag, 1);
    EXPECT_EQ(f.Sprites[2].Picture.size(), b.size() - 768);

    // -s gives the summary only, -q nothing at all.
    log = build({"-s"}).first;
    EXPECT_EQ(log.find("#0 "), std::string::npos);
    EXPECT_NE(log.find("images: 6"), std::string::npos);
    EXPECT_EQ(build({"-q"}).first, "");
}

// Each file is stored so that the engine reads from the new SFF what it read from the
// file: its bytes as they stand, less its last 768 only where the palette in force is the
// same; an empty picture as a subfile without data. Every repair has its warning line.
TEST(SprmakerRun, EachPictureIsStoredAsTheEngineReadsItsFile) {
    test::TempDir dir;
    auto bare = [](std::vector<uint8_t> pcx) { return pcx.resize(pcx.size() - 768), pcx; };
    const auto first = test::MakePcx(4, 3, 1, 7);
    const std::vector<uint8_t> palette(first.end() - 768, first.end());
    auto padded = bare(test::MakePcx(5, 3, 2, 7));  // 0x0C, three zeros, the same palette
    padded.insert(padded.end(), 3, 0);
    padded.insert(padded.end(), palette.begin(), palette.end());
    auto trueColour = bare(test::MakePcx(2, 2, 0));
    trueColour.resize(128);
    trueColour[65] = 3;
    for (uint8_t v = 1; v <= 12; ++v) trueColour.push_back(v);
    const std::vector<std::pair<std::string, std::vector<uint8_t>>> files = {
        {"first.pcx", first},
        {"padded.pcx", padded},
        {"other.pcx", test::MakePcx(5, 3, 3, 9)},         // a palette other than the one in force
        {"bare.pcx", bare(test::MakePcx(30, 30, 4, 7))},  // no palette behind the picture
        {"rgb.pcx", trueColour},
        {"none.pcx", {}},
        {"palette.pcx", palette},
    };
    std::string text = "#\r\n1\r\n2\r\nx.sff\r\n";  // shared mode: every sprite asks for the previous palette
    for (size_t i = 0; i < files.size(); ++i) {
        Put(dir, files[i].first, files[i].second);
        text += Entry(files[i].first, 1, static_cast<int>(i), 0, 0);
    }
    const auto r = Sprmaker(dir, text);
    ASSERT_EQ(r.Status, 0) << r.Err;
    const auto f = test::EngineView(test::ReadFile(dir / "x.sff"));
    ASSERT_EQ(f.Sprites.size(), files.size());
    const struct {
        uint8_t Flag;
        size_t Cut;        // bytes left out of the file
        const char* Says;  // the warning, or "" for none
    } want[] = {
        {0, 0, ""},
        {1, 768, "padded.pcx: 4 bytes between the picture data and the palette"},
        {0, 0, "other.pcx: asked for the previous palette, but its own differs from the one in force: stored with its own"},
        {0, 0, "bare.pcx: only 1 byte after the picture data, no room for a palette: stored as it is, with a palette flag of 0"},
        {0, 0, "rgb.pcx: a 24-bit picture (3 colour planes): stored as it is"},
        {1, 0, "none.pcx: an empty file: stored as a sprite without a picture"},
        {1, 0, "palette.pcx: 768 bytes and no PCX header"},
    };
    for (size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE(files[i].first);
        const test::EngineSprite& s = f.Sprites[i];
        EXPECT_EQ(s.PalFlag, want[i].Flag);
        EXPECT_EQ(s.LinkIndex, 0);
        EXPECT_EQ(s.Empty, i >= 5);
        const auto& bytes = files[i].second;
        if (i < 5) {
            EXPECT_EQ(s.Picture, std::vector<uint8_t>(bytes.begin(), bytes.end() - static_cast<long>(want[i].Cut)));
        }
        if (*want[i].Says) {
            EXPECT_NE(r.Out.find("\nWarning: " + std::string(want[i].Says)), std::string::npos) << r.Out;
        } else {
            EXPECT_EQ(r.Out.find("Warning: " + files[i].first), std::string::npos) << r.Out;
        }
    }
}

TEST(SprmakerRun, CropCutsToTheNonZeroPixelsAndMovesTheAxis) {
    test::TempDir dir;
    std::vector<uint8_t> px(9 * 7, 0);
    px[2 * 9 + 3] = 5;  // the drawn pixels span columns 3..6, lines 2..4
    px[4 * 9 + 6] = 9;
    Palette pal{};
    pal[15] = 200;
    Put(dir, "p.pcx", EncodePcx(9, 7, px, pal));
    Put(dir, "empty.pcx", EncodePcx(3, 3, std::vector<uint8_t>(9, 0), pal));
    const auto r = Sprmaker(
        dir, "x.sff\r\n" + Entry("empty.pcx", 0, 2, 1, 1) + Entry("p.pcx", 0, 0, 10, 20) + Entry("p.pcx", 0, 1, 0, 0),
        {"-c"});
    ASSERT_EQ(r.Status, 0) << r.Err;
    const auto f = test::EngineView(test::ReadFile(dir / "x.sff"));
    ASSERT_EQ(f.Sprites.size(), 3u);
    EXPECT_EQ(f.Sprites[1].AxisX, 7);
    EXPECT_EQ(f.Sprites[1].AxisY, 18);
    std::vector<uint8_t> expected(4 * 3, 0);
    expected[0] = 5;
    expected[2 * 4 + 3] = 9;
    EXPECT_EQ(f.Sprites[1].Picture, EncodePcx(4, 3, expected, pal));
    EXPECT_TRUE(f.Sprites[2].Linked);  // the linked copy's axis follows the crop
    EXPECT_EQ(f.Sprites[2].AxisX, -3);
    EXPECT_EQ(f.Sprites[2].AxisY, -2);
    EXPECT_EQ(f.Sprites[0].Picture, test::ReadFile(dir / "empty.pcx"));  // nothing drawn: kept whole
    EXPECT_EQ(f.Sprites[0].AxisX, 1);

    // With -f the same pixels two columns right and a line down crop to the same bytes and
    // link to p.pcx's sprite, but their axis moves by their own crop, so that they stay
    // where they stood in their picture.
    std::vector<uint8_t> moved(9 * 7, 0);
    moved[3 * 9 + 5] = 5;
    moved[5 * 9 + 8] = 9;
    Put(dir, "q.pcx", EncodePcx(9, 7, moved, pal));
    const auto linked = Sprmaker(
        dir, "x.sff\r\n" + Entry("empty.pcx", 0, 2, 1, 1) + Entry("p.pcx", 0, 0, 10, 20) + Entry("q.pcx", 0, 1, 10, 20),
        {"-c", "-f"});
    ASSERT_EQ(linked.Status, 0) << linked.Err;
    const auto g = test::EngineView(test::ReadFile(dir / "x.sff"));
    ASSERT_EQ(g.Sprites.size(), 3u);
    EXPECT_TRUE(g.Sprites[2].Linked);
    EXPECT_EQ(g.Sprites[2].LinkIndex, 1);
    EXPECT_EQ(g.Sprites[2].AxisX, 5);
    EXPECT_EQ(g.Sprites[2].AxisY, 17);
}

// The two real texts written by hand for the engine's builder, read as they are, with
// stand-in pictures at the paths they name. Group and image numbers must match the SFF the
// engine's builder made from them; the axes are those of the text (edited after that).
TEST(SprmakerRun, RealHandWrittenTextsGiveTheirSffsNumbers) {
    TARVOLIN_REQUIRE_SHARED_DATA(data);
    for (const std::string stem : {"elecbyte_fight_sprmaker", "elecbyte_fightfx_sprmaker"}) {
        SCOPED_TRACE(stem);
        const auto textBytes = test::ReadFile(data + stem + "_input.txt");
        const std::string text(textBytes.begin(), textBytes.end());
        const auto original = test::EngineView(test::ReadFile(data + stem + ".sff"), false);

        // Read independently: comments, then the name, then five lines a sprite, up to an empty line.
        std::vector<std::string> lines;
        for (size_t pos = 0, end; pos < text.size(); pos = end + 1) {
            end = std::min(text.find('\n', pos), text.size());
            std::string line = text.substr(pos, end - pos);
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (line.empty()) break;
            if (line[0] != ';') lines.push_back(line);
        }
        ASSERT_EQ((lines.size() - 1) % 5, 0u);
        test::TempDir dir;
        for (size_t i = 1; i < lines.size(); i += 5) {
            const int seed = static_cast<int>(i);
            if (!fs::exists(dir / lines[i])) Put(dir, lines[i], test::MakePcx(3 + seed % 7, 2 + seed % 5, seed));
        }
        fs::create_directories(fs::path(dir / lines[0]).parent_path());

        const auto r = Sprmaker(dir, text);
        ASSERT_EQ(r.Status, 0) << r.Err;
        const auto built = test::EngineView(test::ReadFile(dir / lines[0]));
        ASSERT_EQ(built.Sprites.size(), (lines.size() - 1) / 5);
        ASSERT_EQ(built.Sprites.size(), original.Sprites.size());
        EXPECT_EQ(built.GroupCount, original.GroupCount);
        EXPECT_EQ(built.PaletteMode, 0);
        for (size_t k = 0; k < built.Sprites.size(); ++k) {
            SCOPED_TRACE(lines[1 + 5 * k]);
            const auto& s = built.Sprites[k];
            EXPECT_EQ(s.GroupNo, original.Sprites[k].GroupNo);
            EXPECT_EQ(s.ItemNo, original.Sprites[k].ItemNo);
            EXPECT_EQ(DecimalText(s.GroupNo) + " " + DecimalText(s.ItemNo) + " " + DecimalText(s.AxisX) + " " +
                          DecimalText(s.AxisY),
                      lines[2 + 5 * k] + " " + lines[3 + 5 * k] + " " + lines[4 + 5 * k] + " " + lines[5 + 5 * k]);
            EXPECT_EQ(s.PalFlag, 0);
        }
        std::printf("[ hand text ] %s: %zu sprites, %u groups\n", stem.c_str(), built.Sprites.size(), built.GroupCount);
    }
}

}  // namespace
}  // namespace tarvolin
