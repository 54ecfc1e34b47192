// The zoom box's test, the stops, each pixel's cell, and where a view may start and is placed.
#include <gtest/gtest.h>

#include <utility>

#include "preview/ViewPlacement.h"
#include "preview/Zoom.h"

namespace tarvolin {
namespace {

TEST(Zoom, TextStopsAndCellsOfPixels) {
    for (const char* refused : {"abc", "24", "1601", "", "-", "1e10"}) EXPECT_FALSE(AcceptZoomText(refused)) << refused;
    using T = std::pair<const char*, int>;
    for (auto [text, zoom] : {T{"25", 25}, T{"1600", 1600}, T{"150.5", 150}, T{"24.5", 0}, T{" 333 ", 333}})
        EXPECT_EQ(AcceptZoomText(text).value_or(0), zoom) << text;
    using P = std::pair<int, int>;
    for (auto [zoom, up] : {P{100, 200}, P{150, 200}, P{1600, 1600}, P{25, 50}})
        EXPECT_EQ(StepZoom(zoom, +1), up) << zoom;
    for (auto [zoom, down] : {P{100, 50}, P{150, 100}, P{25, 25}, P{1600, 1200}})
        EXPECT_EQ(StepZoom(zoom, -1), down) << zoom;
    EXPECT_EQ(ZoomStops()[size_t(ZoomStopIndex(150))], 100);

    // Each pixel shows the cell whose block holds it; shrunk, the last cell that begins there.
    for (int zoom : {25, 33, 100, 150, 400, 1600})
        for (int64_t pixel = 0; pixel < 200; ++pixel) {
            const int64_t cell = CellAt(pixel, zoom);
            ASSERT_LE(ScreenOf(cell, zoom), pixel) << zoom;
            ASSERT_GT(ScreenOf(cell + 1, zoom), pixel) << zoom;
        }
    EXPECT_EQ(ScreenOf(-3, 150), -5);  // an axis left of the picture lies left of its edge
}

TEST(ViewPlacement, EveryPixelReachableMarkerInViewZoomAndAxisKeepTheirPoint) {
    struct Case { ViewLine Line; int64_t Home; };  // Home: a fresh showing's start, the marker at 4/5
    const Case cases[] = {
        {{400, 390, 100, 500}, -10},    // fits: the marker at home, all of the content in view
        {{400, 10, 100, 500}, -100},    // fits: pushed so that the content's end is in view
        {{100, 90, 100, 400}, -200},    // small: no further than the content's first pixel at the middle
        {{300, 299, 1600, 500}, 4300},  // larger: the canvas filled up to the content's end
        {{300, 30, 1600, 500}, 80},     // larger: the marker at home
        {{300, 5, 1600, 500}, 0},       // larger: the canvas filled from the content's first pixel
        {{1, -40, 25, 200}, -113},      // an axis left of the picture: the marker is content too
    };
    for (const Case& c : cases) {
        const ViewLine& l = c.Line;
        SCOPED_TRACE(testing::Message() << l.Cells << " cells, axis " << l.Axis << " at " << l.Zoom << "%");
        const Span content = ContentOf(l);
        const Span starts = StartsOf(l);
        EXPECT_EQ(starts.Min + l.Canvas / 2, content.Min);      // the first pixel reaches the middle...
        EXPECT_EQ(starts.Max + l.Canvas / 2, content.Max - 1);  // ...and so does the last
        const int64_t home = HomeStart(l, l.Canvas * 4 / 5);
        EXPECT_EQ(home, c.Home);
        EXPECT_GE(MarkerOf(l) - home, kMarkerReach);
        EXPECT_LT(MarkerOf(l) - home, l.Canvas - kMarkerReach);

        // Zooming keeps the cell under the anchor (to a cell), up to the starts' limits.
        ViewLine zoomed = l;
        zoomed.Zoom = StepZoom(l.Zoom, +1);
        const int64_t after = ZoomedStart(l, home, zoomed, 30);
        if (after > StartsOf(zoomed).Min && after < StartsOf(zoomed).Max) {
            EXPECT_NEAR(double(after + 30) / zoomed.Zoom, double(home + 30) / l.Zoom, 1.0);
        }
        // Moving the axis keeps the marker on its pixel: the picture moves under it.
        ViewLine moved = l;
        moved.Axis += 2;
        EXPECT_EQ(MarkerOf(moved) - AxisMovedStart(l, home, moved), MarkerOf(l) - home);
    }
    // Fit: the whole content at the largest zoom that holds it.
    EXPECT_EQ(FitZoom({640, 320, 100, 500}, {480, 470, 100, 400}), 78);
    EXPECT_EQ(FitZoom({8192, 0, 100, 500}, {1, 0, 100, 400}), kZoomMin);
    EXPECT_EQ(FitZoom({2, 0, 100, 500}, {2, 0, 100, 400}), kZoomMax);
}

}  // namespace
}  // namespace tarvolin
