#pragma once

#include <QSizeF>
#include <string>

#include "model/airfoil.h"
#include "plot/plot_data.h"
#include "strings/language.h"

namespace tavilo {

// Renders the five graphs of every ticked polar of `airfoil` in the default
// views of the default ranges, the lift-drag title in `language`, into one
// picture of 1600 x 1000: SVG when `path` ends in ".svg" (any case), PDF for
// ".pdf", PNG for ".png". The lift-drag graph fills the
// left half, the other four share the right half, each under a caption,
// with a scale in the margin. Needs a QGuiApplication; when there is no
// application object at all, an off-screen one is made for the rest of the
// run. False with a message in `error` (when given) for another extension or
// a file that cannot be written; the file is written whole or not at all.
bool RenderPlotsToFile(const Airfoil& airfoil, const std::string& path, Language language, std::string* error);
// The same in the request's views and options (numbers on the axes replace
// the margin scales); a PNG has `pixelRatio` pixels per picture unit.
bool RenderPlotsToFile(const Airfoil& airfoil, const std::string& path, const PlotRequest& request, double pixelRatio,
                       std::string* error);
// One graph alone, as the window shows it at `size`.
bool RenderGraphToFile(const Airfoil& airfoil, const std::string& path, const PlotRequest& request, Graph graph,
                       const QSizeF& size, double pixelRatio, std::string* error);

// Text needs a QGuiApplication; a converter run from a terminal has none,
// so one is made off screen and lives until the process ends. False with a
// message when another kind of application runs.
bool EnsureGuiApplication(std::string* error);

}  // namespace tavilo
