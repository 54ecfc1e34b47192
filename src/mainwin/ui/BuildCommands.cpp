// The commands that write the working files and rebuild the SFF: Save All PCX, Build SFF
// and Make Text.
#include <QCoreApplication>

#include "base/Ask.h"
#include "config/Settings.h"
#include "config/ui/FrmPath.h"
#include "mainwin/ui/FrmMain.h"
#include "platform/BusyCursor.h"
#include "platform/EventPump.h"
#include "platform/FileDialog.h"
#include "platform/MessageBox.h"
#include "platform/RunAndWait.h"
#include "rebuild/BuildFiles.h"
#include "sff/PcxExport.h"

namespace tarvolin {

namespace {

// sprmaker.exe lies beside the program; the batch names it by this folder.
std::string ProgramFolder() { return QCoreApplication::applicationDirPath().toStdString() + "/"; }

// The export and the build let events through between files, and the user may delete rows
// or open another SFF meanwhile. They work on a copy of the table and the file's state as
// they stood when the command began, so nothing changes under them.
struct Snapshot {
    SffState State;
    SpriteTable Table;
    Snapshot(const SffState& state, const SpriteTable& table) : State(state), Table(table) { Table.SetObserver(nullptr); }
};

}  // namespace

void FrmMain::OnSavePcx() {
    if (Table.Empty()) return;
    auto folder = AskWorkFolder(PathDialog(), State.WorkFolder);
    if (!folder) return;
    State.WorkFolder = *folder;
    platform::Hourglass hourglass(this);
    const Snapshot now(State, Table);
    Status saved = SaveAllPcx(now.State, now.Table, State.WorkFolder, platform::pumpEvents);
    hourglass.Release();
    // A file that can't be written stops the export there, named in the message; the
    // files written before it stay, each of them whole.
    if (!saved) return ShowError(saved.error());
    services_.Box.Show(this, ini_.MsgPcxDone, style::Ok + style::Information);
}

void FrmMain::OnBuildSff() {
    if (Table.Empty()) return;
    services_.Box.Show(this, ini_.MsgChooseFolder, style::Ok + style::Question);
    auto folder = AskWorkFolder(PathDialog(), State.WorkFolder);
    if (!folder) {
        services_.Box.Show(this, ini_.MsgCancelled + "\r\n" + ini_.MsgAborting, style::Ok + style::Exclamation);
        return;
    }
    State.WorkFolder = *folder;
    platform::Hourglass hourglass(this);
    const Snapshot now(State, Table);
    // The texts are made first: one that CP932 can't hold is refused before any file is
    // written; a write that fails stops the build before the batch runs.
    auto files = WriteBuildFiles(now.State, now.Table, State.WorkFolder, true, ProgramFolder(), platform::pumpEvents);
    if (!files) {
        hourglass.Release();
        return ShowError(files.error());
    }
    if (!platform::RunAndWait(files.value().BatchName, files.value().Folder, 1))
        services_.Box.Show(this, ini_.MsgBuildFailed + "\r\n" + ini_.MsgRunBatchByHand, style::Ok + style::Critical);
}

void FrmMain::OnMakeText() {
    if (Table.Empty()) return;
    platform::FileDialogSetup setup;
    setup.DialogMode = platform::FileDialogSetup::Mode::Save;
    setup.Title = "Parameter File Save";
    setup.Filter = "txt Files(*.txt)|*.txt|";
    setup.FileName = BuildParamName(State);
    setup.InitialFolder = State.WorkFolder;
    setup.Flags = 6;
    auto chosen = services_.Files.Show(this, setup);
    if (!chosen) return;
    platform::Hourglass hourglass(this);
    // A chosen name of fewer than four bytes loses all of it: the batch is "Build.bat".
    auto texts = PrepareBuildTexts(Table, State.SffNameCaption, *chosen, true, ProgramFolder());
    Status written = texts ? WriteBuildTexts(texts.value()) : Status(texts.error());
    hourglass.Release();
    if (!written) return ShowError(written.error());
    services_.Box.Show(this, ini_.MsgTextDone, style::Ok + style::Information);
}

}  // namespace tarvolin
