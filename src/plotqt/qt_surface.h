#pragma once
// The drawing surface on a QPainter: a widget, an image, an SVG file or a
// printer page. User coordinates map onto a target rectangle given in the
// painter's logical coordinates; the surface clips to that rectangle.

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <memory>
#include <vector>

#include "plot/surface.h"
#include "plotqt/direct_raster.h"
#include "plotqt/render_context.h"

namespace tavilo {

class QtSurface : public DrawingSurface {
 public:
  // Draws on `painter` (which must stay active while the surface lives)
  // within `target`, in `font` (the system's UI font when none is given).
  // The initial scale is the target's size in logical pixels. Laid-out texts
  // and marker shapes are kept in `context`, which must outlive the surface,
  // or, without one, in a context of the surface's own that goes with it.
  QtSurface(QPainter& painter, const QRectF& target, RenderContext& context);
  QtSurface(QPainter& painter, const QRectF& target, const QFont& font, RenderContext& context);
  QtSurface(QPainter& painter, const QRectF& target);
  QtSurface(QPainter& painter, const QRectF& target, const QFont& font);
  // Draws whatever is still buffered and restores the painter's state.
  ~QtSurface() override;
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

  // Draws the buffered and queued lines now; every other operation keeps
  // the order of drawing as the calls gave it.
  void Flush();

  // Painter units per unit of line width; 1 on screens, where a width is
  // in logical pixels. Paper measures its lines in points instead.
  void SetLineUnit(double unit) { lineUnit_ = unit; }

  // The tone in which this surface shows `color`.
  static QColor ToQColor(Color color);

  void Clear() override;
  void Scale(double left, double top, double right, double bottom) override;
  double ScaleLeft() const override { return left_; }
  double ScaleTop() const override { return top_; }
  double ScaleWidth() const override { return scaleWidth_; }
  double ScaleHeight() const override { return scaleHeight_; }
  double Width() const override { return target_.width(); }
  double Height() const override { return target_.height(); }

  double CurrentX() const override { return currentX_; }
  double CurrentY() const override { return currentY_; }
  void SetCurrentX(double x) override { currentX_ = x; }
  void SetCurrentY(double y) override { currentY_ = y; }

  void Print(std::string_view text) override;
  double TextWidth(std::string_view text) const override;
  double TextHeight(std::string_view text) const override;
  void SetFontSize(double points) override;

  Color ForeColor() const override { return foreColor_; }
  void SetForeColor(Color color) override { foreColor_ = color; }
  void SetFillColor(Color color) override { fillColor_ = color; }
  void SetFillStyle(int style) override { fillStyle_ = style; }
  void SetDrawWidth(int width) override { drawWidth_ = width < 1 ? 1 : width; }

 protected:
  void DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) override;
  void DrawPolyline(const PlotPoint* points, size_t count, Color color) override;
  void DrawFigures(const PlotPoint* centres, size_t count, const PlotPoint* offsets, size_t offsetCount,
                   Color color) override;
  void DrawHalo(std::string_view text, Color color) override;

 private:
  QtSurface(QPainter& painter, const QRectF& target, const QFont& font, RenderContext* shared,
            std::unique_ptr<RenderContext> own);
  void UseClip();
  QPointF ToDevice(double x, double y) const {
    double dx = (x - left_) * devicePerUserX_;
    double dy = (y - top_) * devicePerUserY_;
    CheckDeviceCoordinate(dx);
    CheckDeviceCoordinate(dy);
    return QPointF(target_.left() + dx, target_.top() + dy);
  }
  double SnapX(double x) const;
  double SnapY(double y) const;
  double Snap(double v, double offset) const;
  void AddSegment(const QPointF& a, const QPointF& b, Color color);
  void EndRun();
  void FlushLines();
  void DrawRunDirectly();
  QLineF SnappedLine(QPointF a, QPointF b) const;
  void DrawBox(const QPointF& a, const QPointF& b, Color color, LineKind kind);
  void DrawCutBox(const QRectF& box, const QColor& line, LineKind kind);
  void DrawText(const QPointF& topLeft, const RenderContext::LaidOutText& laidOut, std::string_view text);
  // Gathered lines keep the width they were gathered at.
  QPen LinePen(const QColor& color, int width) const;
  const RenderContext::LaidOutText& LaidOut(std::string_view text) const;

  std::unique_ptr<RenderContext> ownContext_;  // null when one is shared
  RenderContext& context_;
  QPainter& painter_;
  QRectF target_;
  QRectF clip_;
  QFont font_;
  QFontMetricsF metrics_;
  QString layoutKey_;  // of the texts laid out for this font on this device
  double left_ = 0, top_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
  double devicePerUserX_ = 1, devicePerUserY_ = 1;
  double currentX_ = 0, currentY_ = 0;
  Color foreColor_ = Color::Rgb(0, 0, 0);
  Color fillColor_ = Color::Rgb(0, 0, 0);
  int fillStyle_ = kFillTransparent;
  int drawWidth_ = 1;
  double lineUnit_ = 1;
  bool canSnap_ = false;
  // The painter's engine ignores clipping (an SVG file's does): lines,
  // boxes and texts are cut to the clip here instead.
  bool cutsItself_ = false;
  double pixelRatio_ = 1;
  QPointF deviceOffset_;

  // Lines are gathered while colour and width stay the same: connected
  // segments into a run, short runs (markers, grid lines) into one list of
  // lines, long runs (curves) drawn as one polyline each.
  Color batchColor_;
  int batchWidth_ = 0;
  std::vector<QPointF> run_;
  std::vector<QLineF> lines_;
  std::unique_ptr<DirectRaster> raster_;  // one-pixel lines on an image

  // The last figure stamped: the markers of a curve are all alike.
  PlotPoint figureOffsets_[DirectRaster::kMaxOutlinePoints];
  size_t figureCount_ = 0;  // 0 after a new scale
  DirectRaster::ShapePtr figureShape_;
};

}  // namespace tavilo
