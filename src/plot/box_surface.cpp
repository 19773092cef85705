#include "plot/box_surface.h"

#include <algorithm>
#include <cmath>

namespace tavilo {

BoxSurface::BoxSurface(DrawingSurface& page, const PageRect& box, double mmPerDevice)
    : page_(page), box_(box), mmPerDevice_(mmPerDevice) {
  Scale(box.left, box.top, box.right, box.bottom);
}

void BoxSurface::Clear() { currentX_ = currentY_ = 0; }

void BoxSurface::Scale(double left, double top, double right, double bottom) {
  left_ = left;
  top_ = top;
  scaleWidth_ = right - left;
  scaleHeight_ = bottom - top;
  mmPerUserX_ = box_.Width() / scaleWidth_;
  mmPerUserY_ = -box_.Height() / scaleHeight_;
}

bool BoxSurface::Clip(PlotPoint& a, PlotPoint& b) const {
  return ClipSegment(a, b, std::min(left_, left_ + scaleWidth_), std::max(left_, left_ + scaleWidth_),
                     std::min(top_, top_ + scaleHeight_), std::max(top_, top_ + scaleHeight_));
}

void BoxSurface::DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) {
  currentX_ = x2;
  currentY_ = y2;
  PlotPoint a{x1, y1}, b{x2, y2};
  if (kind != LineKind::Plain) {
    // A box is cut to the view as a whole.
    a = {std::clamp(x1, std::min(left_, left_ + scaleWidth_), std::max(left_, left_ + scaleWidth_)),
         std::clamp(y1, std::min(top_, top_ + scaleHeight_), std::max(top_, top_ + scaleHeight_))};
    b = {std::clamp(x2, std::min(left_, left_ + scaleWidth_), std::max(left_, left_ + scaleWidth_)),
         std::clamp(y2, std::min(top_, top_ + scaleHeight_), std::max(top_, top_ + scaleHeight_))};
    if (!std::isfinite(a.x + a.y + b.x + b.y)) return;
  } else if (!Clip(a, b)) {
    return;
  }
  page_.Line(PageX(a.x), PageY(a.y), PageX(b.x), PageY(b.y), color, kind);
}

// Runs of segments that stay inside go to the page as one polyline.
void BoxSurface::DrawPolyline(const PlotPoint* points, size_t count, Color color) {
  constexpr size_t kPiece = 256;
  PlotPoint piece[kPiece];
  size_t filled = 0;
  const Color foreground = page_.ForeColor();
  page_.SetForeColor(color);
  auto flush = [&] {
    page_.Polyline(piece, filled);
    filled = 0;
  };
  for (size_t k = 1; k < count; ++k) {
    PlotPoint a = points[k - 1], b = points[k];
    if (!Clip(a, b)) continue;
    const PlotPoint pa{PageX(a.x), PageY(a.y)}, pb{PageX(b.x), PageY(b.y)};
    const bool continues = filled > 0 && piece[filled - 1].x == pa.x && piece[filled - 1].y == pa.y;
    if (!continues) {
      if (filled > 0) flush();
      piece[filled++] = pa;
    } else if (filled == kPiece) {
      flush();
      piece[filled++] = pa;
    }
    piece[filled++] = pb;
  }
  if (filled > 0) flush();
  page_.SetForeColor(foreground);
  currentX_ = points[count - 1].x;
  currentY_ = points[count - 1].y;
}

void BoxSurface::Print(std::string_view text) {
  page_.SetCurrentX(PageX(currentX_));
  page_.SetCurrentY(PageY(currentY_));
  page_.Print(text);
  currentX_ = left_ + (page_.CurrentX() - box_.left) / mmPerUserX_;
  currentY_ = top_ + (page_.CurrentY() - box_.top) / mmPerUserY_;
}

double BoxSurface::TextWidth(std::string_view text) const { return page_.TextWidth(text) / mmPerUserX_; }
double BoxSurface::TextHeight(std::string_view text) const { return page_.TextHeight(text) / mmPerUserY_; }

}  // namespace tavilo
