#pragma once
// One open SFF and the commands on its table, without any window: the state of the open
// file, the rows, the row last shown on the preview screen, and the commands of the main
// window's buttons as functions. Whatever a command asks or shows goes through SessionUi,
// so the main window and tarvolin-cli run the same commands.
#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "config/AppIni.h"
#include "mainwin/FileIdentity.h"
#include "mainwin/SessionUi.h"
#include "mainwin/TableHistory.h"
#include "sff/PcxExport.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

struct BuildTexts;

// How a command ended.
enum class CommandEnd {
    Done,
    NothingToDo,  // an empty table: nothing shown, nothing written
    Cancelled,    // a dialog or a question was answered so
    Refused,      // its message was shown; nothing more was written
};

struct SessionSetup {
    std::string ProgramFolder;  // where sprmaker.exe lies, ending with '/'
    bool BuildBatchPauses = true;  // Build SFF's batch ends with "pause" (not so for the CLI)
};

class Session {
public:
    Session(const AppIni& ini, SessionUi& ui, SessionSetup setup);

    SffState State;
    SpriteTable Table;
    // The row last shown on the preview screen: the table's current row, as every way of
    // moving the selection shows the row it lands on (SelectList).
    int SelectedRow = 0;

    // The buttons of the main window.
    CommandEnd Open();        // Open SFF
    CommandEnd Add();         // Add: rows for picture files, after the current row
    CommandEnd Copy();        // Copy: the selected rows once more, each after itself
    CommandEnd Delete();      // Delete: the selected rows
    CommandEnd Initialize();  // Initialize
    CommandEnd SavePcx();     // Save All PCX
    // Every row (tarvolin-cli export), or the selected rows (the table's menu), as picture
    // files of `format`, into a working folder asked for as Save All PCX asks.
    CommandEnd SaveAll(PictureFormat format);
    CommandEnd ExportSelected(PictureFormat format);
    CommandEnd MakeText();    // Make Text
    CommandEnd BuildSff();    // Build SFF
    // Change PCX on the preview screen: the current row points at a picture file chosen in
    // the file dialog from then on, when the builder takes the picture.
    CommandEnd ChangePcx();
    // The same with the picture already chosen (a file dropped on the preview screen).
    CommandEnd ChangePcxFile(const std::string& path);
    // Open SFF with the file already chosen (named at start, dropped, or a recent file),
    // with Open SFF's question and refusals.
    CommandEnd OpenFile(const std::string& path);
    // The path of the SFF last opened; empty before the first.
    const std::string& OpenPath() const { return openPath_; }
    // The SFF that the last Build SFF which ended Done made; empty before the first.
    const std::string& BuiltPath() const { return builtPath_; }

    // The table's history: the last change taken back, or done again; the row it changed
    // is selected and shown.
    CommandEnd Undo();
    CommandEnd Redo();
    // Whether the table holds edits that no SFF built by this program holds: set by every
    // change, cleared by a Build SFF that made its SFF (for the table as the build took it).
    bool HasUnsavedEdits() const;
    // Leaving the program (Exit, or the close box when `closeBox`): with unsaved edits asks
    // whether to build the SFF first (Yes builds, and leaves only when the SFF was made; No
    // leaves; Cancel stays); without, Exit asks its question and the close box nothing.
    bool MayQuit(bool closeBox);

    // Find: "group" or "group,item" (blanks allowed); the first matching row, or with
    // `next` the first after the current row (from the top again after the last). The row
    // found is selected and shown; none found is told.
    CommandEnd Find(const std::string& query, bool next);

    // Writes `text` into a cell of row `place` (counted from 1): every edit of a row's
    // fields goes through here (Group, Item, the axes, Share Pallet), so that it is one step
    // of the table's history. Edits that come one after another on the same row with the
    // same non-zero `run` are one step: a run of arrow-button presses, a drag of the axis.
    void EditCell(int place, Column column, std::string text, uint64_t run = 0);

    // The current row onto the preview screen: after every move of the selection, by the
    // user in the list or by a command.
    void SelectList();

private:
    CommandEnd OpenChosen(const std::string& path);
    // The export of Save All PCX and of the table's menu: `places` empty for every row.
    CommandEnd ExportRows(const std::vector<int>& places, PictureFormat format);
    bool MayReplaceTable();
    void InsertRows(std::vector<int> places, std::vector<SpriteRow> rows);
    void AfterHistoryMove();
    // `question` with the unsaved-edits message in front of it when there are such edits.
    std::string AfterUnsavedNote(const std::string& question) const;
    // After a change of the table: the labels and the preview follow, the window is told.
    void Changed();
    void ShowLabels();
    // Shows the error's message; a command ends Refused with it.
    CommandEnd Refuse(const Error& error);
    // Whether `path` is the SFF last opened: the file opened then, or the one that stands
    // under its name now.
    bool IsOpenSff(const std::string& path) const;
    Status WriteTexts(const BuildTexts& texts) const;

    const AppIni& ini_;
    SessionUi& ui_;
    SessionSetup setup_;
    std::string openPath_;
    std::optional<FileIdentity> openFile_;
    // The folder of the Build SFF that is writing or running its batch; none between builds.
    std::optional<std::string> buildFolder_;
    TableHistory history_{State, Table};
    uint64_t savedAt_ = 0;   // the history's position that the last SFF built holds
    std::string builtPath_;  // that SFF
};

}  // namespace tarvolin
