// The outline of a NACA section drawn for the dialog; xfoil makes its own
// from the designation, so this only needs to look right.
#include <cmath>

#include "tools/xfoil_run.h"

namespace tavilo {

namespace {

double Thickness(double t, double x) {
  return 5 * t * (0.2969 * std::sqrt(x) - 0.1260 * x - 0.3516 * x * x + 0.2843 * x * x * x - 0.1015 * x * x * x * x);
}

}  // namespace

AirfoilOutline NacaOutline(const std::string& digits) {
  AirfoilOutline outline;
  if (digits.size() != 4 && digits.size() != 5) return outline;
  auto digit = [&](size_t k) { return digits[k] - '0'; };
  const double t = (digit(digits.size() - 2) * 10 + digit(digits.size() - 1)) / 100.0;
  double (*camber)(double, double, double, double) = nullptr;
  double a = 0, b = 0, scale = 1;
  if (digits.size() == 4) {
    a = digit(0) / 100.0;  // largest camber
    b = digit(1) / 10.0;   // where
    camber = [](double m, double p, double, double x) {
      if (m == 0 || p == 0) return 0.0;
      return x < p ? m / (p * p) * (2 * p * x - x * x) : m / ((1 - p) * (1 - p)) * (1 - 2 * p + 2 * p * x - x * x);
    };
  } else {
    // The standard mean lines 210 to 250 (no reflex), design lift 0.15 per first digit.
    static const double kM[] = {0.0580, 0.1260, 0.2025, 0.2900, 0.3910};
    static const double kK1[] = {361.4, 51.64, 15.957, 6.643, 3.230};
    const int p = digit(1);
    if (p < 1 || p > 5 || digit(2) != 0) return outline;
    a = kM[p - 1];
    b = kK1[p - 1];
    scale = digit(0) * 0.15 / 0.3;
    camber = [](double m, double k1, double s, double x) {
      return s * (x < m ? k1 / 6 * (x * x * x - 3 * m * x * x + m * m * (3 - m) * x) : k1 * m * m * m / 6 * (1 - x));
    };
  }
  outline.name = "NACA " + digits;
  constexpr int kStations = 60;
  for (int side = 0; side < 2; ++side) {
    for (int k = 0; k <= kStations; ++k) {
      if (side == 1 && k == 0) continue;  // the leading edge once
      const int station = side == 0 ? kStations - k : k;
      const double x = (1 - std::cos(M_PI * station / kStations)) / 2;
      const double yc = camber(a, b, scale, x), yt = Thickness(t, x);
      outline.points.push_back({x, side == 0 ? yc + yt : yc - yt});
    }
  }
  return outline;
}

}  // namespace tavilo
