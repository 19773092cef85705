#pragma once
// Loading a polar file by its name: the one place where an input format is
// chosen.

#include <string>
#include <string_view>

#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

enum class InputFormat { Xfoil, WindTunnel, Pef, Xml, Drag, EpplerOutput, Unknown };

// The reader for `fileName`, by its last four characters in lower case, in
// this order: ".pol" or "polar." anywhere in the path (case-sensitive, so
// MSES files and a deliberately odd "polar.xml" read as XFOIL), ".mwk",
// ".pef", ".xml", ".drg", ".txt".
InputFormat InputFormatOf(std::string_view fileName);

// A new airfoil read from `fileName`, empty for an unknown format (after
// the "Unknown File Format!" message). Shows "Reading..." and the busy
// pointer while it reads, then "Ready."; sets the window title to
// "Tavilo - " + fileName and the airfoil name label. Raises what the reader
// raises (FileNotFoundError for a missing file, ...).
AirfoilPtr LoadFile(const std::string& fileName, UserInterface& ui);

}  // namespace tavilo
