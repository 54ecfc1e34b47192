// frmPCX on real widgets, offscreen, for what only the widgets show: the scroll bars'
// nested change handling, the zoom moments, focus and the number boxes, drawing under the
// covering controls, and a refused picture.
#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSlider>
#include <QtTest>

#include "formats/PcxEncode.h"
#include "preview/Pallet.h"
#include "preview/ui/FrmPcx.h"
#include "support/ScriptedDialogs.h"
#include "support/TempDir.h"
#include "support/TestData.h"

using namespace tarvolin;

namespace {

struct Fixture {
    SpriteTable Table;
    int SelectedRow = 0;
    AppIni Ini = DefaultAppIni();
    test::ScriptedMessageBox Box;
    int ChangePcxClicks = 0;
    FrmPcx Window{PreviewHost{Table, SelectedRow, Ini, Box, [this] { ++ChangePcxClicks; },
                              [this](int place, Column column, std::string text, uint64_t) {
                                  Table.SetCell(place, column, std::move(text));
                              },
                              {}}};

    template <class W = QLineEdit>
    W& Find(const char* name) {
        return *Window.findChild<W*>(QString::fromLatin1(name));
    }
    void Click(const char* name) { QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton); }
    std::string Cell(Column c) const { return Table.Cell(1, c); }
    // SortNo, GroupNo, ItemNo, PalType, SortKey, PPos, PcxName, AxisX, AxisY, PcxPath
    static SpriteRow RowAt(int x) { return SpriteRow{{"01", "5", "0", "0", "", "0", "x.pcx", std::to_string(x), "0", ""}}; }
    void AddRow() {
        Table.Assign({RowAt(0)});
        SelectedRow = 1;
    }
    // `columns` x `lines` cells of index 0, as wide as the header says.
    static std::vector<uint8_t> Blank(uint16_t columns, uint16_t lines) {
        auto pcx = test::PcxImage(uint16_t(columns - 1), uint16_t(lines - 1), columns);
        pcx.push_back(0);  // one byte of data: the cells stay 0
        return pcx;
    }
    // w x h cells of index 0 in the colour `rgb`.
    static std::vector<uint8_t> Filled(int w, int h, uint32_t rgb) {
        Palette pal{};
        pal[0] = uint8_t(rgb >> 16), pal[1] = uint8_t(rgb >> 8), pal[2] = uint8_t(rgb);
        return EncodePcx(w, h, std::vector<uint8_t>(size_t(w * h), 0), pal);
    }
    // `pcx` shown as the only sprite of an SFF, for `row`.
    void Show(std::vector<uint8_t> pcx, const SpriteRow& row) {
        SffState sff;
        sff.SffBytes = std::move(pcx);
        sff.Subfiles.resize(1);
        sff.Subfiles[0].DataEnd = static_cast<int32_t>(sff.SffBytes.size()) - 1;
        Window.ShowSffRow(row, sff, 0, "test.sff, P.Pos 0");
    }
    QString Placement() {  // the horizontal bar and where marker and sprite stand
        const QScrollBar& h = Find<QScrollBar>("scrlH");
        return QString("max %1 value %2 last %3 axis %4 left %5")
            .arg(h.maximum()).arg(h.value()).arg(Window.State().LastScrlH).arg(Window.State().AxisScreenX)
            .arg(Window.State().PicLeft);
    }
};

void Send(QWidget& to, QEvent&& event) { QApplication::sendEvent(&to, &event); }

}  // namespace

class FrmPcxTest : public QObject {
    Q_OBJECT
private slots:
    void scrollBarPlacement();
    void zoomSliderAndBox();
    void drawingUnderTheControlsAndTheBackgroundBoxes();
    void numberBoxesActOnKeysOrOnLeaving();
    void arrowButtonsPalletBoxAndChangePcx();
    void refusedPictureKeepsTheRowsNumbers();
};

void FrmPcxTest::scrollBarPlacement() {
    Fixture fits, f;
    fits.Show(Fixture::Blank(100, 10), Fixture::RowAt(0));  // value 99 - Fix(108 / 217 * 99) = 50
    QCOMPARE(fits.Placement(), "max 99 value 50 last 50 axis 108 left 108");
    fits.Find<QScrollBar>("scrlH").setValue(51);  // one step right: marker and sprite one pixel left
    QCOMPARE(fits.Placement(), "max 99 value 51 last 51 axis 107 left 107");

    f.Show(Fixture::Blank(301, 10), Fixture::RowAt(150));  // reaches past the left edge: 300 - (150 - 108)
    QCOMPARE(f.Placement(), "max 300 value 258 last 258 axis 108 left -42");
    f.Find<QScrollBar>("scrlH").setValue(260);
    QCOMPARE(f.Window.State().AxisScreenX, 106);
    // Maximum 200 pushes the value from 260 down to 200: the marker moves 60 right, to 166,
    // where the sprite fits and the bar is placed from the marker: 200 - Fix(166 / 217 * 200).
    f.Show(Fixture::Blank(201, 10), Fixture::RowAt(150));
    QCOMPARE(f.Placement(), "max 200 value 48 last 48 axis 166 left 16");
}

void FrmPcxTest::zoomSliderAndBox() {
    Fixture f;
    auto& slider = f.Find<QSlider>("sldZoom");
    QLineEdit& box = f.Find("txtZoom");
    auto& bar = f.Find<QScrollBar>("scrlH");
    f.Show(Fixture::Blank(101, 101), Fixture::RowAt(0));
    for (int zoom : {200, 300, 400}) {  // 300 -> 400 scales by 1.3333334 and still lands on 400
        slider.triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(box.text() + " " + QString::number(bar.maximum()), QString("%1 %1").arg(zoom));
    }
    bar.setValue(0);
    slider.setSliderPosition(100);
    Send(slider, QKeyEvent(QEvent::KeyRelease, Qt::Key_Left, Qt::NoModifier));
    QCOMPARE(QString::number(f.Window.State().AxisScreenX) + " " + QString::number(bar.maximum()), "108 100");

    // The box on leaving: refused with the range message and reset, or rounded to tens.
    for (const char* text : {"401", "115"}) {
        box.setText(QString::fromLatin1(text));
        Send(box, QFocusEvent(QEvent::FocusOut, Qt::TabFocusReason));
    }
    QCOMPARE(f.Box.Shown, std::vector<std::string>{"100～400" + f.Ini.MsgRangeSuffix});
    QCOMPARE(box.text() + " " + QString::number(slider.value()), QStringLiteral("120 120"));
    Send(slider, QKeyEvent(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier));  // any key release snaps it
    QCOMPARE(box.text(), QStringLiteral("100"));
}

void FrmPcxTest::drawingUnderTheControlsAndTheBackgroundBoxes() {
    Fixture spill, f;
    spill.Show(Fixture::Filled(400, 300, 0xFF0000), Fixture::RowAt(0));  // larger than the area
    const QImage shown = spill.Window.grab().toImage();
    for (QPoint p : {QPoint(300, 200), QPoint(150, 230), QPoint(200, 190)}) {
        QCOMPARE(spill.Window.Canvas().ColorAt(p.x(), p.y()), uint32_t{0x0000FF});  // drawn there...
        QVERIFY(shown.pixelColor(p) != QColor(255, 0, 0));                           // ...but covered
    }
    QCOMPARE(shown.pixelColor(150, 170), QColor(255, 0, 0));  // inside the picture area it shows

    const PreviewCanvas& c = f.Window.Canvas();
    f.Show(Fixture::Filled(1, 1, 0x00C800), Fixture::RowAt(-5));  // one green cell at (113, 152), clear of the marker
    f.Find<QCheckBox>("chkBgWhite").setChecked(true);
    QCOMPARE(c.ColorAt(0, 0), kWhite);
    QCOMPARE(c.ColorAt(113, 152), uint32_t{200 << 8});
    f.Find<QCheckBox>("chkBgDel").setChecked(true);  // Hide BackColor: index 0 takes the area's colour
    QCOMPARE(c.ColorAt(113, 152), kWhite);

    // Reset: the empty area in the background colour, the marker in its opposite.
    for (const bool white : {true, false}) {
        f.Find<QCheckBox>("chkBgWhite").setChecked(white);
        f.Window.Reset();
        QCOMPARE(f.Window.State().PcxPixels.Cells.size(), size_t{1});
        QCOMPARE(c.ColorAt(0, 0), white ? kWhite : kBlack);
        QCOMPARE(c.ColorAt(107, 150), white ? kBlack : kWhite);
        QCOMPARE(f.Find("txtX").text(), QStringLiteral("0"));
    }
}

void FrmPcxTest::numberBoxesActOnKeysOrOnLeaving() {
    Fixture f;
    f.AddRow();
    QLineEdit& group = f.Find("txtGroup");
    QLineEdit& item = f.Find("txtItem");
    f.Window.show();
    QApplication::setActiveWindow(&f.Window);
    QVERIFY(QTest::qWaitForWindowActive(&f.Window));
    // txtGroup acts on leaving only: a non-number brings the message then and keeps the focus.
    group.setFocus();
    QTest::keyClicks(&group, "x");
    QVERIFY(f.Box.Shown.empty());
    QTest::keyClick(&group, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &group);
    group.setText(QStringLiteral("300"));
    QTest::keyClick(&group, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &item);
    QCOMPARE(f.Cell(Column::GroupNo), "300");
    // The others act on each key: "-" is refused, "-3" taken, "-3x" refused, the focus kept.
    item.clear();
    QTest::keyClicks(&item, "-3x");
    QCOMPARE(f.Cell(Column::ItemNo), "-3");
    QCOMPARE(QApplication::focusWidget(), &item);
    // Another application taking the focus is no leaving (the main window is: MainWindowTest).
    group.setFocus();
    QTest::keyClicks(&group, "1");
    QApplication::setActiveWindow(nullptr);
    QCOMPARE(f.Cell(Column::GroupNo), "300");
    QCOMPARE(f.Box.Shown, std::vector<std::string>(4, f.Ini.MsgEnterNumber));  // "x", "", "-", "-3x"
}

void FrmPcxTest::arrowButtonsPalletBoxAndChangePcx() {
    Fixture f;
    f.Click("cmdAxisUp");  // an empty table: the buttons do nothing, a box still refuses a non-number
    f.Find("txtItem").setText(QStringLiteral("a"));
    QCOMPARE(f.Find("txtY").text() + " " + QString::number(f.Box.Shown.size()), "0 1");
    f.AddRow();
    // 1.5 in txtX: the cell holds 2, the box 1.5, the sprite moves; an arrow reads it as 2.
    f.Find("txtX").setText(QStringLiteral("1.5"));
    QCOMPARE(f.Cell(Column::AxisX) + " " + f.Find("txtX").text().toStdString(), "2 1.5");
    QCOMPARE(f.Window.State().PicLeft, 108 - 2);
    f.Click("cmdAxisLeft");
    QCOMPARE(f.Cell(Column::AxisX) + " " + f.Find("txtX").text().toStdString(), "3 3");
    for (const char* button : {"cmdAxisRight", "cmdAxisUp", "cmdAxisDown", "cmdAxisDown"}) f.Click(button);
    QCOMPARE(f.Cell(Column::AxisX) + " " + f.Cell(Column::AxisY), "2 -1");
    QCOMPARE(f.Window.State().PicTop, 152 + 1);

    auto& pallet = f.Find<QCheckBox>("chkPallet");
    f.Click("chkPallet");
    QCOMPARE(f.Cell(Column::PalType), "1");
    pallet.setChecked(false);  // set from code, as showing a row does: written alike
    QCOMPARE(f.Cell(Column::PalType), "0");
    // A PalType other than 0 or 1 leaves the box as it is, so showing the row keeps the cell.
    pallet.setChecked(true);
    f.Table.SetCell(1, Column::PalType, "7");
    f.Show(Fixture::Blank(1, 1), f.Table.Row(1));
    QCOMPARE(f.Cell(Column::PalType), "7");
    f.Click("cmdChangePCX");
    QCOMPARE(f.ChangePcxClicks, 1);
}

void FrmPcxTest::refusedPictureKeepsTheRowsNumbers() {
    Fixture f;
    test::TempDir dir;
    auto refused = test::MakePcx(4, 4, 1);
    refused[2] = 0;  // Encoding 0
    test::WriteFile(dir / "bad.pcx", refused);
    for (const std::string& path : {dir / "bad.pcx", dir / "missing.pcx"}) {
        f.Show(Fixture::Blank(50, 50), Fixture::RowAt(0));
        f.Window.ShowFileRow(Fixture::RowAt(7), path);  // the empty screen under the row's numbers
        QCOMPARE(f.Window.State().PcxPixels.Cells.size(), size_t{1});
        QCOMPARE(f.Find<QScrollBar>("scrlH").maximum(), 0);
        QCOMPARE(f.Find("txtX").text(), QStringLiteral("7"));
        QVERIFY(f.Box.Shown.back().find(path) != std::string::npos);
    }
    QVERIFY(f.Box.Shown[0].starts_with(f.Ini.MsgPcxFormat + "\r\n" + dir / "bad.pcx" + "\r\nEncoding 0"));
}

QTEST_MAIN(FrmPcxTest)
#include "FrmPcxTest.moc"
