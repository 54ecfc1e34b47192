// frmPCX on real widgets, offscreen, for what only the widgets show: the scroll bars'
// nested change handling, the zoom moments, focus and the number boxes, drawing under the
// covering controls, and a refused picture.
#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QtTest>

#include "config/AppIni.h"
#include "formats/PcxEncode.h"
#include "preview/Pallet.h"
#include "preview/ui/FrmPcx.h"
#include "support/PcxImages.h"
#include "support/ScriptedDialogs.h"
#include "support/TempDir.h"
#include "support/TestData.h"

using namespace tarvolin;

namespace {

// A preview window over a table of one row (once AddRow ran), as the main window holds it.
struct Fixture {
    SpriteTable Table;
    int SelectedRow = 0;
    AppIni Ini = DefaultAppIni();
    test::ScriptedMessageBox Box;
    int ChangePcxClicks = 0;
    FrmPcx Window{PreviewHost{Table, SelectedRow, Ini, Box, [this] { ++ChangePcxClicks; }}};

    template <class W = QLineEdit>
    W* Find(const char* name) {
        return Window.findChild<W*>(QString::fromLatin1(name));
    }
    void AddRow() {
        // SortNo, GroupNo, ItemNo, PalType, SortKey, PPos, PcxName, AxisX, AxisY, PcxPath
        Table.Assign({SpriteRow{{"01", "5", "0", "0", "", "0", "x_5-0.pcx", "0", "0", ""}}});
        SelectedRow = 1;
    }
    static SpriteRow RowAt(int x, int y) {
        return SpriteRow{{"01", "5", "0", "0", "", "0", "x.pcx", std::to_string(x), std::to_string(y), ""}};
    }
    // `pcx` shown as the only sprite of an SFF, for `row`.
    void Show(std::vector<uint8_t> pcx, const SpriteRow& row) {
        SffState sff;
        sff.SffBytes = std::move(pcx);
        sff.Subfiles.resize(1);
        sff.Subfiles[0].DataEnd = static_cast<int32_t>(sff.SffBytes.size()) - 1;
        Window.ShowSffRow(row, sff, 0, "test.sff, P.Pos 0");
    }
    // A picture of `columns` x `lines` cells from a header and one byte of data (the cells
    // are all 0).
    void ShowBlank(uint16_t columns, uint16_t lines, int x, int y) {
        Show(test::PcxImage(uint16_t(columns - 1), uint16_t(lines - 1), columns, {0}), RowAt(x, y));
    }
    // A picture of zeros whose colour 0 is `rgb`.
    void ShowColour0(int w, int h, uint32_t rgb, int x, int y) {
        Palette pal{};
        pal[0] = uint8_t(rgb >> 16), pal[1] = uint8_t(rgb >> 8), pal[2] = uint8_t(rgb);
        Show(EncodePcx(w, h, std::vector<uint8_t>(size_t(w * h), 0), pal), RowAt(x, y));
    }
    std::string Cell(Column c) const { return Table.Cell(1, c); }
    QString Placement() {  // the horizontal bar and where marker and sprite stand
        const PreviewState& s = Window.State();
        const QScrollBar* h = Find<QScrollBar>("scrlH");
        return QString("max %1 value %2 last %3 axis %4 left %5")
            .arg(h->maximum()).arg(h->value()).arg(s.LastScrlH).arg(s.AxisScreenX).arg(s.PicLeft);
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

}  // namespace

class FrmPcxTest : public QObject {
    Q_OBJECT
private slots:
    void scrollBarPlacement();
    void zoomSliderAndBox();
    void controlsHideWhatSpills();
    void backgroundBoxesAndReset();
    void numberBoxes();
    void groupBoxLeftForAnotherWindow();
    void arrowButtonsAndPalletBox();
    void refusedPictureKeepsTheRowsNumbers();
};

void FrmPcxTest::scrollBarPlacement() {
    Fixture fits;
    fits.ShowBlank(100, 10, 0, 0);  // value 99 - Fix(108 / 217 * 99) = 50
    QCOMPARE(fits.Placement(), "max 99 value 50 last 50 axis 108 left 108");
    fits.Find<QScrollBar>("scrlH")->setValue(51);  // one step right: marker and sprite one pixel left
    QCOMPARE(fits.Placement(), "max 99 value 51 last 51 axis 107 left 107");

    Fixture f;
    f.ShowBlank(301, 10, 150, 0);  // reaches past the left edge: 300 - (150 - 108)
    QCOMPARE(f.Placement(), "max 300 value 258 last 258 axis 108 left -42");
    f.Find<QScrollBar>("scrlH")->setValue(260);
    QCOMPARE(f.Window.State().AxisScreenX, 106);
    // Maximum 200 pushes the value from 260 down to 200: the marker moves 60 right, to 166,
    // where the sprite fits and the bar is placed from the marker: 200 - Fix(166 / 217 * 200).
    f.ShowBlank(201, 10, 150, 0);
    QCOMPARE(f.Placement(), "max 200 value 48 last 48 axis 166 left 16");
    f.ShowBlank(1, 1, 0, 0);  // one cell: nothing to scroll
    QCOMPARE(f.Find<QScrollBar>("scrlV")->maximum(), 0);
}

void FrmPcxTest::zoomSliderAndBox() {
    Fixture f;
    auto* slider = f.Find<QSlider>("sldZoom");
    QLineEdit* box = f.Find("txtZoom");
    f.ShowBlank(101, 101, 0, 0);
    for (int zoom : {200, 300, 400}) {  // 300 -> 400 scales by 1.3333334 and still lands on 400
        slider->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(box->text() + " " + QString::number(f.Find<QScrollBar>("scrlH")->maximum()),
                 QString::number(zoom) + " " + QString::number(zoom));
    }
    // Back to 100 through the keyboard: the marker returns to (108, 152).
    f.Find<QScrollBar>("scrlH")->setValue(0);
    slider->setSliderPosition(100);
    ReleaseKey(slider, Qt::Key_Left);
    QCOMPARE(f.Window.State().AxisScreenX, 108);
    QCOMPARE(f.Find<QScrollBar>("scrlH")->maximum(), 100);

    for (const char* refused : {"abc", "99", "401"}) {
        box->setText(QString::fromLatin1(refused));
        LeaveBox(box);
        QCOMPARE(box->text(), QStringLiteral("100"));
        QCOMPARE(f.Box.Shown.back().Text, "100～400" + f.Ini.MsgRangeSuffix);
    }
    box->setText(QStringLiteral("115"));
    LeaveBox(box);
    QCOMPARE(box->text() + " " + QString::number(slider->value()), QStringLiteral("120 120"));
    ReleaseKey(slider, Qt::Key_Tab);  // a key release on the slider snaps it to 100
    QCOMPARE(box->text(), QStringLiteral("100"));
    QCOMPARE(f.Box.Shown.size(), size_t{3});
}

void FrmPcxTest::controlsHideWhatSpills() {
    Fixture f;
    f.ShowColour0(400, 300, 0xFF0000, 0, 0);  // red, larger than the area, top left on the marker
    const QImage shown = f.Window.grab().toImage();
    for (QPoint p : {QPoint(300, 200), QPoint(150, 230), QPoint(200, 190)}) {
        QCOMPARE(f.Window.Canvas().ColorAt(p.x(), p.y()), uint32_t{0x0000FF});  // drawn there...
        QVERIFY(shown.pixelColor(p) != QColor(255, 0, 0));                      // ...but covered
    }
    QCOMPARE(shown.pixelColor(150, 170), QColor(255, 0, 0));  // inside the picture area it shows
}

void FrmPcxTest::backgroundBoxesAndReset() {
    Fixture f;
    const PreviewCanvas& c = f.Window.Canvas();
    f.ShowColour0(1, 1, 0x00C800, -5, 0);  // the one green cell at (113, 152), clear of the marker
    QCOMPARE(c.ColorAt(110, 152), kBlack);  // open cross on black
    f.Find<QCheckBox>("chkBgWhite")->setChecked(true);
    QCOMPARE(c.ColorAt(217, 185), kWhite);
    QCOMPARE(c.ColorAt(110, 152), kBlack);  // solid cross on white
    QCOMPARE(c.ColorAt(113, 152), uint32_t{200 << 8});
    f.Find<QCheckBox>("chkBgDel")->setChecked(true);  // Hide BackColor: index 0 takes the area's colour
    QCOMPARE(c.ColorAt(113, 152), kWhite);

    // Initialize's reset paints the empty area in the background colour, the marker in its opposite.
    for (const bool white : {true, false}) {
        f.Find<QCheckBox>("chkBgWhite")->setChecked(white);
        f.Window.Reset();
        QCOMPARE(f.Window.State().PcxPixels.Cells.size(), size_t{1});
        QCOMPARE(c.ColorAt(0, 0), white ? kWhite : kBlack);
        QCOMPARE(c.ColorAt(107, 150), white ? kBlack : kWhite);
        QCOMPARE(f.Find("txtX")->text(), QStringLiteral("0"));
    }
}

void FrmPcxTest::numberBoxes() {
    Fixture f;
    f.AddRow();
    QLineEdit* group = f.Find("txtGroup");
    QLineEdit* item = f.Find("txtItem");
    f.Window.show();
    QApplication::setActiveWindow(&f.Window);
    QVERIFY(QTest::qWaitForWindowActive(&f.Window));
    // txtGroup acts only on leaving: a non-number brings the message then and keeps the focus.
    group->setFocus();
    QTest::keyClicks(group, "x");
    QVERIFY(f.Box.Shown.empty());
    QTest::keyClick(group, Qt::Key_Tab);
    QCOMPARE(f.Box.Shown.size(), size_t{1});
    QCOMPARE(f.Box.Shown[0].Text, f.Ini.MsgEnterNumber);
    QCOMPARE(QApplication::focusWidget(), group);
    QCOMPARE(f.Cell(Column::GroupNo), "5");
    group->setText(QStringLiteral("300"));
    QTest::keyClick(group, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), item);
    QCOMPARE(f.Cell(Column::GroupNo), "300");
    // The others act on every keystroke: a negative number brings the message after the
    // minus sign, then is taken; a keystroke leaving a non-number keeps the focus there.
    item->clear();
    QTest::keyClicks(item, "-3");
    QCOMPARE(f.Box.Shown.size(), size_t{3});  // the empty box, then "-"
    QCOMPARE(f.Cell(Column::ItemNo), "-3");
    QTest::keyClicks(item, "x");
    QCOMPARE(f.Cell(Column::ItemNo), "-3");
    QCOMPARE(QApplication::focusWidget(), item);
    // 1.5 in txtX: the cell holds 2, the box 1.5, and the sprite moves at once.
    f.Find("txtX")->setText(QStringLiteral("1.5"));
    QCOMPARE(f.Cell(Column::AxisX), "2");
    QCOMPARE(f.Find("txtX")->text(), QStringLiteral("1.5"));
    QCOMPARE(f.Window.State().PicLeft, 108 - 2);
}

void FrmPcxTest::groupBoxLeftForAnotherWindow() {
    Fixture f;
    f.AddRow();
    QWidget other;  // another window of the program, as the main window is
    other.show();
    f.Window.show();
    QApplication::setActiveWindow(&f.Window);
    f.Find("txtGroup")->setFocus();
    QTest::keyClicks(f.Find("txtGroup"), "12");
    QApplication::setActiveWindow(nullptr);  // another application takes the focus
    QCOMPARE(f.Cell(Column::GroupNo), "5");
    QApplication::setActiveWindow(&f.Window);
    QApplication::setActiveWindow(&other);
    QCOMPARE(f.Cell(Column::GroupNo), "12");
    QVERIFY(f.Box.Shown.empty());
}

void FrmPcxTest::arrowButtonsAndPalletBox() {
    Fixture f;
    const auto click = [&f](const char* name) { QTest::mouseClick(f.Find<QPushButton>(name), Qt::LeftButton); };
    click("cmdAxisUp");  // an empty table: the buttons do nothing, a box still refuses a non-number
    QCOMPARE(f.Find("txtY")->text(), QStringLiteral("0"));
    f.Find("txtItem")->setText(QStringLiteral("a"));
    QCOMPARE(f.Box.Shown.size(), size_t{1});
    f.AddRow();
    f.Find("txtX")->setText(QStringLiteral("1.5"));
    click("cmdAxisLeft");  // reads 1.5 as 2, writes 3
    QCOMPARE(f.Find("txtX")->text(), QStringLiteral("3"));
    QCOMPARE(f.Cell(Column::AxisX), "3");
    QCOMPARE(f.Window.State().PicLeft, 108 - 3);
    f.Find("txtX")->setText(QStringLiteral("0"));
    click("cmdAxisRight");
    QCOMPARE(f.Cell(Column::AxisX), "-1");
    click("cmdAxisDown");
    QCOMPARE(f.Cell(Column::AxisY), "-1");
    QCOMPARE(f.Window.State().PicTop, 152 + 1);

    QTest::mouseClick(f.Find<QCheckBox>("chkPallet"), Qt::LeftButton);
    QCOMPARE(f.Cell(Column::PalType), "1");
    f.Find<QCheckBox>("chkPallet")->setChecked(false);  // set from code, as showing a row does: written alike
    QCOMPARE(f.Cell(Column::PalType), "0");
    // A PalType other than 0 or 1 leaves the box as it is, so showing the row keeps the cell.
    f.Find<QCheckBox>("chkPallet")->setChecked(true);
    f.Table.SetCell(1, Column::PalType, "7");
    f.Show(test::PcxImage(0, 0, 2, {0}), f.Table.Row(1));
    QCOMPARE(f.Cell(Column::PalType), "7");
    click("cmdChangePCX");
    QCOMPARE(f.ChangePcxClicks, 1);
    QCOMPARE(f.Box.Shown.size(), size_t{1});
}

void FrmPcxTest::refusedPictureKeepsTheRowsNumbers() {
    Fixture f;
    test::TempDir dir;
    auto refused = test::MakePcx(4, 4, 1);
    refused[2] = 0;  // Encoding 0
    test::WriteFile(dir / "bad.pcx", refused);
    f.ShowBlank(50, 50, 0, 0);
    f.Window.ShowFileRow(Fixture::RowAt(7, 0), dir / "bad.pcx");
    QCOMPARE(f.Box.Shown.size(), size_t{1});
    const std::string& text = f.Box.Shown[0].Text;
    QVERIFY(text.rfind(f.Ini.MsgPcxFormat, 0) == 0);
    QVERIFY(text.find(dir / "bad.pcx") != std::string::npos && text.find("Encoding 0") != std::string::npos);
    // The empty screen, one cell with no bar to move, under the row's numbers.
    QCOMPARE(f.Window.State().PcxPixels.Cells.size(), size_t{1});
    QCOMPARE(f.Find<QScrollBar>("scrlH")->maximum(), 0);
    QCOMPARE(f.Find("txtX")->text(), QStringLiteral("7"));

    f.Window.ShowPictureFile(dir / "missing.pcx");  // unreadable: the same end, with its own message
    QVERIFY(f.Box.Shown.at(1).Text.find("missing.pcx") != std::string::npos);
    QCOMPARE(f.Window.State().PcxPixels.Cells.size(), size_t{1});
    f.Window.ShowPictureFile(dir / "bad.pcx");
    QCOMPARE(f.Box.Shown.size(), size_t{3});
}

QTEST_MAIN(FrmPcxTest)
#include "FrmPcxTest.moc"
