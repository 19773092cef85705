#pragma once
// Tavilo's own CSV: one row per point of each selected polar, under a
// header that the table reader (formats/table.h) knows, so a written file
// reads back into the same sets and polars with the same values.

#include <string>

#include "model/airfoil.h"

namespace tavilo {

// The header line, without its line end.
inline constexpr const char* kCsvHeader = "set_no,set,polar_no,polar,re,mach,alpha,cl,cd,cm,top_xtr,bot_xtr";

// The file text: the header, then one row per point of each selected polar,
// every line ended by CR LF. set_no and polar_no count from 1 among all sets
// and all polars of the set, selected or not; names stand in double quotes
// ("" for a quote); numbers are the shortest text that reads back to the
// same double, with a period; a value at or below kNoValue is an empty field.
std::string CsvText(const Airfoil& airfoil);

// Writes CsvText(airfoil) to `path`, replacing the file atomically.
// FileAccessError when it cannot be written.
void WriteToCSV(const Airfoil& airfoil, const std::string& path);

}  // namespace tavilo
