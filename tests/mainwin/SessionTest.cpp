// The table commands over the session with a scripted user interface: what each asks and
// shows, what it writes, what it refuses before writing anything, and what happens when
// the user acts while a command lets events through or its batch runs.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <unistd.h>

#include "ScriptedSessionUi.h"
#include "base/Bytes.h"
#include "base/FolderLock.h"
#include "base/MessageKeys.h"
#include "mainwin/Session.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

struct SessionFixture {
    test::TempDir Dir;
    AppIni Ini = DefaultAppIni();
    test::ScriptedSessionUi Ui;
    Session Work{Ini, Ui, SessionSetup{"/opt/t/", true}};

    // A shared-palette SFF of `count` sprites, group i and item 0, in mode `mode`.
    std::string WriteSff(const std::string& name, int count, uint8_t mode = kSharedPaletteMode) {
        std::vector<SffSprite> sprites;
        for (int i = 0; i < count; ++i) sprites.push_back(test::MakeSprite(uint16_t(i), 0, i == 0 ? 0 : 1, i == 0));
        test::WriteFile(Dir / name, EncodeSff(mode, sprites));
        return Dir / name;
    }
    CommandEnd Open(const std::string& path) {
        Ui.Files.push_back(path);
        return Work.Open();
    }
    std::string Folder(const std::string& name) {
        fs::create_directories(Dir / name);
        return Dir / (name + "/");
    }
    // Whether the last message shown is that of `key` (the file and details follow it).
    bool LastToldIs(const char* key) const {
        return !Ui.Told.empty() && Ui.Told.back().first.rfind(Ini.Message(key), 0) == 0;
    }
};

std::set<std::string> FilesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& e : fs::directory_iterator(folder)) names.insert(e.path().filename().string());
    return names;
}

std::string Text(const std::string& path) {
    const auto bytes = test::ReadFile(path);
    return std::string(bytes.begin(), bytes.end());
}

const std::string kLock = kWorkFolderLock;

TEST(Session, OpenAsksBeforeDiscardingAndRefusesWhatItCannotRead) {
    SessionFixture f;
    const std::string path = f.WriteSff("fighter.sff", 5);
    EXPECT_EQ(f.Open(path), CommandEnd::Done);
    EXPECT_TRUE(f.Ui.Asked.empty());  // an empty table is discarded without asking
    EXPECT_EQ(f.Ui.Labels, "fighter.sff|5");
    EXPECT_EQ(f.Work.SelectedRow, 1);
    EXPECT_EQ(f.Ui.Preview, std::vector<std::string>{"sff 0 0 fighter.sff, P.Pos 0"});
    EXPECT_TRUE(f.Ui.BusyTimes == 1 && !f.Ui.Busy);

    // No to the discard question: no dialog. Yes, then Cancel: nothing changes.
    f.Ui.Answers = {false, true};
    EXPECT_EQ(f.Work.Open(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Work.Open(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Ui.Asked.at(0).first, f.Ini.MsgDiscardTable + "\r\n" + f.Ini.MsgContinue);
    EXPECT_EQ(f.Ui.FileDialogs.size(), 2u);

    // A file that isn't there is refused with its name; everything stays as it was.
    f.Ui.Answers = {true};
    EXPECT_EQ(f.Open(f.Dir / "missing.sff"), CommandEnd::Refused);
    EXPECT_TRUE(f.LastToldIs(msg::SffUnreadable));
    EXPECT_NE(f.Ui.Told.back().first.find(f.Dir / "missing.sff"), std::string::npos);
    EXPECT_EQ(f.Ui.Labels, "fighter.sff|5");
    EXPECT_EQ(f.Work.Table.RowCount(), 5);

    // The palette-mode warning: No empties table and labels, Yes opens; WorkFolder stays.
    const std::string own = f.WriteSff("own.sff", 3, kIndividualPaletteMode);
    f.Work.State.WorkFolder = "/tmp/out/";
    f.Ui.Answers = {true, false, true};
    EXPECT_EQ(f.Open(own), CommandEnd::Cancelled);
    EXPECT_EQ(f.Ui.Asked.back().first, PaletteModeWarning(f.Ini));
    EXPECT_EQ(f.Ui.Labels, "|");
    EXPECT_TRUE(f.Work.Table.Empty());
    EXPECT_EQ(f.Open(own), CommandEnd::Done);
    EXPECT_EQ(f.Ui.Labels, "own.sff|3");
    EXPECT_EQ(f.Work.State.WorkFolder, "/tmp/out/");
}

TEST(Session, DeleteAndInitializeAskAndKeepTheSelection) {
    SessionFixture f;
    for (auto command : {&Session::Delete, &Session::Initialize}) EXPECT_EQ((f.Work.*command)(), CommandEnd::NothingToDo);
    f.Work.SelectList();
    EXPECT_TRUE(f.Ui.Asked.empty() && f.Ui.Preview.empty());

    f.Open(f.WriteSff("rows.sff", 4));
    f.Work.Table.SetCell(3, Column::PcxPath, "/art/");  // a picture of its own is read from its file
    f.Work.Table.Select(2);
    f.Ui.Answers = {false, true};
    EXPECT_EQ(f.Work.Delete(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Ui.Asked.at(0).first, f.Ini.MsgConfirmDelete);
    EXPECT_EQ(f.Work.Delete(), CommandEnd::Done);
    // The following row takes the place and is shown; nothing is renumbered.
    EXPECT_EQ(f.Ui.Labels, "rows.sff|3");
    EXPECT_EQ(f.Work.Table.Cell(2, Column::SortNo), "03");
    EXPECT_EQ(f.Work.SelectedRow, 2);
    EXPECT_EQ(f.Ui.Preview.back(), "file /art/rows_00002_00000.pcx 2");
    // After the last row, the new last row.
    f.Work.Table.Select(3);
    f.Ui.Answers = {true};
    f.Work.Delete();
    EXPECT_EQ(f.Work.SelectedRow, 2);

    f.Work.State.WorkFolder = "/w/";
    f.Ui.Answers = {false, true};
    EXPECT_EQ(f.Work.Initialize(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Work.Initialize(), CommandEnd::Done);
    EXPECT_EQ(f.Ui.Asked.back().first, f.Ini.MsgConfirmInit);
    EXPECT_EQ(f.Ui.Labels, "|");
    EXPECT_EQ(f.Ui.Preview.back(), "reset");
    EXPECT_TRUE(f.Work.Table.Empty() && f.Work.State.SffBytes.empty() && f.Work.State.SffBaseName.empty());
    EXPECT_EQ(f.Work.State.WorkFolder, "/w/");
}

TEST(Session, WorkingFilesGoWhereTheDialogsSay) {
    SessionFixture f;
    const std::string path = f.WriteSff("fighter.sff", 3);
    for (auto command : {&Session::SavePcx, &Session::MakeText, &Session::BuildSff})
        EXPECT_EQ((f.Work.*command)(), CommandEnd::NothingToDo);
    EXPECT_TRUE(f.Ui.FileDialogs.empty() && f.Ui.FolderDialogs.empty() && f.Ui.Told.empty());
    f.Open(path);

    EXPECT_EQ(f.Work.SavePcx(), CommandEnd::Cancelled);  // silent
    EXPECT_TRUE(f.Ui.Told.empty());
    const std::string out = f.Folder("out");
    // A temporary left by a writer that was killed goes; another hidden file stays.
    test::WriteFile(out + ".fighter_00000_00000.pcx.tmp0123456789abcdef", {1});
    test::WriteFile(out + ".keep.tmp", {1});
    f.Ui.Folders = {out};
    EXPECT_EQ(f.Work.SavePcx(), CommandEnd::Done);
    EXPECT_FALSE(fs::exists(out + ".fighter_00000_00000.pcx.tmp0123456789abcdef"));
    EXPECT_TRUE(fs::remove(out + ".keep.tmp"));
    EXPECT_EQ(f.Ui.Told.back().first, f.Ini.MsgPcxDone);
    EXPECT_EQ(FilesIn(out), (std::set<std::string>{kLock, "fighter_00000_00000.pcx", "fighter_00001_00000.pcx",
                                                    "fighter_00002_00000.pcx"}));

    // A file that can't be written stops the export there, named; the one before it stays.
    const std::string blocked = f.Folder("blocked");
    fs::create_directory(blocked + "fighter_00001_00000.pcx");
    f.Ui.Folders = {blocked};
    EXPECT_EQ(f.Work.SavePcx(), CommandEnd::Refused);
    EXPECT_TRUE(f.LastToldIs(msg::WriteFailed));
    EXPECT_NE(f.Ui.Told.back().first.find(blocked + "fighter_00001_00000.pcx"), std::string::npos);
    EXPECT_EQ(FilesIn(blocked).size(), 3u);  // the lock, the first file, the folder in the way

    // Make Text opens where the last folder was; the last four bytes of any name go.
    f.Ui.Folders = {out};
    f.Work.SavePcx();
    f.Ui.Files = {std::nullopt, out + "my.dat"};
    EXPECT_EQ(f.Work.MakeText(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Work.MakeText(), CommandEnd::Done);
    EXPECT_EQ(f.Ui.FileDialogs.back().FileName + " in " + f.Ui.FileDialogs.back().InitialFolder, "fighter_SFF.txt in " + out);
    EXPECT_EQ(f.Ui.Told.back().first, f.Ini.MsgTextDone);
    EXPECT_NE(Text(out + "myBuild.bat").find("\"/opt/t/sprmaker.exe\" < my.dat > CreateLog.txt\r\n"), std::string::npos);
    EXPECT_EQ(FilesIn(out).size(), 6u);  // no PCX file written again

    // Build SFF: the request, the folder dialog (cancel: the two-line message), the batch.
    f.Ui.Folders = {std::nullopt, out};
    EXPECT_EQ(f.Work.BuildSff(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Ui.Told.at(f.Ui.Told.size() - 2).first, f.Ini.MsgChooseFolder);
    EXPECT_EQ(f.Ui.Told.back().first, f.Ini.MsgCancelled + "\r\n" + f.Ini.MsgAborting);
    EXPECT_EQ(f.Work.BuildSff(), CommandEnd::Done);
    EXPECT_EQ(f.Ui.FolderDialogs.back(), out);
    EXPECT_EQ(f.Ui.Batches, std::vector<std::string>{out + "fighter_SFFBuild.bat"});
    EXPECT_TRUE(Text(out + "fighter_SFFBuild.bat").ends_with("pause\r\n"));
    f.Ui.Folders = {out};
    f.Ui.BatchStarts = false;
    EXPECT_EQ(f.Work.BuildSff(), CommandEnd::Refused);
    EXPECT_EQ(f.Ui.Told.back().first, f.Ini.MsgBuildFailed + "\r\n" + f.Ini.MsgRunBatchByHand);
    EXPECT_FALSE(f.Ui.Busy);
}

TEST(Session, RefusalsComeBeforeAnythingIsWritten) {
    SessionFixture f;
    const std::string path = f.WriteSff("kfm.sff", 2);
    f.Open(path);
    const std::vector<uint8_t> sff = test::ReadFile(path);
    const auto refused = [](SessionFixture& on, CommandEnd end, const char* key, const std::string& folder) {
        EXPECT_EQ(end, CommandEnd::Refused);
        EXPECT_TRUE(on.LastToldIs(key)) << on.Ui.Told.back().first;
        EXPECT_EQ(FilesIn(folder), std::set<std::string>{}) << folder;
    };

    // Make Text onto the open SFF, by its name or by a hard link to it.
    ASSERT_EQ(link(path.c_str(), (f.Dir / "link.sff").c_str()), 0);
    for (const std::string& name : {path, f.Dir / "link.sff"}) {
        f.Ui.Files = {name};
        EXPECT_EQ(f.Work.MakeText(), CommandEnd::Refused);
        EXPECT_TRUE(f.LastToldIs(msg::OutputIsOpenSff));
    }
    EXPECT_EQ(test::ReadFile(path), sff);

    // A folder whose name the code page can't hold: the batch couldn't name its files.
    const std::string emoji = f.Folder("out😀");
    f.Ui.Folders = {emoji};
    refused(f, f.Work.BuildSff(), msg::NotCp932, emoji);

    // A row whose picture file of its own is refused, and one with no picture data.
    test::WriteFile(f.Dir / "bad.pcx", {1, 2, 3});
    f.Ui.Files = {f.Dir / "bad.pcx"};
    f.Work.ChangePcx();
    const std::string out = f.Folder("out");
    f.Ui.Folders = {out};
    refused(f, f.Work.BuildSff(), msg::PcxFormat, out);
    EXPECT_NE(f.Ui.Told.back().first.find(f.Dir / "bad.pcx\r\nrow 1"), std::string::npos) << f.Ui.Told.back().first;
    f.Work.Table.SetCell(1, Column::PcxPath, "");
    f.Work.Table.SetCell(2, Column::PcxName, "");  // as past the end of a short subfile chain
    f.Ui.Folders = {out};
    refused(f, f.Work.SavePcx(), msg::RowWithoutData, out);
    f.Ui.Files = {out + "kfm_SFF.txt"};
    refused(f, f.Work.MakeText(), msg::RowWithoutData, out);
    f.Work.Table.SetCell(2, Column::PcxPath, f.Dir / "gone/");  // a picture of its own that has gone
    f.Ui.Files = {out + "kfm_SFF.txt"};
    refused(f, f.Work.MakeText(), msg::PcxUnreadable, out);

    // A file name holding a line break would put a line of its own into the batch.
    SessionFixture g;
    const std::string injected = g.WriteSff("kfm\n\"tool\" --pwned #.sff", 1);
    g.Open(injected);
    g.Ui.Files = {g.Folder("out") + "kfm_SFF.txt"};
    refused(g, g.Work.MakeText(), msg::ControlCharacter, g.Dir / "out");
    EXPECT_NE(g.Ui.Told.back().first.find("line 4: kfm\\x0A\"tool\""), std::string::npos) << g.Ui.Told.back().first;

    // A folder another writer holds, and one that isn't there.
    auto held = FolderLock::Take(g.Dir / "out/", kWorkFolderLock);
    ASSERT_TRUE(held);
    g.Ui.Folders = {g.Dir / "out/", g.Dir / "none/"};
    EXPECT_EQ(g.Work.SavePcx(), CommandEnd::Refused);
    EXPECT_TRUE(g.LastToldIs(msg::FolderBusy));
    EXPECT_EQ(g.Work.SavePcx(), CommandEnd::Refused);
    EXPECT_TRUE(g.LastToldIs(msg::WriteFailed));
    EXPECT_NE(g.Ui.Told.back().first.find(g.Dir / "none/"), std::string::npos);
    EXPECT_FALSE(g.Ui.Busy);
}

TEST(Session, WhatTheUserDoesWhileEventsGetThrough) {
    SessionFixture f;
    f.Open(f.WriteSff("kfm.sff", 3));
    const std::string out = f.Folder("out");
    // A Delete between two written files: the export goes on with the table it began with.
    f.Ui.DuringPump = [&f] {
        f.Ui.DuringPump = nullptr;
        f.Ui.Answers = {true};
        f.Work.Delete();
    };
    f.Ui.Folders = {out};
    EXPECT_EQ(f.Work.SavePcx(), CommandEnd::Done);
    EXPECT_EQ(f.Work.Table.RowCount(), 2);
    EXPECT_EQ(FilesIn(out).size(), 4u);  // three PCX files and the lock

    // While a build writes and while its batch runs: a second build is refused, an export
    // into its folder meets the lock, one into another folder goes ahead.
    std::vector<CommandEnd> meanwhile;
    const std::string other = f.Folder("other");
    f.Ui.DuringPump = [&] {
        f.Ui.DuringPump = nullptr;
        meanwhile.push_back(f.Work.BuildSff());
    };
    f.Ui.DuringBatch = [&] {
        meanwhile.push_back(f.Work.BuildSff());
        f.Ui.Folders = {out, other};
        meanwhile.push_back(f.Work.SavePcx());
        meanwhile.push_back(f.Work.SavePcx());
    };
    f.Ui.Folders = {out};
    EXPECT_EQ(f.Work.BuildSff(), CommandEnd::Done);
    EXPECT_EQ(meanwhile, (std::vector<CommandEnd>{CommandEnd::Refused, CommandEnd::Refused, CommandEnd::Refused,
                                                  CommandEnd::Done}));
    size_t running = 0, busy = 0;
    for (const auto& [text, style] : f.Ui.Told) {
        running += text.rfind(f.Ini.Message(msg::BuildRunning) + "\r\n" + out, 0) == 0;
        busy += text.rfind(f.Ini.Message(msg::FolderBusy) + "\r\n" + out, 0) == 0;
    }
    EXPECT_EQ(running, 2u);
    EXPECT_EQ(busy, 1u);
    f.Ui.DuringBatch = nullptr;
    f.Ui.Folders = {out};
    EXPECT_EQ(f.Work.BuildSff(), CommandEnd::Done);  // the mark went with the first build
}

TEST(Session, ChangePcxPointsTheSelectedRowAtTheChosenFile) {
    SessionFixture f;
    EXPECT_EQ(f.Work.ChangePcx(), CommandEnd::NothingToDo);
    EXPECT_TRUE(f.Ui.FileDialogs.empty());
    f.Open(f.WriteSff("kfm.sff", 3));
    f.Work.Table.Select(2);
    f.Ui.Files = {std::nullopt, "/art/new.pcx"};
    EXPECT_EQ(f.Work.ChangePcx(), CommandEnd::Cancelled);
    EXPECT_EQ(f.Work.Table.Cell(2, Column::PcxName), "kfm_00001_00000.pcx");
    EXPECT_EQ(f.Work.ChangePcx(), CommandEnd::Done);
    EXPECT_EQ(f.Work.Table.Cell(2, Column::PcxPath) + f.Work.Table.Cell(2, Column::PcxName), "/art/new.pcx");
    EXPECT_EQ(f.Ui.Preview.back(), "picture /art/new.pcx");
}

}  // namespace
}  // namespace tarvolin
