// Click of cmdSffOpen: ask before discarding rows, choose the file, read it into the table.
#include "mainwin/ui/FrmMain.h"
#include "platform/BusyCursor.h"
#include "platform/FileDialog.h"
#include "sff/SffReader.h"
#include "base/TextHelpers.h"
#include "config/Settings.h"
#include "platform/MessageBox.h"

namespace tarvolin {

namespace {
platform::FileDialogSetup OpenSffDialog() {
    platform::FileDialogSetup setup;
    setup.DialogMode = platform::FileDialogSetup::Mode::Open;
    setup.Title = "Select Sff File";
    setup.Filter = "Sff Files (*.sff)|*.sff|";
    setup.FileName = "USER.sff";
    setup.Flags = 4;  // hide the read-only box; the initial folder is left unset
    return setup;
}
}  // namespace

void FrmMain::OnSffOpen() {
    const AskFn ask = [this](const std::string& text, int styleWord) { return Ask(text, styleWord); };
    if (!ConfirmDiscardTable(Table, ini_, ask)) return;

    const std::optional<std::string> path = services_.Files.Show(this, OpenSffDialog());
    if (!path) return;  // Cancel: nothing has changed, whatever was answered before

    const std::string name = GetFileName(*path);
    lblSffName.setText(QString::fromStdString(name));

    platform::Hourglass hourglass(this);
    Result<OpenReport> opened = OpenSff(*path, name, State, Table, ini_, ask);
    hourglass.Release();

    // A refused file leaves the state as it was: the labels show it again, the name
    // shown above included.
    ShowLabels();
    if (!opened) {
        ShowError(opened.error());
        return;
    }
    if (opened.value().Outcome != OpenOutcome::Opened) return;
    // What was repaired to read the file is told once, before the first row is shown.
    if (!opened.value().Notices.empty())
        services_.Box.Show(this, FormatErrors(ini_, opened.value().Notices), style::Ok + style::Exclamation);
    SelectList();
}

}  // namespace tarvolin
