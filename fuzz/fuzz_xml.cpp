// Any bytes as XML give a model that writes out again, or one of the core's typed errors.
#include <string>

#include "formats/xml.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tavilo::Airfoil airfoil;
  try {
    tavilo::ReadFromXMLText(airfoil, std::string(tavilo::fuzz::Text(data, size)));
    (void)tavilo::XmlText(airfoil);
  } catch (const tavilo::RuntimeError&) {
  }
  return 0;
}
