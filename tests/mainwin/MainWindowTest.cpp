// The main window driven as a user would: start-up with and without a settings file, the
// open command with all its answers, the list's selection, the preview screen's check box,
// the version dialog and the end of the program.
#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "MainWindowFixture.h"
#include "config/FrmPath.h"
#include "config/Startup.h"
#include "sff/SffReader.h"
#include "sff/TextHelpers.h"
#include "support/TestData.h"

using namespace tarvolin;
using tarvolin::test::MainWindowFixture;
using platform::Answer;

namespace {

QString ColumnTitle(FrmMain& main, int column) {
    return main.List().model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void startsInItsDefaultsWithoutSettingsFile();
    void settingsFileChangesFontCaptionsAndMessages();
    void openFillsTableLabelsAndSelection();
    void openWithRowsAsksBeforeDiscarding();
    void paletteModeWarningBothAnswers();
    void refusedFileChangesNothing();
    void opensEverySharedSample();
    void listKeepsOneSelectedRowInStepWithTable();
    void screenBoxShowsAndHidesPreviewBesideMain();
    void versionDialogShowsVersionModally();
    void exitAsksButCloseBoxDoesNot();
};

void MainWindowTest::startsInItsDefaultsWithoutSettingsFile() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    QVERIFY(main.isVisible());
    QCOMPARE(main.windowTitle(), QStringLiteral("Tarvolin"));
    QCOMPARE(main.size(), QSize(480, 232));
    QCOMPARE(f.Text("cmdSffOpen"), QStringLiteral("&Open SFF"));
    QCOMPARE(f.Text("cmdEnd"), QStringLiteral("E&xit"));
    QCOMPARE(f.Text("cmdAbout"), QStringLiteral("&?"));
    QCOMPARE(main.PathDialog().windowTitle(), QStringLiteral("ディレクトリの指定"));
    QCOMPARE(main.PreviewWindow().windowTitle(), QStringLiteral("Tarvolin - Screen"));
    QCOMPARE(ColumnTitle(main, 1), QStringLiteral("GroupNo"));
    QCOMPARE(ColumnTitle(main, 9), QStringLiteral("PcxPath"));

    // The buttons take the settings' font at its size, the window's own font one point more.
    const QString pGothic = QStringLiteral("ＭＳ Ｐゴシック");
    for (const char* name : {"cmdSffOpen", "lblImgCnt", "cmdInit", "cmdPCX", "chkScreen"}) {
        QCOMPARE(f.Control(name).font().family(), pGothic);
        QCOMPARE(f.Control(name).font().pointSize(), 8);
    }
    QCOMPARE(main.font().family(), pGothic);
    QCOMPARE(main.font().pointSize(), 9);
    QCOMPARE(main.List().font().pointSize(), 8);
    QCOMPARE(main.List().property(kFontCharsetProperty).toInt(), 128);
    // Not in the font table: they keep the layout's fonts.
    QCOMPARE(f.Control("cmdAbout").font().family(), QStringLiteral("Arial"));
    QCOMPARE(f.Control("cmdAbout").font().pointSizeF(), 8.25);
    QCOMPARE(main.SffNameLabel().font().pointSize(), 9);
    // The folder dialog's fields keep their 9 points and take only the name.
    auto& txtPath = *main.PathDialog().findChild<QLineEdit*>(QStringLiteral("txtPath"));
    QCOMPARE(txtPath.font().family(), pGothic);
    QCOMPARE(txtPath.font().pointSize(), 9);
    QCOMPARE(main.PathDialog().findChild<QPushButton*>(QStringLiteral("cmdOK"))->font().pointSize(), 8);

    // Nothing is open, nothing else is on screen.
    QVERIFY(main.Table.Empty());
    QVERIFY(main.SffNameLabel().text().isEmpty());
    QVERIFY(main.ImageLabel().text().isEmpty());
    QVERIFY(!main.PreviewWindow().isVisible());
    QVERIFY(!main.PathDialog().isVisible());
    QVERIFY(main.State.WorkFolder.empty());
    QVERIFY(f.Dialogs().Box.Shown.empty());

    if (!QFontDatabase::families().contains(QStringLiteral("IPAPGothic"))) QSKIP("IPA fonts not installed");
    QCOMPARE(QFontInfo(f.Control("cmdSffOpen").font()).family(), QStringLiteral("IPAPGothic"));
    QCOMPARE(QFontInfo(txtPath.font()).family(), QStringLiteral("IPAPGothic"));
}

void MainWindowTest::settingsFileChangesFontCaptionsAndMessages() {
    MainWindowFixture f(
        "[FONT]\r\nNAME=Arial\r\nSIZE=10\r\n"
        "[CAPTION]\r\nMAIN=My Sprites\r\nMAIN_END=&Quit\r\nMAIN_LST_2=Grp\r\nPATH_OK=Take\r\n"
        "MSG_004_001=misplaced message\r\n"
        "[MESSAGE]\r\nMSG_004_001=Really quit?\r\nMAIN_SFFOPEN=misplaced caption\r\n");
    FrmMain& main = f.Main();
    QCOMPARE(main.windowTitle(), QStringLiteral("My Sprites"));
    QCOMPARE(f.Text("cmdEnd"), QStringLiteral("&Quit"));
    QCOMPARE(ColumnTitle(main, 1), QStringLiteral("Grp"));
    QCOMPARE(ColumnTitle(main, 2), QStringLiteral("ItemNo"));
    QCOMPARE(main.PathDialog().findChild<QPushButton*>(QStringLiteral("cmdOK"))->text(), QStringLiteral("Take"));
    // A key under the wrong section isn't found.
    QCOMPARE(f.Text("cmdSffOpen"), QStringLiteral("&Open SFF"));

    for (const char* name : {"cmdEnd", "cmdDel", "lblImgCnt"}) {
        QCOMPARE(f.Control(name).font().family(), QStringLiteral("Arial"));
        QCOMPARE(f.Control(name).font().pointSize(), 10);
    }
    QCOMPARE(main.font().pointSize(), 11);
    QCOMPARE(main.PathDialog().font().pointSize(), 11);
    QCOMPARE(main.List().font().family(), QStringLiteral("Arial"));
    QCOMPARE(main.List().font().pointSize(), 10);
    QCOMPARE(main.List().property(kFontCharsetProperty).toInt(), 128);  // no CHARSET key
    auto& txtPath = *main.PathDialog().findChild<QLineEdit*>(QStringLiteral("txtPath"));
    QCOMPARE(txtPath.font().family(), QStringLiteral("Arial"));
    QCOMPARE(txtPath.font().pointSize(), 9);
    QCOMPARE(main.SffNameLabel().font().family(), QStringLiteral("ＭＳ Ｐゴシック"));
    // The label sized to its text grew with the larger font, to the left: it never runs
    // under the count beside it.
    QVERIFY(f.Control("lblImgCnt").width() > 885 / 15);
    QCOMPARE(f.Control("lblImgCnt").geometry().right(), (5040 + 885) / 15 - 1);
    QVERIFY(f.Control("lblImgCnt").geometry().right() < main.ImageLabel().geometry().left());

    f.Dialogs().Box.Answer(Answer::No);
    f.Click("cmdEnd");
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
    QCOMPARE(f.Dialogs().Box.Shown[0].Text, std::string("Really quit?"));
    QVERIFY(main.isVisible());
}

void MainWindowTest::openFillsTableLabelsAndSelection() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("fighter.sff", 5));

    QVERIFY(f.Dialogs().Box.Shown.empty());  // an empty table is discarded without asking
    QCOMPARE(f.Dialogs().Files.Shown.size(), size_t{1});
    const platform::FileDialogSetup& setup = f.Dialogs().Files.Shown[0];
    QVERIFY(setup.DialogMode == platform::FileDialogSetup::Mode::Open);
    QCOMPARE(setup.Title, std::string("Select Sff File"));
    QCOMPARE(setup.Filter, std::string("Sff Files (*.sff)|*.sff|"));
    QCOMPARE(setup.FileName, std::string("USER.sff"));
    QCOMPARE(setup.Flags, 4);
    QVERIFY(setup.InitialFolder.empty());

    QCOMPARE(main.Table.RowCount(), 5);
    QCOMPARE(main.List().model()->rowCount(), 5);
    QCOMPARE(main.SffNameLabel().text(), QStringLiteral("fighter.sff"));
    QCOMPARE(main.ImageLabel().text(), QStringLiteral("5"));
    QCOMPARE(main.State.SffBaseName, std::string("fighter"));
    QCOMPARE(main.SelectedRow, 1);  // SelectList ran at the end
    QCOMPARE(main.List().model()->data(main.List().model()->index(0, 6)).toString(),
             QStringLiteral("fighter_00000_00000.pcx"));
    QCOMPARE(main.cursor().shape(), Qt::ArrowCursor);  // the hourglass is gone again

    // Hidden columns keep their data and stay hidden after every new table.
    for (int c : {0, 4, 7, 8, 9}) QVERIFY(main.List().isColumnHidden(c));
    QCOMPARE(main.List().columnWidth(6), 2500 / 15);
    QCOMPARE(main.List().model()->data(main.List().model()->index(0, 0)).toString(), QStringLiteral("01"));
    QVERIFY(!main.List().horizontalHeader()->sectionsClickable());
}

void MainWindowTest::openWithRowsAsksBeforeDiscarding() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    const std::string first = f.WriteSharedSff("first.sff", 3);
    const std::string second = f.WriteSharedSff("second.sff", 7);
    f.Open(first);
    auto& box = f.Dialogs().Box;
    auto& files = f.Dialogs().Files;

    // No: the dialog never comes.
    box.Answer(Answer::No);
    f.Click("cmdSffOpen");
    QCOMPARE(box.Shown.size(), size_t{1});
    QCOMPARE(box.Shown[0].Text, std::string("この操作により、表示中のSFF情報は破棄されます。\r\n続行しますか？"));
    QCOMPARE(box.Shown[0].Style, 308);
    QCOMPARE(files.Shown.size(), size_t{1});

    // Yes, then Cancel: nothing has changed.
    box.Answer(Answer::Yes);
    files.Cancel();
    f.Click("cmdSffOpen");
    QCOMPARE(files.Shown.size(), size_t{2});
    QCOMPARE(main.Table.RowCount(), 3);
    QCOMPARE(main.SffNameLabel().text(), QStringLiteral("first.sff"));

    // Yes and a file: the second replaces the first; the working folder stays.
    main.State.WorkFolder = "/tmp/out/";
    box.Answer(Answer::Yes);
    f.Open(second);
    QCOMPARE(main.Table.RowCount(), 7);
    QCOMPARE(main.ImageLabel().text(), QStringLiteral("7"));
    QCOMPARE(main.SffNameLabel().text(), QStringLiteral("second.sff"));
    QCOMPARE(main.State.WorkFolder, std::string("/tmp/out/"));
    QCOMPARE(box.Unexpected + files.Unexpected, 0);
}

void MainWindowTest::paletteModeWarningBothAnswers() {
    std::vector<std::pair<std::string, int>> cases;  // file, image count
    MainWindowFixture f;
    std::vector<SffSprite> own;
    for (uint16_t i = 0; i < 4; ++i) own.push_back(test::MakeSprite(i, 1, 0, true));
    const std::string synthetic = f.Dir() / "own.sff";
    test::WriteFile(synthetic, EncodeSff(kIndividualPaletteMode, own));
    cases.emplace_back(synthetic, 4);
    if (auto data = test::SharedDataDir()) cases.emplace_back(*data + "elecbyte_fight_sprmaker.sff", 43);
    else qInfo("../shared/data is absent: only the synthetic file draws the warning");

    FrmMain& main = f.Main();
    auto& box = f.Dialogs().Box;
    const std::string warning = PaletteModeWarning(main.Ini());
    for (const auto& [path, count] : cases) {
        // A table is on screen: No to the warning empties it and both labels.
        if (!main.Table.Empty()) box.Answer(Answer::Yes);
        f.Open(f.WriteSharedSff("before.sff", 2));
        QCOMPARE(main.Table.RowCount(), 2);
        box.Shown.clear();
        box.Answer(Answer::Yes);  // discard the rows
        box.Answer(Answer::No);   // decline the file
        f.Open(path);
        QCOMPARE(box.Shown.size(), size_t{2});
        QCOMPARE(box.Shown[1].Text, warning);
        QCOMPARE(box.Shown[1].Style, 276);
        QVERIFY(main.Table.Empty());
        QVERIFY(main.SffNameLabel().text().isEmpty());
        QVERIFY(main.ImageLabel().text().isEmpty());
        QCOMPARE(main.cursor().shape(), Qt::ArrowCursor);

        // Yes: decoded like any other.
        box.Answer(Answer::Yes);
        f.Open(path);
        QCOMPARE(main.Table.RowCount(), count);
        QCOMPARE(main.ImageLabel().text(), QString::number(count));
        QCOMPARE(main.SffNameLabel().text(), QString::fromStdString(GetFileName(path)));
        QCOMPARE(main.Table.Cell(main.Table.RowCount(), Column::PalType), std::string("0"));
        QCOMPARE(box.Unexpected, 0);
    }
}

void MainWindowTest::refusedFileChangesNothing() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("good.sff", 3));
    const SpriteRow firstRow = main.Table.Row(1);

    std::vector<uint8_t> junk(600, 0);
    junk[32] = 1;       // shared-palette mode, so no warning
    junk[20] = 9;       // nine images
    junk[512] = 0xFF;   // a next offset far behind the end
    junk[513] = 0xFF;
    junk[514] = 0x00;
    const std::string bad = f.Dir() / "bad.sff";
    test::WriteFile(bad, junk);
    f.Dialogs().Box.Answer(Answer::Yes);  // discard
    f.Dialogs().Box.Answer(Answer::Ok);   // the refusal
    f.Open(bad);

    auto& shown = f.Dialogs().Box.Shown;
    QCOMPARE(shown.size(), size_t{2});
    QCOMPARE(shown[1].Style, 48);
    QVERIFY(shown[1].Text.find(bad) != std::string::npos);
    QVERIFY(shown[1].Text.rfind("SFF", 0) == 0);  // the message of its key comes first
    QCOMPARE(main.Table.RowCount(), 3);
    QVERIFY(main.Table.Row(1).Cells == firstRow.Cells);
    QCOMPARE(main.SffNameLabel().text(), QStringLiteral("good.sff"));
    QCOMPARE(main.ImageLabel().text(), QStringLiteral("3"));
    QCOMPARE(main.State.SffBaseName, std::string("good"));
    QCOMPARE(main.cursor().shape(), Qt::ArrowCursor);

    // A name typed for a file that isn't there is refused the same way.
    f.Dialogs().Box.Answer(Answer::Yes);
    f.Dialogs().Box.Answer(Answer::Ok);
    f.Open(f.Dir() / "missing.sff");
    QCOMPARE(shown.size(), size_t{4});
    QCOMPARE(main.SffNameLabel().text(), QStringLiteral("good.sff"));
    QCOMPARE(main.Table.RowCount(), 3);
}

void MainWindowTest::opensEverySharedSample() {
    const std::vector<std::string> files = test::SharedSffFiles();
    if (files.empty()) QSKIP("../shared/data is absent: real-file test skipped");
    MainWindowFixture f;
    FrmMain& main = f.Main();
    for (const std::string& path : files) {
        for (int i = 0; i < 2; ++i) f.Dialogs().Box.Answer(Answer::Yes);  // discard, warning
        f.Open(path);
        const std::vector<uint8_t> bytes = test::ReadFile(path);
        const int count = bytes[20] | bytes[21] << 8;
        QVERIFY2(main.Table.RowCount() == count, path.c_str());
        QCOMPARE(main.ImageLabel().text(), QString::number(count));
        QCOMPARE(main.List().model()->rowCount(), count);
        f.Dialogs().Box = test::ScriptedMessageBox();
    }
}

void MainWindowTest::listKeepsOneSelectedRowInStepWithTable() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    QTableView& list = main.List();
    QVERIFY(QTest::qWaitForWindowExposed(&main));

    // On an empty table a click or an arrow key leaves SelectedRow alone.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(main.SelectedRow, 0);

    f.Open(f.WriteSharedSff("rows.sff", 30));
    QCOMPARE(main.SelectedRow, 1);

    // A click selects and shows the row.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(2, 1)).center());
    QCOMPARE(main.Table.Selected(), 3);
    QCOMPARE(main.SelectedRow, 3);

    // An arrow key moves the selection at once, but shows it only on release.
    QTest::keyPress(&list, Qt::Key_Down);
    QCOMPARE(main.Table.Selected(), 4);
    QCOMPARE(main.SelectedRow, 3);
    QTest::keyRelease(&list, Qt::Key_Down);
    QCOMPARE(main.SelectedRow, 4);

    // Page Down and End move the selection without showing it.
    QTest::keyClick(&list, Qt::Key_PageDown);
    QVERIFY(main.Table.Selected() > 4);
    QTest::keyClick(&list, Qt::Key_End);
    QCOMPARE(main.Table.Selected(), 30);
    QCOMPARE(main.SelectedRow, 4);
    QTest::keyClick(&list, Qt::Key_Up);
    QCOMPARE(main.SelectedRow, 29);

    // The table moves the list's selection too, and a cell change shows at once.
    main.Table.Select(7);
    QCOMPARE(list.currentIndex().row(), 6);
    QCOMPARE(list.selectionModel()->selectedRows().size(), qsizetype{1});
    main.Table.SetCell(7, Column::GroupNo, "123");
    QCOMPARE(list.model()->data(list.model()->index(6, 1)).toString(), QStringLiteral("123"));
    main.Table.RemoveRow(7);
    QCOMPARE(list.model()->rowCount(), 29);
    QCOMPARE(list.currentIndex().row(), main.Table.Selected() - 1);

    // A double click opens nothing.
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 1)).center());
    QVERIFY(f.Dialogs().Box.Shown.empty());
    QCOMPARE(f.Dialogs().Files.Shown.size(), size_t{1});
}

void MainWindowTest::screenBoxShowsAndHidesPreviewBesideMain() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    QWidget& preview = main.PreviewWindow();
    QCOMPARE(preview.size(), QSize(344, 240));
    QVERIFY(!(preview.windowFlags() & Qt::WindowCloseButtonHint));
    QVERIFY(!(preview.windowFlags() & Qt::WindowMinMaxButtonsHint));
    QVERIFY(preview.parentWidget() == nullptr);  // a window of its own

    for (QPoint mainAt : {QPoint(50, 60), QPoint(200, 10)}) {
        main.move(mainAt);
        f.Click("chkScreen");  // checks, even with no SFF open
        QVERIFY(main.ScreenCheck().isChecked());
        QVERIFY(preview.isVisible());
        const QRect outer = main.frameGeometry();
        QCOMPARE(preview.frameGeometry().topLeft(), QPoint(outer.left() + outer.width(), outer.top()));
        QVERIFY(f.Dialogs().Box.Shown.empty());

        // The window refuses to be closed: only the box hides it.
        QVERIFY(!preview.close());
        QVERIFY(preview.isVisible());

        f.Click("chkScreen");
        QVERIFY(!main.ScreenCheck().isChecked());
        QVERIFY(!preview.isVisible());
    }
}

void MainWindowTest::versionDialogShowsVersionModally() {
    MainWindowFixture f("[CAPTION]\r\nMAIN=Renamed\r\n");
    QString title, version, name;
    Qt::WindowModality modality = Qt::NonModal;
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* about = QApplication::activeModalWidget();
        if (!about) return;
        seen = true;
        title = about->windowTitle();
        modality = about->windowModality();
        version = about->findChild<QLabel*>(QStringLiteral("lblVer"))->text();
        name = about->findChild<QLabel*>(QStringLiteral("lblAppName"))->text();
        QVERIFY(about->findChild<QLabel*>(QStringLiteral("pctIcon"))->pixmap().size() == QSize(48, 48));
        QTest::keyClick(about, Qt::Key_Return);  // Enter unloads it, as OK does
    });
    f.Click("cmdAbout");
    QVERIFY(seen);
    QCOMPARE(version, QStringLiteral("Version 0.22β"));
    QCOMPARE(name, QStringLiteral("Tarvolin"));
    QCOMPARE(title, QStringLiteral("Tarvolin のﾊﾞｰｼﾞｮﾝ情報"));  // the title of frmMain doesn't reach it
    QCOMPARE(modality, Qt::ApplicationModal);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void MainWindowTest::exitAsksButCloseBoxDoesNot() {
    {
        MainWindowFixture f;
        FrmMain& main = f.Main();
        f.Click("chkScreen");
        f.Dialogs().Box.Answer(Answer::No);
        f.Click("cmdEnd");
        QVERIFY(main.isVisible());
        f.Dialogs().Box.Answer(Answer::Yes);
        f.Click("cmdEnd");
        auto& shown = f.Dialogs().Box.Shown;
        QCOMPARE(shown.size(), size_t{2});
        QCOMPARE(shown[0].Text, std::string("終了しますか？"));
        QCOMPARE(shown[0].Style, 4 + 32);  // question, Yes the default
        QVERIFY(!main.isVisible());
        QVERIFY(!main.PreviewWindow().isVisible());
    }
    {
        MainWindowFixture f;
        f.Open(f.WriteSharedSff("kept.sff", 2));
        f.Click("chkScreen");
        QVERIFY(f.Main().close());
        QVERIFY(f.Dialogs().Box.Shown.empty());
        QVERIFY(!f.Main().PreviewWindow().isVisible());
    }
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
