#pragma once
// The structure tree of the current airfoil: node keys, texts and active
// marks, and what a click, a delete or a rename does. The tree widget only
// mirrors these nodes.
//
// Keys: "r" for the airfoil, "c 1" for set 1, "c 1|p 2" for its polar 2.
// The blank before each index is the general number text's sign place and
// is part of the key.

#include <string>
#include <string_view>
#include <vector>

#include "model/airfoil.h"
#include "strings/language.h"

namespace tavilo {

struct TreeNode {
  std::string key;
  std::string parentKey;  // "" for the root
  std::string text;
  bool active;  // the node image: active (1) or inactive (0)
};

enum class NodeKind { Root, Set, Polar, None };

NodeKind KindOfKey(std::string_view key);

// The set index of a set or polar key and the polar index of a polar key
// (0 where the key has none), read back from the key's numbers.
int SetIndexOfKey(std::string_view key);
int PolarIndexOfKey(std::string_view key);

// The key of set `setIndex`, or of its polar `polarIndex` when that is
// above 0 ("c 1", "c 1|p 2").
std::string NodeKey(int setIndex, int polarIndex = 0);

// The key of `polar` where it first stands in `airfoil`, "" when it stands
// nowhere there (compared by identity, not by content).
std::string KeyOfPolar(const Airfoil& airfoil, const Polar* polar);

// What a node is called in `language` without its details: "Polar 2",
// "Set 1", "Airfoil"; "" for a key of no node.
std::string NodeName(std::string_view key, Language language);

// The nodes of `airfoil` in display order: root, then each set followed by
// its polars. Empty when the airfoil has no set. Texts are in `language`
// ("Polar 2, Re= 500000, tripped").
std::vector<TreeNode> BuildTree(const Airfoil& airfoil, Language language);

// A left click on node `clicked`: flips its mark and sets the selection of
// the polars it stands for. A set key toggles every later node whose key
// begins with it, so with ten or more sets "c 1" also toggles "c 10".
void ToggleNode(Airfoil& airfoil, std::vector<TreeNode>& nodes, size_t clicked);

// Deletes what node `key` stands for: all sets for the root, a polar (and
// its set when that is left empty), or a set.
void DeleteNode(Airfoil& airfoil, std::string_view key);

// The three texts of the polar properties dialog: name, Reynolds number
// formatted "0" and Mach number formatted "0.0000".
struct PolarProperties {
  std::string name;
  std::string reynolds;
  std::string mach;
};
PolarProperties PropertiesOf(const Polar& polar);

// Takes the dialog's texts back into `polar`, whichever button closed it; a
// text that is not a number reads 0.
void ApplyProperties(Polar& polar, const PolarProperties& properties);

// Sorts the polars of every set by Reynolds number, or by Mach number.
void SortAllSets(Airfoil& airfoil, bool byMach);

}  // namespace tavilo
