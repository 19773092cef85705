#pragma once
// The on-screen frames: each clears its graph, sets the user coordinates so
// that the value ranges fill it exactly, and draws the grid and zero axes.

#include <string_view>

#include "plot/ranges.h"
#include "plot/surface.h"

namespace tavilo {

inline constexpr Color kGridColor = Color::Rgb(192, 192, 192);
inline constexpr Color kAxisColor = Color::Rgb(0, 0, 0);

// Drag ticks rise this fraction of the lift range from the bottom edge; the
// labels' lower edge stands a little above their tops.
inline constexpr double kDragTickLength = 0.02;
inline constexpr double kDragLabelLift = 0.025;

// Lift against drag, with the drag labels and the title "Airfoil: " + name
// (string 7 in the current language). Leaves the foreground black.
void DrawClCdFrame(DrawingSurface& surface, const PlotRanges& ranges, std::string_view airfoilName);
// Lift against angle of attack.
void DrawClAlfaFrame(DrawingSurface& surface, const PlotRanges& ranges);
// Moment against angle of attack, moment fixed at -0.4 to 0.4.
void DrawCmAlfaFrame(DrawingSurface& surface, const PlotRanges& ranges);
// Lift against upper or lower transition location, x/c from 0 to 1.
void DrawTransitionFrame(DrawingSurface& surface, const PlotRanges& ranges);

}  // namespace tavilo
