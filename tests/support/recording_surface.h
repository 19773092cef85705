#pragma once
// A drawing surface that keeps every call, with fixed text metrics (every
// character 7 device units wide, a line 14 high, both in proportion to a
// type size set after the 12 points it starts with) on a device of a chosen
// size, so that tests can check what a routine drew and where.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "plot/surface.h"

namespace tavilo::testing {

enum class CallKind { Clear, Scale, Line, Print, ForeColor, DrawWidth };

struct SurfaceCall {
  CallKind kind = CallKind::Clear;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // Line points; Scale corners; Print position and far corner
  Color color;                            // Line, Print, ForeColor
  LineKind lineKind = LineKind::Plain;
  std::string text;  // Print
  int value = 0;     // DrawWidth

  bool operator==(const SurfaceCall&) const = default;
};

class RecordingSurface : public DrawingSurface {
 public:
  explicit RecordingSurface(double width = 800, double height = 600) : width_(width), height_(height) {}

  void Clear() override {
    Record(CallKind::Clear);
    currentX_ = currentY_ = 0;
  }
  void Scale(double left, double top, double right, double bottom) override {
    left_ = left, top_ = top, scaleWidth_ = right - left, scaleHeight_ = bottom - top;
    Record(CallKind::Scale, left, top, right, bottom);
  }
  double ScaleLeft() const override { return left_; }
  double ScaleTop() const override { return top_; }
  double ScaleWidth() const override { return scaleWidth_; }
  double ScaleHeight() const override { return scaleHeight_; }
  double Width() const override { return width_; }
  double Height() const override { return height_; }

  void DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) override {
    for (double x : {x1, x2}) CheckDeviceCoordinate((x - left_) * width_ / scaleWidth_);
    for (double y : {y1, y2}) CheckDeviceCoordinate((y - top_) * height_ / scaleHeight_);
    Record(CallKind::Line, x1, y1, x2, y2, color, kind);
    currentX_ = x2, currentY_ = y2;
  }

  double CurrentX() const override { return currentX_; }
  double CurrentY() const override { return currentY_; }
  void SetCurrentX(double x) override { currentX_ = x; }
  void SetCurrentY(double y) override { currentY_ = y; }

  void Print(std::string_view text) override {
    const double width = TextWidth(text), height = TextHeight(text);
    Record(CallKind::Print, currentX_, currentY_, currentX_ + width, currentY_ + height, foreColor_, LineKind::Plain,
           text);
    currentX_ += width;
    currentY_ += height / 2;
  }
  // A halo is one call, a Print in the halo's colour, so that a test sees
  // the two passes of a legend entry as two texts.
  void DrawHalo(std::string_view text, Color color) override {
    std::swap(foreColor_, color);
    Print(text);
    foreColor_ = color;
  }

  double TextWidth(std::string_view text) const override {
    double characters = 0;
    for (unsigned char c : text) characters += (c & 0xC0) != 0x80;  // UTF-8 lead bytes only
    return characters * 7 * fontScale_ * scaleWidth_ / width_;
  }
  double TextHeight(std::string_view) const override { return 14 * fontScale_ * scaleHeight_ / height_; }
  void SetFontSize(double points) override { fontScale_ = points / 12; }

  Color ForeColor() const override { return foreColor_; }
  void SetForeColor(Color color) override { Record(CallKind::ForeColor, 0, 0, 0, 0, foreColor_ = color); }
  void SetFillColor(Color) override {}
  void SetFillStyle(int) override {}
  void SetDrawWidth(int width) override { Record(CallKind::DrawWidth, 0, 0, 0, 0, {}, LineKind::Plain, {}, width); }

  // The recorded calls of one kind, in order.
  std::vector<SurfaceCall> Calls(CallKind kind, const Color* color = nullptr) const {
    std::vector<SurfaceCall> found;
    for (const SurfaceCall& call : calls)
      if (call.kind == kind && (!color || call.color == *color)) found.push_back(call);
    return found;
  }
  std::vector<SurfaceCall> Lines(Color color) const { return Calls(CallKind::Line, &color); }

  std::vector<SurfaceCall> calls;

 private:
  void Record(CallKind kind, double x1 = 0, double y1 = 0, double x2 = 0, double y2 = 0, Color color = {},
              LineKind lineKind = LineKind::Plain, std::string_view text = {}, int value = 0) {
    calls.push_back(SurfaceCall{kind, x1, y1, x2, y2, color, lineKind, std::string(text), value});
  }

  double width_, height_;
  double left_ = 0, top_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
  double currentX_ = 0, currentY_ = 0;
  Color foreColor_;
  double fontScale_ = 1;
};

}  // namespace tavilo::testing
