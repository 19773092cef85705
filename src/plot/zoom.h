#pragma once
// Zooming and panning a graph's view, and the grid and label steps of a
// zoomed view. Every view is kept within bounds set by the graph's
// unzoomed view, its `home` (the range lists' view): each axis spans at
// least a thousandth and at most ten times the home's span, so that the
// user can neither lose the curves in a speck nor zoom the numbers away.
// Every result has left < right and bottom < top, and is the home itself
// (not zoomed) when it comes back to it.

#include "plot/views.h"

namespace tavilo {

inline constexpr double kMostZoomIn = 1000;  // the home's span over the least span
inline constexpr double kMostZoomOut = 10;   // the largest span over the home's span

// Scales the view by `factor` (below 1 zooms in) about the value point
// (x, y), which stays where it is in the graph; an axis at its bound stops
// there, still about that point.
GraphView ZoomAbout(const GraphView& view, const GraphView& home, double x, double y, double factor);

// The view that shows the rectangle between the value points (x1, y1) and
// (x2, y2), given in any order, widened about its centre to the least span.
GraphView ZoomTo(const GraphView& home, double x1, double y1, double x2, double y2);

// The view moved by (dx, dy) in values.
GraphView Pan(const GraphView& view, const GraphView& home, double dx, double dy);

// A step of 1, 2 or 5 times a power of ten that puts 4 to 12 grid lines
// into `span` (the smallest such step); 0 for a span that is not a
// positive finite number.
double AdaptiveStep(double span);

// The steps 1, 2, 5, 10, 20 ... times `step`, in turn from `step` itself:
// the one after `current`.
double NextLabelStep(double step, double current);

// Decimals enough to tell labels `step` apart, at least `least`.
int DecimalsFor(double step, int least);

}  // namespace tavilo
