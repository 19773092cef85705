// Any bytes read as an XFOIL polar file must give an airfoil (possibly
// empty) without a crash, a hang or a sanitizer report; what was read must
// write out again.
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
