#include "plot/surface.h"

#include <cmath>

#include "model/errors.h"

namespace tavilo {

void CheckDeviceCoordinate(double value) {
  if (!(std::fabs(value) <= kMaxDeviceCoordinate)) throw OverflowError("drawing coordinate out of range");
}

}  // namespace tavilo
