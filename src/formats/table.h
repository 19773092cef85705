#pragma once
// Polar tables in columns (".txt", ".mwk", ".csv"): what users, wind-tunnel
// programs and spreadsheets keep, in many shapes, and Tavilo's own CSV.
// No public layout exists, so the reader is tolerant: XFOIL and drag files
// saved under these names go to their own readers, anything else is read
// as blocks of data lines under a header line that names the columns.

#include <string>
#include <string_view>

#include "formats/drg.h"
#include "formats/read_report.h"
#include "model/airfoil.h"

namespace tavilo {

// Reads the file at `path` into `airfoil`, each polar selected:
// - a text holding "Calculated polar for" with the XFOIL reader;
// - a text with a drag file's "Airfoil" heading with the drag reader,
//   `choose` picking among several (when it reads no point, as the table
//   below, unless the user chose none);
// - otherwise as a column table: a header line names the columns (angle and
//   lift required), the data lines below it form a block, and a polar starts
//   with each block and where a set, polar, Re or Mach column changes.
//   Values a table lacks keep kNoValue; Re and Mach come from their columns
//   or from the nearest line above the block stating them, else stay 0.
//   The airfoil is named by an "Airfoil:", "Profil:" or "Name:" line, else
//   after the file; sets follow the set_no / set columns, else one set is
//   named after the file.
// No polar with a point leaves the airfoil empty (no set, no name) and
// reports error 77. FileNotFoundError when the file cannot be opened; bad
// content never raises.
ReadReport ReadFromTable(Airfoil& airfoil, const std::string& path, const AirfoilChoice& choose);

// The same on the bytes of a file already in memory; `fileName` names the
// airfoil and the set where the text does not ("" for none).
ReadReport ReadFromTableText(Airfoil& airfoil, std::string_view bytes, std::string_view fileName,
                             const AirfoilChoice& choose);

}  // namespace tavilo
