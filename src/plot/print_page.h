#pragma once
// The printed page: the five graphs of the ticked polars on one landscape
// sheet, lift-drag large on the left and the four others two by two on the
// right, under a heading that names the airfoil and above a footer that
// lists the printed polars. Each graph is drawn with the printed axes and
// the millimetre mappings, at a factor per axis that makes it fill its box,
// titled above its frame and numbered outside it.

#include <array>

#include "model/airfoil.h"
#include "plot/box_surface.h"
#include "plot/page.h"
#include "plot/ranges.h"
#include "plot/views.h"
#include "strings/string_table.h"

namespace tavilo {

// The sheet in millimetres, landscape.
struct PaperSize {
  double width = 297;
  double height = 210;
};
inline constexpr PaperSize kA4Landscape{297, 210};
inline constexpr PaperSize kLetterLandscape{279.4, 215.9};

enum class LegendCorner { LowerRight, UpperLeft };

// The options dialog's switches.
struct PrintOptions {
  bool grid = false;
  bool legend = false;
  LegendCorner legendCorner = LegendCorner::LowerRight;
};

struct PageRequest {
  PlotRanges ranges;
  PrintOptions options;
  PaperSize paper = kA4Landscape;
  Language language = Language::English;
  bool readableColors = false;  // as on screen, see PolarColor
};

// Type sizes in points. Lists (footer, legend) shrink to the smallest size
// before they overflow into "+ N more".
inline constexpr double kHeadingPoints = 14;
inline constexpr double kGraphTitlePoints = 9;
inline constexpr double kAxisPoints = 7.5;
inline constexpr double kListPoints = 7.5;
inline constexpr double kMinListPoints = 7;
inline constexpr double kPageMargin = 12;  // mm on every side

// Markers are measured in this unit on paper in a graph of full size (a
// screen marker of 7 pixels becomes 1.75 mm, as in the legend and footer);
// smaller graphs take a smaller unit, down to half of it.
inline constexpr double kPageDeviceUnit = 0.25;  // mm

struct PlacedGraph {
  PageRect box;    // the graph's share of the page, title, labels and axis titles included
  PageRect plot;   // its frame, where its value ranges lie
  GraphView view;  // values at the frame's edges (left, top, right, bottom)
  // The factors of the horizontal and of the vertical axis, each fitting its
  // range to the frame; k and kd alike, whichever the axis's mapping reads.
  // A negative factor turns a mapping round, so that values grow rightwards
  // and upwards on every graph, moments too.
  PageFactors factorsX, factorsY;
  double originX = 0, originY = 0;        // page position of the values 0
  double labelStepX = 0, labelStepY = 0;  // tick label distances chosen
  double gridStepX = 0, gridStepY = 0;    // grid line distances chosen
  double markUnit = kPageDeviceUnit;      // mm per device unit of its markers
  int lineWidth = 2;                      // of its curves
};

// Rows of entries flowing into columns: the footer, the legend.
struct ListBlock {
  PageRect area;
  double points = kListPoints;  // type size
  double rowHeight = 0;         // mm
  double columnWidth = 0;       // mm
  int rows = 0;                 // per column, without a header row
  int columns = 0;
  int shown = 0;  // entries shown; the rest is counted in "+ N more"
  int total = 0;
};

struct PageLayout {
  PageRect heading;
  PerGraph<PlacedGraph> graphs;
  ListBlock footer;
  ListBlock legend;  // empty unless the legend is switched on
};

// Where everything goes. Sets the page's scale to millimetres (y upwards)
// and measures its texts; draws nothing. OverflowError for a range that
// does not map to the page.
PageLayout LayOutPage(const Airfoil& airfoil, const PageRequest& request, DrawingSurface& page);

// Lays the page out and draws it; only ticked polars are drawn and listed.
void PrintPage(const Airfoil& airfoil, const PageRequest& request, DrawingSurface& page);

}  // namespace tavilo
