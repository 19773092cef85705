#include "tools/approximation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavilo {
namespace {

using enum ApproxField;

ApproxValues With(ApproxField field, double value, ApproxValues values = {}) {
  values[field] = value;
  return values;
}

// The initial values, a symmetric section, a tilt so steep that the bucket
// reaches its floor, and stalls over a single degree.
std::vector<ApproxValues> ModelCases() {
  ApproxValues symmetric;
  symmetric.cdTilt = 0;
  symmetric.cdShift = 0;
  symmetric.clMin = -symmetric.clMax;
  symmetric.alfaZero = 0;
  symmetric.stallCdAtClMin = symmetric.stallCdAtClMax;
  ApproxValues floored;
  floored.cdMin = 0.001;
  floored.stallCdAtClMax = 0.3;
  floored.stallCdAtClMin = 0.2;
  floored.cdTilt = 0.12;
  floored.cdExponent = 2;
  ApproxValues abrupt = With(StallRangeClMax, 1, With(StallRangeClMin, 1));
  return {ApproxValues{}, symmetric, floored, abrupt};
}

TEST(ApproxModel, LiftAndDragAreContinuousOverTheWholeRange) {
  // Neighbours a ten-thousandth of a degree apart may differ by at most
  // what a slope of five per degree gives: no join can hide a jump.
  for (const ApproxValues& values : ModelCases()) {
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
  }
}

TEST(ApproxModel, JoinsMeetTheirValues) {
  for (const ApproxValues& values : ModelCases()) {
    const ApproxModel model(values);
    EXPECT_NEAR(model.Cl(values.alfaZero), 0, 1e-15);
    EXPECT_DOUBLE_EQ(model.Cl(model.StallAlfaMax()), values.clMax);
    EXPECT_DOUBLE_EQ(model.Cl(model.StallAlfaMin()), values.clMin);
    EXPECT_DOUBLE_EQ(model.Cd(model.StallAlfaMax()), values.stallCdAtClMax);
    EXPECT_DOUBLE_EQ(model.Cd(model.StallAlfaMin()), values.stallCdAtClMin);
    // The line has the slope of 2 pi per radian at zero lift.
    EXPECT_NEAR((model.Cl(values.alfaZero + 1e-3) - model.Cl(values.alfaZero - 1e-3)) / 2e-3,
                2 * M_PI * M_PI / 180, 1e-9);
  }
}

TEST(ApproxModel, BeyondTheStallRangesIsTheFlatPlate) {
  const ApproxModel model{ApproxValues{}};
  for (double alfa : {-90.0, -60.0, -45.0, -30.0, 30.0, 45.0, 60.0, 90.0}) {
    EXPECT_DOUBLE_EQ(model.Cl(alfa), std::sin(2 * alfa * M_PI / 180)) << alfa;
    EXPECT_DOUBLE_EQ(model.Cd(alfa), 2 * std::pow(std::sin(alfa * M_PI / 180), 2)) << alfa;
  }
  EXPECT_NEAR(model.Cl(90), 0, 1e-15);
  EXPECT_NEAR(model.Cl(-90), 0, 1e-15);
  EXPECT_DOUBLE_EQ(model.Cd(90), 2);
  EXPECT_DOUBLE_EQ(model.Cl(45), 1);
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

TEST(ApproxModel, EachInvalidValueIsRefusedNamingItsField) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    ApproxValues values;
    ApproxField field;
    Text messageId;
  };
  const Case cases[] = {
      {With(CdMin, 0), CdMin, Text::ApproxNotPositive},
      {With(CdExponent, 1), CdExponent, Text::ApproxExponentTooLow},
      {With(StallRangeClMin, 0), StallRangeClMin, Text::ApproxNotPositive},
      {With(StallRangeClMax, -1), StallRangeClMax, Text::ApproxNotPositive},
      {With(ClMax, 0), ClMax, Text::ApproxNotPositive},
      {With(ClMin, 0.1), ClMin, Text::ApproxNotNegative},
      {With(CdShift, 1.45), CdShift, Text::ApproxShiftOutside},
      {With(CdShift, -1.2), CdShift, Text::ApproxShiftOutside},
      {With(StallCdAtClMax, 0.0065), StallCdAtClMax, Text::ApproxStallCdTooLow},
      {With(StallCdAtClMin, 0.001), StallCdAtClMin, Text::ApproxStallCdTooLow},
      {With(CdTilt, 0.03), CdTilt, Text::ApproxTiltTooSteep},
      {With(CdTilt, -0.02), CdTilt, Text::ApproxTiltTooSteep},
      {With(ClMax, 10), StallRangeClMax, Text::ApproxStallEndsTooLate},
      {With(AlfaZero, -80), StallRangeClMin, Text::ApproxStallEndsTooLate},
      {With(CdTilt, nan), CdTilt, Text::ApproxNotFinite},
      {With(AlfaZero, INFINITY), AlfaZero, Text::ApproxNotFinite},
  };
  for (const Case& c : cases) {
    const std::optional<ApproxProblem> problem = FindApproxProblem(c.values);
    ASSERT_TRUE(problem) << ApproxFieldName(c.field);
    EXPECT_EQ(problem->field, c.field) << ApproxFieldName(c.field);
    EXPECT_EQ(problem->messageId, c.messageId) << ApproxFieldName(c.field);
    EXPECT_THROW(ApproxModel{c.values}, ApproxInputError);
  }
  EXPECT_FALSE(FindApproxProblem(ApproxValues{}));
}

TEST(ApproxModel, ExtremeValidValuesGiveNoNaNAndNoNegativeDrag) {
  const ApproxValues cases[] = {
      With(CdExponent, 1e6),         With(CdExponent, 1 + 1e-12), With(StallRangeClMax, 1e-9),
      With(CdTilt, 0.0247),          With(CdTilt, -0.0167),       With(CdMin, 1e-300),
      With(ClMax, 1e-6, With(CdShift, 0)),
  };
  for (const ApproxValues& values : cases) {
    ASSERT_FALSE(FindApproxProblem(values));
    const ApproxModel model(values);
    for (double alfa = -90; alfa <= 90; alfa += 0.01) {
      ASSERT_TRUE(std::isfinite(model.Cl(alfa))) << alfa;
      ASSERT_GT(model.Cd(alfa), 0) << alfa;
    }
  }
}

TEST(ApproxModel, CurveRunsFromMinusToPlusNinetyByDegrees) {
  const std::vector<PolarPoint> curve = ApproxModel{ApproxValues{}}.Curve();
  ASSERT_EQ(curve.size(), 181u);
  EXPECT_EQ(curve.front().Alfa, -90);
  EXPECT_EQ(curve[92].Alfa, 2);
  EXPECT_EQ(curve[92].Cl, ApproxModel{ApproxValues{}}.Cl(2));
  EXPECT_EQ(curve[92].Cm, kNoValue);
}

TEST(ApproxInitializer, WritesOneCommentedValueALine) {
  EXPECT_EQ(ApproxInitializer(ApproxValues{}),
            "static const double approx[11] = {\n"
            "    0.002, /* Cd Tilt */\n"
            "    0.035, /* Stall Cd at Cl Max */\n"
            "    0.03, /* Stall Cd at Cl Min */\n"
            "    0.3, /* Cd Shift */\n"
            "    2.4, /* Cd Exponent */\n"
            "    0.0065, /* Cd Min */\n"
            "    6, /* Stall Range Cl Min */\n"
            "    8, /* Stall Range Cl Max */\n"
            "    1.45, /* Cl Max */\n"
            "    -1.1, /* Cl Min */\n"
            "    -2.1 /* Alfa Zero */\n"
            "};\n");
  const std::string text = ApproxInitializer(With(CdTilt, -1.25e-05, With(AlfaZero, 0.1 + 0.2)), "approx_2");
  EXPECT_EQ(text.substr(0, 37), "static const double approx_2[11] = {\n");
  EXPECT_NE(text.find("    -1.25e-05, /* Cd Tilt */\n"), std::string::npos);
  EXPECT_NE(text.find("    0.30000000000000004 /* Alfa Zero */\n"), std::string::npos);
}

}  // namespace
}  // namespace tavilo
