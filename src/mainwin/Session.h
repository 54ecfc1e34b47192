#pragma once
// One open SFF and the commands on its table, without any window: the state of the open
// file, the rows, the row last shown on the preview screen, and the commands of the main
// window's buttons as functions. Whatever a command asks or shows goes through SessionUi,
// so the main window and tarvolin-cli run the same commands.
#include <optional>
#include <string>

#include "base/Result.h"
#include "config/AppIni.h"
#include "mainwin/FileIdentity.h"
#include "mainwin/SessionUi.h"
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
    int SelectedRow = 0;  // the row last shown on the preview screen

    // The buttons of the main window.
    CommandEnd Open();        // Open SFF
    CommandEnd Delete();      // Delete
    CommandEnd Initialize();  // Initialize
    CommandEnd SavePcx();     // Save All PCX
    CommandEnd MakeText();    // Make Text
    CommandEnd BuildSff();    // Build SFF
    // Change PCX on the preview screen: the selected row points at a picture file chosen
    // in the file dialog from then on.
    CommandEnd ChangePcx();
    // The same with the picture already chosen (a file dropped on the preview screen).
    CommandEnd ChangePcxFile(const std::string& path);

    // Writes `text` into a cell of row `place` (counted from 1): every edit of a row's
    // fields goes through here (Group, Item, the axes, Share Pallet), so that it is one step
    // of the table's history. Edits that come one after another on the same row with the
    // same non-zero `run` are one step: a run of arrow-button presses, a drag of the axis.
    void EditCell(int place, Column column, std::string text, uint64_t run = 0);

    // The selected row onto the preview screen (a click or an arrow key in the list, the
    // end of Open and of Delete).
    void SelectList();

private:
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
};

}  // namespace tarvolin
