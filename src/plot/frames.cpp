#include "plot/frames.h"

#include <string>

#include "formats/number_text.h"
#include "plot/steps.h"
#include "strings/string_table.h"

namespace tavilo {

// The grid ends stop short of the border on purpose: the outermost line would
// lie on the frame.
namespace {

void StartFrame(DrawingSurface& surface, double left, double top, double right, double bottom) {
  surface.Clear();
  surface.Scale(left, top, right, bottom);
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

void AlfaGrid(DrawingSurface& surface, const PlotRanges& ranges, double top, double bottom) {
  VerticalGrid(surface, ranges.AlfaMin() + 5, 5, ranges.alfaMax - 4, top, bottom);
}

void DragLabels(DrawingSurface& surface, const PlotRanges& ranges) {
  double liftRange = ranges.clMax - ranges.clMin;
  double step = DragLabelStep(ranges.cdMax);
  double tickTop = ranges.clMin + kDragTickLength * liftRange;
  double labelTop = ranges.clMin + kDragLabelLift * liftRange - surface.TextHeight("0");
  ForEachStep(step, step, ranges.cdMax - 0.5 * step, [&](double x) {
    surface.Line(x, ranges.clMin, x, tickTop);
    std::string label = FormatNumber(x, "0.000");
    surface.SetCurrentX(x - surface.TextWidth(label) / 2);
    surface.SetCurrentY(labelTop);
    surface.Print(label);
  });
}

}  // namespace

void DrawClCdFrame(DrawingSurface& surface, const PlotRanges& ranges, std::string_view airfoilName) {
  StartFrame(surface, 0, ranges.clMax, ranges.cdMax, ranges.clMin);
  double grid = DragGridStep(ranges.cdMax);
  VerticalGrid(surface, grid, grid, ranges.cdMax - 0.5 * grid, ranges.clMax, ranges.clMin);
  HorizontalGrid(surface, ranges.clMin + 0.1, 0.1, ranges.clMax, 0, ranges.cdMax);
  surface.Line(0, 0, ranges.cdMax, 0, kAxisColor);
  DragLabels(surface, ranges);
  surface.SetCurrentX(ranges.cdMax / 50);
  surface.SetCurrentY(ranges.clMin + (ranges.clMax - ranges.clMin) / 10);
  std::string title = GetResString(7);
  title += ": ";
  title += airfoilName;
  surface.Print(title);
}

void DrawClAlfaFrame(DrawingSurface& surface, const PlotRanges& ranges) {
  StartFrame(surface, ranges.AlfaMin(), ranges.clMax, ranges.alfaMax, ranges.clMin);
  AlfaGrid(surface, ranges, ranges.clMax, ranges.clMin);
  HorizontalGrid(surface, ranges.clMin + 0.1, 0.1, ranges.clMax - 0.1, ranges.AlfaMin(),
                 ranges.alfaMax);
  surface.Line(ranges.AlfaMin(), 0, ranges.alfaMax, 0, kAxisColor);
  surface.Line(0, ranges.clMax, 0, ranges.clMin, kAxisColor);
}

void DrawCmAlfaFrame(DrawingSurface& surface, const PlotRanges& ranges) {
  StartFrame(surface, ranges.AlfaMin(), kCmMax, ranges.alfaMax, kCmMin);
  AlfaGrid(surface, ranges, kCmMax, kCmMin);
  HorizontalGrid(surface, kCmMin + 0.05, 0.05, kCmMax, ranges.AlfaMin(), ranges.alfaMax);
  surface.Line(ranges.AlfaMin(), 0, ranges.alfaMax, 0, kAxisColor);
  surface.Line(0, kCmMin, 0, kCmMax, kAxisColor);
}

void DrawTransitionFrame(DrawingSurface& surface, const PlotRanges& ranges) {
  StartFrame(surface, 0, ranges.clMax, 1, ranges.clMin);
  VerticalGrid(surface, 0.1, 0.1, 0.9, ranges.clMax, ranges.clMin);
  HorizontalGrid(surface, ranges.clMin + 0.1, 0.1, ranges.clMax, 0, 1);
  surface.Line(0, 0, 1, 0, kAxisColor);
}

}  // namespace tavilo
