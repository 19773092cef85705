#pragma once
// The snapshot by which an edit of the tree is undone.

#include <cstdint>
#include <string>
#include <vector>

#include "model/airfoil.h"

namespace tavilo {

// Everything of an airfoil that an edit of the tree can change, except the
// points: the names, the sets and their polars by reference, the counts as
// they stand (negative ones too), and each polar's numbers and tick.
// Restoring it puts the airfoil back as it was when it was taken; the
// points, never changed by such an edit, are shared.
struct AirfoilSnapshot {
  struct PolarState {
    PolarPtr polar;
    std::string name;
    double reynolds = 0;
    double mach = 0;
    bool selected = false;
    bool operator==(const PolarState&) const = default;
  };
  struct SetState {
    ConfigurationPtr set;
    std::string name, origin, description2;
    int16_t polarCount = 0;
    std::vector<PolarState> polars;
    bool operator==(const SetState&) const = default;
  };
  std::string name;
  int16_t setCount = 0;
  std::vector<SetState> sets;
  bool operator==(const AirfoilSnapshot&) const = default;
};

AirfoilSnapshot TakeSnapshot(const Airfoil& airfoil);
void RestoreSnapshot(Airfoil& airfoil, const AirfoilSnapshot& snapshot);

}  // namespace tavilo
