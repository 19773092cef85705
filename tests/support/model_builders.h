#pragma once
// Small builders for the model objects that many tests start from.

#include <memory>
#include <string>
#include <vector>

#include "model/polar.h"

namespace tavilo::testing {

inline PolarPtr MakePolar(double reynolds, double mach, bool selected, const std::vector<PolarPoint>& points,
                          const std::string& name = {}) {
  auto polar = std::make_shared<Polar>();
  polar->Name = name;
  polar->ReynoldsNumber = reynolds;
  polar->MachNumber = mach;
  polar->Selected = selected;
  for (const PolarPoint& point : points) polar->AddPoint(point);
  return polar;
}

// A point with the given first values; the rest keep the no-value marker.
inline PolarPoint MakePoint(double alfa, double cl, double cd, double cm = kNoValue, double tu = kNoValue,
                            double tl = kNoValue) {
  return {.Alfa = alfa, .Cl = cl, .Cd = cd, .Cm = cm, .TU = tu, .TL = tl};
}

}  // namespace tavilo::testing
