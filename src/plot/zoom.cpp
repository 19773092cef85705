#include "plot/zoom.h"

#include <algorithm>
#include <cmath>

namespace tavilo {

namespace {

// Keeps a span within the limits, about its centre.
void Limit(double& low, double& high) {
  const double least = std::max(kMinViewSpan, std::max(std::fabs(low), std::fabs(high)) * 1e-12);
  const double span = high - low;
  if (span >= least && span <= kMaxViewSpan) return;
  const double centre = (low + high) / 2;
  const double limited = std::isfinite(span) ? std::clamp(span, least, kMaxViewSpan) : least;
  low = centre - limited / 2;
  high = centre + limited / 2;
}

GraphView Make(double left, double right, double bottom, double top) {
  if (right < left) std::swap(left, right);
  if (top < bottom) std::swap(bottom, top);
  Limit(left, right);
  Limit(bottom, top);
  GraphView view;
  view.left = left;
  view.right = right;
  view.bottom = bottom;
  view.top = top;
  view.zoomed = true;
  return view;
}

}  // namespace

GraphView ZoomAbout(const GraphView& view, double x, double y, double factor) {
  if (!(factor > 0) || !std::isfinite(factor)) return view;
  return Make(x - (x - view.left) * factor, x + (view.right - x) * factor, y - (y - view.bottom) * factor,
              y + (view.top - y) * factor);
}

GraphView ZoomTo(const GraphView&, double x1, double y1, double x2, double y2) {
  return Make(x1, x2, y1, y2);
}

GraphView Pan(const GraphView& view, double dx, double dy) {
  return Make(view.left + dx, view.right + dx, view.bottom + dy, view.top + dy);
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

double LabelStep(double step, double extent, double gap, double perUnit) {
  double power = 1;
  for (int k = 0; k < 30; ++k, power *= 10)
    for (double mantissa : {1.0, 2.0, 5.0})
      if (mantissa * power * step * perUnit >= extent + gap) return mantissa * power * step;
  return step * power;
}

int DecimalsFor(double step, int least) {
  if (!(step > 0)) return least;
  const int decimals = static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
  return std::clamp(decimals, least, 9);
}

}  // namespace tavilo
