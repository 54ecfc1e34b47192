#include <gtest/gtest.h>

#include "base/Codepage.h"
#include "base/MessageKeys.h"
#include "rebuild/BuildBatch.h"

namespace tarvolin {
namespace {

const char* const kBatch =
    "@echo off\r\n"
    "echo SFF を作成中 ...\r\n"
    "\"/opt/my tools/sprmaker.exe\" < fighter_SFF.txt > CreateLog.txt\r\n"
    "cls\r\n"
    "echo SFF 作成処理終了.\r\n"
    "echo 処理経過のログは、 Createlog.txt を参照して下さい.\r\n";

// Refused: a name CP932 can't hold, a program folder with a quote (it would end the builder's
// quoted path early; a quote in the parameter name stands bare behind "<": BatchScriptTest).
TEST(BuildBatch, SixLinesOrSevenWithPauseInCp932) {
    EXPECT_EQ(BuildBatBytes("fighter_SFF.txt", true, "/opt/my tools/").value(),
              *ToCp932(std::string(kBatch) + "pause\r\n"));
    EXPECT_EQ(BuildBatBytes("fighter_SFF.txt", false, "/opt/my tools/").value(), *ToCp932(kBatch));
    EXPECT_EQ(BuildBatBytes("그림.txt", true, "/t/").error().Key, msg::NotCp932);
    auto refused = BuildBatBytes("fighter_SFF.txt", true, "/usr/bin/env\"x/");
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().Key, msg::QuoteInProgramFolder);
    EXPECT_NE(refused.error().Detail.find("/usr/bin/env\"x/"), std::string::npos);
}

TEST(BuildBatch, NameDropsFourCp932Bytes) {
    EXPECT_EQ(BatchNameFor("fighter_SFF.txt"), "fighter_SFFBuild.bat");
    EXPECT_EQ(BatchNameFor("技_SFF.txt"), "技_SFFBuild.bat");
    EXPECT_EQ(BatchNameFor("ソ表.txt"), "ソ表Build.bat");  // trail bytes 0x5C stay parts of their characters
    EXPECT_EQ(BatchNameFor("表.tx"), "Build.bat");        // 表 is cut in half: dropped whole
    EXPECT_EQ(BatchNameFor("a表.tx"), "aBuild.bat");
    EXPECT_EQ(BatchNameFor("名前"), "Build.bat");         // two double-byte characters are four bytes
}

}  // namespace
}  // namespace tarvolin
