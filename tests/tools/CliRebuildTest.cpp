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

TEST(CliRebuild, ExportAndTextWriteWhatTheWindowsWrite) {
    test::TempDir dir;
    const std::vector<SffSprite> sprites = {test::MakeSprite(0, 0, 0, true), test::MakeSprite(3, 0, 0, true, -5, 7)};
    test::WriteFile(dir / "kfm.sff", EncodeSff(kSharedPaletteMode, sprites));
    const auto cli = [&](const std::vector<std::string>& args) {
        return test::RunProgram(test::BinDir() + "tarvolin-cli", args, {}, dir.Path()).Status;
    };
    fs::create_directory(dir / "out");
    ASSERT_EQ(cli({"export", "kfm.sff", "out"}), 0);
    EXPECT_EQ(test::ReadFile(dir / "out/kfm_00003_00000.pcx"), sprites[1].Data);
    ASSERT_EQ(cli({"text", "kfm.sff", dir / "out/kfm_SFF.txt"}), 0);
    SffState state;
    SpriteTable table;
    ASSERT_TRUE(OpenSff(dir / "kfm.sff", "kfm.sff", state, table, AppIni{}, {}));
    EXPECT_EQ(test::ReadText(dir / "out/kfm_SFF.txt"), ParamTextBytes(table, "kfm.sff").value());
    EXPECT_EQ(test::ReadText(dir / "out/kfm_SFFBuild.bat"),
              BuildBatBytes("kfm_SFF.txt", true, fs::canonical(test::BinDir()).string() + "/").value());
    EXPECT_EQ(cli({"export", "kfm.sff", "missing"}), 2);
    EXPECT_FALSE(fs::exists(dir / "missing"));

    // A sprite whose picture the builder would refuse stops export and build before they
    // write a byte, named by its row.
    std::vector<SffSprite> broken = sprites;
    broken[1].Data[0] = 0;
    test::WriteFile(dir / "broken.sff", EncodeSff(kSharedPaletteMode, broken));
    for (const char* command : {"export", "build"}) {
        fs::create_directory(dir / "empty");
        const auto run = test::RunProgram(test::BinDir() + "tarvolin-cli", {command, "broken.sff", "empty"}, {}, dir.Path());
        EXPECT_EQ(run.Status, 2) << command;
        EXPECT_NE(run.Err.find("row 2 (GroupNo 3, ItemNo 0, P.Pos 1): Manufacturer 0, 10 expected"), std::string::npos)
            << run.Err;
        EXPECT_TRUE(fs::is_empty(dir / "empty")) << command;
    }
}

}  // namespace
}  // namespace tarvolin
