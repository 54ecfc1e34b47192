// intScr and zoomScr over model bars that run the change handling when their value or
// maximum changes, as real scroll bars do.
#include <gtest/gtest.h>

#include <algorithm>

#include "preview/ScrollPlacement.h"
#include "preview/Zoom.h"

namespace tarvolin {
namespace {

class ModelBar : public ScrollBarPort {
public:
    ModelBar(PreviewState& s, Bar bar) : state_(s), bar_(bar) {}
    int32_t Minimum() const override { return 0; }
    int32_t Maximum() const override { return max_; }
    int32_t Value() const override { return value_; }
    void SetMaximum(int32_t m) override {
        max_ = m;
        Change(std::min(value_, m));
    }
    void SetValue(int32_t v) override { Change(std::clamp(v, 0, max_)); }
    void Enable() override {}
    int Redraws = 0;

private:
    void Change(int32_t v) {
        if (v == value_) return;
        value_ = v;
        if (ApplyBarChange(state_, bar_, value_, max_)) ++Redraws;
    }
    PreviewState& state_;
    Bar bar_;
    int32_t max_ = 0;
    int32_t value_ = 0;
};

struct Screen {
    PreviewState State;
    ModelBar H{State, Bar::Horizontal};
    ModelBar V{State, Bar::Vertical};
    Screen(int columns, int lines) {
        State.PcxPixels.LastColumn = columns - 1;
        State.PcxPixels.LastLine = lines - 1;
    }
};

TEST(IntScr, SpriteThatFitsAndSpriteThatReachesPastTheLeftEdge) {
    Screen a(100, 10);
    intScr(a.State, {0, 0, 1}, a.H, a.V);
    EXPECT_EQ(a.H.Maximum(), 99);
    EXPECT_EQ(a.H.Value(), 50);  // 99 - Fix(108 / 217 * 99) = 99 - 49
    EXPECT_EQ(a.State.LastScrlH, 50);
    EXPECT_EQ(a.State.PicLeft, 108);
    EXPECT_EQ(a.H.Redraws, 0);  // last value set first: the change handling found nothing to do

    Screen b(301, 10);
    intScr(b.State, {150, 0, 1}, b.H, b.V);
    EXPECT_EQ(b.H.Value(), 258);  // 300 - (150 - 108)
    EXPECT_EQ(b.State.LastScrlH, 258);
    EXPECT_EQ(b.State.AxisScreenX, 108);  // the step away from 0 shifts nothing
    EXPECT_EQ(b.State.PicLeft, 108 - 150);
}

TEST(ChangeHandling, LoweringTheMaximumMovesTheMarkerByTheDifference) {
    Screen s(301, 10);
    intScr(s.State, {150, 0, 1}, s.H, s.V);
    s.H.SetValue(260);  // two to the right: marker and sprite two pixels left
    EXPECT_EQ(s.State.AxisScreenX, 106);
    s.State.PcxPixels.LastColumn = 200;
    // Maximum 200 pushes the value from 260 down to 200: the marker moves 60 right, to 166,
    // where the sprite then fits and the bar is placed from the marker: 200 - Fix(166/217*200).
    intScr(s.State, {150, 0, 1}, s.H, s.V);
    EXPECT_EQ(s.State.AxisScreenX, 106 + 60);
    EXPECT_EQ(s.H.Value(), 200 - 152);
    EXPECT_EQ(s.State.LastScrlH, 48);
    // A one-pixel sprite: maximum 0, no shift possible.
    Screen one(1, 1);
    intScr(one.State, {0, 0, 1}, one.H, one.V);
    EXPECT_EQ(one.H.Maximum(), 0);
    EXPECT_EQ(one.State.AxisScreenX, 108);
}

TEST(ZoomScr, RatiosInSinglePrecision) {
    Screen s(301, 301);
    intScr(s.State, {0, 0, 3}, s.H, s.V);
    s.State.LastZoom = 300;
    // 300 -> 400: a maximum of 900 becomes 1200, and every value is scaled by 4/3 in floats.
    zoomScr(s.State, 400, {0, 0, 4}, s.H, s.V);
    EXPECT_EQ(s.H.Maximum(), 1200);
    EXPECT_EQ(s.State.PicLeft, s.State.AxisScreenX);
    const float ratio = 400.0f / 300.0f;
    EXPECT_EQ(ratio, 1.3333334f);
    EXPECT_EQ(static_cast<int>(300.0f * ratio), 400);
}

TEST(Zoom, TextSliderAndFactor) {
    EXPECT_EQ(ZoomFactorOf(150), 2);
    EXPECT_EQ(ZoomFactorOf(250), 2);
    EXPECT_EQ(ZoomFactorOf(350), 4);
    EXPECT_EQ(SnapSliderZoom(150), 200);
    EXPECT_EQ(SnapSliderZoom(250), 200);
    EXPECT_EQ(SnapSliderZoom(130), 100);
    EXPECT_EQ(SnapSliderZoom(350), 400);
    for (const char* refused : {"abc", "99", "401", "", "-", "70000"}) EXPECT_FALSE(AcceptZoomText(refused)) << refused;
    EXPECT_EQ(AcceptZoomText("100"), 100);
    EXPECT_EQ(AcceptZoomText("400"), 400);
    EXPECT_EQ(AcceptZoomText("104"), 100);
    EXPECT_EQ(AcceptZoomText("105"), 100);
    EXPECT_EQ(AcceptZoomText("115"), 120);
}

}  // namespace
}  // namespace tarvolin
