#pragma once
// Thin antialiased lines and small closed outlines written straight into the
// pixels of a 32-bit image. QPainter spends a few hundred nanoseconds on
// every short line; a redraw of a hundred polars draws some 400 000 of them
// (mostly marker edges), so on an image the Qt surface draws its one-pixel
// lines here and leaves text, boxes and wide lines to QPainter.

#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace tavilo {

class DirectRaster {
 public:
  // A raster on the painter's image, or null when the painter does not draw
  // 1:1 (apart from a shift) onto a 32-bit premultiplied or opaque image
  // with plain source-over blending and at most a rectangular clip.
  static std::unique_ptr<DirectRaster> For(QPainter& painter);

  // Pixels outside `logicalClip` (painter coordinates) stay untouched.
  void SetClip(const QRectF& logicalClip);

  // A one-pixel line between painter coordinates, its end pixel left out
  // when `withEnd` is false (so that the joints of a run are not drawn twice).
  void Line(QPointF a, QPointF b, QRgb color, bool withEnd);

  // A small closed outline (first point == last), stamped from a cache of
  // shapes already drawn, moved by under half a pixel onto the pixel grid so
  // that equal markers look alike. False when the run is not small enough.
  bool Outline(const QPointF* points, size_t count, QRgb color);

 private:
  struct Stamp {
    int16_t dx, dy;
    uint8_t coverage;
  };
  struct Shape {
    std::vector<Stamp> stamps;
    int left = 0, right = 0, top = 0, bottom = 0;  // extent of the stamps
  };
  static constexpr size_t kMaxOutlinePoints = 12;
  using ShapeKey = std::array<int16_t, 2 * kMaxOutlinePoints + 1>;
  struct KeyHash {
    size_t operator()(const ShapeKey& key) const;
  };

  DirectRaster(QImage& image, QPointF offset);
  void Blend(int x, int y, uint32_t color, uint32_t coverage);
  const Shape& ShapeFor(const ShapeKey& key);

  uint32_t* bits_;
  qsizetype stride_;  // in pixels
  int width_, height_;
  QPointF offset_;    // painter to device
  int clipLeft_ = 0, clipTop_ = 0, clipRight_ = 0, clipBottom_ = 0;  // right, bottom exclusive
  std::unordered_map<ShapeKey, Shape, KeyHash> shapes_;
};

}  // namespace tavilo
