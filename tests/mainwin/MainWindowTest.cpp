// The main window driven as a user would: start-up with and without a settings file, the
// open command with all its answers, the version dialog, the end of the program, the
// preview screen's box, row selection, Delete and Initialize.
#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "MainWindowFixture.h"
#include "config/ui/FrmPath.h"
#include "config/ui/Startup.h"
#include "preview/Pallet.h"
#include "sff/SffReader.h"
#include "support/TestData.h"

using namespace tarvolin;
using test::MainWindowFixture;
using platform::Answer;

namespace {

QString FontOf(const QWidget& w) { return w.font().family() + " " + QString::number(w.font().pointSizeF()); }

QString ColumnTitle(FrmMain& main, int column) { return main.List().model()->headerData(column, Qt::Horizontal).toString(); }

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void startUpAppliesSettingsFileOrDefaults();
    void openCommandWithEveryAnswer();
    void clickAndArrowShowTheRow();
    void deleteAsksAndSelectsTheFollowingRow();
    void initializeResetsTheScreen();
    void refusedPictureOfARowLeavesTheEmptyScreen();
    void screenBoxShowsAndHidesPreviewBesideMain();
    void versionDialogShowsVersionModally();
    void exitAsksButCloseBoxDoesNot();
};

void MainWindowTest::startUpAppliesSettingsFileOrDefaults() {
    struct Case {
        const char* Ini;  // empty: no settings file
        const char* Title;
        const char* EndCaption;
        const char* Family;
        int Size;
        const char* ExitQuestion;
    };
    const Case cases[] = {
        {"", "Tarvolin", "E&xit", "ＭＳ Ｐゴシック", 8, "終了しますか？"},
        // A caption under [MESSAGE] and a message under [CAPTION] are not found.
        {"[FONT]\r\nNAME=Arial\r\nSIZE=10\r\n"
         "[CAPTION]\r\nMAIN=My Sprites\r\nMAIN_END=&Quit\r\nMAIN_LST_2=Grp\r\nMSG_004_001=misplaced\r\n"
         "[MESSAGE]\r\nMSG_004_001=Really quit?\r\nMAIN_SFFOPEN=misplaced\r\n",
         "My Sprites", "&Quit", "Arial", 10, "Really quit?"},
    };
    for (const Case& c : cases) {
        MainWindowFixture f(c.Ini);
        FrmMain& main = f.Main();
        const QString family = QString::fromUtf8(c.Family);
        const QString font = family + " " + QString::number(c.Size);
        QCOMPARE(main.windowTitle(), QString::fromUtf8(c.Title));
        QCOMPARE(f.Caption("cmdEnd"), QString::fromUtf8(c.EndCaption));
        QCOMPARE(f.Caption("cmdSffOpen"), QStringLiteral("&Open SFF"));
        QCOMPARE(ColumnTitle(main, 1), *c.Ini ? QStringLiteral("Grp") : QStringLiteral("GroupNo"));
        QCOMPARE(main.PathDialog().windowTitle(), QStringLiteral("ディレクトリの指定"));
        QCOMPARE(main.PreviewWindow().windowTitle(), QStringLiteral("Tarvolin - Screen"));
        // The controls of the font table take the settings' font; the windows' own is one point more.
        for (const char* name : {"cmdSffOpen", "lblImgCnt", "cmdDel", "cmdPCX", "chkScreen"})
            QCOMPARE(FontOf(f.Control(name)), font);
        QCOMPARE(FontOf(*main.PathDialog().findChild<QPushButton*>(QStringLiteral("cmdOK"))), font);
        QCOMPARE(FontOf(main.List()), font);
        QCOMPARE(main.List().property(kFontCharsetProperty).toInt(), 128);
        QCOMPARE(FontOf(main), family + " " + QString::number(c.Size + 1));
        QCOMPARE(FontOf(main.PathDialog()), family + " " + QString::number(c.Size + 1));
        // The folder field takes only the name; the controls outside the table keep their fonts.
        QCOMPARE(FontOf(*main.PathDialog().findChild<QLineEdit*>(QStringLiteral("txtPath"))), family + " 9");
        QCOMPARE(FontOf(f.Control("cmdAbout")), QStringLiteral("Arial 8.25"));
        QCOMPARE(FontOf(main.SffNameLabel()), QStringLiteral("ＭＳ Ｐゴシック 9"));
        // The label sized to its text grows to the left, clear of the count beside it.
        QCOMPARE(f.Control("lblImgCnt").geometry().right(), (5040 + 885) / 15 - 1);
        if (c.Size > 8) QVERIFY(f.Control("lblImgCnt").width() > 885 / 15);
        QCOMPARE(f.Shown(), QStringLiteral("||0|0"));
        QVERIFY(!main.PreviewWindow().isVisible() && !main.PathDialog().isVisible());

        f.Dialogs().Box.Answer(Answer::No);
        f.Click("cmdEnd");
        QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
        QCOMPARE(f.Dialogs().Box.Shown[0].Text, std::string(c.ExitQuestion));
        QCOMPARE(f.Dialogs().Box.Shown[0].Style, 4 + 32);  // question, Yes the default
        QVERIFY(main.isVisible());
    }
    if (!QFontDatabase::families().contains(QStringLiteral("IPAPGothic"))) QSKIP("IPA fonts not installed");
    MainWindowFixture f;
    QCOMPARE(QFontInfo(f.Control("cmdSffOpen").font()).family(), QStringLiteral("IPAPGothic"));
}

void MainWindowTest::openCommandWithEveryAnswer() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    auto& box = f.Dialogs().Box;
    auto& files = f.Dialogs().Files;
    f.Open(f.WriteSharedSff("fighter.sff", 5));
    QVERIFY(box.Shown.empty());  // an empty table is discarded without asking
    const platform::FileDialogSetup setup = files.Shown.at(0);
    QVERIFY(setup.DialogMode == platform::FileDialogSetup::Mode::Open);
    QCOMPARE(setup.Title, std::string("Select Sff File"));
    QCOMPARE(setup.Filter, std::string("Sff Files (*.sff)|*.sff|"));
    QCOMPARE(setup.FileName, std::string("USER.sff"));
    QCOMPARE(setup.Flags, 4);
    QVERIFY(setup.InitialFolder.empty());
    QCOMPARE(f.Shown(), QStringLiteral("fighter.sff|5|5|5"));
    QCOMPARE(main.Work().SelectedRow, 1);                     // SelectList ran at the end
    QCOMPARE(main.cursor().shape(), Qt::ArrowCursor);  // the hourglass is gone again
    const QAbstractItemModel& model = *main.List().model();
    QCOMPARE(model.data(model.index(0, 6)).toString(), QStringLiteral("fighter_00000_00000.pcx"));
    // Hidden columns keep their data; a header click doesn't sort.
    for (int c : {0, 4, 7, 8, 9}) QVERIFY(main.List().isColumnHidden(c));
    QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("01"));
    QVERIFY(!main.List().horizontalHeader()->sectionsClickable());

    // No to the discard question: the dialog never comes. Yes, then Cancel: nothing changes.
    box.Answer(Answer::No);
    f.Click("cmdSffOpen");
    box.Answer(Answer::Yes);
    files.Cancel();
    f.Click("cmdSffOpen");
    QCOMPARE(box.Shown.size(), size_t{2});
    QCOMPARE(box.Shown[0].Text, std::string("この操作により、表示中のSFF情報は破棄されます。\r\n続行しますか？"));
    QCOMPARE(box.Shown[0].Style, 308);
    QCOMPARE(files.Shown.size(), size_t{2});
    QCOMPARE(f.Shown(), QStringLiteral("fighter.sff|5|5|5"));

    // A malformed file and a name typed for a file that isn't there are refused: nothing changes.
    std::vector<uint8_t> junk(600, 0);
    junk[32] = 1;                  // shared-palette mode, so no warning
    junk[20] = 9;                  // nine images
    junk[512] = junk[513] = 0xFF;  // a next offset far behind the end
    test::WriteFile(f.Dir() / "bad.sff", junk);
    for (const std::string& path : {f.Dir() / "bad.sff", f.Dir() / "missing.sff"}) {
        box.Answer(Answer::Yes);  // discard
        box.Answer(Answer::Ok);   // the refusal
        f.Open(path);
        QCOMPARE(box.Shown.back().Style, 48);
        QVERIFY2(box.Shown.back().Text.find(path) != std::string::npos, box.Shown.back().Text.c_str());
        QVERIFY(box.Shown.back().Text.rfind("SFF", 0) == 0);  // the message of its key comes first
        QCOMPARE(f.Shown(), QStringLiteral("fighter.sff|5|5|5"));
        QCOMPARE(main.Work().State.SffBaseName, std::string("fighter"));
        QCOMPARE(main.cursor().shape(), Qt::ArrowCursor);
    }
    QCOMPARE(box.Shown.size(), size_t{6});

    // The palette-mode warning: No empties the table and both labels, Yes opens the file.
    // The working folder stays through both.
    std::vector<SffSprite> own;
    for (uint16_t i = 0; i < 4; ++i) own.push_back(test::MakeSprite(i, 1, 0, true));
    const std::string path = f.Dir() / "own.sff";
    test::WriteFile(path, EncodeSff(kIndividualPaletteMode, own));
    main.Work().State.WorkFolder = "/tmp/out/";
    box.Answer(Answer::Yes);  // discard the rows
    box.Answer(Answer::No);   // decline the file
    f.Open(path);
    QCOMPARE(box.Shown.size(), size_t{8});
    QCOMPARE(box.Shown[7].Text, PaletteModeWarning(main.Ini()));
    QCOMPARE(box.Shown[7].Style, 276);
    QCOMPARE(f.Shown(), QStringLiteral("||0|0"));
    QCOMPARE(main.cursor().shape(), Qt::ArrowCursor);
    box.Answer(Answer::Yes);
    f.Open(path);
    QCOMPARE(f.Shown(), QStringLiteral("own.sff|4|4|4"));
    QCOMPARE(main.Work().Table.Cell(4, Column::PalType), std::string("0"));
    QVERIFY(main.List().isColumnHidden(4));
    QCOMPARE(main.Work().State.WorkFolder, std::string("/tmp/out/"));
    QCOMPARE(box.Unexpected + files.Unexpected, 0);
}

void MainWindowTest::clickAndArrowShowTheRow() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    FrmPcx& pcx = main.Preview();
    QTableView& list = main.List();
    QVERIFY(QTest::qWaitForWindowExposed(&main));

    // On an empty table a click or an arrow key leaves SelectedRow alone.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(main.Work().SelectedRow, 0);

    f.Open(f.WriteSharedSff("rows.sff", 30));
    QCOMPARE(pcx.State().PcxPixels.Columns(), 4);
    QVERIFY(pcx.chkPallet->isChecked());  // the palette's owner counts as sharing it too
    main.Work().Table.SetCell(4, Column::PalType, "0");
    main.Work().Table.SetCell(5, Column::PalType, "7");
    QCOMPARE(list.model()->data(list.model()->index(3, 3)).toString(), QStringLiteral("0"));  // the list follows

    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(2, 1)).center());
    QCOMPARE(main.Work().SelectedRow, 3);
    QCOMPARE(pcx.txtGroup->text(), QStringLiteral("2"));

    // An arrow key moves the selection at once, but shows the row only on release.
    QTest::keyPress(&list, Qt::Key_Down);
    QCOMPARE(main.Work().Table.Selected(), 4);
    QCOMPARE(main.Work().SelectedRow, 3);
    QTest::keyRelease(&list, Qt::Key_Down);
    QCOMPARE(main.Work().SelectedRow, 4);
    QCOMPARE(pcx.txtGroup->text(), QStringLiteral("3"));
    QVERIFY(!pcx.chkPallet->isChecked());
    // A PalType other than 0 or 1 leaves the box as it was, and the cell as it is.
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(main.Work().SelectedRow, 5);
    QVERIFY(!pcx.chkPallet->isChecked());
    QCOMPARE(main.Work().Table.Cell(5, Column::PalType), std::string("7"));

    // Other keys move the selection without showing it; a double click opens nothing.
    QTest::keyClick(&list, Qt::Key_End);
    QCOMPARE(main.Work().Table.Selected(), 30);
    QCOMPARE(main.Work().SelectedRow, 5);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 1)).center());
    QVERIFY(f.Dialogs().Box.Shown.empty());
    QCOMPARE(f.Dialogs().Files.Shown.size(), size_t{1});
}

void MainWindowTest::deleteAsksAndSelectsTheFollowingRow() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    auto& box = f.Dialogs().Box;
    f.Open(f.WriteSharedSff("rows.sff", 4));
    f.ShowRow(2);
    box.Answer(Answer::No);
    f.Click("cmdDel");
    QCOMPARE(main.Work().Table.RowCount(), 4);
    QCOMPARE(box.Shown.at(0).Text, main.Ini().MsgConfirmDelete);
    QCOMPARE(box.Shown.at(0).Style, 292);

    box.Answer(Answer::Yes);
    f.Click("cmdDel");
    QCOMPARE(f.Shown(), QStringLiteral("rows.sff|3|3|3"));
    QCOMPARE(main.Work().Table.Cell(2, Column::SortNo), std::string("03"));
    QCOMPARE(main.Work().SelectedRow, 2);
    QCOMPARE(main.List().currentIndex().row(), 1);
    QCOMPARE(main.Preview().txtGroup->text(), QStringLiteral("2"));  // the old row 3

    // After the last row is deleted, the new last row is selected and shown.
    f.ShowRow(3);
    box.Answer(Answer::Yes);
    f.Click("cmdDel");
    QCOMPARE(main.Work().SelectedRow, 2);
    QCOMPARE(main.Preview().txtGroup->text(), QStringLiteral("2"));
    for (int i = 0; i < 2; ++i) {
        box.Answer(Answer::Yes);
        f.Click("cmdDel");
    }
    QVERIFY(main.Work().Table.Empty());
    QCOMPARE(main.ImageLabel().text(), QStringLiteral("0"));
    f.Click("cmdDel");  // an empty table: nothing, no question
    QCOMPARE(box.Shown.size(), size_t{5});
}

void MainWindowTest::initializeResetsTheScreen() {
    for (const bool white : {true, false}) {
        MainWindowFixture f;
        FrmMain& main = f.Main();
        FrmPcx& pcx = main.Preview();
        f.Open(f.WriteSharedSff("rows.sff", 3));
        pcx.chkBgWhite->setChecked(white);
        f.ShowRow(2);
        const uint32_t bgBefore = pcx.State().BgColor;
        f.Dialogs().Box.Answer(Answer::Yes);
        f.Click("cmdInit");
        QCOMPARE(f.Dialogs().Box.Shown.at(0).Text, main.Ini().MsgConfirmInit);
        QCOMPARE(f.Dialogs().Box.Shown.at(0).Style, 292);
        QCOMPARE(f.Shown(), QStringLiteral("||0|0"));
        QVERIFY(main.Work().State.SffBytes.empty());
        QCOMPARE(pcx.State().PcxPixels.Cells.size(), size_t{1});
        for (QLineEdit* box : {pcx.txtGroup, pcx.txtItem, pcx.txtX, pcx.txtY}) QCOMPARE(box->text(), QStringLiteral("0"));
        QCOMPARE(pcx.Canvas().ColorAt(0, 0), white ? kWhite : kBlack);
        QCOMPARE(pcx.Canvas().ColorAt(107, 150), white ? kBlack : kWhite);  // the marker, in the area's opposite
        QCOMPARE(pcx.State().BgColor, bgBefore);
        f.Click("cmdInit");  // nothing left: no question
        QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
    }
}

void MainWindowTest::refusedPictureOfARowLeavesTheEmptyScreen() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("rows.sff", 3));
    auto bad = test::MakePcx(4, 4, 1);
    bad[3] = 4;  // 16 colours
    test::WriteFile(f.Dir() / "bad.pcx", bad);
    main.Work().Table.SetCell(2, Column::PcxPath, f.Dir().Path());
    main.Work().Table.SetCell(2, Column::PcxName, "bad.pcx");
    main.Work().Table.SetCell(2, Column::AxisX, "7");
    f.ShowRow(2);
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
    QVERIFY(f.Dialogs().Box.Shown[0].Text.find(f.Dir() / "bad.pcx") != std::string::npos);
    QVERIFY(main.Preview().State().PcxBytes.empty());
    QCOMPARE(main.Preview().State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(main.Preview().txtX->text(), QStringLiteral("7"));
    QCOMPARE(main.Work().SelectedRow, 2);
    main.Work().SelectList();  // selecting it again reads the file again: the message comes again
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{2});
}

void MainWindowTest::screenBoxShowsAndHidesPreviewBesideMain() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    QWidget& preview = main.PreviewWindow();
    QCOMPARE(preview.size(), QSize(344, 240));
    QVERIFY(!(preview.windowFlags() & (Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint)));
    QVERIFY(preview.parentWidget() == nullptr);  // a window of its own

    main.move(200, 10);
    f.Click("chkScreen");  // checks, even with no SFF open
    QVERIFY(main.ScreenCheck().isChecked() && preview.isVisible());
    const QRect outer = main.frameGeometry();
    QCOMPARE(preview.frameGeometry().topLeft(), QPoint(outer.left() + outer.width(), outer.top()));
    QVERIFY(!preview.close());  // the window refuses to be closed: only the box hides it
    QVERIFY(preview.isVisible());
    f.Click("chkScreen");
    QVERIFY(!main.ScreenCheck().isChecked() && !preview.isVisible());
    QVERIFY(f.Dialogs().Box.Shown.empty());
}

void MainWindowTest::versionDialogShowsVersionModally() {
    MainWindowFixture f("[CAPTION]\r\nMAIN=Renamed\r\n");
    QStringList seen;  // what the dialog showed while it was modal
    QTimer::singleShot(0, [&] {
        QWidget* about = QApplication::activeModalWidget();
        if (!about || about->windowModality() != Qt::ApplicationModal) return;
        const auto label = [about](const char* name) { return about->findChild<QLabel*>(QString::fromLatin1(name)); };
        seen << about->windowTitle() << label("lblVer")->text() << label("lblAppName")->text()
             << QString::number(label("pctIcon")->pixmap().width());
        QTest::keyClick(about, Qt::Key_Return);  // Enter unloads it, as OK does
    });
    f.Click("cmdAbout");
    // The title of frmMain doesn't reach it.
    QCOMPARE(seen, QStringList({"Tarvolin のﾊﾞｰｼﾞｮﾝ情報", "Version 0.22β", "Tarvolin", "48"}));
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void MainWindowTest::exitAsksButCloseBoxDoesNot() {
    for (const bool byExit : {true, false}) {
        MainWindowFixture f;
        f.Open(f.WriteSharedSff("kept.sff", 2));
        f.Click("chkScreen");
        if (byExit) {
            f.Dialogs().Box.Answer(Answer::Yes);
            f.Click("cmdEnd");
        } else {
            QVERIFY(f.Main().close());
        }
        QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{byExit ? 1u : 0u});
        QVERIFY(!f.Main().isVisible() && !f.Main().PreviewWindow().isVisible());
    }
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
