#include "tools/approximation.h"

#include <cmath>

#include "base/number_text.h"

namespace tavilo {

namespace {

constexpr double ApproxValues::*kFields[kApproxFieldCount] = {
    &ApproxValues::cdTilt,          &ApproxValues::stallCdAtClMax,  &ApproxValues::stallCdAtClMin,
    &ApproxValues::cdShift,         &ApproxValues::cdExponent,      &ApproxValues::cdMin,
    &ApproxValues::stallRangeClMin, &ApproxValues::stallRangeClMax, &ApproxValues::clMax,
    &ApproxValues::clMin,           &ApproxValues::alfaZero,
};

// The second stall drag is named for what it is: its label in the dialog
// repeats the first one's text.
constexpr std::string_view kFieldNames[kApproxFieldCount] = {
    "Cd Tilt",     "Stall Cd at Cl Max", "Stall Cd at Cl Min", "Cd Shift", "Cd Exponent", "Cd Min",
    "Stall Range Cl Min", "Stall Range Cl Max", "Cl Max", "Cl Min", "Alfa Zero",
};

constexpr double kDegree = 3.14159265358979323846 / 180;

// How far, in degrees, the lift line takes from zero lift to `cl` at the
// model's slope.
double LiftRun(double cl) { return std::fabs(cl) / kApproxLiftSlope; }

// Written as negations so that a NaN, which compares false, is refused too.
std::optional<ApproxProblem> FindFieldProblem(const ApproxValues& v) {
  using enum ApproxField;
  for (int i = 0; i < kApproxFieldCount; ++i)
    if (!std::isfinite(v[ApproxFieldAt(i)]))
      return ApproxProblem{ApproxFieldAt(i), Text::ApproxNotFinite};
  if (!(v.cdExponent > 1)) return ApproxProblem{CdExponent, Text::ApproxExponentTooLow};
  if (!(v.cdMin > 0)) return ApproxProblem{CdMin, Text::ApproxNotPositive};
  if (!(v.stallRangeClMin > 0)) return ApproxProblem{StallRangeClMin, Text::ApproxNotPositive};
  if (!(v.stallRangeClMax > 0)) return ApproxProblem{StallRangeClMax, Text::ApproxNotPositive};
  if (!(v.clMax > 0)) return ApproxProblem{ClMax, Text::ApproxNotPositive};
  if (!(v.clMin < 0)) return ApproxProblem{ClMin, Text::ApproxNotNegative};
  return std::nullopt;
}

}  // namespace

double& ApproxValues::operator[](ApproxField field) { return this->*kFields[static_cast<int>(field)]; }
double ApproxValues::operator[](ApproxField field) const { return this->*kFields[static_cast<int>(field)]; }

std::string_view ApproxFieldName(ApproxField field) { return kFieldNames[static_cast<int>(field)]; }

std::optional<ApproxProblem> FindApproxProblem(const ApproxValues& v) {
  using enum ApproxField;
  if (auto problem = FindFieldProblem(v)) return problem;
  if (!(v.cdShift > v.clMin && v.cdShift < v.clMax))
    return ApproxProblem{CdShift, Text::ApproxShiftOutside};
  if (!(v.stallCdAtClMax > v.cdMin))
    return ApproxProblem{StallCdAtClMax, Text::ApproxStallCdTooLow};
  if (!(v.stallCdAtClMin > v.cdMin))
    return ApproxProblem{StallCdAtClMin, Text::ApproxStallCdTooLow};
  // The power term must add drag towards both stall drags; a tilt that
  // alone climbs past one of them would turn the bucket upside down there.
  if (!(v.stallCdAtClMax - v.cdMin - v.cdTilt * (v.clMax - v.cdShift) > 0) ||
      !(v.stallCdAtClMin - v.cdMin + v.cdTilt * (v.cdShift - v.clMin) > 0))
    return ApproxProblem{CdTilt, Text::ApproxTiltTooSteep};
  const double stallEndMax = v.alfaZero + (2 - kApproxLinearShare) * LiftRun(v.clMax) + v.stallRangeClMax;
  const double stallEndMin = v.alfaZero - (2 - kApproxLinearShare) * LiftRun(v.clMin) - v.stallRangeClMin;
  if (!(stallEndMin > -90)) return ApproxProblem{StallRangeClMin, Text::ApproxStallEndsTooLate};
  if (!(stallEndMax < 90)) return ApproxProblem{StallRangeClMax, Text::ApproxStallEndsTooLate};
  return std::nullopt;
}

ApproxInputError::ApproxInputError(const ApproxProblem& problem)
    : RuntimeError(problem.messageId, "Invalid approximation value: ", std::string(ApproxFieldName(problem.field))),
      problem_(problem) {}

double FlatPlateCl(double alfa) { return kFlatPlateCd90 / 2 * std::sin(2 * alfa * kDegree); }

double FlatPlateCd(double alfa) {
  const double s = std::sin(alfa * kDegree);
  return kFlatPlateCd90 * s * s;
}

ApproxModel::ApproxModel(const ApproxValues& values) : values_(values) {
  if (auto problem = FindApproxProblem(values)) throw ApproxInputError(*problem);
  auto side = [&values](double sign, double clLimit, double stallCd, double range) {
    Side s{};
    s.sign = sign;
    s.clLimit = clLimit;
    s.stallCd = stallCd;
    const double run = LiftRun(clLimit);
    s.linearEnd = values.alfaZero + sign * kApproxLinearShare * run;
    s.stallAlfa = values.alfaZero + sign * (2 - kApproxLinearShare) * run;
    s.plateAlfa = s.stallAlfa + sign * range;
    s.bucketWidth = std::fabs(clLimit - values.cdShift);
    s.bucketRise = stallCd - values.cdMin - values.cdTilt * (clLimit - values.cdShift);
    return s;
  };
  upper_ = side(1, values.clMax, values.stallCdAtClMax, values.stallRangeClMax);
  lower_ = side(-1, values.clMin, values.stallCdAtClMin, values.stallRangeClMin);
  stallAlfaMax_ = upper_.stallAlfa;
  stallAlfaMin_ = lower_.stallAlfa;
}

double ApproxModel::Cl(double alfa) const {
  const Side& s = SideOf(alfa);
  const double beyond = s.sign * (alfa - s.stallAlfa);  // degrees past the stall angle
  if (beyond <= 0) {
    const double past = s.sign * (alfa - s.linearEnd);  // degrees into the rounding
    const double line = kApproxLiftSlope * (alfa - values_.alfaZero);
    if (past <= 0) return line;
    // A parabola that leaves the line with its slope and meets the limit
    // with none.
    const double rise = kApproxLiftSlope * past;
    return line - s.sign * rise * rise / (4 * (1 - kApproxLinearShare) * std::fabs(s.clLimit));
  }
  if (s.sign * (alfa - s.plateAlfa) >= 0) return FlatPlateCl(alfa);
  // Lift holds near the limit first and then falls to the plate.
  const double t = beyond / std::fabs(s.plateAlfa - s.stallAlfa);
  return s.clLimit + (FlatPlateCl(alfa) - s.clLimit) * t * t;
}

double ApproxModel::CdAtCl(double cl) const {
  const double x = cl - values_.cdShift;
  const Side& s = x >= 0 ? upper_ : lower_;
  // Written relative to the bucket's width so that no exponent overflows
  // between Cl Min and Cl Max.
  const double bucket =
      values_.cdMin + values_.cdTilt * x + s.bucketRise * std::pow(std::fabs(x) / s.bucketWidth, values_.cdExponent);
  // A steep tilt could take the bucket's low side below zero.
  return std::fmax(bucket, values_.cdMin / 2);
}

double ApproxModel::Cd(double alfa) const {
  const Side& s = SideOf(alfa);
  const double beyond = s.sign * (alfa - s.stallAlfa);
  if (beyond <= 0) return CdAtCl(Cl(alfa));
  if (s.sign * (alfa - s.plateAlfa) >= 0) return FlatPlateCd(alfa);
  // Drag climbs at once, as it does in the data, and eases into the plate.
  const double t = beyond / std::fabs(s.plateAlfa - s.stallAlfa);
  return s.stallCd + (FlatPlateCd(alfa) - s.stallCd) * t * (2 - t);
}

std::vector<PolarPoint> ApproxModel::Curve() const {
  std::vector<PolarPoint> points;
  points.reserve(181);
  for (int alfa = -90; alfa <= 90; ++alfa) {
    PolarPoint point;
    point.Alfa = alfa;
    point.Cl = Cl(alfa);
    point.Cd = Cd(alfa);
    points.push_back(point);
  }
  return points;
}

std::string ApproxInitializer(const ApproxValues& values, std::string_view name) {
  std::string text = "static const double ";
  text.append(name);
  text += "[11] = {\n";
  for (int i = 0; i < kApproxFieldCount; ++i) {
    const ApproxField field = ApproxFieldAt(i);
    text += "    " + ShortestNumberText(values[field]) + (i + 1 < kApproxFieldCount ? ", " : " ") + "/* ";
    text.append(ApproxFieldName(field));
    text += " */\n";
  }
  text += "};\n";
  return text;
}

}  // namespace tavilo
