// frmPCX on real widgets, offscreen, driven as a user would: scroll bars, zoom, the axis,
// the number boxes, pictures in their own colours, a dropped file, a refusal, the reset.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QtTest>
#include <set>

#include "formats/PcxEncode.h"
#include "preview/Pallet.h"
#include "preview/Zoom.h"
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
    std::vector<std::string> Dropped;
    std::vector<uint64_t> Runs;  // of each edit
    FrmPcx Window{PreviewHost{Table, SelectedRow, Ini, Box, [] {},
                              [this](int place, Column column, std::string text, uint64_t run) {
                                  Runs.push_back(run);
                                  Table.SetCell(place, column, std::move(text));
                              },
                              [this](const std::string& path) { Dropped.push_back(path); }}};
    QWidget& Area = *Window.findChild<QWidget*>(QStringLiteral("picArea"));

    Fixture() {
        Window.resize(640, 480);
        Window.show();
        QApplication::setActiveWindow(&Window);
        QVERIFY(QTest::qWaitForWindowActive(&Window));
    }
    template <class W = QLineEdit>
    W& Find(const char* name) {
        return *Window.findChild<W*>(QString::fromLatin1(name));
    }
    std::string Cell(Column c) const { return Table.Cell(1, c); }
    // SortNo, GroupNo, ItemNo, PalType, SortKey, PPos, PcxName, AxisX, AxisY, PcxPath
    static SpriteRow RowAt(int x, int y) {
        return {{"01", "5", "0", "0", "", "0", "x.pcx", std::to_string(x), std::to_string(y), ""}};
    }
    // `w` x `h`: the top line 1, the bottom line 3, the left column 4, the right column 5,
    // the rest 2; index i has the colour (40 i, 7, 0), 0 is black.
    static std::vector<uint8_t> Framed(int w, int h) {
        std::vector<uint8_t> px(size_t(w * h), 2);
        for (int y = 0; y < h; ++y) px[size_t(y * w)] = 4, px[size_t(y * w + w - 1)] = 5;
        for (int x = 0; x < w; ++x) px[size_t(x)] = 1, px[size_t((h - 1) * w + x)] = 3;
        Palette pal{};
        for (int i = 1; i <= 5; ++i) pal[size_t(3 * i)] = uint8_t(40 * i), pal[size_t(3 * i + 1)] = 7;
        return EncodePcx(w, h, px, pal);
    }
    // `pcx` shown as the only sprite of an SFF, for `row` at `place` (a row of the table).
    void Show(const std::vector<uint8_t>& pcx, SpriteRow row, int place = 1) {
        Table.Assign(std::vector<SpriteRow>(size_t(place), row));
        SelectedRow = place;
        SffState sff;
        sff.SffBytes = pcx;
        sff.Subfiles.emplace_back().DataEnd = static_cast<int32_t>(pcx.size()) - 1;
        Window.ShowSffRow(row, sff, 0, "test.sff, P.Pos 0");
    }
    void Enter(const char* box, const QString& text) {
        Find(box).setText(text);
        QTest::keyClick(&Find(box), Qt::Key_Return);
    }
    // The indices of Framed that the picture area shows.
    std::set<int> Seen() const {
        std::set<int> seen;
        const PreviewCanvas& c = Window.Canvas();
        for (int y = 0; y < c.Height(); ++y)
            for (int x = 0; x < c.Width(); ++x)
                if (const uint32_t p = c.ColorAt(x, y); (p >> 8 & 0xFF) == 7 && (p & 0xFF) % 40 == 0)
                    seen.insert(int(p & 0xFF) / 40);
        return seen;
    }
    QPoint Marker() const {
        const PreviewState& s = Window.State();
        return QPoint(int(MarkerOf(s.Across()) - s.View.Left), int(MarkerOf(s.Down()) - s.View.Top));
    }
    std::vector<uint32_t> Pixels() const {
        return {Window.Canvas().Data(), Window.Canvas().Data() + Window.Canvas().Width() * Window.Canvas().Height()};
    }
    void Wheel(QPoint at, int notches, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWheelEvent wheel(at, Area.mapToGlobal(at), {}, QPoint(0, 120 * notches), Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Area, &wheel);
    }
};

}  // namespace

class FrmPcxTest : public QObject {
    Q_OBJECT
private slots:
    void scrollBarsArePositionsAtEveryZoom();
    void zoomBoxSliderWheelAndFit();
    void axisByDragKeysAndButtonsOneStepARun();
    void numberBoxesActOnEnterAndOnLeaving();
    void picturesInTheirOwnColoursAndTrueColour();
    void dropRefusalAndReset();
};

// Every pixel of a tall sprite is reached by the bars, one value always shows one part; zoomed
// back from the bottom right the picture still shows; the next row stands as first shown.
void FrmPcxTest::scrollBarsArePositionsAtEveryZoom() {
    Fixture f;
    f.Show(Fixture::Framed(120, 300), Fixture::RowAt(60, 299));
    const PreviewView first = f.Window.State().View;
    for (const char* zoom : {"400", "1600"}) {
        f.Enter("txtZoom", zoom);
        struct Ends { const char* Bar; int First; int Last; };  // the indices seen at each end
        for (Ends e : {Ends{"scrlV", 1, 3}, Ends{"scrlH", 4, 5}}) {
            auto& bar = f.Find<QScrollBar>(e.Bar);
            bar.setValue(bar.minimum());
            const auto top = f.Pixels();
            QVERIFY2(f.Seen().count(e.First), e.Bar);
            bar.setValue(bar.maximum());
            QVERIFY2(f.Seen().count(e.Last), e.Bar);
            bar.setValue(bar.minimum());
            QVERIFY2(f.Pixels() == top, e.Bar);
        }
    }
    // The wheel scrolls by three arrow steps a notch, as the bar shows.
    auto& v = f.Find<QScrollBar>("scrlV");
    const int before = v.value();
    f.Wheel(QPoint(10, 10), -1);
    QCOMPARE(v.value() - before, QApplication::wheelScrollLines() * v.singleStep());
    QCOMPARE(f.Window.State().View.Top, v.value());

    f.Enter("txtZoom", "400");
    for (const char* name : {"scrlH", "scrlV"}) f.Find<QScrollBar>(name).setValue(f.Find<QScrollBar>(name).maximum());
    f.Enter("txtZoom", "100");
    QVERIFY(!f.Seen().empty());
    f.Show(Fixture::Framed(120, 300), Fixture::RowAt(60, 299), 2);
    QCOMPARE(QPoint(f.Window.State().View.Left, f.Window.State().View.Top), QPoint(first.Left, first.Top));
    QCOMPARE(f.Marker(), QPoint(first.Width / 2, first.Height * 4 / 5));
}

void FrmPcxTest::zoomBoxSliderWheelAndFit() {
    Fixture f;
    f.Show(Fixture::Framed(120, 300), Fixture::RowAt(60, 299));
    const auto cellAt = [&f](QPoint p) {
        const PreviewView& v = f.Window.State().View;
        return QPoint(int(CellAt(v.Left + p.x(), v.Zoom)), int(CellAt(v.Top + p.y(), v.Zoom)));
    };
    // Refused: the range message once each, the zoom's own text back, the focus kept.
    for (const char* text : {"abc", "24", "1601"}) f.Enter("txtZoom", text);
    QCOMPARE(f.Box.Shown, std::vector<std::string>(3, "25～1600" + f.Ini.MsgRangeSuffix));
    QCOMPARE(f.Find("txtZoom").text(), QStringLiteral("100"));
    QCOMPARE(QApplication::focusWidget(), &f.Find("txtZoom"));
    // The box and the slider zoom about the middle, Ctrl+wheel about the mouse.
    const QPoint middle = f.Area.rect().center();
    const QPoint centre = cellAt(middle);
    f.Enter("txtZoom", "300");
    QCOMPARE(cellAt(middle), centre);
    f.Find<QSlider>("sldZoom").setValue(ZoomStopIndex(1600));
    QCOMPARE(f.Find("txtZoom").text() + " " + QString::number(f.Window.State().View.Zoom), "1600 1600");
    QCOMPARE(cellAt(middle), centre);
    const QPoint mouse(40, 50);
    const QPoint under = cellAt(mouse);
    f.Wheel(mouse, -1, Qt::ControlModifier);
    QCOMPARE(f.Window.State().View.Zoom, 1200);
    QCOMPARE(cellAt(mouse), under);

    // Fit: the whole picture, at each size of the window, until another zoom is chosen.
    f.Find<QPushButton>("cmdFit").click();
    QCOMPARE(f.Seen(), (std::set<int>{1, 2, 3, 4, 5}));
    const int fitted = f.Window.State().View.Zoom;
    f.Window.resize(800, 700);
    QTRY_VERIFY(f.Window.State().View.Zoom > fitted);
    QCOMPARE(f.Seen(), (std::set<int>{1, 2, 3, 4, 5}));
    f.Enter("txtZoom", "400");
    QVERIFY(!f.Find<QPushButton>("cmdFit").isChecked());
}

// The picture moves under the marker; a drag is one history step, a run of keys and buttons
// another, until the focus goes elsewhere.
void FrmPcxTest::axisByDragKeysAndButtonsOneStepARun() {
    Fixture f;
    f.Show(Fixture::Framed(40, 40), Fixture::RowAt(20, 30));
    f.Enter("txtZoom", "200");
    const QPoint marker = f.Marker();
    QTest::mousePress(&f.Area, Qt::LeftButton, {}, {100, 100});
    QTest::mouseMove(&f.Area, {110, 100});  // 10 pixels at 200 %: 5 cells
    QTest::mouseMove(&f.Area, {130, 92});
    QTest::mouseRelease(&f.Area, Qt::LeftButton, {}, {130, 92});
    QCOMPARE(f.Cell(Column::AxisX) + "," + f.Cell(Column::AxisY), "5,34");
    QCOMPARE(f.Find("txtX").text() + "," + f.Find("txtY").text(), "5,34");
    QCOMPARE(f.Marker(), marker);
    f.Area.setFocus();
    QTest::keyClick(&f.Area, Qt::Key_Left);
    QTest::keyClick(&f.Area, Qt::Key_Up, Qt::ShiftModifier);
    QTest::mouseClick(&f.Find<QPushButton>("cmdAxisRight"), Qt::LeftButton);
    f.Find("txtGroup").setFocus();  // another control ends the run
    f.Area.setFocus();
    QTest::keyClick(&f.Area, Qt::Key_Down);
    QCOMPARE(f.Cell(Column::AxisX) + "," + f.Cell(Column::AxisY), "5,43");
    QCOMPARE(f.Marker(), marker);
    // The drag's edits share one run, the keys and the button the next, the last key a third.
    std::vector<uint64_t> runs;
    std::unique_copy(f.Runs.begin(), f.Runs.end(), std::back_inserter(runs));
    QCOMPARE(runs.size() * 10 + std::set<uint64_t>(runs.begin(), runs.end()).size(), size_t{33});
    QVERIFY(!std::count(runs.begin(), runs.end(), 0));

    // The row shown again (after an undo) keeps the marker; the picture takes the row's axis.
    f.Table.SetCell(1, Column::AxisX, "7");
    f.Window.ShowSffRow(f.Table.Row(1), {}, -1, "test.sff, P.Pos 0");  // refused: the empty screen
    f.Show(Fixture::Framed(40, 40), f.Table.Row(1));
    const QPoint home = f.Marker();
    f.Table.SetCell(1, Column::AxisX, "9");
    f.Show(Fixture::Framed(40, 40), f.Table.Row(1));
    QCOMPARE(f.Marker(), home);
    QCOMPARE(f.Find("txtX").text(), QStringLiteral("9"));
}

void FrmPcxTest::numberBoxesActOnEnterAndOnLeaving() {
    Fixture f;
    f.Show(Fixture::Framed(40, 40), Fixture::RowAt(0, 0));
    struct Box { const char* Name; Column Col; };
    for (Box b : {Box{"txtGroup", Column::GroupNo}, Box{"txtItem", Column::ItemNo}, Box{"txtX", Column::AxisX},
                  Box{"txtY", Column::AxisY}}) {
        QLineEdit& box = f.Find(b.Name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, "12");
        QCOMPARE(f.Cell(b.Col), std::string(b.Col == Column::GroupNo ? "5" : "0"));  // typing writes nothing
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(f.Cell(b.Col), "12");
        QTest::keyClicks(&box, "x");  // a non-number: one message, the focus back, the cell kept
        QTest::keyClick(&box, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), &box);
        QCOMPARE(f.Cell(b.Col), "12");
        box.setText(QStringLiteral("1.5"));
        QTest::keyClick(&box, Qt::Key_Tab);
        QCOMPARE(f.Cell(b.Col) + " " + box.text().toStdString(), "2 2");
    }
    QCOMPARE(f.Runs, std::vector<uint64_t>(8, 0));  // "12" and "2" in each box: no runs
    QCOMPARE(f.Box.Shown, std::vector<std::string>(4, f.Ini.MsgEnterNumber));
    QCOMPARE(f.Window.State().View.AxisX * 10 + f.Window.State().View.AxisY, 22);
    // Another application taking the focus is no leaving.
    f.Find("txtGroup").setFocus();
    QTest::keyClicks(&f.Find("txtGroup"), "3");
    QApplication::setActiveWindow(nullptr);
    QCOMPARE(f.Cell(Column::GroupNo), "2");
}

void FrmPcxTest::picturesInTheirOwnColoursAndTrueColour() {
    Fixture f;
    test::TempDir dir;
    auto own = test::MakePcx(6, 4, 1, 9);
    test::WriteFile(dir / "own.pcx", own);
    // 24 bits, 4 x 1: the first and last pixels (9, 8, 7) are its background, the middle (1, 2, 3).
    test::WriteFile(dir / "rgb.pcx", test::PcxImage(3, 0, 4, {9, 1, 1, 9, 8, 2, 2, 8, 7, 3, 3, 7}, 3));
    f.Show(Fixture::Framed(40, 40), Fixture::RowAt(0, 0));
    auto& pallet = f.Find<QCheckBox>("chkPallet");
    const auto swatch17 = [&f] { return f.Find<QWidget>("picPalette").grab().toImage().pixel(4 + 7, 4 + 7); };
    // A file's picture in its own palette, whatever the sprite shown before it had.
    f.Window.ShowFileRow(Fixture::RowAt(0, 0), dir / "own.pcx");
    const PreviewState& s = f.Window.State();
    const uint8_t* palette = own.data() + own.size() - 768;
    QVERIFY(std::equal(s.PcxPalette.begin(), s.PcxPalette.end(), palette));
    const QPoint m = f.Marker();  // the axis (0, 0) is the picture's top-left cell
    QCOMPARE(f.Window.Canvas().ColorAt(m.x() + 4, m.y()), ActRGB(s, s.PcxPixels.At(4, 0), false));
    QCOMPARE(swatch17(), qRgb(palette[51], palette[52], palette[53]));
    QVERIFY(pallet.isEnabled());

    f.Window.ShowFileRow(Fixture::RowAt(0, 0), dir / "rgb.pcx");  // no palette: an empty swatch
    QVERIFY(!pallet.isEnabled());
    QCOMPARE(swatch17(), f.Find<QWidget>("picPalette").palette().color(QPalette::Mid).rgb());
    const QPoint at = f.Marker();  // cells 0 to 2 lie under the marker's cross, open on black
    const auto colour = [&](int cell) { return f.Window.Canvas().ColorAt(at.x() + cell, at.y()); };
    QCOMPARE(colour(1), uint32_t{0x030201});
    QCOMPARE(colour(3), uint32_t{0x070809});
    f.Find<QCheckBox>("chkBgWhite").setChecked(true);
    f.Find<QCheckBox>("chkBgDel").setChecked(true);
    QCOMPARE(colour(3), kWhite);
}

void FrmPcxTest::dropRefusalAndReset() {
    Fixture f;
    test::TempDir dir;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(dir / "dropped.pcx"))});
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&f.Window, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&f.Window, &drop);
    QCOMPARE(f.Dropped, std::vector<std::string>{dir / "dropped.pcx"});

    // A refused picture: its message naming the file, the empty screen, the row's numbers.
    auto refused = test::MakePcx(4, 4, 1);
    refused[2] = 0;  // Encoding 0
    test::WriteFile(dir / "bad.pcx", refused);
    for (const std::string& path : {dir / "bad.pcx", dir / "missing.pcx"}) {
        f.Show(Fixture::Framed(50, 50), Fixture::RowAt(0, 0));
        f.Window.ShowFileRow(Fixture::RowAt(7, 0), path);
        QVERIFY(!f.Window.State().HasPicture);
        QVERIFY(f.Seen().empty());
        QCOMPARE(f.Find("txtX").text(), QStringLiteral("7"));
        QVERIFY(f.Box.Shown.back().find(path) != std::string::npos);
    }
    QVERIFY(f.Box.Shown[0].starts_with(f.Ini.MsgPcxFormat + "\r\n" + dir / "bad.pcx" + "\r\nEncoding 0"));

    // Initialize: nothing shown, the boxes "0".
    f.Show(Fixture::Framed(50, 50), Fixture::RowAt(3, 0));
    f.Window.Reset();
    QVERIFY(!f.Window.State().HasPicture && f.Seen().empty());
    QCOMPARE(f.Find("txtX").text() + f.Find("txtGroup").text(), QStringLiteral("00"));
}

QTEST_MAIN(FrmPcxTest)
#include "FrmPcxTest.moc"
