#include "plot/views.h"

namespace tavilo {

namespace {

struct Span {
  double low, high;
};

Span DefaultSpan(AxisQuantity quantity, const PlotRanges& ranges) {
  switch (quantity) {
    case AxisQuantity::Cd: return {0, ranges.cdMax};
    case AxisQuantity::Cl: return {ranges.clMin, ranges.clMax};
    case AxisQuantity::Alfa: return {ranges.AlfaMin(), ranges.alfaMax};
    case AxisQuantity::Cm: return {kCmMin, kCmMax};
    case AxisQuantity::Xc: return {0, 1};
  }
  return {0, 1};
}

}  // namespace

PlotViews DefaultViews(const PlotRanges& ranges) {
  PlotViews views;
  for (Graph graph : kGraphs) {
    const Span x = DefaultSpan(Describe(graph).x, ranges);
    const Span y = DefaultSpan(Describe(graph).y, ranges);
    views[graph] = {x.low, y.high, x.high, y.low};
  }
  return views;
}

}  // namespace tavilo
