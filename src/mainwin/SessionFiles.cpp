// The commands that write the working files and rebuild the SFF: Save All PCX (and the
// export of the selected rows), Make Text and Build SFF. Each holds the folder's work lock while it writes there (Build SFF until
// its batch has ended), so that two of them never write into one folder at once.
#include <algorithm>
#include <optional>

#include "base/Ask.h"
#include "base/AtomicFile.h"
#include "base/FolderLock.h"
#include "base/MessageKeys.h"
#include "batch/BuildLogLine.h"
#include "mainwin/Session.h"
#include "rebuild/BuildBatch.h"
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

// Takes the work lock of `folder` into `held`; another command writing there (in this
// program or another) refuses it with ERR_BUSY. Holding it, the command clears away the
// temporary files that a writer killed in the middle of a file left in the folder.
Status LockFolder(const std::string& folder, std::optional<FolderLock>& held) {
    auto lock = FolderLock::Take(folder, kWorkFolderLock);
    if (!lock) return lock.error();
    held.emplace(std::move(lock.value()));
    RemoveStaleTemporaries(folder);
    return Ok();
}

// Marks a build as running in its folder for as long as it lives.
class BuildMark {
public:
    BuildMark(std::optional<std::string>& mark, const std::string& folder) : mark_(mark) { mark_ = folder; }
    ~BuildMark() { mark_.reset(); }
    BuildMark(const BuildMark&) = delete;
    BuildMark& operator=(const BuildMark&) = delete;

private:
    std::optional<std::string>& mark_;
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

CommandEnd Session::SavePcx() { return ExportRows({}, PictureFormat::Pcx); }

CommandEnd Session::SaveAll(PictureFormat format) { return ExportRows({}, format); }

CommandEnd Session::ExportSelected(PictureFormat format) {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    return ExportRows(Table.SelectedRows(), format);
}

CommandEnd Session::ExportRows(const std::vector<int>& places, PictureFormat format) {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    auto folder = ui_.ChooseWorkFolder(State.WorkFolder);
    if (!folder) return CommandEnd::Cancelled;  // silent, WorkFolder as it was
    State.WorkFolder = *folder;
    BusyPointer busy(ui_);
    const Snapshot now(State, Table);
    std::optional<FolderLock> lock;
    Status saved = CheckRowsBeforeExport(now.State, now.Table, *folder, format, places);
    if (saved) saved = LockFolder(*folder, lock);
    if (saved) saved = SaveRows(now.State, now.Table, *folder, format, places, [this] { ui_.PumpEvents(); });
    busy.Release();
    // A file that can't be written stops the export there, named in the message; the
    // files written before it stay, each of them whole.
    if (!saved) return Refuse(saved.error());
    const bool allPcx = places.empty() && format == PictureFormat::Pcx;
    ui_.Tell(allPcx ? ini_.MsgPcxDone : ini_.MsgExportDone, style::Ok + style::Information);
    return CommandEnd::Done;
}

CommandEnd Session::MakeText() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    auto chosen = ui_.ChooseFile(MakeTextDialog(State));
    if (!chosen) return CommandEnd::Cancelled;
    BusyPointer busy(ui_);
    // A chosen name of fewer than four bytes loses all of it: the batch is "Build.bat".
    Status checked = CheckRowsForBuild(Table);
    auto texts = PrepareBuildTexts(Table, State.SffNameCaption, *chosen, true, setup_.ProgramFolder);
    Status written = !checked ? checked : texts ? WriteTexts(texts.value()) : Status(texts.error());
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
    std::optional<FolderLock> lock;
    if (auto locked = LockFolder(texts.Folder, lock); !locked) return locked;
    return WriteBuildTexts(texts);
}

CommandEnd Session::BuildSff() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    // One build at a time: a second one while the first writes or its batch runs.
    if (buildFolder_)
        return Refuse(Error{msg::BuildRunning, *buildFolder_, "Build SFF is still writing or running its batch there"});
    ui_.Tell(ini_.MsgChooseFolder, style::Ok + style::Question);
    auto folder = ui_.ChooseWorkFolder(State.WorkFolder);
    if (!folder) {
        ui_.Tell(ini_.MsgCancelled + "\r\n" + ini_.MsgAborting, style::Ok + style::Exclamation);
        return CommandEnd::Cancelled;
    }
    State.WorkFolder = *folder;
    const BuildMark running(buildFolder_, *folder);
    BusyPointer busy(ui_);  // on until the batch has ended
    const Snapshot now(State, Table);
    const uint64_t builtAt = history_.Position();  // the table the new SFF will hold
    // The rows and the texts are checked first: a row that can't be built or a text CP932
    // can't hold is refused before any file is written; a write that fails stops the build
    // before the batch runs.
    Status checked = CheckRowsBeforeExport(now.State, now.Table, *folder);
    auto texts = PrepareBuildTexts(now.Table, now.State.SffNameCaption, *folder + BuildParamName(now.State),
                                   setup_.BuildBatchPauses, setup_.ProgramFolder);
    std::optional<FolderLock> lock;
    Status written = !checked ? checked : texts ? LockFolder(*folder, lock) : Status(texts.error());
    if (written) written = SaveAllPcx(now.State, now.Table, *folder, [this] { ui_.PumpEvents(); });
    if (written) written = WriteBuildTexts(texts.value());
    if (!written) {
        busy.Release();
        return Refuse(written.error());
    }
    std::vector<std::pair<std::string, std::optional<FileIdentity>>> newSff;
    for (const std::string& path : NewSffPaths(texts.value().Folder, now.State.SffNameCaption))
        newSff.emplace_back(path, IdentityOf(path));
    const bool ran = ui_.RunBatch(texts.value().BatchName, texts.value().Folder);
    busy.Release();
    if (!ran) {
        ui_.Tell(ini_.MsgBuildFailed + "\r\n" + ini_.MsgRunBatchByHand, style::Ok + style::Critical);
        return CommandEnd::Refused;
    }
    // The builder writes a new file and renames it over the name: a file of another
    // identity stands there when, and only when, it made the SFF.
    const auto made = std::find_if(newSff.begin(), newSff.end(), [](const auto& path) {
        const auto after = IdentityOf(path.first);
        return after && after != path.second;
    });
    if (made == newSff.end()) {
        ui_.Tell(ini_.MsgBuildNone + "\r\n" + newSff.front().first + "\r\nno new SFF was made: " +
                     LogErrorLine(texts.value().Folder + kBuildLogName),
                 style::Ok + style::Exclamation);
        return CommandEnd::Refused;
    }
    savedAt_ = builtAt;
    builtPath_ = made->first;
    Changed();
    ui_.Tell(ini_.MsgBuildDone + "\r\n" + now.State.SffNameCaption + ": " + std::to_string(now.Table.RowCount()) +
                 " sprites written",
             style::Ok + style::Information);
    return CommandEnd::Done;
}

}  // namespace tarvolin
