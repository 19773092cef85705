#pragma once
// Draws the current airfoil into the five on-screen graphs and wires their
// pointer read-outs.

#include <array>
#include <string>
#include <vector>

#include "model/airfoil.h"

class QComboBox;
class QLabel;

namespace tavilo {

class GraphWidget;

struct GraphWidgets {
  GraphWidget* clCd = nullptr;    // ClCdPicture
  GraphWidget* clAlfa = nullptr;  // ClAlfaPicture
  GraphWidget* cmAlfa = nullptr;  // CmAlfaPicture
  GraphWidget* blu = nullptr;     // BLUPicture
  GraphWidget* bll = nullptr;     // BLLPicture
};

struct RangeListData {
  const char* name;  // object name of the drop-down list
  std::vector<std::string> items;
  int initial;  // 0-based index selected at start
};

// The four range lists in the order the window builds them.
const std::array<RangeListData, 4>& RangeListContents();

// The numbers currently chosen in the four range lists.
struct RangeValues {
  double clMax = 1.5;
  double clMin = -0.5;
  double cdMax = 0.025;
  double alfaMax = 15.0;
};

// Draws frames and the selected polars of `airfoil` (none: the graphs keep
// what they show) into every graph, sized to the widget, and repaints them.
void DrawGraphs(const Airfoil* airfoil, const RangeValues& ranges, const GraphWidgets& graphs);

// Gives each graph its read-out label: CdClValue, ClAlfaValue, CmAlfaValue,
// TUxcValue, TLxcValue in the order of GraphWidgets.
void ConnectReadouts(const GraphWidgets& graphs, const std::array<QLabel*, 5>& labels);

}  // namespace tavilo
