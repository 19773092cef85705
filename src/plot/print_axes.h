#pragma once
// The axes of the printed graphs. The page is in millimetres with its
// vertical axis growing upwards; the print run places each graph by its
// origin, the page position of the value 0 of both of its quantities, and
// by the frame edge its numbers stand along.

#include "plot/page.h"
#include "plot/surface.h"

namespace tavilo {

struct PageAxis {
  DrawingSurface* page = nullptr;
  double originX = 0;  // mm
  double originY = 0;  // mm
  PageFactors factors;
  double low = 0;  // value range of this axis's quantity
  double high = 0;
  double acrossLow = 0;   // page extent (mm) of the grid lines across the
  double acrossHigh = 0;  // graph: y for a horizontal axis, x for a vertical one
  // Distance of the tick labels; 0 for the axis's own. The print run widens
  // it where the labels would run into each other.
  double labelStep = 0;
  // Distance of the grid lines; 0 for the axis's own. The print run widens
  // it where the lines would run into a grey field.
  double gridStep = 0;
  // The frame edge (mm) the labels and the title stand outside of: the
  // bottom edge's y for a horizontal axis, the left edge's x for a vertical
  // one. Outside the data, no curve crosses them.
  double labelEdge = 0;
};

// Gap between a frame edge and its tick labels, and between the labels
// and the title, in millimetres. Labels under the bottom edge keep at least
// a little more than half a line from it, so that the lowest label of the
// left edge, centred on the corner, stays clear of them.
inline constexpr double kPageLabelGap = 1.5;
// The gap between the bottom edge and the top of its labels.
double HorizontalLabelGap(const DrawingSurface& page);
// The depth of a horizontal axis's labels and title under the bottom edge.
double HorizontalAxisDepth(const DrawingSurface& page);
inline constexpr Color kPageGridColor = Color::Rgb(124, 124, 124);

// Each draws the axis line (width 2) through the origin from `low` to `high`,
// the heavier zero line of the other quantity, then, when `gridShow`, a grey
// grid line across the graph at every grid step from low to high (the end
// gets its line in spite of rounding), leaving out the line at 0 when
// `skipZeroGrid`; then the tick labels, at the multiples of the label step
// within the range, and the title, outside the frame edge `labelEdge`:
// horizontal labels centred under their ticks with the title centred below
// them, vertical labels right-aligned beside their ticks with the title left
// of the widest label the range could have, halfway between the two labels
// nearest the axis's middle.
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
// only every label step. The print run's factor turns positive moments up.
void CmAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);
// Horizontal: x/c, grid 0.1, labels "0.0" every 0.2.
void XcAxis(const PageAxis& axis, bool skipZeroGrid, bool gridShow);

}  // namespace tavilo
