#pragma once
// One on-screen graph: it shows the picture last drawn into its canvas and
// answers pointer moves with a read-out text in its label.

#include <QImage>
#include <QPointF>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "plot/views.h"

class QLabel;

namespace tavilo {

class GraphWidget : public QWidget {
  Q_OBJECT

 public:
  // The read-out text at value coordinates (x, y), or none to keep the label.
  using Readout = std::function<std::optional<std::string>(double x, double y)>;

  GraphWidget(const QString& objectName, QWidget* parent);

  // A canvas of the widget's current size (device pixels), not cleared: the
  // graph's frame clears it first thing. The caller draws into it and then
  // calls update().
  QImage& NewCanvas();
  const QImage& Canvas() const { return canvas_; }

  // The graph's view: the values at the widget's edges, as last drawn.
  void SetView(const GraphView& view) { view_ = view; }
  const GraphView& View() const { return view_; }
  void SetReadout(QLabel* label, Readout readout);
  // The values under widget position `pixel` in the graph's view.
  QPointF ValueAt(QPointF pixel) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QImage canvas_;
  GraphView view_;
  QLabel* label_ = nullptr;
  Readout readout_;
};

}  // namespace tavilo
