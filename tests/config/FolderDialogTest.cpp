// The working-folder dialog: its field, lists and buttons, folders that aren't there.
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

// Asks with `workFolder`, runs `step` once the dialog shows, leaves by a button, "Esc" or "close".
std::optional<std::string> Ask(FrmPath& dialog, const std::string& workFolder, std::function<void(FrmPath&)> step = {},
                               const char* leave = "cmdOK") {
    QTimer::singleShot(0, &dialog, [&dialog, step, leave] {
        if (step) step(dialog);
        if (std::string_view(leave) == "Esc") QTest::keyClick(&dialog, Qt::Key_Escape);
        else if (std::string_view(leave) == "close") dialog.close();
        else QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(leave)), Qt::LeftButton);
    });
    return AskWorkFolder(dialog, workFolder);
}

// "field|folder list" at opening with `workFolder` handed in, then "|" and what OK gave.
QString Opening(FrmPath& dialog, const std::string& workFolder) {
    QString seen;
    const auto got = Ask(dialog, workFolder, [&](FrmPath& d) { seen = Field(d).text() + "|" + Folders(d).Path(); });
    return seen + "|" + QString::fromStdString(got.value_or("(nothing)"));
}

}  // namespace

class FolderDialogTest : public QObject {
    Q_OBJECT
private slots:
    void fieldListsAndButtons();
    void rootOfAFolderIsTheLongestRoot();
};

void FolderDialogTest::fieldListsAndButtons() {
    test::TempDir dir;
    for (const char* sub : {"alpha/inner", ".hidden", "beta"}) QVERIFY(QDir().mkpath(QString::fromStdString(dir / sub)));
    const QString top = QString::fromStdString(dir.Path()).chopped(1), slashed = top + "/";
    FrmPath dialog(nullptr);
    QLineEdit& field = Field(dialog);
    // The field always ends with '/': deleted, it comes back at once, before the cursor.
    field.setText(QStringLiteral("/tmp/abc"));
    field.setCursorPosition(field.text().size());
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keyClicks(&field, QStringLiteral("d"));
    QCOMPARE(field.text(), QStringLiteral("/tmp/abcd/"));
    field.clear();
    QCOMPARE(field.text(), QStringLiteral("/"));

    // With none handed in: the current folder. Cancel, Esc and the close box give nothing,
    // also after an OK.
    QString seen;
    QVERIFY(!Ask(dialog, "", [&](FrmPath& d) { seen = Field(d).text(); }, "cmdCancel"));
    QCOMPARE(seen, QDir::currentPath() + (QDir::currentPath() == "/" ? "" : "/"));
    for (const char* leave : {"Esc", "close"}) {
        QVERIFY(Ask(dialog, "/"));
        QVERIFY(!Ask(dialog, "", {}, leave));
    }
    // A folder handed in, blanks around it: the field with its '/', both lists on it. One
    // that has vanished: the field keeps it, the list stands on the nearest folder above.
    QCOMPARE(Opening(dialog, "  " + dir.Path() + "  "), slashed + "|" + top + "|" + slashed);
    QCOMPARE(dialog.findChild<DriveList*>()->SelectedRoot(), DriveList::RootOf(DriveList::SystemRoots(), top));
    QCOMPARE(Opening(dialog, "/"), QStringLiteral("/|/|/"));
    QCOMPARE(Opening(dialog, dir / "gone/deeper/"), slashed + "gone/deeper/|" + top + "|" + slashed + "gone/deeper/");

    // The list: the folders above, the folder, its sub-folders but the hidden ones. A click
    // fills the field and leaves the list; a double click opens the folder; a typed path
    // moves neither and comes back as it is, with its '/'.
    const auto got = Ask(dialog, dir.Path(), [&](FrmPath& d) {
        FolderList& list = Folders(d);
        const auto item = [&list](const char* name) {
            return list.findItems(QString::fromLatin1(name), Qt::MatchExactly | Qt::MatchRecursive).front();
        };
        QCOMPARE(list.Entries().front(), QStringLiteral("/"));
        QCOMPARE(list.Entries().mid(list.Entries().size() - 3), QStringList({top, top + "/alpha", top + "/beta"}));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item("beta")).center());
        QCOMPARE(list.Path() + "|" + Field(d).text(), top + "|" + top + "/beta/");
        emit list.itemDoubleClicked(item("alpha"), 0);  // synthetic double clicks right after a click are unreliable
        QTRY_COMPARE(list.Path(), top + "/alpha");
        QCOMPARE(list.Entries().back() + "|" + Field(d).text(), top + "/alpha/inner|" + top + "/alpha/");
        Field(d).setText(QStringLiteral("/no/such/place"));
        QCOMPARE(list.Path(), top + "/alpha");
    });
    QCOMPARE(got.value(), std::string("/no/such/place/"));

    // A drive chosen: the list goes to it (to the current folder, when it lies on that
    // drive), the field with it.
    auto& drives = *dialog.findChild<DriveList*>();
    const int last = drives.count() - 1;
    drives.setCurrentIndex(last);
    emit drives.activated(last);
    const QString cwd = QDir::currentPath(), root = drives.itemText(last);
    const QString expected = DriveList::RootOf(drives.Roots(), cwd) == root ? cwd : root;
    QCOMPARE(Folders(dialog).Path() + "|" + field.text(), expected + "|" + expected + (expected == "/" ? "" : "/"));
}

void FolderDialogTest::rootOfAFolderIsTheLongestRoot() {
    const QStringList roots{"/", "/home/ann", "/media/ann/usb", "/media/ann/usb2"};
    for (const auto& [path, root] : {std::pair{"/home/ann", "/home/ann"}, {"/home/anne/work", "/"},
                                     {"/media/ann/usb2/pics", "/media/ann/usb2"}, {"relative/path", "/"}})
        QCOMPARE(DriveList::RootOf(roots, path), QString::fromLatin1(root));
    QCOMPARE(DriveList::SystemRoots().front(), QStringLiteral("/"));
}

QTEST_MAIN(FolderDialogTest)
#include "FolderDialogTest.moc"
