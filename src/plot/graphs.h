#pragma once
// The graphs the program draws, described once: each graph's frame, axes,
// read-out, tab and title. Everything that holds one thing per graph (views,
// surfaces, widgets, read-out labels, pictures) is a PerGraph indexed by
// Graph, and loops over kGraphs, so that a further graph is one more
// enumerator and one more row of the description, plus its place in the
// picture of all graphs and on the printed page.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "model/polar_point.h"

namespace tavilo {

class DrawingSurface;
struct GraphView;

// In the order in which the window creates them and the pictures draw them.
enum class Graph { ClCd, ClAlfa, CmAlfa, Blu, Bll };
inline constexpr std::array kGraphs = {Graph::ClCd, Graph::ClAlfa, Graph::CmAlfa, Graph::Blu, Graph::Bll};
inline constexpr int kGraphCount = static_cast<int>(kGraphs.size());

// One T per graph.
template <class T>
struct PerGraph {
  std::array<T, kGraphCount> items{};

  T& operator[](Graph graph) { return items[static_cast<std::size_t>(graph)]; }
  const T& operator[](Graph graph) const { return items[static_cast<std::size_t>(graph)]; }
  auto begin() { return items.begin(); }
  auto end() { return items.end(); }
  auto begin() const { return items.begin(); }
  auto end() const { return items.end(); }
  bool operator==(const PerGraph&) const = default;
};

// What an axis shows; it fixes the axis's default range, its grid and
// number steps and how its numbers read.
enum class AxisQuantity { Cd, Cl, Alfa, Cm, Xc };

struct GraphDescription {
  Graph graph;
  std::string_view picture;       // object name of the graph's widget
  std::string_view readoutLabel;  // object name of its pointer read-out
  // The read-out's text at the pointer's values; nullopt keeps the last one.
  std::optional<std::string> (*readout)(double x, double y);
  std::string_view title;   // tab caption and picture caption
  std::string_view tabKey;  // of its tab; empty for the graph beside the tab strip
  // Clears the graph and draws its grid and axes in `view`.
  void (*frame)(DrawingSurface& surface, const GraphView& view);
  AxisQuantity x, y;
  bool markers;  // a marker on every point of a polar
  // The values of a polar point that the curve joins.
  double PolarPoint::*pointX;
  double PolarPoint::*pointY;
  // The value whose absence (at or below kMissingBelow) leaves a point out
  // of the curve; null where a point is always drawn.
  double PolarPoint::*missing;
};

const GraphDescription& Describe(Graph graph);

// Shown on a tab of the strip rather than beside it.
inline bool OnTab(Graph graph) { return !Describe(graph).tabKey.empty(); }

}  // namespace tavilo
