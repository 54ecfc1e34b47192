// tarvolin-cli as a user runs it: output, warnings and refusals, the exit status, the files the
// windows write, a build, the file the sample replaces (the commands: over the session).
#include <gtest/gtest.h>

#include <filesystem>

#include "base/Bytes.h"
#include "rebuild/BuildBatch.h"
#include "rebuild/ParamText.h"
#include "sff/SffReader.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

std::string Cli() { return test::BinDir() + "tarvolin-cli"; }

const std::vector<SffSprite> kSprites = {test::MakeSprite(9000, 0, 0, true), test::MakeSprite(0, 0, 0, true, -3, 90),
                                         test::MakeSprite(0, 1, 1, false)};

TEST(Cli, ListPrintsTheTableAndAnswersTheWarningWithYes) {
    test::TempDir dir;
    test::WriteFile(dir / "fighter.sff", EncodeSff(kSharedPaletteMode, kSprites));
    auto run = test::RunProgram(Cli(), {"list", dir / "fighter.sff"});
    ASSERT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out.substr(0, run.Out.find('\n', run.Out.find('\n') + 1) + 1),
              "SortNo\tGroupNo\tItemNo\tPalType\tSortKey\tP.Pos\tPCX Name\taxisX\taxisY\tPcxPath\n"
              "01\t9000\t0\t0\t 0000000000\t0\tfighter_09000_00000.pcx\t0\t0\t\n");

    test::WriteFile(dir / "indiv.sff", EncodeSff(kIndividualPaletteMode, kSprites));
    auto warned = test::RunProgram(Cli(), {"list", dir / "indiv.sff"});
    EXPECT_EQ(warned.Status, 0);
    EXPECT_NE(warned.Err.find("このSFFファイルは共有パレットモードではありません。\n"), std::string::npos);
    EXPECT_EQ(std::count(warned.Out.begin(), warned.Out.end(), '\n'), 4);

    std::vector<uint8_t> bad = EncodeSff(kSharedPaletteMode, kSprites);
    WriteU32(bad.data() + 20, 0);  // no images
    test::WriteFile(dir / "bad.sff", bad);
    auto refused = test::RunProgram(Cli(), {"list", dir / "bad.sff"});
    EXPECT_EQ(refused.Status, 2);
    EXPECT_EQ(refused.Out, "");
    EXPECT_NE(refused.Err.find("SFFファイルの画像数が正しくありません。\n" + dir / "bad.sff"), std::string::npos);

    EXPECT_EQ(test::RunProgram(Cli(), {"--help"}).Status, 0);
    EXPECT_EQ(test::RunProgram(Cli(), {"list"}).Status, 1);
    EXPECT_EQ(test::RunProgram(Cli(), {"frobnicate"}).Status, 1);
    EXPECT_EQ(test::RunProgram(Cli(), {"export", "--format", "bmp", dir / "fighter.sff", dir.Path()}).Status, 1);
}

// export and text write what Save All PCX and Make Text write.
TEST(Cli, ExportAndTextWriteWhatTheWindowsWrite) {
    test::TempDir dir;
    test::WriteFile(dir / "kfm.sff", EncodeSff(kSharedPaletteMode, kSprites));
    SffState state;
    SpriteTable table;
    ASSERT_TRUE(OpenSff(dir / "kfm.sff", "kfm.sff", state, table, AppIni{}, {}));
    fs::create_directory(dir / "out");
    ASSERT_EQ(test::RunProgram(Cli(), {"export", "kfm.sff", "out"}, {}, dir.Path()).Status, 0);
    EXPECT_EQ(test::ReadFile(dir / "out/kfm_00000_00000.pcx"), kSprites[1].Data);
    ASSERT_EQ(test::RunProgram(Cli(), {"text", "kfm.sff", dir / "out/kfm_SFF.txt"}, {}, dir.Path()).Status, 0);
    EXPECT_EQ(test::ReadText(dir / "out/kfm_SFF.txt"), ParamTextBytes(table, "kfm.sff").value());
    EXPECT_EQ(test::ReadText(dir / "out/kfm_SFFBuild.bat"),
              BuildBatBytes("kfm_SFF.txt", true, fs::canonical(test::BinDir()).string() + "/").value());
}

TEST(Cli, BuildMakesTheNewSffOrSaysThatNoneWasMade) {
    test::TempDir dir;
    test::WriteFile(dir / "f.sff", EncodeSff(kSharedPaletteMode, kSprites));
    auto run = test::RunProgram(Cli(), {"build", dir / "f.sff", dir / "out"});  // the folder is made
    ASSERT_EQ(run.Status, 0) << run.Out << run.Err;
    EXPECT_NE(run.Out.find("SFF を作成中 ...\nSFF 作成処理終了.\n"), std::string::npos) << run.Out;
    EXPECT_EQ(run.Out.find("Press any key"), std::string::npos);  // the batch has no pause
    EXPECT_NE(run.Out.find(dir / "out/f.sff: 3 sprites\n"), std::string::npos) << run.Out;

    // A copy of the tool with no sprmaker.exe beside it: the batch reports the missing builder
    // and the command sees that nothing new was made, though an SFF of that name stands there.
    fs::copy_file(Cli(), dir / "tarvolin-cli");
    run = test::RunProgram(dir / "tarvolin-cli", {"build", dir / "f.sff", dir / "out"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Out.find("'" + dir.Path() + "sprmaker.exe' cannot be run"), std::string::npos) << run.Out;
    EXPECT_NE(run.Err.find("no new SFF"), std::string::npos) << run.Err;

    test::WriteFile(dir / "old.sff", {1, 2, 3});
    ASSERT_EQ(test::RunProgram(Cli(), {"sample", dir / "old.sff"}).Status, 0);
    EXPECT_EQ(test::ReadFile(dir / "old.sff.bak"), (std::vector<uint8_t>{1, 2, 3}));
    EXPECT_EQ(test::RunProgram(Cli(), {"list", dir / "old.sff"}).Status, 0);
}

// check: a line per kind of quirk, the worst file's status; --quiet prints nothing. A
// picture the builder would refuse stops export and build before they write a byte.
TEST(Cli, CheckNamesEachQuirkAndGivesTheWorstStatus) {
    test::TempDir dir;
    test::WriteFile(dir / "clean.sff", EncodeSff(kSharedPaletteMode, kSprites));
    std::vector<SffSprite> quirky = kSprites;
    quirky.push_back(test::MakeLink(0, 2, 1, 0));           // engines show the first sprite there
    quirky.push_back(test::MakeLink(0, 3, 1, 4));           // linked to itself
    quirky.push_back(test::MakeSprite(0, 4, 1, false));
    quirky.back().LinkIndex = 2;                            // data of its own: a stale link
    test::WriteFile(dir / "quirky.sff", EncodeSff(kSharedPaletteMode, quirky));
    std::vector<SffSprite> broken = kSprites;
    broken[2].Data[0] = 0;  // a damaged PCX header
    test::WriteFile(dir / "broken.sff", EncodeSff(kSharedPaletteMode, broken));
    test::WriteFile(dir / "none.sff", {1, 2, 3});

    const auto check = [&](std::vector<std::string> files) {
        files.insert(files.begin(), "check");
        return test::RunProgram(Cli(), files, {}, dir.Path());
    };
    auto r = check({"clean.sff"});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Out, "clean.sff: clean\n");
    r = check({"clean.sff", "quirky.sff"});
    EXPECT_EQ(r.Status, 1);
    EXPECT_NE(r.Out.find("quirky.sff: stale-link: 1 subfile, first 5: data of its own and a link index; an engine "
                         "shows its own data; a rebuild repairs it: writes no link index\n"),
              std::string::npos) << r.Out;
    for (const char* line : {"quirky.sff: link-to-first: 1 subfile, first 3: ", "quirky.sff: self-link: 1 subfile, "
                             "first 4: no data of its own and a link to itself; an engine shows nothing: an engine "
                             "refuses to load the file; a rebuild repairs it: stores a 1x1 fully transparent picture"})
        EXPECT_NE(r.Out.find(line), std::string::npos) << r.Out;
    r = check({"broken.sff", "quirky.sff"});
    EXPECT_EQ(r.Status, 2);
    EXPECT_NE(r.Out.find("broken.sff: refused-picture: 1 subfile, first 2: "), std::string::npos) << r.Out;
    r = check({"--quiet", "none.sff", "clean.sff"});
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Out + r.Err, "");
    EXPECT_NE(check({"none.sff"}).Out.find("none.sff: unreadable: SFFファイルではありません。"), std::string::npos);
    fs::create_directory(dir / "out");
    for (const char* command : {"export", "build"}) {
        const auto run = test::RunProgram(Cli(), {command, "broken.sff", "out"}, {}, dir.Path());
        EXPECT_EQ(run.Status, 2) << command;
        EXPECT_NE(run.Err.find("row 3 (GroupNo 0, ItemNo 1, P.Pos 2): Manufacturer 0, 10 expected"), std::string::npos)
            << run.Err;
        EXPECT_TRUE(fs::is_empty(dir / "out")) << command;
    }
}

// Messages name folders, files and limits, control characters escaped; a Shift JIS name builds.
TEST(Cli, MessagesSayWhatIsWrongAndNamesPassAsTheyAre) {
    test::TempDir dir;
    const auto cli = [&](const std::vector<std::string>& args) { return test::RunProgram(Cli(), args, {}, dir.Path()); };
    EXPECT_NE(cli({"list", "a\nb.sff"}).Err.find("a\\x0Ab.sff\nNo such file"), std::string::npos);
    EXPECT_NE(cli({"list", dir.Path()}).Err.find("is a folder"), std::string::npos);
    test::WriteFile(dir / "f.sff", EncodeSff(kSharedPaletteMode, kSprites));
    const auto missing = cli({"export", "f.sff", "none"});
    EXPECT_EQ(missing.Status, 2);
    EXPECT_NE(missing.Err.find("none/\nthe folder does not exist"), std::string::npos);
    EXPECT_FALSE(fs::exists(dir / "none"));
    test::WriteFile(dir / "file", {});
    const auto uncreatable = cli({"build", "f.sff", "file/out"});
    EXPECT_EQ(uncreatable.Status, 2);
    EXPECT_NE(uncreatable.Err.find("file/out/\nthe folder cannot be made"), std::string::npos) << uncreatable.Err;

    fs::create_directory(dir / "out");
    test::WriteFile(dir / "big.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(1, 1, 0, true, 0, 0, 60, 40)}));
    const auto limited = test::RunProgram("/bin/sh", {"-c", "ulimit -f 2; exec '" + Cli() + "' export big.sff out"}, {},
                                          dir.Path());
    EXPECT_EQ(limited.Status, 2);
    EXPECT_NE(limited.Err.find("the file-size limit (ulimit -f) stops the write"), std::string::npos) << limited.Err;

    const std::string sjis = "\x8B\x5A";  // "技" in Shift JIS bytes
    test::WriteFile(dir / (sjis + ".sff"), EncodeSff(kSharedPaletteMode, kSprites));
    const auto built = cli({"build", sjis + ".sff", "sjis"});
    ASSERT_EQ(built.Status, 0) << built.Out << built.Err;
    EXPECT_TRUE(fs::exists(dir / ("sjis/" + sjis + "_00000_00000.pcx")));
    EXPECT_NE(built.Out.find("sjis/技.sff: 3 sprites"), std::string::npos) << built.Out;
    EXPECT_NE(test::ReadText(dir / "sjis/技_SFF.txt").find("#\r\n1\r\n2\r\n" + sjis + ".sff\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvolin
