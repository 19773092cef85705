// Any bytes as a polar table (the first answers the airfoil choice): polars, or none and message 77.
#include <algorithm>
#include <cmath>
#include <vector>

#include "formats/csv.h"
#include "formats/table.h"
#include "fuzz_input.h"

namespace {

// Every point in order, values at or below the unknown marker or not finite as the marker, as CSV keeps them.
std::vector<tavilo::PolarPoint> Points(const tavilo::Airfoil& airfoil) {
  std::vector<tavilo::PolarPoint> points;
  for (const tavilo::ConfigurationPtr& set : airfoil.Configurations())
    for (const tavilo::PolarPtr& polar : set->Polars())
      for (tavilo::PolarPoint point : polar->Points()) {
        for (double* value : {&point.Alfa, &point.Cl, &point.Cd, &point.Cm, &point.TU, &point.TL})
          if (!(*value > tavilo::kNoValue) || !std::isfinite(*value)) *value = tavilo::kNoValue;
        point.SU = point.SL = tavilo::kNoValue;
        points.push_back(point);
      }
  return points;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  tavilo::Airfoil airfoil;
  const tavilo::ReadReport report = tavilo::ReadFromTableText(airfoil, tavilo::fuzz::Text(data + 1, size - 1),
                                                              "fuzz.txt", tavilo::fuzz::Answer(data[0]));
  const bool noPolars = std::any_of(report.diagnostics.begin(), report.diagnostics.end(),
                                    [](const tavilo::Diagnostic& d) { return d.messageId == tavilo::Text::NoPolars; });
  if (noPolars != (airfoil.ConfigCount() == 0)) __builtin_trap();
  // What was read writes as CSV and reads back point for point.
  if (!noPolars && !report.stoppedEarly) {
    tavilo::Airfoil copy;
    tavilo::ReadFromTableText(copy, tavilo::CsvText(airfoil), "copy.csv", nullptr);
    if (Points(copy) != Points(airfoil)) __builtin_trap();
  }
  return 0;
}
