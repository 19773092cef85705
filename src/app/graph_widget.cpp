#include "graph_widget.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "plot/zoom.h"

namespace tavilo {

GraphWidget::GraphWidget(const QString& objectName, QWidget* parent) : QWidget(parent) {
  setObjectName(objectName);
  // The canvas covers every pixel, so Qt need not clear the background
  // first: resizing then repaints without a white flash.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setCursor(Qt::CrossCursor);
  setFocusPolicy(Qt::StrongFocus);
}

namespace {

// One wheel notch or key press zooms in to this share of the span; a tenth
// of the span is one arrow key's pan.
constexpr double kZoomStep = 0.8;
constexpr double kPanStep = 0.1;
// A rectangle smaller than this (pixels) is a click, not a zoom.
constexpr int kLeastBand = 5;

}  // namespace

void GraphWidget::Ask(const std::optional<GraphView>& view) {
  if (!viewRequest_) return;
  viewRequest_(view && view->zoomed ? view : std::nullopt);
}

void GraphWidget::ZoomAboutPixel(QPointF pixel, double factor) {
  const QPointF value = ValueAt(pixel);
  Ask(ZoomAbout(view_, home_, value.x(), value.y(), factor));
}

void GraphWidget::PanByPixels(QPointF delta) {
  const double w = std::max(1, width()), h = std::max(1, height());
  Ask(Pan(view_, home_, -delta.x() / w * view_.Width(), -delta.y() / h * view_.Height()));
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
  // A graph with the keyboard focus says so with a frame in the highlight colour.
  painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  if (!band_.isEmpty()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DashLine));
    painter.drawRect(band_.normalized().adjusted(0, 0, -1, -1));
  }
}

void GraphWidget::mousePressEvent(QMouseEvent* event) {
  const bool pan = event->button() == Qt::MiddleButton ||
                   (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier));
  if (pan || event->button() == Qt::LeftButton) {
    drag_ = pan ? Drag::Pan : Drag::Band;
    dragStart_ = dragLast_ = event->position();
    if (pan) setCursor(Qt::ClosedHandCursor);
    event->accept();
    return;
  }
  QWidget::mousePressEvent(event);
}

void GraphWidget::mouseReleaseEvent(QMouseEvent* event) {
  const Drag drag = drag_;
  drag_ = Drag::None;
  setCursor(Qt::CrossCursor);
  if (drag == Drag::Band) {
    const QRect band = band_.normalized();
    band_ = QRect();
    update();
    if (band.width() >= kLeastBand && band.height() >= kLeastBand) {
      const QPointF a = ValueAt(band.topLeft()), b = ValueAt(QPointF(band.right() + 1, band.bottom() + 1));
      Ask(ZoomTo(home_, a.x(), a.y(), b.x(), b.y()));
    }
  }
  QWidget::mouseReleaseEvent(event);
}

void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    drag_ = Drag::None;
    band_ = QRect();
    Ask(std::nullopt);
    event->accept();
    return;
  }
  QWidget::mouseDoubleClickEvent(event);
}

void GraphWidget::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / 120.0;
  if (notches == 0) return QWidget::wheelEvent(event);
  ZoomAboutPixel(event->position(), std::pow(kZoomStep, notches));
  event->accept();
}

void GraphWidget::keyPressEvent(QKeyEvent* event) {
  const QPointF centre(width() / 2.0, height() / 2.0);
  const double w = width(), h = height();
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: ZoomAboutPixel(centre, kZoomStep); break;
    case Qt::Key_Minus: ZoomAboutPixel(centre, 1 / kZoomStep); break;
    case Qt::Key_Left: PanByPixels(QPointF(kPanStep * w, 0)); break;
    case Qt::Key_Right: PanByPixels(QPointF(-kPanStep * w, 0)); break;
    case Qt::Key_Up: PanByPixels(QPointF(0, kPanStep * h)); break;
    case Qt::Key_Down: PanByPixels(QPointF(0, -kPanStep * h)); break;
    case Qt::Key_Home: Ask(std::nullopt); break;
    default: return QWidget::keyPressEvent(event);
  }
  event->accept();
}

void GraphWidget::focusInEvent(QFocusEvent* event) {
  update();
  QWidget::focusInEvent(event);
}

void GraphWidget::focusOutEvent(QFocusEvent* event) {
  update();
  QWidget::focusOutEvent(event);
}

void GraphWidget::mouseMoveEvent(QMouseEvent* event) {
  if (drag_ == Drag::Band) {
    band_ = QRect(dragStart_.toPoint(), event->position().toPoint());
    update();
  } else if (drag_ == Drag::Pan) {
    const QPointF delta = event->position() - dragLast_;
    dragLast_ = event->position();
    PanByPixels(delta);
  }
  if (label_ != nullptr && readout_) {
    const QPointF value = ValueAt(event->position());
    if (const std::optional<std::string> text = readout_(value.x(), value.y())) {
      label_->setText(QString::fromStdString(*text));
    }
  }
  QWidget::mouseMoveEvent(event);
}

}  // namespace tavilo
