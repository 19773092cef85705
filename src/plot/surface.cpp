#include "plot/surface.h"

#include "model/errors.h"

namespace tavilo {

void ThrowDeviceCoordinateOverflow() { throw OverflowError("drawing coordinate out of range"); }

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
