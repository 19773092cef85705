#include "graph_view.h"

#include <QGuiApplication>
#include <QLabel>
#include <array>

#include "graph_widget.h"
#include "plot/plot_data.h"
#include "plot/readout.h"
#include "plotqt/graph_images.h"

namespace tavilo {

void DrawGraphs(const Airfoil* airfoil, const PlotRequest& request, const GraphWidgets& graphs,
                RenderContext& context) {
  if (airfoil == nullptr) return;
  std::array<GraphImage, 5> images;
  for (int i = 0; i < 5; ++i)
    if (graphs[i] != nullptr) images[i] = {&graphs[i]->NewCanvas(), QSizeF(graphs[i]->size())};
  PlotDataOnImages(airfoil, request, images, QGuiApplication::font(), context);
  // Each graph drawn takes its view for its read-out and its next zoom.
  for (int i = 0; i < 5; ++i) {
    if (graphs[i] == nullptr) continue;
    graphs[i]->SetView(request.views[i]);
    graphs[i]->update();
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
