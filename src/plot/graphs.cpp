#include "plot/graphs.h"

#include "plot/frames.h"
#include "plot/readout.h"

namespace tavilo {

namespace {

using P = PolarPoint;
using Q = AxisQuantity;

constexpr std::array<GraphDescription, kGraphCount> kDescriptions = {{
    {Graph::ClCd, "ClCdPicture", "CdClValue", CdClValue, "Cl-Cd", "", DrawClCdFrame, Q::Cd, Q::Cl, &P::Cd, &P::Cl,
     nullptr, true},
    {Graph::ClAlfa, "ClAlfaPicture", "ClAlfaValue", ClAlfaValue, "Cl-Alfa", "CLALFA", DrawClAlfaFrame, Q::Alfa, Q::Cl,
     &P::Alfa, &P::Cl, nullptr, true},
    {Graph::CmAlfa, "CmAlfaPicture", "CmAlfaValue", CmAlfaValue, "Cm-Alfa", "CMALFA", DrawCmAlfaFrame, Q::Alfa, Q::Cm,
     &P::Alfa, &P::Cm, &P::Cm, true},
    {Graph::Blu, "BLUPicture", "TUxcValue", TUxcValue, "TU-x/c", "TUXC", DrawTransitionFrame, Q::Xc, Q::Cl, &P::TU,
     &P::Cl, &P::TU, false},
    {Graph::Bll, "BLLPicture", "TLxcValue", TLxcValue, "TL-x/c", "TLXC", DrawTransitionFrame, Q::Xc, Q::Cl, &P::TL,
     &P::Cl, &P::TL, false},
}};

constexpr bool RowsInOrder() {
  for (int i = 0; i < kGraphCount; ++i)
    if (kGraphs[i] != static_cast<Graph>(i) || kDescriptions[i].graph != kGraphs[i]) return false;
  return true;
}
static_assert(RowsInOrder(), "one row per graph, in the order of kGraphs");

}  // namespace

const GraphDescription& Describe(Graph graph) { return kDescriptions[static_cast<std::size_t>(graph)]; }

}  // namespace tavilo
