// Opening an SFF, showing the selected row, and the commands on rows: Delete, Initialize.
#include "mainwin/Session.h"

#include <algorithm>

#include "base/Ask.h"
#include "base/TextHelpers.h"
#include "config/Settings.h"
#include "sff/SffReader.h"

namespace tarvolin {

namespace {

// A cell or caption read as a number the way the program reads them: rounded to a whole
// number; `fallback` for a text that holds none.
int32_t NumberIn(const std::string& text, int32_t fallback) {
    const auto number = ParseNumber(text);
    if (!number) return fallback;
    return RoundToInt32(*number).value_or(fallback);
}

FileDialogSetup OpenSffDialog() {
    FileDialogSetup setup;
    setup.DialogMode = FileDialogSetup::Mode::Open;
    setup.Title = "Select Sff File";
    setup.Filter = "Sff Files (*.sff)|*.sff|";
    setup.FileName = "USER.sff";
    setup.Flags = 4;  // hide the read-only box; the initial folder is left unset
    return setup;
}

FileDialogSetup ChangePcxDialog() {
    FileDialogSetup setup;
    setup.DialogMode = FileDialogSetup::Mode::Open;
    setup.Title = "Select PCX File";
    setup.Filter = "Pcx Files (*.pcx|*.pcx|";  // as it stands: one round bracket
    setup.FileName = "USER.pcx";
    setup.Flags = 4;  // hide the read-only box; no initial folder
    return setup;
}

constexpr int kConfirmStyle = style::YesNo + style::Question + style::SecondButtonDefault;

}  // namespace

Session::Session(const AppIni& ini, SessionUi& ui, SessionSetup setup)
    : ini_(ini), ui_(ui), setup_(std::move(setup)) {}

void Session::ShowLabels() { ui_.ShowLabels(State.SffNameCaption, State.ImageCaption); }

CommandEnd Session::Refuse(const Error& error) {
    ui_.Tell(FormatError(ini_, error), style::Ok + style::Exclamation);
    return CommandEnd::Refused;
}

CommandEnd Session::Open() {
    const AskFn ask = [this](const std::string& text, int styleWord) { return ui_.Ask(text, styleWord); };
    if (!ConfirmDiscardTable(Table, ini_, ask)) return CommandEnd::Cancelled;
    const std::optional<std::string> path = ui_.ChooseFile(OpenSffDialog());
    if (!path) return CommandEnd::Cancelled;  // nothing has changed, whatever was answered before

    // The label holds the file's name while it is read, as the reader expects.
    const std::string name = GetFileName(*path);
    ui_.ShowLabels(name, State.ImageCaption);
    BusyPointer busy(ui_);
    Result<OpenReport> opened = OpenSff(*path, name, State, Table, ini_, ask);
    busy.Release();

    // A refused file leaves the state as it was: the labels show it again, the name
    // shown above included.
    ShowLabels();
    if (!opened) return Refuse(opened.error());
    if (opened.value().Outcome != OpenOutcome::Opened) return CommandEnd::Cancelled;
    openPath_ = *path;
    openFile_ = IdentityOf(*path);
    // What was repaired to read the file is told once, before the first row is shown.
    if (!opened.value().Notices.empty())
        ui_.Tell(FormatErrors(ini_, opened.value().Notices), style::Ok + style::Exclamation);
    SelectList();
    return CommandEnd::Done;
}

bool Session::IsOpenSff(const std::string& path) const {
    const auto file = IdentityOf(path);
    return file && (file == openFile_ || file == IdentityOf(openPath_));
}

void Session::SelectList() {
    if (Table.Empty()) return;
    // First: filling the preview's boxes sets off their handlers, which write into this row.
    SelectedRow = Table.Selected();
    const SpriteRow row = Table.Row(SelectedRow);
    if (row[Column::PcxPath].empty()) {
        // A P.Pos that is no number points at no subfile.
        ui_.ShowSffRow(row, State, NumberIn(row[Column::PPos], -1), State.SffNameCaption + ", P.Pos " + row[Column::PPos]);
    } else {
        ui_.ShowFileRow(row, row[Column::PcxPath] + row[Column::PcxName]);
    }
}

CommandEnd Session::Delete() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    const int place = Table.Selected();
    if (!ui_.Ask(ini_.MsgConfirmDelete, kConfirmStyle)) return CommandEnd::Cancelled;
    State.ImageCaption = DecimalText(int64_t{NumberIn(State.ImageCaption, 0)} - 1);
    ShowLabels();
    Table.RemoveRow(place);
    // The row that followed takes the place; after the last row the new last row is
    // selected, the nearest neighbour of the removed one. With no row left nothing is
    // selected and the screen keeps what it showed.
    if (!Table.Empty()) Table.Select(std::min(place, Table.RowCount()));
    SelectList();
    return CommandEnd::Done;
}

CommandEnd Session::Initialize() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    if (!ui_.Ask(ini_.MsgConfirmInit, kConfirmStyle)) return CommandEnd::Cancelled;
    State.SffNameCaption.clear();
    State.ImageCaption.clear();
    ShowLabels();
    for (int place = Table.RowCount(); place >= 1; --place) Table.RemoveRow(place);
    State.SffBaseName.clear();
    State.SffBytes.clear();
    State.Subfiles.clear();
    ui_.ResetPreview();
    ui_.PumpEvents();
    return CommandEnd::Done;
}

void Session::EditCell(int place, Column column, std::string text, uint64_t /*run*/) {
    if (place < 1 || place > Table.RowCount()) return;
    Table.SetCell(place, column, std::move(text));
}

CommandEnd Session::ChangePcx() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    const std::optional<std::string> path = ui_.ChooseFile(ChangePcxDialog());
    if (!path) return CommandEnd::Cancelled;
    return ChangePcxFile(*path);
}

CommandEnd Session::ChangePcxFile(const std::string& path) {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    // The row of the list's selection at this moment; with rows there always is one. It
    // points at the file before the file is read, so it does so also when the picture is
    // refused: the export and the build refuse such a row before writing anything.
    const int row = Table.Selected();
    if (row < 1) return CommandEnd::NothingToDo;
    Table.SetCell(row, Column::PcxPath, GetFolder(path));
    Table.SetCell(row, Column::PcxName, GetFileName(path));
    ui_.ShowPictureFile(path);
    return CommandEnd::Done;
}

}  // namespace tarvolin
