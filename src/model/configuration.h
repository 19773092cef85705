#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/child_list.h"
#include "model/polar.h"

namespace tavilo {

// A set of polars ("Set" to the user), for example one flap setting.
class Configuration {
 public:
  std::string Name;          // "Description1" in PEF, `name` in XML
  std::string Origin;        // the program or source that produced the data
  std::string Description2;  // second description line (PEF only)

  // True when at least one polar is selected; an empty set reads false.
  bool Selected() const;
  // Selects or deselects every polar of the set.
  void SetSelected(bool selected);

  int16_t PolarCount() const { return polars_.Count(); }
  // Polar `index` (1-based), null above PolarCount(); SubscriptError below 1.
  PolarPtr Polar(int index) const { return polars_.At(index); }
  // Appends a reference; OverflowError past 32767.
  void AddPolar(PolarPtr polar) { polars_.Add(std::move(polar)); }
  // Removes polar `index`; the count drops without a test (an empty set
  // goes to -1), and the removed polar lives on wherever else it is held.
  void DeletePolar(int index) { polars_.Delete(index); }

  // The polars 1..PolarCount() by reference.
  std::vector<PolarPtr> Polars() const { return polars_.Items(); }
  // Drops every polar reference and sets the count as given (an undo puts
  // back a negative count too), then stores `polars` as polars 1, 2, ...
  void ResetPolars(int16_t count, const std::vector<PolarPtr>& polars) {
    polars_.Reset(count);
    for (size_t k = 0; k < polars.size(); ++k) polars_.Set(static_cast<int>(k + 1), polars[k]);
  }

  // Reorder the polars ascending by Reynolds or Mach number with the
  // exchange sort, which is not stable (5a, 5b, 3 ends as 3, 5b, 5a).
  // Always return 0.
  int16_t SortReynolds();
  int16_t SortMach();

  // The set read at lift coefficient `cl` and Reynolds number `reynolds`,
  // linear in Re between the two bracketing polars (expected ascending).
  // Null when no bracket exists; DivisionByZeroError when the bracketing
  // polars have equal Re; SubscriptError for an empty set.
  std::optional<PolarPoint> InterpolateAtCl(double cl, double reynolds) const;

 private:
  ChildList<tavilo::Polar> polars_;
};

using ConfigurationPtr = std::shared_ptr<Configuration>;

}  // namespace tavilo
