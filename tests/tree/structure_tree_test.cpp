#include "tree/structure_tree.h"

#include <gtest/gtest.h>

#include "strings/string_table.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

using testing::MakePolar;

// `sets` sets of `polars` selected polars each, named "set 1", "set 2", ...
Airfoil AirfoilWith(int sets, int polars) {
  Airfoil airfoil;
  airfoil.Name = "SD7037";
  for (int i = 1; i <= sets; ++i) {
    auto set = std::make_shared<Configuration>();
    set->Name = "set " + std::to_string(i);
    for (int j = 1; j <= polars; ++j) set->AddPolar(MakePolar(100000.0 * j, 1e-6 * (4e5 - 1e5 * j), true, {}));
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

TEST(StructureTree, KeysAndTextsCarryTheBlankOfTheNumberText) {
  Airfoil airfoil;
  airfoil.Name = "Clark Y";
  EXPECT_TRUE(BuildTree(airfoil, Language::English).empty()) << "no sets, no root";
  auto set = std::make_shared<Configuration>();
  set->Name = "flap 0";
  set->AddPolar(MakePolar(0, 0, false, {}));
  set->AddPolar(MakePolar(500000, 0, true, {}, "tripped"));
  airfoil.AddConfiguration(set);
  std::vector<std::string> nodes;  // key, parent, text and a '+' when active
  for (const TreeNode& n : BuildTree(airfoil, Language::English))
    nodes.push_back(n.key + "|" + n.parentKey + "|" + n.text + (n.active ? "+" : ""));
  EXPECT_EQ(nodes, (std::vector<std::string>{"r||Clark Y+", "c 1|r|Set 1: flap 0+", "c 1|p 1|c 1|Polar 1, Re=n.a.",
                                             "c 1|p 2|c 1|Polar 2, Re= 500000, tripped+"}));
  EXPECT_EQ(BuildTree(airfoil, Language::German)[3].text, "Polare 2, Re= 500000, tripped");
}

TEST(StructureTree, TogglingAPolarTheRootTwiceAndASetByPrefix) {
  Airfoil airfoil = AirfoilWith(11, 2);
  airfoil.Configuration(1)->Polar(1)->Selected = false;
  std::vector<TreeNode> nodes = BuildTree(airfoil, Language::English);
  ToggleNode(airfoil, nodes, IndexOf(nodes, "c 2|p 1"));
  EXPECT_FALSE(airfoil.Configuration(2)->Polar(1)->Selected);
  EXPECT_TRUE(airfoil.Configuration(2)->Polar(2)->Selected && nodes[IndexOf(nodes, "c 2")].active)
      << "the set and its node keep their mark";
  ToggleNode(airfoil, nodes, 0);
  for (const TreeNode& node : nodes) EXPECT_FALSE(node.active) << node.key;
  ToggleNode(airfoil, nodes, 0);
  EXPECT_TRUE(airfoil.Configuration(1)->Polar(1)->Selected && airfoil.Configuration(2)->Polar(1)->Selected);
  // "c 1" is a prefix of "c 10" and "c 11": all three toggle.
  ToggleNode(airfoil, nodes, IndexOf(nodes, "c 1"));
  for (int i = 1; i <= 11; ++i) {
    const bool toggled = i == 1 || i == 10 || i == 11;
    EXPECT_EQ(airfoil.Configuration(i)->Polar(2)->Selected, !toggled) << "set " << i;
    EXPECT_EQ(nodes[IndexOf(nodes, "c " + std::to_string(i))].active, !toggled);
  }
}

TEST(StructureTree, DeletingTheLastPolarOfASetDeletesTheSet) {
  Airfoil airfoil = AirfoilWith(2, 1);
  DeleteNode(airfoil, "c 1|p 1");
  ASSERT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(airfoil.Configuration(1)->Name, "set 2");
  Airfoil two = AirfoilWith(2, 2);
  DeleteNode(two, "c 1|p 1");
  EXPECT_EQ(two.Configuration(1)->PolarCount(), 1);
  DeleteNode(two, "r");
  EXPECT_EQ(two.Name + "|" + std::to_string(two.ConfigCount()), "SD7037|0") << "the root empties, keeping the name";
}

TEST(StructureTree, PropertiesRoundTheValuesEvenWhenUnchangedAndSortingReordersEverySet) {
  Polar polar;
  polar.ReynoldsNumber = 123456.7;
  polar.MachNumber = 0.12346;
  PolarProperties texts = PropertiesOf(polar);
  EXPECT_EQ(texts.reynolds + " " + texts.mach, "123457 0.1235");
  ApplyProperties(polar, texts);
  EXPECT_EQ(std::make_pair(polar.ReynoldsNumber, polar.MachNumber), std::make_pair(123457.0, 0.1235));
  ApplyProperties(polar, {"renamed", "2e5", "abc"});
  EXPECT_EQ(std::tuple(polar.Name, polar.ReynoldsNumber, polar.MachNumber), std::tuple("renamed", 200000.0, 0.0));

  Airfoil airfoil = AirfoilWith(2, 3);  // Re rising, Mach falling
  for (bool mach : {true, false}) {
    SortAllSets(airfoil, mach);
    for (int i = 1; i <= 2; ++i) EXPECT_EQ(airfoil.Configuration(i)->Polar(1)->ReynoldsNumber, mach ? 3e5 : 1e5);
  }
}

}  // namespace
}  // namespace tavilo
