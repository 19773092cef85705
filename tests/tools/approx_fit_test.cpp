#include "tools/approx_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "base/number_text.h"
#include "fileio/load.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

using enum ApproxField;

// The model sampled every `step` degrees over `first`..`last` degrees.
Polar SampledPolar(const ApproxValues& values, double first = -25, double last = 25, double step = 0.5) {
  const ApproxModel model(values);
  Polar polar;
  for (double alfa = first; alfa <= last; alfa += step)
    polar.AddPoint(testing::MakePoint(alfa, model.Cl(alfa), model.Cd(alfa)));
  return polar;
}

// A symmetric section of a sharper bucket and shorter stalls.
// clang-format off
constexpr ApproxValues kSymmetric{.cdTilt = 0, .stallCdAtClMax = 0.04, .stallCdAtClMin = 0.04, .cdShift = 0,
                                  .cdExponent = 3, .cdMin = 0.008, .stallRangeClMin = 5, .stallRangeClMax = 5,
                                  .clMax = 1.2, .clMin = -1.2, .alfaZero = 0};
// clang-format on

// Clean, with noise of 0.01 in lift and 3 % in drag, and with three wild
// points (and one without drag, which does not count): the values come
// back, the closer the cleaner the points (under noise the bucket's shift
// trades with its tilt).
TEST(ApproxFit, RecoversTheValuesOfAPolarSampledFromTheModel) {
  // Noise, wild points and the tolerance, relative but at least absolute.
  const std::tuple<double, bool, double> cases[] = {{0, false, 1e-5}, {1, false, 0.15}, {0, true, 0.02}};
  for (const ApproxValues& truth : {ApproxValues{}, kSymmetric}) {
    for (const auto& [noise, wild, tolerance] : cases) {
      Polar polar = SampledPolar(truth);
      std::mt19937 random(26);
      std::normal_distribution<double> normal;
      for (int k = 1; k <= polar.PointCount(); ++k) {
        polar.Point(k).Cl += 0.01 * noise * normal(random);
        polar.Point(k).Cd *= 1 + 0.03 * noise * normal(random);
      }
      if (wild) {
        polar.Point(20).Cl += 1.5;
        polar.Point(50).Cd *= 5;
        polar.Point(70).Cl = -0.3;
        polar.Point(71).Cd = kNoValue;
      }
      const ApproxFit fit = FitApproximation(polar);
      for (int i = 0; i < kApproxFieldCount; ++i) {
        const ApproxField field = ApproxFieldAt(i);
        EXPECT_NEAR(fit.values[field], truth[field], tolerance * std::max(1.0, std::fabs(truth[field])))
            << ApproxFieldName(field) << ", noise " << noise << ", wild " << wild;
      }
      EXPECT_EQ(fit.fittedCount, 11);
      EXPECT_EQ(fit.errors.points, wild ? 100 : 101);
    }
  }
}

TEST(ApproxFit, EstimatesWhatAShortPolarCannotShowAndKeepsWhatIsHeld) {
  const Polar polar = SampledPolar(ApproxValues{}, -2, 8);
  const ApproxFit fit = FitApproximation(polar);
  for (ApproxField field : {StallCdAtClMax, StallCdAtClMin, StallRangeClMin, StallRangeClMax, ClMax, ClMin})
    EXPECT_TRUE(fit.estimated[static_cast<int>(field)]) << ApproxFieldName(field);
  EXPECT_EQ(fit.fittedCount, 5);
  for (ApproxField field : {CdTilt, CdShift, CdExponent, CdMin, AlfaZero})
    EXPECT_NEAR(fit.values[field], ApproxValues{}[field], 1e-3 * std::fabs(ApproxValues{}[field]))
        << ApproxFieldName(field);
  // Limits beyond the data, where a section of this camber stalls.
  EXPECT_TRUE(fit.values.clMax > 1.3 && fit.values.clMin < -0.9) << fit.values.clMax << " " << fit.values.clMin;

  ApproxFitOptions options;
  options.held[static_cast<int>(CdExponent)] = options.held[static_cast<int>(ClMax)] = true;
  options.values.cdExponent = 3;
  options.values.clMax = 1.2;
  options.alfaTo = 6;
  const ApproxFit held = FitApproximation(polar, options);
  EXPECT_FALSE(held.estimated[static_cast<int>(ClMax)]);
  // Four fitted, and the points up to 6 degrees.
  EXPECT_EQ((std::vector<double>{held.values.cdExponent, held.values.clMax, double(held.fittedCount),
                                 double(held.errors.points)}),
            (std::vector<double>{3, 1.2, 4, 17}));
}

TEST(ApproxFit, RefusesAPolarTooShortOrTooNarrow) {
  const struct {
    double first, last, step, alfaFrom;
    bool refused;
  } cases[] = {
      {0, 7, 1, -90, false},    // 8 points over 7 degrees
      {0, 6, 1, -90, true},     // 7 points
      {0, 5, 0.25, -90, true},  // 21 points over 5 degrees
      {-5, 5, 1, 0, true},      // the range leaves 6 points
  };
  for (const auto& c : cases) {
    ApproxFitOptions options;
    options.alfaFrom = c.alfaFrom;
    bool refused = false;
    try {
      FitApproximation(SampledPolar(ApproxValues{}, c.first, c.last, c.step), options);
    } catch (const ApproxPolarRefusedError&) {
      refused = true;
    }
    EXPECT_EQ(refused, c.refused) << c.last << " " << c.step;
  }
}

// Every polar of the real samples that can carry a fit: values inside
// their ranges, rms Cl at most 0.1 and rms Cd at most the larger of half
// the least drag and 5 % of the drag's range, unless the row says
// otherwise; polars that cannot carry a fit are refused. On the clean
// NACA 4412 sweep the bucket itself is held closely: over the attached
// points, from the lowest lift's angle to the highest's, the drag misses
// by at most half of their least drag.
TEST(ApproxFit, FitsRealPolarsWithinTheirCeilings) {
  const struct {
    const char* file;
    int refused;          // polars the file holds that cannot carry a fit
    double rmsCdCeiling;  // 0: the rule above
  } cases[] = {
      {"uiuc/E387A.DRG", 0, 0},
      {"uiuc/SG6042.DRG", 2, 0},
      {"uiuc/WASP.DRG", 0, 0},
      {"uiuc/e387_tf_drg.txt", 0, 0},
      {"uiuc/S1223GF1.DRG", 1, 0},
      {"xfoil/naca4412_re1m_sweep.pol", 0, 0},
      {"xfoil/naca0012_re300k_sweep.pol", 0, 0},
      {"xfoil/naca2408_re60k.pol", 0, 0},
      // A drag that jumps by 0.05 within a degree at the stall and a
      // stalled lift that holds at 0.7 where the plate's falls: no stall
      // range of the model follows both.
      {"xfoil/naca0009_re100k_sweep.pol", 0, 0.0125},
  };
  for (const auto& c : cases) {
    const LoadResult loaded = ReadPolarFile(std::string(TAVILO_TEST_DATA) + "/" + c.file, nullptr, {});
    int refused = 0;
    for (const PolarPtr& polar : loaded.airfoil->Configuration(1)->Polars()) {  // one set in each
      ApproxFit fit;
      try {
        fit = FitApproximation(*polar);
      } catch (const ApproxPolarRefusedError&) {
        ++refused;
        continue;
      }
      double least = INFINITY, most = 0;
      for (const PolarPoint& p : polar->Points()) least = std::min(least, p.Cd), most = std::max(most, p.Cd);
      const double ceiling = c.rmsCdCeiling > 0 ? c.rmsCdCeiling : std::max(least / 2, 0.05 * (most - least));
      const std::string name = std::string(c.file) + " Re " + std::to_string(polar->ReynoldsNumber);
      EXPECT_FALSE(FindApproxProblem(fit.values)) << name;
      // Printed for a person: a few digits, and still valid as printed.
      const ApproxValues shown = ApproxShownValues(fit.values);
      EXPECT_FALSE(FindApproxProblem(shown)) << name;
      for (int i = 0; i < kApproxFieldCount; ++i)
        EXPECT_EQ(WholeNumber(SignificantNumberText(shown[ApproxFieldAt(i)], 8)), shown[ApproxFieldAt(i)]) << name;
      EXPECT_LE(fit.errors.rmsCl, 0.1) << name;
      EXPECT_LE(fit.errors.rmsCd, ceiling) << name;
      if (std::string(c.file).find("4412") == std::string::npos) continue;
      const auto [lowest, highest] =
          std::minmax_element(polar->Points().begin(), polar->Points().end(),
                              [](const PolarPoint& a, const PolarPoint& b) { return a.Cl < b.Cl; });
      const ApproxErrors attached =
          ApproxFitErrors(ApproxModel(fit.values), polar->Points(), lowest->Alfa, highest->Alfa);
      double leastAttached = INFINITY;
      for (const PolarPoint& p : polar->Points())
        if (p.Alfa >= lowest->Alfa && p.Alfa <= highest->Alfa) leastAttached = std::min(leastAttached, p.Cd);
      EXPECT_LE(attached.rmsCd, leastAttached / 2);
    }
    EXPECT_EQ(refused, c.refused) << c.file;
  }
}

}  // namespace
}  // namespace tavilo
