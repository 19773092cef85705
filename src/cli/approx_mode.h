#pragma once
// tavilo-convert --approx: the approximation fitted to each polar of a file,
// as C text that compiles as one file.

#include <functional>
#include <iosfwd>
#include <string>

#include "model/airfoil.h"
#include "strings/language.h"

namespace tavilo {

// Writes to `out`, for every polar of `airfoil` (sets, then polars, in
// order) that can carry a fit (kApproxFitMinPoints usable points over
// kApproxFitMinSpan degrees), its fit's comment line and its initializer,
// named approx_1, approx_2, ..., the values to six significant digits.
// Each other polar is handed to `skipped` as a message in `language`.
// Returns how many polars were written.
int WriteApproximations(const Airfoil& airfoil, std::ostream& out,
                        const std::function<void(const std::string& message)>& skipped, Language language);

}  // namespace tavilo
