#include "plotqt/direct_raster.h"

#include <QPaintDevice>
#include <algorithm>
#include <cmath>
#include <utility>

namespace tavilo {

namespace {

// (x * a + y * (255 - a)) / 255 on all four channels at once.
inline uint32_t Interpolate(uint32_t x, uint32_t a, uint32_t y, uint32_t b) {
  uint32_t t = (x & 0xff00ff) * a + (y & 0xff00ff) * b;
  t = (t + ((t >> 8) & 0xff00ff) + 0x800080) >> 8;
  t &= 0xff00ff;
  x = ((x >> 8) & 0xff00ff) * a + ((y >> 8) & 0xff00ff) * b;
  x = (x + ((x >> 8) & 0xff00ff) + 0x800080);
  x &= 0xff00ff00;
  return x | t;
}

// Liang-Barsky: clips the segment to the box, false when nothing is left.
bool ClipSegment(double& x0, double& y0, double& x1, double& y1, double left, double top,
                 double right, double bottom) {
  double t0 = 0, t1 = 1;
  double dx = x1 - x0, dy = y1 - y0;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {x0 - left, right - x0, y0 - top, bottom - y0};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    double r = q[i] / p[i];
    if (p[i] < 0) {
      if (r > t1) return false;
      t0 = std::max(t0, r);
    } else {
      if (r < t0) return false;
      t1 = std::min(t1, r);
    }
  }
  double sx = x0, sy = y0;
  x0 = sx + t0 * dx;
  y0 = sy + t0 * dy;
  x1 = sx + t1 * dx;
  y1 = sy + t1 * dy;
  return true;
}

}  // namespace

std::unique_ptr<DirectRaster> DirectRaster::For(QPainter& painter) {
  QPaintDevice* device = painter.device();
  if (!device || device->devType() != QInternal::Image) return nullptr;
  auto* image = static_cast<QImage*>(device);
  if (image->format() != QImage::Format_ARGB32_Premultiplied &&
      image->format() != QImage::Format_RGB32)
    return nullptr;
  QTransform transform = painter.deviceTransform();
  if (transform.type() > QTransform::TxTranslate) return nullptr;
  if (painter.compositionMode() != QPainter::CompositionMode_SourceOver || painter.opacity() < 1)
    return nullptr;
  if (painter.hasClipping() && painter.clipRegion().rectCount() > 1) return nullptr;
  return std::unique_ptr<DirectRaster>(
      new DirectRaster(*image, QPointF(transform.dx(), transform.dy())));
}

// The painter has already detached the image, so its constant bits are the
// very pixels it paints into.
DirectRaster::DirectRaster(QImage& image, QPointF offset)
    : bits_(reinterpret_cast<uint32_t*>(const_cast<uchar*>(image.constBits()))),
      stride_(image.bytesPerLine() / 4),
      width_(image.width()),
      height_(image.height()),
      offset_(offset) {}

void DirectRaster::SetClip(const QRectF& logicalClip) {
  QRectF device = logicalClip.translated(offset_);
  clipLeft_ = std::clamp(int(std::ceil(device.left() - 0.5)), 0, width_);
  clipTop_ = std::clamp(int(std::ceil(device.top() - 0.5)), 0, height_);
  clipRight_ = std::clamp(int(std::ceil(device.right() - 0.5)), 0, width_);
  clipBottom_ = std::clamp(int(std::ceil(device.bottom() - 0.5)), 0, height_);
}

inline void DirectRaster::Blend(int x, int y, uint32_t color, uint32_t coverage) {
  if (coverage == 0 || x < clipLeft_ || x >= clipRight_ || y < clipTop_ || y >= clipBottom_) return;
  uint32_t& pixel = bits_[y * stride_ + x];
  pixel = coverage >= 255 ? color : Interpolate(color, coverage, pixel, 255 - coverage);
}

// Wu's line: along the major axis one step per pixel, the coverage split
// between the two pixels that the line's centre passes between. Pixel k has
// its centre at k + 0.5. The minor coordinate runs in 16.16 fixed point:
// cheaper than floor() on every step, and exact enough for lines of a few
// thousand pixels.
void DirectRaster::Line(QPointF a, QPointF b, QRgb color, bool withEnd) {
  double x0 = a.x() + offset_.x() - 0.5, y0 = a.y() + offset_.y() - 0.5;
  double x1 = b.x() + offset_.x() - 0.5, y1 = b.y() + offset_.y() - 0.5;
  if (!(std::fabs(x1) < 1e9 && std::fabs(y1) < 1e9 && std::fabs(x0) < 1e9 && std::fabs(y0) < 1e9)) {
    if (!ClipSegment(x0, y0, x1, y1, -1e9, -1e9, 1e9, 1e9)) return;
  }
  int endX = int(std::floor(x1 + 0.5)), endY = int(std::floor(y1 + 0.5));
  if (!ClipSegment(x0, y0, x1, y1, clipLeft_ - 1.0, clipTop_ - 1.0, clipRight_ + 1.0,
                   clipBottom_ + 1.0))
    return;
  bool steep = std::fabs(y1 - y0) > std::fabs(x1 - x0);
  if (steep) {
    std::swap(x0, y0);
    std::swap(x1, y1);
    std::swap(endX, endY);
  }
  int skip = withEnd ? INT32_MIN : endX;  // the end pixel, along the major axis
  if (x0 > x1) {
    std::swap(x0, x1);
    std::swap(y0, y1);
  }
  double gradient = x1 == x0 ? 0 : (y1 - y0) / (x1 - x0);
  // After clipping every coordinate lies above -2, so adding 2 makes the
  // truncating conversions round down.
  int first = int(x0 + 2.5) - 2, last = int(x1 + 2.5) - 2;
  constexpr double kOne = 65536.0;
  int64_t y = int64_t((y0 + gradient * (first - x0) + 2) * kOne + 0.5) - int64_t(2 * kOne);
  int64_t step = int64_t(gradient * kOne + (gradient < 0 ? -0.5 : 0.5));
  uint32_t pixel = color | 0xff000000u;
  // Most segments lie wholly inside the clip: their pixels need no test.
  const int64_t yEnd = y + step * (last - first);
  const int minRow = int(std::min(y, yEnd) >> 16), maxRow = int(std::max(y, yEnd) >> 16) + 1;
  const bool inside = steep ? first >= clipTop_ && last < clipBottom_ && minRow >= clipLeft_ &&
                                  maxRow < clipRight_
                            : first >= clipLeft_ && last < clipRight_ && minRow >= clipTop_ &&
                                  maxRow < clipBottom_;
  if (inside) {
    const qsizetype along = steep ? stride_ : 1, across = steep ? 1 : stride_;
    for (int x = first; x <= last; ++x, y += step) {
      if (x == skip) continue;
      uint32_t lower = uint32_t((y >> 8) & 0xff);
      uint32_t* p = bits_ + x * along + (y >> 16) * across;
      if (lower != 255) p[0] = lower == 0 ? pixel : Interpolate(pixel, 255 - lower, p[0], lower);
      if (lower != 0) p[across] = lower == 255 ? pixel : Interpolate(pixel, lower, p[across], 255 - lower);
    }
    return;
  }
  for (int x = first; x <= last; ++x, y += step) {
    if (x == skip) continue;
    int row = int(y >> 16);
    uint32_t lower = uint32_t((y >> 8) & 0xff);
    if (steep) {
      Blend(row, x, pixel, 255 - lower);
      Blend(row + 1, x, pixel, lower);
    } else {
      Blend(x, row, pixel, 255 - lower);
      Blend(x, row + 1, pixel, lower);
    }
  }
}

size_t DirectRaster::KeyHash::operator()(const ShapeKey& key) const {
  size_t hash = 14695981039346656037ull;
  for (int16_t v : key) hash = (hash ^ uint16_t(v)) * 1099511628211ull;
  return hash;
}

bool DirectRaster::Outline(const QPointF* points, size_t count, QRgb color) {
  if (count < 4 || count > kMaxOutlinePoints || points[0] != points[count - 1]) return false;
  // The key is the shape relative to its first point, so that every marker
  // of a kind shares one stamp wherever it stands.
  ShapeKey key{};
  key[0] = int16_t(count);
  for (size_t i = 0; i < count; ++i) {
    double dx = (points[i].x() - points[0].x()) * 16;
    double dy = (points[i].y() - points[0].y()) * 16;
    if (std::fabs(dx) > 16 * 24 || std::fabs(dy) > 16 * 24) return false;
    key[1 + 2 * i] = int16_t(std::lround(dx));
    key[2 + 2 * i] = int16_t(std::lround(dy));
  }
  // The first point goes to the centre of the pixel it lies in.
  int x = int(std::floor(points[0].x() + offset_.x()));
  int y = int(std::floor(points[0].y() + offset_.y()));
  uint32_t pixel = color | 0xff000000u;
  const Shape& shape = ShapeFor(key);
  bool inside = x + shape.left >= clipLeft_ && x + shape.right < clipRight_ &&
                y + shape.top >= clipTop_ && y + shape.bottom < clipBottom_;
  if (!inside) {
    for (const Stamp& stamp : shape.stamps) Blend(x + stamp.dx, y + stamp.dy, pixel, stamp.coverage);
    return true;
  }
  uint32_t* centre = bits_ + y * stride_ + x;
  for (const Stamp& stamp : shape.stamps) {
    uint32_t& target = centre[stamp.dy * stride_ + stamp.dx];
    target = stamp.coverage == 255 ? pixel
                                   : Interpolate(pixel, stamp.coverage, target, 255 - stamp.coverage);
  }
  return true;
}

// Drawn once by QPainter itself, so a stamped marker looks exactly like one
// that QPainter would draw at a whole-pixel position.
const DirectRaster::Shape& DirectRaster::ShapeFor(const ShapeKey& key) {
  auto found = shapes_.find(key);
  if (found != shapes_.end()) return found->second;
  constexpr int kSize = 64, kCentre = 32;
  QImage canvas(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
  canvas.fill(Qt::transparent);
  {
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(Qt::black, 1, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    QPointF outline[kMaxOutlinePoints];
    size_t count = size_t(key[0]);
    for (size_t i = 0; i < count; ++i)
      outline[i] = QPointF(kCentre + 0.5 + key[1 + 2 * i] / 16.0, kCentre + 0.5 + key[2 + 2 * i] / 16.0);
    painter.drawPolygon(outline, int(count - 1));
  }
  Shape shape;
  for (int row = 0; row < kSize; ++row)
    for (int column = 0; column < kSize; ++column)
      if (int alpha = qAlpha(canvas.pixel(column, row)); alpha > 0) {
        int dx = column - kCentre, dy = row - kCentre;
        shape.stamps.push_back({int16_t(dx), int16_t(dy), uint8_t(alpha)});
        shape.left = std::min(shape.left, dx);
        shape.right = std::max(shape.right, dx);
        shape.top = std::min(shape.top, dy);
        shape.bottom = std::max(shape.bottom, dy);
      }
  return shapes_.emplace(key, std::move(shape)).first->second;
}

}  // namespace tavilo
