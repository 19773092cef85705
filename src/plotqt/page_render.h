#pragma once
// The printed page on a QPainter: a printer's page, a print preview or a
// PDF file. The page itself is laid out by the core; this puts it on paper.

#include <QPainter>
#include <QRectF>
#include <string>

#include "model/airfoil.h"
#include "plot/print_page.h"
#include "plotqt/render_context.h"

namespace tavilo {

// Draws the page of `airfoil` on `painter`, whose device is a sheet of
// `request.paper` with its top-left corner at the painter's origin and
// `paper` its extent in the painter's coordinates.
void PaintPage(QPainter& painter, const QRectF& paper, const Airfoil& airfoil, const PageRequest& request,
               RenderContext& context);

// Writes the page as a one-page PDF of `request.paper` (lines as lines,
// texts as text) to `path`, replacing it only when the whole file is ready.
// Needs a QGuiApplication; an off-screen one is made when there is no
// application at all. False with a message in `error` when it cannot be
// written or drawn.
bool WritePagePdf(const Airfoil& airfoil, const PageRequest& request, const std::string& path, std::string* error);

}  // namespace tavilo
