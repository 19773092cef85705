#pragma once
// A graph within a box of the printed page: the graph's values map onto the
// box, and lines are cut at its edges, so that the screen's curve and marker
// code draws on paper unchanged and nothing strays outside the graph.

#include "plot/page.h"
#include "plot/surface.h"

namespace tavilo {

class BoxSurface : public DrawingSurface {
 public:
  // Draws on `page` (user units millimetres, y growing upwards) within
  // `box`. A device unit of this surface is `mmPerDevice` millimetres, the
  // size in which markers are measured.
  BoxSurface(DrawingSurface& page, const PageRect& box, double mmPerDevice);

  // The page is cleared once for all its graphs; this only resets the
  // current position.
  void Clear() override;
  void Scale(double left, double top, double right, double bottom) override;
  double ScaleLeft() const override { return left_; }
  double ScaleTop() const override { return top_; }
  double ScaleWidth() const override { return scaleWidth_; }
  double ScaleHeight() const override { return scaleHeight_; }
  double Width() const override { return box_.Width() / mmPerDevice_; }
  double Height() const override { return box_.Height() / mmPerDevice_; }

  double CurrentX() const override { return currentX_; }
  double CurrentY() const override { return currentY_; }
  void SetCurrentX(double x) override { currentX_ = x; }
  void SetCurrentY(double y) override { currentY_ = y; }

  void Print(std::string_view text) override;
  double TextWidth(std::string_view text) const override;
  double TextHeight(std::string_view text) const override;
  void SetFontSize(double points) override { page_.SetFontSize(points); }

  Color ForeColor() const override { return page_.ForeColor(); }
  void SetForeColor(Color color) override { page_.SetForeColor(color); }
  void SetFillColor(Color color) override { page_.SetFillColor(color); }
  void SetFillStyle(int style) override { page_.SetFillStyle(style); }
  void SetDrawWidth(int width) override { page_.SetDrawWidth(width); }

 protected:
  void DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) override;
  void DrawPolyline(const PlotPoint* points, size_t count, Color color) override;

 private:
  double PageX(double x) const { return box_.left + (x - left_) * mmPerUserX_; }
  double PageY(double y) const { return box_.top + (y - top_) * mmPerUserY_; }
  // Cuts the segment to the view; false when nothing of it is inside.
  bool Clip(PlotPoint& a, PlotPoint& b) const;

  DrawingSurface& page_;
  PageRect box_;
  double mmPerDevice_;
  double left_ = 0, top_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
  double mmPerUserX_ = 1, mmPerUserY_ = 1;
  double currentX_ = 0, currentY_ = 0;
};

}  // namespace tavilo
