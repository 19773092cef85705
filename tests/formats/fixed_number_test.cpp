// The fast fixed-pattern formatter must give FormatNumber's text exactly,
// also next to the halves where the two rounding ways could part.

#include "formats/fixed_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "formats/number_text.h"

namespace tavilo {
namespace {

std::string Pattern(int decimals) { return decimals == 0 ? "0" : "0." + std::string(decimals, '0'); }

void ExpectSameText(double value, int decimals) {
  std::string fast;
  AppendFixedNumber(fast, value, decimals);
  ASSERT_EQ(fast, FormatNumber(value, Pattern(decimals))) << "value " << NumberText(value) << " decimals "
                                                          << decimals;
}

TEST(AppendFixedNumber, MatchesFormatNumberOnChosenValues) {
  const double values[] = {0.0,      -0.0,     0.2385,   2.5,     -2.5,   0.0005,  -0.0004, -0.0005,
                           1.0005,   0.00912,  -0.0871,  -99.999, 1e-300, 1e7,     1e8,     99999999.5,
                           250000.4, 1e15,     -1e20,    0.125,   0.375,  1.5e-5,  4.4445,  -4.4445,
                           std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()};
  for (double value : values)
    for (int decimals = 0; decimals <= 5; ++decimals) ExpectSameText(value, decimals);
}

TEST(AppendFixedNumber, MatchesFormatNumberOnRandomValuesAndNearHalves) {
  std::mt19937_64 random(42);
  std::uniform_real_distribution<double> magnitude(-8, 9);
  std::uniform_int_distribution<int> decimals(0, 5);
  for (int i = 0; i < 200000; ++i) {
    int d = decimals(random);
    double value = std::pow(10.0, magnitude(random)) * (random() % 2 ? 1 : -1);
    ExpectSameText(value, d);
    // A decimal half at the rounding position, and its binary neighbours.
    double half = (std::floor(std::fabs(value) * std::pow(10.0, d)) + 0.5) / std::pow(10.0, d);
    ExpectSameText(half, d);
    ExpectSameText(std::nextafter(half, 0.0), d);
    ExpectSameText(std::nextafter(half, 1e300), d);
  }
}

}  // namespace
}  // namespace tavilo
