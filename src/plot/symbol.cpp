#include "plot/symbol.h"

#include <cmath>
#include <span>

namespace tavilo {

namespace {

// Outlines on a box from -1 to 1, device orientation (y grows downwards),
// each closed by repeating its first vertex.
struct Vertex {
  double x;
  double y;
};

// The square is drawn a little smaller than the box so that it does not look
// heavier than the pointed shapes beside it.
constexpr Vertex kSquare[] = {{-0.8, -0.8}, {0.8, -0.8}, {0.8, 0.8}, {-0.8, 0.8}, {-0.8, -0.8}};
constexpr Vertex kDiamond[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}, {0, -1}};
constexpr Vertex kTriangleUp[] = {{0, -1}, {1, 0.75}, {-1, 0.75}, {0, -1}};
constexpr Vertex kTriangleDown[] = {{0, 1}, {-1, -0.75}, {1, -0.75}, {0, 1}};
constexpr Vertex kOctagon[] = {{-0.41, -1}, {0.41, -1}, {1, -0.41}, {1, 0.41}, {0.41, 1},
                               {-0.41, 1},  {-1, 0.41}, {-1, -0.41}, {-0.41, -1}};

std::span<const Vertex> Outline(int index) {
  switch (index) {
    case 1: return kSquare;
    case 2: return kDiamond;
    case 3: return kTriangleUp;
    case 4: return kTriangleDown;
    case 5: return kOctagon;
    default: return {};
  }
}

}  // namespace

void Symbol(DrawingSurface& surface, int index, double size) {
  std::span<const Vertex> outline = Outline(index);
  if (outline.empty()) return;
  double centreX = surface.CurrentX();
  double centreY = surface.CurrentY();
  double userPerDeviceX = surface.ScaleWidth() / surface.Width();
  double userPerDeviceY = surface.ScaleHeight() / surface.Height();
  double halfDevice = std::fabs(size / 2 / userPerDeviceX);
  double stepX = halfDevice * userPerDeviceX;
  double stepY = halfDevice * userPerDeviceY;
  for (size_t k = 1; k < outline.size(); ++k) {
    surface.Line(centreX + outline[k - 1].x * stepX, centreY + outline[k - 1].y * stepY,
                 centreX + outline[k].x * stepX, centreY + outline[k].y * stepY);
  }
  surface.SetCurrentX(centreX);
  surface.SetCurrentY(centreY);
}

}  // namespace tavilo
