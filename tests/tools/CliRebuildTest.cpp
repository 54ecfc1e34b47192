// tarvolin-cli export and text: the same files as Save All PCX and Make Text.
#include <gtest/gtest.h>

#include <filesystem>

#include "rebuild/BuildBatch.h"
#include "rebuild/ParamText.h"
#include "sff/SffReader.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

test::ProgramRun Cli(const test::TempDir& dir, std::vector<std::string> args) {
    return test::RunProgram(test::BinDir() + "tarvolin-cli", args, {}, dir.Path());
}

TEST(CliRebuild, ExportAndTextWriteWhatTheWindowsWrite) {
    test::TempDir dir;
    std::vector<SffSprite> sprites = {test::MakeSprite(0, 0, 0, true), test::MakeSprite(0, 1, 1, false),
                                      test::MakeSprite(3, 0, 0, true, -5, 7)};
    test::WriteFile(dir / "kfm.sff", EncodeSff(kSharedPaletteMode, sprites));
    fs::create_directory(dir / "out");

    ASSERT_EQ(Cli(dir, {"export", "kfm.sff", "out"}).Status, 0);
    EXPECT_EQ(test::ReadFile(dir / "out/kfm_00003_00000.pcx"), sprites[2].Data);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir / "out"), {}), 4);  // and the folder's work lock

    ASSERT_EQ(Cli(dir, {"text", "kfm.sff", dir / "out/kfm_SFF.txt"}).Status, 0);
    SffState state;
    SpriteTable table;
    ASSERT_TRUE(OpenSff(dir / "kfm.sff", "kfm.sff", state, table, AppIni{}, {}).ok());
    const auto written = test::ReadFile(dir / "out/kfm_SFF.txt");
    EXPECT_EQ(std::string(written.begin(), written.end()), ParamTextBytes(table, "kfm.sff").value());
    const auto batch = test::ReadFile(dir / "out/kfm_SFFBuild.bat");
    EXPECT_EQ(std::string(batch.begin(), batch.end()),
              BuildBatBytes("kfm_SFF.txt", true, fs::canonical(test::BinDir()).string() + "/").value());

    const auto failed = Cli(dir, {"export", "kfm.sff", "missing"});
    EXPECT_EQ(failed.Status, 2);
    EXPECT_NE(failed.Err.find("missing/"), std::string::npos) << failed.Err;
    EXPECT_FALSE(fs::exists(dir / "missing"));
}

}  // namespace
}  // namespace tarvolin
