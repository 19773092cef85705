// Any byte sequence must give a model, a report, or one of the core's typed
// errors: never a crash, a hang or a sanitizer report.
#include <string>

#include "formats/xml.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tavilo::Airfoil airfoil;
  try {
    tavilo::ReadFromXMLText(airfoil, std::string(tavilo::fuzz::Text(data, size)));
    // What was read must also write.
    (void)tavilo::XmlText(airfoil);
  } catch (const tavilo::RuntimeError&) {
  }
  return 0;
}
