#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "model/polar_point.h"

namespace tavilo {

// One polar: the points of one airfoil at one Reynolds and Mach number.
// Points are stored in the order they were added; no order is imposed.
class Polar {
 public:
  std::string Name;
  double ReynoldsNumber = 0.0;  // plain number, not in millions
  double MachNumber = 0.0;
  bool Selected = false;  // ticked for display and writing

  int16_t PointCount() const { return static_cast<int16_t>(points_.size()); }

  // Appends a copy of `point`; OverflowError past 32767 points.
  void AddPoint(const PolarPoint& point);
  // Makes room for `count` points in all without changing the polar, so a
  // reader that knows a block's length appends without regrowing.
  void ReservePoints(int count) { points_.reserve(static_cast<size_t>(count > 0 ? count : 0)); }

  // Point `index` (1-based); SubscriptError outside 1..PointCount().
  const PolarPoint& Point(int index) const;
  PolarPoint& Point(int index);
  std::span<const PolarPoint> Points() const { return points_; }
  // Replaces every point at once (an edit of the points table, or its
  // undo); OverflowError past 32767 points, with the polar unchanged.
  void SetPoints(std::vector<PolarPoint> points);

  double Alfa(int index) const { return Point(index).Alfa; }
  double Cl(int index) const { return Point(index).Cl; }
  double Cd(int index) const { return Point(index).Cd; }
  double Cm(int index) const { return Point(index).Cm; }
  double TU(int index) const { return Point(index).TU; }
  double TL(int index) const { return Point(index).TL; }

  // The polar read at lift coefficient `cl`, linear between the neighbouring
  // points of the first rising segment that brackets it. Outside the data the
  // nearest end point is returned with its Cd negated (the out-of-range
  // marker); no points give zeros.
  PolarPoint InterpolateAtCl(double cl) const;

 private:
  std::vector<PolarPoint> points_;
};

using PolarPtr = std::shared_ptr<Polar>;

}  // namespace tavilo
