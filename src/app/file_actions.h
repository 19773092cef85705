#pragma once
// Loading, import, export and batch conversion for the window, until the
// shared file handling takes their place.

#include <string>

#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

AirfoilPtr LoadFile(const std::string& fileName, UserInterface& ui);
void ImportFile(Airfoil& current, UserInterface& ui);
void ExportFile(const Airfoil& current, UserInterface& ui);
void BatchConvert(UserInterface& ui);

}  // namespace tavilo
