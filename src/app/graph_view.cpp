#include "graph_view.h"

#include <QLabel>
#include <QPainter>
#include <memory>

#include "graph_widget.h"
#include "plot/plot_data.h"
#include "plot/readout.h"
#include "plotqt/qt_surface.h"

namespace tavilo {

namespace {

// One graph's canvas with a painter and a surface on it for one redraw.
struct Canvas {
  Canvas(GraphWidget* graph, RenderContext& context) : widget(graph), painter(&graph->NewCanvas()) {
    surface = std::make_unique<QtSurface>(painter, QRectF(QPointF(0, 0), QSizeF(graph->size())), context);
  }
  GraphWidget* widget;
  QPainter painter;
  std::unique_ptr<QtSurface> surface;
};

}  // namespace

void DrawGraphs(const Airfoil* airfoil, const PlotRequest& request, const GraphWidgets& graphs,
                RenderContext& context) {
  if (airfoil == nullptr) return;
  std::array<std::unique_ptr<Canvas>, 5> canvases;
  GraphWidget* const widgets[] = {graphs.clCd, graphs.clAlfa, graphs.cmAlfa, graphs.blu, graphs.bll};
  const PlotViews& v = request.views;
  const GraphView* const views[] = {&v.clCd, &v.clAlfa, &v.cmAlfa, &v.blu, &v.bll};
  for (std::size_t i = 0; i < canvases.size(); ++i)
    if (widgets[i] != nullptr) canvases[i] = std::make_unique<Canvas>(widgets[i], context);
  auto surface = [&](std::size_t i) -> DrawingSurface* { return canvases[i] ? canvases[i]->surface.get() : nullptr; };
  PlotData(airfoil, request, GraphSurfaces{surface(0), surface(1), surface(2), surface(3), surface(4)});
  for (std::size_t i = 0; i < canvases.size(); ++i) {
    Canvas* canvas = canvases[i].get();
    if (canvas == nullptr) continue;
    canvas->widget->SetView(*views[i]);
    canvas->surface.reset();  // draws what it still holds before the painter ends
    canvas->painter.end();
    canvas->widget->update();
  }
}

void ConnectReadouts(const GraphWidgets& graphs, const std::array<QLabel*, 5>& labels) {
  graphs.clCd->SetReadout(labels[0], CdClValue);
  graphs.clAlfa->SetReadout(labels[1], ClAlfaValue);
  graphs.cmAlfa->SetReadout(labels[2], CmAlfaValue);
  graphs.blu->SetReadout(labels[3], TUxcValue);
  graphs.bll->SetReadout(labels[4], TLxcValue);
}

}  // namespace tavilo
