#pragma once
// Copy and paste of one polar through the system clipboard, as PEF text.

#include <string_view>

#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

// Puts the polar of node `key` on the clipboard as its PEF section (set 1,
// polar 1). Does nothing for a key that is not a polar node. Returns whether
// something was copied.
bool CopyPolar(const Airfoil& airfoil, std::string_view key, UserInterface& ui);

// Reads a polar from the clipboard's PEF text and appends it to the set of
// the polar node `key`, when it has at least one point. Returns whether a
// polar was added (the caller then refreshes tree and graphs).
bool PastePolar(Airfoil& airfoil, std::string_view key, UserInterface& ui);

}  // namespace tavilo
