// Any bytes as an XFOIL polar file give one set (maybe empty) that writes out again.
#include "formats/pol.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tavilo::Airfoil airfoil;
  tavilo::ReadFromPOLText(airfoil, tavilo::fuzz::Text(data, size));
  if (airfoil.ConfigCount() != 1) __builtin_trap();
  airfoil.Configuration(1)->SetSelected(true);
  (void)tavilo::PolText(airfoil);
  return 0;
}
