#include "graph_view.h"

#include <QGuiApplication>
#include <QLabel>

#include "graph_widget.h"
#include "plot/plot_data.h"
#include "plotqt/graph_images.h"

namespace tavilo {

void DrawGraphs(const Airfoil* airfoil, const PlotRequest& request, const GraphWidgets& graphs,
                RenderContext& context) {
  if (airfoil == nullptr) return;
  GraphImages images;
  for (Graph g : kGraphs)
    if (graphs[g] != nullptr) images[g] = {&graphs[g]->NewCanvas(), QSizeF(graphs[g]->size())};
  PlotDataOnImages(airfoil, request, images, QGuiApplication::font(), context);
  // Each graph drawn takes its view for its read-out and its next zoom.
  for (Graph g : kGraphs) {
    if (graphs[g] == nullptr) continue;
    graphs[g]->SetView(request.views[g]);
    graphs[g]->update();
  }
}

void ConnectReadouts(const GraphWidgets& graphs, const ReadoutLabels& labels) {
  for (Graph g : kGraphs) graphs[g]->SetReadout(labels[g], Describe(g).readout);
}

}  // namespace tavilo
