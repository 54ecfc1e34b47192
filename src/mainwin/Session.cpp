// Opening an SFF, showing the current row, the commands on rows (Add, Copy, Delete,
// Initialize, Change PCX and the edits of a row's cells), their history, and Find.
#include "mainwin/Session.h"

#include <algorithm>

#include "base/Ask.h"
#include "base/TextHelpers.h"
#include "config/Settings.h"
#include "mainwin/FindRow.h"
#include "mainwin/NewRows.h"
#include "sff/SffReader.h"

namespace tarvolin {

namespace {

int32_t NumberIn(const std::string& text, int32_t fallback) { return WholeNumberIn(text).value_or(fallback); }

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
    // The PCX entry as it has always stood (one round bracket), first; PNG files, which the
    // program reads too, one choice of the filter away.
    setup.Filter = "Pcx Files (*.pcx|*.pcx|Png Files (*.png)|*.png|";
    setup.FileName = "USER.pcx";
    setup.Flags = 4;  // hide the read-only box; no initial folder
    return setup;
}

// Add: one picture file or more, PCX or PNG.
FileDialogSetup AddDialog() {
    FileDialogSetup setup = ChangePcxDialog();
    setup.Filter = "Picture Files (*.pcx;*.png)|*.pcx;*.png|Pcx Files (*.pcx)|*.pcx|Png Files (*.png)|*.png|";
    setup.FileName.clear();
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

// With a file open: deleting its every row is an edit too. Initialize closes the file (and
// has asked already); its Undo opens it again.
bool Session::HasUnsavedEdits() const { return !State.SffNameCaption.empty() && history_.Position() != savedAt_; }

std::string Session::AfterUnsavedNote(const std::string& question) const {
    return HasUnsavedEdits() ? ini_.MsgUnsavedEdits + "\r\n" + question : question;
}

void Session::Changed() { ui_.TableChanged(); }

// Another file replaces the table: only edits not yet built are worth a question.
bool Session::MayReplaceTable() {
    return !HasUnsavedEdits() ||
           ui_.Ask(AfterUnsavedNote(ini_.MsgDiscardTable + "\r\n" + ini_.MsgContinue), kDiscardTableStyle);
}

CommandEnd Session::Open() {
    if (!MayReplaceTable()) return CommandEnd::Cancelled;
    const std::optional<std::string> path = ui_.ChooseFile(OpenSffDialog());
    if (!path) return CommandEnd::Cancelled;  // nothing has changed, whatever was answered before
    return OpenChosen(*path);
}

CommandEnd Session::OpenFile(const std::string& path) {
    if (!MayReplaceTable()) return CommandEnd::Cancelled;
    return OpenChosen(path);
}

CommandEnd Session::OpenChosen(const std::string& path) {
    const AskFn ask = [this](const std::string& text, int styleWord) { return ui_.Ask(text, styleWord); };
    // The label holds the file's name while it is read, as the reader expects.
    const std::string name = GetFileName(path);
    ui_.ShowLabels(name, State.ImageCaption);
    BusyPointer busy(ui_);
    Result<OpenReport> opened = OpenSff(path, name, State, Table, ini_, ask);
    busy.Release();

    // A refused file leaves the state as it was: the labels show it again, the name
    // shown above included.
    ShowLabels();
    if (!opened) return Refuse(opened.error());
    // Opened or declined, the rows the history knew are gone.
    history_.Clear();
    savedAt_ = 0;
    Changed();
    if (opened.value().Outcome != OpenOutcome::Opened) return CommandEnd::Cancelled;
    openPath_ = path;
    openFile_ = IdentityOf(path);
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
    // First, so that whatever the preview does while it fills its boxes acts on this row.
    SelectedRow = Table.Selected();
    const SpriteRow row = Table.Row(SelectedRow);
    if (row[Column::PcxPath].empty()) {
        // A P.Pos that is no number points at no subfile.
        ui_.ShowSffRow(row, State, NumberIn(row[Column::PPos], -1), State.SffNameCaption + ", P.Pos " + row[Column::PPos]);
    } else {
        ui_.ShowFileRow(row, row[Column::PcxPath] + row[Column::PcxName]);
    }
}

// New rows go in as one step with the image count raised by as many, marked, the first
// of them current and shown.
void Session::InsertRows(std::vector<int> places, std::vector<SpriteRow> rows) {
    const int first = places.front();
    const auto count = static_cast<int64_t>(places.size());
    history_.Begin();
    history_.SetImageCaption(DecimalText(int64_t{NumberIn(State.ImageCaption, 0)} + count));
    history_.InsertRows(places, std::move(rows));
    Table.SelectRows(std::move(places), first);
    history_.Commit();
    ShowLabels();
    SelectList();
    Changed();
}

CommandEnd Session::Add() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    const std::vector<std::string> paths = ui_.ChooseFiles(AddDialog());
    if (paths.empty()) return CommandEnd::Cancelled;
    const int current = Table.Selected();
    const SpriteRow& at = Table.Row(current);
    FreeItems free(Table, at[Column::GroupNo]);
    int32_t item = NumberIn(at[Column::ItemNo], -1);
    std::vector<SpriteRow> rows;
    std::vector<int> places;
    // A refused picture is told and left out; the others go in.
    for (const std::string& path : paths) {
        auto picture = AcceptedPicture(path);
        if (!picture) {
            Refuse(picture.error());
            continue;
        }
        item = free.After(item);
        rows.push_back(RowForPicture(path, picture.value(), at, State.SharedPalette, item));
        places.push_back(current + static_cast<int>(rows.size()));
    }
    if (rows.empty()) return CommandEnd::Refused;
    InsertRows(std::move(places), std::move(rows));
    return CommandEnd::Done;
}

CommandEnd Session::Copy() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    std::vector<int> places;
    std::vector<SpriteRow> copies = CopiesOf(Table, Table.SelectedRows(), places);
    InsertRows(std::move(places), std::move(copies));
    return CommandEnd::Done;
}

CommandEnd Session::Delete() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    std::vector<int> places = Table.SelectedRows();
    if (!ui_.Ask(ini_.MsgConfirmDelete, kConfirmStyle)) return CommandEnd::Cancelled;
    const int first = places.front();
    history_.Begin();
    history_.SetImageCaption(DecimalText(int64_t{NumberIn(State.ImageCaption, 0)} - static_cast<int64_t>(places.size())));
    history_.RemoveRows(std::move(places));
    // The row that followed takes the place; after the last row the new last row is
    // selected, the nearest neighbour of the removed one. With no row left nothing is
    // selected and the screen keeps what it showed.
    if (!Table.Empty()) Table.Select(std::min(first, Table.RowCount()));
    history_.Commit();
    ShowLabels();
    SelectList();
    Changed();
    return CommandEnd::Done;
}

CommandEnd Session::Initialize() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    if (!ui_.Ask(AfterUnsavedNote(ini_.MsgConfirmInit), kConfirmStyle)) return CommandEnd::Cancelled;
    // The labels' texts, the file's bytes and records and every row go into the history,
    // which gives them back on Undo.
    history_.Begin();
    history_.EmptyFile();
    history_.Commit();
    ShowLabels();
    ui_.ResetPreview();
    ui_.PumpEvents();
    Changed();
    return CommandEnd::Done;
}

void Session::EditCell(int place, Column column, std::string text, uint64_t run) {
    if (place < 1 || place > Table.RowCount()) return;
    // A box that takes a value equal to the cell's (Enter without a change): no step.
    if (Table.Cell(place, column) == text) return;
    history_.Begin(run, place);
    history_.SetCell(place, column, std::move(text));
    history_.Commit();
    Changed();
}

CommandEnd Session::ChangePcx() {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    const std::optional<std::string> path = ui_.ChooseFile(ChangePcxDialog());
    if (!path) return CommandEnd::Cancelled;
    return ChangePcxFile(*path);
}

CommandEnd Session::ChangePcxFile(const std::string& path) {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    // The row changes only for a picture the builder takes: a refused file leaves the row,
    // the table and the screen as they were.
    const auto picture = AcceptedPicture(path);
    if (!picture) return Refuse(picture.error());
    const int row = Table.Selected();
    history_.Begin(0, row);
    history_.SetCell(row, Column::PcxPath, GetFolder(path));
    history_.SetCell(row, Column::PcxName, GetFileName(path));
    history_.Commit();
    ui_.ShowPictureFile(path);
    Changed();
    return CommandEnd::Done;
}

CommandEnd Session::Undo() {
    if (!history_.Undo()) return CommandEnd::NothingToDo;
    AfterHistoryMove();
    return CommandEnd::Done;
}

CommandEnd Session::Redo() {
    if (!history_.Redo()) return CommandEnd::NothingToDo;
    AfterHistoryMove();
    return CommandEnd::Done;
}

void Session::AfterHistoryMove() {
    ShowLabels();
    if (Table.Empty()) ui_.ResetPreview();
    else SelectList();
    Changed();
}

bool Session::MayQuit(bool closeBox) {
    if (!HasUnsavedEdits()) return closeBox || ui_.Ask(ini_.MsgConfirmExit, style::YesNo + style::Question);
    switch (ui_.AskOrCancel(ini_.MsgUnsavedEdits + "\r\n" + ini_.MsgBuildFirst, style::YesNoCancel + style::Question)) {
    case SessionUi::Reply::Yes:
        BuildSff();
        return !HasUnsavedEdits();
    case SessionUi::Reply::No: return true;
    case SessionUi::Reply::Cancel: break;
    }
    return false;
}

CommandEnd Session::Find(const std::string& query, bool next) {
    if (Table.Empty()) return CommandEnd::NothingToDo;
    const auto found = FindRow(Table, query, next ? Table.Selected() + 1 : 1);
    if (!found) {
        ui_.Tell(ini_.MsgNotFound + "\r\n" + query, style::Ok + style::Information);
        return CommandEnd::Refused;
    }
    Table.Select(*found);
    SelectList();
    return CommandEnd::Done;
}

}  // namespace tarvolin
