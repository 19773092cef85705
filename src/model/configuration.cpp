#include "model/configuration.h"

#include <cmath>

namespace tavilo {

bool Configuration::Selected() const {
  for (int i = 1; i <= PolarCount(); ++i) {
    if (Polar(i)->Selected) return true;
  }
  return false;
}

void Configuration::SetSelected(bool selected) {
  for (int i = 1; i <= PolarCount(); ++i) Polar(i)->Selected = selected;
}

namespace {

template <class Key>
void ExchangeSort(ChildList<tavilo::Polar>& polars, Key key) {
  const int count = polars.Count();
  for (int i = 1; i <= count - 1; ++i) {
    for (int j = i + 1; j <= count; ++j) {
      if (key(*polars.At(i)) > key(*polars.At(j))) polars.Swap(i, j);
    }
  }
}

}  // namespace

int16_t Configuration::SortReynolds() {
  ExchangeSort(polars_, [](const tavilo::Polar& p) { return p.ReynoldsNumber; });
  return 0;
}

int16_t Configuration::SortMach() {
  ExchangeSort(polars_, [](const tavilo::Polar& p) { return p.MachNumber; });
  return 0;
}

std::optional<PolarPoint> Configuration::InterpolateAtCl(double cl, double reynolds) const {
  const int m = PolarCount();
  PolarPtr first = polars_.At(1);
  if (!first) throw SubscriptError("1");
  if (reynolds < first->ReynoldsNumber) return first->InterpolateAtCl(cl);
  PolarPtr last = Polar(m);
  if (reynolds > last->ReynoldsNumber) return last->InterpolateAtCl(cl);

  int i = 1;
  while (i <= m - 1 && !(Polar(i)->ReynoldsNumber <= reynolds && reynolds <= Polar(i + 1)->ReynoldsNumber)) {
    ++i;
  }
  if (i > m - 1) return std::nullopt;

  const tavilo::Polar& lower = *Polar(i);
  const tavilo::Polar& upper = *Polar(i + 1);
  const double span = upper.ReynoldsNumber - lower.ReynoldsNumber;
  // Two equal-Re polars as the bracket make the weight undefined; that is an
  // error for the caller, not a silent guess.
  if (span == 0.0) throw DivisionByZeroError("two polars with the same Reynolds number");
  const double t = (reynolds - lower.ReynoldsNumber) / span;

  const PolarPoint p1 = lower.InterpolateAtCl(cl);
  const PolarPoint p2 = upper.InterpolateAtCl(cl);
  auto blend = [t](double a, double b) { return a + t * (b - a); };
  PolarPoint result;
  result.Alfa = blend(p1.Alfa, p2.Alfa);
  result.Cm = blend(p1.Cm, p2.Cm);
  result.TU = blend(p1.TU, p2.TU);
  result.TL = blend(p1.TL, p2.TL);
  result.Cl = cl;
  // Drag is blended on magnitudes and flagged only when both sides lie
  // outside their polars' data; one flagged side alone is accepted.
  result.Cd = blend(std::fabs(p1.Cd), std::fabs(p2.Cd));
  if (p1.Cd < 0 && p2.Cd < 0) result.Cd = -result.Cd;
  return result;
}

}  // namespace tavilo
