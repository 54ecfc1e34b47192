// The working-folder dialog: its field rule, its lists, its buttons, folders that aren't
// there, and what it is handed between uses.
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "config/ui/DriveList.h"
#include "config/ui/FolderList.h"
#include "config/ui/FrmPath.h"
#include "support/TempDir.h"

using namespace tarvolin;

namespace {

QLineEdit& Field(FrmPath& d) { return *d.findChild<QLineEdit*>(QStringLiteral("txtPath")); }
FolderList& Folders(FrmPath& d) { return *d.findChild<FolderList*>(QStringLiteral("dirDir")); }

// Runs `step` on the dialog once it is on screen (modal), then leaves it by `leave`: a
// button's name, "Esc" or "close".
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

// Asks with `workFolder` handed in and leaves by OK: "field|folder list" at opening, then
// "|" and what came back.
QString Opening(FrmPath& dialog, const std::string& workFolder) {
    QString seen;
    const auto got = Ask(dialog, workFolder, [&](FrmPath& d) { seen = QString::fromStdString(d.PathText()) + "|" + Folders(d).Path(); });
    return seen + "|" + QString::fromStdString(got.value_or("(nothing)"));
}

}  // namespace

class FolderDialogTest : public QObject {
    Q_OBJECT
private slots:
    void fieldAlwaysEndsWithSlash();
    void opensOnTheFolderHandedIn();
    void listsFillTheField();
    void rootOfAFolderIsTheLongestRoot();
};

void FolderDialogTest::fieldAlwaysEndsWithSlash() {
    FrmPath dialog(nullptr);
    QLineEdit& field = Field(dialog);
    field.setText(QStringLiteral("/tmp/abc"));
    QCOMPARE(field.text(), QStringLiteral("/tmp/abc/"));
    // Deleting the final '/' brings it back at once; typing keeps the cursor where it was.
    field.setCursorPosition(field.text().size());
    QTest::keyClick(&field, Qt::Key_Backspace);
    QCOMPARE(field.text(), QStringLiteral("/tmp/abc/"));
    field.setCursorPosition(8);
    QTest::keyClicks(&field, QStringLiteral("de"));
    QCOMPARE(field.text(), QStringLiteral("/tmp/abcde/"));
    QCOMPARE(field.cursorPosition(), 10);
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

void FolderDialogTest::opensOnTheFolderHandedIn() {
    test::TempDir dir;
    const QString top = QString::fromStdString(dir.Path()).chopped(1);
    FrmPath dialog(nullptr);

    // With none handed in: the process's current folder. Cancel, Esc and the close box give nothing.
    std::string seen;
    QVERIFY(!Ask(dialog, "", [&](FrmPath& d) { seen = d.PathText(); }, "cmdCancel"));
    QVERIFY(!dialog.Accepted);
    QCOMPARE(QString::fromStdString(seen), QDir::currentPath() + (QDir::currentPath() == "/" ? "" : "/"));
    QVERIFY(!Ask(dialog, "", {}, "Esc"));
    QVERIFY(!Ask(dialog, "", {}, "close"));

    // A handed-in folder: the field with its '/', both lists on it; blanks around it go.
    const QString slashed = top + "/";
    QCOMPARE(Opening(dialog, "  " + dir.Path() + "  "), slashed + "|" + top + "|" + slashed);
    QVERIFY(dialog.Accepted);
    QCOMPARE(dialog.findChild<DriveList*>(QStringLiteral("drvDrive"))->SelectedRoot(),
             DriveList::RootOf(DriveList::SystemRoots(), top));
    QCOMPARE(Opening(dialog, "/"), QStringLiteral("/|/|/"));
    // One that has vanished: the field keeps it, the list stands on the nearest folder above.
    QCOMPARE(Opening(dialog, dir / "gone/deeper/"), slashed + "gone/deeper/|" + top + "|" + slashed + "gone/deeper/");

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

void FolderDialogTest::listsFillTheField() {
    test::TempDir dir;
    QVERIFY(QDir().mkpath(QString::fromStdString(dir / "alpha/inner")));
    QVERIFY(QDir().mkpath(QString::fromStdString(dir / "beta")));
    const QString top = QString::fromStdString(dir.Path()).chopped(1);
    FrmPath dialog(nullptr);
    const auto item = [](FolderList& list, const char* name) {
        return list.findItems(QString::fromLatin1(name), Qt::MatchExactly | Qt::MatchRecursive).front();
    };

    // The folders above, the folder itself, then its sub-folders. A single click fills the
    // field and leaves the list where it is.
    auto got = Ask(dialog, dir.Path(), [&](FrmPath& d) {
        FolderList& list = Folders(d);
        const QStringList entries = list.Entries();
        QCOMPARE(entries.front(), QStringLiteral("/"));
        QCOMPARE(entries.mid(entries.size() - 3), QStringList({top, top + "/alpha", top + "/beta"}));
        QCOMPARE(list.SelectedPath(), top);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item(list, "beta")).center());
        QCOMPARE(list.Path(), top);
    });
    QCOMPARE(got.value(), dir / "beta/");

    // A double click opens the folder and the field follows; a typed path moves neither list.
    got = Ask(dialog, dir.Path(), [&](FrmPath& d) {
        FolderList& list = Folders(d);
        emit list.itemDoubleClicked(item(list, "alpha"), 0);  // synthetic double clicks right after a click are unreliable
        QTRY_COMPARE(list.Path(), top + "/alpha");
        QCOMPARE(list.Entries().back(), top + "/alpha/inner");
        QCOMPARE(d.PathText(), dir / "alpha/");
        Field(d).setText(QStringLiteral("/somewhere/else"));
        QCOMPARE(list.Path(), top + "/alpha");
    });
    QCOMPARE(got.value(), std::string("/somewhere/else/"));

    // Choosing a drive brings the folder list to it (the current folder, when it lies on
    // that drive) and the field with it.
    DriveList& drives = *dialog.findChild<DriveList*>(QStringLiteral("drvDrive"));
    const int last = drives.count() - 1;
    QVERIFY(last >= 0);
    drives.setCurrentIndex(last);
    emit drives.activated(last);
    const QString cwd = QDir::currentPath();
    const QString expected = DriveList::RootOf(DriveList::SystemRoots(), cwd) == drives.itemText(last) ? cwd : drives.itemText(last);
    QCOMPARE(Folders(dialog).Path(), expected);
    QCOMPARE(QString::fromStdString(dialog.PathText()), expected + (expected.endsWith('/') ? "" : "/"));
}

void FolderDialogTest::rootOfAFolderIsTheLongestRoot() {
    const QStringList roots{"/", "/home/ann", "/media/ann/usb", "/media/ann/usb2"};
    const std::pair<const char*, const char*> cases[] = {
        {"/home/ann/work", "/home/ann"}, {"/home/ann", "/home/ann"},
        {"/home/anne/work", "/"},  // whole names only
        {"/media/ann/usb2/pics", "/media/ann/usb2"}, {"/etc", "/"}, {"relative/path", "/"}};
    for (const auto& [path, root] : cases) QCOMPARE(DriveList::RootOf(roots, path), QString::fromLatin1(root));
    QCOMPARE(DriveList::RootOf({}, "/etc"), QString());
    const QStringList system = DriveList::SystemRoots();
    QCOMPARE(system.front(), QStringLiteral("/"));
    QVERIFY(system.contains(QDir::homePath()) || QDir::homePath() == QStringLiteral("/"));
}

QTEST_MAIN(FolderDialogTest)
#include "FolderDialogTest.moc"
