#include "plot/zoom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "plot/frames.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::RecordingSurface;
using testing::SurfaceCall;

const GraphView kClAlfa = DefaultViews(PlotRanges{})[Graph::ClAlfa];  // -15..15 x -0.5..1.5

// The pointer stays put; the unzoomed view spans 30 degrees and 2 of lift. The last three rows: forty wheel
// steps out, a hundred in, one huge step out.
TEST(Zoom, AboutThePointerWithinAThousandthAndTenTimesTheUnzoomedView) {
  const struct {
    double x, y, factor;
    int steps;
    double width, height;
  } cases[] = {{3, 0.7, 0.8, 1, 24, 1.6},  {-15, -0.5, 0.5, 1, 15, 1}, {14, 1.4, 1.25, 1, 37.5, 2.5},
               {0, 0, 0.01, 1, 0.3, 0.02}, {5, 1, 1.25, 40, 300, 20},  {5, 1, 0.8, 100, 0.03, 0.002},
               {5, 1, 1e9, 1, 300, 20}};
  for (const auto& c : cases) {
    GraphView view = kClAlfa;
    for (int k = 0; k < c.steps; ++k) view = ZoomAbout(view, kClAlfa, c.x, c.y, c.factor);
    SCOPED_TRACE(::testing::Message() << c.factor << " x" << c.steps);
    EXPECT_TRUE(view.zoomed);
    EXPECT_NEAR(view.Width(), c.width, c.width * 1e-9);
    EXPECT_NEAR(view.top - view.bottom, c.height, c.height * 1e-9);
    EXPECT_NEAR((c.x - view.left) / view.Width(), (c.x - kClAlfa.left) / 30, 1e-9);
    EXPECT_NEAR((view.top - c.y) / (view.top - view.bottom), (kClAlfa.top - c.y) / 2, 1e-9);
  }
  EXPECT_EQ(ZoomAbout(kClAlfa, kClAlfa, 0, 0, std::nan("")), kClAlfa);
}

// A rectangle, its corners in any order, becomes the view, at least a thousandth of the unzoomed one.
TEST(Zoom, ARectangleBecomesTheViewPanningMovesItAndBackAtTheUnzoomedViewItIsThatView) {
  const GraphView box = ZoomTo(kClAlfa, 10, 0.2, 4, 1.1);
  EXPECT_EQ((std::vector<double>{box.left, box.right, box.bottom, box.top}), (std::vector<double>{4, 10, 0.2, 1.1}));
  const GraphView panned = Pan(box, kClAlfa, -1, 0.5);
  EXPECT_EQ(std::make_pair(panned.left, panned.top), std::make_pair(3.0, 1.6));
  const GraphView speck = ZoomTo(kClAlfa, 2, 0.5, 2 + 1e-9, 0.5);
  EXPECT_NEAR(speck.Width(), 0.03, 1e-12);
  EXPECT_NEAR((speck.left + speck.right) / 2, 2, 1e-9);
  // Back at the unzoomed view it is that view, with its fixed grid.
  GraphView view = kClAlfa;
  for (int k = 0; k < 7; ++k) view = ZoomAbout(view, kClAlfa, 3.3, 0.71, 0.8);
  for (int k = 0; k < 7; ++k) view = ZoomAbout(view, kClAlfa, 3.3, 0.71, 1 / 0.8);
  EXPECT_EQ(view, kClAlfa) << "in and out by the same steps";
  for (int k = 0; k < 3; ++k) view = Pan(view, kClAlfa, 0.1 * 30, -0.1 * 2);
  EXPECT_TRUE(view.zoomed);
  for (int k = 0; k < 3; ++k) view = Pan(view, kClAlfa, -0.1 * 30, 0.1 * 2);
  EXPECT_EQ(view, kClAlfa) << "panned there and back";
}

std::vector<SurfaceCall> Numbers(const GraphView& view, double width, double height,
                                 AxisQuantity x = AxisQuantity::Alfa) {
  RecordingSurface surface(width, height);
  surface.Scale(view.left, view.top, view.right, view.bottom);
  DrawBottomNumbers(surface, view, x);
  DrawLeftNumbers(surface, view, AxisQuantity::Cl);
  std::vector<SurfaceCall> texts;
  for (const SurfaceCall& text : surface.Calls(CallKind::Print))
    if (text.color == kAxisColor) texts.push_back(text);  // the halos are white
  return texts;
}

TEST(AxisNumbers, TheFixedStepsUnzoomedWiderStepsWhenCrowdedNeverTouching) {
  std::vector<std::string> texts;
  for (const SurfaceCall& text : Numbers(kClAlfa, 360, 420)) texts.push_back(text.text);
  // Zero lift is the axis itself; the edges stay free.
  EXPECT_EQ(texts, (std::vector<std::string>{"-10\u00B0", "-5\u00B0", "0\u00B0", "5\u00B0", "10\u00B0", "0.5", "1.0"}));
  EXPECT_EQ(AdaptiveStep(0), 0);
  const GraphView clCd = DefaultViews(PlotRanges{})[Graph::ClCd];
  const std::pair<GraphView, AxisQuantity> cases[] = {
      {DefaultViews(PlotRanges{3.0, -1.5, 2.0, 90})[Graph::ClAlfa], AxisQuantity::Alfa},
      {kClAlfa, AxisQuantity::Alfa},
      {ZoomAbout(kClAlfa, kClAlfa, -14.9, -0.49, 1e-6), AxisQuantity::Alfa},
      {ZoomAbout(kClAlfa, kClAlfa, 14.9, 1.4, 1e6), AxisQuantity::Alfa},
      {ZoomAbout(clCd, clCd, 0.0123, 0.4, 1e-6), AxisQuantity::Cd},
      {ZoomAbout(clCd, clCd, 0.02, 1.0, 1e6), AxisQuantity::Cd}};
  for (const auto& [view, x] : cases) {
    const std::vector<SurfaceCall> labels = Numbers(view, 200, 160, x);
    EXPECT_GE(labels.size(), 4u);
    for (size_t a = 0; a < labels.size(); ++a) {
      const SurfaceCall& p = labels[a];
      EXPECT_TRUE(p.x1 >= view.left && p.x2 <= view.right && p.y2 >= view.bottom && p.y1 <= view.top) << p.text;
      for (size_t b = a + 1; b < labels.size(); ++b) {
        const SurfaceCall& q = labels[b];
        const bool apart = p.x2 < q.x1 || q.x2 < p.x1 || p.y1 < q.y2 || q.y1 < p.y2;
        EXPECT_TRUE(apart) << p.text << " / " << q.text;
      }
    }
  }
}

}  // namespace
}  // namespace tavilo
