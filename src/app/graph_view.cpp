#include "graph_view.h"

#include <QLabel>
#include <QPainter>

#include "formats/number_text.h"
#include "graph_widget.h"

namespace tavilo {

const std::array<RangeListData, 4>& RangeListContents() {
  static const std::array<RangeListData, 4> lists = {{
      {"cbClMax", {"0.5", "1.0", "1.5", "2.0", "2.5", "3.0"}, 2},
      {"cbClMin", {"-1.5", "-1.0", "-0.5", "0.0"}, 2},
      {"cbCdMax", {"2.0", "1.0", "0.2", "0.1", "0.05", "0.025", "0.01"}, 5},
      {"cbAlfaMax", {"10.0", "15.0", "30.0", "45.0", "90.0"}, 1},
  }};
  return lists;
}

namespace {

std::optional<std::string> Readout(const char* xName, const char* xPattern, const char* yName, double limit,
                                   double x, double y) {
  if (!(x < limit)) return std::nullopt;
  return std::string(xName) + "=" + FormatNumber(x, xPattern) + " " + yName + "=" + FormatNumber(y, "0.00");
}

void DrawFrame(GraphWidget* graph) {
  if (graph == nullptr) return;
  QImage& canvas = graph->NewCanvas();
  QPainter painter(&canvas);
  painter.setPen(QColor(192, 192, 192));
  painter.drawRect(QRectF(QPointF(0, 0), QSizeF(canvas.size()) / canvas.devicePixelRatio()).adjusted(0, 0, -1, -1));
  graph->update();
}

}  // namespace

void DrawGraphs(const Airfoil* airfoil, const RangeValues& ranges, const GraphWidgets& graphs) {
  if (airfoil == nullptr) return;
  const double alfaMin = -ranges.alfaMax;
  graphs.clCd->SetValueRect(QRectF(QPointF(0, ranges.clMax), QPointF(ranges.cdMax, ranges.clMin)));
  graphs.clAlfa->SetValueRect(QRectF(QPointF(alfaMin, ranges.clMax), QPointF(ranges.alfaMax, ranges.clMin)));
  graphs.cmAlfa->SetValueRect(QRectF(QPointF(alfaMin, 0.4), QPointF(ranges.alfaMax, -0.4)));
  graphs.blu->SetValueRect(QRectF(QPointF(0, ranges.clMax), QPointF(1, ranges.clMin)));
  graphs.bll->SetValueRect(QRectF(QPointF(0, ranges.clMax), QPointF(1, ranges.clMin)));
  for (GraphWidget* graph : {graphs.clCd, graphs.clAlfa, graphs.cmAlfa, graphs.blu, graphs.bll}) DrawFrame(graph);
}

void ConnectReadouts(const GraphWidgets& graphs, const std::array<QLabel*, 5>& labels) {
  using namespace std::placeholders;
  graphs.clCd->SetReadout(labels[0], std::bind(Readout, "Cd", "0.0000", "Cl", 1.0, _1, _2));
  graphs.clAlfa->SetReadout(labels[1], std::bind(Readout, "Alfa", "0.00", "Cl", 2.0, _1, _2));
  graphs.cmAlfa->SetReadout(labels[2], std::bind(Readout, "Alfa", "0.00", "Cm", 2.0, _1, _2));
  graphs.blu->SetReadout(labels[3], std::bind(Readout, "x/c", "0.00", "Cl", 2.0, _1, _2));
  graphs.bll->SetReadout(labels[4], std::bind(Readout, "x/c", "0.00", "Cl", 2.0, _1, _2));
}

}  // namespace tavilo
