#pragma once
// The graphs as the user works with them: each graph's zoom, the View
// switches (numbers on every axis, readable colours), a tool's curve kept
// over the polars, and pictures of the graphs saved to a file or copied to
// the clipboard.

#include <QObject>
#include <functional>
#include <optional>
#include <vector>

#include "graph_view.h"
#include "plot/plot_data.h"
#include "strings/language.h"
#include "strings/text_ids.h"

namespace tavilo {

class DocumentController;
class QtUserInterface;
class RenderContext;

class GraphController : public QObject {
  Q_OBJECT

 public:
  // `ranges` reads the range lists. Gives every graph its context menu
  // (mnuGraphCopy, mnuGraphSave) and takes its zoom requests.
  GraphController(const GraphWidgets& graphs, DocumentController& document, QtUserInterface& ui, RenderContext& context,
                  std::function<PlotRanges()> ranges, QObject* parent);

  // What a redraw shows: the range lists' views with the zoomed graphs'
  // own, the overlay, the language and the View switches.
  PlotRequest Request() const;
  // Redraws every graph; with `graph` that one alone.
  void Redraw(std::optional<Graph> graph = std::nullopt);
  // Every graph back to the range lists' scales, and redrawn.
  void ResetZoom();
  // The same for a caller that redraws next.
  void ForgetZoom() { zoom_ = {}; }

  // A curve drawn over the polars of every graph, under the texts, in every
  // redraw and picture until it is cleared or replaced; redraws.
  void SetOverlay(std::vector<PolarPoint> curve, Color color);
  void ClearOverlay();
  bool HasOverlay() const { return !overlay_.empty(); }

  bool AxisNumbers() const { return axisNumbers_; }
  bool ReadableColors() const { return readableColors_; }
  void SetAxisNumbers(bool on);
  void SetReadableColors(bool on);

  // File > Save Graphs As...: all graphs as zoomed, PNG, SVG or PDF.
  void SaveGraphs();
  // A graph's context menu: its picture to the clipboard or to a file.
  void CopyPicture(Graph graph);
  void SavePicture(Graph graph);
  // The caption of the graphs' context menu entries.
  void SwitchLanguage(Language language);

 private:
  std::string ChoosePictureFile(Text captionId);
  void ShowWriteError(const std::string& path, const std::string& error);

  GraphWidgets widgets_;
  DocumentController& document_;
  QtUserInterface& ui_;
  RenderContext& context_;
  std::function<PlotRanges()> ranges_;
  PerGraph<std::optional<GraphView>> zoom_;
  std::vector<PolarPoint> overlay_;
  Color overlayColor_;
  bool axisNumbers_ = true;
  bool readableColors_ = false;
};

}  // namespace tavilo
