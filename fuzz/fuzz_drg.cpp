// Any bytes as a drag polar file (the first answers the airfoil choice): one set or an overflow.
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes = tavilo::fuzz::Text(data + 1, size - 1);
  (void)tavilo::DrgAirfoilNames(bytes);
  tavilo::Airfoil airfoil;
  try {
    const tavilo::ReadReport report = tavilo::ReadFromDRGText(airfoil, bytes, tavilo::fuzz::Answer(data[0]));
    // A file cut short says so, and nothing else is ever reported.
    if (report.diagnostics.size() != (report.stoppedEarly ? 1u : 0u)) __builtin_trap();
  } catch (const tavilo::OverflowError&) {
    return 0;  // a number or count out of range is reported to the caller by design
  }
  if (airfoil.ConfigCount() != 1) __builtin_trap();
  return 0;
}
