#pragma once
// Airfoil coordinate files, the input of an XFOIL run: Selig (a name line,
// then x y pairs from the trailing edge over the upper surface round the
// leading edge and back along the lower one) and Lednicer (a name line, a
// line with the upper and lower point counts, then each surface from the
// leading edge to the trailing edge). Both are read into the Selig order,
// scaled to a chord of one.

#include <string>
#include <string_view>
#include <vector>

#include "formats/read_report.h"

namespace tavilo {

struct OutlinePoint {
  double x = 0.0;  // along the chord, 0 at the leading edge, 1 at the trailing edge
  double y = 0.0;  // up, in chords
};

struct AirfoilOutline {
  std::string name;
  std::vector<OutlinePoint> points;  // Selig order, the trailing edge first and last
};

// The fewest points an outline may have.
inline constexpr int kLeastOutlinePoints = 20;

// Reads the file at `path` into `outline`. What is wrong (a line that is no
// pair of numbers, counts that do not match, too few points, an outline that
// does not run round from trailing edge to trailing edge) is an error naming
// the file and, where one line is at fault, the line; the outline is then
// left empty. FileNotFoundError when the file cannot be opened.
ReadReport ReadCoordinates(AirfoilOutline& outline, const std::string& path);

// The same on text in memory; `fallbackName` names an outline whose file
// has no name line.
ReadReport ReadCoordinatesText(AirfoilOutline& outline, std::string_view bytes, const std::string& fallbackName = "");

// The outline as a Selig file's text (LF line ends), as XFOIL's LOAD reads it.
std::string SeligText(const AirfoilOutline& outline);

// The largest thickness and camber, in chords, and where they are along the
// chord (0 to 1); the surfaces are compared at the same x.
struct OutlineShape {
  double thickness = 0.0;
  double thicknessAt = 0.0;
  double camber = 0.0;
  double camberAt = 0.0;
};
OutlineShape ShapeOf(const AirfoilOutline& outline);

}  // namespace tavilo
