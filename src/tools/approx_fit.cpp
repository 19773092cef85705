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

struct Sample {
  double alfa;
  double cl;
  double cd;
};

bool Usable(const PolarPoint& p) {
  return std::isfinite(p.Alfa) && std::isfinite(p.Cl) && std::isfinite(p.Cd) && p.Cd > 0 && p.Cd < 10 &&
         std::fabs(p.Cl) < 10 && std::fabs(p.Alfa) <= 90;
}

std::vector<Sample> UsableSamples(std::span<const PolarPoint> points) {
  std::vector<Sample> samples;
  for (const PolarPoint& p : points)
    if (Usable(p)) samples.push_back({p.Alfa, p.Cl, p.Cd});
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

// The fit works on unbounded parameters that map onto valid values, so
// that every step of the solver gives a model FindApproxProblem accepts.
enum Param { kAlfaZero, kClMax, kClMin, kRangeMax, kRangeMin, kCdMin, kExponent, kShift, kBucketUpper, kBucketLower, kTilt };
constexpr int kParamCount = 11;
using Theta = std::vector<double>;

// The bounds keep every stall inside +-90 degrees: 20 + 1.3 * 3.5 / 0.11 + 25 < 90.
constexpr double kAlfaZeroBound = 20;
constexpr double kClBounds[2] = {0.05, 3.5};
constexpr double kRangeBounds[2] = {0.5, 25};
constexpr double kExponentBounds[2] = {1.05, 8};

double Squash(double theta, double low, double high) {
  return low + (high - low) / (1 + std::exp(-std::clamp(theta, -30.0, 30.0)));
}

double Unsquash(double value, double low, double high) {
  const double q = std::clamp((value - low) / (high - low), 1e-9, 1 - 1e-9);
  return std::log(q / (1 - q));
}

// The power term's coefficients c of c |Cl - Cd Shift|^e on each side.
struct BucketCoefficients {
  double upper;
  double lower;
};

BucketCoefficients CoefficientsOf(const Theta& t) {
  return {std::exp(std::clamp(t[kBucketUpper], -20.0, 5.0)), std::exp(std::clamp(t[kBucketLower], -20.0, 5.0))};
}

ApproxValues ValuesOf(const Theta& t) {
  ApproxValues v;
  v.alfaZero = Squash(t[kAlfaZero], -kAlfaZeroBound, kAlfaZeroBound);
  v.clMax = Squash(t[kClMax], kClBounds[0], kClBounds[1]);
  v.clMin = -Squash(t[kClMin], kClBounds[0], kClBounds[1]);
  v.stallRangeClMax = Squash(t[kRangeMax], kRangeBounds[0], kRangeBounds[1]);
  v.stallRangeClMin = Squash(t[kRangeMin], kRangeBounds[0], kRangeBounds[1]);
  v.cdMin = std::exp(std::clamp(t[kCdMin], -12.0, 0.0));
  v.cdExponent = Squash(t[kExponent], kExponentBounds[0], kExponentBounds[1]);
  v.cdShift = Squash(t[kShift], v.clMin, v.clMax);
  const double upper = v.clMax - v.cdShift;
  const double lower = v.cdShift - v.clMin;
  const BucketCoefficients c = CoefficientsOf(t);
  // What the power term adds at each stall; never so little that the stall
  // drag could not be told from Cd Min.
  const double riseUpper = std::max(c.upper * std::pow(upper, v.cdExponent), 1e-6 * v.cdMin);
  const double riseLower = std::max(c.lower * std::pow(lower, v.cdExponent), 1e-6 * v.cdMin);
  // Inside these limits the power term still adds drag towards both stalls.
  v.cdTilt = Squash(t[kTilt], -0.98 * riseUpper / upper, 0.98 * riseLower / lower);
  v.stallCdAtClMax = v.cdMin + v.cdTilt * upper + riseUpper;
  v.stallCdAtClMin = v.cdMin - v.cdTilt * lower + riseLower;
  return v;
}

class Fitter {
 public:
  explicit Fitter(std::vector<Sample> samples)
      : samples_(std::move(samples)), wild_(samples_.size(), false), theta_(kParamCount, 0.0) {}

  ApproxFit Run();

 private:
  void Estimate();
  std::pair<size_t, size_t> EstimateLift(const std::vector<double>& cl);
  void EstimateBucket(const std::vector<double>& cl, const std::vector<double>& cd, size_t first, size_t last);
  void SetDefaultLimits();
  double Minimize(std::initializer_list<Param> candidates, bool lift, bool drag);
  void Residuals(const Theta& theta, bool lift, bool drag, std::vector<double>& out) const;
  bool MarkWildPoints(const ApproxModel& model);

  std::vector<Sample> samples_;
  std::vector<bool> wild_;
  Theta theta_;
  std::array<bool, kParamCount> fixed_{};
  bool upperStall_ = false;
  bool lowerStall_ = false;
  double topCl_ = 0;
  double bottomCl_ = 0;
  double minCd_ = 1;  // of the attached points, single wild ones passed over
};

// Lift errors count in twentieths. Drag errors count in quarters of the
// point's own drag, but none coarser than three quarters of the minimum
// drag: the bucket is then fitted by its shape, and the stalled points,
// which the flat plate meets only roughly, do not swamp it.
void Fitter::Residuals(const Theta& theta, bool lift, bool drag, std::vector<double>& out) const {
  out.assign(samples_.size() * 2, 0.0);
  const ApproxValues values = ValuesOf(theta);
  if (FindApproxProblem(values)) {
    // Not expected, as ValuesOf maps onto valid values; the solver refuses the step.
    out.assign(out.size(), NAN);
    return;
  }
  const ApproxModel model(values);
  for (size_t i = 0; i < samples_.size(); ++i) {
    if (wild_[i]) continue;
    const Sample& s = samples_[i];
    if (lift) out[2 * i] = (model.Cl(s.alfa) - s.cl) / 0.05;
    if (drag) out[2 * i + 1] = (DragAt(model, s) - s.cd) / (0.25 * std::clamp(s.cd, minCd_, 3 * minCd_));
  }
}

double Fitter::Minimize(std::initializer_list<Param> candidates, bool lift, bool drag) {
  std::vector<Param> free;
  for (Param p : candidates)
    if (!fixed_[p]) free.push_back(p);
  std::vector<double> start;
  for (Param p : free) start.push_back(theta_[p]);
  Theta trial = theta_;
  const double cost = MinimizeSquares(
      start,
      [&](std::span<const double> values, std::vector<double>& out) {
        for (size_t k = 0; k < free.size(); ++k) trial[free[k]] = values[k];
        Residuals(trial, lift, drag, out);
      });
  for (size_t k = 0; k < free.size(); ++k) theta_[free[k]] = start[k];
  return cost;
}

// Starting values from the data alone, robust to single wild points, and
// which values the data cannot show.
void Fitter::Estimate() {
  const std::vector<double> cl = MedianOfThree(samples_, &Sample::cl);
  const auto [first, last] = EstimateLift(cl);
  EstimateBucket(cl, MedianOfThree(samples_, &Sample::cd), first, last);
}

// The lift's values and the attached points' index range.
std::pair<size_t, size_t> Fitter::EstimateLift(const std::vector<double>& cl) {
  const size_t n = samples_.size();
  const size_t top = static_cast<size_t>(std::max_element(cl.begin(), cl.end()) - cl.begin());
  const size_t bottom = static_cast<size_t>(std::min_element(cl.begin(), cl.end()) - cl.begin());
  topCl_ = cl[top];
  bottomCl_ = cl[bottom];
  // A stall shows as a peak with lift falling over at least two points beyond it.
  upperStall_ = n - 1 - top >= 2 && cl[n - 1] < cl[top] - 0.02;
  lowerStall_ = bottom >= 2 && cl[0] > cl[bottom] + 0.02;
  size_t first = lowerStall_ ? bottom : 0;
  size_t last = upperStall_ ? top : n - 1;
  if (first >= last) first = 0, last = n - 1;

  // Zero lift from the straight part of the line: the points below 60 % of
  // the extreme lifts, each giving the angle the slope would reach zero at.
  std::vector<double> zeros;
  for (size_t i = first; i <= last; ++i) {
    const double c = samples_[i].cl;
    if ((topCl_ <= 0 || c <= 0.6 * topCl_) && (bottomCl_ >= 0 || c >= 0.6 * bottomCl_))
      zeros.push_back(samples_[i].alfa - c / kApproxLiftSlope);
  }
  if (zeros.empty())
    for (size_t i = first; i <= last; ++i) zeros.push_back(samples_[i].alfa - samples_[i].cl / kApproxLiftSlope);
  theta_[kAlfaZero] = Unsquash(Median(zeros), -kAlfaZeroBound, kAlfaZeroBound);
  theta_[kClMax] = Unsquash(std::max(topCl_, kClBounds[0]), kClBounds[0], kClBounds[1]);
  theta_[kClMin] = Unsquash(std::max(-bottomCl_, kClBounds[0]), kClBounds[0], kClBounds[1]);
  theta_[kRangeMax] = Unsquash(ApproxValues{}.stallRangeClMax, kRangeBounds[0], kRangeBounds[1]);
  theta_[kRangeMin] = Unsquash(ApproxValues{}.stallRangeClMin, kRangeBounds[0], kRangeBounds[1]);
  fixed_[kClMax] = fixed_[kRangeMax] = !upperStall_;
  fixed_[kClMin] = fixed_[kRangeMin] = !lowerStall_;
  SetDefaultLimits();
  return {first, last};
}

// The bucket: its bottom at the least drag of the attached points, a
// parabola on each side to start from.
void Fitter::EstimateBucket(const std::vector<double>& cl, const std::vector<double>& cd, size_t first,
                            size_t last) {
  const size_t least = static_cast<size_t>(std::min_element(cd.begin() + static_cast<std::ptrdiff_t>(first),
                                                            cd.begin() + static_cast<std::ptrdiff_t>(last) + 1) -
                                           cd.begin());
  const double cdMin = cd[least];
  minCd_ = std::max(cdMin, 1e-5);
  const ApproxValues limits = ValuesOf(theta_);
  const double shift = std::clamp(cl[least], limits.clMin + 0.01, limits.clMax - 0.01);
  double sums[2][2] = {};  // per side: sum of (Cd - Cd Min) x^2, sum of x^4
  for (size_t i = first; i <= last; ++i) {
    const double x = samples_[i].cl - shift;
    double* side = sums[x >= 0 ? 0 : 1];
    side[0] += (cd[i] - cdMin) * x * x;
    side[1] += x * x * x * x;
  }
  double c[2];
  for (int k = 0; k < 2; ++k) c[k] = sums[k][1] > 0 ? std::max(sums[k][0] / sums[k][1], 1e-6) : 0;
  // A side of the bucket without points takes the other side's shape.
  fixed_[kBucketUpper] = c[0] == 0;
  fixed_[kBucketLower] = c[1] == 0;
  if (c[0] == 0) c[0] = c[1] > 0 ? c[1] : 0.02;
  if (c[1] == 0) c[1] = c[0];
  theta_[kCdMin] = std::log(std::max(cdMin, 1e-5));
  theta_[kExponent] = Unsquash(2, kExponentBounds[0], kExponentBounds[1]);
  theta_[kShift] = Unsquash(shift, limits.clMin, limits.clMax);
  theta_[kBucketUpper] = std::log(c[0]);
  theta_[kBucketLower] = std::log(c[1]);
  theta_[kTilt] = 0;
}

// A limit the data do not reach lies where a typical section stalls, 15
// degrees from zero, and clearly above the data's own extreme.
void Fitter::SetDefaultLimits() {
  const double alfaZero = ValuesOf(theta_).alfaZero;
  const double run = 2 - kApproxLinearShare;
  if (!upperStall_) {
    const double clMax = std::max(kApproxLiftSlope * (15 - alfaZero) / run, topCl_ + 0.1);
    theta_[kClMax] = Unsquash(clMax, kClBounds[0], kClBounds[1]);
  }
  if (!lowerStall_) {
    const double clMin = std::min(-kApproxLiftSlope * (15 + alfaZero) / run, bottomCl_ - 0.1);
    theta_[kClMin] = Unsquash(-clMin, kClBounds[0], kClBounds[1]);
  }
}

// A point is wild when its lift or its drag lies far beyond the typical
// error: eight times the median error and at least 0.3 in lift or a factor
// of two in drag.
bool Fitter::MarkWildPoints(const ApproxModel& model) {
  std::vector<double> liftErrors, dragErrors;
  for (size_t i = 0; i < samples_.size(); ++i) {
    if (wild_[i]) continue;
    liftErrors.push_back(std::fabs(model.Cl(samples_[i].alfa) - samples_[i].cl));
    dragErrors.push_back(std::fabs(std::log(samples_[i].cd / DragAt(model, samples_[i]))));
  }
  const double liftLimit = std::max(8 * 1.4826 * Median(liftErrors), 0.3);
  const double dragLimit = std::max(8 * 1.4826 * Median(dragErrors), std::log(2.0));
  bool found = false;
  size_t kept = liftErrors.size();
  for (size_t i = 0; i < samples_.size() && kept > kApproxFitMinPoints; ++i) {
    if (wild_[i]) continue;
    const Sample& s = samples_[i];
    if (std::fabs(model.Cl(s.alfa) - s.cl) > liftLimit || std::fabs(std::log(s.cd / DragAt(model, s))) > dragLimit) {
      wild_[i] = true;
      found = true;
      --kept;
    }
  }
  return found;
}

ApproxFit Fitter::Run() {
  Estimate();
  const auto liftParams = {kAlfaZero, kClMax, kClMin, kRangeMax, kRangeMin};
  const auto dragParams = {kCdMin, kExponent, kShift, kBucketUpper, kBucketLower, kTilt};
  const auto allParams = {kAlfaZero, kClMax, kClMin, kRangeMax, kRangeMin, kCdMin,
                          kExponent, kShift,  kBucketUpper, kBucketLower, kTilt};
  Minimize(liftParams, true, false);
  SetDefaultLimits();
  Minimize(liftParams, true, false);
  // The bucket's exponent has more than one local minimum; start from a few.
  const Theta start = theta_;
  Theta best = theta_;
  double bestCost = INFINITY;
  for (double exponent : {1.5, 2.0, 3.0}) {
    theta_ = start;
    theta_[kExponent] = Unsquash(exponent, kExponentBounds[0], kExponentBounds[1]);
    const double cost = Minimize(dragParams, false, true);
    if (cost < bestCost) bestCost = cost, best = theta_;
  }
  theta_ = best;
  for (int round = 0; round < 3; ++round) {
    Minimize(allParams, true, true);
    if (!MarkWildPoints(ApproxModel(ValuesOf(theta_)))) break;
  }
  // What the data cannot show follows from what they do.
  if (fixed_[kBucketUpper]) theta_[kBucketUpper] = theta_[kBucketLower];
  if (fixed_[kBucketLower]) theta_[kBucketLower] = theta_[kBucketUpper];
  if (fixed_[kRangeMax] && !fixed_[kRangeMin]) theta_[kRangeMax] = theta_[kRangeMin];
  if (fixed_[kRangeMin] && !fixed_[kRangeMax]) theta_[kRangeMin] = theta_[kRangeMax];

  ApproxFit fit;
  fit.values = ValuesOf(theta_);
  using enum ApproxField;
  auto mark = [&fit](ApproxField field, bool estimated) { fit.estimated[static_cast<int>(field)] = estimated; };
  mark(ClMax, !upperStall_);
  mark(StallRangeClMax, !upperStall_);
  mark(StallCdAtClMax, !upperStall_ || fixed_[kBucketUpper]);
  mark(ClMin, !lowerStall_);
  mark(StallRangeClMin, !lowerStall_);
  mark(StallCdAtClMin, !lowerStall_ || fixed_[kBucketLower]);
  return fit;
}

}  // namespace

ApproxErrors ApproxFitErrors(const ApproxModel& model, std::span<const PolarPoint> points) {
  ApproxErrors errors;
  double sumCl = 0, sumCd = 0;
  for (const PolarPoint& p : points) {
    if (!Usable(p)) continue;
    const Sample s{p.Alfa, p.Cl, p.Cd};
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

ApproxFit FitApproximation(const Polar& polar) {
  std::vector<Sample> samples = UsableSamples(polar.Points());
  if (samples.size() < kApproxFitMinPoints) throw ApproxTooFewPointsError();
  ApproxFit fit = Fitter(std::move(samples)).Run();
  fit.errors = ApproxFitErrors(ApproxModel(fit.values), polar.Points());
  return fit;
}

std::string ApproxFitComment(std::string_view airfoil, const Polar& polar, const ApproxErrors& errors) {
  std::string name(airfoil);
  for (size_t p = name.find("*/"); p != std::string::npos; p = name.find("*/", p)) name.replace(p, 2, "* /");
  return "/* " + name + ", Re=" + ShortestNumberText(polar.ReynoldsNumber) +
         ", Mach=" + ShortestNumberText(polar.MachNumber) + ": rms Cl " + ShortestNumberText(errors.rmsCl) +
         ", rms Cd " + ShortestNumberText(errors.rmsCd) + " over " + ShortestNumberText(errors.points) + " points */\n";
}

}  // namespace tavilo
