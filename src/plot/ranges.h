#pragma once
// The four range lists of the main window and the ranges read from them.

#include <array>
#include <string_view>

namespace tavilo {

struct RangeList {
  std::string_view name;          // object name of the drop-down list
  const std::string_view* items;  // in the order the list shows them
  int count;
  int initialIndex;  // zero-based selection at start
};

// Drag runs from the largest value down, the others from the smallest up.
inline constexpr std::array<std::string_view, 6> kClMaxItems = {"0.5", "1.0", "1.5", "2.0", "2.5", "3.0"};
inline constexpr std::array<std::string_view, 4> kClMinItems = {"-1.5", "-1.0", "-0.5", "0.0"};
inline constexpr std::array<std::string_view, 7> kCdMaxItems = {"2.0", "1.0", "0.2", "0.1", "0.05", "0.025", "0.01"};
inline constexpr std::array<std::string_view, 5> kAlfaMaxItems = {"10.0", "15.0", "30.0", "45.0", "90.0"};

inline constexpr RangeList kClMaxList = {"cbClMax", kClMaxItems.data(), 6, 2};
inline constexpr RangeList kClMinList = {"cbClMin", kClMinItems.data(), 4, 2};
inline constexpr RangeList kCdMaxList = {"cbCdMax", kCdMaxItems.data(), 7, 5};
inline constexpr RangeList kAlfaMaxList = {"cbAlfaMax", kAlfaMaxItems.data(), 5, 1};

// The value ranges of the graphs. The angle axis runs from -alfaMax to
// alfaMax; the moment axis is fixed at -0.4 to 0.4. The defaults are the
// lists' initial selections.
struct PlotRanges {
  double clMax = 1.5;
  double clMin = -0.5;
  double cdMax = 0.025;
  double alfaMax = 15.0;

  double AlfaMin() const { return -alfaMax; }
  bool operator==(const PlotRanges&) const = default;
};

inline constexpr double kCmMax = 0.4;
inline constexpr double kCmMin = -0.4;

// The ranges from the lists' current texts by the leading-number rule (a
// text without a number reads 0). OverflowError for a number beyond double.
PlotRanges ParseRanges(std::string_view clMax, std::string_view clMin, std::string_view cdMax,
                       std::string_view alfaMax);

// Drag grid step and drag label step for a drag axis ending at `cdMax`.
double DragGridStep(double cdMax);
double DragLabelStep(double cdMax);

}  // namespace tavilo
