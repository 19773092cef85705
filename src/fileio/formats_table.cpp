#include "fileio/formats_table.h"

#include <algorithm>

#include "fileio/file_names.h"
#include "formats/csv.h"
#include "formats/pef.h"
#include "formats/pol.h"
#include "formats/table.h"
#include "formats/xml.h"

namespace tavilo {

namespace {

constexpr unsigned kEveryList = kFileList | kAllPolarFiles | kImportFilter | kExportFilter | kCsvExportFilter;
constexpr unsigned kReadLists = kFileList | kAllPolarFiles | kImportFilter;
constexpr unsigned kExportLists = kExportFilter | kCsvExportFilter;

template <void (*writer)(const Airfoil&, const std::string&)>
WriteReport Quietly(const Airfoil& airfoil, const std::string& path) {
  writer(airfoil, path);
  return {};
}

std::vector<FileFormat> MakeFileFormats() {
  return {
      {.id = "xml",
       .kind = FormatKind::Polars,
       .names = {{.text = ".xml", .readOrder = 4, .written = true, .lists = kEveryList}},
       .read = [](Airfoil& airfoil, const std::string& path,
                  const ReaderArguments&) { return ReadFromXML(airfoil, path); },
       .write = WriteToXML,
       .aboutReadLine = Text::AboutReadsXml,
       .aboutWrittenLine = Text::AboutReadsXml},
      {.id = "pef",
       .kind = FormatKind::Polars,
       .names = {{.text = ".pef", .readOrder = 3, .written = true, .lists = kEveryList}},
       .read =
           [](Airfoil& airfoil, const std::string& path, const ReaderArguments& arguments) {
             return ReadFromPEF(airfoil, path,
                                arguments.leaveFileUnchanged ? LfOnlyFile::ConvertInMemory : LfOnlyFile::Rewrite);
           },
       .write = Quietly<WriteToPEF>,
       .aboutReadLine = Text::AboutReadsPef,
       .aboutWrittenLine = Text::AboutReadsPef},
      // MSES files are read as XFOIL files but never written under their
      // name; the export filter offers it all the same.
      {.id = "xfoil",
       .kind = FormatKind::Polars,
       .names = {{.text = ".pol", .readOrder = 1, .written = true, .lists = kEveryList},
                 {.text = "polar.",
                  .test = NameTest::Anywhere,
                  .readOrder = 1,
                  .lists = kAllPolarFiles | kImportFilter | kExportLists}},
       .read = [](Airfoil& airfoil, const std::string& path,
                  const ReaderArguments&) { return ReadFromPOL(airfoil, path); },
       .write = Quietly<WriteToPOL>,
       .aboutReadLine = Text::AboutReadsPol,
       .aboutWrittenLine = Text::AboutWritesPol},
      // Eppler input: offered by the export dialog, its writer not written yet.
      {.id = "eppler",
       .kind = FormatKind::Polars,
       .names = {{.text = ".epp", .written = true, .lists = kExportLists}},
       .notWrittenText = Text::EpplerNotWritten},
      {.id = "drag",
       .kind = FormatKind::Polars,
       .names = {{.text = ".drg", .readOrder = 5, .lists = kReadLists}},
       .read = [](Airfoil& airfoil, const std::string& path,
                  const ReaderArguments& arguments) { return ReadFromDRG(airfoil, path, arguments.choose); },
       .aboutReadLine = Text::AboutReadsDrg,
       .airfoilNames = DrgAirfoilNames},
      {.id = "table",
       .kind = FormatKind::Polars,
       .names = {{.text = ".mwk", .readOrder = 2, .lists = kReadLists},
                 {.text = ".txt", .readOrder = 6, .lists = kAllPolarFiles | kImportFilter},
                 {.text = ".csv", .readOrder = 7, .written = true, .lists = kAllPolarFiles | kCsvExportFilter}},
       .read = [](Airfoil& airfoil, const std::string& path,
                  const ReaderArguments& arguments) { return ReadFromTable(airfoil, path, arguments.choose); },
       .write = Quietly<WriteToCSV>,
       .aboutReadLine = Text::AboutReadsTable,
       .aboutWrittenLine = Text::AboutWritesCsv,
       .usageHeading = "the polar tables"},
      // The airfoil of an XFOIL run, Selig or Lednicer: on no polar list.
      {.id = "coordinates",
       .kind = FormatKind::Coordinates,
       .names = {{.text = ".dat", .readOrder = 8}, {.text = ".txt", .readOrder = 9}},
       .readOutline = ReadCoordinates},
  };
}

bool Fits(const FormatName& name, std::string_view fileName) {
  if (name.test == NameTest::Anywhere) return fileName.find(name.text) != std::string_view::npos;
  return UpperExtension(fileName) == AsciiUpper(name.text);
}

struct ReadName {
  const FormatName* name;
  const FileFormat* format;
};

// Every read name of every row, in read order.
const std::vector<ReadName>& ReadNames() {
  static const std::vector<ReadName> names = [] {
    std::vector<ReadName> all;
    for (const FileFormat& format : FileFormats())
      for (const FormatName& name : format.names)
        if (name.readOrder > 0) all.push_back({&name, &format});
    std::stable_sort(all.begin(), all.end(),
                     [](const ReadName& a, const ReadName& b) { return a.name->readOrder < b.name->readOrder; });
    return all;
  }();
  return names;
}

}  // namespace

const std::vector<FileFormat>& FileFormats() {
  static const std::vector<FileFormat> formats = MakeFileFormats();
  return formats;
}

const FileFormat* FormatToRead(std::string_view fileName, FormatKind kind) {
  for (const ReadName& read : ReadNames())
    if (read.format->kind == kind && Fits(*read.name, fileName)) return read.format;
  return nullptr;
}

const FileFormat* FormatToWrite(std::string_view fileName, FormatKind kind) {
  for (const FileFormat& format : FileFormats()) {
    if (format.kind != kind) continue;
    for (const FormatName& name : format.names)
      if (name.written && name.test == NameTest::Extension && Fits(name, fileName)) return &format;
  }
  return nullptr;
}

std::string PatternOf(const FormatName& name) {
  return name.test == NameTest::Anywhere ? std::string(name.text) + "*" : "*" + std::string(name.text);
}

std::string PatternOfList(FormatList list) {
  std::string pattern;
  for (const FileFormat& format : FileFormats())
    for (const FormatName& name : format.names)
      if (name.lists & list) pattern += (pattern.empty() ? "" : ";") + PatternOf(name);
  return pattern;
}

std::vector<Text> AboutReadLines() {
  std::vector<Text> lines;
  for (const FileFormat& format : FileFormats())
    if (format.aboutReadLine) lines.push_back(*format.aboutReadLine);
  return lines;
}

std::vector<Text> AboutWrittenLines() {
  std::vector<Text> lines;
  for (const FileFormat& format : FileFormats())
    if (format.aboutWrittenLine) lines.push_back(*format.aboutWrittenLine);
  return lines;
}

}  // namespace tavilo
