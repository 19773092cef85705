// Any bytes as PEF: no crash, hang or runaway memory, and the index answers like the literal scan.
#include <cstdlib>
#include <string>

#include "../tests/formats/pef_reference_scan.h"
#include "formats/pef.h"
#include "formats/pef_index.h"
#include "fuzz_input.h"

namespace {

void CompareWithLiteralScan(std::string_view text) {
  tavilo::PefIndex index(text);
  static const char* const kSections[] = {"Airfoil", "Set1", "Set1-Polar1", "Set2-Polar10", ""};
  static const char* const kKeys[] = {"NumberSets", "Description1", "Value01", "Value10", "", "["};
  for (const char* section : kSections)
    for (const char* key : kKeys)
      if (std::string(index.Value(section, key)) != tavilo::testing::ReferencePefValue(text, section, key))
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes = tavilo::fuzz::Text(data, size);
  tavilo::Airfoil airfoil;
  try {
    // A small limit of missing polars and points keeps the runs fast.
    const tavilo::ReadReport report = tavilo::ReadFromPEFText(airfoil, bytes, 1 << 12);
    // A stop at the limit of missing items is always also a warning.
    if (report.stoppedEarly && (report.diagnostics.empty() || report.HasError())) __builtin_trap();
  } catch (const tavilo::OverflowError&) {
    // A count beyond 16 bits or a number beyond the double range: reported to the user by the loading code.
  }
  tavilo::Polar polar;
  try {
    tavilo::ReadPolarFromPEFText(polar, bytes, 1, 1);
  } catch (const tavilo::OverflowError&) {
  }
  if (size < 4096) CompareWithLiteralScan(bytes);
  return 0;
}
