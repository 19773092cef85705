#pragma once
// The file formats Tavilo reads and writes, one row each: the names a file
// is known by, its reader and writer, and the fixed lists and texts that
// name it. The loader, export, the dialogs' filters, the file list, the
// About text and the converter's usage all read this table, so adding a
// format is its reader in formats/, one row here and its tests.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/coordinates.h"
#include "formats/drg.h"
#include "formats/read_report.h"
#include "model/airfoil.h"
#include "strings/text_ids.h"

namespace tavilo {

// What a file of the format holds. Polar files fill an Airfoil; coordinate
// files an AirfoilOutline, through a reader of their own shape, and are
// never offered where polars are opened or imported.
enum class FormatKind { Polars, Coordinates };

// How a name picks its format.
enum class NameTest {
  Extension,  // the last four characters, in any case: ".pol" takes "FOIL.POL"
  Anywhere,   // anywhere in the path, directories included, case-sensitive: MSES "polar."
};

// The fixed lists a name is on, as bits.
enum FormatList : unsigned {
  kFileList = 1u << 0,         // the main window's file list, kFileListPattern
  kAllPolarFiles = 1u << 1,    // Import's first filter, after Text::AllPolarFiles
  kImportFilter = 1u << 2,     // Import's and Batch's filter text, Text::ImportFilter
  kExportFilter = 1u << 3,     // the export filter text of old, Text::ExportFilter
  kCsvExportFilter = 1u << 4,  // Export's filter text, Text::ExportFilterWithCsv: the old one and the CSV table
};

// The file list's pattern is fixed text: ".txt" (Eppler output) and MSES
// "polar.*" names are deliberately left to File/Import.
inline constexpr const char* kFileListPattern = "*.xml;*.pef;*.pol;*.mwk;*.drg";

// A name a format is known by.
struct FormatName {
  const char* text;  // ".pol", "polar."
  NameTest test = NameTest::Extension;
  // Where loading tries it, from 1 up, the first fitting name deciding
  // (".pol" and "polar." first, so that a "polar.xml" reads as XFOIL);
  // 0 where a file of this name is not read.
  int readOrder = 0;
  bool written = false;  // export writes a file of this name in the format
  unsigned lists = 0;    // FormatList bits
};

// What a reader is handed besides the airfoil and the path.
struct ReaderArguments {
  const AirfoilChoice& choose;  // picks the airfoil of a file with several
  // Never write to the file: a PEF file with LF line ends is converted in
  // memory rather than rewritten.
  bool leaveFileUnchanged = false;
};

struct FileFormat {
  const char* id;  // how code and tests name the row: "xfoil"
  FormatKind kind;
  std::vector<FormatName> names;  // in the order the lists show them
  // Fills the airfoil from the file; raises what the format's reader raises.
  ReadReport (*read)(Airfoil& airfoil, const std::string& path, const ReaderArguments& arguments) = nullptr;
  // Writes the selected polars; raises FileAccessError.
  WriteReport (*write)(const Airfoil& airfoil, const std::string& path) = nullptr;
  // Shown when a written name has no writer yet.
  std::optional<Text> notWrittenText{};
  // The About text's line under "...read, display and print" and under
  // "...export to:" (none: not on it).
  std::optional<Text> aboutReadLine{};
  std::optional<Text> aboutWrittenLine{};
  // The airfoils of a file that may hold several, from its bytes; null
  // where a file holds one.
  std::vector<std::string> (*airfoilNames)(std::string_view bytes) = nullptr;
  // Fills the outline from a coordinate file (FormatKind::Coordinates).
  ReadReport (*readOutline)(AirfoilOutline& outline, const std::string& path) = nullptr;
  // The converter's usage lists this row's names after the others', after
  // ", and " and this heading (null: among the others).
  const char* usageHeading = nullptr;
};

// Every row, in the order the lists and the About text show them.
const std::vector<FileFormat>& FileFormats();

// The format that reads `fileName` (a path), by the first of all read names
// in their read order that fits; null when none does.
const FileFormat* FormatToRead(std::string_view fileName, FormatKind kind = FormatKind::Polars);

// The format that export picks for `fileName` by its extension, any case;
// null when none. Its `write` may still be null (notWrittenText says why).
const FileFormat* FormatToWrite(std::string_view fileName, FormatKind kind = FormatKind::Polars);

// How a name stands in a file dialog's pattern: "*.pol", "polar.*".
std::string PatternOf(const FormatName& name);

// The names on `list`, row by row, as patterns joined by ";".
std::string PatternOfList(FormatList list);

// The About text's lines of the formats read and of those written, in row
// order.
std::vector<Text> AboutReadLines();
std::vector<Text> AboutWrittenLines();

}  // namespace tavilo
