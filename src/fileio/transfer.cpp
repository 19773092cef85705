#include "fileio/transfer.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/errors.h"
#include "base/number_text.h"
#include "base/worker_pool.h"
#include "fileio/file_names.h"
#include "fileio/formats_table.h"
#include "fileio/load.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

bool EndsWithPef(std::string_view name) { return UpperExtension(name) == ".PEF"; }

// The open dialog of Import, which Batch shares, title and the filters of
// Text::ImportFilter included, as it always did; Import alone offers every polar file first.
FileDialogRequest ImportRequest(Language language, bool allPolarFilesFirst) {
  std::string filter = GetResString(Text::ImportFilter, language);
  if (allPolarFilesFirst)
    filter = GetResString(Text::AllPolarFiles, language) + "|" + PatternOfList(kAllPolarFiles) + "|" + filter;
  return {FileDialogKind::Open, GetResString(Text::ImportTitle, language), filter, false};
}

bool WriteByName(const Airfoil& airfoil, const std::string& fileName, UserInterface& ui) {
  const FileFormat* format = FormatToWrite(fileName);
  if (format != nullptr && format->write != nullptr) {
    ShowDiagnostics(format->write(airfoil, fileName), ui);
    return true;
  }
  // A format whose writer is not written yet says so rather than leave an
  // empty file behind.
  if (format != nullptr && format->notWrittenText) {
    ui.ShowMessage(GetResString(*format->notWrittenText, ui.Language()), ErrorTitle(ui.Language()),
                   MessageIcon::Information);
    return false;
  }
  ui.ShowMessage(GetResString(Text::UnknownFileFormat, ui.Language()) + "\r\n'" + fileName + "'",
                 ErrorTitle(ui.Language()), MessageIcon::Critical);
  return false;
}

}  // namespace

void ImportInto(Airfoil& current, const Airfoil& imported) {
  if (current.ConfigCount() == 0) current.Name = imported.Name;
  for (int i = 1; i <= imported.ConfigCount(); ++i) current.AddConfiguration(imported.Configuration(i));
}

std::vector<std::string> ChooseImportFiles(UserInterface& ui) {
  return ui.ChooseFiles(ImportRequest(ui.Language(), true));
}

bool ExportAirfoil(const Airfoil& airfoil, const std::string& fileName, UserInterface& ui) {
  return AboutFile(fileName, [&] { return WriteByName(airfoil, fileName, ui); });
}

void WriteSetToPEF(const std::string& airfoilName, const ConfigurationPtr& set, const std::string& path) {
  Airfoil file;
  file.Name = airfoilName;
  file.AddConfiguration(set);
  AboutFile(path, [&] { WriteToPEF(file, path); });
}

bool ExportFile(const Airfoil& airfoil, UserInterface& ui) {
  const Language language = ui.Language();
  FileDialogRequest request{FileDialogKind::Save, "Export " + GetResString(Text::Polar, language),
                            GetResString(Text::ExportFilterWithCsv, language), true};
  const std::string fileName = ui.ChooseFile(request);
  if (fileName.empty()) return false;
  ExportAirfoil(airfoil, fileName, ui);
  return true;
}

std::string BatchTargetName(const std::string& pefName) {
  const size_t dot = AsciiUpper(pefName).rfind(".PEF");
  if (dot == std::string::npos) return pefName + ".xml";
  return pefName.substr(0, dot + 1) + "xml";
}

std::vector<std::string> PefFilesOf(const std::string& directory) {
  std::error_code error;
  std::filesystem::directory_iterator it(directory, error);
  if (error) throw FileNotFoundError(directory);
  std::vector<std::string> names;
  for (const auto& entry : it) {
    std::string name = entry.path().filename().string();
    if (EndsWithPef(name) && !entry.is_directory(error)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

namespace {

// How one file of a batch run went: what reading and writing it reported,
// whether it got as far as its write, and what raised on the way.
struct BatchOutcome {
  ReadReport report;
  bool writing = false;
  std::exception_ptr error;
};

// Reads `name` and writes its XML file, telling `writing` (when given) just
// before the write. Whatever reading or writing raises is kept, not raised:
// on another thread it would end the process.
BatchOutcome ConvertPefFile(const std::string& prefix, const std::string& name, const BatchReader& read,
                            const std::function<void(const ReadReport&)>& writing) {
  BatchOutcome outcome;
  LoadResult loaded;
  try {
    loaded = read(prefix + name);
  } catch (...) {
    outcome.error = std::current_exception();
    return outcome;
  }
  outcome.report = std::move(loaded.report);
  if (outcome.report.HasError()) return outcome;
  outcome.writing = true;
  if (writing) writing(outcome.report);
  const std::string target = prefix + BatchTargetName(name);
  try {
    const WriteReport written = AboutFile(target, [&] { return WriteToXML(*loaded.airfoil, target); });
    outcome.report.diagnostics.insert(outcome.report.diagnostics.end(), written.diagnostics.begin(),
                                      written.diagnostics.end());
  } catch (...) {
    outcome.error = std::current_exception();
  }
  return outcome;
}

// Tells `progress` how the file ended (and of its write first, when
// `tellWriting`); its answer to a failure, true otherwise. What is not a
// std::exception raises on.
bool TellOutcome(const BatchOutcome& outcome, const std::string& name, const BatchProgress& progress,
                 bool tellWriting) {
  const std::string target = BatchTargetName(name);
  if (tellWriting && outcome.writing) progress(BatchStep{name, target, outcome.report, BatchStage::Writing});
  if (outcome.error) {
    try {
      std::rethrow_exception(outcome.error);
    } catch (const std::exception& error) {
      return progress(BatchStep{name, target, outcome.report, BatchStage::Failed, &error});
    }
  }
  if (!outcome.writing) return progress(BatchStep{name, target, outcome.report, BatchStage::Failed});
  progress(BatchStep{name, target, outcome.report, BatchStage::Written});
  return true;
}

}  // namespace

int ConvertPefDirectory(const std::string& directory, const BatchReader& read, const BatchProgress& progress) {
  const std::string prefix = DirectoryPrefix(directory);
  const std::vector<std::string> names = PefFilesOf(directory);
  for (const std::string& name : names) {
    const BatchOutcome outcome = ConvertPefFile(prefix, name, read, [&](const ReadReport& report) {
      progress(BatchStep{name, BatchTargetName(name), report, BatchStage::Writing});
    });
    if (!TellOutcome(outcome, name, progress, false)) {
      if (outcome.error) std::rethrow_exception(outcome.error);
      break;
    }
  }
  return static_cast<int>(names.size());
}

int ConvertPefDirectory(const std::string& directory, const BatchReader& read, const BatchProgress& progress,
                        int jobs) {
  const std::string prefix = DirectoryPrefix(directory);
  const std::vector<std::string> names = PefFilesOf(directory);
  std::vector<BatchOutcome> outcomes(names.size());
  WorkerPool<NoWorkerState> pool;
  NoWorkerState none;
  pool.ForEach(
      static_cast<int>(names.size()), std::max(jobs, 1), none,
      [&](int i, NoWorkerState&) { outcomes[i] = ConvertPefFile(prefix, names[i], read, nullptr); },
      [&](int i) {
        TellOutcome(outcomes[i], names[i], progress, true);
        outcomes[i] = {};
      });
  return static_cast<int>(names.size());
}

std::string BatchFailuresText(int failed, int total, Language language) {
  if (failed != 1)
    return FormatResString(Text::FilesNotConverted, language, {FormatNumber(failed, "0"), FormatNumber(total, "0")});
  return total == 1 ? GetResString(Text::OneFileNotConverted, language)
                    : FormatResString(Text::OneOfFilesNotConverted, language, {"1", FormatNumber(total, "0")});
}

void BatchConvertDirectory(const std::string& directory, UserInterface& ui) {
  struct ReadyAtEnd {
    UserInterface& ui;
    ~ReadyAtEnd() {
      ui.SetStatusText(GetResString(Text::Ready, ui.Language()));
      ui.SetBusy(false);
    }
  } ready{ui};
  ui.SetBusy(true);
  // A file that fails is passed over, so that one bad file does not leave
  // the rest unconverted, and nothing stops the run to ask: the failures
  // and warnings are listed once at the end.
  const Language language = ui.Language();
  std::vector<std::string> failures, warnings;
  ReadOptions options;
  options.requirePoints = true;
  const int total = ConvertPefDirectory(
      directory, [&](const std::string& path) { return ReadPolarFile(path, nullptr, options); },
      [&](const BatchStep& step) {
        if (step.stage == BatchStage::Writing) {
          ui.SetStatusText(step.source + " -> " + step.target);
          return true;
        }
        std::string failure;
        for (const Diagnostic& diagnostic : step.report.diagnostics) {
          if (diagnostic.quiet) continue;
          if (diagnostic.severity == Severity::Warning)
            warnings.push_back(DiagnosticTextNamingFile(diagnostic, language));
          else if (failure.empty())
            failure = DiagnosticText(diagnostic, language);
        }
        if (step.error) failure = ErrorText(*step.error, language, false);
        if (step.stage == BatchStage::Failed) failures.push_back(step.source + ": " + failure);
        return true;
      });
  if (failures.empty() && warnings.empty()) return;
  std::string text;
  if (!failures.empty()) text = BatchFailuresText(static_cast<int>(failures.size()), total, language);
  for (const std::string& failure : failures) text += "\r\n" + failure;
  if (!failures.empty() && !warnings.empty()) text += "\r\n";
  for (const std::string& warning : warnings) text += (text.empty() ? "" : "\r\n") + warning;
  if (failures.empty())
    ui.ShowMessage(text, WarningTitle(language), MessageIcon::Warning);
  else
    ui.ShowMessage(text, ErrorTitle(language), MessageIcon::Critical);
}

bool BatchConvert(UserInterface& ui) {
  const std::string fileName = ui.ChooseFile(ImportRequest(ui.Language(), false));
  const size_t slash = fileName.rfind('/');
  if (fileName.empty() || slash == std::string::npos) {
    ui.SetStatusText(GetResString(Text::Ready, ui.Language()));
    return false;
  }
  BatchConvertDirectory(fileName.substr(0, slash + 1), ui);
  return true;
}

}  // namespace tavilo
