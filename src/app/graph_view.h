#pragma once
// Draws the current airfoil into the five on-screen graphs and wires their
// pointer read-outs.

#include <array>

#include "model/airfoil.h"
#include "plot/plot_data.h"
#include "plot/ranges.h"

class QLabel;

namespace tavilo {

class GraphWidget;
class RenderContext;

struct GraphWidgets {
  GraphWidget* clCd = nullptr;    // ClCdPicture
  GraphWidget* clAlfa = nullptr;  // ClAlfaPicture
  GraphWidget* cmAlfa = nullptr;  // CmAlfaPicture
  GraphWidget* blu = nullptr;     // BLUPicture
  GraphWidget* bll = nullptr;     // BLLPicture

  // Graph 0 to 4, in the order above.
  GraphWidget*& operator[](int graph) {
    GraphWidget** all[] = {&clCd, &clAlfa, &cmAlfa, &blu, &bll};
    return *all[graph];
  }
  GraphWidget* operator[](int graph) const { return const_cast<GraphWidgets&>(*this)[graph]; }
};

// The four range lists in the order the window builds them.
inline constexpr std::array<RangeList, 4> kRangeLists = {kClMaxList, kClMinList, kCdMaxList, kAlfaMaxList};

// Draws frames, the selected polars of `airfoil` and the request's overlays
// (no airfoil: the graphs keep what they show) into every graph given (a
// null one is left as it is) at the widget's size, each in its view from `request`, gives each graph that view
// for its read-out, and repaints them. Laid-out texts and marker shapes are
// kept in `context` for the next redraw.
void DrawGraphs(const Airfoil* airfoil, const PlotRequest& request, const GraphWidgets& graphs,
                RenderContext& context);

// Gives each graph its read-out label: CdClValue, ClAlfaValue, CmAlfaValue,
// TUxcValue, TLxcValue in the order of GraphWidgets.
void ConnectReadouts(const GraphWidgets& graphs, const std::array<QLabel*, 5>& labels);

}  // namespace tavilo
