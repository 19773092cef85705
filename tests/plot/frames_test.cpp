#include "plot/frames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "plot/ranges.h"
#include "strings/string_table.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::RecordingSurface;
using testing::SurfaceCall;

std::vector<SurfaceCall> Vertical(const std::vector<SurfaceCall>& lines, bool vertical = true) {
  std::vector<SurfaceCall> found;
  for (const SurfaceCall& l : lines)
    if (vertical ? l.x1 == l.x2 : l.y1 == l.y2) found.push_back(l);
  return found;
}
std::vector<SurfaceCall> Horizontal(const std::vector<SurfaceCall>& lines) { return Vertical(lines, false); }

TEST(DragSteps, FirstMatchingRowWinsIncludingItsBound) {
  const std::tuple<double, double, double> cases[] = {
      {0.005, 0.0005, 0.002}, {0.01, 0.0005, 0.002}, {0.025, 0.001, 0.005}, {0.05, 0.001, 0.005},
      {0.1, 0.005, 0.01},     {0.2, 0.01, 0.05},     {1.0, 0.05, 0.1},      {2.0, 0.05, 0.25}};
  for (const auto& [cdMax, grid, label] : cases)
    EXPECT_EQ(std::make_pair(DragGridStep(cdMax), DragLabelStep(cdMax)), std::make_pair(grid, label)) << cdMax;
}

// Scale top and height; count, first and last of the vertical and of the
// horizontal grid lines; the axis lines, each as x1 y1 x2 y2.
std::vector<double> Summary(const RecordingSurface& s) {
  std::vector<double> summary = {s.ScaleTop(), s.ScaleHeight()};
  auto grid = s.Lines(kGridColor);
  for (const auto& lines : {Vertical(grid), Horizontal(grid)}) {
    summary.push_back(static_cast<double>(lines.size()));
    summary.push_back(lines.empty() ? 0 : std::round((lines[0].x1 + lines[0].y1) * 1e9) / 1e9);
    summary.push_back(lines.empty() ? 0 : std::round((lines.back().x1 + lines.back().y1) * 1e9) / 1e9);
  }
  for (const SurfaceCall& axis : s.Lines(kAxisColor))
    summary.insert(summary.end(), {axis.x1, axis.y1, axis.x2, axis.y2});
  return summary;
}

TEST(Frames, GridLinesAxesAndTheLinesRoundingPushesOutOrKeeps) {
  // Vertical lines stand at x with y1 = the top, horizontal ones at y with x1 = the left.
  RecordingSurface clAlfa, cmAlfa, transition, clCd;
  DrawClCdFrame(clCd, DefaultViews(PlotRanges{})[Graph::ClCd]);
  // Cl-Cd: drag lines every 0.001, 0.001 .. 0.024, and the Cl = 0 axis.
  EXPECT_EQ(Summary(clCd), (std::vector<double>{1.5, -2, 24, 1.501, 1.524, 19, -0.4, 1.4, 0, 0, 0.025, 0}));
  DrawClAlfaFrame(clAlfa, DefaultViews(PlotRanges{})[Graph::ClAlfa]);
  DrawCmAlfaFrame(cmAlfa, DefaultViews(PlotRanges{0.5, 0.0, 0.01, 30.0})[Graph::CmAlfa]);
  DrawTransitionFrame(transition, DefaultViews(PlotRanges{})[Graph::Blu]);
  EXPECT_EQ(clAlfa.calls[0].kind, CallKind::Clear);
  // Cl-Alfa: -10 .. 10, as 15 - 4 stops short of the border; -0.4 .. 1.3, as the
  // running sum reaches 1.4000000000000001, past ClMax - 0.1.
  EXPECT_EQ(Summary(clAlfa), (std::vector<double>{1.5, -2, 5, -10 + 1.5, 10 + 1.5, 18, -15 - 0.4, -15 + 1.3, -15, 0, 15,
                                                  0, 0, 1.5, 0, -0.5}));
  // Cm-Alfa: a fixed moment range; -0.35 .. 0.3999999999999999 keeps the line on the border.
  EXPECT_EQ(Summary(cmAlfa), (std::vector<double>{0.4, -0.8, 11, -25 + 0.4, 25 + 0.4, 16, -30 - 0.35, -30 + 0.4, -30, 0,
                                                  30, 0, 0, -0.4, 0, 0.4}));
  EXPECT_EQ(Summary(transition), (std::vector<double>{1.5, -2, 9, 0.1 + 1.5, 0.9 + 1.5, 19, -0.4, 1.4, 0, 0, 1, 0}));
}

// The texts in the foreground, without their halos.
std::vector<SurfaceCall> Written(const RecordingSurface& s) { return s.Calls(CallKind::Print, &kAxisColor); }

// On a low graph (a small window) the title comes down to the drag labels:
// those it would meet are left out, tick and all, the others stay.
TEST(ClCdFrame, DrawsDragGridThenLabelsOnTicksAndTheTitleOnHalosLeavingOutLabelsItWouldMeet) {
  RecordingSurface surface;
  const GraphView view = DefaultViews(PlotRanges{})[Graph::ClCd];
  DrawClCdFrame(surface, view);
  EXPECT_TRUE(surface.Calls(CallKind::Print).empty()) << "texts come later, over the curves";

  DrawClCdTexts(surface, view, "NACA 4412", Language::English);
  const auto ticks = surface.Lines(kAxisColor), texts = Written(surface);
  ASSERT_EQ(ticks.size(), 1u + 4);
  ASSERT_EQ(texts.size(), 4u + 1);
  EXPECT_EQ(surface.Calls(CallKind::Print, &kGraphBackground).size(), 5u) << "each on its halo";
  std::string joined;
  for (int i = 0; i < 4; ++i) {
    joined += texts[i].text + "|";
    EXPECT_NEAR((texts[i].x1 + texts[i].x2) / 2, ticks[i + 1].x1, 1e-12) << "centred";
    EXPECT_TRUE(ticks[i + 1].y1 == -0.5 && ticks[i + 1].y2 > -0.5) << "ticks rise from the bottom edge";
    EXPECT_GT(texts[i].y2, ticks[i + 1].y2) << "the label's lower edge above its tick";
  }
  EXPECT_EQ(joined + texts[4].text, "0.005|0.010|0.015|0.020|Airfoil: NACA 4412");

  RecordingSurface low(560, 200);
  low.Scale(view.left, view.top, view.right, view.bottom);
  DrawClCdTexts(low, view, "NACA 4412", Language::English);
  const std::vector<SurfaceCall> kept = Written(low);
  const SurfaceCall& title = kept.back();
  EXPECT_EQ(kept.size(), 3u + 1);
  EXPECT_EQ(low.Lines(kAxisColor).size(), 3u);
  for (const SurfaceCall& label : kept)
    EXPECT_TRUE(&label == &title || label.x1 >= title.x2 || label.x2 <= title.x1 || label.y2 >= title.y1 ||
                label.y1 <= title.y2)
        << label.text;
}

TEST(Frames, AHugeTypedRangeEndsTheGridInsteadOfLoopingForever) {
  RecordingSurface surface(800, 600);
  DrawTransitionFrame(surface, DefaultViews(PlotRanges{1e300, -1e300, 0.025, 15})[Graph::Bll]);
  EXPECT_LE(surface.Lines(kGridColor).size(), 9u + 10000u);
}

}  // namespace
}  // namespace tavilo
