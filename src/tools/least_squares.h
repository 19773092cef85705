#pragma once
// A small nonlinear least-squares solver for the approximation's fit:
// Levenberg-Marquardt with a forward-difference Jacobian, for a dozen
// parameters and a few hundred residuals.

#include <functional>
#include <span>
#include <vector>

namespace tavilo {

// Fills `residuals` (its size stays the same from call to call) for the
// given parameters.
using ResidualFunction = std::function<void(std::span<const double> parameters, std::vector<double>& residuals)>;

// Moves `parameters` to a local minimum of the sum of squared residuals,
// starting where they stand, and returns that sum. Stops after
// `maxIterations` steps or when a step no longer lowers the sum noticeably.
// Non-finite residuals count as an infinite sum, so a step into them is
// refused.
double MinimizeSquares(std::vector<double>& parameters, const ResidualFunction& residuals, int maxIterations = 200);

}  // namespace tavilo
