// sprmaker.exe and what already stands where it writes: a folder under the output name, a
// second build into the same folder, earlier generations of the SFF, temporary files of a
// killed run; and the texts it refuses as a whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/FolderLock.h"
#include "config/AppIni.h"
#include "sff/SffReader.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

struct Folder : test::TempDir {
    Folder() { test::WriteFile(*this / "a.pcx", test::MakePcx(4, 3, 1)); }

    // sprmaker.exe run here with `text` on its standard input.
    test::ProgramRun Build(const std::string& text) const {
        test::WriteFile(input / "in.txt", std::vector<uint8_t>(text.begin(), text.end()));
        return test::RunProgram(test::BinDir() + "sprmaker.exe", {}, input / "in.txt", Path());
    }
    test::TempDir input;
};

std::string OneSprite(const std::string& output, int group) {
    return output + "\r\na.pcx\r\n" + std::to_string(group) + "\r\n0\r\n0\r\n0\r\n\r\n";
}

std::vector<std::string> Names(const std::string& dir) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(SprmakerOutput, ANameThatIsNoRegularFileIsRefusedBeforeAnythingIsWritten) {
    Folder dir;
    fs::create_directory(dir / "x.sff");
    test::WriteFile(dir / "x.sff/keep.pcx", {1, 2});
    test::WriteFile(dir / "elsewhere.sff", {9});
    fs::create_symlink(dir / "elsewhere.sff", dir / "link.sff");
    const auto before = Names(dir.Path());
    for (const auto& [name, says] : {std::pair{"x.sff", "x.sff: a folder stands under this name"},
                                     std::pair{"link.sff", "link.sff: a symbolic link stands under this name"}}) {
        const auto r = dir.Build(OneSprite(name, 1));
        EXPECT_EQ(r.Status, 1);
        EXPECT_NE(r.Err.find(says), std::string::npos) << r.Err;
        EXPECT_EQ(Names(dir.Path()), before);  // no backup, no temporary, not even a lock file
    }
    EXPECT_EQ(test::ReadFile(dir / "x.sff/keep.pcx"), std::vector<uint8_t>({1, 2}));
    EXPECT_EQ(test::ReadFile(dir / "elsewhere.sff"), std::vector<uint8_t>({9}));
    EXPECT_TRUE(fs::is_symlink(dir / "link.sff"));
}

// The original is never lost, and builds of the same table don't pile up copies.
TEST(SprmakerOutput, EveryDifferingGenerationIsKept) {
    Folder dir;
    ASSERT_EQ(dir.Build(OneSprite("x.sff", 1)).Status, 0);
    const auto original = test::ReadFile(dir / "x.sff");
    std::vector<std::string> logs;
    for (int run = 0; run < 3; ++run) {
        const auto r = dir.Build(OneSprite("x.sff", 2));
        ASSERT_EQ(r.Status, 0) << r.Err;
        logs.push_back(r.Out);
    }
    EXPECT_NE(logs[0].find("the file it replaced is kept as x.sff.bak\n"), std::string::npos) << logs[0];
    EXPECT_NE(logs[1].find("the file it replaced is kept as x.sff.bak2\n"), std::string::npos) << logs[1];
    EXPECT_NE(logs[2].find("the file it replaced is kept as x.sff.bak2\n"), std::string::npos) << logs[2];
    EXPECT_EQ(test::ReadFile(dir / "x.sff.bak"), original);
    EXPECT_EQ(test::ReadFile(dir / "x.sff.bak2"), test::ReadFile(dir / "x.sff"));
    EXPECT_EQ(Names(dir.Path()),
              (std::vector<std::string>{kBuilderLock, "a.pcx", "x.sff", "x.sff.bak", "x.sff.bak2"}));
}

TEST(SprmakerOutput, ASecondBuildIntoTheSameFolderIsRefusedWhileOneRuns) {
    Folder dir;
    ASSERT_EQ(dir.Build(OneSprite("x.sff", 1)).Status, 0);
    const auto first = test::ReadFile(dir / "x.sff");
    {
        auto running = FolderLock::Take(dir.Path(), kBuilderLock);  // a build in progress
        ASSERT_TRUE(running.ok());
        const auto r = dir.Build(OneSprite("x.sff", 2));
        EXPECT_EQ(r.Status, 1);
        EXPECT_NE(r.Err.find("another build or export is writing into this folder"), std::string::npos) << r.Err;
        EXPECT_EQ(test::ReadFile(dir / "x.sff"), first);
        EXPECT_FALSE(fs::exists(dir / "x.sff.bak"));
    }
    // Tarvolin holds its own lock on its working folder while the batch runs the builder.
    auto tarvolin = FolderLock::Take(dir.Path(), kWorkFolderLock);
    EXPECT_EQ(dir.Build(OneSprite("x.sff", 2)).Status, 0);
}

// What a killed run leaves (a temporary file whose writer is gone) is removed by the next
// build into the folder; a name of another form stays.
TEST(SprmakerOutput, TemporariesOfAKilledRunAreRemovedByTheNextBuild) {
    Folder dir;
    test::WriteFile(dir / ".x.sff.tmp0123456789abcdef", {1});
    test::WriteFile(dir / ".a.pcx.tmp00000000000000ff", {2});
    test::WriteFile(dir / ".x.sff.tmp-mine", {3});
    const auto r = dir.Build(OneSprite("x.sff", 1));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Out.find("temporary files of stopped earlier runs removed from the folder: 2\n"), std::string::npos)
        << r.Out;
    EXPECT_EQ(Names(dir.Path()), (std::vector<std::string>{kBuilderLock, ".x.sff.tmp-mine", "a.pcx", "x.sff"}));
}

// A text that makes no SFF is an error, and nothing is written; lines that an empty line
// cut off are counted in the log.
TEST(SprmakerOutput, TextsThatMakeNoSffFailAndCutOffLinesAreLogged) {
    Folder dir;
    const struct {
        std::string Text;
        std::string Says;
    } refused[] = {
        {"", "line 1: the input ends before the name of the SFF to make"},
        {"x.sff\r\n", "line 2: the input ends before the first sprite"},
        {"x.sff\r\n\r\na.pcx\r\n1\r\n2\r\n3\r\n4\r\n", "line 2 \"\": the empty line ends the list before its first"},
        {"x.sff\r\na.pcx\r\n12abc\r\n0\r\n0\r\n0\r\n", "line 3 \"12abc\": group number must be a whole number"},
        {"x.sff\ra.pcx\r1\r0x10\r0\r0\r", "line 4 \"0x10\": image number must be a whole number"},
        {"x.sff\na.pcx\n1\n2\n5.9\n0\n", "line 5 \"5.9\": X axis must be a whole number"},
    };
    for (const auto& c : refused) {
        SCOPED_TRACE(c.Text);
        const auto r = dir.Build(c.Text);
        EXPECT_EQ(r.Status, 1);
        EXPECT_NE(r.Err.find(c.Says), std::string::npos) << r.Err;
        EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"a.pcx"});
    }

    // Line ends of CR alone are line ends.
    const auto cr = dir.Build("x.sff\ra.pcx\r7\r0\r0\r0\r\ra.pcx\r8\r0\r0\r0\r");
    EXPECT_EQ(cr.Status, 0) << cr.Err;
    EXPECT_NE(cr.Out.find("images: 1\n"), std::string::npos) << cr.Out;
    EXPECT_NE(cr.Out.find("Note: the empty line 7 ends the list of sprites; not read: 5 lines with text after it\n"),
              std::string::npos)
        << cr.Out;
    EXPECT_EQ(dir.Build(OneSprite("y.sff", 1)).Out.find("Note:"), std::string::npos);  // nothing after the end
}

// Readers take the shared palette from the last 768 bytes of the first sprite: an SFF whose
// first sprite ends before offset 768 is not made, and a first picture stored without room
// for a palette behind it comes back as its own bytes.
TEST(SprmakerOutput, AnSffWhosePaletteWouldLieBeforeItsStartIsNotMade) {
    Folder dir;
    test::WriteFile(dir / "empty.pcx", {});
    std::vector<uint8_t> bare = test::MakePcx(20, 12, 3);
    bare.resize(bare.size() - 768);  // picture data and 0x0C, no palette
    ASSERT_GE(512 + 32 + bare.size(), 768u);
    ASSERT_LT(bare.size(), 768u);
    test::WriteFile(dir / "bare.pcx", bare);
    const auto text = [](const std::string& first) {
        return "x.sff\r\n" + first + "\r\n1\r\n0\r\n0\r\n0\r\na.pcx\r\n1\r\n1\r\n0\r\n0\r\n\r\n";
    };

    const auto refused = dir.Build(text("empty.pcx"));
    EXPECT_EQ(refused.Status, 1);
    EXPECT_NE(refused.Err.find("which ends at offset 544: the first sprites need a picture with its palette"),
              std::string::npos)
        << refused.Err;
    EXPECT_FALSE(fs::exists(dir / "x.sff"));

    const auto built = dir.Build(text("bare.pcx"));
    ASSERT_EQ(built.Status, 0) << built.Err;
    SffState state;
    SpriteTable table;
    ASSERT_TRUE(OpenSff(dir / "x.sff", "x.sff", state, table, DefaultAppIni(), [](const std::string&, int) { return true; }));
    ASSERT_EQ(table.RowCount(), 2);
    EXPECT_EQ(CutSubfile(state, state.Subfiles[0]), bare);
    EXPECT_EQ(CutSubfile(state, state.Subfiles[1]), test::MakePcx(4, 3, 1));
}

}  // namespace
}  // namespace tarvolin
