#pragma once
// The axes of the printed graphs. The page is in millimetres with its
// vertical axis growing upwards; the print run places each graph by its
// origin, the page position of the value 0 of both of its quantities.

#include <array>

#include "plot/page.h"
#include "plot/surface.h"

namespace tavilo {

struct PageAxis {
  DrawingSurface* page = nullptr;
  double originX = 0;  // mm
  double originY = 0;  // mm
  PageFactors factors;
  double low = 0;   // value range of this axis's quantity
  double high = 0;
  double acrossLow = 0;   // page extent (mm) of the grid lines across the
  double acrossHigh = 0;  // graph: y for a horizontal axis, x for a vertical one
  // Distance of the tick labels; 0 for the axis's own. The print run widens
  // it where the labels would run into each other.
  double labelStep = 0;
  // A tick label that would reach into one of these parts of the page is
  // left out: the print run keeps labels off the other axis's line and off
  // the labels and title under a horizontal axis.
  std::array<PageRect, 2> keepClear{};
};

// Gap between an axis and its tick labels, in millimetres. Labels under a
// horizontal axis keep at least a little more than half a line from it, so
// that the label a vertical axis centres on the crossing stays clear.
inline constexpr double kPageLabelGap = 1.5;
// The gap between a horizontal axis and the top of its labels.
double HorizontalLabelGap(const DrawingSurface& page);
// The moment labels stand centred this far left of the origin.
inline constexpr double kCmLabelOffset = 4.0;
inline constexpr Color kPageGridColor = Color::Rgb(124, 124, 124);

// Each draws the axis line (width 2) through the origin from `low` to `high`,
// then, when `gridShow`, a grey grid line across the graph at every grid step
// from low to high (the end gets its line in spite of rounding), leaving out
// the line at 0 when `skipZeroGrid`; then the tick labels, at the multiples
// of the label step within the range, and the title.
// The foreground ends black, the line width 1.
// Horizontal: angle, grid 1 degree, labels "0°" every 5.
void AlfaAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);
// Vertical: lift, grid 0.1, labels "0.0" every 0.5.
void ClAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);
// Horizontal: drag, grid and labels "0.000" at the screen's drag steps for
// `high`.
void CdAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);
// Vertical: moment, grid 0.02, labels "0.00" counting down from `high`, at
// tenths and at every 0.02 between them; with a label step of 0.1 or more,
// only every label step.
void CmAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);
// Horizontal: x/c, grid 0.1, labels "0.0" every 0.2.
void XcAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);

}  // namespace tavilo
