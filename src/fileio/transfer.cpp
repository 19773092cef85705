#include "fileio/transfer.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "fileio/file_names.h"
#include "fileio/load.h"
#include "formats/csv.h"
#include "formats/pef.h"
#include "formats/pol.h"
#include "formats/xml.h"
#include "model/errors.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

bool EndsWithPef(std::string_view name) { return UpperExtension(name) == ".PEF"; }

// The open dialog of Import, which Batch shares, title and the filters of
// id 62 included, as it always did; Import alone offers every polar file first.
FileDialogRequest ImportRequest(int language, bool allPolarFilesFirst) {
  std::string filter = GetResString(62, language);
  if (allPolarFilesFirst) filter = GetResString(115, language) + "|" + kAllPolarFilesPattern + "|" + filter;
  return {FileDialogKind::Open, GetResString(61, language), filter, false};
}

bool WriteByName(const Airfoil& airfoil, const std::string& fileName, UserInterface& ui) {
  switch (OutputFormatOf(fileName)) {
    case OutputFormat::Pef:
      WriteToPEF(airfoil, fileName);
      return true;
    case OutputFormat::Xfoil:
      WriteToPOL(airfoil, fileName);
      return true;
    case OutputFormat::Xml:
      WriteToXML(airfoil, fileName);
      return true;
    case OutputFormat::Csv:
      WriteToCSV(airfoil, fileName);
      return true;
    case OutputFormat::Eppler:
      // The Eppler input writer is not written yet; say so rather than
      // leave an empty file behind.
      ui.ShowMessage(GetResString(103, ui.Language()), ErrorTitle(ui.Language()), MessageIcon::Information);
      return false;
    case OutputFormat::Unknown:
      break;
  }
  ui.ShowMessage(GetResString(73, ui.Language()) + "\r\n'" + fileName + "'", ErrorTitle(ui.Language()),
                 MessageIcon::Critical);
  return false;
}

}  // namespace

OutputFormat OutputFormatOf(std::string_view fileName) {
  const std::string extension = UpperExtension(fileName);
  if (extension == ".PEF") return OutputFormat::Pef;
  if (extension == ".POL") return OutputFormat::Xfoil;
  if (extension == ".EPP") return OutputFormat::Eppler;
  if (extension == ".XML") return OutputFormat::Xml;
  if (extension == ".CSV") return OutputFormat::Csv;
  return OutputFormat::Unknown;
}

void ImportInto(Airfoil& current, const Airfoil& imported) {
  if (current.ConfigCount() == 0) current.Name = imported.Name;
  for (int i = 1; i <= imported.ConfigCount(); ++i) current.AddConfiguration(imported.Configuration(i));
}

bool ImportFile(Airfoil& current, UserInterface& ui) {
  const std::string fileName = ChooseImportFile(ui);
  if (fileName.empty()) return false;
  ImportInto(current, *LoadFile(fileName, ui));
  return true;
}

std::string ChooseImportFile(UserInterface& ui) { return ui.ChooseFile(ImportRequest(ui.Language(), true)); }

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
  const int language = ui.Language();
  FileDialogRequest request{FileDialogKind::Save, "Export " + GetResString(60, language), GetResString(171, language),
                            true};
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

void ConvertPefDirectory(const std::string& directory, const BatchReader& read, const BatchProgress& progress) {
  std::string prefix = directory;
  if (!prefix.empty() && prefix.back() != '/') prefix += '/';
  for (const std::string& name : PefFilesOf(directory)) {
    const LoadResult loaded = read(prefix + name);
    const std::string target = BatchTargetName(name);
    progress(BatchStep{name, target, loaded.report});
    AboutFile(prefix + target, [&] { WriteToXML(*loaded.airfoil, prefix + target); });
  }
}

void BatchConvertDirectory(const std::string& directory, UserInterface& ui) {
  struct ReadyAtEnd {
    UserInterface& ui;
    ~ReadyAtEnd() { ui.SetStatusText(GetResString(3, ui.Language())); }
  } ready{ui};
  ConvertPefDirectory(
      directory, [&ui](const std::string& path) { return LoadResult{LoadFile(path, ui), {}}; },
      [&ui](const BatchStep& step) { ui.SetStatusText(step.source + " -> " + step.target); });
}

bool BatchConvert(UserInterface& ui) {
  const std::string fileName = ui.ChooseFile(ImportRequest(ui.Language(), false));
  const size_t slash = fileName.rfind('/');
  if (fileName.empty() || slash == std::string::npos) {
    ui.SetStatusText(GetResString(3, ui.Language()));
    return false;
  }
  BatchConvertDirectory(fileName.substr(0, slash + 1), ui);
  return true;
}

}  // namespace tavilo
