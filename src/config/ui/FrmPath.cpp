#include "config/ui/FrmPath.h"

#include <QDir>
#include <QScreen>
#include <QSignalBlocker>

#include "config/ui/Startup.h"
#include "platform/Twips.h"

namespace tarvolin {

namespace {

using platform::DesignFont;
using platform::PlaceInTwips;
using platform::Pixels;

// Spaces only, as the opening step trims them; other blanks stay part of the name.
QString TrimSpaces(const QString& text) {
    qsizetype b = 0, e = text.size();
    while (b < e && text[b] == QLatin1Char(' ')) ++b;
    while (e > b && text[e - 1] == QLatin1Char(' ')) --e;
    return text.mid(b, e - b);
}

// The folder a list goes to when a drive is chosen: the process's current folder when it
// lies on that drive, otherwise the drive's root.
QString FolderOnDrive(const QString& root, const QStringList& roots) {
    const QString cwd = QDir::currentPath();
    return DriveList::RootOf(roots, cwd) == root ? cwd : root;
}

}  // namespace

FrmPath::FrmPath(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPath"));
    // A tool window: close box, no minimise or maximise button, no entry in the task bar.
    setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                   Qt::MSWindowsFixedSizeDialogHint);
    setFixedSize(Pixels(3645), Pixels(3090));
    setModal(true);

    txtPath.setObjectName(QStringLiteral("txtPath"));
    drvDrive.setObjectName(QStringLiteral("drvDrive"));
    cmdOK.setObjectName(QStringLiteral("cmdOK"));
    cmdCancel.setObjectName(QStringLiteral("cmdCancel"));
    dirDir.setObjectName(QStringLiteral("dirDir"));
    PlaceInTwips(txtPath, 120, 120, 3375, 270);
    PlaceInTwips(drvDrive, 120, 2160, 3315, 300);
    PlaceInTwips(cmdOK, 840, 2640, 1275, 375);
    PlaceInTwips(cmdCancel, 2220, 2640, 1215, 375);
    PlaceInTwips(dirDir, 180, 600, 3375, 1350);
    for (QWidget* w : {static_cast<QWidget*>(&txtPath), static_cast<QWidget*>(&dirDir), static_cast<QWidget*>(&drvDrive)})
        w->setFont(DesignFont("ＭＳ ゴシック", 9));
    for (QPushButton* b : {&cmdOK, &cmdCancel}) b->setFont(DesignFont("Arial", 9));
    txtPath.setAttribute(Qt::WA_InputMethodEnabled, false);  // input method off
    ShowDesignCaptions(*this, Window::Path);
    cmdOK.setDefault(true);
    cmdCancel.setAutoDefault(false);
    setTabOrder(&txtPath, &drvDrive);
    setTabOrder(&drvDrive, &cmdOK);
    setTabOrder(&cmdOK, &cmdCancel);
    setTabOrder(&cmdCancel, &dirDir);

    connect(&txtPath, &QLineEdit::textChanged, this, &FrmPath::ApplyFieldRule);
    connect(&dirDir, &FolderList::EntryClicked, this, [this](const QString& p) { txtPath.setText(p); });
    connect(&dirDir, &FolderList::PathChanged, this, &FrmPath::ShowSelectedFolder);
    connect(&drvDrive, &DriveList::DriveChosen, this, &FrmPath::DriveChosen);
    connect(&cmdOK, &QPushButton::clicked, this, [this] {
        Accepted = true;
        accept();
    });
    connect(&cmdCancel, &QPushButton::clicked, this, &FrmPath::reject);

    Opening(std::nullopt);  // the load step
}

void FrmPath::ShowModal(const std::optional<std::string>& handedIn) {
    Opening(handedIn);
    exec();
}

std::string FrmPath::PathText() const { return txtPath.text().toStdString(); }

// Cancel, Esc and the close box alike: a closed dialog gives no folder.
void FrmPath::reject() {
    Accepted = false;
    QDialog::reject();
}

void FrmPath::Opening(const std::optional<std::string>& handedIn) {
    if (const QScreen* s = screen()) {
        const QRect area = s->geometry();
        const QSize outer = frameGeometry().size();
        move(area.left() + area.width() / 2 - outer.width() / 2, area.top() + area.height() / 2 - outer.height() / 2);
    }
    if (!handedIn) {
        dirDir.SetPath(FolderOnDrive(drvDrive.SelectedRoot(), drvDrive.Roots()));  // fills the field
        return;
    }
    QString folder = TrimSpaces(QString::fromStdString(*handedIn));
    if (folder.endsWith(QLatin1Char('/'))) folder.chop(1);  // '/' is one byte: cutting it is a byte cut too
    drvDrive.SelectRootOf(folder.isEmpty() ? QStringLiteral("/") : folder);
    {
        // The lists go to the folder (or, when it has vanished, to the nearest folder above
        // it that exists); the field keeps the folder as it was handed in.
        const QSignalBlocker quiet(dirDir);
        dirDir.SetPath(folder);
    }
    txtPath.setText(folder);
}

// Whenever the text changes and doesn't end in '/', a '/' is appended at once; a cleared
// field holds "/". The cursor stays where the user had it.
void FrmPath::ApplyFieldRule() {
    const QString text = txtPath.text();
    if (text.endsWith(QLatin1Char('/'))) return;
    const int cursor = txtPath.cursorPosition();
    txtPath.setText(text + QLatin1Char('/'));
    txtPath.setCursorPosition(cursor);
}

void FrmPath::ShowSelectedFolder() { txtPath.setText(dirDir.SelectedPath()); }

void FrmPath::DriveChosen(const QString& root) { dirDir.SetPath(FolderOnDrive(root, drvDrive.Roots())); }

std::optional<std::string> AskWorkFolder(FrmPath& dialog, const std::string& workFolder) {
    dialog.ShowModal(workFolder.empty() ? std::nullopt : std::optional<std::string>(workFolder));
    if (!dialog.Accepted) return std::nullopt;
    return dialog.PathText();
}

}  // namespace tarvolin
