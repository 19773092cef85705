#include "strings/string_table.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <tuple>

#include "base/errors.h"
#include "formats/file_text.h"
#include "formats/pef_index.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

// A spot check of both languages; the filters are lists the file dialogs split.
TEST(StringTable, TextsStandAsTheProgramShowsThemAndIdsOutsideTheTableFail) {
  const std::tuple<Text, const char*, const char*> cases[] = {
      {Text::Ready, "Ready.", "Bereit."},
      {Text::AboutProgramCan, "The Tavilo can...\"", "Der Tavilo kann...\""},
      {Text::UnknownFileFormat, "Unknown File Format!", "Umbekanntes Dateiformat!"},
  };
  for (const auto& [id, english, german] : cases)
    EXPECT_EQ(GetResString(id, Language::English) + "|" + GetResString(id, Language::German),
              std::string(english) + "|" + german);
  EXPECT_EQ(ResourceString(2073), "Umbekanntes Dateiformat!");
  EXPECT_EQ(ErrorTitle(Language::German), "Tavilo: Fehler");
  EXPECT_EQ(FormatResString(Text::FileAndLine, Language::German, {"/data/wing.pol", "14"}), "/data/wing.pol, Zeile 14");
  EXPECT_EQ(FormatResString(Text::FileNotFound, Language::English, {"50% wing.pol"}), "File not found: 50% wing.pol");
  EXPECT_EQ(DialogTitle(GetResString(Text::SaveGraphsAs, Language::German)), "Grafiken speichern unter");
  EXPECT_EQ(DialogTitle("Flap && Slot &Points"), "Flap & Slot Points");
  const int ready = static_cast<int>(Text::Ready);
  // 99 lies between the blocks; language 0 would address ids 0 to 92, which do not exist.
  for (auto [id, language] : {std::pair{93, 1}, {99, 2}, {-1, 1}, {ready, 0}, {ready, 3}})
    EXPECT_THROW(GetResString(static_cast<Text>(id), static_cast<Language>(language)), ResourceError) << id;
  EXPECT_THROW(GetResString(Text::Ready, static_cast<Language>(3000000)), OverflowError);
}

// Our own words come from the table; the path and the system's reason stay as given.
TEST(StringTable, FileErrorsSpeakTheUsersLanguageAndKeepPathAndSystemReason) {
  testing::TempDir dir;
  const std::string missing = dir.File("no dir/a.xml");
  const std::string noSuchFile = std::strerror(ENOENT);  // the system's words, in the system's language
  const struct {
    std::function<void()> action;
    std::string english, german;  // German for a spot check
  } cases[] = {
      {[&] { WriteFileAtomically(missing, "x"); }, "File access error: cannot write " + missing + ": " + noSuchFile,
       "Fehler beim Dateizugriff: " + missing + " kann nicht geschrieben werden: " + noSuchFile},
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
      EXPECT_EQ(c.german.empty() ? "" : ErrorText(error, Language::German), c.german);
    }
  }
}

}  // namespace
}  // namespace tavilo
