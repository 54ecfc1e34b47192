// The commands that write the working files and rebuild the SFF: Save All PCX, Make Text
// and Build SFF.
#include "mainwin/Session.h"

#include "base/Ask.h"
#include "base/MessageKeys.h"
#include "rebuild/BuildFiles.h"
#include "rebuild/RowCheck.h"
#include "sff/PcxExport.h"

namespace tarvolin {

namespace {

// The export and the build let events through between files, and the user may delete rows
// or open another SFF meanwhile. They work on a copy of the table and the file's state as
// they stood when the command began, so nothing changes under them.
struct Snapshot {
    SffState State;
    SpriteTable Table;
    Snapshot(const SffState& state, const SpriteTable& table) : State(state), Table(table) { Table.SetObserver(nullptr); }
};

FileDialogSetup MakeTextDialog(const SffState& state) {
    FileDialogSetup setup;
    setup.DialogMode = FileDialogSetup::Mode::Save;
    setup.Title = "Parameter File Save";
    setup.Filter = "txt Files(*.txt)|*.txt|";
    setup.FileName = BuildParamName(state);
    setup.InitialFolder = state.WorkFolder;
    setup.Flags = 6;  // hide the read-only box, ask before overwriting
    return setup;
}

}  // namespace

CommandEnd Session::SavePcx() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    auto folder = ui_.ChooseWorkFolder(State.WorkFolder);
    if (!folder) return CommandEnd::Cancelled;  // silent, WorkFolder as it was
    State.WorkFolder = *folder;
    BusyPointer busy(ui_);
    const Snapshot now(State, Table);
    Status saved = CheckRowsHaveData(now.Table);
    if (saved) saved = SaveAllPcx(now.State, now.Table, now.State.WorkFolder, [this] { ui_.PumpEvents(); });
    busy.Release();
    // A file that can't be written stops the export there, named in the message; the
    // files written before it stay, each of them whole.
    if (!saved) return Refuse(saved.error());
    ui_.Tell(ini_.MsgPcxDone, style::Ok + style::Information);
    return CommandEnd::Done;
}

CommandEnd Session::MakeText() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    auto chosen = ui_.ChooseFile(MakeTextDialog(State));
    if (!chosen) return CommandEnd::Cancelled;
    BusyPointer busy(ui_);
    // A chosen name of fewer than four bytes loses all of it: the batch is "Build.bat".
    auto texts = PrepareBuildTexts(Table, State.SffNameCaption, *chosen, true, setup_.ProgramFolder);
    Status written = texts ? WriteTexts(texts.value()) : Status(texts.error());
    busy.Release();
    if (!written) return Refuse(written.error());
    ui_.Tell(ini_.MsgTextDone, style::Ok + style::Information);
    return CommandEnd::Done;
}

// Make Text's files, unless one of them would replace the open SFF (a name chosen in the
// dialog, or one given to tarvolin-cli text, may be the SFF itself).
Status Session::WriteTexts(const BuildTexts& texts) const {
    for (const std::string& name : {texts.ParamName, texts.BatchName})
        if (IsOpenSff(texts.Folder + name))
            return Error{msg::OutputIsOpenSff, texts.Folder + name,
                         "Make Text would write over the open SFF " + State.SffNameCaption};
    return WriteBuildTexts(texts);
}

CommandEnd Session::BuildSff() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    ui_.Tell(ini_.MsgChooseFolder, style::Ok + style::Question);
    auto folder = ui_.ChooseWorkFolder(State.WorkFolder);
    if (!folder) {
        ui_.Tell(ini_.MsgCancelled + "\r\n" + ini_.MsgAborting, style::Ok + style::Exclamation);
        return CommandEnd::Cancelled;
    }
    State.WorkFolder = *folder;
    BusyPointer busy(ui_);  // on until the batch has ended
    const Snapshot now(State, Table);
    // The texts are made first: one that CP932 can't hold is refused before any file is
    // written; a write that fails stops the build before the batch runs.
    auto files = WriteBuildFiles(now.State, now.Table, now.State.WorkFolder, setup_.BuildBatchPauses,
                                 setup_.ProgramFolder, [this] { ui_.PumpEvents(); });
    if (!files) {
        busy.Release();
        return Refuse(files.error());
    }
    if (!ui_.RunBatch(files.value().BatchName, files.value().Folder)) {
        ui_.Tell(ini_.MsgBuildFailed + "\r\n" + ini_.MsgRunBatchByHand, style::Ok + style::Critical);
        return CommandEnd::Refused;
    }
    return CommandEnd::Done;
}

}  // namespace tarvolin
