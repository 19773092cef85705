#include "fileio/formats_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "strings/captions.h"
#include "strings/string_table.h"

namespace tavilo {
namespace {

std::string IdOf(const FileFormat* format) { return format != nullptr ? format->id : ""; }

TEST(FormatTable, TheNameAloneChoosesReaderAndWriter) {
  const struct {
    const char* name;
    const char* reader;  // "" for an unknown format
    const char* writer;
  } cases[] = {
      {"C:/data/polar.dat", "xfoil", ""},     // MSES: "polar." anywhere, never written
      {"C:/Data/Polar.dat", "", ""},          // that search is case-sensitive
      {"/polar.d/wing.xml", "xfoil", "xml"},  // and comes first, directories included
      {"polar.xml", "xfoil", "xml"},
      {"polar.csv", "xfoil", "table"},
      {"FOIL.POL", "xfoil", "xfoil"},  // extensions compare in any case
      {"foil.pol.bak", "", ""},
      {"wing.PEF", "pef", "pef"},
      {"wing.Xml", "xml", "xml"},
      {"e387.drg", "drag", ""},
      {"model.mwk", "table", ""},
      {"eppler.txt", "table", ""},
      {"sheet.CSV", "table", "table"},
      {"input.epp", "", "eppler"},  // offered on export, not written yet
      {"pef", "", ""},
      {"naca4412.dat", "", ""},  // coordinates: never read as polars
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IdOf(FormatToRead(c.name)), c.reader) << c.name;
    EXPECT_EQ(IdOf(FormatToWrite(c.name)), c.writer) << c.name;
  }
  EXPECT_EQ(IdOf(FormatToRead("naca4412.dat", FormatKind::Coordinates)), "coordinates");
}

// The patterns of a filter "Label|pattern|..." (every second) or of a list "a;b".
std::set<std::string> PatternsOf(const std::string& text, char separator, bool everySecond) {
  std::set<std::string> patterns;
  for (size_t start = 0, end = 0, field = 0; start <= text.size(); start = end + 1, ++field) {
    end = std::min(text.find(separator, start), text.size());
    if (!everySecond || field % 2 == 1) patterns.insert(text.substr(start, end - start));
  }
  return patterns;
}

TEST(FormatTable, TheFixedListsNameTheRowsOnThem) {
  const std::pair<FormatList, std::set<std::string>> cases[] = {
      {kFileList, PatternsOf(kFileListPattern, ';', false)},
      {kImportFilter, PatternsOf(GetResString(Text::ImportFilter, Language::English), '|', true)},
      {kExportFilter, PatternsOf(GetResString(Text::ExportFilter, Language::English), '|', true)},
      {kCsvExportFilter, PatternsOf(GetResString(Text::ExportFilterWithCsv, Language::German), '|', true)},
  };
  for (const auto& [list, fixed] : cases) EXPECT_EQ(PatternsOf(PatternOfList(list), ';', false), fixed) << list;
  EXPECT_EQ(PatternOfList(kAllPolarFiles), "*.xml;*.pef;*.pol;polar.*;*.drg;*.mwk;*.txt;*.csv");
}

// No Eppler input writer yet; the graphs' lines stay English.
TEST(FormatTable, AboutListsWhatIsReadAndWrittenInTheCurrentLanguage) {
  const std::string english = AboutText(Language::English, AboutReadLines(), AboutWrittenLines());
  const std::string german = AboutText(Language::German, AboutReadLines(), AboutWrittenLines());
  EXPECT_NE(
      english.find("   .DRG\tPrinceton and UIUC drag polar file\r\n   .TXT, .MWK, .CSV\tpolar table in columns; Xfoil "
                   "and drag files saved as .TXT as well\r\n"
                   "(You have to rename the files as they are recognized by extension)\r\n"
                   "...export to:\r\n   .XML\tPolar Exchange Format\r\n   .PEF\tolder Polar Exchange Format\r\n"
                   "   .POL\tXfoil 5.4 polar file\r\n   .CSV\tpolar table that Tavilo reads back\r\nGraphs (from left"),
      std::string::npos);
  EXPECT_NE(german.find("...exportieren nach:\r\n   .XML\tPolaren-Austauschformat"), std::string::npos);
  EXPECT_NE(german.find("   Lift Coefficient vs. Drag Coefficient"), std::string::npos);
}

}  // namespace
}  // namespace tavilo
