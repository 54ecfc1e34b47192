// The main window's wiring, driven as a user would: the settings reach the windows, each
// button and the list reach the session's commands, the preview screen's box, the version
// dialog, the end of the program, and one Build SFF through the real working-folder
// dialog and batch console, with edits made on the preview reaching the new SFF. What the
// commands themselves do is tested over the session (tests/mainwin/SessionTest.cpp).
#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "MainWindowFixture.h"
#include "batch/BatchInterpreter.h"
#include "config/ui/FrmPath.h"
#include "platform/BatchConsole.h"
#include "sff/SffReader.h"
#include "support/TestData.h"

using namespace tarvolin;
using platform::Answer;
using test::MainWindowFixture;

namespace {

// Answers the next showing of the working-folder dialog: `folder` typed and OK.
void AnswerFolderDialog(FrmPath& dialog, const std::string& folder) {
    QTimer::singleShot(0, &dialog, [&dialog, folder] {
        dialog.findChild<QLineEdit*>(QStringLiteral("txtPath"))->setText(QString::fromStdString(folder));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
}

platform::BatchConsole* OpenConsole() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* c = qobject_cast<platform::BatchConsole*>(w); c && c->isVisible()) return c;
    return nullptr;
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void startUpTakesTheSettingsFile();
    void buttonsAndListRunTheCommands();
    void screenBoxVersionDialogAndEnd();
    void buildSffThroughTheWindow();
};

void MainWindowTest::startUpTakesTheSettingsFile() {
    // A caption under [MESSAGE] and a message under [CAPTION] are not found.
    MainWindowFixture f("[FONT]\r\nNAME=Arial\r\nSIZE=10\r\n"
                        "[CAPTION]\r\nMAIN=My Sprites\r\nMAIN_LST_2=Grp\r\nMSG_004_001=misplaced\r\n"
                        "[MESSAGE]\r\nMSG_004_001=Really quit?\r\nMAIN_SFFOPEN=misplaced\r\n");
    QCOMPARE(f.Main().windowTitle(), QStringLiteral("My Sprites"));
    QCOMPARE(f.Control<QPushButton>("cmdSffOpen").text(), QStringLiteral("&Open SFF"));
    QCOMPARE(f.Control<QTableView>("lstFiles").model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Grp"));
    QCOMPARE(f.Control("cmdDel").font().family(), QStringLiteral("Arial"));
    QCOMPARE(f.Control("cmdDel").font().pointSize(), 10);
    QCOMPARE(f.Main().PreviewWindow().windowTitle(), QStringLiteral("Tarvolin - Screen"));
    f.Dialogs().Box.Answer(Answer::No);
    f.Click("cmdEnd");
    QCOMPARE(f.Dialogs().Box.Shown.at(0).Text, std::string("Really quit?"));
    QVERIFY(f.Main().isVisible());

    if (!QFontDatabase::families().contains(QStringLiteral("IPAPGothic"))) QSKIP("IPA fonts not installed");
    MainWindowFixture plain;  // no settings file: the default font, shown with its stand-in
    QCOMPARE(QFontInfo(plain.Control("cmdSffOpen").font()).family(), QStringLiteral("IPAPGothic"));
}

void MainWindowTest::buttonsAndListRunTheCommands() {
    MainWindowFixture f;
    auto& box = f.Dialogs().Box;
    auto& files = f.Dialogs().Files;
    QTableView& list = f.Control<QTableView>("lstFiles");
    QLineEdit& group = f.Control<QLineEdit>("txtGroup");
    QVERIFY(QTest::qWaitForWindowExposed(&f.Main()));
    f.Open(f.WriteSharedSff("fighter.sff", 5));
    QCOMPARE(f.Shown(), QStringLiteral("fighter.sff|5|5|5"));
    QCOMPARE(f.Work().SelectedRow, 1);
    QCOMPARE(f.Main().cursor().shape(), Qt::ArrowCursor);  // the hourglass is gone again

    // A click shows the row; an arrow key moves at once but shows on release; End moves only.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(2, 1)).center());
    QCOMPARE(f.Work().SelectedRow, 3);
    QCOMPARE(group.text(), QStringLiteral("2"));
    QTest::keyPress(&list, Qt::Key_Down);
    QCOMPARE(f.Work().SelectedRow, 3);
    QTest::keyRelease(&list, Qt::Key_Down);
    QCOMPARE(f.Work().SelectedRow, 4);
    QTest::keyClick(&list, Qt::Key_End);
    QCOMPARE(f.Work().Table.Selected(), 5);
    QCOMPARE(f.Work().SelectedRow, 4);

    // An edit on the preview shows in the list at once.
    f.Work().Table.SetCell(4, Column::PalType, "0");
    QCOMPARE(list.model()->data(list.model()->index(3, 3)).toString(), QStringLiteral("0"));

    box.Answer(Answer::Yes);
    f.Click("cmdDel");
    QCOMPARE(f.Shown(), QStringLiteral("fighter.sff|4|4|4"));
    files.Cancel();
    f.Click("cmdChangePCX");  // the preview's button opens the main window's file dialog
    QCOMPARE(files.Shown.back().Title, std::string("Select PCX File"));
    files.Cancel();
    f.Click("cmdText");
    QCOMPARE(files.Shown.back().Title, std::string("Parameter File Save"));
    QTimer::singleShot(0, [&f] { f.Main().PathDialog().reject(); });
    f.Click("cmdPCX");  // the real working-folder dialog, cancelled
    box.Answer(Answer::Yes);
    f.Click("cmdInit");
    QCOMPARE(f.Shown(), QStringLiteral("||0|0"));
    QCOMPARE(group.text(), QStringLiteral("0"));
    QCOMPARE(box.Shown.size(), size_t{2});
    QCOMPARE(box.Unexpected + files.Unexpected, 0);
}

void MainWindowTest::screenBoxVersionDialogAndEnd() {
    MainWindowFixture f;
    QWidget& preview = f.Main().PreviewWindow();
    f.Main().move(200, 10);
    f.Click("chkScreen");  // checks, even with no SFF open
    QVERIFY(preview.isVisible());
    const QRect outer = f.Main().frameGeometry();
    QCOMPARE(preview.frameGeometry().topLeft(), QPoint(outer.left() + outer.width(), outer.top()));
    QVERIFY(!preview.close());  // the window refuses to be closed: only the box hides it
    f.Click("chkScreen");
    QVERIFY(!preview.isVisible());

    QString seen;  // what the version dialog showed while it was modal
    QTimer::singleShot(0, [&seen] {
        QWidget* about = QApplication::activeModalWidget();
        if (!about) return;
        seen = about->windowTitle() + "|" + about->findChild<QLabel*>(QStringLiteral("lblVer"))->text();
        QTest::keyClick(about, Qt::Key_Return);  // Enter unloads it, as OK does
    });
    f.Click("cmdAbout");
    QCOMPARE(seen, QStringLiteral("Tarvolin のﾊﾞｰｼﾞｮﾝ情報|Version 0.22β"));

    // The close box ends the program without a question; Exit asks first.
    f.Click("chkScreen");
    QVERIFY(f.Main().close());
    QVERIFY(!preview.isVisible());
    QVERIFY(f.Dialogs().Box.Shown.empty());
    MainWindowFixture g;
    g.Dialogs().Box.Answer(Answer::Yes);
    g.Click("cmdEnd");
    QCOMPARE(g.Dialogs().Box.Shown.size(), size_t{1});
    QVERIFY(!g.Main().isVisible());
}

void MainWindowTest::buildSffThroughTheWindow() {
    if (!std::filesystem::exists(QCoreApplication::applicationDirPath().toStdString() + "/sprmaker.exe"))
        QSKIP("sprmaker.exe is not built beside the program");
    MainWindowFixture f;
    const test::TempDir& dir = f.Dir();
    test::WriteFile(dir / "in.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(9000, 0, 0, true),
                                                                   test::MakeSprite(1, 0, 1, false, 10, 20, 6, 5),
                                                                   test::MakeSprite(1, 1, 1, false, 3, 4, 5, 3)}));
    test::WriteFile(dir / "new.pcx", test::MakePcx(7, 5, 9));
    f.Open(dir / "in.sff");
    f.Click("chkScreen");

    // On the preview: a group typed and left for the main window, an axis, the palette box;
    // then another row gets a picture of its own.
    f.Work().Table.Select(2);  // sorted: 9000,0 first, then 1,0 and 1,1
    f.Work().SelectList();
    QApplication::setActiveWindow(&f.Main().PreviewWindow());
    f.Control("txtGroup").setFocus();
    QTest::keyClicks(&f.Control("txtGroup"), "7");  // "1" becomes "17"
    QApplication::setActiveWindow(&f.Main());
    f.Control<QLineEdit>("txtX").setText(QStringLiteral("-3"));
    f.Click("cmdAxisUp");
    f.Click("chkPallet");  // shared palette off
    f.Work().Table.Select(3);
    f.Work().SelectList();
    f.Dialogs().Files.Choose(dir / "new.pcx");
    f.Click("cmdChangePCX");

    std::string console;
    QTimer keys;  // answers the console's pause once it shows
    QObject::connect(&keys, &QTimer::timeout, [&console] {
        platform::BatchConsole* c = OpenConsole();
        if (!c || !c->Text().contains(QString::fromStdString(PressAnyKeyText()))) return;
        console = c->Text().toStdString();
        QTest::keyClick(c, Qt::Key_Space);
    });
    keys.start(20);
    std::filesystem::create_directory(dir / "work");
    f.Dialogs().Box.Answer(Answer::Ok);  // the folder request
    AnswerFolderDialog(f.Main().PathDialog(), dir / "work/");
    f.Click("cmdBuildSFF");
    QVERIFY2(console.find("SFF 作成処理終了.\n") != std::string::npos, console.c_str());
    QCOMPARE(OpenConsole(), nullptr);
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});  // no failure, no refusal
    QCOMPARE(f.Main().cursor().shape(), Qt::ArrowCursor);

    SffState rebuilt;
    SpriteTable rows;
    QVERIFY(OpenSff(dir / "work/in.sff", "in.sff", rebuilt, rows, f.Main().Ini(), {}));
    QCOMPARE(rows.RowCount(), 3);
    const auto rowOf = [&rows](const char* group, const char* item) {
        for (int place = 1; place <= rows.RowCount(); ++place)
            if (rows.Cell(place, Column::GroupNo) == group && rows.Cell(place, Column::ItemNo) == item)
                return rows.Row(place);
        return SpriteRow{};
    };
    const SpriteRow edited = rowOf("17", "0");
    QCOMPARE(edited[Column::AxisX] + "," + edited[Column::AxisY] + "," + edited[Column::PalType], std::string("-3,21,0"));
    const auto picture = CutSubfile(rebuilt, rebuilt.Subfiles.at(std::stoul(rowOf("1", "1")[Column::PPos])));
    QCOMPARE(ReadPcxHeader(picture).Xmax, uint16_t{6});  // the outside 7 x 5 picture
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
