// The main window as the user interface of the session's commands: the message box and
// the file dialog of the platform, the working-folder dialog, the hourglass, the batch
// console, the two labels and the preview screen.
#include <QDir>

#include "config/ui/FrmPath.h"
#include "mainwin/ui/FrmMain.h"
#include "platform/BusyCursor.h"
#include "platform/EventPump.h"
#include "platform/FileDialog.h"
#include "platform/MessageBox.h"
#include "platform/RunAndWait.h"

namespace tarvolin {

bool FrmMain::Ask(const std::string& text, int styleWord) { return services_.Box.AskYes(this, text, styleWord); }

SessionUi::Reply FrmMain::AskOrCancel(const std::string& text, int styleWord) {
    switch (services_.Box.Show(this, text, styleWord)) {
    case platform::Answer::Yes: return Reply::Yes;
    case platform::Answer::No: return Reply::No;
    default: return Reply::Cancel;
    }
}

std::vector<std::string> FrmMain::ChooseFiles(const FileDialogSetup& setup) { return services_.Files.ShowMany(this, setup); }

void FrmMain::TableChanged() { ShowTitle(); }

void FrmMain::Tell(const std::string& text, int styleWord) { services_.Box.Show(this, text, styleWord); }

std::optional<std::string> FrmMain::ChooseFile(const FileDialogSetup& setup) { return services_.Files.Show(this, setup); }

std::optional<std::string> FrmMain::ChooseWorkFolder(const std::string& workFolder) {
    const auto folder = AskWorkFolder(PathDialog(), workFolder);
    if (!folder) return folder;
    // One slash between names ("/tmp/w//" typed as such names "/tmp/w/"), one at the end.
    QString clean = QDir::cleanPath(QString::fromStdString(*folder));
    if (!clean.endsWith(QLatin1Char('/'))) clean += QLatin1Char('/');
    return clean.toStdString();
}

void FrmMain::SetBusy(bool busy) {
    platform::SetMousePointer(this, busy ? platform::kHourglass : platform::kDefaultPointer);
}

void FrmMain::PumpEvents() { platform::pumpEvents(); }

bool FrmMain::RunBatch(const std::string& batchName, const std::string& folder) {
    return platform::RunAndWait(batchName, folder, 1);  // a normal console window
}

void FrmMain::ShowLabels(const std::string& sffName, const std::string& imageCount) {
    lblSffName.setText(QString::fromStdString(sffName));
    lblImage.setText(QString::fromStdString(imageCount));
}

void FrmMain::ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile, const std::string& source) {
    frmPCX_->ShowSffRow(row, sff, subfile, source);
}

void FrmMain::ShowFileRow(const SpriteRow& row, const std::string& path) { frmPCX_->ShowFileRow(row, path); }

void FrmMain::ShowPictureFile(const std::string& path) { frmPCX_->ShowPictureFile(path); }

void FrmMain::ResetPreview() { frmPCX_->Reset(); }

}  // namespace tarvolin
