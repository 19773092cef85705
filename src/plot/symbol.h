#pragma once

#include "plot/surface.h"

namespace tavilo {

inline constexpr int kSymbolCount = 5;

// Draws marker `index` centred on the surface's current position, in its
// foreground colour, with lines only: 1 square, 2 diamond, 3 triangle up,
// 4 triangle down, 5 octagon. `size` is the marker's full width in the
// surface's horizontal user units; the height follows in device units, so a
// marker keeps its proportions on every graph whatever the value ranges.
// The current position ends where it started. An index outside 1..5 draws
// nothing.
void Symbol(DrawingSurface& surface, int index, double size);

// Marker `index` as Symbol draws it, as offsets from its centre, so that a
// run of equal markers is worked out once; no offsets for an index outside
// 1..5.
struct SymbolFigure {
  PlotPoint offsets[9];  // enough for the octagon, the largest
  size_t count = 0;
};
SymbolFigure SymbolOutline(const DrawingSurface& surface, int index, double size);

}  // namespace tavilo
