#include "plot/surface.h"

#include "model/errors.h"

namespace tavilo {

void ThrowDeviceCoordinateOverflow() { throw OverflowError("drawing coordinate out of range"); }

}  // namespace tavilo
