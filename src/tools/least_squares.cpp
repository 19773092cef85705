#include "tools/least_squares.h"

#include <cmath>
#include <limits>

namespace tavilo {

namespace {

double SumOfSquares(const std::vector<double>& residuals) {
  double sum = 0;
  for (double r : residuals) sum += r * r;
  return std::isfinite(sum) ? sum : std::numeric_limits<double>::infinity();
}

// Solves the symmetric positive definite system `a` x = `b` (n x n, row
// major) in place by Cholesky; false when `a` is not positive definite.
bool SolveSymmetric(std::vector<double>& a, std::vector<double>& b, size_t n) {
  for (size_t j = 0; j < n; ++j) {
    double d = a[j * n + j];
    for (size_t k = 0; k < j; ++k) d -= a[j * n + k] * a[j * n + k];
    if (!(d > 0)) return false;
    d = std::sqrt(d);
    a[j * n + j] = d;
    for (size_t i = j + 1; i < n; ++i) {
      double s = a[i * n + j];
      for (size_t k = 0; k < j; ++k) s -= a[i * n + k] * a[j * n + k];
      a[i * n + j] = s / d;
    }
  }
  for (size_t i = 0; i < n; ++i) {
    double s = b[i];
    for (size_t k = 0; k < i; ++k) s -= a[i * n + k] * b[k];
    b[i] = s / a[i * n + i];
  }
  for (size_t i = n; i-- > 0;) {
    double s = b[i];
    for (size_t k = i + 1; k < n; ++k) s -= a[k * n + i] * b[k];
    b[i] = s / a[i * n + i];
  }
  return true;
}

}  // namespace

double MinimizeSquares(std::vector<double>& parameters, const ResidualFunction& residuals, int maxIterations) {
  const size_t n = parameters.size();
  std::vector<double> r;
  residuals(parameters, r);
  double cost = SumOfSquares(r);
  if (n == 0 || r.empty() || !std::isfinite(cost)) return cost;
  const size_t m = r.size();
  std::vector<double> jacobian(m * n), shifted = parameters, moved(m), normal(n * n), gradient(n);
  double damping = 1e-3;
  for (int iteration = 0; iteration < maxIterations; ++iteration) {
    for (size_t j = 0; j < n; ++j) {
      const double h = 1e-7 * (1 + std::fabs(parameters[j]));
      shifted = parameters;
      shifted[j] += h;
      residuals(shifted, moved);
      for (size_t i = 0; i < m; ++i) jacobian[i * n + j] = (moved[i] - r[i]) / h;
    }
    std::vector<double> jtj(n * n, 0.0), jtr(n, 0.0);
    for (size_t i = 0; i < m; ++i) {
      const double* row = &jacobian[i * n];
      for (size_t j = 0; j < n; ++j) {
        jtr[j] += row[j] * r[i];
        for (size_t k = 0; k <= j; ++k) jtj[j * n + k] += row[j] * row[k];
      }
    }
    bool improved = false;
    // Raise the damping until a step lowers the sum, or give up.
    for (int attempt = 0; attempt < 12 && !improved; ++attempt) {
      for (size_t j = 0; j < n; ++j) {
        for (size_t k = 0; k <= j; ++k) normal[j * n + k] = normal[k * n + j] = jtj[j * n + k];
        normal[j * n + j] += damping * jtj[j * n + j] + 1e-12;
        gradient[j] = -jtr[j];
      }
      if (SolveSymmetric(normal, gradient, n)) {
        for (size_t j = 0; j < n; ++j) shifted[j] = parameters[j] + gradient[j];
        residuals(shifted, moved);
        const double newCost = SumOfSquares(moved);
        if (newCost < cost) {
          const bool tiny = cost - newCost <= 1e-12 * cost;
          parameters = shifted;
          r.swap(moved);
          cost = newCost;
          damping = std::fmax(damping / 3, 1e-12);
          improved = true;
          if (tiny) return cost;
          continue;
        }
      }
      damping *= 4;
    }
    if (!improved) break;
  }
  return cost;
}

}  // namespace tavilo
