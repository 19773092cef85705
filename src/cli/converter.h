#pragma once
// The command-line converter: the same loading and export code as the
// program, without a window. It never asks a question on the terminal and
// never writes to its inputs; an input without points is an error.

#include <iosfwd>
#include <string>
#include <vector>

namespace tavilo {

// Exit statuses of the converter.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFileError = 1;
inline constexpr int kExitUsage = 2;

// Runs the converter with `args` (without the program name), writing
// results to `out` and messages to `err`; returns the exit status.
int RunConverter(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace tavilo
