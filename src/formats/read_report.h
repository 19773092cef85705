#pragma once
// What a reader found wrong with a file, handed back beside the airfoil it
// filled (and what a writer warns of). Readers never show anything: the window turns the diagnostics
// into its message boxes, the converter into its exit status.

#include <string>
#include <vector>

#include "strings/text_ids.h"

namespace tavilo {

enum class Severity { Warning, Error };

struct Diagnostic {
  Severity severity = Severity::Error;
  // The string-table text (Text::NoValidXmlFile, Text::NoDataSets ..., or
  // a run-time error's text that stopped the read), filled with `text` as
  // its "%1" and `file` as its "%2".
  Text messageId{};
  std::string text;
  // The format keeps quiet about it on screen (an XFOIL file cut by a wild
  // number); the converter still reports it.
  bool quiet = false;
  std::string file;  // as given to the reader; "" for text in memory
  int line = 0;      // 1-based line of the file, 0 where not known
};

struct ReadReport {
  std::vector<Diagnostic> diagnostics;
  // Reading ended before the file did; what was read is kept.
  bool stoppedEarly = false;

  bool HasError() const {
    for (const Diagnostic& diagnostic : diagnostics)
      if (diagnostic.severity == Severity::Error) return true;
    return false;
  }
  // Names `file` in every diagnostic that names none yet.
  ReadReport& InFile(const std::string& file) {
    for (Diagnostic& diagnostic : diagnostics)
      if (diagnostic.file.empty()) diagnostic.file = file;
    return *this;
  }
};

// What a writer has to tell of the file it wrote: warnings, such as a
// polar longer than readers of the format take.
using WriteReport = ReadReport;

// The quiet warning Text::ShortOfCounts, that a file holds fewer polars or
// points than its own counts announce (it names the file as "%2"): the
// window never showed it, the converter does. Readers add it once, when they can tell.
inline Diagnostic ShortOfCountsWarning() { return {Severity::Warning, Text::ShortOfCounts, {}, true, {}, 0}; }

// A report holding the one error message `messageId`, shown in the window.
inline ReadReport MessageReport(Text messageId) {
  ReadReport report;
  report.diagnostics.push_back({Severity::Error, messageId, {}, false, {}, 0});
  return report;
}

}  // namespace tavilo
