#pragma once
// The command-line converter: the same loading and export code as the
// program, without a window. It never asks a question on the terminal and
// never writes to its inputs; an input without points is an error.

#include <iosfwd>
#include <string>
#include <vector>

#include "strings/language.h"

namespace tavilo {

// Exit statuses of the converter.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFileError = 1;
inline constexpr int kExitUsage = 2;

class Airfoil;
struct PageRequest;

// The picture renderer behind --plot and --print. Only tavilo-render links
// it (and Qt with it): tavilo-convert passes none, so that every other mode
// starts without loading Qt, and hands those two modes to the tavilo-render
// beside its own binary, which runs them with the same arguments.
struct Renderer {
  bool (*plot)(const Airfoil& airfoil, const std::string& path, Language language, std::string* error);
  bool (*print)(const Airfoil& airfoil, const PageRequest& request, const std::string& path, std::string* error);
};

// Runs the converter with `args` (without the program name), writing
// results to `out` and messages to `err`; returns the exit status. Without
// a renderer, --plot and --print replace the process by tavilo-render's.
int RunConverter(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                 const Renderer* renderer = nullptr);

}  // namespace tavilo
