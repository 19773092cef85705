#pragma once
// UIUC and Princeton wind-tunnel drag polar files (".drg"). One file may hold
// several airfoils, each under a heading line beginning "Airfoil"; the user
// picks one, and its Reynolds blocks become the polars of a single set.
// Three layouts are told apart by the heading: "Airfoil: " (UIUC),
// "Airfoil  " followed two lines on by a one-digit polar count (Princeton),
// and "Airfoil  " otherwise (older UIUC). There is no writer.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/read_report.h"
#include "model/airfoil.h"

namespace tavilo {

// Picks one airfoil of a drag file: given the names and one trailing empty
// entry, the 0-based index chosen; a negative answer means the first.
using AirfoilChoice = std::function<int(const std::vector<std::string>& entries)>;

// Gives `airfoil` exactly one set and reads into it every Reynolds block of
// the chosen airfoil of the file at `path`, each polar selected. With two or
// more airfoils in the file `choose` picks one (no choice: the first).
// A file that ends before its polar or point counts do keeps what was read
// and reports stoppedEarly with the quiet warning Text::ShortOfCounts.
// FileNotFoundError when it cannot be opened; OverflowError for a number
// beyond the double range or a count beyond 32767.
ReadReport ReadFromDRG(Airfoil& airfoil, const std::string& path, const AirfoilChoice& choose);

// The same on the bytes of a file already in memory.
ReadReport ReadFromDRGText(Airfoil& airfoil, std::string_view bytes, const AirfoilChoice& choose);

// The airfoil names of the file's headings, in file order, as the user is
// offered them (without the trailing empty entry).
std::vector<std::string> DrgAirfoilNames(std::string_view bytes);

}  // namespace tavilo
