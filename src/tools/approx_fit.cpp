#include "tools/approx_fit.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "tools/least_squares.h"

namespace tavilo {

namespace {

using enum ApproxField;

struct Sample {
  double alfa;
  double cl;
  double cd;
};

bool Usable(const PolarPoint& p) {
  return std::isfinite(p.Alfa) && std::isfinite(p.Cl) && std::isfinite(p.Cd) && p.Cd > 0 && p.Cd < 10 &&
         std::fabs(p.Cl) < 10 && std::fabs(p.Alfa) <= 90;
}

std::vector<Sample> UsableSamples(std::span<const PolarPoint> points, double alfaFrom, double alfaTo) {
  std::vector<Sample> samples;
  for (const PolarPoint& p : points)
    if (Usable(p) && p.Alfa >= alfaFrom && p.Alfa <= alfaTo) samples.push_back({p.Alfa, p.Cl, p.Cd});
  std::stable_sort(samples.begin(), samples.end(), [](const Sample& a, const Sample& b) { return a.alfa < b.alfa; });
  return samples;
}

double DragAt(const ApproxModel& model, const Sample& s) {
  return model.Attached(s.alfa) ? model.CdAtCl(s.cl) : model.Cd(s.alfa);
}

double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Each value the median of itself and its neighbours: a single wild point
// can then neither make a peak nor a bucket's bottom.
std::vector<double> MedianOfThree(const std::vector<Sample>& samples, double Sample::*field) {
  std::vector<double> smooth(samples.size());
  for (size_t i = 0; i < samples.size(); ++i) {
    if (i == 0 || i + 1 == samples.size()) {
      smooth[i] = samples[i].*field;
      continue;
    }
    double a = samples[i - 1].*field, b = samples[i].*field, c = samples[i + 1].*field;
    smooth[i] = std::max(std::min(a, b), std::min(std::max(a, b), c));
  }
  return smooth;
}

// The fields in the order their ranges depend on each other: each range
// follows from fields before it only.
constexpr ApproxField kOrder[kApproxFieldCount] = {AlfaZero,        ClMax,          ClMin,      StallRangeClMax,
                                                   StallRangeClMin, CdMin,          CdExponent, CdShift,
                                                   StallCdAtClMax,  StallCdAtClMin, CdTilt};
constexpr int Index(ApproxField field) { return static_cast<int>(field); }

// Drags span decades, so they move on a log scale.
bool LogScale(ApproxField field) { return field == CdMin || field == StallCdAtClMax || field == StallCdAtClMin; }

// The range a fitted value may take: its own, a hair inside the ends,
// some of which the value may not reach.
ApproxRange InnerRange(ApproxField field, const ApproxValues& v) {
  const ApproxRange r = ApproxFieldRange(field, v);
  const double margin = 1e-6 * (r.high - r.low);
  return {r.low + margin, r.high - margin};
}

double Place(double share, ApproxRange r, bool log) {
  return log ? r.low * std::pow(r.high / r.low, share) : r.low + (r.high - r.low) * share;
}

double ShareOf(double value, ApproxRange r, bool log) {
  const double share = log ? std::log(value / r.low) / std::log(r.high / r.low) : (value - r.low) / (r.high - r.low);
  return std::clamp(share, 1e-6, 1 - 1e-6);
}

// The solver works on unbounded numbers, each the logit of a value's place
// in its range: every step gives values inside their ranges.
double Logistic(double theta) { return 1 / (1 + std::exp(-std::clamp(theta, -30.0, 30.0))); }
double Logit(double share) { return std::log(share / (1 - share)); }

constexpr double kSoftScale = 5;

// The soft-L1 loss as a residual whose square it is: quadratic for small
// errors, linear for large ones, so that a few wild points or a stall the
// model follows only roughly cannot pull the rest away.
double SoftResidual(double z) {
  constexpr double c = kSoftScale;
  return c * std::copysign(std::sqrt(2 * (std::sqrt(1 + z * z / (c * c)) - 1)), z);
}

class Fitter {
 public:
  Fitter(std::vector<Sample> samples, const ApproxFitOptions& options);
  ApproxFit Run();

 private:
  void Estimate();
  void EstimateLimits();
  void EstimateBucket();
  void SettleRanges();
  void Minimize(std::initializer_list<ApproxField> fields, bool lift, bool drag);
  ApproxValues ValuesOf(const std::vector<double>& theta, const std::vector<ApproxField>& free) const;
  double Cost(const ApproxValues& values) const;
  void Residuals(const ApproxValues& values, bool lift, bool drag, std::vector<double>& out) const;
  bool MarkWildPoints();
  void Solve();
  bool Free(ApproxField field) const { return free_[Index(field)] && !held_[Index(field)]; }

  std::vector<Sample> samples_;
  std::vector<bool> wild_;
  std::vector<double> smoothCl_;
  std::vector<double> smoothCd_;
  std::array<bool, kApproxFieldCount> held_;
  std::array<bool, kApproxFieldCount> free_{};
  ApproxValues values_;
  bool upperStall_ = false;
  bool lowerStall_ = false;
  size_t first_ = 0;  // the attached points, from the lowest to the highest lift
  size_t last_ = 0;
  double minCd_ = 0.01;
};

Fitter::Fitter(std::vector<Sample> samples, const ApproxFitOptions& options)
    : samples_(std::move(samples)), wild_(samples_.size(), false), held_(options.held), values_(options.values) {
  smoothCl_ = MedianOfThree(samples_, &Sample::cl);
  smoothCd_ = MedianOfThree(samples_, &Sample::cd);
}

// Held values take part as they are; every other one is moved into its
// range in the order the ranges depend on each other.
void Fitter::SettleRanges() {
  for (ApproxField field : kOrder) {
    if (held_[Index(field)]) continue;
    const ApproxRange r = InnerRange(field, values_);
    if (r.low <= r.high) values_[field] = std::clamp(values_[field], r.low, r.high);
  }
}

// Starting values read off the data, and which values the data carry:
// a limit and its stall range when the lift shows a stall on that side,
// a stall drag and the tilt when a side of the bucket has two points.
void Fitter::Estimate() {
  const size_t n = samples_.size();
  const size_t top = static_cast<size_t>(std::max_element(smoothCl_.begin(), smoothCl_.end()) - smoothCl_.begin());
  const size_t bottom = static_cast<size_t>(std::min_element(smoothCl_.begin(), smoothCl_.end()) - smoothCl_.begin());
  // A stall shows as a peak of the smoothed lift with at least two points
  // beyond it, the last one lower.
  upperStall_ = n - 1 - top >= 2 && smoothCl_[n - 1] < smoothCl_[top];
  lowerStall_ = bottom >= 2 && smoothCl_[0] > smoothCl_[bottom];
  first_ = lowerStall_ ? bottom : 0;
  last_ = upperStall_ ? top : n - 1;
  if (first_ >= last_) first_ = 0, last_ = n - 1;
  // Zero lift from the straight part of the line: the points below 60 % of
  // the extreme lifts, each giving the angle the slope would reach zero at.
  const double topCl = smoothCl_[top], bottomCl = smoothCl_[bottom];
  std::vector<double> zeros;
  for (size_t i = first_; i <= last_; ++i) {
    const double c = samples_[i].cl;
    if ((topCl <= 0 || c <= 0.6 * topCl) && (bottomCl >= 0 || c >= 0.6 * bottomCl))
      zeros.push_back(samples_[i].alfa - c / kApproxLiftSlope);
  }
  if (zeros.size() < 2)
    for (size_t i = first_; i <= last_; ++i) zeros.push_back(samples_[i].alfa - samples_[i].cl / kApproxLiftSlope);
  auto set = [this](ApproxField field, double value, bool carried) {
    if (held_[Index(field)]) return;
    values_[field] = value;
    free_[Index(field)] = carried;
  };
  set(AlfaZero, Median(zeros), zeros.size() >= 2);
  set(ClMax, topCl, upperStall_);
  set(ClMin, bottomCl, lowerStall_);
  set(StallRangeClMax, ApproxValues{}.stallRangeClMax, upperStall_);
  set(StallRangeClMin, ApproxValues{}.stallRangeClMin, lowerStall_);
  EstimateLimits();
  EstimateBucket();
}

// A limit the data do not show lies where a typical section stalls, 15
// degrees from zero lift, but clearly beyond the data's own extreme; its
// stall range is the other side's when that one is shown.
void Fitter::EstimateLimits() {
  const double topCl = *std::max_element(smoothCl_.begin(), smoothCl_.end());
  const double bottomCl = *std::min_element(smoothCl_.begin(), smoothCl_.end());
  const double run = 2 - kApproxLinearShare;
  if (!upperStall_ && !held_[Index(ClMax)])
    values_.clMax = std::max(kApproxLiftSlope * (15 - values_.alfaZero) / run, topCl + 0.1);
  if (!lowerStall_ && !held_[Index(ClMin)])
    values_.clMin = std::min(-kApproxLiftSlope * (15 + values_.alfaZero) / run, bottomCl - 0.1);
  if (!upperStall_ && lowerStall_ && !held_[Index(StallRangeClMax)]) values_.stallRangeClMax = values_.stallRangeClMin;
  if (!lowerStall_ && upperStall_ && !held_[Index(StallRangeClMin)]) values_.stallRangeClMin = values_.stallRangeClMax;
  SettleRanges();
}

// The bucket: its bottom at the least drag of the attached points, a
// parabola on each side through the rest, the stall drags where those
// parabolas reach the limits.
void Fitter::EstimateBucket() {
  const auto begin = smoothCd_.begin() + static_cast<std::ptrdiff_t>(first_);
  const size_t least = static_cast<size_t>(
      std::min_element(begin, begin + static_cast<std::ptrdiff_t>(last_ - first_ + 1)) - smoothCd_.begin());
  minCd_ = std::max(smoothCd_[least], kApproxCdMinRange.low);
  auto set = [this](ApproxField field, double value, bool carried) {
    if (held_[Index(field)]) return;
    values_[field] = value;
    free_[Index(field)] = carried;
  };
  set(CdMin, minCd_, true);
  set(CdExponent, 2, true);
  set(CdShift, samples_[least].cl, true);
  SettleRanges();
  double sums[2][2] = {};  // per side: sum of (Cd - Cd Min) x^2, sum of x^4
  int counts[2] = {};
  for (size_t i = first_; i <= last_; ++i) {
    const double x = samples_[i].cl - values_.cdShift;
    const int side = x >= 0 ? 0 : 1;
    sums[side][0] += (smoothCd_[i] - values_.cdMin) * x * x;
    sums[side][1] += x * x * x * x;
    counts[side] += i != least;
  }
  double c[2];
  for (int k = 0; k < 2; ++k) c[k] = sums[k][1] > 0 ? std::max(sums[k][0] / sums[k][1], 1e-4) : 0;
  // A side of the bucket without points takes the other side's shape.
  if (c[0] == 0) c[0] = c[1] > 0 ? c[1] : 0.02;
  if (c[1] == 0) c[1] = c[0];
  const bool upper = counts[0] >= 2 || upperStall_, lower = counts[1] >= 2 || lowerStall_;
  set(StallCdAtClMax, values_.cdMin + c[0] * std::pow(values_.clMax - values_.cdShift, 2), upper);
  set(StallCdAtClMin, values_.cdMin + c[1] * std::pow(values_.cdShift - values_.clMin, 2), lower);
  set(CdTilt, 0, upper && lower);
  SettleRanges();
}

ApproxValues Fitter::ValuesOf(const std::vector<double>& theta, const std::vector<ApproxField>& free) const {
  ApproxValues v = values_;
  for (ApproxField field : kOrder) {
    const auto k = std::find(free.begin(), free.end(), field);
    if (k != free.end()) {
      v[field] = Place(Logistic(theta[static_cast<size_t>(k - free.begin())]), InnerRange(field, v), LogScale(field));
    } else if (!held_[Index(field)]) {
      // An estimate follows the fitted values into its range.
      const ApproxRange r = InnerRange(field, v);
      if (r.low <= r.high) v[field] = std::clamp(v[field], r.low, r.high);
    }
  }
  return v;
}

// Lift errors count in twentieths. Drag errors count in quarters of the
// point's own drag, but none coarser than three quarters of the least
// drag: the bucket is then fitted by its shape, and the stalled points,
// which the flat plate meets only roughly, do not swamp it.
void Fitter::Residuals(const ApproxValues& values, bool lift, bool drag, std::vector<double>& out) const {
  out.assign(samples_.size() * 2, 0.0);
  if (FindApproxProblem(values)) {
    // Held values that do not stand with these: the solver refuses the step.
    out.assign(out.size(), NAN);
    return;
  }
  const ApproxModel model(values);
  for (size_t i = 0; i < samples_.size(); ++i) {
    if (wild_[i]) continue;
    const Sample& s = samples_[i];
    if (lift) out[2 * i] = SoftResidual((model.Cl(s.alfa) - s.cl) / 0.05);
    if (drag) out[2 * i + 1] = SoftResidual((DragAt(model, s) - s.cd) / (0.25 * std::clamp(s.cd, minCd_, 3 * minCd_)));
  }
}

double Fitter::Cost(const ApproxValues& values) const {
  std::vector<double> r;
  Residuals(values, true, true, r);
  double sum = 0;
  for (double x : r) sum += x * x;
  return std::isfinite(sum) ? sum : INFINITY;
}

void Fitter::Minimize(std::initializer_list<ApproxField> fields, bool lift, bool drag) {
  std::vector<ApproxField> free;
  for (ApproxField field : kOrder)
    if (Free(field) && std::find(fields.begin(), fields.end(), field) != fields.end()) free.push_back(field);
  if (free.empty()) return;
  std::vector<double> theta;
  ApproxValues v = values_;
  for (ApproxField field : free) {
    const ApproxRange r = InnerRange(field, v);
    theta.push_back(Logit(ShareOf(v[field], r, LogScale(field))));
  }
  MinimizeSquares(theta, [&](std::span<const double> t, std::vector<double>& out) {
    Residuals(ValuesOf(std::vector<double>(t.begin(), t.end()), free), lift, drag, out);
  });
  const ApproxValues fitted = ValuesOf(theta, free);
  if (!FindApproxProblem(fitted)) values_ = fitted;
}

// A point is wild when its lift misses by eight times the typical error
// and at least 0.3, or its drag by eight times and at least a factor of
// two: it is left out of the fit (not of the errors reported).
bool Fitter::MarkWildPoints() {
  const ApproxModel model(values_);
  std::vector<double> liftErrors, dragErrors;
  for (size_t i = 0; i < samples_.size(); ++i) {
    liftErrors.push_back(std::fabs(model.Cl(samples_[i].alfa) - samples_[i].cl));
    dragErrors.push_back(std::fabs(std::log(samples_[i].cd / DragAt(model, samples_[i]))));
  }
  const double liftLimit = std::max(8 * 1.4826 * Median(liftErrors), 0.3);
  const double dragLimit = std::max(8 * 1.4826 * Median(dragErrors), std::log(2.0));
  bool found = false;
  for (size_t i = 0; i < samples_.size(); ++i) {
    const bool wild = liftErrors[i] > liftLimit || dragErrors[i] > dragLimit;
    found = found || wild != wild_[i];
    wild_[i] = wild;
  }
  return found && std::count(wild_.begin(), wild_.end(), false) >= kApproxFitMinPoints;
}

// Attached lift first, then its stall, then the bucket, then all together;
// the estimated limits follow the fitted zero-lift angle.
void Fitter::Solve() {
  Minimize({AlfaZero}, true, false);
  // The stall ranges from short, middle and long ones.
  const ApproxValues attached = values_;
  ApproxValues bestLift = values_;
  double bestLiftCost = INFINITY;
  for (double range : {3.0, 8.0, 15.0}) {
    values_ = attached;
    for (ApproxField field : {StallRangeClMax, StallRangeClMin})
      if (Free(field)) values_[field] = range;
    SettleRanges();
    Minimize({AlfaZero, ClMax, ClMin, StallRangeClMax, StallRangeClMin}, true, false);
    const double cost = Cost(values_);
    if (cost < bestLiftCost) bestLiftCost = cost, bestLift = values_;
  }
  values_ = bestLift;
  EstimateLimits();
  // The bucket from a few exponents, which give it more than one local minimum.
  const ApproxValues lifted = values_;
  ApproxValues best = values_;
  double bestCost = INFINITY;
  for (double exponent : {1.5, 2.0, 3.0, 5.0}) {
    values_ = lifted;
    if (Free(CdExponent)) values_.cdExponent = exponent;
    SettleRanges();
    Minimize({CdMin, CdShift, CdExponent, CdTilt, StallCdAtClMax, StallCdAtClMin}, false, true);
    Minimize({AlfaZero, ClMax, ClMin, StallRangeClMax, StallRangeClMin, CdMin, CdShift, CdExponent, CdTilt,
              StallCdAtClMax, StallCdAtClMin},
             true, true);
    const double cost = Cost(values_);
    if (cost < bestCost) bestCost = cost, best = values_;
    if (!Free(CdExponent)) break;
  }
  values_ = best;
}

ApproxFit Fitter::Run() {
  Estimate();
  if (const std::optional<ApproxProblem> problem = FindApproxProblem(values_)) throw ApproxInputError(*problem);
  const ApproxValues start = values_;
  Solve();
  // Wild points found, the fit starts again without them.
  if (MarkWildPoints()) {
    values_ = start;
    Solve();
  } else {
    std::fill(wild_.begin(), wild_.end(), false);
  }

  // A stall range and its drag are carried by two points beyond the
  // fitted stall angle; without them the range is the other side's when
  // that one is carried, else the initial one, and the fit ends with it so;
  // the stall drag is the bucket's at the limit.
  const ApproxModel model(values_);
  const auto beyond = [this](auto past) { return std::count_if(samples_.begin(), samples_.end(), past) >= 2; };
  const bool upper = beyond([&](const Sample& s) { return s.alfa > model.StallAlfaMax(); });
  const bool lower = beyond([&](const Sample& s) { return s.alfa < model.StallAlfaMin(); });
  std::array<bool, kApproxFieldCount> carried = free_;
  for (ApproxField field : {StallRangeClMax, StallCdAtClMax}) carried[Index(field)] = carried[Index(field)] && upper;
  for (ApproxField field : {StallRangeClMin, StallCdAtClMin}) carried[Index(field)] = carried[Index(field)] && lower;
  if (free_[Index(StallRangeClMax)] != carried[Index(StallRangeClMax)] ||
      free_[Index(StallRangeClMin)] != carried[Index(StallRangeClMin)]) {
    free_[Index(StallRangeClMax)] = carried[Index(StallRangeClMax)];
    free_[Index(StallRangeClMin)] = carried[Index(StallRangeClMin)];
    if (!carried[Index(StallRangeClMax)] && !held_[Index(StallRangeClMax)])
      values_.stallRangeClMax =
          carried[Index(StallRangeClMin)] ? values_.stallRangeClMin : ApproxValues{}.stallRangeClMax;
    if (!carried[Index(StallRangeClMin)] && !held_[Index(StallRangeClMin)])
      values_.stallRangeClMin =
          carried[Index(StallRangeClMax)] ? values_.stallRangeClMax : ApproxValues{}.stallRangeClMin;
    SettleRanges();
    Minimize({AlfaZero, ClMax, ClMin, CdMin, CdShift, CdExponent, CdTilt, StallCdAtClMax, StallCdAtClMin}, true, true);
  }

  if (Cost(values_) > Cost(start)) values_ = start;

  ApproxFit fit;
  fit.values = values_;
  for (int i = 0; i < kApproxFieldCount; ++i) {
    fit.estimated[i] = !carried[i] && !held_[i];
    fit.fittedCount += carried[i] && !held_[i];
  }
  return fit;
}

}  // namespace

ApproxErrors ApproxFitErrors(const ApproxModel& model, std::span<const PolarPoint> points, double alfaFrom,
                             double alfaTo) {
  ApproxErrors errors;
  double sumCl = 0, sumCd = 0;
  for (const Sample& s : UsableSamples(points, alfaFrom, alfaTo)) {
    const double dl = model.Cl(s.alfa) - s.cl;
    const double dd = DragAt(model, s) - s.cd;
    sumCl += dl * dl;
    sumCd += dd * dd;
    ++errors.points;
  }
  if (errors.points > 0) {
    errors.rmsCl = std::sqrt(sumCl / errors.points);
    errors.rmsCd = std::sqrt(sumCd / errors.points);
  }
  return errors;
}

ApproxPolarRefusedError::ApproxPolarRefusedError(const Polar& polar)
    : RuntimeError(Text::ApproxPolarRefused,
                   "Too few points or too narrow for an approximation: Re=" + ShortestNumberText(polar.ReynoldsNumber) +
                       ", Mach=" + ShortestNumberText(polar.MachNumber),
                   {ShortestNumberText(polar.ReynoldsNumber), ShortestNumberText(polar.MachNumber)}) {}

ApproxFit FitApproximation(const Polar& polar, const ApproxFitOptions& options) {
  std::vector<Sample> samples = UsableSamples(polar.Points(), options.alfaFrom, options.alfaTo);
  if (samples.size() < kApproxFitMinPoints || samples.back().alfa - samples.front().alfa < kApproxFitMinSpan)
    throw ApproxPolarRefusedError(polar);
  ApproxFit fit = Fitter(std::move(samples), options).Run();
  fit.errors = ApproxFitErrors(ApproxModel(fit.values), polar.Points(), options.alfaFrom, options.alfaTo);
  return fit;
}

std::string ApproxFitComment(std::string_view airfoil, const Polar& polar, const ApproxErrors& errors) {
  std::string name(airfoil);
  for (size_t p = name.find("*/"); p != std::string::npos; p = name.find("*/", p)) name.replace(p, 2, "* /");
  return "/* " + name + ", Re=" + ShortestNumberText(polar.ReynoldsNumber) +
         ", Mach=" + ShortestNumberText(polar.MachNumber) + ": rms Cl " + SignificantNumberText(errors.rmsCl, 3) +
         ", rms Cd " + SignificantNumberText(errors.rmsCd, 3) + " over " + ShortestNumberText(errors.points) +
         " points */\n";
}

}  // namespace tavilo
