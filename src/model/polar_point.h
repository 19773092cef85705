#pragma once

namespace tavilo {

// The "no value" marker: every point field starts at it and keeps it where a
// file gives no value.
inline constexpr double kNoValue = -99.999;

// One measured or computed point of a polar. Angles in degrees, transition
// and separation positions as x/c.
struct PolarPoint {
  double Alfa = kNoValue;
  double Cl = kNoValue;
  double Cd = kNoValue;
  double Cm = kNoValue;
  double TU = kNoValue;
  double TL = kNoValue;
  double SU = kNoValue;
  double SL = kNoValue;

  bool operator==(const PolarPoint&) const = default;
};

}  // namespace tavilo
