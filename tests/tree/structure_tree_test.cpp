#include "tree/structure_tree.h"

#include <gtest/gtest.h>

#include "strings/string_table.h"

namespace tavilo {
namespace {

PolarPtr MakePolar(double re, std::string name = {}, bool selected = true) {
  auto polar = std::make_shared<Polar>();
  polar->ReynoldsNumber = re;
  polar->Name = std::move(name);
  polar->Selected = selected;
  return polar;
}

// `sets` sets of `polars` selected polars each, named "set 1", "set 2", ...
Airfoil AirfoilWith(int sets, int polars) {
  Airfoil airfoil;
  airfoil.Name = "SD7037";
  for (int i = 1; i <= sets; ++i) {
    auto set = std::make_shared<Configuration>();
    set->Name = "set " + std::to_string(i);
    for (int j = 1; j <= polars; ++j) set->AddPolar(MakePolar(100000.0 * j));
    airfoil.AddConfiguration(set);
  }
  return airfoil;
}

size_t IndexOf(const std::vector<TreeNode>& nodes, std::string_view key) {
  for (size_t i = 0; i < nodes.size(); ++i)
    if (nodes[i].key == key) return i;
  ADD_FAILURE() << "no node " << key;
  return nodes.size();
}

TEST(StructureTree, AnAirfoilWithoutSetsHasNoRoot) {
  Airfoil airfoil;
  airfoil.Name = "lonely";
  EXPECT_TRUE(BuildTree(airfoil).empty());
}

TEST(StructureTree, KeysAndTextsCarryTheBlankOfTheNumberText) {
  Airfoil airfoil;
  airfoil.Name = "Clark Y";
  auto set = std::make_shared<Configuration>();
  set->Name = "flap 0";
  set->AddPolar(MakePolar(0, "", false));
  set->AddPolar(MakePolar(500000, "tripped"));
  airfoil.AddConfiguration(set);
  const std::vector<TreeNode> expected = {
      {"r", "", "Clark Y", true},
      {"c 1", "r", "Set 1: flap 0", true},
      {"c 1|p 1", "c 1", "Polar 1, Re=n.a.", false},
      {"c 1|p 2", "c 1", "Polar 2, Re= 500000, tripped", true},
  };
  std::vector<TreeNode> nodes = BuildTree(airfoil);
  ASSERT_EQ(nodes.size(), expected.size());
  for (size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_EQ(nodes[i].key, expected[i].key);
    EXPECT_EQ(nodes[i].parentKey, expected[i].parentKey);
    EXPECT_EQ(nodes[i].text, expected[i].text);
    EXPECT_EQ(nodes[i].active, expected[i].active) << nodes[i].key;
  }
  SetLanguage(kGerman);
  EXPECT_EQ(BuildTree(airfoil)[3].text, "Polare 2, Re= 500000, tripped");
  SetLanguage(kEnglish);
}

TEST(StructureTree, KeysReadBackTheirIndices) {
  EXPECT_EQ(KindOfKey("r"), NodeKind::Root);
  EXPECT_EQ(KindOfKey("c 12"), NodeKind::Set);
  EXPECT_EQ(KindOfKey("c 12|p 3"), NodeKind::Polar);
  EXPECT_EQ(KindOfKey(""), NodeKind::None);
  EXPECT_EQ(SetIndexOfKey("c 12|p 3"), 12);
  EXPECT_EQ(PolarIndexOfKey("c 12|p 3"), 3);
  EXPECT_EQ(PolarIndexOfKey("c 12"), 0);
}

TEST(StructureTree, ClickingThePolarTogglesOnlyIt) {
  Airfoil airfoil = AirfoilWith(2, 2);
  std::vector<TreeNode> nodes = BuildTree(airfoil);
  ToggleNode(airfoil, nodes, IndexOf(nodes, "c 2|p 1"));
  EXPECT_FALSE(airfoil.Configuration(2)->Polar(1)->Selected);
  EXPECT_TRUE(airfoil.Configuration(2)->Polar(2)->Selected);
  EXPECT_FALSE(nodes[IndexOf(nodes, "c 2|p 1")].active);
  EXPECT_TRUE(nodes[IndexOf(nodes, "c 2")].active) << "the set node keeps its mark";
}

TEST(StructureTree, ClickingTheRootTwiceRestoresEverySelection) {
  Airfoil airfoil = AirfoilWith(2, 3);
  airfoil.Configuration(1)->Polar(2)->Selected = false;
  std::vector<TreeNode> nodes = BuildTree(airfoil);
  ToggleNode(airfoil, nodes, 0);
  for (const TreeNode& node : nodes) EXPECT_FALSE(node.active) << node.key;
  EXPECT_FALSE(airfoil.Configuration(2)->Selected());
  ToggleNode(airfoil, nodes, 0);
  for (int i = 1; i <= 2; ++i)
    for (int j = 1; j <= 3; ++j) EXPECT_TRUE(airfoil.Configuration(i)->Polar(j)->Selected);
}

TEST(StructureTree, ASetKeyTogglesEverySetItPrefixes) {
  Airfoil airfoil = AirfoilWith(11, 2);
  std::vector<TreeNode> nodes = BuildTree(airfoil);
  ToggleNode(airfoil, nodes, IndexOf(nodes, "c 1"));
  for (int i = 1; i <= 11; ++i) {
    const bool toggled = i == 1 || i == 10 || i == 11;
    EXPECT_EQ(airfoil.Configuration(i)->Polar(2)->Selected, !toggled) << "set " << i;
    EXPECT_EQ(nodes[IndexOf(nodes, "c" + std::string(" ") + std::to_string(i))].active, !toggled);
  }
}

TEST(StructureTree, DeletingTheLastPolarOfASetDeletesTheSet) {
  Airfoil airfoil = AirfoilWith(2, 1);
  DeleteNode(airfoil, "c 1|p 1");
  ASSERT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(airfoil.Configuration(1)->Name, "set 2");
  Airfoil two = AirfoilWith(1, 2);
  DeleteNode(two, "c 1|p 1");
  EXPECT_EQ(two.Configuration(1)->PolarCount(), 1);
  DeleteNode(two, "c 1");
  EXPECT_EQ(two.ConfigCount(), 0);
  Airfoil all = AirfoilWith(3, 1);
  DeleteNode(all, "r");
  EXPECT_EQ(all.ConfigCount(), 0);
  EXPECT_EQ(all.Name, "SD7037");
}

TEST(StructureTree, PolarPropertiesRoundTheValuesEvenWhenUnchanged) {
  Polar polar;
  polar.Name = "clean";
  polar.ReynoldsNumber = 123456.7;
  polar.MachNumber = 0.12346;
  PolarProperties texts = PropertiesOf(polar);
  EXPECT_EQ(texts.reynolds, "123457");
  EXPECT_EQ(texts.mach, "0.1235");
  ApplyProperties(polar, texts);
  EXPECT_EQ(polar.ReynoldsNumber, 123457);
  EXPECT_EQ(polar.MachNumber, 0.1235);
  ApplyProperties(polar, {"renamed", "2e5", "abc"});
  EXPECT_EQ(polar.Name, "renamed");
  EXPECT_EQ(polar.ReynoldsNumber, 200000);
  EXPECT_EQ(polar.MachNumber, 0);
}

TEST(StructureTree, SortingReordersEverySet) {
  Airfoil airfoil;
  for (int i = 0; i < 2; ++i) {
    auto set = std::make_shared<Configuration>();
    for (double re : {3e5, 1e5, 2e5}) {
      auto polar = MakePolar(re);
      polar->MachNumber = 1e-6 * (4e5 - re);
      set->AddPolar(polar);
    }
    airfoil.AddConfiguration(set);
  }
  SortAllSets(airfoil, false);
  for (int i = 1; i <= 2; ++i) EXPECT_EQ(airfoil.Configuration(i)->Polar(1)->ReynoldsNumber, 1e5);
  SortAllSets(airfoil, true);
  for (int i = 1; i <= 2; ++i) EXPECT_EQ(airfoil.Configuration(i)->Polar(1)->ReynoldsNumber, 3e5);
}

}  // namespace
}  // namespace tavilo
