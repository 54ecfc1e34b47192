// The main window's wiring, driven as a user would: settings, buttons, list and the preview's
// boxes reach the session's commands (tested in SessionTest.cpp); every move shows the row
// every edit then lands on; one Build SFF runs through the real dialog and console.
#include <algorithm>

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QToolButton>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "batch/BatchInterpreter.h"
#include "config/Settings.h"
#include "config/UserState.h"
#include "config/ui/FrmPath.h"
#include "mainwin/ui/FrmMain.h"
#include "platform/BatchConsole.h"
#include "support/ScriptedDialogs.h"
#include "support/TempDir.h"
#include "support/TestData.h"

using namespace tarvolin;
using platform::Answer;

namespace {

// A started main window over scripted dialogs, with its settings file (none when empty).
struct Fixture {
    test::TempDir Dir;
    Settings Setup;
    test::ScriptedServices Dialogs;
    std::unique_ptr<FrmMain> Main;
    Session& Work;

    explicit Fixture(const std::string& ini = {}) : Work(Start(ini)) {}
    Session& Start(const std::string& ini) {
        // The user's state file lives here, not in the home of whoever runs the tests.
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(Dir / "config"));
        if (!ini.empty()) test::WriteText(Dir / "t.ini", ini);
        Setup = LoadSettings(Dir / "t.ini");
        Main = FrmMain::Start(Setup, Dialogs.Services);
        return Main->Work();
    }
    // A control of the main window or of the preview screen.
    template <class W = QWidget>
    W& Control(const char* name) {
        W* w = Main->findChild<W*>(QString::fromLatin1(name));
        return w ? *w : *Main->PreviewWindow().findChild<W*>(QString::fromLatin1(name));
    }
    void Click(const char* name) { QTest::mouseClick(&Control(name), Qt::LeftButton); }
    // Opens an SFF of three sprites, in key order 9000,0 (the palette), 1,0 and 1,1.
    void OpenSample(int more = 0) {
        std::vector<SffSprite> sprites = {test::MakeSprite(9000, 0, 0, true), test::MakeSprite(1, 0, 1, false, 10, 20, 6, 5),
                                          test::MakeSprite(1, 1, 1, false, 3, 4, 5, 3)};
        for (int i = 0; i < more; ++i) sprites.push_back(test::MakeSprite(uint16_t(2 + i), 0, 1, false));
        test::WriteFile(Dir / "in.sff", EncodeSff(kSharedPaletteMode, sprites));
        Dialogs.Files.Choose(Dir / "in.sff");
        Click("cmdSffOpen");
    }
    // Every row's cells but those of the current row.
    std::string OtherRows() {
        std::string text;
        for (int place = 1; place <= Work.Table.RowCount(); ++place)
            if (place != Work.Table.Selected())
                for (const std::string& cell : Work.Table.Row(place).Cells) text += cell + ",";
        return text;
    }
    QString Shown() {  // the two labels, the rows of the list, the selected row and the one shown
        return QString("%1|%2|%3 rows, selected %4, shown %5")
            .arg(Control<QLabel>("lblSffName").text(), Control<QLabel>("lblImage").text())
            .arg(Control<QTableView>("lstFiles").model()->rowCount()).arg(Work.Table.Selected()).arg(Work.SelectedRow);
    }
};

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void settingsButtonsListAndWindows();
    void everyMoveOfTheSelectionThenEveryEdit();
    void unsavedEditsFindDropAndRemembered();
    void buildSffThroughTheWindow();
};

void MainWindowTest::settingsButtonsListAndWindows() {
    Fixture f("[CAPTION]\r\nMAIN=My Sprites\r\nMAIN_LST_2=Grp\r\n"
              "[MESSAGE]\r\nMSG_004_001=Really quit?\r\n");
    auto& box = f.Dialogs.Box;
    auto& files = f.Dialogs.Files;
    QTableView& list = f.Control<QTableView>("lstFiles");
    QCOMPARE(f.Main->windowTitle() + "|" + list.model()->headerData(1, Qt::Horizontal).toString(), "My Sprites|Grp");

    f.OpenSample();
    QSignalSpy changed(list.model(), &QAbstractItemModel::dataChanged);
    f.Work.Table.SetCell(2, Column::PalType, "7");  // an edit shows in the list at once, its Palette too
    QCOMPARE(list.model()->data(list.model()->index(1, 3)).toString(), QStringLiteral("7"));
    QVERIFY(std::any_of(changed.begin(), changed.end(), [](const QList<QVariant>& signal) {
        return signal[0].toModelIndex().column() == 10 && signal[0].toModelIndex().row() == 1;
    }));
    // Every column is on screen, with its title; the Palette column names the palette.
    for (int c = 0; c < list.model()->columnCount(); ++c) QVERIFY(!list.isColumnHidden(c) && list.columnWidth(c) > 20);
    QCOMPARE(list.model()->data(list.model()->index(1, 10)).toString() + "|" +
                 list.model()->headerData(10, Qt::Horizontal).toString(),
             "shared|Palette");
    // The window grows, and the list with it.
    const int listWidth = list.width();
    f.Main->resize(f.Main->width() + 200, f.Main->height() + 100);
    QApplication::processEvents();
    QCOMPARE(list.width(), listWidth + 200);

    box.Answer(Answer::Yes);
    f.Work.Table.SetCell(3, Column::PcxPath, "/gone/");  // never shown: no refusal of its picture
    f.Click("cmdDel");
    QCOMPARE(f.Shown(), "in.sff|2|2 rows, selected 1, shown 1");
    QCOMPARE(box.Shown.back(), f.Main->Ini().MsgConfirmDelete);
    files.Cancel();
    f.Click("cmdText");
    QTimer::singleShot(0, [&f] { f.Main->PathDialog().reject(); });
    f.Click("cmdPCX");  // the real working-folder dialog, cancelled
    bool asked = false;   // the table's menu asks for a folder the same way
    QTimer::singleShot(0, [&] {
        asked = f.Main->PathDialog().isVisible();
        f.Main->PathDialog().reject();
    });
    f.Main->findChild<QAction*>(QStringLiteral("actExportPng"))->trigger();
    QVERIFY(asked);
    box.Answer(Answer::Yes);
    f.Click("cmdInit");
    QVERIFY(f.Shown().startsWith("||0 rows"));
    QCOMPARE(f.Control<QLineEdit>("txtGroup").text(), QStringLiteral("0"));
    QCOMPARE(QString::number(files.Shown.size()) + " " + QString::number(box.Shown.size()), "2 2");

    // Show Screen: the preview beside the main window; only the box hides it again.
    QWidget& preview = f.Main->PreviewWindow();
    f.Main->move(200, 10);
    f.Click("chkScreen");
    QVERIFY(preview.isVisible() && preview.screen()->availableGeometry().contains(preview.frameGeometry()));
    QVERIFY(!preview.close());
    f.Click("chkScreen");
    QVERIFY(!preview.isVisible());
    f.Click("chkScreen");

    QCOMPARE(f.Control<QPushButton>("cmdSffOpen").toolTip() + f.Control<QPushButton>("cmdDel").toolTip(),
             QKeySequence(Qt::CTRL | Qt::Key_O).toString(QKeySequence::NativeText) + QKeySequence(Qt::Key_Delete).toString(QKeySequence::NativeText));

    QString seen;  // the version dialog, modal; Enter closes it
    QTimer::singleShot(0, [&seen] {
        QWidget* about = QApplication::activeModalWidget();
        seen = about->findChild<QLabel*>(QStringLiteral("lblVer"))->text();
        QTest::keyClick(about, Qt::Key_Return);
    });
    f.Click("cmdAbout");
    QCOMPARE(seen, QStringLiteral("Version 0.22β"));

    // Without unsaved edits Exit asks in the settings' text; the close box ends without asking.
    box.Answer(Answer::No);
    f.Click("cmdEnd");
    QCOMPARE(box.Shown.back(), std::string("Really quit?"));
    QVERIFY(f.Main->isVisible());
    QVERIFY(f.Main->close());
    QVERIFY(!preview.isVisible());
    QCOMPARE(box.Shown.size(), size_t{3});
}

// Whichever way the current row moves, the preview shows it, and every edit changes it alone.
void MainWindowTest::everyMoveOfTheSelectionThenEveryEdit() {
    Fixture f;
    test::WriteFile(f.Dir / "new.pcx", test::MakePcx(7, 5, 9));
    test::WriteFile(f.Dir / "other.pcx", test::MakePcx(3, 5, 9));
    f.OpenSample(12);
    f.Click("chkScreen");
    QTableView& list = f.Control<QTableView>("lstFiles");
    QWidget& preview = f.Main->PreviewWindow();
    const auto key = [&list](Qt::Key k) { return [&list, k] { QTest::keyClick(&list, k); }; };
    const auto clickRow = [&list](int row) {
        return [&list, row] {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(row, 1)).center());
        };
    };
    struct Way { const char* Name; std::function<void()> Move; };
    const Way ways[] = {
        {"click", clickRow(4)},
        {"down", key(Qt::Key_Down)},
        {"up", key(Qt::Key_Up)},
        {"end", key(Qt::Key_End)},
        {"home", key(Qt::Key_Home)},
        {"page down", key(Qt::Key_PageDown)},
        {"page up", key(Qt::Key_PageUp)},
        {"delete", [&f] { f.Dialogs.Box.Answer(Answer::Yes); f.Click("cmdDel"); }},
        {"find", [&f] {
             auto& find = f.Control<QLineEdit>("txtFind");
             find.setText(QString::fromStdString(f.Work.Table.Cell(3, Column::GroupNo)));
             QTest::keyClick(&find, Qt::Key_Return);
         }},
        {"add", [&f] { f.Dialogs.Files.Choose(f.Dir / "new.pcx"); f.Click("cmdAdd"); }},
        {"copy", [&f] { f.Click("cmdCopy"); }},
        {"undo", [&f] { QTest::keyClick(&f.Control("txtItem"), Qt::Key_Z, Qt::ControlModifier); }},
    };
    struct Edit { const char* Name; std::function<void()> Do; };
    const auto typeInto = [&f, &preview, &list](const char* box) {
        return [&f, &preview, &list, box] {
            QApplication::setActiveWindow(&preview);
            f.Control(box).setFocus();
            QTest::keyClicks(&f.Control(box), "4");
            QApplication::setActiveWindow(f.Main.get());
            list.setFocus();  // the box is left
        };
    };
    const Edit edits[] = {
        {"group", typeInto("txtGroup")},
        {"item", typeInto("txtItem")},
        {"axis", [&f] { f.Click("cmdAxisLeft"); }},
        {"share pallet", [&f] { f.Click("chkPallet"); }},
        {"change pcx", [&f] {
             const bool isNew = f.Work.Table.Cell(f.Work.Table.Selected(), Column::PcxName) == "new.pcx";
             f.Dialogs.Files.Choose(f.Dir / (isNew ? "other.pcx" : "new.pcx"));
             f.Click("cmdChangePCX");
         }},
    };
    for (const Way& way : ways)
        for (const Edit& edit : edits) {
            const QString what = QString("%1, then %2").arg(way.Name, edit.Name);
            way.Move();
            const int current = f.Work.Table.Selected();
            QVERIFY2(current > 0 && f.Work.SelectedRow == current, qPrintable(what));
            QCOMPARE(f.Control<QLineEdit>("txtGroup").text().toStdString(), f.Work.Table.Cell(current, Column::GroupNo));
            const std::string others = f.OtherRows();
            const SpriteRow before = f.Work.Table.Row(current);
            edit.Do();
            QVERIFY2(f.Work.Table.Selected() == current && f.Work.Table.Row(current).Cells != before.Cells, qPrintable(what));
            QVERIFY2(f.OtherRows() == others, qPrintable(what));
        }
    for (const std::string& shown : f.Dialogs.Box.Shown) QCOMPARE(QString::fromStdString(shown), QString::fromStdString(f.Main->Ini().MsgConfirmDelete));
    QCOMPARE(f.Dialogs.Box.Shown.size(), size_t{5});  // the five Delete questions, no refusal
}

// Unsaved edits mark the title and make the close box ask; Find and F3; an SFF dropped on
// the window or named among the recent files opens; sizes, places and files are kept.
void MainWindowTest::unsavedEditsFindDropAndRemembered() {
    auto f = std::make_unique<Fixture>();
    test::TempDir keep;
    f->OpenSample(3);
    QCOMPARE(f->Main->windowTitle(), QStringLiteral("Tarvolin"));
    f->Work.EditCell(2, Column::GroupNo, "2");
    QCOMPARE(f->Main->windowTitle(), QStringLiteral("*Tarvolin"));
    f->Dialogs.Box.Answer(Answer::Cancel);
    QVERIFY(!f->Main->close());
    QCOMPARE(f->Dialogs.Box.Shown.back(), f->Main->Ini().MsgUnsavedEdits + "\r\n" + f->Main->Ini().MsgBuildFirst);
    QApplication::setActiveWindow(f->Main.get());
    QTest::keyClick(&f->Control("txtFind"), Qt::Key_Z, Qt::ControlModifier);  // undo, from any text box
    QCOMPARE(f->Main->windowTitle(), QStringLiteral("Tarvolin"));

    // Find: Enter from the top, F3 on from the current row.
    QTest::keyClick(f->Main.get(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(f->Control("txtFind").hasFocus());
    QTest::keyClicks(&f->Control("txtFind"), "2");
    QTest::keyClick(&f->Control("txtFind"), Qt::Key_Return);
    QCOMPARE(f->Work.SelectedRow, 4);
    f->Work.EditCell(6, Column::GroupNo, "2");
    f->Click("chkScreen");  // F3 and Ctrl+F work from the preview screen too
    QApplication::setActiveWindow(&f->Main->PreviewWindow());
    QTest::keyClick(&f->Main->PreviewWindow(), Qt::Key_F3);
    QCOMPARE(f->Work.SelectedRow, 6);
    QTest::keyClick(&f->Main->PreviewWindow(), Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY(f->Control("txtFind").hasFocus());
    f->Click("chkScreen");

    // A dropped SFF opens after Open SFF's question (unsaved edits: here No).
    test::WriteFile(f->Dir / "other.sff", test::ReadFile(f->Dir / "in.sff"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(f->Dir / "other.sff"))});
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(f->Main.get(), &enter);
    QVERIFY(enter.isAccepted());
    f->Dialogs.Box.Answer(Answer::Yes);
    QApplication::sendEvent(f->Main.get(), &drop);
    QTRY_COMPARE(f->Control<QLabel>("lblSffName").text(), QStringLiteral("other.sff"));

    // Closed, the state file keeps sizes, places and files (newest first) for the next start.
    f->Main->setGeometry(40, 30, 700, 420);
    QVERIFY(f->Main->close());
    const std::string config = f->Dir / "config/tarvolin/";
    const UserState kept = LoadUserState(config);
    QCOMPARE(kept.RecentFiles, (std::vector<std::string>{f->Dir / "other.sff", f->Dir / "in.sff"}));
    QCOMPARE(kept.Main->Width * 1000 + kept.Main->Height, 700 * 1000 + 420);
    Fixture again;
    QVERIFY(SaveUserState(again.Dir / "config/tarvolin/", kept).ok());
    again.Main.reset();
    again.Main = FrmMain::Start(again.Setup, again.Dialogs.Services);
    QCOMPARE(again.Main->size(), QSize(700, 420));
    QMenu* recent = again.Main->findChild<QToolButton*>(QStringLiteral("cmdRecent"))->menu();
    emit recent->aboutToShow();
    QCOMPARE(recent->actions().size(), 2);
    recent->actions().back()->trigger();
    QCOMPARE(again.Main->findChild<QLabel*>(QStringLiteral("lblSffName"))->text(), QStringLiteral("in.sff"));

    // A window remembered larger than the screen comes back on it, its top edge included.
    UserState large;
    large.Main = WindowPlace{0, 0, 20000, 20000};
    QVERIFY(SaveUserState(again.Dir / "config/tarvolin/", large).ok());
    again.Main = FrmMain::Start(again.Setup, again.Dialogs.Services);
    QVERIFY(again.Main->screen()->availableGeometry().contains(again.Main->geometry()));
}

// sprmaker.exe builds in the folder chosen in the real dialog, run by the real console.
void MainWindowTest::buildSffThroughTheWindow() {
    Fixture f;
    f.OpenSample();
    std::string console;
    QTimer keys;
    QObject::connect(&keys, &QTimer::timeout, [&console] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* c = qobject_cast<platform::BatchConsole*>(w); c && c->Text().contains(QString::fromStdString(PressAnyKeyText()))) {
                console = c->Text().toStdString();
                QTest::keyClick(c, Qt::Key_Space);
            }
    });
    keys.start(20);
    std::filesystem::create_directory(f.Dir / "work");
    f.Dialogs.Box.Answer(Answer::Ok);  // the folder request
    QTimer::singleShot(0, &f.Main->PathDialog(), [&f] {
        f.Main->PathDialog().findChild<QLineEdit*>(QStringLiteral("txtPath"))->setText(QString::fromStdString(f.Dir / "work/"));
        QTest::mouseClick(f.Main->PathDialog().findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    f.Click("cmdBuildSFF");
    QVERIFY2(console.find("SFF 作成処理終了.\n") != std::string::npos, console.c_str());
    QVERIFY2(console.find("sprmaker.exe: exit status 0\n") != std::string::npos, console.c_str());
    QCOMPARE(f.Dialogs.Box.Shown.size(), size_t{2});  // no failure, no refusal: the word of the build
    QCOMPARE(f.Dialogs.Box.Shown.back(), f.Main->Ini().MsgBuildDone + "\r\nin.sff: 3 sprites written");
    QCOMPARE(f.Main->cursor().shape(), Qt::ArrowCursor);
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
