#include "plot/page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/errors.h"
#include "plot/frames.h"
#include "plot/print_axes.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::RecordingSurface;
using testing::SurfaceCall;

TEST(PageMappings, NominalScalesTimesTheirFactors) {
  PageFactors unit;
  EXPECT_FLOAT_EQ(AlfaMM(10, unit), 25.0f);
  EXPECT_FLOAT_EQ(ClMM(1, unit), 50.0f);
  EXPECT_FLOAT_EQ(CmMM(0.1f, unit), -25.0f);  // positive moments go the other way
  EXPECT_FLOAT_EQ(CdMM(0.01f, unit), 50.0f);
  EXPECT_FLOAT_EQ(XcMM(1, unit), 50.0f);
  PageFactors half{0.5f, 2.0f};
  EXPECT_FLOAT_EQ(AlfaMM(10, half), 12.5f);
  EXPECT_FLOAT_EQ(CmMM(0.1f, half), -12.5f);
  EXPECT_FLOAT_EQ(XcMM(1, half), 25.0f);
  EXPECT_FLOAT_EQ(CdMM(0.01f, half), 100.0f) << "drag takes kd, not k";
  EXPECT_FLOAT_EQ(ClMM(1, half), 25.0f);
  // The widest drag range keeps 5 mm per 0.001: the page factor must shrink it.
  EXPECT_FLOAT_EQ(CdMM(2.0f, unit), 10000.0f);
}

TEST(PageMappings, DivideBeforeMultiplying) {
  // 0.3 / 0.1 is 2.9999999999999996 in double, unlike 0.3 * 50.
  float cl = 0.3f;
  EXPECT_EQ(ClMM(cl, PageFactors{}), static_cast<float>((double(cl) / 0.1) * 5 * 1.0f));
  float cd = 0.007f;
  EXPECT_EQ(CdMM(cd, PageFactors{}), static_cast<float>((double(cd) / 0.001) * 5 * 1.0f));
}

TEST(PageMappings, AResultBeyondSinglePrecisionIsAnOverflow) {
  float big = std::numeric_limits<float>::max();
  EXPECT_THROW(ClMM(big, PageFactors{}), OverflowError);
  EXPECT_THROW(CdMM(big, PageFactors{}), OverflowError);
  EXPECT_THROW(AlfaMM(big, PageFactors{1.0f, 1.0f}), OverflowError);
}

TEST(LayoutMaxima, EqualityReturnsTheSecondArgument) {
  EXPECT_EQ(sMax(2, 1), 2);
  EXPECT_EQ(sMax(1, 2), 2);
  float positiveZero = 0.0f, negativeZero = -0.0f;
  EXPECT_TRUE(std::signbit(sMax(positiveZero, negativeZero))) << "b on equality";
  EXPECT_EQ(nMax(-3, -3), -3);
  EXPECT_EQ(nMax(5, -7), 5);
}

TEST(Rectangle, FillDrawsASolidBoxWhateverTheFillStyleWas) {
  RecordingSurface s;
  s.SetFillStyle(kFillTransparent);
  s.calls.clear();
  Rectangle r;
  r.Top = 10;
  r.Left = 20;
  r.Width = 30;
  r.Height = 5;
  r.Fill(s, Color::Palette(12));
  ASSERT_EQ(s.calls.size(), 3u);
  EXPECT_EQ(s.calls[0].kind, CallKind::FillColor);
  EXPECT_EQ(s.calls[0].color, Color::Palette(12));
  EXPECT_EQ(s.calls[1].kind, CallKind::FillStyle);
  EXPECT_EQ(s.calls[1].value, kFillSolid);
  const SurfaceCall& box = s.calls[2];
  EXPECT_EQ(box.lineKind, LineKind::Box);
  EXPECT_EQ(box.x1, 20);
  EXPECT_EQ(box.y1, 10);
  EXPECT_EQ(box.x2, 50);
  EXPECT_EQ(box.y2, 15);
}

TEST(Rectangle, TranslateMovesWithoutResizing) {
  Rectangle r;
  r.Top = 1;
  r.Left = 2;
  r.Width = 3;
  r.Height = 4;
  r.Translate(0, 0);
  EXPECT_EQ(r.Top, 1);
  EXPECT_EQ(r.Left, 2);
  r.Translate(-2, 5);
  EXPECT_EQ(r.Left, 0);
  EXPECT_EQ(r.Top, 6);
  EXPECT_EQ(r.Width, 3);
  EXPECT_EQ(r.Height, 4);
}

// A page of 200 x 280 mm with its vertical axis growing upwards.
struct Page {
  RecordingSurface surface{800, 1120};
  Page() { surface.Scale(0, 280, 200, 0); }
  PageAxis Axis(double low, double high) {
    PageAxis axis;
    axis.page = &surface;
    axis.originX = 100;
    axis.originY = 150;
    axis.low = low;
    axis.high = high;
    axis.acrossLow = 100;
    axis.acrossHigh = 200;
    return axis;
  }
  std::vector<SurfaceCall> GridLines() { return surface.Lines(kPageGridColor); }
  std::vector<std::string> Labels() {
    std::vector<std::string> texts;
    for (const SurfaceCall& c : surface.Calls(CallKind::Print)) texts.push_back(c.text);
    return texts;
  }
};

TEST(PrintedAxes, AlfaAxisLineGridAndLabels) {
  Page page;
  AlfaAxis(page.Axis(-10, 10), false, true);
  auto widths = page.surface.Calls(CallKind::DrawWidth);
  ASSERT_GE(widths.size(), 2u);
  EXPECT_EQ(widths[0].value, 2);
  EXPECT_EQ(widths[1].value, 1);
  const SurfaceCall axisLine = page.surface.Calls(CallKind::Line)[0];
  EXPECT_EQ(axisLine.x1, 100 - 25);
  EXPECT_EQ(axisLine.x2, 100 + 25);
  EXPECT_EQ(axisLine.y1, 150);
  auto grid = page.GridLines();
  ASSERT_EQ(grid.size(), 21u) << "every degree, both ends included";
  EXPECT_EQ(grid[0].y1, 100);
  EXPECT_EQ(grid[0].y2, 200);
  EXPECT_EQ(page.Labels(), (std::vector<std::string>{"-10\u00B0", "-5\u00B0", "0\u00B0",
                                                     "5\u00B0", "10\u00B0", "Alfa"}));
  EXPECT_EQ(page.surface.ForeColor(), kAxisColor);
}

TEST(PrintedAxes, ZeroGridLineIsLeftOutOnRequestDespiteRounding) {
  Page page;
  ClAxis(page.Axis(-0.5, 1.5), true, true);
  auto grid = page.GridLines();
  EXPECT_EQ(grid.size(), 20u);  // 21 steps of 0.1 less the one at 0
  for (const SurfaceCall& line : grid) EXPECT_GT(std::fabs(line.y1 - 150), 1.0);
  EXPECT_EQ(page.Labels(), (std::vector<std::string>{"-0.5", "0.0", "0.5", "1.0", "1.5", "Cl"}));
}

TEST(PrintedAxes, NoGridWithoutTheGridSwitch) {
  Page page;
  XcAxis(page.Axis(0, 1), false, false);
  EXPECT_TRUE(page.GridLines().empty());
  EXPECT_EQ(page.Labels().back(), "x/c");
}

TEST(PrintedAxes, DragAxisUsesTheScreenSteps) {
  Page page;
  CdAxis(page.Axis(0, 0.02), false, true);
  EXPECT_EQ(page.GridLines().size(), 21u);  // every 0.001
  EXPECT_EQ(page.Labels(),
            (std::vector<std::string>{"0.000", "0.005", "0.010", "0.015", "0.020", "Cd"}));
}

TEST(PrintedAxes, MomentLabelsCountDownAndStandLeftOfTheOrigin) {
  Page page;
  CmAxis(page.Axis(-0.1, 0.1), false, true);
  auto prints = page.surface.Calls(CallKind::Print);
  std::vector<std::string> labels = page.Labels();
  ASSERT_EQ(labels.size(), 12u);
  EXPECT_EQ(labels[0], "0.08");  // hundredths first, from the top down
  EXPECT_EQ(labels.back(), "Cm");
  EXPECT_EQ(std::count(labels.begin(), labels.end(), "0.10"), 1);
  EXPECT_EQ(std::count(labels.begin(), labels.end(), "0.00"), 1);
  for (size_t i = 0; i + 1 < prints.size(); ++i) {
    double centre = prints[i].x1 + page.surface.TextWidth(prints[i].text) / 2;
    EXPECT_NEAR(centre, 100 - kCmLabelOffset, 1e-9);
  }
  // Positive moments lie below the origin on the page.
  const SurfaceCall& first = prints[0];
  EXPECT_LT(first.y1, 150);
}

}  // namespace
}  // namespace tavilo
