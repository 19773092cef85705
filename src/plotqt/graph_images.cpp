#include "plotqt/graph_images.h"

#include <QPainter>
#include <atomic>
#include <optional>

#include "plotqt/qt_surface.h"

namespace tavilo {

void PlotDataOnImages(const Airfoil* airfoil, const PlotRequest& request, const GraphImages& graphs, const QFont& font,
                      RenderContext& context) {
  if (airfoil == nullptr) return;
  std::atomic<bool> cut{false};
  context.ForEach(kGraphCount, [&](int index, RenderContext& own) {
    const Graph graph = kGraphs[index];
    if (graphs[graph].image == nullptr) return;
    QPainter painter(graphs[graph].image);
    QtSurface surface(painter, QRectF(QPointF(0, 0), graphs[graph].size), font, own);
    GraphSurfaces one;
    one[graph] = &surface;
    if (!PlotData(airfoil, request, one)) cut = true;
  });
  if (!cut) return;
  // A wild value ends a redraw for all graphs at once, those before it in
  // the polar's order with that polar and those after it without: the
  // graphs are drawn again together, rarely, so that they show just that.
  PerGraph<std::optional<QPainter>> painters;
  PerGraph<std::optional<QtSurface>> surfaces;
  GraphSurfaces all;
  for (Graph graph : kGraphs) {
    if (graphs[graph].image == nullptr) continue;
    painters[graph].emplace(graphs[graph].image);
    surfaces[graph].emplace(*painters[graph], QRectF(QPointF(0, 0), graphs[graph].size), font, context);
    all[graph] = &*surfaces[graph];
  }
  PlotData(airfoil, request, all);
}

}  // namespace tavilo
