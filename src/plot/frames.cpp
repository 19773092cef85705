#include "plot/frames.h"

#include <string>

#include "formats/number_text.h"
#include "plot/steps.h"
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

void DragLabels(DrawingSurface& surface, const GraphView& view) {
  double liftRange = view.top - view.bottom;
  double step = DragLabelStep(view.Width());
  double tickTop = view.bottom + kDragTickLength * liftRange;
  double labelTop = view.bottom + kDragLabelLift * liftRange - surface.TextHeight("0");
  ForEachStep(view.left + step, step, view.right - 0.5 * step, [&](double x) {
    surface.Line(x, view.bottom, x, tickTop);
    std::string label = FormatNumber(x, "0.000");
    surface.SetCurrentX(x - surface.TextWidth(label) / 2);
    surface.SetCurrentY(labelTop);
    surface.Print(label);
  });
}

}  // namespace

void DrawClCdFrame(DrawingSurface& surface, const GraphView& view, std::string_view airfoilName,
                   int language) {
  StartFrame(surface, view);
  double grid = DragGridStep(view.Width());
  VerticalGrid(surface, view.left + grid, grid, view.right - 0.5 * grid, view.top, view.bottom);
  HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top, view.left, view.right);
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
  AlfaGrid(surface, view);
  HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top - 0.1, view.left, view.right);
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
  surface.Line(0, view.top, 0, view.bottom, kAxisColor);
}

void DrawCmAlfaFrame(DrawingSurface& surface, const GraphView& view) {
  StartFrame(surface, view);
  AlfaGrid(surface, view);
  HorizontalGrid(surface, view.bottom + 0.05, 0.05, view.top, view.left, view.right);
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
  surface.Line(0, view.bottom, 0, view.top, kAxisColor);
}

void DrawTransitionFrame(DrawingSurface& surface, const GraphView& view) {
  StartFrame(surface, view);
  VerticalGrid(surface, view.left + 0.1, 0.1, view.right - 0.1, view.top, view.bottom);
  HorizontalGrid(surface, view.bottom + 0.1, 0.1, view.top, view.left, view.right);
  surface.Line(view.left, 0, view.right, 0, kAxisColor);
}

}  // namespace tavilo
