// The fast fixed-pattern formatter must give FormatNumber's text exactly,
// also next to the halves where the two rounding ways could part.
#include "base/fixed_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "base/number_text.h"

namespace tavilo {
namespace {

void ExpectSameText(double value, int decimals) {
  std::string fast;
  AppendFixedNumber(fast, value, decimals);
  ASSERT_EQ(fast, FormatNumber(value, decimals == 0 ? "0" : "0." + std::string(decimals, '0')))
      << NumberText(value) << " to " << decimals;
}

TEST(AppendFixedNumber, MatchesFormatNumberOnChosenAndRandomValuesAndNearHalves) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  for (double value : {0.0, -0.0, 0.2385, -2.5, -0.0004, -0.0005, 1.0005, -99.999, 1e-300, 99999999.5, 1e15,
                       -1e20, 0.375, 4.4445, std::nan(""), kInf, -kInf})
    for (int decimals = 0; decimals <= 5; ++decimals) ExpectSameText(value, decimals);
  std::mt19937_64 random(42);
  std::uniform_real_distribution<double> magnitude(-8, 9);
  for (int i = 0; i < 200000; ++i) {
    int d = static_cast<int>(random() % 6);
    double value = std::pow(10.0, magnitude(random)) * (random() % 2 ? 1 : -1);
    ExpectSameText(value, d);
    double half = (std::floor(std::fabs(value) * std::pow(10.0, d)) + 0.5) / std::pow(10.0, d);
    for (double near : {half, std::nextafter(half, 0.0), std::nextafter(half, 1e300)}) ExpectSameText(near, d);
  }
}

}  // namespace
}  // namespace tavilo
