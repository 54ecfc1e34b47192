// frmPCX on real widgets, offscreen: the window, the scroll and zoom sequences with their
// numbers, the zoom box, the background boxes, the number and arrow boxes, the palette box,
// Change PCX and a refused picture.
#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QtTest>

#include "config/AppIni.h"
#include "preview/Pallet.h"
#include "preview/ui/FrmPcx.h"
#include "support/PcxImages.h"
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
        // SortNo, GroupNo, ItemNo, PalType, SortKey, PPos, PcxName, AxisX, AxisY, PcxPath
        Table.Assign({SpriteRow{{"01", "5", "0", "0", "", "0", "x_5-0.pcx", "0", "0", ""}}});
        SelectedRow = 1;
    }
    // A picture of `columns` x `lines` cells from a header and one byte of data (the cells
    // are all 0).
    void Show(uint16_t columns, uint16_t lines, int x, int y) {
        Window.State().PcxBytes = test::PcxImage(uint16_t(columns - 1), uint16_t(lines - 1), columns, {0});
        Window.SetPcx();
        Window.PcxRle();
        Window.txtX->setText(QString::number(x));
        Window.txtY->setText(QString::number(y));
        Window.intScr();
        Window.ViewPCX();
    }
};

void LeaveBox(QWidget* box) {
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(box, &out);
}
void ReleaseKey(QWidget* w, Qt::Key key) {
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(w, &release);
}
std::string Cell(const Fixture& f, Column c) { return f.Table.Cell(1, c); }
QString Placement(FrmPcx& w) {  // the horizontal bar and where marker and sprite stand
    const PreviewState& s = w.State();
    return QString("max %1 value %2 last %3 axis %4 left %5")
        .arg(w.scrlH->maximum()).arg(w.scrlH->value()).arg(s.LastScrlH).arg(s.AxisScreenX).arg(s.PicLeft);
}

}  // namespace

class FrmPcxTest : public QObject {
    Q_OBJECT
private slots:
    void windowAndTabOrder();
    void scrollBarPlacement();
    void zoomStepsCarryTheRanges();
    void zoomBoxRules();
    void controlsHideWhatSpills();
    void backgroundBoxes();
    void numberBoxes();
    void arrowButtonsAndPalletBox();
    void emptyTableWritesNothing();
    void changePcxAndRefusedPicture();
};

void FrmPcxTest::windowAndTabOrder() {
    Fixture f;
    FrmPcx& w = f.Window;
    QCOMPARE(w.size(), QSize(344, 240));
    QCOMPARE(w.windowTitle(), QStringLiteral("Tarvolin - Screen"));
    QVERIFY(w.windowFlags() & Qt::CustomizeWindowHint);
    QVERIFY(!(w.windowFlags() & (Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint)));
    QCOMPARE(w.cmdAxisRight->iconSize(), QSize(13, 13));
    QCOMPARE(w.sldZoom->cursor().hotSpot(), QPoint(12, 1));
    QCOMPARE(w.cmdAxisUp->cursor().pixmap().size(), QSize(32, 32));
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

void FrmPcxTest::scrollBarPlacement() {
    Fixture fits;
    fits.Show(100, 10, 0, 0);  // value 99 - Fix(108 / 217 * 99) = 50
    QCOMPARE(Placement(fits.Window), "max 99 value 50 last 50 axis 108 left 108");
    fits.Window.scrlH->setValue(51);  // one step right: marker and sprite one pixel left
    QCOMPARE(Placement(fits.Window), "max 99 value 51 last 51 axis 107 left 107");

    Fixture f;
    f.Show(301, 10, 150, 0);  // reaches past the left edge: 300 - (150 - 108)
    QCOMPARE(Placement(f.Window), "max 300 value 258 last 258 axis 108 left -42");
    f.Window.scrlH->setValue(260);
    QCOMPARE(f.Window.State().AxisScreenX, 106);
    // Maximum 200 pushes the value from 260 down to 200: the marker moves 60 right, to 166,
    // where the sprite fits and the bar is placed from the marker: 200 - Fix(166 / 217 * 200).
    f.Show(201, 10, 150, 0);
    QCOMPARE(Placement(f.Window), "max 200 value 48 last 48 axis 166 left 16");
    f.Show(1, 1, 0, 0);  // one cell: nothing to scroll
    QCOMPARE(f.Window.scrlH->maximum(), 0);
    QCOMPARE(f.Window.scrlV->maximum(), 0);
}

void FrmPcxTest::zoomStepsCarryTheRanges() {
    Fixture f;
    FrmPcx& w = f.Window;
    f.Show(101, 101, 0, 0);
    QCOMPARE(w.scrlH->maximum(), 100);
    for (int zoom : {200, 300, 400}) {
        w.sldZoom->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(w.sldZoom->value(), zoom);
        QCOMPARE(w.txtZoom->text(), QString::number(zoom));
        QCOMPARE(w.State().LastZoom, zoom);
        // 300 -> 400 scales by 1.3333334 in single precision and still lands on 400.
        QCOMPARE(w.scrlH->maximum(), zoom);
    }
    QCOMPARE(w.State().PicLeft, w.State().AxisScreenX);
    // Back to 100 through the keyboard: the marker returns to (108, 152).
    w.State().AxisScreenX = 50;
    w.sldZoom->setSliderPosition(100);
    ReleaseKey(w.sldZoom, Qt::Key_Left);
    QCOMPARE(w.txtZoom->text(), QStringLiteral("100"));
    QCOMPARE(w.State().AxisScreenX, 108);
    QCOMPARE(w.scrlH->maximum(), 100);
}

void FrmPcxTest::zoomBoxRules() {
    Fixture f;
    FrmPcx& w = f.Window;
    const auto& shown = f.Services.Box.Shown;
    for (const char* refused : {"abc", "99", "401"}) {
        w.txtZoom->setText(QString::fromLatin1(refused));
        LeaveBox(w.txtZoom);
        QCOMPARE(w.txtZoom->text(), QStringLiteral("100"));
        QCOMPARE(shown.back().Text, "100～400" + f.Ini.MsgRangeSuffix);
        QCOMPARE(shown.back().Style, 0);
    }
    QCOMPARE(shown.size(), size_t{3});
    QCOMPARE(w.State().LastZoom, 100);
    w.txtZoom->setText(QStringLiteral("115"));
    LeaveBox(w.txtZoom);
    QCOMPARE(w.txtZoom->text(), QStringLiteral("120"));
    QCOMPARE(w.sldZoom->value(), 120);
    ReleaseKey(w.sldZoom, Qt::Key_Tab);  // a key release on the slider snaps it to a multiple of 100
    QCOMPARE(w.sldZoom->value(), 100);
    QCOMPARE(w.txtZoom->text(), QStringLiteral("100"));
    QCOMPARE(shown.size(), size_t{3});
}

void FrmPcxTest::controlsHideWhatSpills() {
    Fixture f;
    f.Window.State().PcxPalette[0] = 255;  // index 0 pure red, on a sprite larger than the area
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

void FrmPcxTest::backgroundBoxes() {
    Fixture f;
    FrmPcx& w = f.Window;
    const PreviewCanvas& c = w.Canvas();
    w.State().PcxPalette[1] = 200;  // index 0 green
    w.PalletSet();
    f.Show(1, 1, -5, 0);  // the one cell at (113, 152), clear of the marker
    QCOMPARE(c.ColorAt(217, 185), kBlack);
    QCOMPARE(c.ColorAt(110, 152), kBlack);  // open cross on black
    w.chkBgWhite->setChecked(true);
    QCOMPARE(w.State().BgColor, kWhite);
    QCOMPARE(c.ColorAt(217, 185), kWhite);
    QCOMPARE(c.ColorAt(110, 152), kBlack);  // solid cross on white
    QCOMPARE(c.ColorAt(113, 152), uint32_t{200 << 8});
    w.chkBgDel->setChecked(true);  // Hide BackColor: index 0 takes the area's colour
    QCOMPARE(c.ColorAt(113, 152), kWhite);
}

void FrmPcxTest::numberBoxes() {
    Fixture f;
    f.AddRow();
    FrmPcx& w = f.Window;
    const auto& shown = f.Services.Box.Shown;
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
    // txtGroup acts only on leaving: a non-number brings the message then and keeps the focus.
    w.txtGroup->setFocus();
    QTest::keyClicks(w.txtGroup, "x");
    QVERIFY(shown.empty());
    QTest::keyClick(w.txtGroup, Qt::Key_Tab);
    QCOMPARE(shown.size(), size_t{1});
    QCOMPARE(shown[0].Text, f.Ini.MsgEnterNumber);
    QCOMPARE(shown[0].Style, 48);
    QCOMPARE(QApplication::focusWidget(), w.txtGroup);
    QCOMPARE(Cell(f, Column::GroupNo), "5");
    w.txtGroup->setText(QStringLiteral("300"));
    QTest::keyClick(w.txtGroup, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w.txtItem);
    QCOMPARE(Cell(f, Column::GroupNo), "300");
    // The others act on every keystroke: a negative number brings the message after the
    // minus sign, then is taken; a keystroke leaving a non-number keeps the focus there.
    w.txtItem->clear();
    QTest::keyClicks(w.txtItem, "-3");
    QCOMPARE(shown.size(), size_t{3});  // the empty box, then "-"
    QCOMPARE(Cell(f, Column::ItemNo), "-3");
    QTest::keyClicks(w.txtItem, "x");
    QCOMPARE(shown.size(), size_t{4});
    QCOMPARE(Cell(f, Column::ItemNo), "-3");
    QCOMPARE(QApplication::focusWidget(), w.txtItem);
    w.txtItem->setText(QStringLiteral("70000"));  // no range check on the numbers
    QCOMPARE(Cell(f, Column::ItemNo), "70000");
    // 1.5 in txtX: the cell holds 2, the box 1.5, and the sprite moves at once.
    w.txtX->setText(QStringLiteral("1.5"));
    QCOMPARE(Cell(f, Column::AxisX), "2");
    QCOMPARE(w.txtX->text(), QStringLiteral("1.5"));
    QCOMPARE(w.State().PicLeft, 108 - 2);
}

void FrmPcxTest::arrowButtonsAndPalletBox() {
    Fixture f;
    f.AddRow();
    FrmPcx& w = f.Window;
    w.txtX->setText(QStringLiteral("1.5"));
    QTest::mouseClick(w.cmdAxisLeft, Qt::LeftButton);  // reads 1.5 as 2, writes 3
    QCOMPARE(w.txtX->text(), QStringLiteral("3"));
    QCOMPARE(Cell(f, Column::AxisX), "3");
    QCOMPARE(w.State().PicLeft, 108 - 3);
    w.txtX->setText(QStringLiteral("0"));
    QTest::mouseClick(w.cmdAxisRight, Qt::LeftButton);
    QCOMPARE(Cell(f, Column::AxisX), "-1");
    QTest::mouseClick(w.cmdAxisUp, Qt::LeftButton);
    QCOMPARE(Cell(f, Column::AxisY), "1");
    QTest::mouseClick(w.cmdAxisDown, Qt::LeftButton);
    QTest::mouseClick(w.cmdAxisDown, Qt::LeftButton);
    QCOMPARE(w.txtY->text(), QStringLiteral("-1"));
    QCOMPARE(w.State().PicTop, 152 + 1);

    const auto before = w.Canvas().ColorAt(120, 120);
    QTest::mouseClick(w.chkPallet, Qt::LeftButton);
    QCOMPARE(Cell(f, Column::PalType), "1");
    QCOMPARE(w.Canvas().ColorAt(120, 120), before);
    w.chkPallet->setChecked(false);  // set from code, as SelectList does: written back alike
    QCOMPARE(Cell(f, Column::PalType), "0");
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
    w.txtItem->setText(QStringLiteral("4"));
    QCOMPARE(f.Services.Box.Shown.size(), size_t{1});  // the message still comes for "a"
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
    auto changeTo = [&](const std::string& path) {
        path.empty() ? f.Services.Files.Cancel() : f.Services.Files.Choose(path);
        QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    };

    changeTo("");
    QCOMPARE(Cell(f, Column::PcxPath), "");
    const auto& setup = f.Services.Files.Shown.at(0);
    QCOMPARE(setup.Title, "Select PCX File");
    QCOMPARE(setup.Filter, "Pcx Files (*.pcx|*.pcx|");
    QCOMPARE(setup.FileName, "USER.pcx");
    QCOMPARE(setup.Flags, 4);
    QVERIFY(setup.InitialFolder.empty());
    QVERIFY(setup.DialogMode == platform::FileDialogSetup::Mode::Open);

    changeTo(dir / "new.pcx");
    QCOMPARE(Cell(f, Column::PcxPath), dir.Path());
    QCOMPARE(Cell(f, Column::PcxName), "new.pcx");
    QCOMPARE(w.State().PcxPixels.Columns(), 8);  // 7 wide, padded to 8
    QCOMPARE(w.scrlH->maximum(), 7);

    changeTo(dir / "bad.pcx");
    QCOMPARE(f.Services.Box.Shown.size(), size_t{1});
    const std::string& text = f.Services.Box.Shown[0].Text;
    QVERIFY(text.rfind(f.Ini.MsgPcxFormat, 0) == 0);
    QVERIFY(text.find(dir / "bad.pcx") != std::string::npos);
    QVERIFY(text.find("Encoding 0") != std::string::npos);
    // The row points at the refused file; the screen is empty: one cell, no bars to move.
    QCOMPARE(Cell(f, Column::PcxName), "bad.pcx");
    QVERIFY(w.State().PcxBytes.empty());
    QCOMPARE(w.State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(w.scrlH->maximum(), 0);

    changeTo(dir / "missing.pcx");  // unreadable: the same end, with its own message
    QCOMPARE(f.Services.Box.Shown.size(), size_t{2});
    QVERIFY(f.Services.Box.Shown[1].Text.find("missing.pcx") != std::string::npos);
    QCOMPARE(w.State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(f.Services.Files.Unexpected, 0);
}

QTEST_MAIN(FrmPcxTest)
#include "FrmPcxTest.moc"
