#include "tools/envelope.h"

#include <gtest/gtest.h>

#include "base/errors.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

using testing::MakePoint;

// A polar with Cl from 0 to 1 in steps of 0.25 and Cd = base + slope * Cl^2.
PolarPtr DragPolar(double re, double base, double slope = 0.01, bool selected = true) {
  std::vector<PolarPoint> points;
  for (double cl : {0.0, 0.25, 0.5, 0.75, 1.0})
    points.push_back(MakePoint(8 * cl, cl, base + slope * cl * cl, -0.05, 0.5, 0.9));
  return testing::MakePolar(re, 0, selected, points);
}

Airfoil AirfoilOf(std::initializer_list<PolarPtr> polars) {
  Airfoil airfoil;
  airfoil.Name = "E387";
  auto set = std::make_shared<Configuration>();
  for (const PolarPtr& p : polars) set->AddPolar(p);
  airfoil.AddConfiguration(set);
  return airfoil;
}

TEST(Envelope, OneTickedPolarIsResampledNearAStepOfFiveHundredths) {
  Airfoil none = AirfoilOf({DragPolar(200000, 0.001, 0.01, false)});
  EXPECT_EQ(AddEnvelopeSet(none), nullptr) << "no ticked polar, no set";
  PolarPtr envelope = BuildEnvelope(AirfoilOf({DragPolar(300000, 0.001, 0.01, false), DragPolar(200000, 0.01)}));
  ASSERT_TRUE(envelope);
  // Cl 0 .. 1 gives 20 intervals and 21 grid points; the last, Cl 1 itself,
  // is the polar's last point and so counts as outside its data.
  EXPECT_EQ(envelope->PointCount(), 20);
  EXPECT_DOUBLE_EQ(envelope->Cl(1), 0.0);
  EXPECT_TRUE(envelope->Selected);
  for (auto [got, want] : {std::pair{envelope->Cl(11), 0.5}, {envelope->Cd(11), 0.0125}, {envelope->Alfa(11), 4.0}})
    EXPECT_NEAR(got, want, 1e-12);
}

TEST(Envelope, TakesTheLowestDragAndKeepsTheEarlierPolarOnTies) {
  PolarPtr low = DragPolar(200000, 0.01), sameAsLow = DragPolar(200000, 0.01);
  sameAsLow->Point(2).Alfa = -42.0;  // marks points taken from the later polar
  PolarPtr envelope = BuildEnvelope(AirfoilOf({DragPolar(200000, 0.02), low, sameAsLow}));
  ASSERT_TRUE(envelope);
  for (int i = 1; i <= envelope->PointCount(); ++i) {
    EXPECT_DOUBLE_EQ(envelope->Cd(i), low->InterpolateAtCl(envelope->Cl(i)).Cd);
    EXPECT_GE(envelope->Alfa(i), 0.0) << "Cl " << envelope->Cl(i);
  }
}

TEST(Envelope, TheReynoldsNumberNeedsTheSummedDeviationUnderOnePercent) {
  auto re = [](double a, double b) {
    return BuildEnvelope(AirfoilOf({DragPolar(a, 0.01), DragPolar(b, 0.02)}))->ReynoldsNumber;
  };
  EXPECT_EQ(re(200000, 200000), 200000);
  EXPECT_EQ(re(200000, 300000), 0) << "shown as Re=n.a.";
  EXPECT_EQ(re(200000, 201000), 200500) << "summed deviation 1000 < 2005";
  EXPECT_EQ(re(200000, 204100), 0) << "summed deviation 4100 > 2020.5";
}

TEST(Envelope, PointsAtOneLiftCoefficientCannotBeGridded) {
  EXPECT_THROW(BuildEnvelope(AirfoilOf({testing::MakePolar(0, 0, true, {MakePoint(0, 0.5, 0.01)})})),
               DivisionByZeroError);
  PolarPtr envelope = BuildEnvelope(AirfoilOf({testing::MakePolar(0, 0, true, {})}));
  ASSERT_TRUE(envelope) << "selected polars without points give an empty envelope";
  EXPECT_EQ(envelope->PointCount(), 0);
}

}  // namespace
}  // namespace tavilo
