#include "plot/print_axes.h"

#include <cmath>
#include <string>

#include "base/number_text.h"
#include "plot/frames.h"
#include "plot/ranges.h"
#include "plot/steps.h"

namespace tavilo {

namespace {

using Mapping = float (*)(float, const PageFactors&);

struct AxisStyle {
  bool horizontal;
  Mapping map;
  double gridStep;
  const char* pattern;
  const char* suffix;
  const char* title;
};

double PagePosition(const PageAxis& axis, const AxisStyle& style, double value) {
  double origin = style.horizontal ? axis.originX : axis.originY;
  return origin + style.map(static_cast<float>(value), axis.factors);
}

// A grid line across the graph at `along` on the axis: vertical for a
// horizontal axis.
void GridLine(DrawingSurface& page, bool horizontalAxis, double along, double from, double to) {
  if (horizontalAxis)
    page.Line(along, from, along, to);
  else
    page.Line(from, along, to, along);
}

void DrawAxisLineAndGrid(const PageAxis& axis, const AxisStyle& style, bool skipZeroGrid, bool gridShow) {
  DrawingSurface& page = *axis.page;
  double across = style.horizontal ? axis.originY : axis.originX;
  page.SetDrawWidth(2);
  double a = PagePosition(axis, style, axis.low);
  double b = PagePosition(axis, style, axis.high);
  if (style.horizontal)
    page.Line(a, across, b, across);
  else
    page.Line(across, a, across, b);
  page.SetDrawWidth(1);
  if (!gridShow) return;
  page.SetForeColor(kPageGridColor);
  const double step = axis.gridStep > 0 ? axis.gridStep : style.gridStep;
  ForEachStep(axis.low, step, axis.high + step / 2, [&](double v) {
    // The running sum misses 0 by a rounding error, so "at 0" means within a
    // thousandth of a step.
    if (skipZeroGrid && std::fabs(v) < step / 1000) return;
    GridLine(page, style.horizontal, PagePosition(axis, style, v), axis.acrossLow, axis.acrossHigh);
  });
  page.SetForeColor(kAxisColor);
}

std::string LabelText(double value, const AxisStyle& style) {
  return FormatNumber(value, style.pattern) + style.suffix;
}

// Horizontal axes: labels centred under their ticks. Vertical axes: labels
// right-aligned left of the edge, centred on their ticks' height.
void DrawLabel(const PageAxis& axis, const AxisStyle& style, double value) {
  DrawingSurface& page = *axis.page;
  std::string text = LabelText(value, style);
  double pos = PagePosition(axis, style, value);
  if (style.horizontal) {
    page.SetCurrentX(pos - page.TextWidth(text) / 2);
    page.SetCurrentY(axis.labelEdge - HorizontalLabelGap(page));
  } else {
    page.SetCurrentX(axis.labelEdge - kPageLabelGap - page.TextWidth(text));
    page.SetCurrentY(pos - page.TextHeight(text) / 2);
  }
  page.Print(text);
}

// From the first multiple of the step, so that a wide step still labels 0.
void DrawLabels(const PageAxis& axis, const AxisStyle& style, double labelStep) {
  if (axis.labelStep > 0) labelStep = axis.labelStep;
  double first = std::ceil(axis.low / labelStep - 1e-9) * labelStep;
  ForEachStep(first, labelStep, axis.high + labelStep * 1e-6, [&](double v) { DrawLabel(axis, style, v); });
}

// The title centred on the axis's middle: below the labels of a horizontal
// axis, left of the labels of a vertical one, there halfway between the two
// labels nearest the middle, so that it never reads as one with a label
// ("Cl 0.5").
void DrawTitle(const PageAxis& axis, const AxisStyle& style, double labelStep) {
  DrawingSurface& page = *axis.page;
  double middle = (PagePosition(axis, style, axis.low) + PagePosition(axis, style, axis.high)) / 2;
  if (!style.horizontal) {
    const double between = (std::round((axis.low + axis.high) / 2 / labelStep) + 0.5) * labelStep;
    if (between < axis.high) middle = PagePosition(axis, style, between);
  }
  if (style.horizontal) {
    page.SetCurrentX(middle - page.TextWidth(style.title) / 2);
    page.SetCurrentY(axis.labelEdge - HorizontalLabelGap(page) + page.TextHeight("0") * 1.2);
  } else {
    double labelWidth = page.TextWidth(LabelText(-std::fmax(std::fabs(axis.low), std::fabs(axis.high)), style));
    page.SetCurrentX(axis.labelEdge - 2 * kPageLabelGap - labelWidth - page.TextWidth(style.title));
    page.SetCurrentY(middle - page.TextHeight(style.title) / 2);
  }
  page.Print(style.title);
}

void DrawAxis(const PageAxis& axis, const AxisStyle& style, double labelStep, bool skipZeroGrid, bool gridShow) {
  DrawAxisLineAndGrid(axis, style, skipZeroGrid, gridShow);
  DrawLabels(axis, style, labelStep);
  DrawTitle(axis, style, axis.labelStep > 0 ? axis.labelStep : labelStep);
}

constexpr AxisStyle kAlfa = {true, AlfaMM, 1.0, "0", "\u00B0", "Alfa"};
constexpr AxisStyle kCl = {false, ClMM, 0.1, "0.0", "", "Cl"};
constexpr AxisStyle kCm = {false, CmMM, 0.02, "0.00", "", "Cm"};
constexpr AxisStyle kXc = {true, XcMM, 0.1, "0.0", "", "x/c"};

bool OnTenth(double value) { return std::fabs(value * 10 - std::round(value * 10)) < 1e-6; }

}  // namespace

double HorizontalLabelGap(const DrawingSurface& page) {
  return std::fmax(kPageLabelGap, std::fabs(page.TextHeight("0")) / 2 + 0.5);
}

double HorizontalAxisDepth(const DrawingSurface& page) {
  return HorizontalLabelGap(page) + 2.2 * std::fabs(page.TextHeight("0"));
}

void AlfaAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow) {
  DrawAxis(axis, kAlfa, 5.0, skipZeroGrid, gridShow);
}

void ClAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow) {
  DrawAxis(axis, kCl, 0.5, skipZeroGrid, gridShow);
}

void CdAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow) {
  AxisStyle style = {true, CdMM, DragGridStep(axis.high), "0.000", "", "Cd"};
  DrawAxis(axis, style, DragLabelStep(axis.high), skipZeroGrid, gridShow);
}

void XcAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow) {
  DrawAxis(axis, kXc, 0.2, skipZeroGrid, gridShow);
}

// Moment labels count down from the top of the range: the tenths in one
// loop, the hundredths between them in another.
void CmAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow) {
  DrawAxisLineAndGrid(axis, kCm, skipZeroGrid, gridShow);
  const double coarse = axis.labelStep >= 0.1 ? axis.labelStep : 0.1;
  int count = 0;
  if (axis.labelStep < 0.1) {
    for (double v = axis.high; v >= axis.low - 0.01 && count < kMaxGridLines; v -= 0.02, ++count)
      if (!OnTenth(v)) DrawLabel(axis, kCm, v);
  }
  count = 0;
  for (double v = std::floor(axis.high / coarse + 1e-9) * coarse; v >= axis.low - coarse / 2 && count < kMaxGridLines;
       v -= coarse, ++count)
    DrawLabel(axis, kCm, v);
  DrawTitle(axis, kCm, axis.labelStep < 0.1 ? 0.02 : coarse);
}

}  // namespace tavilo
