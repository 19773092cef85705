#pragma once
// Fitting the approximation to a polar: the eleven values that come
// closest, by least squares, to the polar's lift over angle and drag over
// lift.

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "base/errors.h"
#include "model/polar.h"
#include "tools/approximation.h"

namespace tavilo {

// How far a model lies from a polar's points: the root-mean-square errors
// of lift at each point's angle and of drag, and the number of points.
// Where the model's flow is attached the drag is taken at the point's own
// lift (the bucket is drag over lift); beyond the stall angles at its angle.
struct ApproxErrors {
  double rmsCl = 0;
  double rmsCd = 0;
  int points = 0;
};

// The errors over the usable points of `points`: those with finite Alfa,
// Cl and Cd, a positive Cd below 10, |Cl| below 10 and |Alfa| up to 90.
// Missing Cm or transition values do not matter.
ApproxErrors ApproxFitErrors(const ApproxModel& model, std::span<const PolarPoint> points);

struct ApproxFit {
  ApproxValues values;
  // Values the data cannot show (no stall on a side, no drag on a side of
  // the bucket): set from the others, not from the points.
  std::array<bool, kApproxFieldCount> estimated{};
  ApproxErrors errors;  // over all usable points, wild ones included
};

// The fewest usable points a fit takes.
inline constexpr int kApproxFitMinPoints = 5;

class ApproxTooFewPointsError : public RuntimeError {
 public:
  ApproxTooFewPointsError()
      : RuntimeError(Text::ApproxTooFewPoints,
                     "Too few points for an approximation: ", "fewer than five") {}
};

// Fits the model to the usable points of `polar` in any order. A few wild
// points are found by their residuals and left out of the fit. The values
// always pass FindApproxProblem. ApproxTooFewPointsError under
// kApproxFitMinPoints usable points.
ApproxFit FitApproximation(const Polar& polar);

// The line that heads a fit in C text: "/* <airfoil>, Re=<re>, Mach=<mach>:
// rms Cl <x>, rms Cd <y> over <n> points */" and LF, numbers in the
// shortest form that reads back exactly; a "*/" in the name is written
// "* /" so that the comment goes on.
std::string ApproxFitComment(std::string_view airfoil, const Polar& polar, const ApproxErrors& errors);

}  // namespace tavilo
