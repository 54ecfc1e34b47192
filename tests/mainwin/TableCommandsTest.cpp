// The row selection reaching the preview screen, Delete and Initialize, on a started main
// window with scripted dialogs; and every sprite of every shared SFF shown without a word.
#include <QCheckBox>
#include <QLineEdit>
#include <QTableView>
#include <QtTest>

#include "MainWindowFixture.h"
#include "preview/Pallet.h"
#include "support/TestData.h"

using namespace tarvolin;
using test::MainWindowFixture;
using platform::Answer;

class TableCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void clickAndArrowShowTheRow();
    void deleteSelectsTheFollowingRow();
    void deleteTheLastRows();
    void initializeResetsTheScreen();
    void refusedPictureOfARowLeavesTheEmptyScreen();
    void everySpriteOfEverySharedSffIsShown();
};

void TableCommandsTest::clickAndArrowShowTheRow() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    FrmPcx& pcx = main.Preview();
    QVERIFY(QTest::qWaitForWindowExposed(&main));
    f.Open(f.WriteSharedSff("rows.sff", 5));
    QCOMPARE(pcx.txtGroup->text(), QStringLiteral("0"));
    QCOMPARE(pcx.State().PcxPixels.Columns(), 4);
    QCOMPARE(pcx.State().PcxPixels.Lines(), 3);
    QVERIFY(pcx.chkPallet->isChecked());  // the palette's owner counts as sharing it too
    main.Table.SetCell(4, Column::PalType, "0");
    main.Table.SetCell(5, Column::PalType, "7");

    QTableView& list = main.List();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(2, 1)).center());
    QCOMPARE(main.SelectedRow, 3);
    QCOMPARE(pcx.txtGroup->text(), QStringLiteral("2"));
    // Rows with PalFlag 1 are drawn with the shared palette.
    QCOMPARE(pcx.State().PcxPalette, main.State.SharedPalette);
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(main.SelectedRow, 4);
    QCOMPARE(pcx.txtGroup->text(), QStringLiteral("3"));
    QVERIFY(!pcx.chkPallet->isChecked());
    // A PalType other than 0 or 1 leaves the box as it was, and the cell as it is.
    QTest::keyClick(&list, Qt::Key_Down);
    QVERIFY(!pcx.chkPallet->isChecked());
    QCOMPARE(main.Table.Cell(5, Column::PalType), std::string("7"));
    // Showing rows wrote nothing new into them.
    QCOMPARE(main.Table.Cell(3, Column::PalType), std::string("1"));
    QCOMPARE(main.Table.Cell(4, Column::PalType), std::string("0"));
    QCOMPARE(main.Table.Cell(3, Column::GroupNo), std::string("2"));
    QVERIFY(f.Dialogs().Box.Shown.empty());
}

void TableCommandsTest::deleteSelectsTheFollowingRow() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("rows.sff", 5));
    main.Table.Select(2);
    main.SelectList();
    f.Dialogs().Box.Answer(Answer::No);
    f.Click("cmdDel");
    QCOMPARE(main.Table.RowCount(), 5);
    QCOMPARE(f.Dialogs().Box.Shown.at(0).Text, main.Ini().MsgConfirmDelete);
    QCOMPARE(f.Dialogs().Box.Shown.at(0).Style, 292);

    f.Dialogs().Box.Answer(Answer::Yes);
    f.Click("cmdDel");
    QCOMPARE(main.Table.RowCount(), 4);
    std::vector<std::string> sortNos;
    for (int place = 1; place <= 4; ++place) sortNos.push_back(main.Table.Cell(place, Column::SortNo));
    QCOMPARE(sortNos, (std::vector<std::string>{"01", "03", "04", "05"}));
    QCOMPARE(main.ImageLabel().text(), QStringLiteral("4"));
    QCOMPARE(main.Table.Selected(), 2);
    QCOMPARE(main.SelectedRow, 2);
    QCOMPARE(main.Preview().txtGroup->text(), QStringLiteral("2"));  // the old row 3
}

void TableCommandsTest::deleteTheLastRows() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("rows.sff", 3));
    main.Table.Select(3);
    main.SelectList();
    f.Dialogs().Box.Answer(Answer::Yes);
    f.Click("cmdDel");
    QCOMPARE(main.Table.Selected(), 2);  // after the last row: the new last row
    QCOMPARE(main.Preview().txtGroup->text(), QStringLiteral("1"));
    for (int i = 0; i < 2; ++i) {
        f.Dialogs().Box.Answer(Answer::Yes);
        f.Click("cmdDel");
    }
    QVERIFY(main.Table.Empty());
    QCOMPARE(main.ImageLabel().text(), QStringLiteral("0"));
    f.Click("cmdDel");  // an empty table: nothing, no question
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{3});
}

void TableCommandsTest::initializeResetsTheScreen() {
    for (const bool white : {true, false}) {
        MainWindowFixture f;
        FrmMain& main = f.Main();
        FrmPcx& pcx = main.Preview();
        f.Open(f.WriteSharedSff("rows.sff", 3));
        pcx.chkBgWhite->setChecked(white);
        main.Table.Select(2);
        main.SelectList();
        const uint32_t bgBefore = pcx.State().BgColor;
        f.Dialogs().Box.Answer(Answer::Yes);
        f.Click("cmdInit");
        QCOMPARE(f.Dialogs().Box.Shown.at(0).Text, main.Ini().MsgConfirmInit);
        QCOMPARE(f.Dialogs().Box.Shown.at(0).Style, 292);
        QVERIFY(main.Table.Empty());
        QVERIFY(main.SffNameLabel().text().isEmpty());
        QVERIFY(main.ImageLabel().text().isEmpty());
        QVERIFY(main.State.SffBytes.empty());
        QCOMPARE(pcx.State().PcxPixels.Cells.size(), size_t{1});
        for (QLineEdit* box : {pcx.txtGroup, pcx.txtItem, pcx.txtX, pcx.txtY}) QCOMPARE(box->text(), QStringLiteral("0"));
        const PreviewCanvas& c = pcx.Canvas();
        const uint32_t area = white ? kWhite : kBlack;
        QCOMPARE(c.ColorAt(0, 0), area);
        QCOMPARE(c.ColorAt(217, 185), area);
        QCOMPARE(c.ColorAt(107, 150), white ? kBlack : kWhite);  // the inner outline, the area's opposite
        QCOMPARE(c.ColorAt(108, 152), area);                     // the cross stays open
        QCOMPARE(pcx.State().BgColor, bgBefore);
        f.Click("cmdInit");  // nothing left: no question
        QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
    }
}

void TableCommandsTest::refusedPictureOfARowLeavesTheEmptyScreen() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("rows.sff", 3));
    auto bad = test::MakePcx(4, 4, 1);
    bad[3] = 4;  // 16 colours
    test::WriteFile(f.Dir() / "bad.pcx", bad);
    main.Table.SetCell(2, Column::PcxPath, f.Dir().Path());
    main.Table.SetCell(2, Column::PcxName, "bad.pcx");
    main.Table.SetCell(2, Column::AxisX, "7");
    main.Table.Select(2);
    main.SelectList();
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
    QVERIFY(f.Dialogs().Box.Shown[0].Text.find(f.Dir() / "bad.pcx") != std::string::npos);
    QVERIFY(main.Preview().State().PcxBytes.empty());
    QCOMPARE(main.Preview().State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(main.Preview().txtX->text(), QStringLiteral("7"));
    QCOMPARE(main.SelectedRow, 2);
    // Selecting it again reads the file again: the message comes again.
    main.SelectList();
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{2});
}

void TableCommandsTest::everySpriteOfEverySharedSffIsShown() {
    const auto files = test::SharedSffFiles();
    if (files.empty()) QSKIP("../shared/data is absent: real-file test skipped");
    for (const std::string& path : files) {
        MainWindowFixture f;
        FrmMain& main = f.Main();
        f.Dialogs().Box.Answer(Answer::Yes);  // the palette-mode warning, where it comes
        f.Open(path);
        const size_t shownAtOpen = f.Dialogs().Box.Shown.size();
        QVERIFY2(main.Table.RowCount() > 0, path.c_str());
        for (int place = 1; place <= main.Table.RowCount(); ++place) {
            main.Table.Select(place);
            main.SelectList();
            QVERIFY2(!main.Preview().State().PcxBytes.empty(), (path + " row " + std::to_string(place)).c_str());
        }
        QCOMPARE(f.Dialogs().Box.Shown.size(), shownAtOpen);
    }
}

QTEST_MAIN(TableCommandsTest)
#include "TableCommandsTest.moc"
