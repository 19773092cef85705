#pragma once
// Redraws the five graphs of an airfoil: frames first, then every ticked
// polar in a colour and marker of its own, then the extra curves that tools
// hand over, and last the texts (numbers, title, legend), which no curve
// may cover.

#include <span>
#include <string>
#include <vector>

#include "model/airfoil.h"
#include "model/polar.h"
#include "plot/surface.h"
#include "plot/views.h"
#include "strings/string_table.h"

namespace tavilo {

// The graph areas; a null one is skipped, so that a widget can paint only
// its own graph.
using GraphSurfaces = PerGraph<DrawingSurface*>;

// A transition location or moment at or below this is "no value".
inline constexpr double kMissingBelow = -99.0;

// Full width of a data marker in device units.
inline constexpr double kMarkerDeviceSize = 7.0;

// Colour (palette 1..15) and marker (1..5) of the polar at `ordinal`, its
// 1-based position counting every polar of every set in order, ticked or not.
inline int PolarColorIndex(int ordinal) { return (ordinal - 1) % 15 + 1; }
inline int PolarSymbolIndex(int ordinal) { return (ordinal - 1) % 5 + 1; }

// The colour a polar is drawn in: its palette colour, or with `readable`
// the two that vanish on white in tones of their own: 7, the grid's light
// grey, in a brown that no grey of 8 or 15 is mistaken for, and 15, white,
// in a dark grey well below 8's middle one.
inline constexpr Color kReadableSilver = Color::Rgb(150, 85, 20);
inline constexpr Color kReadableWhite = Color::Rgb(48, 48, 48);
inline Color PolarColor(int ordinal, bool readable) {
  const int index = PolarColorIndex(ordinal);
  if (readable && index == 7) return kReadableSilver;
  if (readable && index == 15) return kReadableWhite;
  return Color::Palette(index);
}

// The legend text of a polar: "Re=" and the Reynolds number as plain number
// text, e.g. "Re= 1000000".
std::string LegendText(const Polar& polar);

// The halo the first legend pass draws behind the second: the graphs'
// white background, so that an entry stays readable over grid and curves.
inline constexpr Color kLegendHalo = Color::Rgb(255, 255, 255);

// A curve drawn over the polars, such as a tool's result: the points in
// order, joined in `color` on every graph, without markers or a legend
// entry, under the texts. The points must outlive the redraw.
struct PlotOverlay {
  std::span<const PolarPoint> points;
  Color color;
};

// What a redraw shows besides the airfoil.
struct PlotRequest {
  PlotViews views = DefaultViews(PlotRanges{});
  std::vector<PlotOverlay> overlays;      // drawn in this order, after the polars
  Language language = Language::English;  // of the lift-drag title
  bool axisNumbers = false;               // numbers on every axis, not only the drag labels
  bool readableColors = false;            // see PolarColor
};

// Draws everything, each graph in its own view. A null airfoil draws
// nothing and leaves the surfaces as they are. A run-time error raised while
// drawing (a wild value beyond the device range, a broken list, a language
// without texts) ends the redraw quietly and the surfaces keep what was
// drawn so far; false then. A curve that ends so still gets the texts over
// it, the legend up to its polar. Allocates nothing per point, of a polar or
// of an overlay.
bool PlotData(const Airfoil* airfoil, const PlotRequest& request, const GraphSurfaces& surfaces);

// The polar curves of `points` in each surface's foreground colour, with
// the markers of `symbol` (1..5; 0 for none), as PlotData draws a polar.
void DrawPolarSeries(const GraphSurfaces& surfaces, std::span<const PolarPoint> points, int symbol);

// Calls visit(set, index, ordinal, polar) for every ticked polar in order;
// `ordinal` counts every polar, ticked or not, for its colour and marker.
template <class Visit>
void ForEachTickedPolar(const Airfoil& airfoil, Visit visit) {
  int ordinal = 0;
  for (int set = 1; set <= airfoil.ConfigCount(); ++set) {
    ConfigurationPtr config = airfoil.Configuration(set);
    if (!config) continue;
    for (int index = 1; index <= config->PolarCount(); ++index) {
      // Counted before the tick test so that a polar keeps its colour and
      // marker when others are ticked or unticked.
      ++ordinal;
      PolarPtr polar = config->Polar(index);
      if (polar && polar->Selected) visit(set, index, ordinal, *polar);
    }
  }
}

}  // namespace tavilo
