// The table commands over the session with a scripted user interface: what each asks, shows
// and writes, what it refuses first, and what the user may do while it lets events through.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <unistd.h>

#include "ScriptedSessionUi.h"
#include "support/EngineView.h"
#include "mainwin/Session.h"
#include "sff/PaletteSource.h"
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
    Session Work;
    explicit SessionFixture(const std::string& programFolder = "/opt/t/") : Work(Ini, Ui, SessionSetup{programFolder, true}) {}

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

// The table as text: the rows' cells but SortNo and SortKey, current row, marks, labels.
std::string Dump(const Session& work) {
    std::string text;
    for (int place = 1; place <= work.Table.RowCount(); ++place) {
        const SpriteRow& row = work.Table.Row(place);
        for (Column c : {Column::GroupNo, Column::ItemNo, Column::PalType, Column::PPos, Column::PcxName, Column::AxisX,
                         Column::AxisY, Column::PcxPath})
            text += row[c] + ",";
        text += ";";
    }
    text += " current " + std::to_string(work.Table.Selected()) + " marked";
    for (int place : work.Table.SelectedRows()) text += " " + std::to_string(place);
    return text + " labels " + work.State.SffNameCaption + "|" + work.State.ImageCaption;
}

std::set<std::string> FilesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& e : fs::directory_iterator(folder)) names.insert(e.path().filename().string());
    return names;
}

const std::string kDiscard = "ask MSG_UNSAVED | MSG_011_001";

TEST(Session, OpenAsksBeforeDiscardingAndRefusesWhatItCannotRead) {
    SessionFixture f;
    const std::string path = f.WriteSff("fighter.sff", 5);
    EXPECT_EQ(f.Run(&Session::Open, {path}), (Log{"file dialog USER.sff", "labels fighter.sff|", "busy", "idle",
                                                  "labels fighter.sff|5", "sff 0 0 fighter.sff, P.Pos 0"}));
    // A table without edits is replaced without a question; with an edit that no built
    // SFF holds, No to the discard question: no dialog. Yes, then Cancel: nothing changes.
    EXPECT_EQ(f.Run(&Session::Open, {""}), Log{"file dialog USER.sff"});
    f.Work.EditCell(1, Column::ItemNo, "7");
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

    // Change PCX: the row takes a file the builder takes; a refused one leaves row and screen.
    test::WriteFile(f.Dir / "new.pcx", test::MakePcx(5, 4, 1));
    test::WriteFile(f.Dir / "bad.pcx", {10, 5, 1, 4});
    EXPECT_EQ(f.Run(&Session::ChangePcx, {""}), Log{"file dialog USER.pcx"});
    EXPECT_EQ(f.Last(&Session::ChangePcx, {f.Dir / "bad.pcx"}), "tell ERR_MSG_0 | " + f.Dir / "bad.pcx");
    EXPECT_EQ(f.Last(&Session::ChangePcx, {f.Dir / "none.pcx"}), "tell ERR_PCX_READ | " + f.Dir / "none.pcx");
    EXPECT_EQ(f.Work.Table.Cell(2, Column::PcxPath) + f.Work.Table.Cell(2, Column::PcxName), "/art/rows_00002_00000.pcx");
    EXPECT_EQ(f.Last(&Session::ChangePcx, {f.Dir / "new.pcx"}), "picture " + f.Dir / "new.pcx");
    EXPECT_EQ(f.Work.Table.Cell(2, Column::PcxPath) + f.Work.Table.Cell(2, Column::PcxName), f.Dir / "new.pcx");

    // Initialize asks, with the unsaved-edits message in front while there are such edits.
    f.Work.State.WorkFolder = "/w/";
    EXPECT_EQ(f.Run(&Session::Initialize, {"no"}), Log{"ask MSG_UNSAVED | MSG_005_001"});
    EXPECT_EQ(f.Run(&Session::Initialize, {"yes"}), (Log{"ask MSG_UNSAVED | MSG_005_001", "labels |", "reset"}));
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

    // The table's menu: the selected rows alone, as PNG or PCX files, into the folder asked.
    f.Work.Table.SelectRows({1, 3}, 3);
    const std::string chosen = f.Folder("chosen");
    f.Ui.Script = {chosen};
    f.Work.ExportSelected(PictureFormat::Png);
    EXPECT_EQ(f.Ui.Take().back(), "tell MSG_EXPORT_DONE");
    EXPECT_EQ(FilesIn(chosen), (std::set<std::string>{"fighter_00000_00000.png", "fighter_00002_00000.png"}));

    // A file that can't be written stops the export there, named; the one before it stays.
    const std::string blocked = f.Folder("blocked");
    fs::create_directory(blocked + "fighter_00001_00000.pcx");
    EXPECT_EQ(f.Last(&Session::SavePcx, {blocked}), "tell ERR_WRITE | " + blocked + "fighter_00001_00000.pcx");
    EXPECT_EQ(FilesIn(blocked).size(), 2u);  // the first file, the folder in the way

    // Make Text opens where the last folder was; the last four bytes of any name go.
    f.Run(&Session::SavePcx, {out});
    EXPECT_EQ(f.Run(&Session::MakeText, {""}), Log{"file dialog fighter_SFF.txt in " + out});
    EXPECT_EQ(f.Last(&Session::MakeText, {out + "my.dat"}), "tell MSG_007_001");
    EXPECT_NE(test::ReadText(out + "myBuild.bat").find("\"/opt/t/sprmaker.exe\" < my.dat > CreateLog.txt\r\n"),
              std::string::npos);
    EXPECT_EQ(FilesIn(out).size(), 5u);  // no PCX file written again

    // Build SFF: the request, the folder dialog (cancel: the two-line message), the batch.
    EXPECT_EQ(f.Run(&Session::BuildSff, {""}), (Log{"tell MSG_001_001", "folder dialog " + out, "tell MSG_002_001 | MSG_002_002"}));
    // A batch that made no SFF: the main window says so.
    EXPECT_EQ(f.Run(&Session::BuildSff, {out}), (Log{"tell MSG_001_001", "folder dialog " + out, "busy",
                                                     "batch " + out + "fighter_SFFBuild.bat", "idle",
                                                     "tell MSG_BUILD_NONE | " + out + "fighter.sff"}));
    f.Ui.BatchStarts = false;
    const Log failed = f.Run(&Session::BuildSff, {out});
    EXPECT_EQ(failed.back(), "tell MSG_003_001 | MSG_003_002");
    EXPECT_EQ(failed.end()[-2], "idle");
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

    // A row's own picture file refused (changed since chosen) or gone; a row without data.
    test::WriteFile(f.Dir / "bad.pcx", {1, 2, 3});
    f.Work.Table.SetCell(1, Column::PcxPath, f.Dir.Path());
    f.Work.Table.SetCell(1, Column::PcxName, "bad.pcx");
    refused(&Session::BuildSff, out, "ERR_MSG_0 | " + f.Dir / "bad.pcx", out);
    f.Work.Table.SetCell(1, Column::PcxPath, f.Dir / "gone/");
    refused(&Session::MakeText, out + "kfm_SFF.txt", "ERR_PCX_READ | " + f.Dir / "gone/bad.pcx", out);
    f.Work.Table.SetCell(1, Column::PcxPath, "");
    f.Work.Table.SetCell(2, Column::PcxName, "");  // as past the end of a short subfile chain
    const std::string noData = "ERR_ROW_EMPTY | row 2 (GroupNo 1, ItemNo 0, P.Pos 1) has no picture data: the SFF's "
                               "subfile chain ends before it";
    refused(&Session::SavePcx, out, noData, out);
    refused(&Session::MakeText, out + "kfm_SFF.txt", noData, out);
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

    // While a build writes or runs: a second is refused, an export there meets the lock, one
    // elsewhere goes ahead.
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
                         "tell ERR_BUSY | " + out, "tell MSG_006_001", "tell MSG_BUILD_NONE | " + out + "kfm.sff"}));
    f.Ui.DuringBatch = nullptr;
    EXPECT_EQ(f.Run(&Session::BuildSff, {out})[2], "busy");  // the mark went with the first build
}

// Every kind of change takes one step (a run of edits on one row too): undone, the table is
// as before, the row it changed current and shown, nothing unsaved; redone, as after.
TEST(Session, EveryChangeIsOneStepOfTheHistory) {
    using Action = std::function<void(SessionFixture&)>;
    const auto edit = [](Column c, const char* text) {
        return [c, text](SessionFixture& f) { f.Work.EditCell(f.Work.SelectedRow, c, text); };
    };
    // Marked: the selection, the first one current; Shown: the row current after the undo.
    struct Case { const char* Name; std::vector<int> Marked; Action Do; int Shown; };
    const Case cases[] = {
        {"group", {3}, edit(Column::GroupNo, "300"), 3},
        {"item", {2}, edit(Column::ItemNo, "70000"), 2},
        {"share pallet", {4}, edit(Column::PalType, "0"), 4},
        {"axis run", {3},
         [](SessionFixture& f) {
             for (const char* x : {"1", "2", "3"}) f.Work.EditCell(3, Column::AxisX, x, 77);
             f.Work.EditCell(3, Column::AxisY, "-4", 77);
         },
         3},
        {"change pcx", {2}, [](SessionFixture& f) { f.Work.ChangePcxFile(f.Dir / "new.pcx"); }, 2},
        {"delete", {2, 4}, [](SessionFixture& f) { f.Run(&Session::Delete, {"yes"}); }, 2},
        {"delete all", {1, 2, 3, 4, 5}, [](SessionFixture& f) { f.Run(&Session::Delete, {"yes"}); }, 1},
        {"initialize", {1}, [](SessionFixture& f) { f.Run(&Session::Initialize, {"yes"}); }, 1},
        {"add", {2}, [](SessionFixture& f) { f.Run(&Session::Add, {f.Dir / "new.pcx|" + f.Dir / "new.pcx"}); }, 2},
        {"copy", {1, 3}, [](SessionFixture& f) { f.Work.Copy(); }, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        SessionFixture f;
        test::WriteFile(f.Dir / "new.pcx", test::MakePcx(5, 4, 1));
        f.Run(&Session::Open, {f.WriteSff("rows.sff", 5)});
        f.Work.Table.SelectRows(c.Marked, c.Marked.front());
        f.Work.SelectList();
        const std::string before = Dump(f.Work);
        c.Do(f);
        const std::string after = Dump(f.Work);
        EXPECT_NE(after, before);
        EXPECT_EQ(f.Work.HasUnsavedEdits(), c.Name != std::string("initialize"));  // it has asked
        f.Ui.Take();
        EXPECT_EQ(f.Work.Undo(), CommandEnd::Done);
        EXPECT_EQ(Dump(f.Work), before);
        EXPECT_EQ(f.Work.SelectedRow, c.Shown);
        EXPECT_TRUE(f.Ui.Take().back().starts_with("sff "));  // the SFF's own picture again
        EXPECT_FALSE(f.Work.HasUnsavedEdits());
        EXPECT_EQ(f.Work.Undo(), CommandEnd::NothingToDo);
        EXPECT_EQ(f.Work.Redo(), CommandEnd::Done);
        EXPECT_EQ(Dump(f.Work), after);
        EXPECT_EQ(f.Work.Redo(), CommandEnd::NothingToDo);
    }
}

// Add puts a row for each accepted picture after the current row, Copy each selected row after
// itself, with the next free item numbers; a rebuild holds them; its word follows the builder.
TEST(Session, AddAndCopyReachTheRebuiltSff) {
    SessionFixture f(test::BinDir());
    test::WriteFile(f.Dir / "f.sff",
                    EncodeSff(kSharedPaletteMode, {test::MakeSprite(9000, 0, 0, true), test::MakeSprite(1, 0, 1, false, 5, 6),
                                                   test::MakeSprite(1, 1, 1, false), test::MakeSprite(1, 3, 1, false),
                                                   test::MakeSprite(2, 0, 1, false)}));
    f.Run(&Session::Open, {f.Dir / "f.sff"});
    const std::vector<std::string> pictures = {f.Dir / "shared.pcx", f.Dir / "own.pcx", f.Dir / "big.pcx"};
    test::WriteFile(pictures[0], test::MakePcx(6, 5, 1, 9000));  // the shared palette
    test::WriteFile(pictures[1], test::MakePcx(4, 4, 2, 3));
    test::WriteFile(pictures[2], test::MakePcx(9, 7, 3, 4));
    test::WriteFile(f.Dir / "bad.pcx", {1});

    f.Work.Table.Select(2);  // 1,0
    EXPECT_EQ(f.Run(&Session::Add, {pictures[0] + "|" + f.Dir / "bad.pcx|" + pictures[1] + "|" + pictures[2]}),
              (Log{"files dialog Picture Files (*.pcx;*.png)|*.pcx;*.png|Pcx Files (*.pcx)|*.pcx|Png Files (*.png)|*.png|",
                   "tell ERR_MSG_0 | " + f.Dir / "bad.pcx", "labels f.sff|8", "file " + pictures[0] + " 1"}));
    f.Work.Table.SelectRows({3, 8}, 8);  // 1,2 (a new row) and 2,0
    f.Work.Copy();
    EXPECT_EQ(Dump(f.Work),
              "9000,0,1,0,f_09000_00000.pcx,0,0,,;1,0,1,1,f_00001_00000.pcx,5,6,,;"
              "1,2,1,,shared.pcx,5,6," + f.Dir.Path() + ",;1,6,1,,shared.pcx,5,6," + f.Dir.Path() + ",;"
              "1,4,0,,own.pcx,5,6," + f.Dir.Path() + ",;1,5,0,,big.pcx,5,6," + f.Dir.Path() + ",;"
              "1,1,1,2,f_00001_00001.pcx,0,0,,;1,3,1,3,f_00001_00003.pcx,0,0,,;2,0,1,4,f_00002_00000.pcx,0,0,,;"
              "2,1,1,4,f_00002_00000.pcx,0,0,,; current 4 marked 4 10 labels f.sff|10");

    // Built: five more sprites, each with its picture; an edit made meanwhile stays unsaved.
    const std::string out = f.Folder("out");
    f.Ui.BatchRuns = true;
    f.Ui.DuringBatch = [&f] { f.Work.EditCell(1, Column::AxisX, "9"); };
    EXPECT_EQ(f.Last(&Session::BuildSff, {out}), "tell MSG_BUILD_DONE | f.sff: 10 sprites written");
    EXPECT_TRUE(f.Work.HasUnsavedEdits());
    f.Work.Undo();
    EXPECT_FALSE(f.Work.HasUnsavedEdits());
    const test::EngineFile built = test::EngineView(test::ReadFile(out + "f.sff"));
    ASSERT_EQ(built.Sprites.size(), 10u);
    for (const auto& [place, picture] : std::vector<std::pair<int, std::string>>{{3, pictures[0]}, {4, pictures[0]},
                                                                               {5, pictures[1]}, {6, pictures[2]}}) {
        const auto pcx = test::ReadFile(picture);
        EXPECT_EQ(built.Sprites[size_t(place - 1)].Pixels, test::DecodeAsEngine(pcx)) << place;
        const Palette& colours = built.Sprites[size_t(place - 1)].Colours;
        EXPECT_EQ(std::vector<uint8_t>(colours.begin(), colours.end()), test::PaletteOf(pcx)) << place;
    }
    EXPECT_EQ(built.Sprites[9].Pixels, built.Sprites[8].Pixels);

    // The SFF's name taken by a folder: no new SFF, and the log's line says why.
    const std::string blocked = f.Folder("blocked");
    fs::create_directory(blocked + "f.sff");
    f.Work.EditCell(1, Column::AxisX, "8");
    f.Ui.DuringBatch = nullptr;
    f.Run(&Session::BuildSff, {blocked});
    EXPECT_NE(f.Ui.Told.back().find("MSG_BUILD_NONE\r\n" + blocked + "f.sff\r\nno new SFF was made: Error: "),
              std::string::npos) << f.Ui.Told.back();
    EXPECT_TRUE(f.Work.HasUnsavedEdits());
}

// The palette the engine draws each row with: shared, its own, or one another subfile stored.
TEST(Session, PaletteOfEachRow) {
    SessionFixture f;
    test::WriteFile(f.Dir / "p.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(9000, 0, 0, true), test::MakeSprite(1, 0, 1, false),
                                                                    test::MakeSprite(2, 0, 0, true), test::MakeSprite(2, 1, 1, false),
                                                                    test::MakeLink(2, 2, 1, 3)}));
    f.Run(&Session::Open, {f.Dir / "p.sff"});
    // Pictures of their own: shared only where the row asks for it and the file ends in it.
    test::WriteFile(f.Dir / "same.pcx", test::MakePcx(4, 3, 7, 9000));
    test::WriteFile(f.Dir / "other.pcx", test::MakePcx(4, 3, 7, 5));
    for (const auto& [place, name] : {std::pair{1, "same.pcx"}, {2, "same.pcx"}, {3, "other.pcx"}}) {
        f.Work.Table.SetCell(place, Column::PcxPath, f.Dir.Path());
        f.Work.Table.SetCell(place, Column::PcxName, name);
    }
    f.Work.Table.SetCell(1, Column::PalType, "0");
    const PaletteSources sources(f.Work.State);
    std::string kinds;
    for (int place = 1; place <= f.Work.Table.RowCount(); ++place) {
        const PaletteOrigin o = sources.Of(f.Work.Table.Row(place));
        kinds += o.Kind == PaletteKind::Shared ? "shared " : o.Kind == PaletteKind::Own ? "own " : "subfile " + std::to_string(o.Subfile) + " ";
    }
    // Rows in key order: 9000,0, 1,0, 2,1 (these three given files), 2,2 (a link to 2,1), 2,0.
    EXPECT_EQ(kinds, "own shared own subfile 2 own ");
}

// Find by group (and item), from the top or on; quitting asks only with unsaved edits, Yes builds.
TEST(Session, FindAndQuit) {
    SessionFixture f;
    f.Run(&Session::Open, {f.WriteSff("rows.sff", 5)});
    f.Work.EditCell(5, Column::GroupNo, "2");
    struct Case { const char* Query; int From; bool Next; int Found; };
    for (const Case& c : {Case{"2", 4, false, 3}, Case{"2", 3, true, 5}, Case{"2", 5, true, 3}, Case{" 2 , 0 ", 1, false, 3},
                          Case{"3,1", 1, false, 0}, Case{"x", 1, false, 0}}) {
        f.Work.Table.Select(c.From);
        const CommandEnd end = f.Work.Find(c.Query, c.Next);
        EXPECT_EQ(end == CommandEnd::Done ? f.Work.SelectedRow : 0, c.Found) << c.Query << c.Next;
    }
    EXPECT_EQ(f.Ui.Take().back(), "tell MSG_NOT_FOUND | x");

    EXPECT_EQ(f.Run(&Session::Undo), (Log{"labels rows.sff|5", "sff 4 4 rows.sff, P.Pos 4"}));  // the row it changed
    EXPECT_TRUE(f.Work.MayQuit(true));
    EXPECT_EQ(f.Ui.Take(), Log{});
    EXPECT_FALSE(f.Work.MayQuit(false));
    EXPECT_EQ(f.Ui.Take(), Log{"ask MSG_004_001"});
    f.Work.Redo();
    for (const char* answer : {"", "no", "yes"}) {
        f.Ui.Script = {answer, ""};
        EXPECT_EQ(f.Work.MayQuit(true), answer == std::string("no")) << answer;
    }
    EXPECT_EQ(f.Ui.Take().back(), "tell MSG_002_001 | MSG_002_002");  // Yes: the build, here cancelled
}

}  // namespace
}  // namespace tarvolin
