// Any bytes read as an airfoil coordinate file must give an outline or a
// report without a crash, a hang or a sanitizer report; an outline read
// must run round from trailing edge to trailing edge within the chord.
#include "formats/coordinates.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tavilo::AirfoilOutline outline;
  const tavilo::ReadReport report = tavilo::ReadCoordinatesText(outline, tavilo::fuzz::Text(data, size));
  if (report.HasError() != outline.points.empty()) __builtin_trap();
  if (!outline.points.empty()) {
    if (outline.points.size() < tavilo::kLeastOutlinePoints) __builtin_trap();
    (void)tavilo::ShapeOf(outline);
    (void)tavilo::SeligText(outline);
  }
  return 0;
}
