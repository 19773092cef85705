#pragma once
// One on-screen graph: it shows the picture last drawn into its canvas and
// answers pointer moves with a read-out text in its label.

#include <QImage>
#include <QRectF>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

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

  // The value coordinates of the widget's corners: left/top is the value at
  // the top-left corner, right/bottom the one at the bottom-right.
  void SetValueRect(const QRectF& values) { values_ = values; }
  void SetReadout(QLabel* label, Readout readout);
  // The value coordinates under widget position `pixel`.
  QPointF ValueAt(QPointF pixel) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QImage canvas_;
  QRectF values_;
  QLabel* label_ = nullptr;
  Readout readout_;
};

}  // namespace tavilo
