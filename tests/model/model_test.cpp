#include <gtest/gtest.h>

#include "model/airfoil.h"

namespace tavilo {
namespace {

PolarPtr MakePolar(double re, std::string name = {}) {
  auto polar = std::make_shared<Polar>();
  polar->ReynoldsNumber = re;
  polar->Name = std::move(name);
  return polar;
}

ConfigurationPtr MakeSet(std::string name, int polars = 0) {
  auto config = std::make_shared<Configuration>();
  config->Name = std::move(name);
  for (int i = 0; i < polars; ++i) config->AddPolar(MakePolar(100000.0 * (i + 1)));
  return config;
}

TEST(PolarModel, NewObjectsStartWithTheirDefaults) {
  PolarPoint point;
  for (double value : {point.Alfa, point.Cl, point.Cd, point.Cm, point.TU, point.TL, point.SU, point.SL})
    EXPECT_EQ(value, -99.999);
  Polar polar;
  EXPECT_EQ(polar.ReynoldsNumber, 0.0);
  EXPECT_EQ(polar.MachNumber, 0.0);
  EXPECT_FALSE(polar.Selected);
  EXPECT_EQ(polar.PointCount(), 0);
  Airfoil airfoil;
  EXPECT_EQ(airfoil.Name, "");
  EXPECT_EQ(airfoil.ConfigCount(), 0);
}

TEST(PolarModel, IndexAboveCountIsNullAndBelowOneRaises) {
  Airfoil airfoil;
  EXPECT_EQ(airfoil.Configuration(1), nullptr);
  airfoil.AddConfiguration(MakeSet("a", 2));
  EXPECT_EQ(airfoil.Configuration(2), nullptr);
  EXPECT_THROW(airfoil.Configuration(0), SubscriptError);
  EXPECT_THROW(airfoil.Configuration(-1), SubscriptError);
  const Configuration& set = *airfoil.Configuration(1);
  EXPECT_EQ(set.Polar(3), nullptr);
  EXPECT_THROW(set.Polar(0), SubscriptError);
}

TEST(PolarModel, PointAccessorsRaiseOutsideTheList) {
  Polar polar;
  PolarPoint point;
  point.Alfa = 2.0;
  point.Cl = 0.4;
  polar.AddPoint(point);
  EXPECT_EQ(polar.Alfa(1), 2.0);
  EXPECT_EQ(polar.Cl(1), 0.4);
  EXPECT_THROW(polar.Cd(0), SubscriptError);
  EXPECT_THROW(polar.TL(2), SubscriptError);
}

TEST(PolarModel, DeletingAMiddleSetClosesTheGap) {
  Airfoil airfoil;
  for (const char* name : {"one", "two", "three"}) airfoil.AddConfiguration(MakeSet(name, 2));
  ConfigurationPtr second = airfoil.Configuration(2);
  airfoil.DeleteConfiguration(2);
  EXPECT_EQ(airfoil.ConfigCount(), 2);
  EXPECT_EQ(airfoil.Configuration(1)->Name, "one");
  EXPECT_EQ(airfoil.Configuration(2)->Name, "three");
  EXPECT_EQ(second->PolarCount(), 0) << "a deleted set is emptied first";
}

TEST(PolarModel, DeletingTheOnlySetThenAddingStoresAtOne) {
  Airfoil airfoil;
  airfoil.AddConfiguration(MakeSet("old"));
  airfoil.DeleteConfiguration(1);
  EXPECT_EQ(airfoil.ConfigCount(), 0);
  airfoil.AddConfiguration(MakeSet("new"));
  EXPECT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(airfoil.Configuration(1)->Name, "new");
}

TEST(PolarModel, DeleteConfigurationRejectsABadIndexBeforeChangingAnything) {
  Airfoil airfoil;
  airfoil.AddConfiguration(MakeSet("only", 1));
  EXPECT_THROW(airfoil.DeleteConfiguration(2), SubscriptError);
  EXPECT_THROW(airfoil.DeleteConfiguration(0), SubscriptError);
  EXPECT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(airfoil.Configuration(1)->PolarCount(), 1);
}

TEST(PolarModel, DeleteAllKeepsTheName) {
  Airfoil airfoil;
  airfoil.Name = "NACA 4412";
  for (int i = 0; i < 3; ++i) airfoil.AddConfiguration(MakeSet("s", 2));
  airfoil.Delete();
  EXPECT_EQ(airfoil.ConfigCount(), 0);
  EXPECT_EQ(airfoil.Name, "NACA 4412");
}

TEST(PolarModel, DeletePolarFromAnEmptySetLeavesMinusOne) {
  Configuration set;
  set.DeletePolar(1);
  EXPECT_EQ(set.PolarCount(), -1);
  EXPECT_EQ(set.Polar(1), nullptr);
}

TEST(PolarModel, DeletePolarAboveTheCountDropsTheLast) {
  auto set = MakeSet("s", 3);
  PolarPtr first = set->Polar(1);
  set->DeletePolar(7);
  EXPECT_EQ(set->PolarCount(), 2);
  EXPECT_EQ(set->Polar(1), first);
  EXPECT_EQ(set->Polar(2)->ReynoldsNumber, 200000.0);
}

TEST(PolarModel, OnePolarCanBelongToTwoSets) {
  auto shared = MakePolar(300000);
  Configuration a, b;
  a.AddPolar(shared);
  b.AddPolar(shared);
  a.DeletePolar(1);
  EXPECT_EQ(b.Polar(1)->ReynoldsNumber, 300000.0) << "deleting from one set leaves the other";
}

TEST(PolarModel, SetSelectionReadsAnyAndWritesAll) {
  auto set = MakeSet("s", 3);
  EXPECT_FALSE(set->Selected());
  set->Polar(2)->Selected = true;
  EXPECT_TRUE(set->Selected());
  set->SetSelected(false);
  for (int i = 1; i <= 3; ++i) EXPECT_FALSE(set->Polar(i)->Selected);
  set->SetSelected(true);
  for (int i = 1; i <= 3; ++i) EXPECT_TRUE(set->Polar(i)->Selected);
  EXPECT_FALSE(Configuration().Selected()) << "an empty set reads false";
}

TEST(PolarModel, CountsOverflowPast32767) {
  Polar polar;
  for (int i = 0; i < 32767; ++i) polar.AddPoint(PolarPoint{});
  EXPECT_EQ(polar.PointCount(), 32767);
  EXPECT_THROW(polar.AddPoint(PolarPoint{}), OverflowError);
  EXPECT_EQ(polar.PointCount(), 32767);

  Configuration set;
  auto polarRef = MakePolar(1);
  for (int i = 0; i < 32767; ++i) set.AddPolar(polarRef);
  EXPECT_THROW(set.AddPolar(polarRef), OverflowError);
}

}  // namespace
}  // namespace tavilo
