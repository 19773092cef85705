#include "plot/views.h"

namespace tavilo {

PlotViews DefaultViews(const PlotRanges& ranges) {
  PlotViews views;
  views.clCd = {0, ranges.clMax, ranges.cdMax, ranges.clMin};
  views.clAlfa = {ranges.AlfaMin(), ranges.clMax, ranges.alfaMax, ranges.clMin};
  views.cmAlfa = {ranges.AlfaMin(), kCmMax, ranges.alfaMax, kCmMin};
  views.blu = {0, ranges.clMax, 1, ranges.clMin};
  views.bll = views.blu;
  return views;
}

}  // namespace tavilo
