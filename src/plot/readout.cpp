#include "plot/readout.h"

#include <string_view>

#include "base/number_text.h"

namespace tavilo {

namespace {

std::optional<std::string> Readout(double x, double y, double below, std::string_view xName, std::string_view xPattern,
                                   std::string_view yName) {
  if (!(x < below)) return std::nullopt;
  std::string text(xName);
  text += FormatNumber(x, xPattern);
  text += yName;
  text += FormatNumber(y, "0.00");
  return text;
}

}  // namespace

std::optional<std::string> CdClValue(double x, double y) { return Readout(x, y, 1.0, "Cd=", "0.0000", " Cl="); }
std::optional<std::string> ClAlfaValue(double x, double y) { return Readout(x, y, 2.0, "Alfa=", "0.00", " Cl="); }
std::optional<std::string> CmAlfaValue(double x, double y) { return Readout(x, y, 2.0, "Alfa=", "0.00", " Cm="); }
std::optional<std::string> TUxcValue(double x, double y) { return Readout(x, y, 2.0, "x/c=", "0.00", " Cl="); }
std::optional<std::string> TLxcValue(double x, double y) { return Readout(x, y, 2.0, "x/c=", "0.00", " Cl="); }

}  // namespace tavilo
