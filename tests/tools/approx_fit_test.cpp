#include "tools/approx_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "fileio/load.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

using enum ApproxField;

// The model sampled every half degree over `first`..`last` degrees, with
// no moment or transition values.
Polar SampledPolar(const ApproxValues& values, double first = -25, double last = 25) {
  const ApproxModel model(values);
  Polar polar;
  for (double alfa = first; alfa <= last; alfa += 0.5)
    polar.AddPoint(testing::MakePoint(alfa, model.Cl(alfa), model.Cd(alfa)));
  return polar;
}

ApproxValues SymmetricSection() {
  ApproxValues v;
  v.cdTilt = 0;
  v.cdShift = 0;
  v.clMax = 1.2;
  v.clMin = -1.2;
  v.alfaZero = 0;
  v.stallCdAtClMax = v.stallCdAtClMin = 0.04;
  v.cdExponent = 3;
  v.cdMin = 0.008;
  v.stallRangeClMax = v.stallRangeClMin = 3;
  return v;
}

void ExpectValuesNear(const ApproxValues& fitted, const ApproxValues& truth, double tolerance) {
  for (int i = 0; i < kApproxFieldCount; ++i) {
    const ApproxField field = ApproxFieldAt(i);
    EXPECT_NEAR(fitted[field], truth[field], tolerance * std::max(1.0, std::fabs(truth[field])))
        << ApproxFieldName(field);
  }
}

TEST(ApproxFit, RecoversTheValuesOfAPolarSampledFromTheModel) {
  for (const ApproxValues& truth : {ApproxValues{}, SymmetricSection()}) {
    Polar polar = SampledPolar(truth);
    const ApproxFit fit = FitApproximation(polar);
    ExpectValuesNear(fit.values, truth, 1e-6);
    EXPECT_EQ(fit.estimated, (std::array<bool, kApproxFieldCount>{}));
    EXPECT_LT(fit.errors.rmsCl, 1e-8);
    EXPECT_LT(fit.errors.rmsCd, 1e-9);
    EXPECT_EQ(fit.errors.points, 101);
  }
}

TEST(ApproxFit, LeavesOutAFewWildPointsAndTheOrderDoesNotMatter) {
  Polar polar = SampledPolar(ApproxValues{});
  polar.Point(20).Cl += 1.5;
  polar.Point(50).Cd *= 5;
  polar.Point(70).Cl = -0.3;
  polar.Point(71).Cd = kNoValue;  // unusable: not counted at all
  Polar reversed;
  for (int i = polar.PointCount(); i >= 1; --i) reversed.AddPoint(polar.Point(i));
  for (const Polar* p : {&polar, &reversed}) {
    const ApproxFit fit = FitApproximation(*p);
    ExpectValuesNear(fit.values, ApproxValues{}, 1e-6);
    EXPECT_EQ(fit.errors.points, 100);
    EXPECT_GT(fit.errors.rmsCl, 0.1);  // the wild points still count in the errors
  }
}

TEST(ApproxFit, EstimatesWhatAShortPolarCannotShow) {
  const ApproxFit fit = FitApproximation(SampledPolar(ApproxValues{}, -2, 8));
  for (ApproxField field : {StallCdAtClMax, StallCdAtClMin, StallRangeClMin, StallRangeClMax, ClMax, ClMin})
    EXPECT_TRUE(fit.estimated[static_cast<int>(field)]) << ApproxFieldName(field);
  for (ApproxField field : {CdTilt, CdShift, CdExponent, CdMin, AlfaZero}) {
    EXPECT_FALSE(fit.estimated[static_cast<int>(field)]) << ApproxFieldName(field);
    EXPECT_NEAR(fit.values[field], ApproxValues{}[field], 1e-3 * std::fabs(ApproxValues{}[field]))
        << ApproxFieldName(field);
  }
  // Limits beyond the data, where a section of this camber stalls.
  EXPECT_GT(fit.values.clMax, 1.3);
  EXPECT_LT(fit.values.clMin, -0.9);
  EXPECT_FALSE(FindApproxProblem(fit.values));
}

TEST(ApproxFit, NeedsFiveUsablePoints) {
  Polar polar = SampledPolar(ApproxValues{}, 0, 2);
  ASSERT_EQ(polar.PointCount(), 5);
  EXPECT_NO_THROW(FitApproximation(polar));
  polar.Point(3).Alfa = kNoValue;
  EXPECT_THROW(FitApproximation(polar), ApproxTooFewPointsError);
}

TEST(ApproxFit, DegeneratePolarsStillGiveValidValues) {
  auto polarOf = [](auto point) {
    Polar polar;
    for (int i = 0; i < 8; ++i) polar.AddPoint(point(i));
    return polar;
  };
  const Polar cases[] = {
      polarOf([](int) { return testing::MakePoint(1, 0.5, 0.01); }),          // one point eight times
      polarOf([](int i) { return testing::MakePoint(i, 0, 0.01); }),          // no lift at all
      polarOf([](int i) { return testing::MakePoint(80 + i, -3, 1e-7); }),    // far out, next to no drag
      polarOf([](int i) { return testing::MakePoint(-i, 9 - i, 9 - i); }),    // lift falling with angle
  };
  for (const Polar& polar : cases) {
    const ApproxFit fit = FitApproximation(polar);
    EXPECT_FALSE(FindApproxProblem(fit.values)) << polar.Point(1).Alfa;
    EXPECT_TRUE(std::isfinite(fit.errors.rmsCl) && std::isfinite(fit.errors.rmsCd));
  }
}

// The long XFOIL sweeps: both stalls shown, so nothing estimated; the errors
// stay at what the README quotes.
TEST(ApproxFit, FitsRealXfoilSweeps) {
  struct Case {
    const char* file;
    double rmsCl;
    double rmsCd;
    double alfaZero;
  };
  const Case cases[] = {{"naca4412_re1m_sweep.pol", 0.035, 0.0075, -4.24},
                        {"naca0012_re300k_sweep.pol", 0.08, 0.012, 0}};
  for (const Case& c : cases) {
    const LoadResult loaded = ReadPolarFile(std::string(TAVILO_TEST_DATA) + "/xfoil/" + c.file, nullptr, {});
    const Polar& polar = *loaded.airfoil->Configuration(1)->Polar(1);
    const ApproxFit fit = FitApproximation(polar);
    EXPECT_EQ(fit.estimated, (std::array<bool, kApproxFieldCount>{})) << c.file;
    EXPECT_EQ(fit.errors.points, polar.PointCount()) << c.file;
    EXPECT_LT(fit.errors.rmsCl, c.rmsCl) << c.file;
    EXPECT_LT(fit.errors.rmsCd, c.rmsCd) << c.file;
    EXPECT_NEAR(fit.values.alfaZero, c.alfaZero, 0.1) << c.file;
  }
}

}  // namespace
}  // namespace tavilo
