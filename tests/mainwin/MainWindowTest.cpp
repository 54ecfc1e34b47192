// The main window's wiring, driven as a user would: the settings reach the windows, the
// buttons, the list and the preview's boxes reach the session's commands, and one Build SFF
// runs through the real working-folder dialog and batch console. What the commands
// themselves do is tested over the session (SessionTest.cpp).
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "batch/BatchInterpreter.h"
#include "config/Settings.h"
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
        if (!ini.empty()) test::WriteFile(Dir / "t.ini", std::vector<uint8_t>(ini.begin(), ini.end()));
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
    void OpenSample() {
        test::WriteFile(Dir / "in.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(9000, 0, 0, true),
                                                                       test::MakeSprite(1, 0, 1, false, 10, 20, 6, 5),
                                                                       test::MakeSprite(1, 1, 1, false, 3, 4, 5, 3)}));
        Dialogs.Files.Choose(Dir / "in.sff");
        Click("cmdSffOpen");
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
    void buildSffThroughTheWindow();
};

void MainWindowTest::settingsButtonsListAndWindows() {
    Fixture f("[CAPTION]\r\nMAIN=My Sprites\r\nMAIN_LST_2=Grp\r\n"
              "[MESSAGE]\r\nMSG_004_001=Really quit?\r\n");
    auto& box = f.Dialogs.Box;
    auto& files = f.Dialogs.Files;
    QTableView& list = f.Control<QTableView>("lstFiles");
    QCOMPARE(f.Main->windowTitle() + "|" + list.model()->headerData(1, Qt::Horizontal).toString(), "My Sprites|Grp");

    // A click shows the row; an arrow key moves at once but shows on release; Home moves only.
    f.OpenSample();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(2, 1)).center());
    QCOMPARE(f.Shown(), "in.sff|3|3 rows, selected 3, shown 3");
    QTest::keyPress(&list, Qt::Key_Up);
    QCOMPARE(f.Shown(), "in.sff|3|3 rows, selected 2, shown 3");
    QTest::keyRelease(&list, Qt::Key_Up);
    QTest::keyClick(&list, Qt::Key_Home);
    QCOMPARE(f.Shown(), "in.sff|3|3 rows, selected 1, shown 2");
    QCOMPARE(f.Control<QLineEdit>("txtGroup").text(), QStringLiteral("1"));
    f.Work.Table.SetCell(2, Column::PalType, "7");  // an edit shows in the list at once
    QCOMPARE(list.model()->data(list.model()->index(1, 3)).toString(), QStringLiteral("7"));

    box.Answer(Answer::Yes);
    f.Click("cmdDel");
    QCOMPARE(f.Shown(), "in.sff|2|2 rows, selected 1, shown 1");
    files.Cancel();
    f.Click("cmdChangePCX");  // the preview's button opens the main window's file dialog
    files.Cancel();
    f.Click("cmdText");
    QTimer::singleShot(0, [&f] { f.Main->PathDialog().reject(); });
    f.Click("cmdPCX");  // the real working-folder dialog, cancelled
    box.Answer(Answer::Yes);
    f.Click("cmdInit");
    QVERIFY(f.Shown().startsWith("||0 rows"));
    QCOMPARE(f.Control<QLineEdit>("txtGroup").text(), QStringLiteral("0"));
    QCOMPARE(QString::number(files.Shown.size()) + " " + QString::number(box.Shown.size()), "3 2");

    // Show Screen: the preview beside the main window; only the box hides it again.
    QWidget& preview = f.Main->PreviewWindow();
    f.Main->move(200, 10);
    f.Click("chkScreen");
    const QRect outer = f.Main->frameGeometry();
    QCOMPARE(preview.frameGeometry().topLeft(), QPoint(outer.left() + outer.width(), outer.top()));
    QVERIFY(!preview.close());
    f.Click("chkScreen");
    QVERIFY(!preview.isVisible());
    f.Click("chkScreen");

    QString seen;  // the version dialog, modal; Enter closes it
    QTimer::singleShot(0, [&seen] {
        QWidget* about = QApplication::activeModalWidget();
        seen = about->findChild<QLabel*>(QStringLiteral("lblVer"))->text();
        QTest::keyClick(about, Qt::Key_Return);
    });
    f.Click("cmdAbout");
    QCOMPARE(seen, QStringLiteral("Version 0.22β"));

    // Exit asks with the settings' text; the close box ends without a question.
    box.Answer(Answer::No);
    f.Click("cmdEnd");
    QCOMPARE(box.Shown.back(), std::string("Really quit?"));
    QVERIFY(f.Main->isVisible());
    QVERIFY(f.Main->close());
    QVERIFY(!preview.isVisible());
    QCOMPARE(box.Shown.size(), size_t{3});
}

// Edits on the preview reach the table that sprmaker.exe builds from in the chosen folder,
// while a timer of the program answers the console's pause.
void MainWindowTest::buildSffThroughTheWindow() {
    Fixture f;
    test::WriteFile(f.Dir / "new.pcx", test::MakePcx(7, 5, 9));
    f.OpenSample();
    f.Click("chkScreen");
    // A group typed and left for the main window (the other boxes: FrmPcxTest); then
    // another row gets a picture of its own.
    f.Work.Table.Select(2);
    f.Work.SelectList();
    QApplication::setActiveWindow(&f.Main->PreviewWindow());
    f.Control("txtGroup").setFocus();
    QTest::keyClicks(&f.Control("txtGroup"), "7");  // "1" becomes "17"
    QApplication::setActiveWindow(f.Main.get());
    f.Work.Table.Select(3);
    f.Work.SelectList();
    f.Dialogs.Files.Choose(f.Dir / "new.pcx");
    f.Click("cmdChangePCX");

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
    QCOMPARE(f.Dialogs.Box.Shown.size(), size_t{1});  // no failure, no refusal
    QCOMPARE(f.Main->cursor().shape(), Qt::ArrowCursor);
    // The edits stand in the table the build was made from (the new SFF against its table:
    // RoundTripTest); the builder's log is in the batch's folder.
    std::string edited;
    for (Column c : {Column::GroupNo, Column::ItemNo, Column::AxisX, Column::AxisY, Column::PalType, Column::PcxName})
        edited += f.Work.Table.Cell(2, c) + ",";
    QCOMPARE(edited + f.Work.Table.Cell(3, Column::PcxPath) + f.Work.Table.Cell(3, Column::PcxName),
             "17,0,10,20,1,in_00001_00000.pcx," + f.Dir / "new.pcx");
    const auto log = test::ReadFile(f.Dir / "work/CreateLog.txt");
    QVERIFY(std::string(log.begin(), log.end()).find("Wrote in.sff") != std::string::npos);
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
