#pragma once
// The Cd-min envelope: at each lift coefficient of a regular grid, the point
// of lowest drag among the selected polars.

#include "model/airfoil.h"

namespace tavilo {

// Builds the envelope polar of the selected polars of `airfoil`, over a Cl
// grid from the smallest to the largest Cl in steps near 0.05. Ties keep the
// earlier polar (set, then polar order). Its Reynolds number is the average
// when the summed deviation from it stays under 1 %, otherwise 0. Null when
// no polar is selected. DivisionByZeroError when all points share one Cl.
PolarPtr BuildEnvelope(const Airfoil& airfoil);

// Adds the envelope as a new set "Envelope" to `airfoil`. Returns the new
// set, or null (nothing added) when no polar is selected.
ConfigurationPtr AddEnvelopeSet(Airfoil& airfoil);

}  // namespace tavilo
