// Edits made on the preview screen reach the rebuilt SFF: an SFF is opened by the main
// window, rows are selected and edited through the preview's boxes, buttons and Change PCX, the sprites are exported,
// the parameter text written and sprmaker.exe run; the new SFF is opened again.
#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include "MainWindowFixture.h"
#include "rebuild/ParamText.h"
#include "rebuild/PcxExport.h"
#include "sff/SffReader.h"
#include "support/RunProgram.h"
#include "support/TestData.h"

using namespace tarvolin;

namespace {

int FindRow(const SpriteTable& table, const std::string& group, const std::string& item) {
    for (int place = 1; place <= table.RowCount(); ++place)
        if (table.Cell(place, Column::GroupNo) == group && table.Cell(place, Column::ItemNo) == item) return place;
    return 0;
}

bool Yes(const std::string&, int) { return true; }

}  // namespace

class PreviewEditsEndToEndTest : public QObject {
    Q_OBJECT
private slots:
    void editsReachTheRebuiltSff();
};

void PreviewEditsEndToEndTest::editsReachTheRebuiltSff() {
    test::MainWindowFixture f;
    FrmMain& main = f.Main();
    FrmPcx& w = main.Preview();
    SpriteTable& table = main.Table;
    const test::TempDir& dir = f.Dir();
    test::WriteFile(dir / "in.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(9000, 0, 0, true),
                                                                   test::MakeSprite(1, 0, 1, false, 10, 20, 6, 5),
                                                                   test::MakeSprite(1, 1, 1, false, 3, 4, 5, 3)}));
    test::WriteFile(dir / "new.pcx", test::MakePcx(7, 5, 9));
    f.Open(dir / "in.sff");
    auto show = [&](int place) {
        table.Select(place);
        main.SelectList();
    };

    show(FindRow(table, "1", "0"));
    w.txtGroup->setText(QStringLiteral("77"));
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(w.txtGroup, &out);
    w.txtX->setText(QStringLiteral("-3"));
    QTest::mouseClick(w.cmdAxisUp, Qt::LeftButton);
    QTest::mouseClick(w.chkPallet, Qt::LeftButton);  // shared palette off

    show(FindRow(table, "1", "1"));
    f.Dialogs().Files.Choose(dir / "new.pcx");
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QVERIFY(f.Dialogs().Box.Shown.empty());

    const std::string work = dir.Path() + "work/";
    QVERIFY(std::filesystem::create_directory(work));
    QVERIFY(SaveAllPcx(main.State, table, work));
    QVERIFY(WriteParamText(work + "in_SFF.txt", table, "in.sff"));
    const auto run = test::RunProgram(test::BinDir() + "sprmaker.exe", {}, work + "in_SFF.txt", work);
    QVERIFY2(run.Status == 0, run.Out.c_str());

    SffState rebuilt;
    SpriteTable rows;
    QVERIFY(OpenSff(work + "in.sff", "in.sff", rebuilt, rows, main.Ini(), Yes));
    QCOMPARE(rows.RowCount(), 3);
    const int edited = FindRow(rows, "77", "0");
    QVERIFY(edited > 0);
    QCOMPARE(rows.Cell(edited, Column::AxisX), std::string("-3"));
    QCOMPARE(rows.Cell(edited, Column::AxisY), std::string("21"));
    QCOMPARE(rows.Cell(edited, Column::PalType), std::string("0"));
    const int changed = FindRow(rows, "1", "1");
    QVERIFY(changed > 0);
    const auto& record = rebuilt.Subfiles.at(std::stoul(rows.Cell(changed, Column::PPos)));
    const auto picture = CutSubfile(rebuilt, record);
    QCOMPARE(ReadPcxHeader(picture).Xmax, uint16_t{6});  // the outside 7 x 5 picture
    QCOMPARE(ReadPcxHeader(picture).Ymax, uint16_t{4});
}

QTEST_MAIN(PreviewEditsEndToEndTest)
#include "PreviewEditsEndToEndTest.moc"
