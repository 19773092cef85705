#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include "base/errors.h"
#include "formats/file_text.h"
#include "formats/pef_index.h"
#include "strings/string_table.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

// A spot check of both languages; the filters are lists the file dialogs split.
TEST(StringTable, TextsStandAsTheProgramShowsThemAndIdsOutsideTheTableFail) {
  const struct {
    Text id;
    const char* english;
    const char* german;
  } cases[] = {
      {Text::Ready, "Ready.", "Bereit."},
      {Text::AboutProgramCan, "The Tavilo can...\"", "Der Tavilo kann...\""},
      {Text::UnknownFileFormat, "Unknown File Format!", "Umbekanntes Dateiformat!"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GetResString(c.id, Language::English), c.english) << c.english;
    EXPECT_EQ(GetResString(c.id, Language::German), c.german) << c.english;
  }
  EXPECT_EQ(ResourceString(2073), "Umbekanntes Dateiformat!");
  EXPECT_EQ(ErrorTitle(Language::German), "Tavilo: Fehler");
  // The export filter with CSV is the old list and one pair more.
  for (Language language : {Language::English, Language::German})
    EXPECT_EQ(GetResString(Text::ExportFilterWithCsv, language).rfind(GetResString(Text::ExportFilter, language) + "|", 0),
              0u)
        << static_cast<int>(language);
  EXPECT_EQ(FormatResString(Text::FileAndLine, Language::German, {"/data/wing.pol", "14"}), "/data/wing.pol, Zeile 14");
  EXPECT_EQ(FormatResString(Text::FileNotFound, Language::English, {"50% wing.pol"}), "File not found: 50% wing.pol") << "arguments stay as they are";
  EXPECT_EQ(DialogTitle(GetResString(Text::SaveGraphsAs, Language::German)), "Grafiken speichern unter");
  EXPECT_EQ(DialogTitle("Flap && Slot &Points"), "Flap & Slot Points");

  EXPECT_THROW(GetResString(static_cast<Text>(93), Language::English), ResourceError);
  EXPECT_THROW(GetResString(static_cast<Text>(99), Language::German), ResourceError) << "no text between the blocks";
  EXPECT_THROW(GetResString(static_cast<Text>(-1), Language::English), ResourceError);
  // A broken setting: language 0 addresses ids 0 to 92, which do not exist.
  EXPECT_THROW(GetResString(Text::Ready, static_cast<Language>(0)), ResourceError);
  EXPECT_THROW(GetResString(Text::Ready, static_cast<Language>(3)), ResourceError);
  EXPECT_THROW(GetResString(Text::Ready, static_cast<Language>(3000000)), OverflowError);
}

// Code names a text only by its name: each id of the table has exactly one,
// and each name has a text in both languages.
TEST(StringTable, EveryIdHasOneNameAndEveryNameATextInBothLanguages) {
  std::ifstream header(TAVILO_TEST_DATA "/../../src/strings/text_ids.h");
  ASSERT_TRUE(header.is_open());
  const std::string source((std::istreambuf_iterator<char>(header)), std::istreambuf_iterator<char>());
  const std::regex entry(R"(\n  (\w+) = (\d+),)");
  std::map<int, std::string> named;
  std::set<std::string> names;
  for (std::sregex_iterator m(source.begin(), source.end(), entry), end; m != end; ++m) {
    const std::string name = (*m)[1];
    const int id = std::stoi((*m)[2]);
    EXPECT_TRUE(named.emplace(id, name).second) << name << " and " << named[id] << " share " << id;
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_NO_THROW(GetResString(static_cast<Text>(id), Language::English)) << name;
    EXPECT_NO_THROW(GetResString(static_cast<Text>(id), Language::German)) << name;
  }
  ASSERT_GT(named.size(), 200u) << "the names were not found in the header";
  for (int id = 0; id < 1000; ++id) {
    bool inTable = true;
    try {
      GetResString(static_cast<Text>(id), Language::English);
    } catch (const ResourceError&) {
      inTable = false;
    }
    EXPECT_TRUE(!inTable || named.contains(id)) << "id " << id << " has no name";
  }
}

// Our own words come from the table; the path and the system's reason stay as given.
TEST(StringTable, FileErrorsSpeakTheUsersLanguageAndKeepPathAndSystemReason) {
  testing::TempDir dir;
  std::filesystem::create_directory(dir.File("taken.xml"));
  const std::string missing = dir.File("no dir/a.xml"), taken = dir.File("taken.xml");
  // The system's words, in the system's language.
  const std::string noSuchFile = std::strerror(ENOENT);
  const struct {
    std::function<void()> action;
    std::string english, german;  // German for a spot check
  } cases[] = {
      {[&] { WriteFileAtomically(missing, "x"); },
       "File access error: cannot write " + missing + ": " + noSuchFile,
       "Fehler beim Dateizugriff: " + missing + " kann nicht geschrieben werden: " + noSuchFile},
      {[&] { WriteFileAtomically(taken, "x"); },
       "File access error: cannot replace " + taken + ": " + std::strerror(EISDIR), ""},
      {[] {
         char byte;
         InputFile("/proc/self/mem").ReadAt(&byte, 1, 0);
       },
       "File access error: cannot read /proc/self/mem: " + std::string(std::strerror(EIO)), ""},
      {[] { PefIndex::OfFile("/dev/null"); },
       "File access error: the PEF reader needs /dev/null as a regular file of less than 4 GB", ""},
  };
  for (const auto& c : cases) {
    try {
      c.action();
      ADD_FAILURE() << c.english;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(ErrorText(error, Language::English), c.english);
      EXPECT_EQ(error.what(), c.english);
      if (!c.german.empty()) {
        EXPECT_EQ(ErrorText(error, Language::German), c.german);
      }
    }
  }
}

}  // namespace
}  // namespace tavilo
