#pragma once
// Copy and paste of one polar through the system clipboard, as PEF text.

#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

// Puts `polar` on the clipboard as its PEF section (set 1, polar 1).
void CopyPolar(const Polar& polar, UserInterface& ui);

// The polar of the clipboard's PEF text (section "[Set1-Polar1]"), selected;
// null when the clipboard holds no polar with at least one point.
PolarPtr PolarFromClipboard(UserInterface& ui);

}  // namespace tavilo
