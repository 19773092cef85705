#include "graph_controller.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>

#include "base/errors.h"
#include "document_controller.h"
#include "graph_widget.h"
#include "plotqt/render.h"
#include "qt_user_interface.h"
#include "strings/string_table.h"

namespace tavilo {

GraphController::GraphController(const GraphWidgets& graphs, DocumentController& document, QtUserInterface& ui,
                                 RenderContext& context, std::function<PlotRanges()> ranges, QObject* parent)
    : QObject(parent), widgets_(graphs), document_(document), ui_(ui), context_(context), ranges_(std::move(ranges)) {
  for (Graph g : kGraphs) {
    GraphWidget* widget = widgets_[g];
    widget->SetViewRequest([this, g](const std::optional<GraphView>& view) {
      zoom_[g] = view;
      Redraw(g);
    });
    widget->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* copy = new QAction(widget);
    copy->setObjectName("mnuGraphCopy");
    connect(copy, &QAction::triggered, this, [this, g] { CopyPicture(g); });
    auto* save = new QAction(widget);
    save->setObjectName("mnuGraphSave");
    connect(save, &QAction::triggered, this, [this, g] { SavePicture(g); });
    widget->addActions({copy, save});
  }
}

void GraphController::SwitchLanguage(Language language) {
  for (GraphWidget* widget : widgets_) {
    widget->findChild<QAction*>("mnuGraphCopy")
        ->setText(QString::fromStdString(GetResString(Text::CopyPicture, language)));
    widget->findChild<QAction*>("mnuGraphSave")
        ->setText(QString::fromStdString(GetResString(Text::SavePicture, language)));
  }
}

PlotRequest GraphController::Request() const {
  PlotRequest request;
  request.views = DefaultViews(ranges_());
  for (Graph g : kGraphs)
    if (zoom_[g]) request.views[g] = *zoom_[g];
  if (!overlay_.empty()) request.overlays.push_back({overlay_, overlayColor_});
  request.language = ui_.Language();
  request.axisNumbers = axisNumbers_;
  request.readableColors = readableColors_;
  return request;
}

void GraphController::Redraw(std::optional<Graph> graph) {
  try {
    GraphWidgets only;
    const PlotViews homes = DefaultViews(ranges_());
    for (Graph g : kGraphs) {
      widgets_[g]->SetHome(homes[g]);
      if (!graph || *graph == g) only[g] = widgets_[g];
    }
    DrawGraphs(&document_.Current(), Request(), only, context_);
  } catch (const RuntimeError&) {
    // A range text beyond every number cannot come from the fixed lists;
    // the graphs then keep what they show.
  }
}

void GraphController::ResetZoom() {
  zoom_ = {};
  Redraw();
}

void GraphController::SetOverlay(std::vector<PolarPoint> curve, Color color) {
  overlay_ = std::move(curve);
  overlayColor_ = color;
  Redraw();
}

void GraphController::ClearOverlay() {
  if (overlay_.empty()) return;
  overlay_.clear();
  Redraw();
}

void GraphController::SetAxisNumbers(bool on) {
  axisNumbers_ = on;
  Redraw();
}

void GraphController::SetReadableColors(bool on) {
  readableColors_ = on;
  Redraw();
}

// Titled by the command that asks: Save Graphs As or Save Picture.
std::string GraphController::ChoosePictureFile(Text captionId) {
  const Language language = ui_.Language();
  FileDialogRequest request{FileDialogKind::Save, DialogTitle(GetResString(captionId, language)),
                            GetResString(Text::PictureFilter, language), true};
  return ui_.ChooseFile(request);
}

void GraphController::ShowWriteError(const std::string& path, const std::string& error) {
  const Language language = ui_.Language();
  ui_.ShowMessage(FormatResString(Text::PictureNotWritten, language, {path}) + "\r\n" + error, ErrorTitle(language),
                  MessageIcon::Critical);
}

// Pictures are made at the screen's density, so that they are as sharp as
// the window.
void GraphController::SaveGraphs() {
  const std::string path = ChoosePictureFile(Text::SaveGraphsAs);
  if (path.empty()) return;
  std::string error;
  ui_.SetBusy(true);
  const bool written =
      RenderPlotsToFile(document_.Current(), path, Request(), widgets_[Graph::ClCd]->devicePixelRatioF(), &error);
  ui_.SetBusy(false);
  if (!written) ShowWriteError(path, error);
}

// The picture as the graph shows it, a tool's curve drawn over it included.
void GraphController::CopyPicture(Graph graph) { QGuiApplication::clipboard()->setImage(widgets_[graph]->Canvas()); }

void GraphController::SavePicture(Graph graph) {
  const std::string path = ChoosePictureFile(Text::SavePicture);
  if (path.empty()) return;
  GraphWidget* widget = widgets_[graph];
  std::string error;
  if (!RenderGraphToFile(document_.Current(), path, Request(), graph, QSizeF(widget->size()),
                         widget->devicePixelRatioF(), &error))
    ShowWriteError(path, error);
}

}  // namespace tavilo
