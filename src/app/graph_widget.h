#pragma once
// One on-screen graph: it shows the picture last drawn into its canvas,
// answers pointer moves with a read-out text in its label, and asks for a
// new view when the user zooms or pans it: the wheel zooms about the
// pointer, a rectangle dragged with the left button zooms into it, the
// middle button (or Shift with the left) pans, a double click resets. With
// the keyboard focus, + and - zoom about the centre, the arrows pan and
// Home resets.

#include <QImage>
#include <QPointF>
#include <QRect>
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
  // The unzoomed view, which bounds every zoom and pan (see plot/zoom.h).
  void SetHome(const GraphView& home) { home_ = home; }
  void SetReadout(QLabel* label, Readout readout);
  // The values under widget position `pixel` in the graph's view.
  QPointF ValueAt(QPointF pixel) const;

  // Called with the view the user asks for, or with none to return to the
  // range lists' scales (a view that has come back to them is one too).
  using ViewRequest = std::function<void(const std::optional<GraphView>&)>;
  void SetViewRequest(ViewRequest request) { viewRequest_ = std::move(request); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Ask(const std::optional<GraphView>& view);
  void ZoomAboutPixel(QPointF pixel, double factor);
  void PanByPixels(QPointF delta);

  QImage canvas_;
  GraphView view_;
  GraphView home_;
  QLabel* label_ = nullptr;
  Readout readout_;
  ViewRequest viewRequest_;
  enum class Drag { None, Band, Pan } drag_ = Drag::None;
  QPointF dragStart_, dragLast_;
  QRect band_;  // the rectangle being dragged, empty when none
};

}  // namespace tavilo
