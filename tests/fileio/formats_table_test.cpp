// The format table: which names pick which format, and the fixed lists and
// texts that must agree with its rows.
#include "fileio/formats_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "strings/captions.h"
#include "strings/string_table.h"

namespace tavilo {
namespace {

std::string IdOf(const FileFormat* format) {
  return format != nullptr ? format->id : "";
}

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

// The patterns of a filter text "Label|pattern|Label|pattern", or of a
// pattern list "a;b".
std::set<std::string> PatternsOf(const std::string& text, char separator, bool everySecond) {
  std::set<std::string> patterns;
  size_t start = 0;
  for (int field = 0; start <= text.size(); ++field) {
    size_t end = text.find(separator, start);
    if (end == std::string::npos) end = text.size();
    if (!everySecond || field % 2 == 1) patterns.insert(text.substr(start, end - start));
    start = end + 1;
  }
  return patterns;
}

TEST(FormatTable, TheFixedListsNameTheRowsOnThem) {
  const struct {
    FormatList list;
    std::set<std::string> fixed;
  } cases[] = {
      {kFileList, PatternsOf(kFileListPattern, ';', false)},
      {kImportFilter, PatternsOf(GetResString(Text::ImportFilter, Language::English), '|', true)},
      {kExportFilter, PatternsOf(GetResString(Text::ExportFilter, Language::English), '|', true)},
      {kCsvExportFilter, PatternsOf(GetResString(Text::ExportFilterWithCsv, Language::German), '|', true)},
  };
  for (const auto& c : cases)
    EXPECT_EQ(PatternsOf(PatternOfList(c.list), ';', false), c.fixed) << c.list;
  EXPECT_EQ(PatternOfList(kAllPolarFiles), "*.xml;*.pef;*.pol;polar.*;*.drg;*.mwk;*.txt;*.csv");
}

TEST(FormatTable, AboutListsWhatIsReadAndWrittenInTheCurrentLanguage) {
  const std::string english = AboutText(Language::English, AboutReadLines(), AboutWrittenLines());
  for (const char* lines :
       {"\r\nThe Tavilo can...\"\r\n...read, display and print\r\n   .XML\tPolar Exchange Format\r\n",
        "   .DRG\tPrinceton and UIUC drag polar file\r\n   .TXT, .MWK, .CSV\tpolar table in columns",
        "...export to:\r\n   .XML\tPolar Exchange Format\r\n   .PEF\tolder Polar Exchange Format\r\n"
        "   .POL\tXfoil 5.4 polar file\r\n   .CSV\tpolar table that Tavilo reads back\r\n"
        "Graphs (from left to right):\r\n"})
    EXPECT_NE(english.find(lines), std::string::npos) << lines;
  EXPECT_EQ(english.find(".EPP"), std::string::npos) << "no Eppler input writer yet";
  const std::string german = AboutText(Language::German, AboutReadLines(), AboutWrittenLines());
  EXPECT_NE(german.find("...exportieren nach:\r\n   .XML\tPolaren-Austauschformat"), std::string::npos);
  EXPECT_NE(german.find("   Lift Coefficient vs. Drag Coefficient"), std::string::npos)
      << "the fixed lines stay English";
}

}  // namespace
}  // namespace tavilo
