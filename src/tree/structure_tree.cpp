#include "tree/structure_tree.h"

#include "base/number_text.h"
#include "strings/string_table.h"

namespace tavilo {

NodeKind KindOfKey(std::string_view key) {
  if (key == "r") return NodeKind::Root;
  if (key.empty() || key[0] != 'c') return NodeKind::None;
  return key.find('|') == std::string_view::npos ? NodeKind::Set : NodeKind::Polar;
}

int SetIndexOfKey(std::string_view key) {
  if (key.size() < 2) return 0;
  return RoundToInt16(LeadingNumber(key.substr(1)));
}

int PolarIndexOfKey(std::string_view key) {
  const size_t p = key.find("|p");
  if (p == std::string_view::npos) return 0;
  return RoundToInt16(LeadingNumber(key.substr(p + 2)));
}

namespace {

std::string PolarText(const Polar& polar, int index, Language language) {
  std::string text = GetResString(Text::Polar, language) + NumberText(index);
  text += polar.ReynoldsNumber > 0 ? ", Re=" + NumberText(polar.ReynoldsNumber) : ", Re=n.a.";
  if (!polar.Name.empty()) text += ", " + polar.Name;
  return text;
}

void SetPolarSelected(Airfoil& airfoil, std::string_view key, bool selected) {
  ConfigurationPtr set = airfoil.Configuration(SetIndexOfKey(key));
  PolarPtr polar = set ? set->Polar(PolarIndexOfKey(key)) : nullptr;
  if (polar) polar->Selected = selected;
}

}  // namespace

std::string NodeKey(int setIndex, int polarIndex) {
  std::string key = "c" + NumberText(setIndex);
  return polarIndex > 0 ? key + "|p" + NumberText(polarIndex) : key;
}

std::string KeyOfPolar(const Airfoil& airfoil, const Polar* polar) {
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const ConfigurationPtr set = airfoil.Configuration(i);
    for (int j = 1; set && j <= set->PolarCount(); ++j) {
      if (set->Polar(j).get() == polar) return NodeKey(i, j);
    }
  }
  return {};
}

std::string NodeName(std::string_view key, Language language) {
  switch (KindOfKey(key)) {
    case NodeKind::Root: return GetResString(Text::Airfoil, language);
    case NodeKind::Set: return "Set" + NumberText(SetIndexOfKey(key));
    case NodeKind::Polar: return GetResString(Text::Polar, language) + NumberText(PolarIndexOfKey(key));
    case NodeKind::None: break;
  }
  return {};
}

std::vector<TreeNode> BuildTree(const Airfoil& airfoil, Language language) {
  std::vector<TreeNode> nodes;
  if (airfoil.ConfigCount() < 1) return nodes;
  nodes.push_back({"r", "", airfoil.Name, true});
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& set = *airfoil.Configuration(i);
    const std::string setKey = NodeKey(i);
    nodes.push_back({setKey, "r", "Set" + NumberText(i) + ": " + set.Name, true});
    for (int j = 1; j <= set.PolarCount(); ++j) {
      const Polar& polar = *set.Polar(j);
      nodes.push_back({NodeKey(i, j), setKey, PolarText(polar, j, language), polar.Selected});
    }
  }
  return nodes;
}

void ToggleNode(Airfoil& airfoil, std::vector<TreeNode>& nodes, size_t clicked) {
  if (clicked >= nodes.size()) return;
  const bool active = !nodes[clicked].active;
  const std::string key = nodes[clicked].key;
  switch (KindOfKey(key)) {
    case NodeKind::Root:
      for (int i = 1; i <= airfoil.ConfigCount(); ++i) airfoil.Configuration(i)->SetSelected(active);
      for (TreeNode& node : nodes) node.active = active;
      break;
    case NodeKind::Polar:
      SetPolarSelected(airfoil, key, active);
      nodes[clicked].active = active;
      break;
    case NodeKind::Set:
      // A plain prefix comparison on purpose: "c 1" also takes "c 10".."c 19".
      for (size_t k = clicked; k < nodes.size(); ++k) {
        if (nodes[k].key.compare(0, key.size(), key) != 0) continue;
        nodes[k].active = active;
        if (KindOfKey(nodes[k].key) == NodeKind::Polar) SetPolarSelected(airfoil, nodes[k].key, active);
      }
      break;
    case NodeKind::None: break;
  }
}

void DeleteNode(Airfoil& airfoil, std::string_view key) {
  switch (KindOfKey(key)) {
    case NodeKind::Root: airfoil.Delete(); break;
    case NodeKind::Polar: {
      const int setIndex = SetIndexOfKey(key);
      ConfigurationPtr set = airfoil.Configuration(setIndex);
      if (!set) return;
      set->DeletePolar(PolarIndexOfKey(key));
      if (set->PolarCount() == 0) airfoil.DeleteConfiguration(setIndex);
      break;
    }
    case NodeKind::Set: airfoil.DeleteConfiguration(SetIndexOfKey(key)); break;
    case NodeKind::None: break;
  }
}

PolarProperties PropertiesOf(const Polar& polar) {
  return {polar.Name, FormatNumber(polar.ReynoldsNumber, "0"), FormatNumber(polar.MachNumber, "0.0000")};
}

void ApplyProperties(Polar& polar, const PolarProperties& properties) {
  polar.Name = properties.name;
  polar.ReynoldsNumber = LeadingNumber(properties.reynolds);
  polar.MachNumber = LeadingNumber(properties.mach);
}

void SortAllSets(Airfoil& airfoil, bool byMach) {
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    if (byMach)
      airfoil.Configuration(i)->SortMach();
    else
      airfoil.Configuration(i)->SortReynolds();
  }
}

}  // namespace tavilo
