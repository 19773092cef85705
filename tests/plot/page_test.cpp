#include "plot/page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/errors.h"
#include "plot/frames.h"
#include "plot/print_axes.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::RecordingSurface;
using testing::SurfaceCall;

TEST(PageMappings, NominalScalesTimesTheirFactors) {
  const PageFactors unit, half{0.5f, 2.0f};
  const struct {
    float (*map)(float, const PageFactors&);
    float value;
    float unitMM, halfMM;
  } cases[] = {
      {AlfaMM, 10, 25, 12.5f}, {ClMM, 1, 50, 25},       {CmMM, 0.1f, -25, -12.5f},  // positive moments go down
      {XcMM, 1, 50, 25},       {CdMM, 0.01f, 50, 100},  // drag takes kd, not k
      {CdMM, 2.0f, 10000, 20000},
  };
  for (const auto& c : cases) {
    EXPECT_FLOAT_EQ(c.map(c.value, unit), c.unitMM) << c.value;
    EXPECT_FLOAT_EQ(c.map(c.value, half), c.halfMM) << c.value;
  }
  // Divide before multiplying: 0.3 / 0.1 is 2.9999999999999996 in double, unlike 0.3 * 50.
  EXPECT_EQ(ClMM(0.3f, unit), static_cast<float>((double(0.3f) / 0.1) * 5));
  EXPECT_EQ(CdMM(0.007f, unit), static_cast<float>((double(0.007f) / 0.001) * 5));
  EXPECT_THROW(ClMM(std::numeric_limits<float>::max(), unit), OverflowError);
  EXPECT_THROW(CdMM(std::numeric_limits<float>::max(), unit), OverflowError);
}

// A moved rectangle fills its new place at its old size.
TEST(PageRectangle, MovedItFillsItsNewPlaceAtItsSize) {
  RecordingSurface surface;
  Rectangle box{10, 20, 30, -5};
  box.Translate(3, -4);
  box.Fill(surface, Color::Rgb(255, 255, 255));
  const std::vector<SurfaceCall> boxes = surface.Calls(CallKind::Line);
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].lineKind, LineKind::Box);
  EXPECT_EQ((std::vector<double>{boxes[0].x1, boxes[0].y1, boxes[0].x2, boxes[0].y2}),
            (std::vector<double>{23, 6, 53, 1}));
}

// A page of 200 x 280 mm with its vertical axis growing upwards, the origin
// at (100, 150), a frame from (60, 90) to (200, 200).
struct Page {
  RecordingSurface surface{800, 1120};
  Page() { surface.Scale(0, 280, 200, 0); }
  PageAxis Axis(double low, double high, bool horizontal = true) {
    return PageAxis{&surface, 100, 150, {}, low, high, 100, 200, 0, 0, horizontal ? 90.0 : 60.0};
  }
  std::vector<SurfaceCall> GridLines() { return surface.Lines(kPageGridColor); }
  std::vector<std::string> Labels() {
    std::vector<std::string> texts;
    for (const SurfaceCall& c : surface.Calls(CallKind::Print)) texts.push_back(c.text);
    return texts;
  }
};

// Labels and titles stand outside the frame edge, wherever the origin is.
TEST(PrintedAxes, GridCountsAndLabelsOutsideTheFrame) {
  const struct {
    void (*draw)(const PageAxis&, bool, bool);
    bool horizontal;
    double low, high, gridStep;
    bool skipZero, grid;
    size_t gridLines;
    std::vector<std::string> labels;
  } cases[] = {
      {AlfaAxis, true, -10, 10, 0, false, true, 21,
       {"-10\u00B0", "-5\u00B0", "0\u00B0", "5\u00B0", "10\u00B0", "Alfa"}},
      {AlfaAxis, true, -10, 10, 5, false, true, 5,
       {"-10\u00B0", "-5\u00B0", "0\u00B0", "5\u00B0", "10\u00B0", "Alfa"}},
      // 21 steps of 0.1 less the one at 0, despite rounding.
      {ClAxis, false, -0.5, 1.5, 0, true, true, 20, {"-0.5", "0.0", "0.5", "1.0", "1.5", "Cl"}},
      {CdAxis, true, 0, 0.02, 0, false, true, 21, {"0.000", "0.005", "0.010", "0.015", "0.020", "Cd"}},
      {XcAxis, true, 0, 1, 0, false, false, 0, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0", "x/c"}},
      // Hundredths first, from the top down, then the tenths.
      {CmAxis, false, -0.1, 0.1, 0, false, true, 11,
       {"0.08", "0.06", "0.04", "0.02", "-0.02", "-0.04", "-0.06", "-0.08", "0.10", "0.00", "-0.10", "Cm"}},
  };
  for (const auto& c : cases) {
    Page page;
    PageAxis axis = page.Axis(c.low, c.high, c.horizontal);
    axis.gridStep = c.gridStep;
    c.draw(axis, c.skipZero, c.grid);
    EXPECT_EQ(page.GridLines().size(), c.gridLines) << c.labels.back();
    for (const SurfaceCall& line : page.GridLines()) EXPECT_TRUE(!c.skipZero || std::fabs(line.y1 - 150) > 0.5);
    EXPECT_EQ(page.Labels(), c.labels);
    for (const SurfaceCall& text : page.surface.Calls(CallKind::Print))
      EXPECT_TRUE(c.horizontal ? text.y1 <= axis.labelEdge - kPageLabelGap : text.x2 <= axis.labelEdge - kPageLabelGap)
          << text.text;
  }
  Page page;
  AlfaAxis(page.Axis(-10, 10), false, true);
  auto widths = page.surface.Calls(CallKind::DrawWidth);
  EXPECT_EQ(widths.at(0).value * 10 + widths.at(1).value, 21);
  const SurfaceCall axisLine = page.surface.Calls(CallKind::Line)[0];
  EXPECT_EQ((std::vector<double>{axisLine.x1, axisLine.x2, axisLine.y1}), (std::vector<double>{75, 125, 150}));
  EXPECT_EQ(page.GridLines()[0].y1 + page.GridLines()[0].y2, 300);
  EXPECT_EQ(page.surface.ForeColor(), kAxisColor);
}

}  // namespace
}  // namespace tavilo
