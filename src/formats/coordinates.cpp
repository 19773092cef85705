#include "formats/coordinates.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/line_reader.h"

namespace tavilo {

namespace {

struct NumberedPair {
  OutlinePoint point;
  int line = 0;
};

// The two numbers of a line "x y" (blanks or tabs between), none for
// anything else.
std::optional<OutlinePoint> PairOf(std::string_view line) {
  double values[2];
  int count = 0;
  size_t pos = 0;
  while (pos < line.size()) {
    while (pos < line.size() && (line[pos] == ' ' || line[pos] == '\t')) ++pos;
    if (pos >= line.size()) break;
    size_t end = pos;
    while (end < line.size() && line[end] != ' ' && line[end] != '\t') ++end;
    const std::optional<double> value = WholeNumber(line.substr(pos, end - pos));
    if (!value || count == 2) return std::nullopt;
    values[count++] = *value;
    pos = end;
  }
  if (count != 2) return std::nullopt;
  return OutlinePoint{values[0], values[1]};
}

Diagnostic ErrorAt(Text id, std::string text, int line) {
  return {Severity::Error, id, std::move(text), false, {}, line};
}

bool IsCount(double value) { return value >= 3 && value <= 100000 && value == std::floor(value); }

// The leading edge is the point farthest from the trailing edge (the middle
// of the first and last point), which holds for a drooped nose too.
size_t LeadingEdgeIndex(const std::vector<OutlinePoint>& points) {
  const OutlinePoint te{(points.front().x + points.back().x) / 2, (points.front().y + points.back().y) / 2};
  size_t best = 0;
  double farthest = -1;
  for (size_t k = 0; k < points.size(); ++k) {
    const double d = std::hypot(points[k].x - te.x, points[k].y - te.y);
    if (d > farthest) farthest = d, best = k;
  }
  return best;
}

// Whether x falls from the first point to the leading edge and rises from
// there to the last, allowing the small wiggles of hand-made files, and
// the outline encloses an area.
bool RunsRound(const std::vector<OutlinePoint>& points, size_t le) {
  if (le == 0 || le + 1 >= points.size()) return false;
  constexpr double kWiggle = 2e-3;  // of the chord
  for (size_t k = 1; k <= le; ++k)
    if (points[k].x > points[k - 1].x + kWiggle) return false;
  for (size_t k = le + 1; k < points.size(); ++k)
    if (points[k].x < points[k - 1].x - kWiggle) return false;
  double area = 0;
  for (size_t k = 0; k + 1 < points.size(); ++k) area += points[k].x * points[k + 1].y - points[k + 1].x * points[k].y;
  return std::abs(area) > 1e-4;
}

// Scales and moves the outline so that the leading edge lies at x = 0 and
// the trailing edge at x = 1, the trailing edge's middle at y = 0; the shape
// is kept. (The leading edge's own y would shift a cambered section whose
// nose reaches forward of x = 0 on the upper side.)
void ScaleToChord(std::vector<OutlinePoint>& points, size_t le) {
  const double x0 = points[le].x, y0 = (points.front().y + points.back().y) / 2;
  const double chord = std::max(points.front().x, points.back().x) - x0;
  for (OutlinePoint& p : points) p = {(p.x - x0) / chord, (p.y - y0) / chord};
}

// y of one surface (points with x rising) at `x`, straight between points.
double SurfaceAt(const std::vector<OutlinePoint>& surface, double x) {
  auto upper = std::lower_bound(surface.begin(), surface.end(), x,
                                [](const OutlinePoint& p, double value) { return p.x < value; });
  if (upper == surface.begin()) return surface.front().y;
  if (upper == surface.end()) return surface.back().y;
  const OutlinePoint& a = *(upper - 1);
  const OutlinePoint& b = *upper;
  return b.x == a.x ? a.y : a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x);
}

}  // namespace

ReadReport ReadCoordinates(AirfoilOutline& outline, const std::string& path) {
  const std::string bytes = ReadFileBytes(path);
  std::string stem = path.substr(path.find_last_of('/') + 1);
  stem = stem.substr(0, stem.rfind('.'));
  return ReadCoordinatesText(outline, bytes, stem).InFile(path);
}

ReadReport ReadCoordinatesText(AirfoilOutline& outline, std::string_view bytes, const std::string& fallbackName) {
  ReadReport report;
  outline = {};
  LineReader reader(bytes);
  std::string_view line;
  std::string name;
  std::vector<NumberedPair> pairs;
  int lineNumber = 0;
  bool first = true;
  while (reader.Next(line)) {
    ++lineNumber;
    const std::string_view trimmed = TrimBlanks(line);
    if (trimmed.empty() || trimmed == "\t") continue;
    const std::optional<OutlinePoint> pair = PairOf(line);
    if (first && !pair) {
      name = std::string(trimmed);
    } else if (!pair) {
      report.diagnostics.push_back(ErrorAt(Text::CoordNotPair, std::string(trimmed), lineNumber));
      return report;
    } else {
      pairs.push_back({*pair, lineNumber});
    }
    first = false;
  }
  std::vector<OutlinePoint> points;
  if (!pairs.empty() && IsCount(pairs[0].point.x) && IsCount(pairs[0].point.y)) {
    // Lednicer: both surfaces from the leading edge; the upper one is turned
    // round and the lower one's leading-edge point, the same point, dropped.
    const size_t upper = static_cast<size_t>(pairs[0].point.x), lower = static_cast<size_t>(pairs[0].point.y);
    if (pairs.size() - 1 != upper + lower) {
      const int line0 = pairs[0].line;
      report.diagnostics.push_back(
          ErrorAt(Text::CoordCountsWrong, NumberText(upper).substr(1) + " + " + NumberText(lower).substr(1), line0));
      return report;
    }
    for (size_t k = upper; k >= 1; --k) points.push_back(pairs[k].point);
    for (size_t k = upper + 1; k < pairs.size(); ++k)
      if (k > upper + 1 || pairs[k].point.x != points.back().x || pairs[k].point.y != points.back().y)
        points.push_back(pairs[k].point);
  } else {
    for (const NumberedPair& pair : pairs) points.push_back(pair.point);
  }
  if (static_cast<int>(points.size()) < kLeastOutlinePoints) {
    report.diagnostics.push_back(
        ErrorAt(Text::CoordTooFew, NumberText(static_cast<double>(points.size())).substr(1), 0));
    return report;
  }
  size_t le = LeadingEdgeIndex(points);
  if (!RunsRound(points, le)) {
    report.diagnostics.push_back(ErrorAt(Text::CoordNotRound, "", 0));
    return report;
  }
  // A lower surface first is the same outline the other way round.
  double area = 0;
  for (size_t k = 0; k + 1 < points.size(); ++k) area += points[k].x * points[k + 1].y - points[k + 1].x * points[k].y;
  if (area < 0) {
    std::reverse(points.begin(), points.end());
    le = points.size() - 1 - le;
  }
  ScaleToChord(points, le);
  outline.name = name.empty() ? fallbackName : name;
  outline.points = std::move(points);
  return report;
}

std::string SeligText(const AirfoilOutline& outline) {
  std::string text = outline.name.empty() ? "Airfoil\n" : outline.name + "\n";
  for (const OutlinePoint& p : outline.points)
    text += FormatNumber(p.x, "0.0000000") + " " + FormatNumber(p.y, "0.0000000") + "\n";
  return text;
}

OutlineShape ShapeOf(const AirfoilOutline& outline) {
  OutlineShape shape;
  if (outline.points.size() < 3) return shape;
  const size_t le = LeadingEdgeIndex(outline.points);
  std::vector<OutlinePoint> upper(outline.points.begin(), outline.points.begin() + static_cast<long>(le) + 1);
  std::reverse(upper.begin(), upper.end());
  std::vector<OutlinePoint> lower(outline.points.begin() + static_cast<long>(le), outline.points.end());
  constexpr int kStations = 400;
  for (int k = 0; k <= kStations; ++k) {
    const double x = static_cast<double>(k) / kStations;
    const double yu = SurfaceAt(upper, x), yl = SurfaceAt(lower, x);
    if (yu - yl > shape.thickness) shape.thickness = yu - yl, shape.thicknessAt = x;
    if (std::abs(yu + yl) / 2 > std::abs(shape.camber)) shape.camber = (yu + yl) / 2, shape.camberAt = x;
  }
  return shape;
}

}  // namespace tavilo
