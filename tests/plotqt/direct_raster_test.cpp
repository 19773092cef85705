#include "plotqt/direct_raster.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tavilo {
namespace {

constexpr int kWidth = 80, kHeight = 60;  // in painter pixels

// A random scene from `seed`: a box, curves, lines and grid lines inside,
// across and far outside a clip on whole image pixels, outlines and stamps
// of small shapes, in random colours. Returns the clip in image pixels.
QRect DrawScene(QImage& image, uint32_t seed, ShapeCache& shapes, bool plainly) {
  std::mt19937 random(seed);
  auto uniform = [&](double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); };
  auto below = [&](int n) { return int(random() % uint32_t(n)); };
  const double ratio = image.devicePixelRatio();
  const QRect clip(below(24) - 4, below(24) - 4, image.width() - below(40) + 4, image.height() - below(40) + 4);
  const QRectF logicalClip(clip.x() / ratio, clip.y() / ratio, clip.width() / ratio, clip.height() / ratio);
  QPainter painter(&image);
  painter.setClipRect(logicalClip);
  auto raster = DirectRaster::For(painter, shapes);
  if (!raster) return {};
  if (plainly) raster->DrawPlainly();
  raster->SetClip(logicalClip);
  // On whole painter pixels, inside the clip or not: QPainter fills what
  // the raster declines.
  const QRectF box(below(kWidth), below(kHeight), 1 + below(kWidth / 2), 1 + below(kHeight / 2));
  const QRgb fill = random() | 0xff000000u;
  if (!raster->Fill(box, fill)) painter.fillRect(box, QColor::fromRgb(fill));
  // Faults hide near the clip's edges: points go there often.
  auto near = [&](double low, double high) {
    const double inwards = uniform(-0.5, 1.5) / ratio;
    return below(2) ? low + inwards : high - inwards;
  };
  auto point = [&] {
    const double x = uniform(-0.25, 1.25) * kWidth, y = uniform(-0.25, 1.25) * kHeight;
    const int where = below(8);
    if (where == 0) return QPointF(uniform(-1e4, 1e4), uniform(-1e4, 1e4));
    if (where <= 2) return QPointF(near(logicalClip.left(), logicalClip.right()), y);
    if (where <= 4) return QPointF(x, near(logicalClip.top(), logicalClip.bottom()));
    return QPointF(x, y);
  };
  auto outline = [&](QPointF centre, double radius, size_t count, QPointF* points) {
    const double turn = uniform(0, 6.3);
    for (size_t k = 0; k + 1 < count; ++k)
      points[k] =
          centre + radius * QPointF(std::cos(turn + 6.3 * k / (count - 1)), std::sin(turn + 6.3 * k / (count - 1)));
    points[count - 1] = points[0];
  };
  QPointF points[DirectRaster::kMaxOutlinePoints];
  for (int item = 0; item < 24; ++item) {
    const QRgb color = random();
    const bool withEnd = below(2) == 0;
    switch (below(6)) {
      case 0: {  // a curve, now and then leaping far
        size_t count = 2 + below(10);
        points[0] = point();
        for (size_t k = 1; k < count; ++k)
          points[k] = below(6) == 0 ? point() : points[k - 1] + QPointF(uniform(-12, 12), uniform(-12, 12));
        raster->Polyline(points, count, color, withEnd);
        break;
      }
      case 1: raster->Line(point(), point(), color, withEnd); break;
      case 2: {  // short: along an edge when it starts near one
        const QPointF from = point();
        raster->Line(from, from + QPointF(uniform(-5, 5), uniform(-5, 5)), color, withEnd);
        break;
      }
      case 3: {  // a grid line or an axis: on a pixel's centre, its edge or anywhere
        const bool row = below(2) == 0;
        const int span = row ? kHeight : kWidth, length = row ? kWidth : kHeight;
        const double across =
            below(3) == 0 ? uniform(-2, span + 2) : (below(int(span * ratio)) + 0.5 * below(2)) / ratio;
        const double from = uniform(-10, length + 10), to = uniform(-10, length + 10);
        raster->Line(row ? QPointF(from, across) : QPointF(across, from),
                     row ? QPointF(to, across) : QPointF(across, to), color, withEnd);
        break;
      }
      case 4: {  // an outline the size of a marker or larger
        const size_t count = 4 + below(9);
        outline(point(), uniform(0.5, 40 / ratio), count, points);
        if (!raster->Outline(points, count, color)) raster->Polyline(points, count, color, true);
        break;
      }
      default: {  // a curve's markers
        const size_t count = 4 + below(9);
        outline(QPointF(), uniform(0.5, 20), count, points);
        if (const DirectRaster::ShapePtr shape = raster->ShapeOf(points, count))
          for (int k = below(6); k >= 0; --k) raster->Stamp(shape, point(), color);
      }
    }
  }
  return clip.intersected(image.rect());
}

// Spans, pairs and fours blended at once and skipped clip tests draw what the plain path draws pixel by pixel:
// alike at ratio 1, within a rounding on dense screens, and neither outside the clip.
TEST(DirectRaster, FastPathsDrawAsThePlainPath) {
  // Device pixel ratio, tolerance per channel of 255, number of scenes.
  const std::tuple<double, int, uint32_t> cases[] = {{1, 0, 800}, {1.5, 2, 150}, {2, 2, 250}, {3, 2, 150}};
  ShapeCache shapes;
  for (const auto& [ratio, tolerance, scenes] : cases)
    for (uint32_t seed = 1; seed <= scenes; ++seed) {
      QImage fast(int(kWidth * ratio), int(kHeight * ratio), QImage::Format_ARGB32_Premultiplied);
      fast.setDevicePixelRatio(ratio);
      const QRgb background = qPremultiply(seed * 2654435761u);  // seen through at times
      fast.fill(background);
      QImage plain = fast.copy();
      const QRect clip = DrawScene(fast, seed, shapes, false);
      ASSERT_FALSE(clip.isEmpty());
      ASSERT_EQ(DrawScene(plain, seed, shapes, true), clip);
      int worst = 0, outside = 0;
      QPoint at;
      for (int y = 0; y < fast.height(); ++y)
        for (int x = 0; x < fast.width(); ++x) {
          const QRgb a = fast.pixel(x, y), b = plain.pixel(x, y);
          for (int shift = 0; shift < 32; shift += 8) {
            const int difference = std::abs(int(a >> shift & 255) - int(b >> shift & 255));
            if (difference > worst) worst = difference, at = QPoint(x, y);
          }
          if (!clip.contains(x, y)) outside += a != background || b != background;
        }
      EXPECT_LE(worst, tolerance) << "ratio " << ratio << ", seed " << seed << " at " << at.x() << "," << at.y();
      EXPECT_EQ(outside, 0) << "ratio " << ratio << ", seed " << seed;
    }
}

}  // namespace
}  // namespace tavilo
