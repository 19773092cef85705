#include "model/polar.h"

#include <cmath>

#include "model/child_list.h"

namespace tavilo {

void Polar::AddPoint(const PolarPoint& point) {
  IncrementCount(PointCount());
  points_.push_back(point);
}

void Polar::SetPoints(std::vector<PolarPoint> points) {
  if (points.size() > static_cast<size_t>(INT16_MAX)) throw OverflowError(std::to_string(points.size()) + " > 32767");
  points_ = std::move(points);
}

const PolarPoint& Polar::Point(int index) const {
  if (index < 1 || index > PointCount()) throw SubscriptError(std::to_string(index));
  return points_[index - 1];
}

PolarPoint& Polar::Point(int index) { return const_cast<PolarPoint&>(static_cast<const Polar*>(this)->Point(index)); }

PolarPoint Polar::InterpolateAtCl(double cl) const {
  PolarPoint result;
  const int n = PointCount();
  if (n < 1) {
    result.Alfa = result.Cl = result.Cd = result.Cm = result.TU = result.TL = 0.0;
    return result;
  }
  int k = 1;
  double t = 0.0;
  bool outOfRange = false;
  if (cl < Cl(1)) {
    outOfRange = true;
  } else if (cl >= Cl(n)) {
    k = n - 1;
    t = 1.0;
    outOfRange = true;
  } else {
    // Only rising segments qualify, so a falling branch after stall is never
    // chosen; the segment ending at an exactly matching point comes first.
    for (k = 1; k <= n - 1; ++k) {
      if (Cl(k) <= cl && cl <= Cl(k + 1)) break;
    }
    double dCl = Cl(k + 1) - Cl(k);
    t = std::fabs(dCl) < 1e-16 ? 1.0 : (cl - Cl(k)) / dCl;
  }
  if (k < 1) k = 1;
  const int j = n > k ? k + 1 : k;
  const PolarPoint& lower = Point(k);
  const PolarPoint& upper = Point(j);
  auto blend = [t](double a, double b) { return a + t * (b - a); };
  result.Alfa = blend(lower.Alfa, upper.Alfa);
  result.Cl = blend(lower.Cl, upper.Cl);
  result.Cd = blend(lower.Cd, upper.Cd);
  result.Cm = blend(lower.Cm, upper.Cm);
  result.TU = blend(lower.TU, upper.TU);
  result.TL = blend(lower.TL, upper.TL);
  if (outOfRange) result.Cd = -result.Cd;
  return result;
}

}  // namespace tavilo
