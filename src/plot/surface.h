#pragma once
// The drawing surface every graph is drawn on: a screen graph area, an image
// or the printed page. The plot code only ever talks to this interface; the
// Qt library implements it with QPainter and the tests with a recorder.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace tavilo {

// A colour given either as red, green and blue, or as one of the 16 classic
// palette entries (0 black, 1 blue, ... 15 bright white). A surface may show
// a palette entry in its own tone of that colour.
struct Color {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;
  int8_t palette = -1;  // 0..15 for a palette entry, -1 for an RGB colour

  static constexpr Color Rgb(uint8_t r, uint8_t g, uint8_t b) { return Color{r, g, b, -1}; }
  // Palette entry `index` & 15, carrying its classic RGB value as well.
  static constexpr Color Palette(int index);

  bool IsPalette() const { return palette >= 0; }
  bool operator==(const Color&) const = default;
};

// The classic values: dark shades 1..6, silver 7, grey 8, bright shades 9..15.
inline constexpr Color kClassicPalette[16] = {
    {0, 0, 0, 0},     {0, 0, 128, 1},     {0, 128, 0, 2},     {0, 128, 128, 3},   {128, 0, 0, 4},  {128, 0, 128, 5},
    {128, 128, 0, 6}, {192, 192, 192, 7}, {128, 128, 128, 8}, {0, 0, 255, 9},     {0, 255, 0, 10}, {0, 255, 255, 11},
    {255, 0, 0, 12},  {255, 0, 255, 13},  {255, 255, 0, 14},  {255, 255, 255, 15}};

constexpr Color Color::Palette(int index) { return kClassicPalette[index & 15]; }

enum class LineKind {
  Plain,      // a line from the first point to the second
  Box,        // the outline of the box spanned by the points, its inside
              // filled with FillColor unless FillStyle is transparent
  FilledBox,  // the box filled with the line's own colour
};

// Fill styles of a box's inside.
inline constexpr int kFillSolid = 0;
inline constexpr int kFillTransparent = 1;  // the initial style
// 2 horizontal lines, 3 vertical lines, 4 upward diagonal, 5 downward
// diagonal, 6 cross, 7 diagonal cross.

// A point in user coordinates.
struct PlotPoint {
  double x;
  double y;
};

// User coordinates are set by Scale; device units are the surface's own
// (pixels on screen). Every position argument is in user coordinates.
class DrawingSurface {
 public:
  virtual ~DrawingSurface() = default;

  // Fills the surface with its background and moves the current position to
  // the user point (0, 0). Colours, fill and line width are kept.
  virtual void Clear() = 0;

  // Maps the user point (left, top) to the top-left corner of the surface and
  // (right, bottom) to the bottom-right one; bottom < top makes the vertical
  // axis grow upwards.
  virtual void Scale(double left, double top, double right, double bottom) = 0;
  virtual double ScaleLeft() const = 0;
  virtual double ScaleTop() const = 0;
  // right - left and bottom - top: negative when an axis runs backwards.
  virtual double ScaleWidth() const = 0;
  virtual double ScaleHeight() const = 0;
  // The size in device units.
  virtual double Width() const = 0;
  virtual double Height() const = 0;

  // Draws from (x1, y1) to (x2, y2) in the foreground colour, or in `color`,
  // and leaves the current position at (x2, y2). OverflowError when a point
  // lies beyond the range a device coordinate can hold.
  void Line(double x1, double y1, double x2, double y2, LineKind kind = LineKind::Plain) {
    DrawLine(x1, y1, x2, y2, ForeColor(), kind);
  }
  void Line(double x1, double y1, double x2, double y2, Color color, LineKind kind = LineKind::Plain) {
    DrawLine(x1, y1, x2, y2, color, kind);
  }

  // Joins the `count` points in order in the foreground colour, exactly as
  // a Line from each point to the next would, and leaves the current
  // position at the last point. Fewer than two points draw nothing.
  void Polyline(const PlotPoint* points, size_t count) {
    if (count >= 2) DrawPolyline(points, count, ForeColor());
  }

  // For each of the `count` centres in turn, joins the points centre +
  // offsets[k] (k < offsetCount) in order, as Polyline would: small equal
  // figures such as a curve's markers. A surface may draw them faster than
  // the same lines one by one.
  void Figures(const PlotPoint* centres, size_t count, const PlotPoint* offsets, size_t offsetCount) {
    if (count > 0 && offsetCount >= 2) DrawFigures(centres, count, offsets, offsetCount, ForeColor());
  }

  // Writes `text` as Print would from the current position, but as a halo
  // of `color` about one device unit wide around the glyphs: drawn in the
  // background colour first, it keeps a text written over it readable on
  // grid lines and curves. The current position moves as Print moves it;
  // the foreground colour stays.
  void PrintHalo(std::string_view text, Color color) { DrawHalo(text, color); }

  virtual double CurrentX() const = 0;
  virtual double CurrentY() const = 0;
  virtual void SetCurrentX(double x) = 0;
  virtual void SetCurrentY(double y) = 0;

  // Writes UTF-8 `text` in the foreground colour with the top-left corner of
  // its line at the current position. Afterwards CurrentX stands at the end
  // of the text (start + TextWidth) and CurrentY half a text height below the
  // start, on the middle of the line just written, so that a marker drawn
  // next sits beside the text that it follows.
  virtual void Print(std::string_view text) = 0;
  // The extent of `text` in user units; TextHeight is negative on a surface
  // whose vertical axis grows upwards.
  virtual double TextWidth(std::string_view text) const = 0;
  virtual double TextHeight(std::string_view text) const = 0;
  // The type size of the texts that follow, in points. Only the printed
  // page sets it; a screen graph keeps the font it was made with.
  virtual void SetFontSize(double points) { (void)points; }

  virtual Color ForeColor() const = 0;
  virtual void SetForeColor(Color color) = 0;
  virtual void SetFillColor(Color color) = 0;
  virtual void SetFillStyle(int style) = 0;
  // Line width in device units; 1 is the thinnest line.
  virtual void SetDrawWidth(int width) = 0;

 protected:
  // Both forms of Line.
  virtual void DrawLine(double x1, double y1, double x2, double y2, Color color, LineKind kind) = 0;
  // Polyline, given at least two points. A surface that can draw a run of
  // lines faster than one call per line says so here.
  virtual void DrawPolyline(const PlotPoint* points, size_t count, Color color) {
    for (size_t k = 1; k < count; ++k)
      DrawLine(points[k - 1].x, points[k - 1].y, points[k].x, points[k].y, color, LineKind::Plain);
  }
  // PrintHalo. The text is written eight times, one device unit off in
  // each direction (kHaloOffsets); a surface that can stroke the glyphs'
  // outline may.
  virtual void DrawHalo(std::string_view text, Color color);
  // The eight device-unit offsets of a halo's copies.
  static constexpr std::pair<int, int> kHaloOffsets[] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0},
                                                         {1, 0},   {-1, 1}, {0, 1},  {1, 1}};

  // Figures, given a centre and at least two offsets.
  virtual void DrawFigures(const PlotPoint* centres, size_t count, const PlotPoint* offsets, size_t offsetCount,
                           Color color) {
    for (size_t c = 0; c < count; ++c) {
      const double x = centres[c].x, y = centres[c].y;
      for (size_t k = 1; k < offsetCount; ++k)
        DrawLine(x + offsets[k - 1].x, y + offsets[k - 1].y, x + offsets[k].x, y + offsets[k].y, color,
                 LineKind::Plain);
    }
  }
};

// Cuts the segment from `a` to `b` to the box xMin..xMax, yMin..yMax, moving
// the ends that lie outside onto its edges; false when nothing of it lies
// inside. A value that is not a finite number is never inside.
bool ClipSegment(PlotPoint& a, PlotPoint& b, double xMin, double xMax, double yMin, double yMax);

// The largest magnitude of a device coordinate; a point further out (or not
// a number) is a wild value that ends the drawing with an OverflowError.
inline constexpr double kMaxDeviceCoordinate = 2147483647.0;

// Raises OverflowError unless |value| <= kMaxDeviceCoordinate.
[[noreturn]] void ThrowDeviceCoordinateOverflow();
inline void CheckDeviceCoordinate(double value) {
  if (!(value <= kMaxDeviceCoordinate && value >= -kMaxDeviceCoordinate)) ThrowDeviceCoordinateOverflow();
}

}  // namespace tavilo
