#include "cli/approx_mode.h"

#include <ostream>

#include "base/number_text.h"
#include "strings/string_table.h"
#include "tools/approx_fit.h"

namespace tavilo {

int WriteApproximations(const Airfoil& airfoil, std::ostream& out,
                        const std::function<void(const std::string& message)>& skipped, Language language) {
  int written = 0;
  int ordinal = 0;  // of the polar in the file, as the skip message names it
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& set = *airfoil.Configuration(i);
    for (int j = 1; j <= set.PolarCount(); ++j) {
      const Polar& polar = *set.Polar(j);
      ++ordinal;
      ApproxFit fit;
      try {
        fit = FitApproximation(polar);
      } catch (const ApproxPolarRefusedError&) {
        skipped(FormatResString(Text::ApproxPolarSkipped, language,
                                {ShortestNumberText(ordinal), ShortestNumberText(polar.ReynoldsNumber),
                                 ShortestNumberText(polar.MachNumber)}));
        continue;
      }
      ++written;
      if (written > 1) out << '\n';
      out << ApproxFitComment(airfoil.Name, polar, fit.errors)
          << ApproxInitializer(ApproxShownValues(fit.values), "approx_" + ShortestNumberText(written));
    }
  }
  return written;
}

}  // namespace tavilo
