#pragma once
// Redraws the five graphs of an airfoil: frames first, then every ticked
// polar in a colour and marker of its own, with its legend entry.

#include <string>

#include "model/airfoil.h"
#include "model/polar.h"
#include "plot/ranges.h"
#include "plot/surface.h"

namespace tavilo {

// The five graph areas; a null one is skipped, so that a widget can paint
// only its own graph.
struct GraphSurfaces {
  DrawingSurface* clCd = nullptr;
  DrawingSurface* clAlfa = nullptr;
  DrawingSurface* cmAlfa = nullptr;
  DrawingSurface* blu = nullptr;
  DrawingSurface* bll = nullptr;
};

// A transition location or moment at or below this is "no value".
inline constexpr double kMissingBelow = -99.0;

// Full width of a data marker in device units.
inline constexpr double kMarkerDeviceSize = 7.0;

// Colour (palette 1..15) and marker (1..5) of the polar at `ordinal`, its
// 1-based position counting every polar of every set in order, ticked or not.
inline int PolarColorIndex(int ordinal) { return (ordinal - 1) % 15 + 1; }
inline int PolarSymbolIndex(int ordinal) { return (ordinal - 1) % 5 + 1; }

// The legend text of a polar: "Re=" and the Reynolds number as plain number
// text, e.g. "Re= 1000000".
std::string LegendText(const Polar& polar);

// The pale tone the first legend pass is written in, a shadow behind the
// second: `color` mixed four parts to one with white.
Color LegendShadow(Color color);

// Draws everything. A null airfoil draws nothing and leaves the surfaces as
// they are. A run-time error raised while drawing (a wild value beyond the
// device range, a broken list) ends the redraw quietly and the surfaces keep
// what was drawn so far. Allocates nothing per point.
void PlotData(const Airfoil* airfoil, const PlotRanges& ranges, const GraphSurfaces& surfaces);

// The one redraw entry point for the rest of the program after any change to
// the data, the ticks or the ranges.
inline void RefreshPlots(const Airfoil* current, const PlotRanges& ranges,
                         const GraphSurfaces& surfaces) {
  PlotData(current, ranges, surfaces);
}

}  // namespace tavilo
