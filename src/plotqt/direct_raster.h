#pragma once
// Thin antialiased lines and small closed outlines written straight into the
// pixels of a 32-bit image. QPainter spends a few hundred nanoseconds on
// every short line; a redraw of a hundred polars draws some 100 000 curve
// segments and 60 000 markers, so on an image the Qt surface draws its
// one-pixel lines here and leaves text, boxes and wide lines to QPainter.

#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <cstdint>
#include <memory>
#include <vector>

namespace tavilo {

// Marker shapes drawn once and kept for stamping again by every raster that
// is given the same cache. It may go while shapes from it are still in use:
// a shape lives as long as its users.
class ShapeCache {
 public:
  ShapeCache();
  ~ShapeCache();
  ShapeCache(const ShapeCache&) = delete;
  ShapeCache& operator=(const ShapeCache&) = delete;

 private:
  friend class DirectRaster;
  struct Shapes;
  std::unique_ptr<Shapes> shapes_;
};

// Drawing is queued and done by Draw (or when the raster goes), one image
// after another: a redraw that goes from graph to graph polar by polar then
// still blends each image's pixels while they are in the cache.
class DirectRaster {
 public:
  static constexpr size_t kMaxOutlinePoints = 12;

  // The coverage of an outline drawn once, kept for stamping it again.
  class Shape;
  using ShapePtr = std::shared_ptr<const Shape>;

  // A raster on the painter's image, or null when the painter does not draw
  // onto a 32-bit premultiplied or opaque image, with a shift and an equal
  // scale in both directions (a dense screen's pixel ratio) at most, plain
  // source-over blending and at most a rectangular clip. Lines and outlines
  // are one painter pixel wide, so as wide as the scale in the image's pixels.
  // Marker shapes come from and go to `shapes`, which must outlive the raster.
  static std::unique_ptr<DirectRaster> For(QPainter& painter, ShapeCache& shapes);
  ~DirectRaster();
  DirectRaster(const DirectRaster&) = delete;
  DirectRaster& operator=(const DirectRaster&) = delete;

  // Image pixels to a painter pixel.
  double PixelScale() const { return scale_; }

  // Pixels outside `logicalClip` (painter coordinates) stay untouched.
  void SetClip(const QRectF& logicalClip);

  // A one-pixel line between painter coordinates, its end pixel left out
  // when `withEnd` is false (so that the joints of a run are not drawn twice).
  void Line(QPointF a, QPointF b, QRgb color, bool withEnd);
  // Lines from each point to the next, each joint drawn once and the last
  // point when `withEnd` is true.
  void Polyline(const QPointF* points, size_t count, QRgb color, bool withEnd);

  // The shape of a small closed outline (first point == last) given in
  // painter pixels relative to its centre, at this raster's pixel scale, or
  // null when it is not small or not closed. Shapes are drawn once and shared
  // through the raster's cache.
  ShapePtr ShapeOf(const QPointF* relative, size_t count);

  // `shape` with its centre on the centre of the pixel that `at` (painter
  // coordinates) lies in, so that equal markers look alike wherever they are.
  void Stamp(const ShapePtr& shape, QPointF at, QRgb color);

  // A small closed outline around its first point, as Stamp draws it; false
  // when the outline is not small or not closed.
  bool Outline(const QPointF* points, size_t count, QRgb color);

  // Sets the pixels of `logical` (painter coordinates) to the opaque
  // `color` at once, when the rectangle lies on whole pixels within the clip
  // and nothing is queued; false otherwise.
  bool Fill(const QRectF& logical, QRgb color);

  // Draws everything queued, in the order given.
  void Draw();

  // From now on lines and stamps go pixel by pixel, each pixel tested
  // against the clip, and Fill declines: slow, and the plain reference
  // that tests hold the fast paths to.
  void DrawPlainly() { plain_ = true; }

 private:
  struct Command {
    const Shape* shape;  // stamps of this shape, or null for a polyline
    uint32_t pixel;
    uint32_t first, count;  // of the points: the polyline's, or where the stamps go
    bool withEnd;
  };

  DirectRaster(QImage& image, double scale, QPointF offset, ShapeCache& cache);
  void Blend(int x, int y, uint32_t color, uint32_t coverage);
  void DrawStamps(const Shape& shape, const QPointF* at, size_t count, uint32_t pixel);
  void DrawPolyline(const QPointF* points, size_t count, uint32_t pixel, bool withEnd);
  void Segment(double x0, double y0, double x1, double y1, uint32_t pixel, bool withEnd);
  struct Orientation {
    bool steep;  // y was the major axis
    int skip;    // the end pixel along the major axis, or INT32_MIN
    double gradient;
  };
  bool ClipNear(double& x0, double& y0, double& x1, double& y1, double margin, int& endX, int& endY) const;
  static Orientation Orient(double& x0, double& y0, double& x1, double& y1, int endX, int endY, bool withEnd);
  void WideSegment(double x0, double y0, double x1, double y1, uint32_t pixel, bool withEnd);
  bool WideRun(int first, int last, double x0, double y0, double gradient, double half, int skip, bool steep,
               uint32_t pixel);
  void Straight(double x0, double y0, double x1, double y1, uint32_t pixel, int skip, bool across);
  void SegmentNearEdge(double x0, double y0, double x1, double y1, uint32_t pixel, bool withEnd);
  void Run(int first, int last, int64_t y, int64_t step, qsizetype along, qsizetype across, uint32_t pixel);

  uint32_t* bits_;
  qsizetype stride_;  // in pixels
  int width_, height_;
  double scale_;  // painter to device: times the scale, plus the offset
  QPointF offset_;
  int clipLeft_ = 0, clipTop_ = 0, clipRight_ = 0, clipBottom_ = 0;  // right, bottom exclusive
  double safeLeft_ = 0, safeTop_ = 0, safeRight_ = -1, safeBottom_ = -1;
  bool plain_ = false;

  ShapeCache& cache_;
  std::vector<Command> commands_;
  std::vector<QPointF> points_;
  std::vector<ShapePtr> shapes_;                       // those that queued stamps use
  std::vector<qsizetype> solidOffsets_, pairOffsets_;  // of the shape being stamped
};

}  // namespace tavilo
