#pragma once
// frmPath: asks for the working folder. A path field, a folder list and a drive list show
// one folder; what counts is the text of the field, which always ends with '/'.
// Loaded hidden at start-up and kept for the whole run, so the lists and Accepted keep
// their state between uses.
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <optional>
#include <string>

#include "config/ui/DriveList.h"
#include "config/ui/FolderList.h"

namespace tarvolin {

class FrmPath : public QDialog {
    Q_OBJECT
public:
    explicit FrmPath(QWidget* parent);

    // True when the dialog was last left with OK, false after Cancel (or Esc, or the close
    // box, which count as Cancel).
    bool Accepted = false;

    // The opening step with the folder a caller hands in (nothing: none), then the modal
    // showing; returns when the dialog is hidden.
    void ShowModal(const std::optional<std::string>& handedIn);

    // The text of txtPath.
    std::string PathText() const;

    void reject() override;

private:
    void Opening(const std::optional<std::string>& handedIn);
    void ApplyFieldRule();
    void ShowSelectedFolder();
    void DriveChosen(const QString& root);

    QLineEdit txtPath{this};
    DriveList drvDrive{this};
    QPushButton cmdOK{this};
    QPushButton cmdCancel{this};
    FolderList dirDir{this};
};

// How the build commands ask for the working folder: hands in `workFolder` when it isn't
// empty, shows the dialog, and gives the field's text on OK, nothing on Cancel.
std::optional<std::string> AskWorkFolder(FrmPath& dialog, const std::string& workFolder);

}  // namespace tarvolin
