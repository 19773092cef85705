#include "plot/surface.h"

#include <algorithm>
#include <cmath>

#include "base/errors.h"

namespace tavilo {

void ThrowDeviceCoordinateOverflow() { throw OverflowError("drawing coordinate out of range"); }

// Liang and Barsky: the part of a + t (b - a), 0 <= t <= 1, inside the box.
bool ClipSegment(PlotPoint& a, PlotPoint& b, double xMin, double xMax, double yMin, double yMax) {
  if (!std::isfinite(a.x) || !std::isfinite(a.y) || !std::isfinite(b.x) || !std::isfinite(b.y)) return false;
  const double dx = b.x - a.x, dy = b.y - a.y;
  double t0 = 0, t1 = 1;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {a.x - xMin, xMax - a.x, a.y - yMin, yMax - a.y};
  for (int k = 0; k < 4; ++k) {
    if (p[k] == 0) {
      if (q[k] < 0) return false;
      continue;
    }
    const double t = q[k] / p[k];
    if (p[k] < 0)
      t0 = std::max(t0, t);
    else
      t1 = std::min(t1, t);
    if (t0 > t1) return false;
  }
  const PlotPoint start = a;
  if (t1 < 1) b = {start.x + t1 * dx, start.y + t1 * dy};
  if (t0 > 0) a = {start.x + t0 * dx, start.y + t0 * dy};
  return true;
}

void DrawingSurface::DrawHalo(std::string_view text, Color color) {
  const double x = CurrentX(), y = CurrentY();
  const double dx = ScaleWidth() / Width(), dy = ScaleHeight() / Height();
  const Color foreground = ForeColor();
  SetForeColor(color);
  for (const auto& [i, j] : kHaloOffsets) {
    SetCurrentX(x + i * dx);
    SetCurrentY(y + j * dy);
    Print(text);
  }
  SetForeColor(foreground);
  SetCurrentX(x + TextWidth(text));
  SetCurrentY(y + TextHeight(text) / 2);
}

}  // namespace tavilo
