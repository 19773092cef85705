#pragma once
// Loading a polar file by its name: the one place where an input format is
// chosen.

#include <string>
#include <string_view>

#include "formats/drg.h"
#include "formats/read_report.h"
#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

// True when some polar of `airfoil` has a point.
bool HasPoints(const Airfoil& airfoil);

struct ReadOptions {
  // Never writes to the file: an LF-only PEF file is read converted in
  // memory instead of being rewritten with CR LF first (the window's way).
  bool leaveFileUnchanged = false;
  // A file that yields no polar with a point is an error, Text::NoPolars
  // (unless the reader has already reported an error that the window
  // shows): there is nothing to show or write from it.
  bool requirePoints = false;
};

struct LoadResult {
  AirfoilPtr airfoil;  // never null; empty for a file no reader takes
  ReadReport report;
};

// A new airfoil read from `fileName` by the reader its name picks, without
// showing or asking anything; `choose` picks the airfoil of a drag file with
// several (none: the first); the reader is the one FormatToRead names
// (fileio/formats_table.h). An unknown format gives Text::UnknownFileFormat, a
// folder Text::IsFolder, a table without a polar Text::NoPolars.
// Raises what the reader raises (FileNotFoundError for a missing file, ...).
LoadResult ReadPolarFile(const std::string& fileName, const AirfoilChoice& choose, const ReadOptions& options = {});

// The user's text of `diagnostic` in `language`: its string-table message
// (with the diagnostic's text as "%1" and its file as "%2"), after the file
// and line where it names a line.
std::string DiagnosticText(const Diagnostic& diagnostic, Language language);

// DiagnosticText after "File: " and the file on a line of its own (114),
// unless the text names its file already: what the window shows, so that
// the user can tell which of several files a message is about.
std::string DiagnosticTextNamingFile(const Diagnostic& diagnostic, Language language);

// Shows the diagnostics that the window shows, one message box each, each
// naming its file; quiet ones stay unseen.
void ShowDiagnostics(const ReadReport& report, UserInterface& ui);

// The window's title while `fileName` is the document's file; "Tavilo"
// alone for none ("").
inline std::string WindowTitleOf(const std::string& fileName) {
  return fileName.empty() ? "Tavilo" : "Tavilo - " + fileName;
}

// ReadPolarFile for the window: shows "Reading..." and the busy pointer
// while it reads, then "Ready."; the user picks a drag file's airfoil; the
// report's messages are shown. Null, after its message, when the file
// yields no polar with a point: there is nothing to show of it.
AirfoilPtr LoadFile(const std::string& fileName, UserInterface& ui);

}  // namespace tavilo
