#pragma once
// The on-screen frames: each clears its graph, sets the user coordinates so
// that the graph's view fills it exactly, and draws the grid and zero axes.
// Grid lines run from the view's lower edge on by the graph's fixed step.
// The texts of a graph (drag labels, title, axis numbers) are drawn apart,
// after the curves, so that no curve ever covers them.

#include <string_view>

#include "plot/surface.h"
#include "plot/views.h"
#include "strings/language.h"

namespace tavilo {

inline constexpr Color kGridColor = Color::Rgb(192, 192, 192);
inline constexpr Color kAxisColor = Color::Rgb(0, 0, 0);
inline constexpr Color kGraphBackground = Color::Rgb(255, 255, 255);

// Drag ticks rise this fraction of the view's height from the bottom edge;
// the labels' lower edge stands a little above their tops.
inline constexpr double kDragTickLength = 0.02;
inline constexpr double kDragLabelLift = 0.025;

// Lift against drag. The drag grid steps are those of a drag axis as wide
// as the view. Leaves the foreground black.
void DrawClCdFrame(DrawingSurface& surface, const GraphView& view);
// Its texts, each on a halo of the background: the drag labels with their
// ticks rising from the bottom edge, and the title "Airfoil: " + name
// (Text::Airfoil in `language`; ResourceError for a language other than
// English and German) near the bottom-left corner. A drag label that would
// meet the title is left out, and so is one that would touch its neighbour
// (the labels then stand at a wider step). Leaves the foreground black.
void DrawClCdTexts(DrawingSurface& surface, const GraphView& view, std::string_view airfoilName, Language language);
// Where DrawClCdTexts writes the title: left, top, right and bottom in values.
GraphView ClCdTitleBox(const DrawingSurface& surface, const GraphView& view, std::string_view airfoilName,
                       Language language);
// Lift against angle of attack: grid every 5 degrees and every 0.1.
void DrawClAlfaFrame(DrawingSurface& surface, const GraphView& view);
// Moment against angle of attack: grid every 5 degrees and every 0.05.
void DrawCmAlfaFrame(DrawingSurface& surface, const GraphView& view);
// Lift against upper or lower transition location: grid every 0.1 x/c and
// every 0.1.
void DrawTransitionFrame(DrawingSurface& surface, const GraphView& view);

// Writes `text` with its top-left corner at (x, top), first as a halo of
// `halo` and then over it, so that lines crossing it leave it readable;
// the current position ends where Print leaves it.
void PrintOnHalo(DrawingSurface& surface, double x, double top, std::string_view text, Color halo);

// Numbers on the axes of any screen graph, beyond the drag labels of the
// lift-drag frame: values along the bottom edge with the drag labels' ticks
// and places, and values up the left edge beside short ticks. Each is at
// the quantity's fixed step (5 degrees, 0.5 of lift, 0.1 of moment, 0.2 of
// the chord) for a view from the range lists, at a step that suits the
// span for a zoomed one, and at 2, 5, 10 ... times that step wherever
// labels would touch; each on a halo of the background, as the legend is.
// Labels that would lie on an edge, on the bottom labels or within
// `keepClear` (the lift-drag title) are left out.
void DrawBottomNumbers(DrawingSurface& surface, const GraphView& view, AxisQuantity quantity,
                       const GraphView* keepClear = nullptr);
void DrawLeftNumbers(DrawingSurface& surface, const GraphView& view, AxisQuantity quantity,
                     const GraphView* keepClear = nullptr);

}  // namespace tavilo
