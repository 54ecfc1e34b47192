// frmPCX on real widgets, offscreen: layout, the scroll and zoom sequences with their
// numbers, the zoom box, the background boxes and the marker, the number boxes and the
// arrow buttons, the palette box, Change PCX and a refused picture.
#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QtTest>

#include "PcxImages.h"
#include "config/AppIni.h"
#include "preview/FrmPcx.h"
#include "preview/Pallet.h"
#include "support/ScriptedDialogs.h"
#include "support/TempDir.h"
#include "support/TestData.h"

using namespace tarvolin;

namespace {

// A preview window with a table of one row, as the main window would hold it.
struct Fixture {
    SpriteTable Table;
    int SelectedRow = 0;
    AppIni Ini = DefaultAppIni();
    test::ScriptedServices Services;
    FrmPcx Window{PreviewHost{Table, SelectedRow, Ini, Services.Services}};

    void AddRow() {
        SpriteRow row;
        row[Column::SortNo] = "01";
        row[Column::GroupNo] = "5";
        row[Column::ItemNo] = "0";
        row[Column::PalType] = "0";
        row[Column::PPos] = "0";
        row[Column::PcxName] = "x_5-0.pcx";
        row[Column::AxisX] = "0";
        row[Column::AxisY] = "0";
        Table.Assign({row});
        SelectedRow = 1;
    }
    // A picture of `columns` x `lines` cells from a header alone (the cells are all 0).
    void Show(uint16_t columns, uint16_t lines, int x, int y) {
        Window.State().PcxBytes = test::PcxImage(static_cast<uint16_t>(columns - 1), static_cast<uint16_t>(lines - 1),
                                                 columns);
        Window.SetPcx();
        Window.PcxRle();
        Window.txtX->setText(QString::number(x));
        Window.txtY->setText(QString::number(y));
        Window.intScr();
        Window.ViewPCX();
    }
    void StepZoom() { Window.sldZoom->triggerAction(QAbstractSlider::SliderSingleStepAdd); }
};

void LeaveBox(QWidget* box) {
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(box, &out);
}

}  // namespace

class FrmPcxTest : public QObject {
    Q_OBJECT
private slots:
    void layoutAndTabOrder();
    void barValueForASpriteThatFits();
    void barValueForASpriteReachingPastTheLeftEdge();
    void zoomStepsCarryTheRanges();
    void zoomBoxRules();
    void controlsHideWhatSpills();
    void backgroundBoxesAndMarker();
    void numberBoxes();
    void arrowButtonsAndPalletBox();
    void emptyTableWritesNothing();
    void changePcxAndRefusedPicture();
    void focusStaysInABoxWithANonNumber();
};

void FrmPcxTest::layoutAndTabOrder() {
    Fixture f;
    FrmPcx& w = f.Window;
    QCOMPARE(w.size(), QSize(344, 240));
    QCOMPARE(w.windowTitle(), QStringLiteral("Tarvolin - Screen"));
    QVERIFY(w.windowFlags() & Qt::CustomizeWindowHint);
    QVERIFY(!(w.windowFlags() & (Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint)));
    QCOMPARE(w.findChild<QScrollBar*>("scrlH")->geometry(), QRect(0, 184, 217, 17));
    QCOMPARE(w.findChild<QScrollBar*>("scrlV")->geometry(), QRect(216, 0, 17, 185));
    QCOMPARE(w.findChild<QLabel*>("lblDummy2")->geometry(), QRect(232, 0, 240, 3405));
    QCOMPARE(w.findChild<QLabel*>("lblDummy3")->geometry(), QRect(-4, 192, 236, 172));
    QCOMPARE(w.findChild<QPushButton*>("cmdAxisRight")->parentWidget(), w.findChild<QGroupBox*>("fraAxis"));
    QCOMPARE(w.findChild<QPushButton*>("cmdAxisRight")->geometry(), QRect(76, 64, 17, 17));
    QCOMPARE(w.findChild<QPushButton*>("cmdAxisRight")->iconSize(), QSize(13, 13));
    QCOMPARE(w.findChild<QSlider*>("sldZoom")->parentWidget(), w.findChild<QGroupBox*>("fraZoom"));
    QCOMPARE(w.findChild<QSlider*>("sldZoom")->cursor().hotSpot(), QPoint(12, 1));
    QCOMPARE(w.findChild<QPushButton*>("cmdAxisUp")->cursor().pixmap().size(), QSize(32, 32));
    QCOMPARE(w.findChild<QCheckBox*>("chkBgWhite")->text(), QStringLiteral("White BackColor"));
    QCOMPARE(w.findChild<QLabel*>("lblMove")->text(), QStringLiteral("PCX Pos"));
    for (QLineEdit* box : {w.txtGroup, w.txtItem, w.txtX, w.txtY}) QCOMPARE(box->text(), QStringLiteral("0"));
    QCOMPARE(w.txtZoom->text(), QStringLiteral("100"));

    // The tab chain, skipping widgets that take no focus by Tab.
    const QWidget* order[] = {w.scrlH, w.scrlV, w.txtZoom, w.sldZoom, w.chkBgDel, w.chkBgWhite, w.txtGroup, w.txtItem,
                              w.txtX, w.txtY, w.cmdAxisUp, w.cmdAxisLeft, w.cmdAxisRight, w.cmdAxisDown, w.chkPallet,
                              w.cmdChangePCX};
    for (size_t i = 0; i + 1 < std::size(order); ++i) {
        QWidget* next = order[i]->nextInFocusChain();
        while (!(next->focusPolicy() & Qt::TabFocus)) next = next->nextInFocusChain();
        QCOMPARE(next, order[i + 1]);
    }
}

void FrmPcxTest::barValueForASpriteThatFits() {
    Fixture f;
    f.Show(100, 10, 0, 0);
    QCOMPARE(f.Window.scrlH->maximum(), 99);
    QCOMPARE(f.Window.scrlH->value(), 50);
    QCOMPARE(f.Window.State().LastScrlH, 50);
    QCOMPARE(f.Window.State().PicLeft, 108);
    // One step right moves marker and sprite one pixel left.
    f.Window.scrlH->setValue(51);
    QCOMPARE(f.Window.State().AxisScreenX, 107);
    QCOMPARE(f.Window.State().PicLeft, 107);
}

void FrmPcxTest::barValueForASpriteReachingPastTheLeftEdge() {
    Fixture f;
    f.Show(301, 10, 150, 0);
    QCOMPARE(f.Window.State().PcxPixels.LastColumn, 300);
    QCOMPARE(f.Window.scrlH->value(), 258);
    QCOMPARE(f.Window.State().LastScrlH, 258);
    QCOMPARE(f.Window.State().AxisScreenX, 108);
    QCOMPARE(f.Window.State().PicLeft, 108 - 150);
    // A one-pixel sprite: maximum 0, nothing to scroll.
    Fixture one;
    one.Show(1, 1, 0, 0);
    QCOMPARE(one.Window.scrlH->maximum(), 0);
    QCOMPARE(one.Window.scrlV->maximum(), 0);
}

void FrmPcxTest::zoomStepsCarryTheRanges() {
    Fixture f;
    f.Show(101, 101, 0, 0);
    QCOMPARE(f.Window.scrlH->maximum(), 100);
    const int expected[] = {200, 300, 400};
    for (int i = 0; i < 3; ++i) {
        f.StepZoom();
        const int zoom = 200 + 100 * i;
        QCOMPARE(f.Window.sldZoom->value(), zoom);
        QCOMPARE(f.Window.txtZoom->text(), QString::number(zoom));
        QCOMPARE(f.Window.State().LastZoom, zoom);
        // 300 -> 400 scales by 1.3333334 in single precision and still lands on 400.
        QCOMPARE(f.Window.scrlH->maximum(), expected[i]);
    }
    QCOMPARE(f.Window.State().PicLeft, f.Window.State().AxisScreenX);
    // Back to 100 through the keyboard: the marker returns to (108, 152).
    f.Window.State().AxisScreenX = 50;
    f.Window.sldZoom->setSliderPosition(100);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Left, Qt::NoModifier);
    QApplication::sendEvent(f.Window.sldZoom, &release);
    QCOMPARE(f.Window.txtZoom->text(), QStringLiteral("100"));
    QCOMPARE(f.Window.State().AxisScreenX, 108);
    QCOMPARE(f.Window.scrlH->maximum(), 100);
}

void FrmPcxTest::zoomBoxRules() {
    Fixture f;
    const std::string range = "100～400" + f.Ini.MsgRangeSuffix;
    for (const char* refused : {"abc", "99", "401"}) {
        f.Window.txtZoom->setText(QString::fromLatin1(refused));
        LeaveBox(f.Window.txtZoom);
        QCOMPARE(f.Window.txtZoom->text(), QStringLiteral("100"));
        QCOMPARE(f.Services.Box.Shown.back().Text, range);
        QCOMPARE(f.Services.Box.Shown.back().Style, 0);
    }
    QCOMPARE(f.Services.Box.Shown.size(), size_t{3});
    QCOMPARE(f.Window.State().LastZoom, 100);
    f.Window.txtZoom->setText(QStringLiteral("115"));
    LeaveBox(f.Window.txtZoom);
    QCOMPARE(f.Window.txtZoom->text(), QStringLiteral("120"));
    QCOMPARE(f.Window.sldZoom->value(), 120);
    // The key release on the slider (as after Tab) forces it to a multiple of 100.
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(f.Window.sldZoom, &release);
    QCOMPARE(f.Window.sldZoom->value(), 100);
    QCOMPARE(f.Window.txtZoom->text(), QStringLiteral("100"));
    QCOMPARE(f.Services.Box.Shown.size(), size_t{3});
}

void FrmPcxTest::controlsHideWhatSpills() {
    Fixture f;
    // A palette whose index 0 is pure red, on a 400 x 300 sprite larger than the area.
    f.Window.State().PcxPalette[0] = 255;
    f.Window.PalletSet();
    f.Show(400, 300, 0, 0);
    const QImage shown = f.Window.grab().toImage();
    // The sprite's top left is on the marker at (108, 152); it spills right and down.
    for (QPoint p : {QPoint(300, 200), QPoint(150, 230), QPoint(200, 190)}) {
        QCOMPARE(f.Window.Canvas().ColorAt(p.x(), p.y()), uint32_t{0x0000FF});  // drawn there...
        QVERIFY(shown.pixelColor(p) != QColor(255, 0, 0));                      // ...but covered
    }
    QCOMPARE(shown.pixelColor(150, 170), QColor(255, 0, 0));  // inside the picture area it shows
}

void FrmPcxTest::backgroundBoxesAndMarker() {
    Fixture f;
    f.Show(1, 1, 0, 0);
    const PreviewCanvas& c = f.Window.Canvas();
    QCOMPARE(c.ColorAt(217, 185), kBlack);
    QCOMPARE(c.ColorAt(107, 150), kWhite);  // inner outline
    QCOMPARE(c.ColorAt(107, 149), kBlack);  // outer outline
    QCOMPARE(c.ColorAt(110, 152), kBlack);  // open cross: the background shows
    f.Window.chkBgWhite->setChecked(true);
    QCOMPARE(f.Window.State().BgColor, kWhite);
    QCOMPARE(c.ColorAt(217, 185), kWhite);
    QCOMPARE(c.ColorAt(110, 152), kBlack);  // solid black cross on white
    QCOMPARE(c.ColorAt(107, 150), kWhite);
    // Hide BackColor: index 0 (the one cell at the axis) takes the area's colour; the
    // cross covers it on white, so look on black.
    f.Window.chkBgWhite->setChecked(false);
    f.Window.State().PcxPalette[1] = 200;
    f.Window.PalletSet();
    f.Window.ViewPCX();
    QCOMPARE(c.ColorAt(108, 152), uint32_t{200 << 8});
    f.Window.chkBgDel->setChecked(true);
    QCOMPARE(c.ColorAt(108, 152), kBlack);
}

void FrmPcxTest::numberBoxes() {
    Fixture f;
    f.AddRow();
    FrmPcx& w = f.Window;
    auto& shown = f.Services.Box.Shown;
    // A negative number typed: the message after the minus sign, then accepted.
    w.txtItem->clear();
    QTest::keyClicks(w.txtItem, "-3");
    QCOMPARE(shown.size(), size_t{2});  // the empty box, then "-"
    QCOMPARE(shown[1].Text, f.Ini.MsgEnterNumber);
    QCOMPARE(shown[1].Style, 48);
    QCOMPARE(f.Table.Cell(1, Column::ItemNo), std::string("-3"));
    QTest::keyClicks(w.txtItem, "x");  // every keystroke that leaves a non-number
    QCOMPARE(shown.size(), size_t{3});
    QCOMPARE(f.Table.Cell(1, Column::ItemNo), std::string("-3"));
    // 1.5 in txtX: the cell holds 2, the box 1.5, and the sprite moves at once.
    w.txtX->setText(QStringLiteral("1.5"));
    QCOMPARE(f.Table.Cell(1, Column::AxisX), std::string("2"));
    QCOMPARE(w.txtX->text(), QStringLiteral("1.5"));
    QCOMPARE(w.State().PicLeft, 108 - 2);
    // txtGroup acts only on leaving; a non-number there brings the message then.
    w.txtGroup->setText(QStringLiteral("30x"));
    QCOMPARE(shown.size(), size_t{3});
    LeaveBox(w.txtGroup);
    QCOMPARE(shown.size(), size_t{4});
    QCOMPARE(f.Table.Cell(1, Column::GroupNo), std::string("5"));
    w.txtGroup->setText(QStringLiteral("300"));
    LeaveBox(w.txtGroup);
    QCOMPARE(f.Table.Cell(1, Column::GroupNo), std::string("300"));
    w.txtItem->setText(QStringLiteral("70000"));
    QCOMPARE(f.Table.Cell(1, Column::ItemNo), std::string("70000"));
}

void FrmPcxTest::arrowButtonsAndPalletBox() {
    Fixture f;
    f.AddRow();
    FrmPcx& w = f.Window;
    w.txtX->setText(QStringLiteral("1.5"));
    QTest::mouseClick(w.cmdAxisLeft, Qt::LeftButton);  // reads 1.5 as 2, writes 3
    QCOMPARE(w.txtX->text(), QStringLiteral("3"));
    QCOMPARE(f.Table.Cell(1, Column::AxisX), std::string("3"));
    QCOMPARE(w.State().PicLeft, 108 - 3);
    w.txtX->setText(QStringLiteral("0"));
    QTest::mouseClick(w.cmdAxisRight, Qt::LeftButton);
    QCOMPARE(f.Table.Cell(1, Column::AxisX), std::string("-1"));
    QTest::mouseClick(w.cmdAxisUp, Qt::LeftButton);
    QCOMPARE(f.Table.Cell(1, Column::AxisY), std::string("1"));
    QTest::mouseClick(w.cmdAxisDown, Qt::LeftButton);
    QTest::mouseClick(w.cmdAxisDown, Qt::LeftButton);
    QCOMPARE(w.txtY->text(), QStringLiteral("-1"));
    QCOMPARE(w.State().PicTop, 152 + 1);

    const auto before = w.Canvas().ColorAt(120, 120);
    QTest::mouseClick(w.chkPallet, Qt::LeftButton);
    QCOMPARE(f.Table.Cell(1, Column::PalType), std::string("1"));
    QCOMPARE(w.Canvas().ColorAt(120, 120), before);
    w.chkPallet->setChecked(false);  // set from code, as SelectList does: written back alike
    QCOMPARE(f.Table.Cell(1, Column::PalType), std::string("0"));
    QVERIFY(f.Services.Box.Shown.empty());
}

void FrmPcxTest::emptyTableWritesNothing() {
    Fixture f;
    FrmPcx& w = f.Window;
    QTest::mouseClick(w.cmdAxisUp, Qt::LeftButton);
    QCOMPARE(w.txtY->text(), QStringLiteral("0"));
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QVERIFY(f.Services.Files.Shown.empty());
    w.txtItem->setText(QStringLiteral("a"));
    QCOMPARE(f.Services.Box.Shown.size(), size_t{1});
    w.txtItem->setText(QStringLiteral("4"));
    QCOMPARE(f.Services.Box.Shown.size(), size_t{1});
}

void FrmPcxTest::changePcxAndRefusedPicture() {
    Fixture f;
    f.AddRow();
    FrmPcx& w = f.Window;
    test::TempDir dir;
    test::WriteFile(dir / "new.pcx", test::MakePcx(7, 5, 3));
    auto refused = test::MakePcx(4, 4, 1);
    refused[2] = 0;  // Encoding 0
    test::WriteFile(dir / "bad.pcx", refused);

    f.Services.Files.Cancel();
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QCOMPARE(f.Table.Cell(1, Column::PcxPath), std::string());
    const auto& setup = f.Services.Files.Shown.at(0);
    QCOMPARE(setup.Title, std::string("Select PCX File"));
    QCOMPARE(setup.Filter, std::string("Pcx Files (*.pcx|*.pcx|"));
    QCOMPARE(setup.FileName, std::string("USER.pcx"));
    QCOMPARE(setup.Flags, 4);
    QVERIFY(setup.InitialFolder.empty());
    QVERIFY(setup.DialogMode == platform::FileDialogSetup::Mode::Open);

    f.Services.Files.Choose(dir / "new.pcx");
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QCOMPARE(f.Table.Cell(1, Column::PcxPath), dir.Path());
    QCOMPARE(f.Table.Cell(1, Column::PcxName), std::string("new.pcx"));
    QCOMPARE(w.State().PcxPixels.Columns(), 8);  // 7 wide, padded to 8
    QCOMPARE(w.State().PcxPixels.Lines(), 5);
    QCOMPARE(w.scrlH->maximum(), 7);
    QCOMPARE(f.Table.Cell(1, Column::GroupNo), std::string("5"));

    f.Services.Files.Choose(dir / "bad.pcx");
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QCOMPARE(f.Services.Box.Shown.size(), size_t{1});
    const std::string& text = f.Services.Box.Shown[0].Text;
    QVERIFY(text.rfind(f.Ini.MsgPcxFormat, 0) == 0);
    QVERIFY(text.find(dir / "bad.pcx") != std::string::npos);
    QVERIFY(text.find("Encoding 0") != std::string::npos);
    // The row points at the refused file; the screen is empty: one cell, no bars to move.
    QCOMPARE(f.Table.Cell(1, Column::PcxName), std::string("bad.pcx"));
    QVERIFY(w.State().PcxBytes.empty());
    QCOMPARE(w.State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(w.scrlH->maximum(), 0);

    // A file that cannot be read at all ends the same way, with its own message.
    f.Services.Files.Choose(dir / "missing.pcx");
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QCOMPARE(f.Services.Box.Shown.size(), size_t{2});
    QVERIFY(f.Services.Box.Shown[1].Text.find("missing.pcx") != std::string::npos);
    QCOMPARE(w.State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(f.Services.Files.Unexpected, 0);
}

void FrmPcxTest::focusStaysInABoxWithANonNumber() {
    Fixture f;
    f.AddRow();
    FrmPcx& w = f.Window;
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
    w.txtGroup->setFocus();
    QTest::keyClicks(w.txtGroup, "x");
    QTest::keyClick(w.txtGroup, Qt::Key_Tab);  // leaving: the message, and the focus comes back
    QCOMPARE(f.Services.Box.Shown.size(), size_t{1});
    QCOMPARE(QApplication::focusWidget(), w.txtGroup);
    QCOMPARE(f.Table.Cell(1, Column::GroupNo), std::string("5"));
    w.txtGroup->setText(QStringLiteral("12"));
    QTest::keyClick(w.txtGroup, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w.txtItem);
    QCOMPARE(f.Table.Cell(1, Column::GroupNo), std::string("12"));
    QTest::keyClicks(w.txtItem, "z");  // "0z": message, focus kept in txtItem
    QCOMPARE(f.Services.Box.Shown.size(), size_t{2});
    QCOMPARE(QApplication::focusWidget(), w.txtItem);
}

QTEST_MAIN(FrmPcxTest)
#include "FrmPcxTest.moc"
