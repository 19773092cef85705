#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/child_list.h"
#include "model/configuration.h"

namespace tavilo {

// The whole document: one airfoil with its sets, polars and points. File
// formats are free functions in formats/ that fill or walk this tree.
class Airfoil {
 public:
  std::string Name;

  int16_t ConfigCount() const { return configurations_.Count(); }
  // Set `index` (1-based), null above ConfigCount(); SubscriptError below 1.
  ConfigurationPtr Configuration(int index) const { return configurations_.At(index); }
  // Appends a reference (shared, not copied); OverflowError past 32767.
  void AddConfiguration(ConfigurationPtr config) { configurations_.Add(std::move(config)); }
  // Empties set `index` (deleting each of its polars) and removes it.
  // SubscriptError for an index outside the list, before anything changes.
  void DeleteConfiguration(int index);
  // Removes every set, the last first. The name is kept.
  void Delete();

  // Drops every set reference without emptying the sets and sets the count
  // as a reader found it (0, or the negative count of a broken file).
  void ResetConfigurations(int16_t count) { configurations_.Reset(count); }
  // The sets 1..ConfigCount() by reference.
  std::vector<ConfigurationPtr> Configurations() const { return configurations_.Items(); }

  // Stores `config` at `index` within 1..ConfigCount() (after a reset).
  void SetConfiguration(int index, ConfigurationPtr config) { configurations_.Set(index, std::move(config)); }

 private:
  ChildList<tavilo::Configuration> configurations_;
};

using AirfoilPtr = std::shared_ptr<Airfoil>;

}  // namespace tavilo
