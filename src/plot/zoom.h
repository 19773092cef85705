#pragma once
// Zooming and panning a graph's view, and the grid and label steps of a
// zoomed view. Every result is a zoomed view with left < right and
// bottom < top.

#include "plot/views.h"

namespace tavilo {

// A view is never narrower than this fraction of the value at its edges
// (nor than 1e-9 absolute), so that zooming in stops before the numbers
// run out of digits; nor wider than 1e6.
inline constexpr double kMinViewSpan = 1e-9;
inline constexpr double kMaxViewSpan = 1e6;

// Scales the view by `factor` (below 1 zooms in) about the value point
// (x, y), which stays where it is in the graph.
GraphView ZoomAbout(const GraphView& view, double x, double y, double factor);

// The view that shows the rectangle between the value points (x1, y1) and
// (x2, y2), given in any order.
GraphView ZoomTo(const GraphView& view, double x1, double y1, double x2, double y2);

// The view moved by (dx, dy) in values.
GraphView Pan(const GraphView& view, double dx, double dy);

// A step of 1, 2 or 5 times a power of ten that puts 4 to 12 grid lines
// into `span` (the smallest such step); 0 for a span that is not a
// positive finite number.
double AdaptiveStep(double span);

// The least multiple of `step` among 1, 2, 5, 10, 20 ... times it that
// leaves labels `extent` wide at least `gap` apart, with `perUnit` device
// units per value unit.
double LabelStep(double step, double extent, double gap, double perUnit);

// Decimals enough to tell labels `step` apart, at least `least`.
int DecimalsFor(double step, int least);

}  // namespace tavilo
