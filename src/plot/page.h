#pragma once
// The printed page: value-to-millimetre mappings, the small layout maxima and
// the filled rectangle.

#include <cstdint>

#include "plot/surface.h"

namespace tavilo {

// The page factors: k scales lift, moment, angle and x/c, kd scales drag
// alone, so that the print run can enlarge or reduce the graphs as a whole.
struct PageFactors {
  float k = 1.0f;
  float kd = 1.0f;
};

// Millimetres from the page origin. Each divides by its step before it
// multiplies (kept apart so that rounding is the same everywhere), computes
// in double and rounds to single at the end. OverflowError when the result
// does not fit a single-precision number.
float AlfaMM(float alfa, const PageFactors& factors);  // 2.5 mm per degree
float ClMM(float cl, const PageFactors& factors);      // 5 mm per 0.1
float CmMM(float cm, const PageFactors& factors);      // 25 mm per 0.1, sign reversed
float CdMM(float cd, const PageFactors& factors);      // 5 mm per 0.001, times kd
float XcMM(float xc, const PageFactors& factors);      // 50 mm for the chord

// a when a > b, otherwise b (so b on equality).
float sMax(float a, float b);
int16_t nMax(int16_t a, int16_t b);

// A rectangle on the page, in millimetres, the vertical axis growing upwards.
struct PageRect {
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;

  double Width() const { return right - left; }
  double Height() const { return top - bottom; }
  bool Empty() const { return !(right > left && top > bottom); }
  bool Contains(const PageRect& inner, double slack = 1e-6) const {
    return inner.left >= left - slack && inner.right <= right + slack && inner.bottom >= bottom - slack &&
           inner.top <= top + slack;
  }
  bool Overlaps(const PageRect& other) const {
    return !Empty() && !other.Empty() && left < other.right && other.left < right && bottom < other.top &&
           other.bottom < top;
  }
};

// A filled rectangle in the user units of the surface it is drawn on.
class Rectangle {
 public:
  double Top = 0;
  double Left = 0;
  double Width = 0;
  double Height = 0;

  // Draws the box from (Left, Top) to (Left + Width, Top + Height) filled
  // solid with `color`, whatever fill style the surface had; the surface
  // keeps that fill colour and the solid style afterwards.
  void Fill(DrawingSurface& surface, Color color) const;
  // Moves the rectangle; its size stays.
  void Translate(double dx, double dy);
};

}  // namespace tavilo
