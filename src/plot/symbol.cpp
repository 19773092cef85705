#include "plot/symbol.h"

#include <cmath>
#include <iterator>
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
constexpr Vertex kOctagon[] = {{-0.41, -1}, {0.41, -1}, {1, -0.41},  {1, 0.41},  {0.41, 1},
                               {-0.41, 1},  {-1, 0.41}, {-1, -0.41}, {-0.41, -1}};

static_assert(std::size(kOctagon) <= std::size(SymbolFigure{}.offsets));

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

SymbolFigure SymbolOutline(const DrawingSurface& surface, int index, double size) {
  SymbolFigure figure;
  std::span<const Vertex> outline = Outline(index);
  double userPerDeviceX = surface.ScaleWidth() / surface.Width();
  double userPerDeviceY = surface.ScaleHeight() / surface.Height();
  double halfDevice = std::fabs(size / 2 / userPerDeviceX);
  double stepX = halfDevice * userPerDeviceX;
  double stepY = halfDevice * userPerDeviceY;
  for (const Vertex& vertex : outline) figure.offsets[figure.count++] = {vertex.x * stepX, vertex.y * stepY};
  return figure;
}

void Symbol(DrawingSurface& surface, int index, double size) {
  SymbolFigure figure = SymbolOutline(surface, index, size);
  if (figure.count == 0) return;
  const PlotPoint centre{surface.CurrentX(), surface.CurrentY()};
  surface.Figures(&centre, 1, figure.offsets, figure.count);
  surface.SetCurrentX(centre.x);
  surface.SetCurrentY(centre.y);
}

}  // namespace tavilo
