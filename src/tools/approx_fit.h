#pragma once
// Fitting the approximation to a polar: the eleven values that come
// closest to the polar's lift over angle and drag over lift, each kept
// inside the range a real section can have.

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

// The errors over the usable points of `points` with an angle from
// `alfaFrom` to `alfaTo`: those with finite Alfa, Cl and Cd, a positive Cd
// below 10, |Cl| below 10 and |Alfa| up to 90. Missing Cm or transition
// values do not matter.
ApproxErrors ApproxFitErrors(const ApproxModel& model, std::span<const PolarPoint> points, double alfaFrom = -90,
                             double alfaTo = 90);

// What the engineer sets: values to hold (taken from `values`, kept as
// they are) and the angles, in degrees, whose points the fit takes.
struct ApproxFitOptions {
  std::array<bool, kApproxFieldCount> held{};
  ApproxValues values;
  double alfaFrom = -90;
  double alfaTo = 90;
};

struct ApproxFit {
  ApproxValues values;
  // Values the data cannot carry (no stall on a side, fewer than two
  // points on a side of the bucket): documented estimates from the rest.
  std::array<bool, kApproxFieldCount> estimated{};
  int fittedCount = 0;  // values fitted to the points: neither estimated nor held
  ApproxErrors errors;  // over the usable points in the angle range
};

// The least a polar must give a fit: usable points in the angle range, and
// degrees between the first and the last of them.
inline constexpr int kApproxFitMinPoints = 8;
inline constexpr double kApproxFitMinSpan = 6;

// A polar too short or too narrow to carry a fit; the arguments are its
// Reynolds and Mach numbers.
class ApproxPolarRefusedError : public RuntimeError {
 public:
  explicit ApproxPolarRefusedError(const Polar& polar);
};

// Fits the model to the usable points of `polar` in the angle range, in any
// order, with a loss that wild points cannot run away with. The values
// always pass FindApproxProblem, and the fit is never worse than the
// estimates it starts from. ApproxPolarRefusedError under
// kApproxFitMinPoints points or kApproxFitMinSpan degrees; ApproxInputError
// when the held values cannot stand together with any others.
ApproxFit FitApproximation(const Polar& polar, const ApproxFitOptions& options = {});

// The line that heads a fit in C text: "/* <airfoil>, Re=<re>, Mach=<mach>:
// rms Cl <x>, rms Cd <y> over <n> points */" and LF, Re and Mach in the
// shortest form that reads back exactly, the errors to three significant
// digits; a "*/" in the name is written "* /" so that the comment goes on.
std::string ApproxFitComment(std::string_view airfoil, const Polar& polar, const ApproxErrors& errors);

}  // namespace tavilo
