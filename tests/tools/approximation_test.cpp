#include "tools/approximation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace tavilo {
namespace {

using enum ApproxField;

ApproxValues With(ApproxField field, double value, ApproxValues values = {}) {
  values[field] = value;
  return values;
}

// The initial values, a symmetric section, a tilt that takes the bucket
// down to its floor, and short stalls.
std::vector<ApproxValues> ModelCases() {
  return {ApproxValues{},
          {.cdTilt = 0, .stallCdAtClMin = 0.035, .cdShift = 0, .clMin = -1.45, .alfaZero = 0},
          {.cdTilt = 0.00049, .stallCdAtClMin = 0.0011, .cdShift = 1, .cdExponent = 8, .cdMin = 0.001},
          {.stallRangeClMin = 2, .stallRangeClMax = 2}};
}

// Valid values drawn over all of their ranges, the dependent ones last.
ApproxValues RandomValidValues(std::mt19937& random) {
  auto draw = [&random](ApproxRange range, double low = 0, double high = 1) {
    const double share = std::uniform_real_distribution<double>(low, high)(random);
    return range.low + (range.high - range.low) * share;
  };
  for (;;) {
    ApproxValues v;
    v.alfaZero = draw(kApproxAlfaZeroRange);
    v.clMax = draw(kApproxClMaxRange);
    v.clMin = draw(kApproxClMinRange);
    v.stallRangeClMax = draw(ApproxFieldRange(StallRangeClMax, v));
    v.stallRangeClMin = draw(ApproxFieldRange(StallRangeClMin, v));
    v.cdMin = std::exp(draw({std::log(kApproxCdMinRange.low), std::log(kApproxCdMinRange.high)}));
    v.cdExponent = draw(kApproxCdExponentRange);
    v.cdShift = draw(ApproxFieldRange(CdShift, v), 0.01, 0.99);
    v.stallCdAtClMax = draw(ApproxFieldRange(StallCdAtClMax, v), 0.001, 1);
    v.stallCdAtClMin = draw(ApproxFieldRange(StallCdAtClMin, v), 0.001, 1);
    v.cdTilt = draw(ApproxFieldRange(CdTilt, v), 0.01, 0.99);
    if (!FindApproxProblem(v)) return v;  // a stall ending where the plate's drag is below Cd Min
  }
}

TEST(ApproxModel, LiftAndDragAreContinuousOverTheWholeRangeAndJoinsMeetTheirValues) {
  // Neighbours a ten-thousandth of a degree apart may differ by at most
  // what a slope of five per degree gives: no join can hide a jump.
  for (const ApproxValues& values : ModelCases()) {
    ASSERT_FALSE(FindApproxProblem(values)) << values.clMax;
    const ApproxModel model(values);
    double cl = model.Cl(-90), cd = model.Cd(-90);
    for (int step = 1; step <= 1800000; ++step) {
      const double alfa = -90 + step * 1e-4;
      const double nextCl = model.Cl(alfa), nextCd = model.Cd(alfa);
      ASSERT_LT(std::fabs(nextCl - cl), 5e-4) << "Cl at " << alfa << ", Cl Max " << values.clMax;
      ASSERT_LT(std::fabs(nextCd - cd), 5e-4) << "Cd at " << alfa << ", Cl Max " << values.clMax;
      cl = nextCl;
      cd = nextCd;
    }
    EXPECT_NEAR(model.Cl(values.alfaZero), 0, 1e-15);
    EXPECT_DOUBLE_EQ(model.Cl(model.StallAlfaMax()), values.clMax);
    EXPECT_DOUBLE_EQ(model.Cl(model.StallAlfaMin()), values.clMin);
    EXPECT_NEAR(model.Cd(model.StallAlfaMax()), values.stallCdAtClMax, 1e-12);
    EXPECT_NEAR(model.Cd(model.StallAlfaMin()), values.stallCdAtClMin, 1e-12);
    // The line has the slope of 2 pi per radian at zero lift.
    EXPECT_NEAR((model.Cl(values.alfaZero + 1e-3) - model.Cl(values.alfaZero - 1e-3)) / 2e-3, 2 * M_PI * M_PI / 180,
                1e-9);
  }
}

// Over random valid values: the drag never falls from the bucket's lowest
// point out to +-90 degrees, and the lift meets the flat plate where each
// stall range ends with the plate's value and slope.
TEST(ApproxModel, DragRisesOutwardsAndLiftMeetsThePlateSmoothly) {
  std::mt19937 random(26);
  for (int n = 0; n < 300; ++n) {
    const ApproxValues values = RandomValidValues(random);
    const ApproxModel model(values);
    std::vector<double> drag;
    for (int step = 0; step <= 18000; ++step) drag.push_back(model.Cd(-90 + step * 0.01));
    const size_t lowest = static_cast<size_t>(std::min_element(drag.begin(), drag.end()) - drag.begin());
    for (size_t k = 0; k < drag.size(); ++k) {
      const size_t inner = k < lowest ? k + 1 : k > lowest ? k - 1 : k;
      ASSERT_GE(drag[k], drag[inner] - 1e-12) << "Cd at " << -90 + k * 0.01 << ", set " << n;
    }
    for (double plate : {ApproxPlateAlfaMax(values), ApproxPlateAlfaMin(values)}) {
      const double h = 1e-6, plateSlope = 2 * M_PI / 180 * std::cos(2 * plate * M_PI / 180);
      EXPECT_NEAR(model.Cl(plate), FlatPlateCl(plate), 1e-12) << "set " << n;
      EXPECT_NEAR((model.Cl(plate) - model.Cl(plate - h)) / h, plateSlope, 1e-4) << "set " << n << " at " << plate;
      EXPECT_NEAR((model.Cl(plate + h) - model.Cl(plate)) / h, plateSlope, 1e-4) << "set " << n << " at " << plate;
    }
  }
}

TEST(ApproxModel, BeyondTheStallRangesIsTheFlatPlate) {
  const ApproxModel model{ApproxValues{}};
  for (double alfa : {-90.0, -60.0, -45.0, -30.0, 30.0, 45.0, 60.0, 90.0}) {
    EXPECT_DOUBLE_EQ(model.Cl(alfa), std::sin(2 * alfa * M_PI / 180)) << alfa;
    EXPECT_DOUBLE_EQ(model.Cd(alfa), 2 * std::pow(std::sin(alfa * M_PI / 180), 2)) << alfa;
  }
  EXPECT_NEAR(model.Cl(90) - model.Cl(-90), 0, 1e-15);
  // Drawn from -90 to 90 by degrees.
  const std::vector<PolarPoint> curve = model.Curve();
  EXPECT_EQ((std::vector<double>{double(curve.size()), curve[0].Alfa, curve[92].Alfa, curve[92].Cl, curve[92].Cm}),
            (std::vector<double>{181, -90, 2, model.Cl(2), kNoValue}));
}

TEST(ApproxModel, WithoutTiltTheBucketBottomsOutAtTheShiftAndASteepTiltAtHalfCdMin) {
  for (double shift : {-0.5, 0.0, 0.3, 1.2}) {
    const ApproxModel model(With(CdShift, shift, With(CdTilt, 0)));
    double lowestCl = 0, lowestCd = 1;
    for (double cl = -1.1; cl <= 1.45; cl += 1e-4) {
      if (model.CdAtCl(cl) < lowestCd) lowestCd = model.CdAtCl(cl), lowestCl = cl;
    }
    EXPECT_NEAR(lowestCl, shift, 1e-4);
    EXPECT_NEAR(lowestCd, 0.0065, 1e-12);
    EXPECT_DOUBLE_EQ(model.CdAtCl(1.45), 0.035);
    EXPECT_DOUBLE_EQ(model.CdAtCl(-1.1), 0.03);
  }
  const ApproxModel floored(ModelCases()[2]);
  double lowestCd = 1;
  for (double cl = -1.1; cl <= 1.45; cl += 1e-3) lowestCd = std::min(lowestCd, floored.CdAtCl(cl));
  EXPECT_DOUBLE_EQ(lowestCd, 0.001 / 2);
}

// Each value just past either end of its range, over random valid values,
// is refused naming that field and the range.
TEST(ApproxModel, AValuePastItsRangeIsRefusedNamingFieldAndRange) {
  std::mt19937 random(280);
  for (int n = 0; n < 200; ++n) {
    const ApproxValues values = RandomValidValues(random);
    for (int i = 0; i < kApproxFieldCount; ++i) {
      const ApproxField field = ApproxFieldAt(i);
      const ApproxRange range = ApproxFieldRange(field, values);
      for (double beyond : {range.low - 1e-9, range.high + 1e-9}) {
        const std::optional<ApproxProblem> problem = FindApproxProblem(With(field, beyond, values));
        ASSERT_TRUE(problem) << ApproxFieldName(field) << " " << beyond;
        EXPECT_EQ(problem->field, field) << ApproxFieldName(field);
        if (field == CdShift) continue;  // its own text, "between Cl Min and Cl Max"
        EXPECT_EQ(std::tuple(problem->messageId, problem->low, problem->high),
                  std::tuple(Text::ApproxOutOfRange, range.low, range.high));
      }
    }
  }
  EXPECT_FALSE(FindApproxProblem(ApproxValues{}));
  const ApproxValues nan = With(CdTilt, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(FindApproxProblem(nan)->messageId, Text::ApproxNotFinite);
  EXPECT_THROW(ApproxModel{nan}, ApproxInputError);
}

TEST(ApproxInitializer, WritesOneCommentedValueALine) {
  EXPECT_EQ(ApproxInitializer(ApproxValues{}),
            "static const double approx[11] = {\n    0.002, /* Cd Tilt */\n    0.035, /* Stall Cd at Cl Max */\n"
            "    0.03, /* Stall Cd at Cl Min */\n    0.3, /* Cd Shift */\n    2.4, /* Cd Exponent */\n"
            "    0.0065, /* Cd Min */\n    6, /* Stall Range Cl Min */\n    8, /* Stall Range Cl Max */\n"
            "    1.45, /* Cl Max */\n    -1.1, /* Cl Min */\n    -2.1 /* Alfa Zero */\n};\n");
  const std::string text = ApproxInitializer(With(CdTilt, -1.25e-05, With(AlfaZero, 0.1 + 0.2)), "approx_2");
  EXPECT_EQ(text.substr(0, 37), "static const double approx_2[11] = {\n");
  EXPECT_NE(text.find("    -1.25e-05, /* Cd Tilt */\n"), std::string::npos);
  EXPECT_NE(text.find("    0.30000000000000004 /* Alfa Zero */\n"), std::string::npos);
}

}  // namespace
}  // namespace tavilo
