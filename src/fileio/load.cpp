#include "fileio/load.h"

#include <filesystem>
#include <system_error>

#include "fileio/formats_table.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

// Restores the pointer and the status text however the reader ends.
class BusyScope {
 public:
  explicit BusyScope(UserInterface& ui) : ui_(ui) {
    ui_.SetBusy(true);
    ui_.SetStatusText(GetResString(Text::Reading, ui_.Language()));
  }
  ~BusyScope() {
    ui_.SetStatusText(GetResString(Text::Ready, ui_.Language()));
    ui_.SetBusy(false);
  }

 private:
  UserInterface& ui_;
};

}  // namespace

bool HasPoints(const Airfoil& airfoil) {
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& set = *airfoil.Configuration(i);
    for (int j = 1; j <= set.PolarCount(); ++j)
      if (set.Polar(j)->PointCount() > 0) return true;
  }
  return false;
}

namespace {

bool HasShownError(const ReadReport& report) {
  for (const Diagnostic& diagnostic : report.diagnostics)
    if (diagnostic.severity == Severity::Error && !diagnostic.quiet) return true;
  return false;
}

}  // namespace

LoadResult ReadPolarFile(const std::string& fileName, const AirfoilChoice& choose, const ReadOptions& options) {
  auto airfoil = std::make_shared<Airfoil>();
  ReadReport report;
  std::error_code error;
  // Said plainly: by its name a folder would be an unknown format, or a
  // file that is not found.
  const bool folder = std::filesystem::is_directory(fileName, error);
  const FileFormat* format = folder ? nullptr : FormatToRead(fileName);
  if (format != nullptr && format->read != nullptr)
    report = format->read(*airfoil, fileName, {choose, options.leaveFileUnchanged});
  else
    report = MessageReport(folder ? Text::IsFolder : Text::UnknownFileFormat);
  // A reader's own error already says why nothing came of the file, unless
  // the window keeps quiet about it.
  if (options.requirePoints && !HasShownError(report) && !HasPoints(*airfoil))
    report.diagnostics.push_back({Severity::Error, Text::NoPolars, {}, false, {}, 0});
  report.InFile(fileName);
  return {std::move(airfoil), std::move(report)};
}

std::string DiagnosticText(const Diagnostic& diagnostic, Language language) {
  std::string text;
  if (diagnostic.line > 0)
    text = FormatResString(Text::FileAndLine, language, {diagnostic.file, std::to_string(diagnostic.line)}) + ": ";
  return text + FormatResString(diagnostic.messageId, language, {diagnostic.text, diagnostic.file});
}

std::string DiagnosticTextNamingFile(const Diagnostic& diagnostic, Language language) {
  const std::string text = DiagnosticText(diagnostic, language);
  if (diagnostic.file.empty() || text.find(diagnostic.file) != std::string::npos) return text;
  return FormatResString(Text::FileAndMessage, language, {diagnostic.file, text});
}

void ShowDiagnostics(const ReadReport& report, UserInterface& ui) {
  for (const Diagnostic& diagnostic : report.diagnostics) {
    if (diagnostic.quiet) continue;
    const Language language = ui.Language();
    const std::string text = DiagnosticTextNamingFile(diagnostic, language);
    if (diagnostic.severity == Severity::Warning)
      ui.ShowMessage(text, WarningTitle(language), MessageIcon::Warning);
    else
      ui.ShowMessage(text, ErrorTitle(language), MessageIcon::Critical);
  }
}

AirfoilPtr LoadFile(const std::string& fileName, UserInterface& ui) {
  BusyScope busy(ui);
  ReadOptions options;
  options.requirePoints = true;
  LoadResult result = AboutFile(fileName, [&] {
    return ReadPolarFile(
        fileName, [&ui](const std::vector<std::string>& entries) { return ui.ChooseAirfoil(entries); }, options);
  });
  ShowDiagnostics(result.report, ui);
  if (!HasPoints(*result.airfoil)) return nullptr;
  return result.airfoil;
}

}  // namespace tavilo
