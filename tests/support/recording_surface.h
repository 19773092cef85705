#pragma once
// A drawing surface that keeps every call, with fixed text metrics (every
// character 7 device units wide, a line 14 high, both in proportion to a
// type size set after the 12 points it starts with) on a device of a chosen
// size, so that tests can check what a routine drew and where.

#include <string>
#include <string_view>
#include <vector>

#include "plot/surface.h"

namespace tavilo::testing {

enum class CallKind { Clear, Scale, Line, Print, ForeColor, FillColor, FillStyle, DrawWidth };

struct SurfaceCall {
  CallKind kind = CallKind::Clear;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // Line points; Scale corners; Print position and far corner
  Color color;                            // Line, Print, colour setters
  LineKind lineKind = LineKind::Plain;
  std::string text;                       // Print
  int value = 0;                          // FillStyle, DrawWidth

  bool operator==(const SurfaceCall&) const = default;
};

class RecordingSurface : public DrawingSurface {
 public:
  static constexpr double kCharWidth = 7;
  static constexpr double kLineHeight = 14;

  explicit RecordingSurface(double width = 800, double height = 600)
      : width_(width), height_(height) {}

  void Clear() override {
    calls.push_back(Call(CallKind::Clear));
    currentX_ = currentY_ = 0;
  }
  void Scale(double left, double top, double right, double bottom) override {
    left_ = left;
    top_ = top;
    scaleWidth_ = right - left;
    scaleHeight_ = bottom - top;
    calls.push_back(Call(CallKind::Scale, left, top, right, bottom));
  }
  double ScaleLeft() const override { return left_; }
  double ScaleTop() const override { return top_; }
  double ScaleWidth() const override { return scaleWidth_; }
  double ScaleHeight() const override { return scaleHeight_; }
  double Width() const override { return width_; }
  double Height() const override { return height_; }

  void DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) override {
    for (double device : {DeviceX(x1), DeviceY(y1), DeviceX(x2), DeviceY(y2)}) CheckDeviceCoordinate(device);
    SurfaceCall call = Call(CallKind::Line, x1, y1, x2, y2, color);
    call.lineKind = kind;
    calls.push_back(call);
    currentX_ = x2;
    currentY_ = y2;
  }

  double CurrentX() const override { return currentX_; }
  double CurrentY() const override { return currentY_; }
  void SetCurrentX(double x) override { currentX_ = x; }
  void SetCurrentY(double y) override { currentY_ = y; }

  void Print(std::string_view text) override {
    SurfaceCall call = Call(CallKind::Print, currentX_, currentY_, currentX_ + TextWidth(text),
                            currentY_ + TextHeight(text), foreColor_);
    call.text = std::string(text);
    calls.push_back(call);
    currentX_ += TextWidth(text);
    currentY_ += TextHeight(text) / 2;
  }
  // A halo is one call, a Print in the halo's colour, so that a test sees
  // the two passes of a legend entry as two texts.
  void DrawHalo(std::string_view text, Color color) override {
    const Color foreground = foreColor_;
    foreColor_ = color;
    const double x = currentX_, y = currentY_;
    Print(text);
    foreColor_ = foreground;
    currentX_ = x + TextWidth(text);
    currentY_ = y + TextHeight(text) / 2;
  }

  double TextWidth(std::string_view text) const override {
    return Characters(text) * kCharWidth * fontScale_ * scaleWidth_ / width_;
  }
  double TextHeight(std::string_view) const override { return kLineHeight * fontScale_ * scaleHeight_ / height_; }
  void SetFontSize(double points) override { fontScale_ = points / 12; }

  Color ForeColor() const override { return foreColor_; }
  void SetForeColor(Color color) override {
    foreColor_ = color;
    calls.push_back(Call(CallKind::ForeColor, 0, 0, 0, 0, color));
  }
  void SetFillColor(Color color) override {
    calls.push_back(Call(CallKind::FillColor, 0, 0, 0, 0, color));
  }
  void SetFillStyle(int style) override { calls.push_back(Call(CallKind::FillStyle, 0, 0, 0, 0, {}, style)); }
  void SetDrawWidth(int width) override { calls.push_back(Call(CallKind::DrawWidth, 0, 0, 0, 0, {}, width)); }

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
  static SurfaceCall Call(CallKind kind, double x1 = 0, double y1 = 0, double x2 = 0, double y2 = 0,
                          Color color = {}, int value = 0) {
    return SurfaceCall{kind, x1, y1, x2, y2, color, LineKind::Plain, {}, value};
  }
  static double Characters(std::string_view text) {
    double count = 0;
    for (unsigned char c : text)
      if ((c & 0xC0) != 0x80) ++count;  // count UTF-8 lead bytes only
    return count;
  }
  double DeviceX(double x) const { return (x - left_) * width_ / scaleWidth_; }
  double DeviceY(double y) const { return (y - top_) * height_ / scaleHeight_; }

  double width_;
  double height_;
  double left_ = 0, top_ = 0, scaleWidth_ = 1, scaleHeight_ = 1;
  double currentX_ = 0, currentY_ = 0;
  Color foreColor_;
  double fontScale_ = 1;
};

}  // namespace tavilo::testing
