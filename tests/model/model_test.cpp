// The model's list rules, sorting and interpolation.
#include <gtest/gtest.h>

#include "model/airfoil.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

using testing::MakePoint;
using testing::MakePolar;

ConfigurationPtr MakeSet(std::string name, int polars = 0) {
  auto config = std::make_shared<Configuration>();
  config->Name = std::move(name);
  for (int i = 0; i < polars; ++i) config->AddPolar(MakePolar(100000.0 * (i + 1), 0, false, {}));
  return config;
}

std::vector<std::string> Names(const Configuration& set) {
  std::vector<std::string> names;
  for (int i = 1; i <= set.PolarCount(); ++i) names.push_back(set.Polar(i)->Name);
  return names;
}

TEST(PolarModel, IndexAndDeleteRules) {
  Airfoil airfoil;
  airfoil.Name = "NACA 4412";
  for (const char* name : {"one", "two", "three"}) airfoil.AddConfiguration(MakeSet(name, 2));
  EXPECT_EQ(airfoil.Configuration(4), nullptr);
  EXPECT_THROW(airfoil.Configuration(0), SubscriptError);
  EXPECT_EQ(airfoil.Configuration(1)->Polar(3), nullptr);
  EXPECT_THROW(airfoil.Configuration(1)->Polar(0), SubscriptError);
  EXPECT_THROW(MakePolar(0, 0, false, {MakePoint(2, 0.4, 0.01)})->TL(2), SubscriptError);
  ConfigurationPtr second = airfoil.Configuration(2);
  for (int wrong : {0, 4}) EXPECT_THROW(airfoil.DeleteConfiguration(wrong), SubscriptError);
  airfoil.DeleteConfiguration(2);
  EXPECT_EQ(airfoil.Configuration(2)->Name, "three");
  EXPECT_EQ(second->PolarCount(), 0) << "a deleted set is emptied first";
  airfoil.Delete();
  EXPECT_EQ(airfoil.Name + "|" + std::to_string(airfoil.ConfigCount()), "NACA 4412|0");

  Configuration empty;
  empty.DeletePolar(1);
  EXPECT_EQ(empty.PolarCount(), -1);
  auto set = MakeSet("s", 3);
  PolarPtr first = set->Polar(1);
  Configuration other;
  other.AddPolar(first);
  set->DeletePolar(7);  // above the count: the last goes
  EXPECT_EQ(std::make_pair(int(set->PolarCount()), set->Polar(2)->ReynoldsNumber), std::make_pair(2, 200000.0));
  set->DeletePolar(1);
  EXPECT_EQ(other.Polar(1), first) << "a polar shared by two sets stays in the other";
}

TEST(SortPolars, ExchangeSortCarriesEqualKeysPastEachOther) {
  Configuration set;
  for (auto [re, mach, name] : {std::tuple{5.0, 0.1, "5a"}, {5.0, 0.3, "5b"}, {3.0, 0.2, "3"}})
    set.AddPolar(MakePolar(re, mach, name[0] == '3', {}, name));
  set.SortReynolds();
  EXPECT_EQ(Names(set), (std::vector<std::string>{"3", "5b", "5a"}));
  set.SortMach();
  EXPECT_EQ(Names(set), (std::vector<std::string>{"5a", "3", "5b"}));
  EXPECT_TRUE(set.Polar(2)->Selected);
}

PolarPtr ClPolar(double re, std::initializer_list<std::array<double, 3>> clCdAlfa) {
  auto polar = MakePolar(re, 0, true, {});
  for (const auto& [cl, cd, alfa] : clCdAlfa) polar->AddPoint(MakePoint(alfa, cl, cd, -0.05, 0.5, 0.9));
  return polar;
}

TEST(InterpolatePolar, LinearInsideAndTheEndPointWithNegatedCdOutside) {
  auto three = ClPolar(2e5, {{0.0, 0.010, 0.0}, {0.5, 0.012, 4.0}, {1.0, 0.020, 8.0}});
  // Asked Cl, then the Cl, Cd and Alfa given back; an inner point ends a segment, the last Cl is outside.
  // clang-format off
  const std::vector<double> cases[] = {{0.75, 0.75, 0.016, 6.0, -0.05}, {0.5, 0.5, 0.012, 4.0, -0.05},
                                       {1.2, 1.0, -0.020, 8.0, -0.05}, {1.0, 1.0, -0.020, 8.0, -0.05},
                                       {-0.1, 0.0, -0.010, 0.0, -0.05}};
  // clang-format on
  for (const std::vector<double>& c : cases) {
    const PolarPoint p = three->InterpolateAtCl(c[0]);
    EXPECT_EQ((std::vector<double>{c[0], p.Cl, p.Cd, p.Alfa, p.Cm}), c);
  }
  auto flat = ClPolar(1e5, {{0.0, 0.01, 0.0}, {0.5, 0.02, 3.0}, {0.5, 0.03, 4.0}, {1.0, 0.04, 8.0}});
  EXPECT_DOUBLE_EQ(flat->InterpolateAtCl(0.5).Cd, 0.02) << "the first segment ending there";
  // Past maximum lift the Cl falls again; only the rising branch is used.
  auto stall = ClPolar(1e5, {{0.0, 0.01, 0.0}, {1.2, 0.02, 12.0}, {0.8, 0.06, 16.0}, {0.95, 0.09, 20.0}});
  EXPECT_DOUBLE_EQ(stall->InterpolateAtCl(0.9).Alfa, 9.0);
  EXPECT_EQ(Polar().InterpolateAtCl(0.5).Cd, 0.0);
}

TEST(InterpolateSet, BlendsInReAndFlagsOnlyWhenBothSidesAreOut) {
  Configuration set;
  set.AddPolar(ClPolar(100000, {{0.0, 0.010, 0.0}, {1.0, 0.020, 8.0}}));
  set.AddPolar(ClPolar(300000, {{0.0, 0.006, 0.0}, {1.2, 0.012, 10.0}}));
  // clang-format off
  const std::array<double, 3> cases[] = {{0.5, 150000, 0.015 + (0.0085 - 0.015) / 4},
                                         {1.1, 200000, (0.020 + 0.0115) / 2}, {1.5, 200000, -(0.020 + 0.012) / 2},
                                         {0.5, 500000, 0.0085}, {1.1, 50000, -0.020}};
  // clang-format on
  for (const auto& [cl, re, cd] : cases) EXPECT_DOUBLE_EQ(set.InterpolateAtCl(cl, re)->Cd, cd) << cl << " " << re;
  set.Polar(2)->ReynoldsNumber = 100000;
  EXPECT_THROW(set.InterpolateAtCl(0.5, 100000), DivisionByZeroError);
  EXPECT_THROW(Configuration().InterpolateAtCl(0.5, 1), SubscriptError);
}

}  // namespace
}  // namespace tavilo
