#pragma once
// The whole content of an airfoil as one text: the XML writer's with every
// polar ticked, then the ticks themselves ('+' or '-' per polar) and the
// set count, so that a difference in content or ticks shows.

#include <string>

#include "formats/xml.h"
#include "model/snapshot.h"

namespace tavilo::testing {

inline std::string ContentText(const Airfoil& airfoil) {
  std::string ticks;
  for (const ConfigurationPtr& set : airfoil.Configurations())
    for (const PolarPtr& polar : set->Polars()) ticks += polar->Selected ? '+' : '-';
  AirfoilPtr all = DeepCopy(airfoil);
  for (const ConfigurationPtr& set : all->Configurations()) set->SetSelected(true);
  return XmlText(*all) + ticks + "|" + std::to_string(airfoil.ConfigCount());
}

}  // namespace tavilo::testing
