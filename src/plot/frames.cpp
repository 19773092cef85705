#include "plot/frames.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/number_text.h"
#include "plot/steps.h"
#include "plot/zoom.h"
#include "strings/string_table.h"

namespace tavilo {

// The grid ends stop short of the border on purpose: the outermost line would
// lie on the frame.
namespace {

// Labels side by side stand at least this many device units apart.
constexpr double kLabelGap = 6;

void StartFrame(DrawingSurface& surface, const GraphView& view) {
  surface.Clear();
  surface.Scale(view.left, view.top, view.right, view.bottom);
  surface.SetDrawWidth(1);
  surface.SetForeColor(kAxisColor);
}

void VerticalGrid(DrawingSurface& surface, double first, double step, double last, double top, double bottom) {
  ForEachStep(first, step, last, [&](double x) { surface.Line(x, top, x, bottom, kGridColor); });
}

void HorizontalGrid(DrawingSurface& surface, double first, double step, double last, double left, double right) {
  ForEachStep(first, step, last, [&](double y) { surface.Line(left, y, right, y, kGridColor); });
}

void AlfaGrid(DrawingSurface& surface, const GraphView& view) {
  VerticalGrid(surface, view.left + 5, 5, view.right - 4, view.top, view.bottom);
}

// Device units per value unit along each axis.
double PerUnitX(const DrawingSurface& s) { return std::fabs(s.Width() / s.ScaleWidth()); }
double PerUnitY(const DrawingSurface& s) { return std::fabs(s.Height() / s.ScaleHeight()); }

// The first of `base`, 2, 5, 10 ... times it at which labels `extent(step)`
// device units wide (or high) keep their gap; 0 for no base.
template <class Extent>
double ThinnedStep(double base, double perUnit, Extent extent) {
  if (!(base > 0) || !(perUnit > 0)) return 0;
  double step = base;
  for (int k = 0; k < 60 && step * perUnit < extent(step) + kLabelGap; ++k) step = NextLabelStep(base, step);
  return step;
}

// Whether a text `width` wide with its top-left corner at (x, top) meets
// `box`; heights are in the surface's units, negative where y grows upwards.
bool Meets(const DrawingSurface& surface, const GraphView* box, double x, double top, double width) {
  if (box == nullptr) return false;
  const double bottom = top + surface.TextHeight("0");
  return x < box->right && x + width > box->left && std::max(top, bottom) > std::min(box->top, box->bottom) &&
         std::min(top, bottom) < std::max(box->top, box->bottom);
}

// A label with a short tick rising from the bottom edge at x, centred on
// it, on a halo; none where the label would meet `keepClear`.
void BottomLabel(DrawingSurface& surface, const GraphView& view, double x, const std::string& label,
                 const GraphView* keepClear) {
  const double liftRange = view.top - view.bottom;
  const double width = surface.TextWidth(label);
  const double left = x - width / 2;
  const double top = view.bottom + kDragLabelLift * liftRange - surface.TextHeight("0");
  if (Meets(surface, keepClear, left, top, width)) return;
  surface.Line(x, view.bottom, x, view.bottom + kDragTickLength * liftRange, kAxisColor);
  PrintOnHalo(surface, left, top, label, kGraphBackground);
}

// The range lists' drag labels at their fixed places, a wider step only
// where they would touch.
void DragLabels(DrawingSurface& surface, const GraphView& view, const GraphView* keepClear) {
  if (view.zoomed) return DrawBottomNumbers(surface, view, AxisQuantity::Cd, keepClear);
  const double step = ThinnedStep(DragLabelStep(view.Width()), PerUnitX(surface), [&](double) {
    return surface.TextWidth(FormatNumber(view.right, "0.000")) * PerUnitX(surface);
  });
  ForEachStep(view.left + step, step, view.right - 0.5 * step,
              [&](double x) { BottomLabel(surface, view, x, FormatNumber(x, "0.000"), keepClear); });
}

// A zoomed view: grid lines at the multiples of a step that suits each
// span, strictly inside the view.
void ZoomedGrid(DrawingSurface& surface, const GraphView& view) {
  const double xStep = AdaptiveStep(view.Width()), yStep = AdaptiveStep(view.top - view.bottom);
  if (xStep > 0)
    ForEachStep(std::floor(view.left / xStep + 1) * xStep, xStep, view.right - xStep / 1000,
                [&](double x) { surface.Line(x, view.top, x, view.bottom, kGridColor); });
  if (yStep > 0)
    ForEachStep(std::floor(view.bottom / yStep + 1) * yStep, yStep, view.top - yStep / 1000,
                [&](double y) { surface.Line(view.left, y, view.right, y, kGridColor); });
}

// What every graph's frame does: clear it, draw its grid (`unzoomedGrid`
// until it is zoomed) and the horizontal axis through zero.
template <class Grid>
void DrawFrame(DrawingSurface& surface, const GraphView& view, Grid unzoomedGrid) {
  StartFrame(surface, view);
  if (view.zoomed)
    ZoomedGrid(surface, view);
  else
    unzoomedGrid();
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
}

std::string TitleText(std::string_view airfoilName, Language language) {
  std::string title = GetResString(Text::Airfoil, language);
  title += ": ";
  title += airfoilName;
  return title;
}

}  // namespace

void DrawClCdFrame(DrawingSurface& surface, const GraphView& view) {
  DrawFrame(surface, view, [&] {
    double grid = DragGridStep(view.Width());
    VerticalGrid(surface, view.left + grid, grid, view.right - 0.5 * grid, view.top, view.bottom);
    HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top, view.left, view.right);
  });
}

GraphView ClCdTitleBox(const DrawingSurface& surface, const GraphView& view, std::string_view airfoilName,
                       Language language) {
  const double left = view.left + view.Width() / 50, top = view.bottom + (view.top - view.bottom) / 10;
  const std::string title = TitleText(airfoilName, language);
  return {left, top, left + surface.TextWidth(title), top + surface.TextHeight(title)};
}

void DrawClCdTexts(DrawingSurface& surface, const GraphView& view, std::string_view airfoilName, Language language) {
  surface.SetForeColor(kAxisColor);
  const GraphView title = ClCdTitleBox(surface, view, airfoilName, language);
  DragLabels(surface, view, &title);
  surface.SetForeColor(kAxisColor);
  PrintOnHalo(surface, title.left, title.top, TitleText(airfoilName, language), kGraphBackground);
}

void DrawClAlfaFrame(DrawingSurface& surface, const GraphView& view) {
  DrawFrame(surface, view, [&] {
    AlfaGrid(surface, view);
    HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top - 0.1, view.left, view.right);
  });
  surface.Line(0, view.top, 0, view.bottom, kAxisColor);
}

void DrawCmAlfaFrame(DrawingSurface& surface, const GraphView& view) {
  DrawFrame(surface, view, [&] {
    AlfaGrid(surface, view);
    HorizontalGrid(surface, view.bottom + 0.05, 0.05, view.top, view.left, view.right);
  });
  surface.Line(0, view.bottom, 0, view.top, kAxisColor);
}

void DrawTransitionFrame(DrawingSurface& surface, const GraphView& view) {
  DrawFrame(surface, view, [&] {
    VerticalGrid(surface, view.left + 0.1, 0.1, view.right - 0.1, view.top, view.bottom);
    HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top, view.left, view.right);
  });
}

namespace {

struct NumberStyle {
  double step;   // the label step of a view from the range lists
  int decimals;  // at least
  const char* suffix;
};

NumberStyle StyleOf(AxisQuantity quantity, const GraphView& view) {
  switch (quantity) {
    case AxisQuantity::Cd: return {DragLabelStep(view.Width()), 3, ""};
    case AxisQuantity::Cl: return {0.5, 1, ""};
    case AxisQuantity::Alfa: return {5, 0, "\u00B0"};
    case AxisQuantity::Cm: return {0.1, 2, ""};
    case AxisQuantity::Xc: return {0.2, 1, ""};
  }
  return {1, 0, ""};
}

std::string NumberLabel(double value, int decimals, const char* suffix) {
  std::string pattern = decimals > 0 ? "0." + std::string(decimals, '0') : "0";
  return FormatNumber(value, pattern) + suffix;
}

// The base step: the fixed one of an unzoomed view, a zoomed view's own.
double BaseStep(const NumberStyle& style, const GraphView& view, double span) {
  return view.zoomed ? AdaptiveStep(span) : style.step;
}

int DecimalsAt(const NumberStyle& style, const GraphView& view, double step) {
  return view.zoomed ? DecimalsFor(step, style.decimals) : style.decimals;
}

}  // namespace

void DrawBottomNumbers(DrawingSurface& surface, const GraphView& view, AxisQuantity quantity,
                       const GraphView* keepClear) {
  const NumberStyle style = StyleOf(quantity, view);
  // The widest label is one at an end of the axis: the values between have
  // no more digits, nor a sign that the ends lack.
  auto widest = [&](double step) {
    const int decimals = DecimalsAt(style, view, step);
    double width = 0;
    for (double end : {view.left, view.right})
      for (double value : {std::floor(end / step) * step, std::ceil(end / step) * step})
        width = std::max(width, surface.TextWidth(NumberLabel(value, decimals, style.suffix)));
    return width;
  };
  const double step = ThinnedStep(BaseStep(style, view, view.Width()), PerUnitX(surface),
                                  [&](double s) { return widest(s) * PerUnitX(surface); });
  if (!(step > 0)) return;
  const int decimals = DecimalsAt(style, view, step);
  // Not on the edges, where half the label would be cut off.
  const double margin = widest(step) / 2;
  ForEachStep(std::ceil((view.left + margin) / step) * step, step, view.right - margin,
              [&](double x) { BottomLabel(surface, view, x, NumberLabel(x, decimals, style.suffix), keepClear); });
}

void DrawLeftNumbers(DrawingSurface& surface, const GraphView& view, AxisQuantity quantity,
                     const GraphView* keepClear) {
  const NumberStyle style = StyleOf(quantity, view);
  const double height = std::fabs(surface.TextHeight("0"));
  const double step = ThinnedStep(BaseStep(style, view, view.top - view.bottom), PerUnitY(surface),
                                  [&](double) { return height * PerUnitY(surface); });
  if (!(step > 0)) return;
  const int decimals = DecimalsAt(style, view, step);
  const double inset = 4 * surface.ScaleWidth() / surface.Width();
  // Above the bottom labels and clear of the top edge.
  const double lowest = view.bottom + kDragLabelLift * (view.top - view.bottom) + 1.5 * height;
  ForEachStep(std::ceil(lowest / step) * step, step, view.top - height / 2, [&](double y) {
    // The zero line across every graph marks 0 itself; its label would
    // sit on the line.
    if (std::fabs(y) < step / 1000) return;
    const std::string label = NumberLabel(y, decimals, style.suffix);
    const double x = view.left + inset, top = y + height / 2;
    if (Meets(surface, keepClear, x, top, surface.TextWidth(label))) return;
    PrintOnHalo(surface, x, top, label, kGraphBackground);
  });
}

void PrintOnHalo(DrawingSurface& surface, double x, double top, std::string_view text, Color halo) {
  surface.SetCurrentX(x);
  surface.SetCurrentY(top);
  surface.PrintHalo(text, halo);
  surface.SetCurrentX(x);
  surface.SetCurrentY(top);
  surface.Print(text);
}

}  // namespace tavilo
