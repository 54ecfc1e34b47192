// The settings file: private-profile lookup rules, defaults, and what start-up reads.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include "base/Codepage.h"
#include "base/TextHelpers.h"
#include "config/MessageCatalog.h"
#include "config/Settings.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

std::vector<uint8_t> Cp932File(const std::string& utf8) {
    auto bytes = ToCp932(utf8);
    EXPECT_TRUE(bytes.has_value());
    return std::vector<uint8_t>(bytes->begin(), bytes->end());
}

TEST(Settings, NoFileGivesEveryDefaultWithoutAWord) {
    test::TempDir dir;
    Settings s = LoadSettings(dir / "tarvolin.ini");
    EXPECT_EQ(s.Ini.IniPath, dir / "tarvolin.ini");
    EXPECT_EQ(s.Ini.MsgConfirmExit, "終了しますか？");
    EXPECT_EQ(s.Captions["MAIN_SFFOPEN"], "&Open SFF");
    for (const MessageEntry& m : MessageTable()) EXPECT_FALSE(s.Ini.Message(m.Key).empty()) << m.Key;

    // A settings "file" that can't be read (a pipe: what else, FileReadTest) counts as
    // missing, as does one far too large to be settings: the defaults, no crash, no wait.
    ASSERT_EQ(mkfifo((dir / "fifo.ini").c_str(), 0600), 0);
    std::vector<uint8_t> huge = Cp932File("[MESSAGE]\r\nMSG_004_001=x\r\n");
    huge.resize(2 << 20, ' ');
    test::WriteFile(dir / "huge.ini", huge);
    for (const char* name : {"fifo.ini", "huge.ini"})
        EXPECT_EQ(LoadSettings(dir / name).Ini.MsgConfirmExit, "終了しますか？") << name;
}

TEST(Settings, ProfileLookupRules) {
    const std::string text =
        "; a comment\r\n[font]\r\n  Name =  Arial  \r\nSIZE=10\r\n"
        "[MESSAGE]\r\nMSG_004_001=\"  Quit now?  \"\r\nmsg_005_001=\r\nMSG_010_001=first\r\nMSG_010_001=second\r\n"
        "[CAPTION]\r\nMSG_002_001=wrong section\r\nMAIN_END=終了(&X)\r\n"
        "[MESSAGE]\r\nMSG_006_001=in a second MESSAGE section\r\n";
    test::TempDir dir;
    test::WriteFile(dir / "t.ini", Cp932File(text));
    Settings s = LoadSettings(dir / "t.ini");
    EXPECT_EQ(s.Ini.FontName, "Arial");                 // section and key without regard to case, blanks trimmed
    EXPECT_EQ(s.Ini.FontSize, 10);
    EXPECT_EQ(s.Ini.FontCharset, 128);                  // missing key: default
    EXPECT_EQ(s.Ini.MsgConfirmExit, "  Quit now?  ");   // one pair of quotes removed, inside kept
    EXPECT_EQ(s.Ini.MsgConfirmInit, "");                // present but empty: empty, not the default
    EXPECT_EQ(s.Ini.MsgConfirmDelete, "first");         // first match wins
    EXPECT_EQ(s.Ini.MsgCancelled, "キャンセルされました。");  // key under the wrong section isn't found
    EXPECT_EQ(s.Captions["MAIN_END"], "終了(&X)");       // CP932 text arrives as UTF-8
    EXPECT_EQ(s.Ini.MsgPcxDone, "全PCXが出力されました。");  // only the first section of a name counts
}

// Values are cut to 1023 CP932 bytes, never inside a character; font numbers: no number keeps
// the default, halves go to the even neighbour.
TEST(Settings, LongValuesAndFontNumbers) {
    std::string doubleByte;
    for (int i = 0; i < 600; ++i) doubleByte += "終";
    test::TempDir dir;
    test::WriteFile(dir / "t.ini", Cp932File("[MESSAGE]\nMSG_004_001=" + std::string(1500, 'a') + "\nMSG_005_001=" +
                                             doubleByte + "\n[FONT]\nSIZE=big\nCHARSET=0x80\n"));
    Settings s = LoadSettings(dir / "t.ini");
    EXPECT_EQ(s.Ini.MsgConfirmExit, std::string(1023, 'a'));
    EXPECT_EQ(LenAnsi(s.Ini.MsgConfirmInit), 1022);
    EXPECT_EQ(s.Ini.FontSize, 8);
    EXPECT_EQ(s.Ini.FontCharset, 128);
    test::WriteFile(dir / "u.ini", Cp932File("[FONT]\nSIZE=10.5\nCHARSET=0\n"));
    Settings u = LoadSettings(dir / "u.ini");
    EXPECT_EQ(u.Ini.FontSize, 10);
    EXPECT_EQ(u.Ini.FontCharset, 0);
}

TEST(Settings, IniPathAndErrorText) {
    EXPECT_EQ(IniPathFor("/opt/t/bin/tarvolin"), "/opt/t/bin/tarvolin.ini");
    EXPECT_EQ(IniPathFor("/opt/t/bin/Tarvolin.exe"), "/opt/t/bin/Tarvolin.ini");
    // Beside the program first, then the user's config folder; a folder is no file.
    test::TempDir dir;
    ASSERT_EQ(setenv("XDG_CONFIG_HOME", dir.Path().c_str(), 1), 0);
    const std::string beside = dir / "bin/tarvolin.ini", user = dir / "tarvolin/tarvolin.ini";
    EXPECT_EQ(FindSettingsFile(beside), beside);
    ASSERT_EQ(mkdir((dir / "bin").c_str(), 0700) | mkdir(beside.c_str(), 0700) | mkdir((dir / "tarvolin").c_str(), 0700), 0);
    test::WriteFile(user, {});
    EXPECT_EQ(FindSettingsFile(beside), user);
    ASSERT_EQ(rmdir(beside.c_str()), 0);
    test::WriteFile(beside, {});
    EXPECT_EQ(FindSettingsFile(beside), beside);
    unsetenv("XDG_CONFIG_HOME");
    const AppIni ini = DefaultAppIni();
    EXPECT_EQ(FormatError(ini, Error{msg::WriteFailed, "/w/a.pcx", "No space left on device"}),
              "ファイルを書き込めませんでした。\r\n/w/a.pcx\r\nNo space left on device");
    EXPECT_EQ(ini.Message("NO_SUCH_KEY"), "NO_SUCH_KEY");
}

// The English settings file in docs/ translates every key the program reads.
TEST(Settings, EnglishSettingsFileCoversEveryKey) {
    const std::string path = std::string(TARVOLIN_SOURCE_DIR) + "/docs/tarvolin.en.ini";
    const PrivateProfile file = PrivateProfile::Load(path);
    for (const MessageEntry& m : MessageTable())
        EXPECT_NE(file.Get("MESSAGE", m.Key, "\x01missing"), "\x01missing") << m.Key;
    for (const CaptionEntry& c : CaptionTable())
        EXPECT_NE(file.Get("CAPTION", c.Key, "\x01missing"), "\x01missing") << c.Key;
    EXPECT_EQ(LoadSettings(path).Ini.MsgConfirmExit, "Quit Tarvolin?");
}

}  // namespace
}  // namespace tarvolin
