#include "tools/approximation.h"

#include <algorithm>
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
    "Cd Tilt",   "Stall Cd at Cl Max", "Stall Cd at Cl Min", "Cd Shift", "Cd Exponent",
    "Cd Min",    "Stall Range Cl Min", "Stall Range Cl Max", "Cl Max",   "Cl Min",
    "Alfa Zero",
};

constexpr double kDegree = 3.14159265358979323846 / 180;

// How far, in degrees, the lift line takes from zero lift to `cl` at the
// model's slope.
double LiftRun(double cl) { return std::fabs(cl) / kApproxLiftSlope; }

double StallAlfa(const ApproxValues& v, double sign, double clLimit) {
  return v.alfaZero + sign * (2 - kApproxLinearShare) * LiftRun(clLimit);
}

// Written as negations so that a NaN, which compares false, is refused too.
bool Outside(double value, ApproxRange range) { return !(value >= range.low && value <= range.high); }

}  // namespace

double ApproxPlateAlfaMax(const ApproxValues& v) { return StallAlfa(v, 1, v.clMax) + v.stallRangeClMax; }
double ApproxPlateAlfaMin(const ApproxValues& v) { return StallAlfa(v, -1, v.clMin) - v.stallRangeClMin; }

ApproxRange ApproxFieldRange(ApproxField field, const ApproxValues& v) {
  using enum ApproxField;
  switch (field) {
    case AlfaZero: return kApproxAlfaZeroRange;
    case ClMax: return kApproxClMaxRange;
    case ClMin: return kApproxClMinRange;
    // A stall range ends on its own side of zero angle, where the plate's
    // drag only grows outwards.
    case StallRangeClMax:
      return {std::max(kApproxStallRangeRange.low, -StallAlfa(v, 1, v.clMax)), kApproxStallRangeRange.high};
    case StallRangeClMin:
      return {std::max(kApproxStallRangeRange.low, StallAlfa(v, -1, v.clMin)), kApproxStallRangeRange.high};
    case CdMin: return kApproxCdMinRange;
    case CdExponent: return kApproxCdExponentRange;
    case CdShift: return {v.clMin, v.clMax};
    // A stall drag above the plate's where the stall range ends would make
    // the drag fall as the angle grows.
    case StallCdAtClMax: return {v.cdMin, FlatPlateCd(ApproxPlateAlfaMax(v))};
    case StallCdAtClMin: return {v.cdMin, FlatPlateCd(ApproxPlateAlfaMin(v))};
    // The tilt leans the bucket, it does not move its bottom far from Cd
    // Min; past the other ends the tilt alone would climb to a stall drag and turn
    // the bucket's power term negative, so the drag would fall towards it.
    case CdTilt:
      return {std::max(-kApproxTiltShare * v.cdMin, -(v.stallCdAtClMin - v.cdMin) / (v.cdShift - v.clMin)),
              std::min(kApproxTiltShare * v.cdMin, (v.stallCdAtClMax - v.cdMin) / (v.clMax - v.cdShift))};
  }
  return {0, 0};
}

double& ApproxValues::operator[](ApproxField field) { return this->*kFields[static_cast<int>(field)]; }
double ApproxValues::operator[](ApproxField field) const { return this->*kFields[static_cast<int>(field)]; }

std::string_view ApproxFieldName(ApproxField field) { return kFieldNames[static_cast<int>(field)]; }

std::optional<ApproxProblem> FindApproxProblem(const ApproxValues& v) {
  using enum ApproxField;
  for (int i = 0; i < kApproxFieldCount; ++i)
    if (!std::isfinite(v[ApproxFieldAt(i)])) return ApproxProblem{ApproxFieldAt(i), Text::ApproxNotFinite};
  for (ApproxField field : {AlfaZero, ClMax, ClMin, StallRangeClMax, StallRangeClMin, CdMin, CdExponent}) {
    const ApproxRange range = ApproxFieldRange(field, v);
    if (Outside(v[field], range)) return ApproxProblem{field, Text::ApproxOutOfRange, range.low, range.high};
  }
  if (!(v.cdShift > v.clMin && v.cdShift < v.clMax)) return ApproxProblem{CdShift, Text::ApproxShiftOutside};
  // A stall drag may reach the plate's but not Cd Min; the tilt reaches
  // neither end.
  for (ApproxField field : {StallCdAtClMax, StallCdAtClMin, CdTilt}) {
    const ApproxRange range = ApproxFieldRange(field, v);
    if (Outside(v[field], range) || v[field] == range.low || (field == CdTilt && v[field] == range.high))
      return ApproxProblem{field, Text::ApproxOutOfRange, range.low, range.high};
  }
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
    s.linearEnd = values.alfaZero + sign * kApproxLinearShare * LiftRun(clLimit);
    s.stallAlfa = StallAlfa(values, sign, clLimit);
    s.plateAlfa = s.stallAlfa + sign * range;
    s.plateCd = FlatPlateCd(s.plateAlfa);
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
  // Lift leaves the limit and meets the plate each with the other's slope
  // (a smooth step), so that no join shows a kink.
  const double t = beyond / std::fabs(s.plateAlfa - s.stallAlfa);
  return s.clLimit + (FlatPlateCl(alfa) - s.clLimit) * t * t * (3 - 2 * t);
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
  // Drag leaves the stall drag with the slope the bucket has there, none,
  // and climbs ever faster, as the sweeps show it, to the plate's drag at
  // the range's end; aiming at that fixed value (not the plate's drag at
  // each angle, which lies below the stall drag near it) keeps the drag
  // from falling on the way.
  const double t = beyond / std::fabs(s.plateAlfa - s.stallAlfa);
  return s.stallCd + (s.plateCd - s.stallCd) * t;
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

ApproxValues ApproxShownValues(const ApproxValues& values) {
  const bool valid = !FindApproxProblem(values);
  ApproxValues shown;
  for (int digits = 6;; ++digits) {
    for (int i = 0; i < kApproxFieldCount; ++i)
      shown[ApproxFieldAt(i)] = WholeNumber(SignificantNumberText(values[ApproxFieldAt(i)], digits)).value_or(NAN);
    // 17 digits read back exactly, so the loop ends there at the latest.
    if (!valid || !FindApproxProblem(shown) || digits >= 17) return shown;
  }
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
