#pragma once
// The program's command line: `tavilo [--help | --version] [FILE...]`.
// --help and --version are answered before any window system is touched, so
// they work on a terminal without a display.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "strings/language.h"

namespace tavilo {

class PEFForm;

// What the command line asks for.
struct CommandLine {
  enum class Action { Run, Help, Version, BadOption } action = Action::Run;
  std::vector<std::string> files;  // as given, in order
  std::string badOption;           // the first unknown option
};

// Reads the arguments after the program name. "--" ends the options, so a
// file whose name starts with "-" can follow it; a lone "-" is a file name.
CommandLine ParseCommandLine(const std::vector<std::string>& args);

// Writes the answer of a Help, Version or BadOption line in `language` and
// gives the exit status (0, or 2 for bad usage); nothing for Run.
std::optional<int> AnswerCommandLine(const CommandLine& line, Language language, std::ostream& out, std::ostream& err);

// Opens the first of `files` that yields polars as a double click in the
// file list would (its folder becomes the browser's folder, its name is
// highlighted) and imports the files after it as one step. A file that
// cannot be read gives its usual message; the window stays as it was.
void OpenStartFiles(PEFForm& window, const std::vector<std::string>& files);

}  // namespace tavilo
