// The table commands over the session with a scripted user interface: what each asks and
// shows, in order, what it writes, what it refuses before writing anything, and what
// happens when the user acts while a command lets events through or its batch runs.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <unistd.h>

#include "ScriptedSessionUi.h"
#include "base/FolderLock.h"
#include "mainwin/Session.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;
using Log = std::vector<std::string>;
using Command = CommandEnd (Session::*)();

struct SessionFixture {
    test::TempDir Dir;
    AppIni Ini = test::KeyedIni();
    test::ScriptedSessionUi Ui;
    Session Work{Ini, Ui, SessionSetup{"/opt/t/", true}};

    // An SFF of `count` sprites, group i and item 0, the first holding the palette.
    std::string WriteSff(const std::string& name, int count, uint8_t mode = kSharedPaletteMode) {
        std::vector<SffSprite> sprites;
        for (int i = 0; i < count; ++i) sprites.push_back(test::MakeSprite(uint16_t(i), 0, i == 0 ? 0 : 1, i == 0));
        test::WriteFile(Dir / name, EncodeSff(mode, sprites));
        return Dir / name;
    }
    std::string Folder(const std::string& name) {
        fs::create_directories(Dir / name);
        return Dir / (name + "/");
    }
    // Runs `command` answered by `script`; what it showed.
    Log Run(Command command, std::deque<std::string> script = {}) {
        Ui.Script = std::move(script);
        (Work.*command)();
        return Ui.Take();
    }
    std::string Last(Command command, std::deque<std::string> script = {}) {
        const Log log = Run(command, std::move(script));
        return log.empty() ? "" : log.back();
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

const std::string kDiscard = "ask MSG_011_001 | MSG_011_002";

TEST(Session, OpenAsksBeforeDiscardingAndRefusesWhatItCannotRead) {
    SessionFixture f;
    const std::string path = f.WriteSff("fighter.sff", 5);
    EXPECT_EQ(f.Run(&Session::Open, {path}), (Log{"file dialog USER.sff", "labels fighter.sff|", "busy", "idle",
                                                  "labels fighter.sff|5", "sff 0 0 fighter.sff, P.Pos 0"}));
    // No to the discard question: no dialog. Yes, then Cancel: nothing changes.
    EXPECT_EQ(f.Run(&Session::Open, {"no"}), Log{kDiscard});
    EXPECT_EQ(f.Run(&Session::Open, {"yes", ""}), (Log{kDiscard, "file dialog USER.sff"}));
    // A file that isn't there is refused with its name; the labels show the open SFF again.
    EXPECT_EQ(f.Run(&Session::Open, {"yes", f.Dir / "missing.sff"}),
              (Log{kDiscard, "file dialog USER.sff", "labels missing.sff|5", "busy", "idle", "labels fighter.sff|5",
                   "tell ERR_SFF_READ | " + f.Dir / "missing.sff"}));
    EXPECT_EQ(f.Work.Table.RowCount(), 5);

    // The palette-mode warning: No empties table and labels, Yes opens; WorkFolder stays.
    const std::string own = f.WriteSff("own.sff", 3, kIndividualPaletteMode);
    f.Work.State.WorkFolder = "/tmp/out/";
    EXPECT_EQ(f.Run(&Session::Open, {"yes", own, "no"}), (Log{kDiscard, "file dialog USER.sff", "labels own.sff|5", "busy",
                                                              "ask MSG_009_001 | MSG_009_002", "idle", "labels |"}));
    EXPECT_EQ(f.Last(&Session::Open, {own, "yes"}), "sff 0 0 own.sff, P.Pos 0");
    EXPECT_EQ(f.Work.State.WorkFolder, "/tmp/out/");
}

TEST(Session, RowCommandsAskAndKeepTheSelection) {
    SessionFixture f;
    for (Command command : {&Session::Delete, &Session::Initialize, &Session::ChangePcx, &Session::SavePcx,
                            &Session::MakeText, &Session::BuildSff})
        EXPECT_EQ((f.Work.*command)(), CommandEnd::NothingToDo);
    f.Work.SelectList();
    EXPECT_EQ(f.Ui.Take(), Log{});  // an empty table: every command is silent

    f.Run(&Session::Open, {f.WriteSff("rows.sff", 4)});
    f.Work.Table.SetCell(3, Column::PcxPath, "/art/");  // a picture of its own is read from its file
    f.Work.Table.Select(2);
    EXPECT_EQ(f.Run(&Session::Delete, {"no"}), Log{"ask MSG_010_001"});
    // The following row takes the place and is shown; nothing is renumbered.
    EXPECT_EQ(f.Run(&Session::Delete, {"yes"}), (Log{"ask MSG_010_001", "labels rows.sff|3", "file /art/rows_00002_00000.pcx 2"}));
    EXPECT_EQ(f.Work.Table.Cell(2, Column::SortNo) + " " + std::to_string(f.Work.SelectedRow), "03 2");
    f.Work.Table.Select(3);  // after the last row, the new last row
    f.Run(&Session::Delete, {"yes"});
    EXPECT_EQ(f.Work.SelectedRow, 2);

    // Change PCX: the selected row points at the chosen file, its name shown at once.
    EXPECT_EQ(f.Run(&Session::ChangePcx, {""}), Log{"file dialog USER.pcx"});
    EXPECT_EQ(f.Last(&Session::ChangePcx, {"/art/new.pcx"}), "picture /art/new.pcx");
    EXPECT_EQ(f.Work.Table.Cell(2, Column::PcxPath) + f.Work.Table.Cell(2, Column::PcxName), "/art/new.pcx");

    f.Work.State.WorkFolder = "/w/";
    EXPECT_EQ(f.Run(&Session::Initialize, {"no"}), Log{"ask MSG_005_001"});
    EXPECT_EQ(f.Run(&Session::Initialize, {"yes"}), (Log{"ask MSG_005_001", "labels |", "reset"}));
    EXPECT_TRUE(f.Work.Table.Empty() && f.Work.State.SffBytes.empty() && f.Work.State.SffBaseName.empty());
    EXPECT_EQ(f.Work.State.WorkFolder, "/w/");
}

TEST(Session, WorkingFilesGoWhereTheDialogsSay) {
    SessionFixture f;
    f.Run(&Session::Open, {f.WriteSff("fighter.sff", 3)});
    const std::string out = f.Folder("out");
    // A temporary left by a writer that was killed goes; another hidden file stays.
    test::WriteFile(out + ".fighter_00000_00000.pcx.tmp0123456789abcdef", {1});
    test::WriteFile(out + ".keep.tmp", {1});
    EXPECT_EQ(f.Run(&Session::SavePcx, {""}), Log{"folder dialog "});
    EXPECT_EQ(f.Run(&Session::SavePcx, {out}), (Log{"folder dialog ", "busy", "idle", "tell MSG_006_001"}));
    EXPECT_TRUE(fs::remove(out + ".keep.tmp"));
    EXPECT_EQ(FilesIn(out), (std::set<std::string>{"fighter_00000_00000.pcx", "fighter_00001_00000.pcx",
                                                    "fighter_00002_00000.pcx"}));

    // A file that can't be written stops the export there, named; the one before it stays.
    const std::string blocked = f.Folder("blocked");
    fs::create_directory(blocked + "fighter_00001_00000.pcx");
    EXPECT_EQ(f.Last(&Session::SavePcx, {blocked}), "tell ERR_WRITE | " + blocked + "fighter_00001_00000.pcx");
    EXPECT_EQ(FilesIn(blocked).size(), 2u);  // the first file, the folder in the way

    // Make Text opens where the last folder was; the last four bytes of any name go.
    f.Run(&Session::SavePcx, {out});
    EXPECT_EQ(f.Run(&Session::MakeText, {""}), Log{"file dialog fighter_SFF.txt in " + out});
    EXPECT_EQ(f.Last(&Session::MakeText, {out + "my.dat"}), "tell MSG_007_001");
    EXPECT_NE(Text(out + "myBuild.bat").find("\"/opt/t/sprmaker.exe\" < my.dat > CreateLog.txt\r\n"), std::string::npos);
    EXPECT_EQ(FilesIn(out).size(), 5u);  // no PCX file written again

    // Build SFF: the request, the folder dialog (cancel: the two-line message), the batch.
    EXPECT_EQ(f.Run(&Session::BuildSff, {""}), (Log{"tell MSG_001_001", "folder dialog " + out, "tell MSG_002_001 | MSG_002_002"}));
    EXPECT_EQ(f.Run(&Session::BuildSff, {out}), (Log{"tell MSG_001_001", "folder dialog " + out, "busy",
                                                     "batch " + out + "fighter_SFFBuild.bat", "idle"}));
    EXPECT_TRUE(Text(out + "fighter_SFFBuild.bat").ends_with("pause\r\n"));
    f.Ui.BatchStarts = false;
    const Log failed = f.Run(&Session::BuildSff, {out});
    EXPECT_EQ(failed.back(), "idle");
    EXPECT_EQ(std::count(failed.begin(), failed.end(), "tell MSG_003_001 | MSG_003_002"), 1);
}

TEST(Session, RefusalsComeBeforeAnythingIsWritten) {
    SessionFixture f;
    const std::string path = f.WriteSff("kfm.sff", 2);
    f.Run(&Session::Open, {path});
    const std::vector<uint8_t> sff = test::ReadFile(path);
    const std::string out = f.Folder("out"), emoji = f.Folder("out😀");
    const auto refused = [&](Command command, std::string answer, const std::string& told, const std::string& folder) {
        EXPECT_EQ(f.Last(command, {answer}), "tell " + told);
        EXPECT_EQ(FilesIn(folder), std::set<std::string>{}) << folder;
    };

    // Make Text onto the open SFF, by its name or by a hard link to it.
    ASSERT_EQ(link(path.c_str(), (f.Dir / "link.sff").c_str()), 0);
    for (const std::string& name : {path, f.Dir / "link.sff"})
        EXPECT_EQ(f.Last(&Session::MakeText, {name}), "tell ERR_SAME_FILE | " + name);
    EXPECT_EQ(test::ReadFile(path), sff);
    // A folder whose name the code page can't hold: the batch couldn't name its files.
    refused(&Session::BuildSff, emoji, "ERR_CODEPAGE | " + emoji + "kfm_SFF.txt", emoji);

    // A row whose picture file of its own is refused, or has gone, and one with no picture data.
    test::WriteFile(f.Dir / "bad.pcx", {1, 2, 3});
    f.Run(&Session::ChangePcx, {f.Dir / "bad.pcx"});
    refused(&Session::BuildSff, out, "ERR_MSG_0 | " + f.Dir / "bad.pcx", out);
    f.Work.Table.SetCell(1, Column::PcxPath, f.Dir / "gone/");
    refused(&Session::MakeText, out + "kfm_SFF.txt", "ERR_PCX_READ | " + f.Dir / "gone/bad.pcx", out);
    f.Work.Table.SetCell(1, Column::PcxPath, "");
    f.Work.Table.SetCell(2, Column::PcxName, "");  // as past the end of a short subfile chain
    const std::string noData = "ERR_ROW_EMPTY | row 2 (GroupNo 1, ItemNo 0, P.Pos 1) has no picture data: the SFF's "
                               "subfile chain ends before it";
    refused(&Session::SavePcx, out, noData, out);
    refused(&Session::MakeText, out + "kfm_SFF.txt", noData, out);

    // A folder another writer holds, and one that isn't there.
    f.Work.Table.SetCell(2, Column::PcxName, "kfm_00001_00000.pcx");
    auto held = FolderLock::Take(out, kWorkFolderLock);
    ASSERT_TRUE(held);
    EXPECT_EQ(f.Last(&Session::SavePcx, {out}), "tell ERR_BUSY | " + out);
    EXPECT_EQ(f.Run(&Session::SavePcx, {f.Dir / "none/"}),
              (Log{"folder dialog " + out, "busy", "idle", "tell ERR_WRITE | " + f.Dir / "none/"}));
}

TEST(Session, WhatTheUserDoesWhileEventsGetThrough) {
    SessionFixture f;
    f.Run(&Session::Open, {f.WriteSff("kfm.sff", 3)});
    const std::string out = f.Folder("out"), other = f.Folder("other");
    // A Delete between two written files: the export goes on with the table it began with.
    f.Ui.DuringPump = [&f] {
        f.Ui.DuringPump = nullptr;
        f.Ui.Script = {"yes"};
        f.Work.Delete();
    };
    EXPECT_EQ(f.Last(&Session::SavePcx, {out}), "tell MSG_006_001");
    EXPECT_EQ(f.Work.Table.RowCount(), 2);
    EXPECT_EQ(FilesIn(out).size(), 3u);  // three PCX files, no lock file

    // While a build writes and while its batch runs: a second build is refused, an export
    // into its folder meets the lock, one into another folder goes ahead.
    std::vector<CommandEnd> meanwhile;
    f.Ui.DuringPump = [&] {
        f.Ui.DuringPump = nullptr;
        meanwhile.push_back(f.Work.BuildSff());
    };
    f.Ui.DuringBatch = [&] {
        meanwhile.push_back(f.Work.BuildSff());
        f.Ui.Script = {out, other};
        meanwhile.push_back(f.Work.SavePcx());
        meanwhile.push_back(f.Work.SavePcx());
    };
    Log told;
    for (const std::string& line : f.Run(&Session::BuildSff, {out}))
        if (line.starts_with("tell")) told.push_back(line);
    EXPECT_EQ(meanwhile, (std::vector<CommandEnd>{CommandEnd::Refused, CommandEnd::Refused, CommandEnd::Refused,
                                                  CommandEnd::Done}));
    EXPECT_EQ(told, (Log{"tell MSG_001_001", "tell ERR_BUILD_RUNNING | " + out, "tell ERR_BUILD_RUNNING | " + out,
                         "tell ERR_BUSY | " + out, "tell MSG_006_001"}));
    f.Ui.DuringBatch = nullptr;
    EXPECT_EQ(f.Last(&Session::BuildSff, {out}), "idle");  // the mark went with the first build
}

}  // namespace
}  // namespace tarvolin
