#pragma once
// The pointer read-outs under the graphs. X and Y are the pointer position
// in the graph's value coordinates; nullopt means the label keeps its
// previous text. The thresholds are strict and the same 2.0 holds for the
// angle graphs too.

#include <optional>
#include <string>

namespace tavilo {

// "Cd=0.0123 Cl=0.45" while X < 1.0.
std::optional<std::string> CdClValue(double x, double y);
// "Alfa=4.00 Cl=0.45" while X < 2.0.
std::optional<std::string> ClAlfaValue(double x, double y);
// "Alfa=4.00 Cm=-0.10" while X < 2.0.
std::optional<std::string> CmAlfaValue(double x, double y);
// "x/c=0.45 Cl=0.45" while X < 2.0, for the upper and the lower transition.
std::optional<std::string> TUxcValue(double x, double y);
std::optional<std::string> TLxcValue(double x, double y);

}  // namespace tavilo
