#pragma once
// The window's redraw: each graph on an image of its own, all drawn at once
// on the threads of a render context.

#include <QFont>
#include <QImage>
#include <QSizeF>

#include "model/airfoil.h"
#include "plot/plot_data.h"
#include "plotqt/render_context.h"

namespace tavilo {

// A graph's image, drawn on from its top left over `size` logical pixels;
// a null image is left alone.
struct GraphImage {
  QImage* image = nullptr;
  QSizeF size;
};
using GraphImages = PerGraph<GraphImage>;

// Draws as PlotData draws on surfaces of the images (lift-drag first, as in
// GraphSurfaces) in `font`, to the same pixels, but each graph on a thread of
// `context`. The images must not be used elsewhere meanwhile.
void PlotDataOnImages(const Airfoil* airfoil, const PlotRequest& request, const GraphImages& graphs, const QFont& font,
                      RenderContext& context);

}  // namespace tavilo
