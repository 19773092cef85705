#include "plot/readout.h"

#include <gtest/gtest.h>

namespace tavilo {
namespace {

using Readout = std::optional<std::string> (*)(double, double);

TEST(PointerReadouts, TextsAndStrictThresholds) {
  const std::tuple<Readout, double, double, std::optional<std::string>> cases[] = {
      {CdClValue, 0.0123, 0.456, "Cd=0.0123 Cl=0.46"},
      {CdClValue, 0.99995, 1.0, "Cd=1.0000 Cl=1.00"},  // below 1.0, rounded by the format
      {CdClValue, 1.0, 1.0, std::nullopt},
      {CdClValue, -0.001, -0.5, "Cd=-0.0010 Cl=-0.50"},
      {ClAlfaValue, 1.5, 0.5, "Alfa=1.50 Cl=0.50"},
      {ClAlfaValue, 1.999, 0.5, "Alfa=2.00 Cl=0.50"},
      {ClAlfaValue, 2.0, 0.5, std::nullopt},  // 2 degrees: kept as it is
      {CmAlfaValue, -5.0, -0.104, "Alfa=-5.00 Cm=-0.10"},
      {CmAlfaValue, 2.5, 0.0, std::nullopt},
      {TUxcValue, 0.456, 1.2, "x/c=0.46 Cl=1.20"},
      {TUxcValue, 2.0, 1.2, std::nullopt},
      {TLxcValue, 0.05, -0.004, "x/c=0.05 Cl=0.00"},  // no minus on a zero
      {TLxcValue, 3.0, 0.0, std::nullopt},
  };
  for (const auto& [readout, x, y, expected] : cases) EXPECT_EQ(readout(x, y), expected) << x << " " << y;
}

}  // namespace
}  // namespace tavilo
