#pragma once
// XFOIL polar files (".pol"), and MSES polar files ("polar.*") read by the
// same rules. The reader takes the Mach and Reynolds numbers from fixed
// columns of the line under each "Calculated polar for" heading and walks the
// point lines field by field; the writer heads every block as XFOIL 5.4.

#include <string>
#include <string_view>

#include "formats/read_report.h"
#include "model/airfoil.h"

namespace tavilo {

// The file text of the selected polars of `airfoil`, one block each, every
// line ended by CR LF; "" when no polar is selected. Sets leave no trace.
std::string PolText(const Airfoil& airfoil);

// Writes PolText(airfoil) to `path`, replacing the file atomically.
// FileAccessError when it cannot be written.
void WriteToPOL(const Airfoil& airfoil, const std::string& path);

// Gives `airfoil` exactly one set and reads every polar of the file at
// `path` into it, each selected; the airfoil's name is that of the last
// heading. FileNotFoundError (airfoil untouched) when it cannot be opened.
// Bad or cut-off content never raises: reading stops and keeps what it had;
// a stop on a run-time error (a number beyond the double range, a 32768th
// point) is reported as a quiet error naming the line.
ReadReport ReadFromPOL(Airfoil& airfoil, const std::string& path);

// The same on the bytes of a file already in memory.
ReadReport ReadFromPOLText(Airfoil& airfoil, std::string_view bytes);

// The name in the first line beginning " Calculated" of the file at `path`
// (from column 24, trailing blanks removed); "" when there is none.
// FileNotFoundError when it cannot be opened.
std::string ReadSetNameFromPOL(const std::string& path);

}  // namespace tavilo
