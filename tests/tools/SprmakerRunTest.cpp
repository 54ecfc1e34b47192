// sprmaker.exe run as the build batch runs it: refusals, what stands there, options, log, real texts.
#include <gtest/gtest.h>

#include <filesystem>

#include "ParamInput.h"
#include "base/FolderLock.h"
#include "formats/PcxEncode.h"
#include "support/EngineView.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;
using test::ReadFile;

// A working folder that holds a.pcx.
struct Folder : test::TempDir {
    Folder() { Put("a.pcx", test::MakePcx(4, 3, 1)); }

    void Put(const std::string& name, const Bytes& bytes) const {
        fs::create_directories(fs::path(*this / name).parent_path());
        test::WriteFile(*this / name, bytes);
    }

    // sprmaker.exe run here with `text` on its standard input, which lies elsewhere.
    test::ProgramRun Build(const std::string& text, const std::vector<std::string>& args = {}) const {
        test::WriteText(input / "in.txt", text);
        return test::RunProgram(test::BinDir() + "sprmaker.exe", args, input / "in.txt", Path());
    }

    test::TempDir input;
};

std::string Entry(const std::string& name, int group, int item, int x = 0, int y = 0) {
    return name + "\r\n" + std::to_string(group) + "\r\n" + std::to_string(item) + "\r\n" + std::to_string(x) +
           "\r\n" + std::to_string(y) + "\r\n";
}

// Each refusal exits 1, says why on standard error and in the log, and leaves the folder alone.
TEST(SprmakerRun, EveryRefusalIsNamedAndLeavesNothingBehind) {
    Folder dir;
    Bytes fourBit = test::MakePcx(4, 3, 1);
    fourBit[3] = 4;
    dir.Put("fourbit.pcx", fourBit);
    Bytes colours;  // 300 colours, one a pixel
    for (int i = 0; i < 300; ++i) colours.insert(colours.end(), {uint8_t(i), uint8_t(i >> 8), 0});
    dir.Put("colours.png", test::MakePng(300, 1, 8, 2, colours));
    dir.Put("deep.png", test::MakePng(1, 1, 16, 2, Bytes(6, 1)));
    const Bytes whole = test::MakePng(4, 4, 8, 2, Bytes(48, 9));
    dir.Put("cut.png", Bytes(whole.begin(), whole.end() - 20));
    dir.Put("huge.png", test::MakePng(100000, 100000, 8, 3, {}, {1, 2, 3}));
    dir.Put("x.sff/keep.pcx", {1, 2});
    dir.Put("elsewhere.sff", {9});
    fs::create_symlink(dir / "elsewhere.sff", dir / "link.sff");
    const auto before = dir.Contents();
    // Says: on standard error for status 1, on standard output for 0.
    const struct { std::vector<std::string> Args; std::string Text; int Status; std::string Says; } cases[] = {
        {{}, "y.sff\r\na.pcx\r\n70000\r\n0\r\n0\r\n0\r\n", 1, "line 3 \"70000\": group number"},
        {{}, "", 1, "line 1: the input ends before the name of the SFF to make"},
        {{}, "y.sff\r\n" + Entry("missing.pcx", 0, 0), 1, "missing.pcx: No such file or directory (sprite on line 2)"},
        {{}, "y.sff\r\n" + Entry(std::string("mi\0s\x1Bs.pcx", 10), 0, 0), 1, "mi\\x00s\\x1Bs.pcx: No such file"},
        {{}, "y.sff\r\n" + Entry("a.pcx", 0, 0) + Entry("fourbit.pcx", 0, 1), 1,
         "fourbit.pcx: NPlanes 1, BitsPerPixel 4, 1 plane (256 colours) or 3 planes (24-bit) of 8 bits expected "
         "(sprite on line 7)"},
        {{}, "y.sff\r\n" + Entry("colours.png", 0, 0), 1,
         "colours.png: 300 colours: a picture of the engine holds at most 256"},
        {{}, "y.sff\r\n" + Entry("deep.png", 0, 0), 1, "deep.png: 16 bits a channel: only PNG files of up to 8 bits"},
        {{}, "y.sff\r\n" + Entry("cut.png", 0, 0), 1, "cut.png: libpng: the file ends early: it is truncated"},
        {{}, "y.sff\r\n" + Entry("huge.png", 0, 0), 1,
         "huge.png: 100000 x 100000 pixels: larger than a picture may be"},
        {{}, "no/such/folder/y.sff\r\n" + Entry("a.pcx", 0, 0), 1, "no/such/folder/y.sff: "},
        {{}, "x.sff\r\n" + Entry("a.pcx", 0, 0), 1, "x.sff: a folder stands under this name"},
        {{}, "link.sff\r\n" + Entry("a.pcx", 0, 0), 1, "link.sff: a symbolic link stands under this name"},
        {{"-z"}, "y.sff\r\n", 1, "unknown option '-z'"},
        {{"-\n"}, "y.sff\r\n", 1, "unknown option '-\\x0A'"},
        {{"-?"}, "", 0, "usage: sprmaker.exe"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Text);
        const auto r = dir.Build(c.Text, c.Args);
        EXPECT_EQ(r.Status, c.Status);
        EXPECT_NE((c.Status ? r.Err : r.Out).find(c.Says), std::string::npos) << r.Out << r.Err;
        if (c.Status == 1 && c.Args.empty()) {  // a build's refusal is in its log too
            EXPECT_NE(r.Out.find(r.Err), std::string::npos) << r.Out;
        }
        EXPECT_EQ(dir.Contents(), before);
    }
}

// The SFF it replaces is kept (each generation's name: AtomicFileTest). A failed build, or one
// refused while another builds there, touches nothing; temporaries of a killed run go.
TEST(SprmakerRun, WhatAlreadyStandsWhereItWrites) {
    Folder dir;
    ASSERT_EQ(dir.Build("x.sff\r\n" + Entry("a.pcx", 1, 0)).Status, 0);
    const auto replaced = dir.Build("x.sff\r\n" + Entry("a.pcx", 2, 0));
    EXPECT_NE(replaced.Out.find("the file it replaced is kept as x.sff.bak\n"), std::string::npos) << replaced.Out;
    const auto contents = dir.Contents();
    EXPECT_EQ(dir.Build("x.sff\r\n" + Entry("gone.pcx", 3, 0)).Status, 1);
    {
        auto running = FolderLock::Take(dir.Path(), kBuilderLock);
        ASSERT_TRUE(running);
        const auto r = dir.Build("y.sff\r\n" + Entry("a.pcx", 1, 0));
        EXPECT_EQ(r.Status, 1);
        EXPECT_NE(r.Err.find("another build or export is writing into this folder"), std::string::npos) << r.Err;
    }
    EXPECT_EQ(dir.Contents(), contents);

    for (const char* name : {".x.sff.tmp0123456789abcdef", ".a.pcx.tmp00000000000000ff", ".x.sff.tmp-mine"})
        dir.Put(name, {1});
    const auto r = dir.Build("x.sff\r\n" + Entry("a.pcx", 2, 0));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Out.find("temporary files of stopped earlier runs removed from the folder: 2\n"), std::string::npos)
        << r.Out;
    const auto after = dir.Contents();
    EXPECT_TRUE(after.count(".x.sff.tmp-mine") && !after.count(".a.pcx.tmp00000000000000ff") &&
                !after.count(".x.sff.tmp0123456789abcdef"));
}

TEST(SprmakerRun, PalettesLinksOptionsAndTheLog) {
    Folder dir;
    dir.Put("a.pcx", test::MakePcx(4, 3, 1, 7));
    dir.Put("b.pcx", test::MakePcx(5, 3, 2, 7));  // the same palette as a.pcx
    dir.Put("c.pcx", test::MakePcx(5, 3, 2, 7));  // the same bytes as b.pcx
    const std::string text = "#\r\n1\r\n2\r\nx.sff\r\n" + Entry("a.pcx", 0, 0, 1, 2) + Entry("b.pcx", 0, 1, 3, 4) +
                             "#\r\n1\r\n1\r\n" + Entry("c.pcx", 0, 2) + Entry("A.PCX", 5, 0, -1, -2) +
                             "#\r\n2\r\n2\r\n" + Entry("a.pcx", 5, 1) + Entry("a.pcx", 5, 2) + Entry("c.pcx", 5, 3) +
                             "\r\n";
    auto build = [&](const std::vector<std::string>& args) {
        const auto r = dir.Build(text, args);
        EXPECT_EQ(r.Status, 0) << r.Err;
        return std::make_pair(r.Out, test::EngineView(ReadFile(dir / "x.sff")));
    };
    // Shared mode: b takes the previous palette, c its own; A.PCX is a.pcx again, stored again
    // as link index 0 is no link, and a.pcx's next duplicate links to that copy.
    auto [log, f] = build({});
    ASSERT_EQ(f.Sprites.size(), 7u);
    EXPECT_EQ(f.GroupCount, 2u);
    const Bytes a = ReadFile(dir / "a.pcx"), b = ReadFile(dir / "b.pcx");
    EXPECT_EQ(f.Sprites[1].PalFlag, 1);
    EXPECT_EQ(f.Sprites[1].Picture, test::Bare(b));  // 0x0C kept
    EXPECT_EQ(f.Sprites[2].PalFlag, 0);
    EXPECT_FALSE(f.Sprites[2].Linked || f.Sprites[3].Linked || f.Sprites[4].Linked);  // 4: linking switched off
    EXPECT_EQ(f.Sprites[3].PalFlag, 1);
    EXPECT_EQ(f.Sprites[3].Picture, test::Bare(a));
    EXPECT_EQ(f.Sprites[5].LinkIndex, 3);
    EXPECT_NE(log.find("#3 A.PCX  group 5, image 0  axis -1,-2  flag 1\n"), std::string::npos) << log;
    EXPECT_NE(log.find("#5 a.pcx  group 5, image 2  axis 0,0  flag 1  linked to 3"), std::string::npos) << log;
    EXPECT_NE(log.find("unique images: 5"), std::string::npos);
    EXPECT_NE(log.find("palettes: 2"), std::string::npos);  // a and c; the rest are on the previous one
    EXPECT_EQ(log.find("Note:"), std::string::npos);        // nothing stands after the empty line

    // -f links c to b (same bytes), and c's repeat too; -p drops c's palette (equal to the
    // last stored one).
    EXPECT_EQ(f.Sprites[6].LinkIndex, 2);
    f = build({"-f"}).second;
    EXPECT_EQ(f.Sprites[2].LinkIndex, 1);
    EXPECT_EQ(f.Sprites[6].LinkIndex, 1);
    f = build({"-p"}).second;
    EXPECT_FALSE(f.Sprites[2].Linked);
    EXPECT_EQ(f.Sprites[2].PalFlag, 1);
    EXPECT_EQ(f.Sprites[2].Picture.size(), b.size() - 768);
    // -s gives the summary only, -q nothing at all.
    log = build({"-s"}).first;
    EXPECT_EQ(log.find("#0 "), std::string::npos);
    EXPECT_NE(log.find("images: 7"), std::string::npos);
    EXPECT_EQ(build({"-q"}).first, "");
    // Lines an empty line cuts off are counted in the log.
    log = dir.Build("x.sff\ra.pcx\r7\r0\r0\r0\r\ra.pcx\r8\r0\r0\r0\r").Out;
    EXPECT_NE(log.find("Note: the empty line 7 ends the list of sprites; not read: 5 lines with text after it\n"),
              std::string::npos) << log;
}

TEST(SprmakerRun, CropCutsToTheNonZeroPixelsAndMovesTheAxis) {
    Folder dir;
    Bytes px(9 * 7, 0);
    px[2 * 9 + 3] = 5;  // the drawn pixels span columns 3..6, lines 2..4
    px[4 * 9 + 6] = 9;
    Palette pal{};
    pal[15] = 200;
    dir.Put("p.pcx", EncodePcx(9, 7, px, pal));
    dir.Put("empty.pcx", EncodePcx(3, 3, Bytes(9, 0), pal));
    const auto r = dir.Build("x.sff\r\n" + Entry("empty.pcx", 0, 2, 1, 1) + Entry("p.pcx", 0, 0, 10, 20) +
                             Entry("p.pcx", 0, 1), {"-c"});
    ASSERT_EQ(r.Status, 0) << r.Err;
    const auto f = test::EngineView(ReadFile(dir / "x.sff"));
    ASSERT_EQ(f.Sprites.size(), 3u);
    Bytes cropped(4 * 3, 0);
    cropped[0] = 5;
    cropped[2 * 4 + 3] = 9;
    EXPECT_EQ(f.Sprites[1].Picture, EncodePcx(4, 3, cropped, pal));
    const auto axis = [](const test::EngineSprite& s) { return std::pair<int, int>(s.AxisX, s.AxisY); };
    EXPECT_EQ(axis(f.Sprites[1]), std::pair(7, 18));
    EXPECT_TRUE(f.Sprites[2].Linked);  // the linked copy's axis follows the crop
    EXPECT_EQ(axis(f.Sprites[2]), std::pair(-3, -2));
    EXPECT_EQ(f.Sprites[0].Picture, ReadFile(dir / "empty.pcx"));  // nothing drawn: kept whole
    EXPECT_EQ(f.Sprites[0].AxisX, 1);

    // With -f the same pixels moved link to p.pcx's sprite, their axis moved by their own crop.
    px.insert(px.begin(), 9 + 2, 0);
    px.resize(9 * 7);
    dir.Put("q.pcx", EncodePcx(9, 7, px, pal));
    ASSERT_EQ(dir.Build("x.sff\r\n" + Entry("empty.pcx", 0, 2) + Entry("p.pcx", 0, 0) + Entry("q.pcx", 0, 1, 10, 20),
                        {"-c", "-f"}).Status, 0);
    const auto g = test::EngineView(ReadFile(dir / "x.sff"));
    EXPECT_EQ(g.Sprites.at(2).LinkIndex, 1);
    EXPECT_EQ(axis(g.Sprites[2]), std::pair(5, 17));
}

// Readers take the shared palette from the first sprite's last 768 bytes: an SFF whose first
// sprite ends before offset 768 is not made; a bare first picture is stored as it is. No picture
// becomes a 1x1 one of colour 0 on its palette or the one in force (an empty subfile is a link).
TEST(SprmakerRun, NoSubfileIsLeftEmptyAndNoPaletteLiesBeforeTheFileStarts) {
    Folder dir;
    const Bytes tiny = test::Bare(test::MakePcx(1, 1, 3)), bare = test::Bare(test::MakePcx(20, 12, 3));
    ASSERT_TRUE(512 + 32 + bare.size() >= 768 && bare.size() < 768 && 512 + 32 + tiny.size() < 768);
    dir.Put("tiny.pcx", tiny);
    dir.Put("bare.pcx", bare);
    dir.Put("empty.pcx", {});
    dir.Put("palette.pcx", test::PaletteOf(test::MakePcx(2, 2, 1, 9)));
    const auto refused = dir.Build("x.sff\r\n" + Entry("tiny.pcx", 1, 0) + Entry("a.pcx", 1, 1));
    EXPECT_EQ(refused.Status, 1);
    EXPECT_NE(refused.Err.find("which ends at offset " + std::to_string(512 + 32 + tiny.size()) +
                               ": the first sprites need a picture with its palette"),
              std::string::npos) << refused.Err;
    EXPECT_FALSE(fs::exists(dir / "x.sff"));

    ASSERT_EQ(dir.Build("x.sff\r\n" + Entry("bare.pcx", 1, 0) + Entry("a.pcx", 1, 1)).Status, 0);
    EXPECT_EQ(test::EngineView(ReadFile(dir / "x.sff")).Sprites.at(0).Picture, bare);

    const auto r =
        dir.Build("x.sff\r\n" + Entry("empty.pcx", 1, 0) + Entry("a.pcx", 1, 1) + Entry("palette.pcx", 1, 2));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Out.find("Warning: empty.pcx: an empty file, a sprite without a picture: stored as a 1x1 fully "
                         "transparent picture"), std::string::npos) << r.Out;
    const auto f = test::EngineView(ReadFile(dir / "x.sff"));
    ASSERT_EQ(f.Sprites.size(), 3u);
    for (size_t i : {0u, 2u}) EXPECT_EQ(f.Sprites[i].Pixels, (test::EnginePixels{1, 1, 1, {0}})) << i;
    EXPECT_EQ(Bytes(f.Sprites[2].Colours.begin(), f.Sprites[2].Colours.end()), ReadFile(dir / "palette.pcx"));
}

// A write stopped by the file-size limit says so, and the log, appended to as the batch
// does, keeps what it held and ends with a whole line.
TEST(SprmakerRun, AFileSizeLimitIsNamedAndTheLogStaysWhole) {
    Folder dir;
    std::string text = "x.sff\r\n";
    for (int i = 0; i < 200; ++i) text += Entry("a.pcx", 1, i);  // the log outgrows the limit first
    test::WriteText(dir.input / "in.txt", text);
    test::WriteText(dir / "log.txt", "an earlier build\n");
    const std::string sprmaker = test::BinDir() + "sprmaker.exe";
    const auto r = test::RunProgram("/bin/sh", {"-c", "ulimit -f 10; exec '" + sprmaker + "' >> log.txt"},
                                    dir.input / "in.txt", dir.Path());
    EXPECT_EQ(r.Status, 1);
    EXPECT_NE(r.Err.find("the file-size limit (ulimit -f) stops the write"), std::string::npos) << r.Err;
    EXPECT_NE(r.Err.find("the log stops early"), std::string::npos) << r.Err;
    const std::string log = test::ReadText(dir / "log.txt");
    EXPECT_TRUE(log.starts_with("an earlier build\n") && log.size() > 20 && log.ends_with('\n')) << log;
    EXPECT_FALSE(fs::exists(dir / "x.sff"));
}

// The two real hand-written texts, stand-in pictures: the numbers of the engine builder's SFF.
TEST(SprmakerRun, RealHandWrittenTextsGiveTheirSffsNumbers) {
    TARVOLIN_REQUIRE_SHARED_DATA(data);
    for (const std::string stem : {"elecbyte_fight_sprmaker", "elecbyte_fightfx_sprmaker"}) {
        SCOPED_TRACE(stem);
        const std::string text = test::ReadText(data + stem + "_input.txt");
        const auto plan = sprmaker::ParseParamText(text);
        ASSERT_TRUE(plan);
        Folder dir;
        for (const sprmaker::SpriteEntry& s : plan.value().Sprites) {
            const int seed = static_cast<int>(s.Line);
            if (!fs::exists(dir / s.File)) dir.Put(s.File, test::MakePcx(3 + seed % 7, 2 + seed % 5, seed));
        }
        fs::create_directories(fs::path(dir / plan.value().OutputName).parent_path());

        const auto r = dir.Build(text);
        ASSERT_EQ(r.Status, 0) << r.Err;
        const auto built = test::EngineView(ReadFile(dir / plan.value().OutputName));
        const auto original = test::EngineView(ReadFile(data + stem + ".sff"), false);
        ASSERT_EQ(built.Sprites.size(), original.Sprites.size());
        EXPECT_EQ(built.GroupCount, original.GroupCount);
        EXPECT_EQ(built.PaletteMode, 0);
        for (size_t k = 0; k < built.Sprites.size(); ++k) {
            EXPECT_EQ(built.Sprites[k].GroupNo, original.Sprites[k].GroupNo) << k;
            EXPECT_EQ(built.Sprites[k].ItemNo, original.Sprites[k].ItemNo) << k;
            EXPECT_EQ(built.Sprites[k].PalFlag, 0) << k;
        }
        std::printf("[ hand text ] %s: %zu sprites, %u groups\n", stem.c_str(), built.Sprites.size(), built.GroupCount);
    }
}

}  // namespace
}  // namespace tarvolin
