#include "plotqt/qt_surface.h"

#include <QGuiApplication>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <QString>
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace tavilo {

namespace {

// A run this long is a curve and is drawn as one polyline; shorter ones
// (markers, grid lines) join the list of separate lines.
constexpr size_t kPolylinePoints = 10;

Qt::BrushStyle BrushFor(int fillStyle) {
  switch (fillStyle) {
    case kFillSolid: return Qt::SolidPattern;
    case 2: return Qt::HorPattern;
    case 3: return Qt::VerPattern;
    case 4: return Qt::BDiagPattern;
    case 5: return Qt::FDiagPattern;
    case 6: return Qt::CrossPattern;
    case 7: return Qt::DiagCrossPattern;
    default: return Qt::NoBrush;
  }
}

// What a text's layout depends on besides the text: the font and the
// device's resolution (a printer's differs from the screen's).
QString LayoutKey(const QFont& font, const QPaintDevice* device) {
  QString key = font.key();
  if (device != nullptr) key += QStringLiteral("@%1x%2").arg(device->logicalDpiX()).arg(device->logicalDpiY());
  return key;
}

}  // namespace

QtSurface::QtSurface(QPainter& painter, const QRectF& target, RenderContext& context)
    : QtSurface(painter, target, QGuiApplication::font(), &context, nullptr) {}

QtSurface::QtSurface(QPainter& painter, const QRectF& target, const QFont& font, RenderContext& context)
    : QtSurface(painter, target, font, &context, nullptr) {}

QtSurface::QtSurface(QPainter& painter, const QRectF& target)
    : QtSurface(painter, target, QGuiApplication::font(), nullptr, std::make_unique<RenderContext>()) {}

QtSurface::QtSurface(QPainter& painter, const QRectF& target, const QFont& font)
    : QtSurface(painter, target, font, nullptr, std::make_unique<RenderContext>()) {}

QtSurface::QtSurface(QPainter& painter, const QRectF& target, const QFont& font, RenderContext* shared,
                     std::unique_ptr<RenderContext> own)
    : ownContext_(std::move(own)),
      context_(shared != nullptr ? *shared : *ownContext_),
      painter_(painter),
      target_(target),
      font_(font),
      metrics_(font, painter.device()),
      layoutKey_(LayoutKey(font, painter.device())),
      scaleWidth_(target.width()),
      scaleHeight_(target.height()) {
  painter_.save();
  clip_ = painter_.hasClipping() ? target_.intersected(painter_.clipBoundingRect()) : target_;
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
  QTransform transform = painter_.worldTransform();
  canSnap_ = transform.type() <= QTransform::TxTranslate;
  cutsItself_ = painter_.paintEngine() != nullptr && painter_.paintEngine()->type() == QPaintEngine::SVG;
  deviceOffset_ = QPointF(transform.dx(), transform.dy());
  pixelRatio_ = painter_.device() ? painter_.device()->devicePixelRatioF() : 1.0;
  raster_ = DirectRaster::For(painter_, context_.Shapes());
  if (raster_) raster_->SetClip(clip_);
  lines_.reserve(4096);
  run_.reserve(1024);
}

QtSurface::~QtSurface() {
  Flush();
  painter_.restore();
}

QColor QtSurface::ToQColor(Color color) { return QColor(color.red, color.green, color.blue); }

QPen QtSurface::LinePen(const QColor& color, int width) const {
  // Widths in logical pixels, so that a line keeps its look on a dense
  // screen; a width of 1 at ratio 1 still takes Qt's fast thin-line path.
  return QPen(color, width * lineUnit_, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin);
}

// An odd number of device pixels wide is sharp on a pixel's centre, an even
// one on a pixel's edge; on a 2x screen a one-pixel line is two wide.
double QtSurface::Snap(double v, double offset) const {
  double device = (v + offset) * pixelRatio_;
  long width = std::lround(drawWidth_ * pixelRatio_);
  double snapped = width % 2 == 1 ? std::floor(device) + 0.5 : std::round(device);
  return snapped / pixelRatio_ - offset;
}

double QtSurface::SnapX(double x) const { return canSnap_ ? Snap(x, deviceOffset_.x()) : x; }
double QtSurface::SnapY(double y) const { return canSnap_ ? Snap(y, deviceOffset_.y()) : y; }

// Several surfaces may share one painter (the graphs of one picture), so
// each sets its own clip before it draws; whatever the raster has queued
// goes first, as it came first.
void QtSurface::UseClip() {
  if (raster_) raster_->Draw();
  painter_.setClipRect(clip_, Qt::ReplaceClip);
}

void QtSurface::Clear() {
  FlushLines();
  UseClip();
  if (!raster_ || !raster_->Fill(target_, qRgb(255, 255, 255))) painter_.fillRect(target_, Qt::white);
  currentX_ = 0;
  currentY_ = 0;
}

void QtSurface::Scale(double left, double top, double right, double bottom) {
  left_ = left;
  top_ = top;
  scaleWidth_ = right - left;
  scaleHeight_ = bottom - top;
  figureCount_ = 0;
  devicePerUserX_ = target_.width() / scaleWidth_;
  devicePerUserY_ = target_.height() / scaleHeight_;
}

void QtSurface::DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) {
  QPointF a = ToDevice(x1, y1);
  QPointF b = ToDevice(x2, y2);
  currentX_ = x2;
  currentY_ = y2;
  if (kind != LineKind::Plain) return DrawBox(a, b, color, kind);
  if (cutsItself_) {
    PlotPoint from{a.x(), a.y()}, to{b.x(), b.y()};
    if (!ClipSegment(from, to, clip_.left(), clip_.right(), clip_.top(), clip_.bottom())) return;
    a = QPointF(from.x, from.y);
    b = QPointF(to.x, to.y);
  }
  AddSegment(a, b, color);
}

// Curves: on an image with one-pixel lines straight to the raster, each
// point converted as it is reached, so that a wild value stops the drawing
// at the same line as separate Line calls would.
void QtSurface::DrawPolyline(const PlotPoint* points, size_t count, Color color) {
  if (!raster_ || drawWidth_ != 1) {
    DrawingSurface::DrawPolyline(points, count, color);
    return;
  }
  if (!run_.empty() || !lines_.empty()) FlushLines();
  const QRgb rgb = qRgb(color.red, color.green, color.blue);
  constexpr size_t kPiece = 128;
  QPointF device[kPiece];
  size_t filled = 0;
  bool split = false;
  for (size_t k = 0; k < count; ++k) {
    double dx = (points[k].x - left_) * devicePerUserX_;
    double dy = (points[k].y - top_) * devicePerUserY_;
    if (!(std::fabs(dx) <= kMaxDeviceCoordinate && std::fabs(dy) <= kMaxDeviceCoordinate)) {
      raster_->Polyline(device, filled, rgb, true);
      CheckDeviceCoordinate(dx);
      CheckDeviceCoordinate(dy);
    }
    if (filled == kPiece) {
      raster_->Polyline(device, filled, rgb, false);
      device[0] = device[filled - 1];
      filled = 1;
      split = true;
    }
    device[filled++] = QPointF(target_.left() + dx, target_.top() + dy);
  }
  // A small closed run is stamped like a marker.
  if (split || !raster_->Outline(device, filled, rgb)) raster_->Polyline(device, filled, rgb, true);
  currentX_ = points[count - 1].x;
  currentY_ = points[count - 1].y;
}

// Markers: stamped from a shape drawn once, while the figure stays the same.
void QtSurface::DrawFigures(const PlotPoint* centres, size_t count, const PlotPoint* offsets, size_t offsetCount,
                            Color color) {
  if (!raster_ || drawWidth_ != 1 || offsetCount > DirectRaster::kMaxOutlinePoints) {
    DrawingSurface::DrawFigures(centres, count, offsets, offsetCount, color);
    return;
  }
  if (offsetCount != figureCount_ || std::memcmp(offsets, figureOffsets_, offsetCount * sizeof(PlotPoint)) != 0) {
    QPointF relative[DirectRaster::kMaxOutlinePoints];
    for (size_t k = 0; k < offsetCount; ++k)
      relative[k] = QPointF(offsets[k].x * devicePerUserX_, offsets[k].y * devicePerUserY_);
    figureShape_ = raster_->ShapeOf(relative, offsetCount);
    std::copy(offsets, offsets + offsetCount, figureOffsets_);
    figureCount_ = offsetCount;
  }
  if (!figureShape_) {
    DrawingSurface::DrawFigures(centres, count, offsets, offsetCount, color);
    return;
  }
  if (!run_.empty() || !lines_.empty()) FlushLines();
  const QRgb rgb = qRgb(color.red, color.green, color.blue);
  for (size_t c = 0; c < count; ++c) {
    double dx = (centres[c].x - left_) * devicePerUserX_;
    double dy = (centres[c].y - top_) * devicePerUserY_;
    if (std::fabs(dx) < 1e9 && std::fabs(dy) < 1e9) {
      raster_->Stamp(figureShape_, QPointF(target_.left() + dx, target_.top() + dy), rgb);
    } else {
      // Far out the separate lines decide which coordinate is too large.
      DrawingSurface::DrawFigures(centres + c, 1, offsets, offsetCount, color);
      FlushLines();
    }
  }
  currentX_ = centres[count - 1].x + offsets[offsetCount - 1].x;
  currentY_ = centres[count - 1].y + offsets[offsetCount - 1].y;
}

void QtSurface::AddSegment(const QPointF& a, const QPointF& b, Color color) {
  if (!(color == batchColor_) || drawWidth_ != batchWidth_) {
    FlushLines();
    batchColor_ = color;
    batchWidth_ = drawWidth_;
  }
  if (!run_.empty() && run_.back() == a) {
    run_.push_back(b);
    return;
  }
  EndRun();
  run_.push_back(a);
  run_.push_back(b);
}

void QtSurface::EndRun() {
  if (run_.empty()) return;
  if (raster_ && batchWidth_ == 1) {
    DrawRunDirectly();
    return;
  }
  if (run_.size() >= kPolylinePoints) {
    UseClip();
    painter_.setPen(LinePen(ToQColor(batchColor_), batchWidth_));
    painter_.drawPolyline(run_.data(), static_cast<int>(run_.size()));
  } else if (run_.size() == 2) {
    lines_.push_back(SnappedLine(run_[0], run_[1]));
  } else {
    for (size_t k = 1; k < run_.size(); ++k) lines_.emplace_back(run_[k - 1], run_[k]);
  }
  run_.clear();
}

// A lone horizontal or vertical line (grid, axis, tick) is put on the pixel
// grid so that it stays sharp.
QLineF QtSurface::SnappedLine(QPointF a, QPointF b) const {
  if (a.x() == b.x()) a.rx() = b.rx() = SnapX(a.x());
  if (a.y() == b.y()) a.ry() = b.ry() = SnapY(a.y());
  return QLineF(a, b);
}

void QtSurface::DrawRunDirectly() {
  QRgb color = ToQColor(batchColor_).rgb();
  if (run_.size() == 2) {
    QLineF line = SnappedLine(run_[0], run_[1]);
    raster_->Line(line.p1(), line.p2(), color, true);
  } else if (!raster_->Outline(run_.data(), run_.size(), color)) {
    raster_->Polyline(run_.data(), run_.size(), color, true);
  }
  run_.clear();
}

void QtSurface::FlushLines() {
  EndRun();
  if (lines_.empty()) return;
  UseClip();
  painter_.setPen(LinePen(ToQColor(batchColor_), batchWidth_));
  painter_.drawLines(lines_.data(), static_cast<int>(lines_.size()));
  lines_.clear();
}

void QtSurface::Flush() {
  FlushLines();
  if (raster_) raster_->Draw();
}

void QtSurface::DrawBox(const QPointF& a, const QPointF& b, Color color, LineKind kind) {
  FlushLines();
  QRectF box = QRectF(QPointF(SnapX(a.x()), SnapY(a.y())), QPointF(SnapX(b.x()), SnapY(b.y()))).normalized();
  QColor line = ToQColor(color);
  UseClip();
  if (cutsItself_ && !clip_.contains(box)) return DrawCutBox(box, line, kind);
  if (kind == LineKind::FilledBox) {
    painter_.setPen(LinePen(line, drawWidth_));
    painter_.setBrush(line);
  } else {
    painter_.setPen(LinePen(line, drawWidth_));
    Qt::BrushStyle style = BrushFor(fillStyle_);
    painter_.setBrush(style == Qt::NoBrush ? QBrush() : QBrush(ToQColor(fillColor_), style));
  }
  painter_.drawRect(box);
  painter_.setBrush(QBrush());
}

// A box across the clip's edge: its inside cut to the clip, its outline as
// four cut lines.
void QtSurface::DrawCutBox(const QRectF& box, const QColor& line, LineKind kind) {
  const QRectF inside = box.intersected(clip_);
  const Qt::BrushStyle style = kind == LineKind::FilledBox ? Qt::SolidPattern : BrushFor(fillStyle_);
  if (!inside.isEmpty() && style != Qt::NoBrush)
    painter_.fillRect(inside, QBrush(kind == LineKind::FilledBox ? line : ToQColor(fillColor_), style));
  const QPointF corners[] = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft(), box.topLeft()};
  painter_.setPen(LinePen(line, drawWidth_));
  for (int k = 0; k < 4; ++k) {
    PlotPoint a{corners[k].x(), corners[k].y()}, b{corners[k + 1].x(), corners[k + 1].y()};
    if (ClipSegment(a, b, clip_.left(), clip_.right(), clip_.top(), clip_.bottom()))
      painter_.drawLine(QPointF(a.x, a.y), QPointF(b.x, b.y));
  }
}

// A text across the clip's edge is written as the part of its outline
// inside the clip.
void QtSurface::DrawText(const QPointF& topLeft, const RenderContext::LaidOutText& laidOut, std::string_view text) {
  const QRectF extent(topLeft, QSizeF(laidOut.advance, metrics_.height()));
  if (!cutsItself_ || clip_.contains(extent)) return painter_.drawStaticText(topLeft, laidOut.text);
  if (!clip_.intersects(extent)) return;
  QPainterPath outline;
  outline.addText(topLeft + QPointF(0, metrics_.ascent()), font_,
                  QString::fromUtf8(text.data(), qsizetype(text.size())));
  QPainterPath inside;
  inside.addRect(clip_);
  painter_.fillPath(outline.intersected(inside), painter_.pen().color());
}

const RenderContext::LaidOutText& QtSurface::LaidOut(std::string_view text) const {
  return context_.LaidOut(layoutKey_, text, font_, metrics_);
}

void QtSurface::Print(std::string_view text) {
  FlushLines();
  QPointF topLeft = ToDevice(currentX_, currentY_);
  const RenderContext::LaidOutText& laidOut = LaidOut(text);
  UseClip();
  painter_.setFont(font_);
  painter_.setPen(ToQColor(foreColor_));
  DrawText(topLeft, laidOut, text);
  currentX_ += laidOut.advance * scaleWidth_ / target_.width();
  currentY_ += TextHeight(text) / 2;
}

// On an image the eight copies of a halo are written once onto an image of
// their own, kept in the context, which each redraw then lays over the
// graph in one go: a legend of a hundred polars would otherwise write some
// ten thousand glyphs. The text keeps its place within a pixel on that image
// exactly, so that its glyphs fall on the same pixels.
void QtSurface::DrawHalo(std::string_view text, Color color) {
  if (!raster_) {
    DrawingSurface::DrawHalo(text, color);
    return;
  }
  FlushLines();
  const double x = currentX_, y = currentY_;
  const QTransform toImage = painter_.deviceTransform();
  const QPointF at = toImage.map(ToDevice(x, y));
  const QPointF whole(std::floor(at.x()), std::floor(at.y())), fraction = at - whole;
  const double scale = raster_->PixelScale();
  const int margin = int(std::ceil(scale)) + 1;  // in image pixels, for the copies one pixel off
  const RenderContext::LaidOutText& laidOut = LaidOut(text);
  QString key = layoutKey_;
  key += QStringLiteral("@%1/%2/%3/%4/")
             .arg(std::bit_cast<quint64>(scale))
             .arg(std::bit_cast<quint64>(fraction.x()))
             .arg(std::bit_cast<quint64>(fraction.y()))
             .arg(qRgb(color.red, color.green, color.blue));
  key += QString::fromUtf8(text.data(), qsizetype(text.size()));
  const QImage& halo = context_.Kept(key, [&] {
    const auto* target = static_cast<const QImage*>(painter_.device());
    const QSizeF size = laidOut.text.size() * scale;
    QImage image(int(std::ceil(size.width())) + 2 * margin + 1, int(std::ceil(size.height())) + 2 * margin + 1,
                 QImage::Format_ARGB32_Premultiplied);
    image.setDotsPerMeterX(target->dotsPerMeterX());
    image.setDotsPerMeterY(target->dotsPerMeterY());
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setFont(font_);
    painter.setPen(ToQColor(color));
    const QPointF origin = (QPointF(margin, margin) + fraction) / scale;
    for (const auto& [i, j] : kHaloOffsets) painter.drawStaticText(origin + QPointF(i, j), laidOut.text);
    return image;
  });
  UseClip();
  painter_.drawImage(toImage.inverted().map(whole - QPointF(margin, margin)), halo);
  currentX_ = x + TextWidth(text);
  currentY_ = y + TextHeight(text) / 2;
}

double QtSurface::TextWidth(std::string_view text) const {
  return LaidOut(text).advance * scaleWidth_ / target_.width();
}

void QtSurface::SetFontSize(double points) {
  if (font_.pointSizeF() == points) return;
  font_.setPointSizeF(points);
  metrics_ = QFontMetricsF(font_, painter_.device());
  layoutKey_ = LayoutKey(font_, painter_.device());
}

double QtSurface::TextHeight(std::string_view) const { return metrics_.height() * scaleHeight_ / target_.height(); }

}  // namespace tavilo
