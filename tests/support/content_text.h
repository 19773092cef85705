#pragma once
// The whole content of an airfoil as one text: the XML writer's with every
// polar ticked, then the ticks themselves ('+' or '-' per polar) and the
// set count, so that a difference in content or ticks shows.

#include <memory>
#include <string>
#include <vector>

#include "formats/xml.h"
#include "model/airfoil.h"

namespace tavilo::testing {

inline std::string ContentText(const Airfoil& airfoil) {
  std::string ticks;
  Airfoil all;  // shares nothing with `airfoil`, so ticking leaves it alone
  all.Name = airfoil.Name;
  for (const ConfigurationPtr& set : airfoil.Configurations()) {
    auto copy = std::make_shared<Configuration>(*set);
    std::vector<PolarPtr> polars;
    for (const PolarPtr& polar : set->Polars()) {
      ticks += polar->Selected ? '+' : '-';
      polars.push_back(std::make_shared<Polar>(*polar));
      polars.back()->Selected = true;
    }
    copy->ResetPolars(set->PolarCount(), polars);
    all.AddConfiguration(copy);
  }
  return XmlText(all) + ticks + "|" + std::to_string(airfoil.ConfigCount());
}

}  // namespace tavilo::testing
