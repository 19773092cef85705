#include "plotqt/direct_raster.h"

#include <QPaintDevice>
#ifdef __SSE2__
#include <emmintrin.h>
#endif
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tavilo {

namespace {

// Two pixels channel by channel (B, G, R, A in memory order) in 16-bit
// lanes, so that both blend at once in one vector register. On x86-64 the
// loads and stores are spelt out, because the compiler's own widening of
// bytes takes twice the instructions.
using Pair16 = uint16_t __attribute__((vector_size(16)));

#ifdef __SSE2__
inline Pair16 Widen(__m128i bytes) { return Pair16(_mm_unpacklo_epi8(bytes, _mm_setzero_si128())); }
inline __m128i Narrow(Pair16 lanes) { return _mm_packus_epi16(__m128i(lanes), __m128i(lanes)); }
// The pixels at `a` and `b`.
inline Pair16 LoadTwo(const uint32_t* a, const uint32_t* b) {
  return Widen(_mm_unpacklo_epi32(_mm_cvtsi32_si128(int(*a)), _mm_cvtsi32_si128(int(*b))));
}
inline void StoreTwo(uint32_t* a, uint32_t* b, Pair16 lanes) {
  __m128i bytes = Narrow(lanes);
  *a = uint32_t(_mm_cvtsi128_si32(bytes));
  *b = uint32_t(_mm_cvtsi128_si32(_mm_srli_si128(bytes, 4)));
}
// The pixels at p and p + 1.
inline Pair16 LoadAdjacent(const uint32_t* p) { return Widen(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))); }
inline void StoreAdjacent(uint32_t* p, Pair16 lanes) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), Narrow(lanes)); }
#else
using Pair8 = uint8_t __attribute__((vector_size(8)));
inline Pair16 LoadTwo(const uint32_t* a, const uint32_t* b) {
  uint32_t both[2] = {*a, *b};
  Pair8 bytes;
  std::memcpy(&bytes, both, sizeof bytes);
  return __builtin_convertvector(bytes, Pair16);
}
inline void StoreTwo(uint32_t* a, uint32_t* b, Pair16 lanes) {
  Pair8 bytes = __builtin_convertvector(lanes, Pair8);
  uint32_t both[2];
  std::memcpy(both, &bytes, sizeof bytes);
  *a = both[0];
  *b = both[1];
}
inline Pair16 LoadAdjacent(const uint32_t* p) { return LoadTwo(p, p + 1); }
inline void StoreAdjacent(uint32_t* p, Pair16 lanes) { StoreTwo(p, p + 1, lanes); }
#endif

// (color * coverage + pixels * (255 - coverage)) / 255, rounded, as
// Interpolate below: with x = sum + 128, (x + (x >> 8)) >> 8, which is
// (x * 257) >> 16.
inline Pair16 Mix(Pair16 pixels, Pair16 color, Pair16 coverage) {
  Pair16 x = color * coverage + pixels * (255 - coverage) + 128;
#ifdef __SSE2__
  return Pair16(_mm_mulhi_epu16(__m128i(x), _mm_set1_epi16(257)));
#else
  return (x + (x >> 8)) >> 8;
#endif
}

// The coverages of a line step's two pixels by the fraction (in 256ths)
// that the line's centre lies past the first: 255 - lower, then lower.
struct StepCoverage {
  StepCoverage() {
    for (uint16_t lower = 0; lower < 256; ++lower) byLower[lower] = Pair16{255, 255, 255, 255, 0, 0, 0, 0} ^ lower;
  }
  Pair16 byLower[256];
};
const StepCoverage kStepCoverage;

// `pixel` twice.
inline Pair16 Spread(uint32_t pixel) { return LoadTwo(&pixel, &pixel); }

// The coverages of two pixels across a wide line, per channel, from the
// line's lower and upper edges relative to the first pixel's top edge, in
// 4096ths of a pixel: `upper` minus the pixels' tops (`tops`, 4096 apart),
// clamped to a pixel, less `lower` in the first pixel (`lowerHere`, 0 in the
// others). Rounded to 255ths as cover * 255 / 4096 + 0.5 would be, within a
// unit.
using Signed16 = int16_t __attribute__((vector_size(16)));
inline Pair16 WideCoverage(Signed16 upper, Signed16 tops, Signed16 lowerHere) {
  Signed16 cover = upper - tops;
  cover = cover < 0 ? Signed16{} : cover;
  cover = cover > 4096 ? Signed16{} + 4096 : cover;
  cover = cover - lowerHere + 8;
#ifdef __SSE2__
  return Pair16(_mm_mulhi_epu16(__m128i(cover), _mm_set1_epi16(4080)));
#else
  using Wide = uint32_t __attribute__((vector_size(32)));
  return __builtin_convertvector((__builtin_convertvector(Pair16(cover), Wide) * 4080) >> 16, Pair16);
#endif
}

// Four neighbours in a row at `p` blended with the coverages of the first
// two and of the last two.
inline void MixFour(uint32_t* p, Pair16 source, Pair16 first, Pair16 last) {
#ifdef __SSE2__
  const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const Pair16 low = Widen(pixels), high = Pair16(_mm_unpackhi_epi8(pixels, _mm_setzero_si128()));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p),
                   _mm_packus_epi16(__m128i(Mix(low, source, first)), __m128i(Mix(high, source, last))));
#else
  StoreAdjacent(p, Mix(LoadAdjacent(p), source, first));
  StoreAdjacent(p + 2, Mix(LoadAdjacent(p + 2), source, last));
#endif
}

// (x * a + y * (255 - a)) / 255, rounded, on all four channels at once,
// two channels to a 32-bit word.
inline uint32_t Interpolate(uint32_t x, uint32_t a, uint32_t y, uint32_t b) {
  uint32_t t = (x & 0xff00ff) * a + (y & 0xff00ff) * b + 0x800080;
  t = ((t + ((t >> 8) & 0xff00ff)) >> 8) & 0xff00ff;
  x = ((x >> 8) & 0xff00ff) * a + ((y >> 8) & 0xff00ff) * b + 0x800080;
  x = (x + ((x >> 8) & 0xff00ff)) & 0xff00ff00;
  return x | t;
}

// floor() and lround() for values well inside the int range, without the
// library calls that they cost on plain x86-64.
inline int FloorToInt(double v) {
  int i = int(v);
  return i - (v < i);
}
inline int RoundSmall(double v) { return v < 0 ? -FloorToInt(0.5 - v) : FloorToInt(v + 0.5); }

// Liang-Barsky: clips the segment to the box, false when nothing is left.
bool ClipSegment(double& x0, double& y0, double& x1, double& y1, double left, double top, double right, double bottom) {
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

constexpr size_t kMaxOutline = DirectRaster::kMaxOutlinePoints;
// The outline in whole pixels relative to the centre, after its point count
// and its pen width.
using ShapeKey = std::array<int16_t, 2 * kMaxOutline + 2>;

struct KeyHash {
  size_t operator()(const ShapeKey& key) const {
    size_t hash = 14695981039346656037ull;
    for (int16_t v : key) hash = (hash ^ uint16_t(v)) * 1099511628211ull;
    return hash;
  }
};

constexpr double kOne = 65536.0;  // of the fixed point

// The fixed-point minor coordinate of v > -2.
inline int64_t Fixed(double v) { return int64_t((v + 2) * kOne + 0.5) - int64_t(2 * kOne); }
inline int64_t FixedStep(double gradient) { return int64_t(gradient * kOne + (gradient < 0 ? -0.5 : 0.5)); }

}  // namespace

struct ShapeCache::Shapes {
  std::unordered_map<ShapeKey, DirectRaster::ShapePtr, KeyHash> byKey;
};

ShapeCache::ShapeCache() : shapes_(std::make_unique<Shapes>()) {}
ShapeCache::~ShapeCache() = default;

std::unique_ptr<DirectRaster> DirectRaster::For(QPainter& painter, ShapeCache& shapes) {
  QPaintDevice* device = painter.device();
  if (!device || device->devType() != QInternal::Image) return nullptr;
  auto* image = static_cast<QImage*>(device);
  if (image->format() != QImage::Format_ARGB32_Premultiplied && image->format() != QImage::Format_RGB32) return nullptr;
  // A dense screen's image scales its painter by the pixel ratio.
  QTransform transform = painter.deviceTransform();
  const double scale = transform.m11();
  if (transform.type() > QTransform::TxScale || transform.m22() != scale || !(scale > 0 && scale <= 8)) return nullptr;
  if (painter.compositionMode() != QPainter::CompositionMode_SourceOver || painter.opacity() < 1) return nullptr;
  if (painter.hasClipping() && painter.clipRegion().rectCount() > 1) return nullptr;
  return std::unique_ptr<DirectRaster>(
      new DirectRaster(*image, scale, QPointF(transform.dx(), transform.dy()), shapes));
}

// The painter has already detached the image, so its constant bits are the
// very pixels it paints into.
DirectRaster::DirectRaster(QImage& image, double scale, QPointF offset, ShapeCache& cache)
    : bits_(reinterpret_cast<uint32_t*>(const_cast<uchar*>(image.constBits()))),
      stride_(image.bytesPerLine() / 4),
      width_(image.width()),
      height_(image.height()),
      scale_(scale),
      offset_(offset),
      cache_(cache) {}

void DirectRaster::SetClip(const QRectF& logicalClip) {
  QRectF device(logicalClip.topLeft() * scale_ + offset_, logicalClip.size() * scale_);
  clipLeft_ = std::clamp(int(std::ceil(device.left() - 0.5)), 0, width_);
  clipTop_ = std::clamp(int(std::ceil(device.top() - 0.5)), 0, height_);
  clipRight_ = std::clamp(int(std::ceil(device.right() - 0.5)), 0, width_);
  clipBottom_ = std::clamp(int(std::ceil(device.bottom() - 0.5)), 0, height_);
  // A segment between points in here touches only pixels inside the clip,
  // in the coordinates of Segment.
  safeLeft_ = clipLeft_ + 1;
  safeTop_ = clipTop_ + 1;
  safeRight_ = clipRight_ - 2;
  safeBottom_ = clipBottom_ - 2;
}

inline void DirectRaster::Blend(int x, int y, uint32_t color, uint32_t coverage) {
  if (coverage == 0 || x < clipLeft_ || x >= clipRight_ || y < clipTop_ || y >= clipBottom_) return;
  uint32_t& pixel = bits_[y * stride_ + x];
  pixel = coverage >= 255 ? color : Interpolate(color, coverage, pixel, 255 - coverage);
}

// Wu's line: along the major axis one step per pixel, the coverage split
// between the two pixels that the line's centre passes between. Coordinates
// here are shifted by half a pixel, so that pixel k has its centre at k. The
// minor coordinate runs in 16.16 fixed point: cheaper than floor() on every
// step, and exact enough for lines of a few thousand pixels.
//
// Run takes the steps from `first` to `last` along the major axis, all
// inside the clip.
inline void DirectRaster::Run(int first, int last, int64_t y, int64_t step, qsizetype along, qsizetype across,
                              uint32_t pixel) {
  // Blending with full or no coverage gives back the colour or the pixel
  // exactly, and costs less than the mispredicted branches that would tell
  // the cases apart.
  const Pair16 source = Spread(pixel);
  const Pair16* coverage = kStepCoverage.byLower;
  uint32_t* start = bits_ + first * along;  // of the step's line along the major axis
  if (across == 1) {                        // steep: the two pixels are neighbours in a row
    for (int x = first; x <= last; ++x, y += step, start += along) {
      uint32_t* p = start + (y >> 16);
      StoreAdjacent(p, Mix(LoadAdjacent(p), source, coverage[(y >> 8) & 0xff]));
    }
    return;
  }
  for (int x = first; x <= last; ++x, y += step, start += along) {
    uint32_t* p = start + (y >> 16) * across;
    StoreTwo(p, p + across, Mix(LoadTwo(p, p + across), source, coverage[(y >> 8) & 0xff]));
  }
}

// Most segments of a curve lie well inside the clip, so that none of their
// pixels needs a test; the rest go the long way.
inline void DirectRaster::Segment(double x0, double y0, double x1, double y1, uint32_t pixel, bool withEnd) {
  bool safe = x0 >= safeLeft_ && x0 <= safeRight_ && x1 >= safeLeft_ && x1 <= safeRight_ && y0 >= safeTop_ &&
              y0 <= safeBottom_ && y1 >= safeTop_ && y1 <= safeBottom_;
  if (!safe || plain_) {
    SegmentNearEdge(x0, y0, x1, y1, pixel, withEnd);
    return;
  }
  qsizetype along = 1, across = stride_;
  if (std::fabs(y1 - y0) > std::fabs(x1 - x0)) {
    std::swap(x0, y0);
    std::swap(x1, y1);
    std::swap(along, across);
  }
  const bool backwards = x0 > x1;  // then the end pixel is the first step
  if (backwards) {
    std::swap(x0, x1);
    std::swap(y0, y1);
  }
  const double gradient = x1 == x0 ? 0 : (y1 - y0) / (x1 - x0);
  int first = int(x0 + 0.5), last = int(x1 + 0.5);
  int64_t y = Fixed(y0 + gradient * (first - x0));
  const int64_t step = FixedStep(gradient);
  if (!withEnd) {
    if (backwards) {
      ++first;
      y += step;
    } else {
      --last;
    }
  }
  Run(first, last, y, step, along, across, pixel);
}

// A grid line or an axis: along a row (`across`) or a column through pixel
// centres, so that it covers whole pixels, which are simply set, as Wu's
// line would.
void DirectRaster::Straight(double x0, double y0, double x1, double y1, uint32_t pixel, int skip, bool across) {
  const int line = across ? int(y0) : int(x0);
  if (line < (across ? clipTop_ : clipLeft_) || line >= (across ? clipBottom_ : clipRight_)) return;
  const double a = across ? x0 : y0, b = across ? x1 : y1;
  int first = FloorToInt(std::min(a, b) + 0.5), last = FloorToInt(std::max(a, b) + 0.5);
  if (skip == first) ++first;
  if (skip == last) --last;
  first = std::max(first, across ? clipLeft_ : clipTop_);
  last = std::min(last, (across ? clipRight_ : clipBottom_) - 1);
  if (first > last) return;  // within the margin beyond the clip
  if (across) {
    std::fill(bits_ + line * stride_ + first, bits_ + line * stride_ + last + 1, pixel);
  } else {
    for (int k = first; k <= last; ++k) bits_[k * stride_ + line] = pixel;
  }
}

// Clips a segment to `margin` pixels around the clip; false when nothing of
// it is left. The end pixel is that of the end before clipping.
bool DirectRaster::ClipNear(double& x0, double& y0, double& x1, double& y1, double margin, int& endX, int& endY) const {
  const double left = clipLeft_ - margin, top = clipTop_ - margin, right = clipRight_ + margin,
               bottom = clipBottom_ + margin;
  // Wholly beyond one side: the common case of a curve leaving its graph.
  if ((x0 < left && x1 < left) || (x0 > right && x1 > right) || (y0 < top && y1 < top) || (y0 > bottom && y1 > bottom))
    return false;
  if (!(std::fabs(x1) < 1e9 && std::fabs(y1) < 1e9 && std::fabs(x0) < 1e9 && std::fabs(y0) < 1e9)) {
    if (!ClipSegment(x0, y0, x1, y1, -1e9, -1e9, 1e9, 1e9)) return false;
  }
  endX = FloorToInt(x1 + 0.5);
  endY = FloorToInt(y1 + 0.5);
  return ClipSegment(x0, y0, x1, y1, left, top, right, bottom);
}

// Turns a segment so that x is its major axis and runs forwards, and tells
// the pixel to leave out along it (INT32_MIN for none) and its gradient.
DirectRaster::Orientation DirectRaster::Orient(double& x0, double& y0, double& x1, double& y1, int endX, int endY,
                                               bool withEnd) {
  const bool steep = std::fabs(y1 - y0) > std::fabs(x1 - x0);
  if (steep) {
    std::swap(x0, y0);
    std::swap(x1, y1);
    std::swap(endX, endY);
  }
  if (x0 > x1) {
    std::swap(x0, x1);
    std::swap(y0, y1);
  }
  return {steep, withEnd ? INT32_MIN : endX, x1 == x0 ? 0 : (y1 - y0) / (x1 - x0)};
}

void DirectRaster::SegmentNearEdge(double x0, double y0, double x1, double y1, uint32_t pixel, bool withEnd) {
  int endX, endY;
  if (!ClipNear(x0, y0, x1, y1, 1.0, endX, endY)) return;
  const bool row = y0 == y1 && x0 != x1 && FloorToInt(y0) == y0;
  const bool column = x0 == x1 && y0 != y1 && FloorToInt(x0) == x0;
  if ((row || column) && !plain_) {
    Straight(x0, y0, x1, y1, pixel, withEnd ? INT32_MIN : (row ? endX : endY), row);
    return;
  }
  const auto [steep, skip, gradient] = Orient(x0, y0, x1, y1, endX, endY, withEnd);
  // After clipping every coordinate lies above -2, so adding 2 makes the
  // truncating conversions round down.
  int first = int(x0 + 2.5) - 2, last = int(x1 + 2.5) - 2;
  int64_t y = Fixed(y0 + gradient * (first - x0));
  int64_t step = FixedStep(gradient);
  const int64_t yEnd = y + step * (last - first);
  const int minRow = int(std::min(y, yEnd) >> 16), maxRow = int(std::max(y, yEnd) >> 16) + 1;
  const bool inside = steep ? first >= clipTop_ && last < clipBottom_ && minRow >= clipLeft_ && maxRow < clipRight_
                            : first >= clipLeft_ && last < clipRight_ && minRow >= clipTop_ && maxRow < clipBottom_;
  if (inside && !plain_) {
    if (skip == last) {
      --last;
    } else if (skip == first) {
      ++first;
      y += step;
    }
    Run(first, last, y, step, steep ? stride_ : 1, steep ? 1 : stride_, pixel);
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

void DirectRaster::Line(QPointF a, QPointF b, QRgb color, bool withEnd) {
  const QPointF points[] = {a, b};
  Polyline(points, 2, color, withEnd);
}

void DirectRaster::Polyline(const QPointF* points, size_t count, QRgb color, bool withEnd) {
  if (count < 2) return;
  commands_.push_back({nullptr, color | 0xff000000u, uint32_t(points_.size()), uint32_t(count), withEnd});
  points_.insert(points_.end(), points, points + count);
}

void DirectRaster::DrawPolyline(const QPointF* points, size_t count, uint32_t pixel, bool withEnd) {
  const double ox = offset_.x() - 0.5, oy = offset_.y() - 0.5;
  if (scale_ != 1) {
    for (size_t k = 1; k < count; ++k)
      WideSegment(points[k - 1].x() * scale_ + ox, points[k - 1].y() * scale_ + oy, points[k].x() * scale_ + ox,
                  points[k].y() * scale_ + oy, pixel, withEnd && k + 1 == count);
    return;
  }
  for (size_t k = 1; k < count; ++k)
    Segment(points[k - 1].x() + ox, points[k - 1].y() + oy, points[k].x() + ox, points[k].y() + oy, pixel,
            withEnd && k + 1 == count);
}

// A logical pixel wide on a dense screen: each step along the major axis
// covers the pixels across that the line's width spans, each by its share.
// The ends are cut square at the end pixels' centres.
void DirectRaster::WideSegment(double x0, double y0, double x1, double y1, uint32_t pixel, bool withEnd) {
  int endX, endY;
  // Most segments of a curve lie inside the clip, with nothing to cut off.
  if (!plain_ && x0 >= clipLeft_ && x0 <= clipRight_ && x1 >= clipLeft_ && x1 <= clipRight_ && y0 >= clipTop_ &&
      y0 <= clipBottom_ && y1 >= clipTop_ && y1 <= clipBottom_) {
    endX = FloorToInt(x1 + 0.5);
    endY = FloorToInt(y1 + 0.5);
  } else if (!ClipNear(x0, y0, x1, y1, scale_ + 2, endX, endY)) {
    return;
  }
  const auto [steep, skip, gradient] = Orient(x0, y0, x1, y1, endX, endY, withEnd);
  const double half = 0.5 * scale_ * std::sqrt(1 + gradient * gradient);  // across the major axis
  int first = FloorToInt(x0 + 0.5), last = FloorToInt(x1 + 0.5);
  if (!plain_ && gradient != 0 && WideRun(first, last, x0, y0, gradient, half, skip, steep, pixel)) return;
  if (gradient == 0 && !plain_) {  // a grid line or an axis: the same coverage all along
    const int from = std::max(first, steep ? clipTop_ : clipLeft_);
    const int to = std::min(last, (steep ? clipBottom_ : clipRight_) - 1);
    const qsizetype along = steep ? stride_ : 1, across = steep ? 1 : stride_;
    for (int r = FloorToInt(y0 - half + 0.5), end = FloorToInt(y0 + half + 0.5); r <= end; ++r) {
      if (r < (steep ? clipLeft_ : clipTop_) || r >= (steep ? clipRight_ : clipBottom_)) continue;
      const double cover = std::min(r + 0.5, y0 + half) - std::max(r - 0.5, y0 - half);
      if (cover <= 0) continue;
      const uint32_t coverage = cover >= 1 ? 255 : uint32_t(cover * 255 + 0.5);
      uint32_t* line = bits_ + r * across;
      for (int x = from; x <= to; ++x) {
        if (x == skip) continue;
        uint32_t& target = line[x * along];
        target = coverage == 255 ? pixel : Interpolate(pixel, coverage, target, 255 - coverage);
      }
    }
    return;
  }
  for (int x = first; x <= last; ++x) {
    if (x == skip) continue;
    const double centre = y0 + gradient * (x - x0);
    const double lower = centre - half, upper = centre + half;
    for (int r = FloorToInt(lower + 0.5), end = FloorToInt(upper + 0.5); r <= end; ++r) {
      const double cover = std::min(r + 0.5, upper) - std::max(r - 0.5, lower);
      const uint32_t coverage = cover <= 0 ? 0 : cover >= 1 ? 255 : uint32_t(cover * 255 + 0.5);
      if (steep)
        Blend(r, x, pixel, coverage);
      else
        Blend(x, r, pixel, coverage);
    }
  }
}

namespace {

// The steps of WideRun: `count` of them along the major axis, the first
// from `start`; `centre` is the line's centre across the first
// step in 16.16 fixed point, plus half a pixel, `reach` half its extent
// across.
struct WideSteps {
  uint32_t* start;
  qsizetype stride;
  int count;
  int64_t centre, step, reach;

  // With `kPairs` of pixels across (0: `pairs`); `kSteep` when the pixels
  // across are neighbours in a row.
  template <bool kSteep, int kPairs>
  void Draw(uint32_t pixel, int pairs) const {
    if (kPairs > 0) pairs = kPairs;
    const qsizetype along = kSteep ? stride : 1, across = kSteep ? 1 : stride;
    const Pair16 source = Spread(pixel);
    const Signed16 firstTops = {0, 0, 0, 0, 4096, 4096, 4096, 4096};
    const Signed16 nextPair = Signed16{} + int16_t(2 * 4096);
    uint32_t* line = start;
    int64_t y = centre;
    for (int x = 0; x < count; ++x, y += step, line += along) {
      const int64_t lower = y - reach, upper = y + reach;
      const int row = int(lower >> 16);
      const int16_t lowerPart = int16_t((lower >> 4) & 0xfff);
      const int16_t upperPart = int16_t((upper >> 4) - (int64_t(row) << 12));
      const Signed16 upperLanes = Signed16{} + upperPart;
      const Signed16 lowerFirst = {lowerPart, lowerPart, lowerPart, lowerPart, 0, 0, 0, 0};
      uint32_t* p = line + row * across;
      if (kSteep && kPairs == 2) {
        MixFour(p, source, WideCoverage(upperLanes, firstTops, lowerFirst),
                WideCoverage(upperLanes, firstTops + nextPair, Signed16{}));
        continue;
      }
      Signed16 tops = firstTops, lowerHere = lowerFirst;
      for (int k = 0; k < pairs; ++k, tops += nextPair, p += 2 * across) {
        const Pair16 coverage = WideCoverage(upperLanes, tops, lowerHere);
        lowerHere = Signed16{};
        if (kSteep)
          StoreAdjacent(p, Mix(LoadAdjacent(p), source, coverage));
        else
          StoreTwo(p, p + across, Mix(LoadTwo(p, p + across), source, coverage));
      }
    }
  }
};

}  // namespace

// A wide segment that lies wholly inside the clip, as WideSegment draws it
// but in fixed point: the lower and upper edges of the line across each step
// in 16.16, the coverages of the pixels between them in 4096ths, blended two
// pixels at a time with no test per pixel. Pixels past the upper edge in the
// last pair get no coverage, which leaves them as they are. False when the
// segment comes near the clip's edge or the line is too wide for the lanes.
bool DirectRaster::WideRun(int first, int last, double x0, double y0, double gradient, double half, int skip,
                           bool steep, uint32_t pixel) {
  if (!(half < 3)) return false;
  // Rows from the one holding the lower edge (at most 2 * half + 2 of them),
  // in pairs.
  const int pairs = (int(2 * half) + 3) / 2;
  if (skip == last) {
    --last;
  } else if (skip == first) {
    ++first;
  }
  if (first > last) return true;
  const int64_t reach = int64_t(half * kOne + 0.5);
  const int64_t step = FixedStep(gradient);
  // 0.5 turns a centre coordinate into a distance from the pixel's edge.
  const double lowerFirst = y0 + gradient * (first - x0) + 0.5;
  if (!(lowerFirst > -64 && lowerFirst < 1e6)) return false;
  const int64_t centre = int64_t((lowerFirst + 64) * kOne + 0.5) - int64_t(64 * kOne);
  const int64_t centreLast = centre + step * (last - first);
  const int lowest = int((std::min(centre, centreLast) - reach) >> 16);
  const int highest = int((std::max(centre, centreLast) - reach) >> 16) + 2 * pairs - 1;
  const int majorLow = steep ? clipTop_ : clipLeft_, majorHigh = steep ? clipBottom_ : clipRight_;
  const int minorLow = steep ? clipLeft_ : clipTop_, minorHigh = steep ? clipRight_ : clipBottom_;
  if (first < majorLow || last >= majorHigh || lowest < minorLow || highest >= minorHigh) return false;

  const WideSteps steps{bits_ + first * (steep ? stride_ : 1), stride_, last - first + 1, centre, step, reach};
  // Lines at pixel ratio 2 span two pairs of pixels across: their own loops.
  if (steep)
    pairs == 2 ? steps.Draw<true, 2>(pixel, 2) : steps.Draw<true, 0>(pixel, pairs);
  else
    pairs == 2 ? steps.Draw<false, 2>(pixel, 2) : steps.Draw<false, 0>(pixel, pairs);
  return true;
}

// Stamps of one shape and colour in a row (a curve's markers) share one
// command, their positions kept with the polylines' points.
void DirectRaster::Stamp(const ShapePtr& shape, QPointF at, QRgb color) {
  const uint32_t pixel = color | 0xff000000u;
  if (commands_.empty() || commands_.back().shape != shape.get() || commands_.back().pixel != pixel) {
    if (shapes_.empty() || shapes_.back() != shape) shapes_.push_back(shape);
    commands_.push_back({shape.get(), pixel, uint32_t(points_.size()), 0, false});
  }
  points_.push_back(at);
  ++commands_.back().count;
}

void DirectRaster::Draw() {
  for (const Command& command : commands_) {
    if (command.shape)
      DrawStamps(*command.shape, points_.data() + command.first, command.count, command.pixel);
    else
      DrawPolyline(points_.data() + command.first, command.count, command.pixel, command.withEnd);
  }
  commands_.clear();
  points_.clear();
  shapes_.clear();
}

DirectRaster::~DirectRaster() { Draw(); }

// A graph's background covers the whole image, mostly larger than the
// cache: stored past the cache, its lines are not read in first and do not
// crowd out those the curves need next. A small one stays in the cache.
bool DirectRaster::Fill(const QRectF& logical, QRgb color) {
  if (!commands_.empty() || plain_) return false;
  const QRectF device(logical.topLeft() * scale_ + offset_, logical.size() * scale_);
  const int left = int(device.left()), top = int(device.top()), right = int(device.right()),
            bottom = int(device.bottom());
  if (QRectF(left, top, right - left, bottom - top) != device || left < clipLeft_ || top < clipTop_ ||
      right > clipRight_ || bottom > clipBottom_)
    return false;
  const uint32_t pixel = color | 0xff000000u;
  const bool large = int64_t(right - left) * (bottom - top) >= (1 << 20);
  for (int y = top; y < bottom; ++y) {
    uint32_t* p = bits_ + y * stride_ + left;
    uint32_t* const end = bits_ + y * stride_ + right;
#ifdef __SSE2__
    if (large) {
      const __m128i four = _mm_set1_epi32(int(pixel));
      for (; p < end && (reinterpret_cast<uintptr_t>(p) & 15) != 0; ++p) *p = pixel;
      for (; end - p >= 4; p += 4) _mm_stream_si128(reinterpret_cast<__m128i*>(p), four);
    }
#endif
    std::fill(p, end, pixel);
  }
#ifdef __SSE2__
  if (large) _mm_sfence();
#endif
  return true;
}

// A shape's pixels as offsets from its centre pixel: those wholly covered,
// which a stamp simply sets, and pairs of neighbours in a row that it blends
// two at a time. One loop over each list, of the same length for every
// stamp of the shape, keeps the branches predictable.
class DirectRaster::Shape {
 public:
  struct Solid {
    int16_t dx, dy;
  };
  struct Pair {
    Pair16 coverage;  // per channel, 0 beyond the outline
    int16_t dx, dy;   // of the left pixel
  };
  std::vector<Solid> solids;
  std::vector<Pair> pairs;
  int left = 0, right = 0, top = 0, bottom = 0;  // extent of the pixels touched
  // Added to a position before it is rounded down to the centre pixel: 0.5
  // when the shape's centre is a pixel corner, the top-left one of that pixel.
  double anchorShift = 0;
};

// Drawn once by QPainter itself, so a stamped marker looks exactly like one
// that QPainter would draw with its corners on whole pixels.
DirectRaster::ShapePtr DirectRaster::ShapeOf(const QPointF* relative, size_t count) {
  const double scale = scale_;
  if (count < 4 || count > kMaxOutline || relative[0] != relative[count - 1]) return nullptr;
  constexpr int kReach = 32;  // pixels from the centre
  // Corners go to whole pixels, and the pen is a whole number of pixels
  // wide: straight edges are then crisp instead of half-covered. An odd
  // pen is centred on pixel centres, an even one on pixel edges.
  const int pen = std::clamp(int(std::lround(scale)), 1, 8);
  ShapeKey key{};
  key[0] = int16_t(count);
  key[1] = int16_t(pen);
  for (size_t i = 0; i < count; ++i) {
    double dx = relative[i].x() * scale, dy = relative[i].y() * scale;
    if (!(std::fabs(dx) <= kReach && std::fabs(dy) <= kReach)) return nullptr;
    key[2 + 2 * i] = int16_t(RoundSmall(dx));
    key[3 + 2 * i] = int16_t(RoundSmall(dy));
  }
  // Sizes follow the window, so a long session meets many; starting afresh
  // now and then keeps the cache small, and shapes in use stay with their users.
  auto& shapes = cache_.shapes_->byKey;
  if (auto found = shapes.find(key); found != shapes.end()) return found->second;
  if (shapes.size() >= 1024) shapes.clear();

  constexpr int kSize = 2 * kReach + 24, kCentre = kSize / 2;  // margins for the pen and a pair
  const double centre = kCentre + (pen % 2 == 1 ? 0.5 : 0.0);
  QImage canvas(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
  canvas.fill(Qt::transparent);
  {
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(Qt::black, pen, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    QPointF outline[kMaxOutline];
    for (size_t i = 0; i < count; ++i) outline[i] = QPointF(centre + key[2 + 2 * i], centre + key[3 + 2 * i]);
    painter.drawPolygon(outline, int(count - 1));
  }
  auto shape = std::make_shared<Shape>();
  shape->anchorShift = pen % 2 == 1 ? 0.0 : 0.5;
  shape->left = shape->top = kSize;
  shape->right = shape->bottom = -kSize;
  for (int row = 0; row < kSize; ++row) {
    auto* line = reinterpret_cast<const QRgb*>(canvas.constScanLine(row));
    const int16_t dy = int16_t(row - kCentre);
    for (int column = 0; column < kSize; ++column) {
      const int alpha = qAlpha(line[column]);
      if (alpha == 0) continue;
      const int16_t dx = int16_t(column - kCentre);
      shape->left = std::min(shape->left, int(dx));
      shape->top = std::min(shape->top, int(dy));
      shape->bottom = std::max(shape->bottom, int(dy));
      if (alpha == 255) {
        shape->solids.push_back({dx, dy});
        shape->right = std::max(shape->right, int(dx));
        continue;
      }
      // The outline stays clear of the canvas's edges, so column + 1 exists.
      Shape::Pair pair{};
      for (int c = 0; c < 8; ++c) pair.coverage[c] = uint16_t(qAlpha(line[column + c / 4]));
      pair.dx = dx;
      pair.dy = dy;
      shape->pairs.push_back(pair);
      shape->right = std::max(shape->right, dx + 1);
      ++column;
    }
  }
  shapes.emplace(key, shape);
  return shape;
}

void DirectRaster::DrawStamps(const Shape& shape, const QPointF* at, size_t count, uint32_t pixel) {
  // The shape's offsets in this image, worked out once for all the stamps.
  const qsizetype stride = stride_;  // kept in a register: pixel stores may alias members
  solidOffsets_.clear();
  for (const Shape::Solid& solid : shape.solids) solidOffsets_.push_back(solid.dy * stride + solid.dx);
  pairOffsets_.clear();
  for (const Shape::Pair& pair : shape.pairs) pairOffsets_.push_back(pair.dy * stride + pair.dx);
  const qsizetype* solids = solidOffsets_.data();
  const qsizetype* pairs = pairOffsets_.data();
  const size_t solidCount = solidOffsets_.size(), pairCount = pairOffsets_.size();
  const Pair16 source = Spread(pixel);
  for (size_t k = 0; k < count; ++k) {
    const double atX = at[k].x() * scale_ + offset_.x(), atY = at[k].y() * scale_ + offset_.y();
    if (!(std::fabs(atX) < 1e9 && std::fabs(atY) < 1e9)) continue;  // far beyond any image
    const int x = FloorToInt(atX + shape.anchorShift);
    const int y = FloorToInt(atY + shape.anchorShift);
    bool inside = !plain_ && x + shape.left >= clipLeft_ && x + shape.right < clipRight_ && y + shape.top >= clipTop_ &&
                  y + shape.bottom < clipBottom_;
    if (!inside) {
      for (const Shape::Solid& solid : shape.solids) Blend(x + solid.dx, y + solid.dy, pixel, 255);
      for (const Shape::Pair& pair : shape.pairs) {
        Blend(x + pair.dx, y + pair.dy, pixel, pair.coverage[0]);
        Blend(x + pair.dx + 1, y + pair.dy, pixel, pair.coverage[4]);
      }
      continue;
    }
    uint32_t* const centre = bits_ + y * stride + x;
    for (size_t i = 0; i < solidCount; ++i) centre[solids[i]] = pixel;
    for (size_t i = 0; i < pairCount; ++i) {
      uint32_t* target = centre + pairs[i];
      StoreAdjacent(target, Mix(LoadAdjacent(target), source, shape.pairs[i].coverage));
    }
  }
}

bool DirectRaster::Outline(const QPointF* points, size_t count, QRgb color) {
  if (count < 4 || count > kMaxOutline) return false;
  QPointF relative[kMaxOutline];
  for (size_t i = 0; i < count; ++i) relative[i] = points[i] - points[0];
  ShapePtr shape = ShapeOf(relative, count);
  if (!shape) return false;
  Stamp(shape, points[0], color);
  return true;
}

}  // namespace tavilo
