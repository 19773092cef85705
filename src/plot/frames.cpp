#include "plot/frames.h"

#include <string>

#include <cmath>

#include "formats/number_text.h"
#include "plot/steps.h"
#include "plot/zoom.h"
#include "strings/string_table.h"

namespace tavilo {

// The grid ends stop short of the border on purpose: the outermost line would
// lie on the frame.
namespace {

void StartFrame(DrawingSurface& surface, const GraphView& view) {
  surface.Clear();
  surface.Scale(view.left, view.top, view.right, view.bottom);
  surface.SetDrawWidth(1);
  surface.SetForeColor(kAxisColor);
}

void VerticalGrid(DrawingSurface& surface, double first, double step, double last, double top,
                  double bottom) {
  ForEachStep(first, step, last, [&](double x) { surface.Line(x, top, x, bottom, kGridColor); });
}

void HorizontalGrid(DrawingSurface& surface, double first, double step, double last, double left,
                    double right) {
  ForEachStep(first, step, last, [&](double y) { surface.Line(left, y, right, y, kGridColor); });
}

void AlfaGrid(DrawingSurface& surface, const GraphView& view) {
  VerticalGrid(surface, view.left + 5, 5, view.right - 4, view.top, view.bottom);
}

// A label with a short tick rising from the bottom edge at x, centred on
// it; the drag labels of the range lists' view as they always were, the
// others on a halo.
void BottomLabel(DrawingSurface& surface, const GraphView& view, double x, const std::string& label, bool halo) {
  const double liftRange = view.top - view.bottom;
  surface.Line(x, view.bottom, x, view.bottom + kDragTickLength * liftRange);
  const double left = x - surface.TextWidth(label) / 2;
  const double top = view.bottom + kDragLabelLift * liftRange - surface.TextHeight("0");
  if (halo) return PrintOnHalo(surface, left, top, label, kGraphBackground);
  surface.SetCurrentX(left);
  surface.SetCurrentY(top);
  surface.Print(label);
}

void DragLabels(DrawingSurface& surface, const GraphView& view) {
  if (view.zoomed) return DrawBottomNumbers(surface, view, AxisQuantity::Cd);
  double step = DragLabelStep(view.Width());
  ForEachStep(view.left + step, step, view.right - 0.5 * step,
              [&](double x) { BottomLabel(surface, view, x, FormatNumber(x, "0.000"), false); });
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

}  // namespace

void DrawClCdFrame(DrawingSurface& surface, const GraphView& view, std::string_view airfoilName,
                   int language) {
  StartFrame(surface, view);
  if (view.zoomed) {
    ZoomedGrid(surface, view);
  } else {
    double grid = DragGridStep(view.Width());
    VerticalGrid(surface, view.left + grid, grid, view.right - 0.5 * grid, view.top, view.bottom);
    HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top, view.left, view.right);
  }
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
  DragLabels(surface, view);
  surface.SetCurrentX(view.left + view.Width() / 50);
  surface.SetCurrentY(view.bottom + (view.top - view.bottom) / 10);
  std::string title = GetResString(7, language);
  title += ": ";
  title += airfoilName;
  surface.Print(title);
}

void DrawClAlfaFrame(DrawingSurface& surface, const GraphView& view) {
  StartFrame(surface, view);
  if (view.zoomed) {
    ZoomedGrid(surface, view);
  } else {
    AlfaGrid(surface, view);
    HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top - 0.1, view.left, view.right);
  }
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
  surface.Line(0, view.top, 0, view.bottom, kAxisColor);
}

void DrawCmAlfaFrame(DrawingSurface& surface, const GraphView& view) {
  StartFrame(surface, view);
  if (view.zoomed) {
    ZoomedGrid(surface, view);
  } else {
    AlfaGrid(surface, view);
    HorizontalGrid(surface, view.bottom + 0.05, 0.05, view.top, view.left, view.right);
  }
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
  surface.Line(0, view.bottom, 0, view.top, kAxisColor);
}

void DrawTransitionFrame(DrawingSurface& surface, const GraphView& view) {
  StartFrame(surface, view);
  if (view.zoomed) {
    ZoomedGrid(surface, view);
  } else {
    VerticalGrid(surface, view.left + 0.1, 0.1, view.right - 0.1, view.top, view.bottom);
    HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top, view.left, view.right);
  }
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
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

// Device units per value unit along each axis.
double PerUnitX(const DrawingSurface& s) { return std::fabs(s.Width() / s.ScaleWidth()); }
double PerUnitY(const DrawingSurface& s) { return std::fabs(s.Height() / s.ScaleHeight()); }

// The label step: the fixed one of an unzoomed view unless its labels
// would run into each other, else a wider one; a zoomed view's own.
double NumberStep(const NumberStyle& style, const GraphView& view, bool horizontal, double extent, double perUnit) {
  const double base = view.zoomed ? AdaptiveStep(horizontal ? view.Width() : view.top - view.bottom) : style.step;
  return base > 0 ? LabelStep(base, extent, 6, perUnit) : 0;
}

}  // namespace

void DrawBottomNumbers(DrawingSurface& surface, const GraphView& view, AxisQuantity quantity) {
  const NumberStyle style = StyleOf(quantity, view);
  const double widest = std::max(surface.TextWidth(NumberLabel(view.left, style.decimals + 1, style.suffix)),
                                 surface.TextWidth(NumberLabel(view.right, style.decimals + 1, style.suffix)));
  const double step = NumberStep(style, view, true, widest * PerUnitX(surface), PerUnitX(surface));
  if (!(step > 0)) return;
  const int decimals = view.zoomed ? DecimalsFor(step, style.decimals) : style.decimals;
  // Not on the edges, where half the label would be cut off.
  const double margin = widest / 2;
  ForEachStep(std::ceil((view.left + margin) / step) * step, step, view.right - margin,
              [&](double x) { BottomLabel(surface, view, x, NumberLabel(x, decimals, style.suffix), true); });
}

void DrawLeftNumbers(DrawingSurface& surface, const GraphView& view, AxisQuantity quantity,
                     const GraphView* keepClear) {
  const NumberStyle style = StyleOf(quantity, view);
  const double height = std::fabs(surface.TextHeight("0"));
  const double step = NumberStep(style, view, false, height * PerUnitY(surface), PerUnitY(surface));
  if (!(step > 0)) return;
  const int decimals = view.zoomed ? DecimalsFor(step, style.decimals) : style.decimals;
  const double inset = 4 * surface.ScaleWidth() / surface.Width();
  // Above the bottom labels and clear of the top edge.
  const double lowest = view.bottom + kDragLabelLift * (view.top - view.bottom) + 1.5 * height;
  ForEachStep(std::ceil(lowest / step) * step, step, view.top - height / 2, [&](double y) {
    // The zero line across every graph marks 0 itself; its label would
    // sit on the line.
    if (std::fabs(y) < step / 1000) return;
    const std::string label = NumberLabel(y, decimals, style.suffix);
    const double x = view.left + inset, top = y + height / 2;
    if (keepClear && x < keepClear->right && x + surface.TextWidth(label) > keepClear->left &&
        top > keepClear->bottom && top - height < keepClear->top)
      return;
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
