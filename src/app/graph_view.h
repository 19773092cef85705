#pragma once
// Draws the current airfoil into the on-screen graphs and wires their
// pointer read-outs.

#include <array>

#include "model/airfoil.h"
#include "plot/plot_data.h"
#include "plot/ranges.h"

class QLabel;

namespace tavilo {

class GraphWidget;
class RenderContext;

// The graphs' widgets, named as the graphs' description names them.
using GraphWidgets = PerGraph<GraphWidget*>;
using ReadoutLabels = PerGraph<QLabel*>;

// The four range lists in the order the window builds them.
inline constexpr std::array<RangeList, 4> kRangeLists = {kClMaxList, kClMinList, kCdMaxList, kAlfaMaxList};

// Draws frames, the selected polars of `airfoil` and the request's overlays
// (no airfoil: the graphs keep what they show) into every graph given (a
// null one is left as it is) at the widget's size, each in its view from `request`, gives each graph that view
// for its read-out, and repaints them. Laid-out texts and marker shapes are
// kept in `context` for the next redraw.
void DrawGraphs(const Airfoil* airfoil, const PlotRequest& request, const GraphWidgets& graphs, RenderContext& context);

// Gives each graph its read-out label and the graph's read-out text.
void ConnectReadouts(const GraphWidgets& graphs, const ReadoutLabels& labels);

}  // namespace tavilo
