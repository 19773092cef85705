#include "plot/zoom.h"

#include <algorithm>
#include <cmath>

namespace tavilo {

namespace {

// A view this close to its home (a share of the home's span at every edge)
// is the home: zooming in and out by the same steps, or panning there and
// back, leaves rounding dust that must not keep the zoomed grid.
constexpr double kHomeTolerance = 1e-6;

struct Bounds {
  double least, most;
};

// The spans an axis may take; a home of no finite positive span bounds
// nothing but keeps the numbers finite.
Bounds SpanBounds(double homeLow, double homeHigh) {
  const double span = homeHigh - homeLow;
  if (!(span > 0) || !std::isfinite(span)) return {1e-9, 1e6};
  const double magnitude = std::max(std::fabs(homeLow), std::fabs(homeHigh));
  // Never narrower than the digits of the values at its edges can tell.
  return {std::max(span / kMostZoomIn, magnitude * 1e-12), span * kMostZoomOut};
}

// Keeps a span within its bounds, about `anchor`, a value that keeps its
// place in the graph.
void Limit(double& low, double& high, const Bounds& bounds, double anchor) {
  const double span = high - low;
  if (span >= bounds.least && span <= bounds.most) return;
  const double limited = std::isfinite(span) ? std::clamp(span, bounds.least, bounds.most) : bounds.least;
  double share = span > 0 && std::isfinite(span) ? (anchor - low) / span : 0.5;
  if (!std::isfinite(share)) share = 0.5;
  low = anchor - share * limited;
  high = low + limited;
}

bool Near(double a, double b, double span) { return std::fabs(a - b) <= kHomeTolerance * span; }

GraphView Make(const GraphView& home, double left, double right, double bottom, double top, double anchorX,
               double anchorY) {
  if (right < left) std::swap(left, right);
  if (top < bottom) std::swap(bottom, top);
  Limit(left, right, SpanBounds(home.left, home.right), anchorX);
  Limit(bottom, top, SpanBounds(home.bottom, home.top), anchorY);
  const double width = home.right - home.left, height = home.top - home.bottom;
  if (Near(left, home.left, width) && Near(right, home.right, width) && Near(bottom, home.bottom, height) &&
      Near(top, home.top, height))
    return home;
  GraphView view;
  view.left = left;
  view.right = right;
  view.bottom = bottom;
  view.top = top;
  view.zoomed = true;
  return view;
}

}  // namespace

GraphView ZoomAbout(const GraphView& view, const GraphView& home, double x, double y, double factor) {
  if (!(factor > 0) || !std::isfinite(factor) || !std::isfinite(x) || !std::isfinite(y)) return view;
  return Make(home, x - (x - view.left) * factor, x + (view.right - x) * factor, y - (y - view.bottom) * factor,
              y + (view.top - y) * factor, x, y);
}

GraphView ZoomTo(const GraphView& home, double x1, double y1, double x2, double y2) {
  return Make(home, x1, x2, y1, y2, (x1 + x2) / 2, (y1 + y2) / 2);
}

GraphView Pan(const GraphView& view, const GraphView& home, double dx, double dy) {
  const double left = view.left + dx, bottom = view.bottom + dy;
  return Make(home, left, view.right + dx, bottom, view.top + dy, left, bottom);
}

double AdaptiveStep(double span) {
  if (!(span > 0) || !std::isfinite(span)) return 0;
  double power = std::pow(10.0, std::floor(std::log10(span / 12)));
  for (;;) {
    for (double mantissa : {1.0, 2.0, 5.0}) {
      const double step = mantissa * power;
      if (span / step <= 12) return step;
    }
    power *= 10;
  }
}

double NextLabelStep(double step, double current) {
  // The ratio is 1, 2 or 5 times a power of ten, but rounding may have
  // nudged it; its mantissa decides.
  const double ratio = current / step;
  const double power = std::pow(10.0, std::floor(std::log10(ratio) + 1e-9));
  const double mantissa = ratio / power;
  if (mantissa < 1.5) return 2 * power * step;
  if (mantissa < 3.5) return 5 * power * step;
  return 10 * power * step;
}

int DecimalsFor(double step, int least) {
  if (!(step > 0)) return least;
  const int decimals = static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
  return std::clamp(decimals, least, 9);
}

}  // namespace tavilo
