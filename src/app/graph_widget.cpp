#include "graph_widget.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

namespace tavilo {

GraphWidget::GraphWidget(const QString& objectName, QWidget* parent) : QWidget(parent) {
  setObjectName(objectName);
  // The canvas covers every pixel, so Qt need not clear the background
  // first: resizing then repaints without a white flash.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setCursor(Qt::CrossCursor);
}

QImage& GraphWidget::NewCanvas() {
  const qreal ratio = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * ratio).toSize().expandedTo(QSize(1, 1));
  if (canvas_.size() != pixels) canvas_ = QImage(pixels, QImage::Format_RGB32);
  canvas_.setDevicePixelRatio(ratio);
  return canvas_;
}

void GraphWidget::SetReadout(QLabel* label, Readout readout) {
  label_ = label;
  readout_ = std::move(readout);
}

QPointF GraphWidget::ValueAt(QPointF pixel) const {
  const double w = std::max(1, width());
  const double h = std::max(1, height());
  return {view_.left + pixel.x() / w * view_.Width(), view_.top + pixel.y() / h * view_.Height()};
}

void GraphWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (canvas_.isNull()) {
    painter.fillRect(rect(), Qt::white);
  } else {
    painter.drawImage(QPointF(0, 0), canvas_);
    // Between a resize and the next drawing the canvas may be smaller.
    const QSizeF drawn = QSizeF(canvas_.size()) / canvas_.devicePixelRatio();
    if (drawn.width() < width()) painter.fillRect(QRectF(drawn.width(), 0, width(), height()), Qt::white);
    if (drawn.height() < height()) painter.fillRect(QRectF(0, drawn.height(), width(), height()), Qt::white);
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void GraphWidget::mouseMoveEvent(QMouseEvent* event) {
  if (label_ != nullptr && readout_) {
    const QPointF value = ValueAt(event->position());
    if (const std::optional<std::string> text = readout_(value.x(), value.y())) {
      label_->setText(QString::fromStdString(*text));
    }
  }
  QWidget::mouseMoveEvent(event);
}

}  // namespace tavilo
