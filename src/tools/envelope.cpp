#include "tools/envelope.h"

#include <cmath>
#include <vector>

#include "base/errors.h"
#include "base/number_text.h"
#include "strings/text_ids.h"

namespace tavilo {

PolarPtr BuildEnvelope(const Airfoil& airfoil) {
  std::vector<const Polar*> selected;  // set-then-polar order decides ties
  double sumRe = 0.0;
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& set = *airfoil.Configuration(i);
    for (int j = 1; j <= set.PolarCount(); ++j) {
      const Polar& polar = *set.Polar(j);
      if (!polar.Selected) continue;
      selected.push_back(&polar);
      sumRe += polar.ReynoldsNumber;
    }
  }
  if (selected.empty()) return nullptr;
  const double avgRe = sumRe / static_cast<double>(selected.size());

  double devRe = 0.0;
  double clMin = 99.9;
  double clMax = -99.9;
  for (const Polar* polar : selected) {
    devRe += std::fabs(avgRe - polar->ReynoldsNumber);
    for (const PolarPoint& point : polar->Points()) {
      clMin = std::fmin(clMin, point.Cl);
      clMax = std::fmax(clMax, point.Cl);
    }
  }
  const int n = RoundToInt16((clMax - clMin) / 0.05 + 0.5);
  // Its own text (Text::EnvelopeNeedsLiftRange): the user can mend this by ticking other polars.
  if (n == 0) throw DivisionByZeroError("the selected polars span no lift range", Text::EnvelopeNeedsLiftRange);
  const double dCl = (clMax - clMin) / n;

  auto envelope = std::make_shared<Polar>();
  // The half step makes the last grid point clMax itself despite rounding
  // of the accumulated steps.
  const double end = clMax + dCl * 0.5;
  for (double cl = clMin; cl <= end; cl += dCl) {
    // On wild data a step can be too small to move the value; stop there
    // instead of looping for ever.
    if (cl + dCl == cl) break;
    PolarPoint best;
    double minCd = 99.0;
    bool found = false;
    for (const Polar* polar : selected) {
      PolarPoint candidate = polar->InterpolateAtCl(cl);
      // A negative Cd marks a Cl outside that polar's data.
      if (candidate.Cd > 0 && candidate.Cd < minCd) {
        best = candidate;
        minCd = candidate.Cd;
        found = true;
      }
    }
    if (found) envelope->AddPoint(best);
  }
  envelope->Selected = true;
  // The summed, not the mean, deviation is compared with 1 % of the
  // average: polars of different Reynolds numbers give no envelope Re.
  envelope->ReynoldsNumber = 0.01 * avgRe > devRe ? avgRe : 0.0;
  return envelope;
}

ConfigurationPtr AddEnvelopeSet(Airfoil& airfoil) {
  PolarPtr envelope = BuildEnvelope(airfoil);
  if (!envelope) return nullptr;
  auto set = std::make_shared<Configuration>();
  set->Name = "Envelope";
  set->AddPolar(envelope);
  airfoil.AddConfiguration(set);
  return set;
}

}  // namespace tavilo
