// The zoom numbers: the drawing factor, the slider's snap and the zoom box's test, halves
// going to the even neighbour. The scroll arithmetic is tested on the real bars (FrmPcxTest).
#include <gtest/gtest.h>

#include <utility>

#include "preview/Zoom.h"

namespace tarvolin {
namespace {

TEST(Zoom, FactorSnapAndText) {
    using P = std::pair<int, int>;
    for (auto [zoom, factor] : {P{150, 2}, P{250, 2}, P{350, 4}}) EXPECT_EQ(ZoomFactorOf(zoom), factor) << zoom;
    for (auto [slider, snapped] : {P{150, 200}, P{250, 200}, P{130, 100}, P{350, 400}})
        EXPECT_EQ(SnapSliderZoom(slider), snapped) << slider;
    for (const char* refused : {"abc", "99", "401", "", "-", "70000"}) EXPECT_FALSE(AcceptZoomText(refused)) << refused;
    using T = std::pair<const char*, int>;
    for (auto [text, zoom] : {T{"100", 100}, T{"400", 400}, T{"104", 100}, T{"105", 100}, T{"115", 120}})
        EXPECT_EQ(AcceptZoomText(text), zoom) << text;
}

}  // namespace
}  // namespace tarvolin
