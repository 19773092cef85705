#include <gtest/gtest.h>

#include "model/configuration.h"

namespace tavilo {
namespace {

PolarPtr PolarWith(double re, std::initializer_list<std::array<double, 3>> clCdAlfa,
                   std::string name = {}) {
  auto polar = std::make_shared<Polar>();
  polar->ReynoldsNumber = re;
  polar->Name = std::move(name);
  for (const auto& [cl, cd, alfa] : clCdAlfa) {
    PolarPoint p;
    p.Cl = cl;
    p.Cd = cd;
    p.Alfa = alfa;
    p.Cm = -0.05;
    p.TU = 0.5;
    p.TL = 0.9;
    polar->AddPoint(p);
  }
  return polar;
}

std::vector<std::string> Names(const Configuration& set) {
  std::vector<std::string> names;
  for (int i = 1; i <= set.PolarCount(); ++i) names.push_back(set.Polar(i)->Name);
  return names;
}

TEST(SortPolars, SortsAscendingByReynolds) {
  Configuration set;
  set.AddPolar(PolarWith(3e5, {}, "c"));
  set.AddPolar(PolarWith(1e5, {}, "a"));
  set.AddPolar(PolarWith(2e5, {}, "b"));
  EXPECT_EQ(set.SortReynolds(), 0);
  EXPECT_EQ(Names(set), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(SortPolars, ExchangeSortCarriesEqualKeysPastEachOther) {
  Configuration set;
  set.AddPolar(PolarWith(5, {}, "5a"));
  set.AddPolar(PolarWith(5, {}, "5b"));
  set.AddPolar(PolarWith(3, {}, "3"));
  set.SortReynolds();
  EXPECT_EQ(Names(set), (std::vector<std::string>{"3", "5b", "5a"}));
}

TEST(SortPolars, SortMachUsesTheMachNumberAndKeepsSelection) {
  Configuration set;
  for (double mach : {0.3, 0.1, 0.2}) {
    auto p = PolarWith(1e5, {});
    p->MachNumber = mach;
    p->Selected = mach == 0.3;
    set.AddPolar(p);
  }
  set.SortMach();
  EXPECT_EQ(set.Polar(1)->MachNumber, 0.1);
  EXPECT_EQ(set.Polar(3)->MachNumber, 0.3);
  EXPECT_TRUE(set.Polar(3)->Selected);
  Configuration empty;
  EXPECT_EQ(empty.SortReynolds(), 0);
}

const PolarPtr kThreePoints = PolarWith(2e5, {{0.0, 0.010, 0.0}, {0.5, 0.012, 4.0}, {1.0, 0.020, 8.0}});

TEST(InterpolatePolar, BetweenPointsIsLinear) {
  PolarPoint p = kThreePoints->InterpolateAtCl(0.75);
  EXPECT_DOUBLE_EQ(p.Cl, 0.75);
  EXPECT_DOUBLE_EQ(p.Cd, 0.016);
  EXPECT_DOUBLE_EQ(p.Alfa, 6.0);
  EXPECT_DOUBLE_EQ(p.Cm, -0.05);
  EXPECT_EQ(p.SU, -99.999);
}

TEST(InterpolatePolar, OutsideTheDataGivesTheEndPointWithCdNegated) {
  PolarPoint above = kThreePoints->InterpolateAtCl(1.2);
  EXPECT_DOUBLE_EQ(above.Cl, 1.0);
  EXPECT_DOUBLE_EQ(above.Cd, -0.020);
  PolarPoint atTop = kThreePoints->InterpolateAtCl(1.0);
  EXPECT_DOUBLE_EQ(atTop.Cd, -0.020) << "the last point's Cl itself counts as out of range";
  PolarPoint below = kThreePoints->InterpolateAtCl(-0.1);
  EXPECT_DOUBLE_EQ(below.Cl, 0.0);
  EXPECT_DOUBLE_EQ(below.Cd, -0.010);
}

TEST(InterpolatePolar, AnInteriorPointIsMatchedByTheSegmentEndingThere) {
  PolarPoint p = kThreePoints->InterpolateAtCl(0.5);
  EXPECT_DOUBLE_EQ(p.Cd, 0.012);
  EXPECT_DOUBLE_EQ(p.Alfa, 4.0);
}

TEST(InterpolatePolar, EqualNeighbouringClTakesTheUpperPoint) {
  auto polar = PolarWith(1e5, {{0.0, 0.01, 0.0}, {0.5, 0.02, 3.0}, {0.5, 0.03, 4.0}, {1.0, 0.04, 8.0}});
  PolarPoint p = polar->InterpolateAtCl(0.5);
  EXPECT_DOUBLE_EQ(p.Cd, 0.02) << "the segment 1-2 ends at 0.5 and is found first";
  auto flat = PolarWith(1e5, {{0.0, 0.01, 0.0}, {0.5, 0.02, 3.0}, {0.5, 0.03, 4.0}});
  EXPECT_DOUBLE_EQ(flat->InterpolateAtCl(0.5).Cd, -0.03);
}

TEST(InterpolatePolar, FallingBranchesAreNeverChosen) {
  // Past maximum lift the Cl falls again; 0.9 lies on the rising branch only.
  auto polar = PolarWith(1e5, {{0.0, 0.01, 0.0}, {1.2, 0.02, 12.0}, {0.8, 0.06, 16.0}, {0.95, 0.09, 20.0}});
  PolarPoint p = polar->InterpolateAtCl(0.9);
  EXPECT_DOUBLE_EQ(p.Alfa, 9.0);
}

TEST(InterpolatePolar, OnePointAndNoPoints) {
  auto one = PolarWith(1e5, {{0.3, 0.01, 2.0}});
  EXPECT_DOUBLE_EQ(one->InterpolateAtCl(0.3).Cd, -0.01);
  EXPECT_DOUBLE_EQ(one->InterpolateAtCl(0.1).Alfa, 2.0);
  PolarPoint none = Polar().InterpolateAtCl(0.5);
  EXPECT_EQ(none.Alfa, 0.0);
  EXPECT_EQ(none.Cd, 0.0);
  EXPECT_EQ(none.TL, 0.0);
  EXPECT_EQ(none.SU, -99.999);
}

Configuration TwoReynolds(double re1, double re2) {
  Configuration set;
  set.AddPolar(PolarWith(re1, {{0.0, 0.010, 0.0}, {1.0, 0.020, 8.0}}));
  set.AddPolar(PolarWith(re2, {{0.0, 0.006, 0.0}, {1.2, 0.012, 10.0}}));
  return set;
}

TEST(InterpolateSet, BetweenTwoPolarsBlendsLinearlyInRe) {
  Configuration set = TwoReynolds(100000, 300000);
  std::optional<PolarPoint> p = set.InterpolateAtCl(0.5, 200000);
  ASSERT_TRUE(p);
  EXPECT_EQ(p->Cl, 0.5);
  EXPECT_DOUBLE_EQ(p->Cd, (0.015 + 0.0085) / 2);
  EXPECT_GT(p->Cd, 0);
}

TEST(InterpolateSet, OneSideOutOfRangeStaysUnflaggedBothSidesFlag) {
  Configuration set = TwoReynolds(100000, 300000);
  std::optional<PolarPoint> one = set.InterpolateAtCl(1.1, 200000);
  EXPECT_DOUBLE_EQ(one->Cd, (0.020 + 0.0115) / 2) << "magnitudes are blended, the result unflagged";
  std::optional<PolarPoint> both = set.InterpolateAtCl(1.5, 200000);
  EXPECT_DOUBLE_EQ(both->Cd, -(0.020 + 0.012) / 2);
}

TEST(InterpolateSet, OutsideTheReRangeUsesTheEndPolar) {
  Configuration set = TwoReynolds(100000, 300000);
  EXPECT_DOUBLE_EQ(set.InterpolateAtCl(0.5, 500000)->Cd, 0.0085);
  EXPECT_DOUBLE_EQ(set.InterpolateAtCl(1.1, 50000)->Cd, -0.020);
}

TEST(InterpolateSet, EqualReBracketIsADivisionError) {
  Configuration set = TwoReynolds(200000, 200000);
  EXPECT_THROW(set.InterpolateAtCl(0.5, 200000), DivisionByZeroError);
  EXPECT_THROW(Configuration().InterpolateAtCl(0.5, 1), SubscriptError);
}

}  // namespace
}  // namespace tavilo
