#include "graph_view.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <array>
#include <memory>

#include "graph_widget.h"
#include "plot/plot_data.h"
#include "plot/readout.h"
#include "plotqt/graph_images.h"
#include "plotqt/qt_surface.h"

namespace tavilo {

namespace {

// One graph's canvas with a painter and a surface on it for one drawing.
struct Canvas {
  Canvas(GraphWidget* graph, RenderContext& context) : widget(graph), painter(&graph->NewCanvas()) {
    surface = std::make_unique<QtSurface>(painter, QRectF(QPointF(0, 0), QSizeF(graph->size())), context);
  }
  GraphWidget* widget;
  QPainter painter;
  std::unique_ptr<QtSurface> surface;
};

// The canvases of the graphs given (a null one is left alone) for one
// drawing; Finish shows what was drawn.
class Canvases {
 public:
  Canvases(const GraphWidgets& graphs, RenderContext& context) {
    for (int i = 0; i < 5; ++i)
      if (graphs[i] != nullptr) canvases_[i] = std::make_unique<Canvas>(graphs[i], context);
  }

  GraphSurfaces Surfaces() const {
    auto surface = [this](std::size_t i) -> DrawingSurface* {
      return canvases_[i] ? canvases_[i]->surface.get() : nullptr;
    };
    return {surface(0), surface(1), surface(2), surface(3), surface(4)};
  }

  void Finish() {
    for (std::size_t i = 0; i < canvases_.size(); ++i) {
      Canvas* canvas = canvases_[i].get();
      if (canvas == nullptr) continue;
      canvas->surface.reset();  // draws what it still holds before the painter ends
      canvas->painter.end();
      canvas->widget->update();
    }
  }

 private:
  std::array<std::unique_ptr<Canvas>, 5> canvases_;
};

}  // namespace

void DrawGraphs(const Airfoil* airfoil, const PlotRequest& request, const GraphWidgets& graphs,
                RenderContext& context) {
  if (airfoil == nullptr) return;
  std::array<GraphImage, 5> images;
  for (int i = 0; i < 5; ++i)
    if (graphs[i] != nullptr) images[i] = {&graphs[i]->NewCanvas(), QSizeF(graphs[i]->size())};
  PlotDataOnImages(airfoil, request, images, QGuiApplication::font(), context);
  // Each graph drawn takes its view for its read-out and for whatever is
  // drawn over it later.
  for (int i = 0; i < 5; ++i) {
    if (graphs[i] == nullptr) continue;
    graphs[i]->SetView(request.views[i]);
    graphs[i]->update();
  }
}

void DrawOverGraphs(const PlotOverlay& overlay, const GraphWidgets& graphs, RenderContext& context) {
  // A graph never drawn has no picture to draw over.
  PlotViews views;
  for (int i = 0; i < 5; ++i) {
    if (graphs[i]->Canvas().isNull()) return;
    views[i] = graphs[i]->View();
  }
  Canvases canvases(graphs, context);
  DrawOverlay(overlay, views, canvases.Surfaces());
  canvases.Finish();
}

void ConnectReadouts(const GraphWidgets& graphs, const std::array<QLabel*, 5>& labels) {
  graphs.clCd->SetReadout(labels[0], CdClValue);
  graphs.clAlfa->SetReadout(labels[1], ClAlfaValue);
  graphs.cmAlfa->SetReadout(labels[2], CmAlfaValue);
  graphs.blu->SetReadout(labels[3], TUxcValue);
  graphs.bll->SetReadout(labels[4], TLxcValue);
}

}  // namespace tavilo
