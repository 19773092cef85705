#include "plot/graphs.h"

#include "plot/frames.h"
#include "plot/readout.h"

namespace tavilo {

namespace {

// The names and captions are those the window and the pictures have
// always shown.
// clang-format off
constexpr std::array<GraphDescription, kGraphCount> kDescriptions = {{
    {.graph = Graph::ClCd, .picture = "ClCdPicture", .readoutLabel = "CdClValue",
     .readout = CdClValue, .title = "Cl-Cd", .tabKey = "", .frame = DrawClCdFrame,
     .x = AxisQuantity::Cd, .y = AxisQuantity::Cl, .markers = true,
     .pointX = &PolarPoint::Cd, .pointY = &PolarPoint::Cl, .missing = nullptr},
    {.graph = Graph::ClAlfa, .picture = "ClAlfaPicture", .readoutLabel = "ClAlfaValue",
     .readout = ClAlfaValue, .title = "Cl-Alfa", .tabKey = "CLALFA", .frame = DrawClAlfaFrame,
     .x = AxisQuantity::Alfa, .y = AxisQuantity::Cl, .markers = true,
     .pointX = &PolarPoint::Alfa, .pointY = &PolarPoint::Cl, .missing = nullptr},
    {.graph = Graph::CmAlfa, .picture = "CmAlfaPicture", .readoutLabel = "CmAlfaValue",
     .readout = CmAlfaValue, .title = "Cm-Alfa", .tabKey = "CMALFA", .frame = DrawCmAlfaFrame,
     .x = AxisQuantity::Alfa, .y = AxisQuantity::Cm, .markers = true,
     .pointX = &PolarPoint::Alfa, .pointY = &PolarPoint::Cm, .missing = &PolarPoint::Cm},
    {.graph = Graph::Blu, .picture = "BLUPicture", .readoutLabel = "TUxcValue",
     .readout = TUxcValue, .title = "TU-x/c", .tabKey = "TUXC", .frame = DrawTransitionFrame,
     .x = AxisQuantity::Xc, .y = AxisQuantity::Cl, .markers = false,
     .pointX = &PolarPoint::TU, .pointY = &PolarPoint::Cl, .missing = &PolarPoint::TU},
    {.graph = Graph::Bll, .picture = "BLLPicture", .readoutLabel = "TLxcValue",
     .readout = TLxcValue, .title = "TL-x/c", .tabKey = "TLXC", .frame = DrawTransitionFrame,
     .x = AxisQuantity::Xc, .y = AxisQuantity::Cl, .markers = false,
     .pointX = &PolarPoint::TL, .pointY = &PolarPoint::Cl, .missing = &PolarPoint::TL},
}};
// clang-format on

constexpr bool RowsInOrder() {
  for (int i = 0; i < kGraphCount; ++i)
    if (kGraphs[i] != static_cast<Graph>(i) || kDescriptions[i].graph != kGraphs[i]) return false;
  return true;
}
static_assert(RowsInOrder(), "one row per graph, in the order of kGraphs");

}  // namespace

const GraphDescription& Describe(Graph graph) { return kDescriptions[static_cast<std::size_t>(graph)]; }

}  // namespace tavilo
