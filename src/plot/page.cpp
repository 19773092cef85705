#include "plot/page.h"

#include <cmath>
#include <limits>

#include "base/errors.h"

namespace tavilo {

namespace {

float ToSingle(double millimetres) {
  if (!(std::fabs(millimetres) <= std::numeric_limits<float>::max())) throw OverflowError("page position out of range");
  return static_cast<float>(millimetres);
}

}  // namespace

float AlfaMM(float alfa, const PageFactors& f) { return ToSingle(double(alfa) * 2.5 * f.k); }
float ClMM(float cl, const PageFactors& f) { return ToSingle((double(cl) / 0.1) * 5 * f.k); }
float CmMM(float cm, const PageFactors& f) { return ToSingle((-double(cm) / 0.1) * 25 * f.k); }
float CdMM(float cd, const PageFactors& f) { return ToSingle((double(cd) / 0.001) * 5 * f.kd); }
float XcMM(float xc, const PageFactors& f) { return ToSingle(double(xc) * 50 * f.k); }

float sMax(float a, float b) { return a > b ? a : b; }
int16_t nMax(int16_t a, int16_t b) { return a > b ? a : b; }

void Rectangle::Fill(DrawingSurface& surface, Color color) const {
  surface.SetFillColor(color);
  surface.SetFillStyle(kFillSolid);
  surface.Line(Left, Top, Left + Width, Top + Height, LineKind::Box);
}

void Rectangle::Translate(double dx, double dy) {
  Left += dx;
  Top += dy;
}

}  // namespace tavilo
