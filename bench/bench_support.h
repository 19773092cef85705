#pragma once
// Synthetic airfoils of realistic shape for the benchmarks.

#include <cmath>
#include <memory>

#include "model/airfoil.h"

namespace tavilo::bench {

// `polars` polars of `points` points each, spread over sets of ten, all selected.
inline Airfoil MakeAirfoil(int polars, int points) {
  Airfoil airfoil;
  airfoil.Name = "Synthetic SD7037";
  std::shared_ptr<Configuration> set;
  for (int p = 0; p < polars; ++p) {
    if (p % 10 == 0) {
      set = std::make_shared<Configuration>();
      set->Name = "Flap " + std::to_string(p / 10);
      airfoil.AddConfiguration(set);
    }
    auto polar = std::make_shared<Polar>();
    polar->ReynoldsNumber = 100000.0 + 25000.0 * p;
    polar->MachNumber = 0.05;
    polar->Selected = true;
    for (int i = 0; i < points; ++i) {
      const double alfa = -5.0 + 20.0 * i / points;
      PolarPoint point;
      point.Alfa = alfa;
      point.Cl = 0.1 * alfa + 0.3 + 1e-4 * p;
      point.Cd = 0.008 + 0.0004 * alfa * alfa / (1 + p % 7);
      point.Cm = -0.05 - 0.001 * alfa;
      point.TU = 0.6 - 0.03 * alfa;
      point.TL = std::fmin(1.0, 0.7 + 0.02 * alfa);
      polar->AddPoint(point);
    }
    set->AddPolar(polar);
  }
  return airfoil;
}

}  // namespace tavilo::bench
