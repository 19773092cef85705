#include "plot/ranges.h"

#include "base/number_text.h"

namespace tavilo {

PlotRanges ParseRanges(std::string_view clMax, std::string_view clMin, std::string_view cdMax,
                       std::string_view alfaMax) {
  return PlotRanges{LeadingNumber(clMax), LeadingNumber(clMin), LeadingNumber(cdMax), LeadingNumber(alfaMax)};
}

namespace {

struct DragSteps {
  double upTo;  // first row whose bound is not below CdMax applies
  double grid;
  double label;
};

constexpr DragSteps kDragSteps[] = {
    {0.01, 0.0005, 0.002}, {0.05, 0.001, 0.005}, {0.1, 0.005, 0.01}, {0.5, 0.01, 0.05}, {1.0, 0.05, 0.1},
};

const DragSteps& StepsFor(double cdMax) {
  static constexpr DragSteps kLarger = {0.0, 0.05, 0.25};
  for (const DragSteps& row : kDragSteps)
    if (cdMax <= row.upTo) return row;
  return kLarger;
}

}  // namespace

double DragGridStep(double cdMax) { return StepsFor(cdMax).grid; }
double DragLabelStep(double cdMax) { return StepsFor(cdMax).label; }

}  // namespace tavilo
