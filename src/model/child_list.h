#pragma once
// The 1-based child list shared by Airfoil (sets) and Configuration (polars):
// a signed 16-bit count that is the single truth about how many children
// there are, and the references themselves, held shared so that one set or
// polar can belong to two parents (clipboard, import, envelope).

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"

namespace tavilo {

// Adds one to a 16-bit count; raises OverflowError past 32767.
inline int16_t IncrementCount(int16_t count) {
  if (count == INT16_MAX) throw OverflowError("32768 > 32767");
  return static_cast<int16_t>(count + 1);
}

// Subtracts one from a 16-bit count; raises OverflowError below -32768.
inline int16_t DecrementCount(int16_t count) {
  if (count == INT16_MIN) throw OverflowError("-32769 < -32768");
  return static_cast<int16_t>(count - 1);
}

template <class T>
class ChildList {
 public:
  using Ptr = std::shared_ptr<T>;

  int16_t Count() const { return count_; }

  // The child at `index` (1-based); null when `index` is above the count;
  // SubscriptError below 1 or where no element was ever stored.
  Ptr At(int index) const {
    if (index > count_) return nullptr;
    if (index < 1 || static_cast<size_t>(index) > items_.size()) throw SubscriptError(std::to_string(index));
    return items_[index - 1];
  }

  // Appends `child` as element count + 1.
  void Add(Ptr child) {
    int16_t count = IncrementCount(count_);
    count_ = count;
    // After a delete from an empty list the count is negative; growing the
    // list to a bound below 1 fails like any other bad subscript.
    if (count < 1) throw SubscriptError(std::to_string(count));
    if (items_.size() < static_cast<size_t>(count)) items_.resize(count);
    items_[count - 1] = std::move(child);
  }

  // Removes element `index` and closes the gap. The count drops first and
  // without any test, so deleting from an empty list leaves it at -1, and an
  // index above the old count drops the last element.
  void Delete(int index) {
    count_ = DecrementCount(count_);
    for (int k = index; k <= count_; ++k) {
      if (k < 1 || static_cast<size_t>(k) >= items_.size()) throw SubscriptError(std::to_string(k));
      items_[k - 1] = std::move(items_[k]);
    }
    if (count_ > 0) items_.resize(count_);
  }

  // Sets the count without touching any child (readers that overwrite the
  // list in place); the stored references are dropped.
  void Reset(int16_t count) {
    count_ = count;
    items_.clear();
    if (count > 0) items_.resize(count);
  }

  // Stores `child` at `index` within 1..Count().
  void Set(int index, Ptr child) {
    if (index < 1 || index > count_ || static_cast<size_t>(index) > items_.size())
      throw SubscriptError(std::to_string(index));
    items_[index - 1] = std::move(child);
  }

  // The children 1..Count(), in order; none for a count below 1.
  std::vector<Ptr> Items() const { return std::vector<Ptr>(items_.begin(), items_.begin() + std::max<int>(0, count_)); }

  // Exchanges elements i and j (1-based, both valid).
  void Swap(int i, int j) { std::swap(items_[i - 1], items_[j - 1]); }

 private:
  int16_t count_ = 0;
  std::vector<Ptr> items_;  // items_[0] is element 1
};

}  // namespace tavilo
