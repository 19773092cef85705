#pragma once
// Redraws the five graphs of an airfoil: frames first, then every ticked
// polar in a colour and marker of its own, with its legend entry, then the
// extra curves that tools hand over.

#include <span>
#include <string>
#include <vector>

#include "model/airfoil.h"
#include "model/polar.h"
#include "plot/surface.h"
#include "plot/views.h"
#include "strings/string_table.h"

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

// The halo the first legend pass draws behind the second: the graphs'
// white background, so that an entry stays readable over grid and curves.
inline constexpr Color kLegendHalo = Color::Rgb(255, 255, 255);

// A curve drawn over the polars, such as a tool's result: the points in
// order, joined in `color` on every graph, without markers or a legend
// entry. The points must outlive the redraw.
struct PlotOverlay {
  std::span<const PolarPoint> points;
  Color color;
};

// What a redraw shows besides the airfoil.
struct PlotRequest {
  PlotViews views = DefaultViews(PlotRanges{});
  std::vector<PlotOverlay> overlays;  // drawn in this order, after the polars
  int language = kEnglish;            // of the lift-drag title: 1 English, 2 German
};

// Draws everything, each graph in its own view. A null airfoil draws
// nothing and leaves the surfaces as they are. A run-time error raised while
// drawing (a wild value beyond the device range, a broken list, a language
// without texts) ends the redraw quietly and the surfaces keep what was
// drawn so far. Allocates nothing per point, of a polar or of an overlay.
void PlotData(const Airfoil* airfoil, const PlotRequest& request, const GraphSurfaces& surfaces);

// Draws `overlay` over what the surfaces show now, each graph scaled to its
// view in `views`, as PlotData draws its overlays: for a tool that draws
// into the graphs after PlotData. The drawing is lost at the next redraw.
// A run-time error ends it quietly, as in PlotData.
void DrawOverlay(const PlotOverlay& overlay, const PlotViews& views, const GraphSurfaces& surfaces);

// The one redraw entry point for the rest of the program after any change to
// the data, the ticks, the views or the overlays.
inline void RefreshPlots(const Airfoil* current, const PlotRequest& request,
                         const GraphSurfaces& surfaces) {
  PlotData(current, request, surfaces);
}

}  // namespace tavilo
