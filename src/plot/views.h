#pragma once
// What part of its value plane each graph shows. The range lists give every
// graph its default; a zoom or a printed page sets a graph's view alone.

#include "plot/graphs.h"
#include "plot/ranges.h"

namespace tavilo {

// The values at the four edges of a graph: `left` at the left edge, `top`
// at the top one, and so on. The graphs' values grow rightwards and
// upwards, so left < right and bottom < top; a view the other way round
// draws its frame without grid lines.
struct GraphView {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
  // A zoomed view draws its grid and labels at steps that suit its span;
  // one from the range lists keeps their fixed steps.
  bool zoomed = false;

  // right - left and bottom - top, the latter negative.
  double Width() const { return right - left; }
  double Height() const { return bottom - top; }
  bool operator==(const GraphView&) const = default;
};

// One view per graph.
using PlotViews = PerGraph<GraphView>;

// The views the range lists ask for: lift from clMin up to clMax on every
// graph but Cm-Alfa, which shows kCmMin to kCmMax; drag from 0 to cdMax;
// angle from -alfaMax to alfaMax; x/c from 0 to 1.
PlotViews DefaultViews(const PlotRanges& ranges);

}  // namespace tavilo
