// The working-folder dialog: its field rule, its lists, its buttons, and what it keeps
// between uses.
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "config/DriveList.h"
#include "config/FolderList.h"
#include "config/FrmPath.h"
#include "support/TempDir.h"

using namespace tarvolin;

namespace {

// Runs `step` on the dialog once it is on screen (modal), then leaves it by `leave`.
std::optional<std::string> Ask(FrmPath& dialog, const std::string& workFolder, std::function<void(FrmPath&)> step,
                               const char* leave = "cmdOK") {
    QTimer::singleShot(0, &dialog, [&dialog, step, leave] {
        if (step) step(dialog);
        if (std::string_view(leave) == "Esc") QTest::keyClick(&dialog, Qt::Key_Escape);
        else if (std::string_view(leave) == "close") dialog.close();
        else QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(leave)), Qt::LeftButton);
    });
    return AskWorkFolder(dialog, workFolder);
}

QLineEdit& Field(FrmPath& d) { return *d.findChild<QLineEdit*>(QStringLiteral("txtPath")); }
FolderList& Folders(FrmPath& d) { return *d.findChild<FolderList*>(QStringLiteral("dirDir")); }
DriveList& Drives(FrmPath& d) { return *d.findChild<DriveList*>(QStringLiteral("drvDrive")); }

std::string WithSlash(const QString& folder) {
    return (folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/')).toStdString();
}

}  // namespace

class FolderDialogTest : public QObject {
    Q_OBJECT
private slots:
    void fieldAlwaysEndsWithSlash();
    void remembersBetweenUses();
    void listsFillTheField();
    void foldersThatAreNotThere();
    void rootOfAFolderIsTheLongestRoot();
};

void FolderDialogTest::fieldAlwaysEndsWithSlash() {
    FrmPath dialog(nullptr);
    QLineEdit& field = Field(dialog);
    field.setText(QStringLiteral("/tmp/abc"));
    QCOMPARE(field.text(), QStringLiteral("/tmp/abc/"));

    // Deleting the final '/' brings it back at once, the cursor where the user left it.
    field.setCursorPosition(field.text().size());
    QTest::keyClick(&field, Qt::Key_Backspace);
    QCOMPARE(field.text(), QStringLiteral("/tmp/abc/"));
    field.setCursorPosition(8);
    QTest::keyClicks(&field, QStringLiteral("de"));
    QCOMPARE(field.text(), QStringLiteral("/tmp/abcde/"));
    QCOMPARE(field.cursorPosition(), 10);

    field.clear();
    QCOMPARE(field.text(), QStringLiteral("/"));
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    QCOMPARE(field.text(), QStringLiteral("/"));

    // A typed path that doesn't exist comes back as it is, with its '/', on OK.
    const auto got = Ask(dialog, "", [](FrmPath& d) {
        Field(d).clear();
        QTest::keyClicks(&Field(d), QStringLiteral("/no/such/place"));
    });
    QVERIFY(dialog.Accepted);
    QCOMPARE(got.value(), std::string("/no/such/place/"));
}

void FolderDialogTest::remembersBetweenUses() {
    test::TempDir dir;
    const QString chosen = QString::fromStdString(dir.Path()).chopped(1);
    FrmPath dialog(nullptr);
    QVERIFY(!dialog.Accepted);

    // The first use opens on the process's current folder, on its drive; Cancel gives
    // nothing.
    std::string seen;
    auto got = Ask(dialog, "", [&](FrmPath& d) { seen = d.PathText(); }, "cmdCancel");
    QVERIFY(!got);
    QVERIFY(!dialog.Accepted);
    QCOMPARE(seen, WithSlash(QDir::currentPath()));

    // Esc and the close box count as Cancel as well.
    QVERIFY(!Ask(dialog, "", {}, "Esc"));
    QVERIFY(!Ask(dialog, "", {}, "close"));

    // After Cancel the next use goes by the drive again; OK gives the field's text.
    got = Ask(dialog, "", [&](FrmPath& d) { Field(d).setText(chosen); });
    QVERIFY(dialog.Accepted);
    QCOMPARE(got.value(), dir.Path());

    // The next use, with the folder handed back in, stands on it: the field with its '/',
    // both lists on it.
    QString listPath, drive;
    got = Ask(dialog, *got, [&](FrmPath& d) {
        seen = d.PathText();
        listPath = Folders(d).Path();
        drive = Drives(d).SelectedRoot();
    });
    QCOMPARE(seen, dir.Path());
    QCOMPARE(listPath, chosen);
    QCOMPARE(drive, DriveList::RootOf(DriveList::SystemRoots(), chosen));
    QCOMPARE(got.value(), dir.Path());

    // Blanks around a handed-in folder go, a final '/' is taken off and put back.
    got = Ask(dialog, "  " + dir.Path() + "  ", [&](FrmPath& d) { seen = d.PathText(); }, "cmdCancel");
    QCOMPARE(seen, dir.Path());
    QVERIFY(!got);
    // A handed-in "/" stands for the root.
    got = Ask(dialog, "/", [&](FrmPath& d) { listPath = Folders(d).Path(); });
    QCOMPARE(got.value(), std::string("/"));
    QCOMPARE(listPath, QStringLiteral("/"));
}

void FolderDialogTest::listsFillTheField() {
    test::TempDir dir;
    QVERIFY(QDir().mkpath(QString::fromStdString(dir / "alpha/inner")));
    QVERIFY(QDir().mkpath(QString::fromStdString(dir / "beta")));
    const QString top = QString::fromStdString(dir.Path()).chopped(1);
    FrmPath dialog(nullptr);

    auto got = Ask(dialog, dir.Path(), [&](FrmPath& d) {
        FolderList& list = Folders(d);
        const QStringList entries = list.Entries();
        // The folders above, the folder itself, then its sub-folders.
        QCOMPARE(entries.front(), QStringLiteral("/"));
        QCOMPARE(entries.mid(entries.size() - 3),
                 QStringList({top, top + QStringLiteral("/alpha"), top + QStringLiteral("/beta")}));
        QCOMPARE(list.SelectedPath(), top);

        // A single click fills the field and leaves the list where it is.
        QTreeWidgetItem* beta = list.findItems(QStringLiteral("beta"), Qt::MatchExactly | Qt::MatchRecursive).front();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(beta).center());
        QCOMPARE(d.PathText(), dir / "beta/");
        QCOMPARE(list.Path(), top);
    });
    QCOMPARE(got.value(), dir / "beta/");

    // A double click opens the folder; the field follows.
    got = Ask(dialog, dir.Path(), [&](FrmPath& d) {
        FolderList& list = Folders(d);
        QTreeWidgetItem* alpha = list.findItems(QStringLiteral("alpha"), Qt::MatchExactly | Qt::MatchRecursive).front();
        emit list.itemDoubleClicked(alpha, 0);  // synthetic double clicks right after a click are unreliable
        QTRY_COMPARE(list.Path(), top + QStringLiteral("/alpha"));
        QCOMPARE(list.Entries().back(), top + QStringLiteral("/alpha/inner"));
        QCOMPARE(d.PathText(), dir / "alpha/");
        // A typed path moves neither list.
        Field(d).setText(QStringLiteral("/somewhere/else"));
        QCOMPARE(list.Path(), top + QStringLiteral("/alpha"));
    });
    QCOMPARE(got.value(), std::string("/somewhere/else/"));

    // Choosing a drive brings the folder list to it (the current folder, when it lies on
    // that drive) and the field with it.
    DriveList& drives = Drives(dialog);
    QVERIFY(drives.count() >= 1);
    const int last = drives.count() - 1;
    const QString root = drives.itemText(last);
    drives.setCurrentIndex(last);
    emit drives.activated(last);
    const QString cwd = QDir::currentPath();
    const QString expected = DriveList::RootOf(DriveList::SystemRoots(), cwd) == root ? cwd : root;
    QCOMPARE(Folders(dialog).Path(), expected);
    QCOMPARE(dialog.PathText(), WithSlash(expected));
}

void FolderDialogTest::foldersThatAreNotThere() {
    test::TempDir dir;
    const QString top = QString::fromStdString(dir.Path()).chopped(1);
    FrmPath dialog(nullptr);
    // A handed-in folder that has vanished: the field keeps it, the list stands on the
    // nearest folder above it that still exists, and OK gives it back unchanged.
    QString listPath;
    std::string seen;
    const auto got = Ask(dialog, dir / "gone/deeper/", [&](FrmPath& d) {
        seen = d.PathText();
        listPath = Folders(d).Path();
    });
    QCOMPARE(seen, dir / "gone/deeper/");
    QCOMPARE(listPath, top);
    QCOMPARE(got.value(), dir / "gone/deeper/");

    // A folder the list can't read shows no sub-folders, and nothing breaks.
    const QString locked = top + QStringLiteral("/locked");
    QVERIFY(QDir().mkpath(locked + QStringLiteral("/hidden")));
    QFile::setPermissions(locked, QFileDevice::WriteOwner);
    FolderList list(nullptr);
    list.SetPath(locked);
    QCOMPARE(list.Path(), locked);
    if (!QDir(locked).isReadable()) QCOMPARE(list.Entries().back(), locked);
    QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

void FolderDialogTest::rootOfAFolderIsTheLongestRoot() {
    const QStringList roots{"/", "/home/ann", "/media/ann/usb", "/media/ann/usb2"};
    QCOMPARE(DriveList::RootOf(roots, "/home/ann/work"), QStringLiteral("/home/ann"));
    QCOMPARE(DriveList::RootOf(roots, "/home/ann"), QStringLiteral("/home/ann"));
    QCOMPARE(DriveList::RootOf(roots, "/home/anne/work"), QStringLiteral("/"));  // whole names only
    QCOMPARE(DriveList::RootOf(roots, "/media/ann/usb2/pics"), QStringLiteral("/media/ann/usb2"));
    QCOMPARE(DriveList::RootOf(roots, "/etc"), QStringLiteral("/"));
    QCOMPARE(DriveList::RootOf(roots, "relative/path"), QStringLiteral("/"));
    QCOMPARE(DriveList::RootOf({}, "/etc"), QString());
    const QStringList system = DriveList::SystemRoots();
    QCOMPARE(system.front(), QStringLiteral("/"));
    QVERIFY(system.contains(QDir::homePath()) || QDir::homePath() == QStringLiteral("/"));
}

QTEST_MAIN(FolderDialogTest)
#include "FolderDialogTest.moc"
