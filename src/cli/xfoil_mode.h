#pragma once
// tavilo-convert --xfoil: runs XFOIL for an airfoil over several Reynolds
// numbers and writes the polars in any format written; --print-jobs prints
// the run's jobs as shell command lines for another scheduler instead, and
// --merge joins their outputs into the file the run itself writes.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/airfoil.h"
#include "strings/language.h"
#include "tools/xfoil_run.h"

namespace tavilo {

struct XfoilCliOptions {
  std::string airfoil;  // a designation or a coordinate file
  XfoilConditions conditions;
  bool reynoldsGiven = false;
  bool printJobs = false;
  std::vector<std::string> passOn;  // the options each printed job repeats
};

// Whether `arg` is one of the run's options that take a value.
bool IsXfoilOption(const std::string& arg);

// Takes the option `arg` with its value; the usage error, if any.
std::optional<std::string> ParseXfoilOption(const std::string& arg, const std::string& value, XfoilCliOptions& options);

// How the mode tells and writes: messages naming a file, and the export.
struct XfoilCliOutput {
  std::function<void(const std::string&text, const std::string&file)> error, warning;
  std::function<bool(const Airfoil& airfoil, const std::string& path)> write;
};

// Runs (or prints) the jobs and writes `output`; the converter's exit status.
int RunXfoilMode(const XfoilCliOptions& options, int jobs, const std::string& output, Language language,
                 std::ostream& out, const XfoilCliOutput& tell);

// Joins the airfoils read from the named files into `merged` (the first
// one's name): sets of one name become one set, polars sorted by Reynolds
// number; other sets follow in input order. The error text when two inputs
// give the same polar (set, Reynolds and Mach number), in `language`.
std::optional<std::string> MergeAirfoils(const std::vector<std::pair<std::string, AirfoilPtr>>& inputs, Airfoil& merged,
                                         Language language);

}  // namespace tavilo
