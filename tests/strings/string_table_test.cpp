#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>

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
    int id;
    const char* english;
    const char* german;
  } cases[] = {
      {3, "Ready.", "Bereit."},
      {69, "The Tavilo can...\"", "Der Tavilo kann...\""},
      {73, "Unknown File Format!", "Umbekanntes Dateiformat!"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GetResString(c.id, kEnglish), c.english) << c.id;
    EXPECT_EQ(GetResString(c.id, kGerman), c.german) << c.id;
  }
  EXPECT_EQ(ResourceString(2073), "Umbekanntes Dateiformat!");
  EXPECT_EQ(ErrorTitle(kGerman), "Tavilo: Fehler");
  // The export filter with CSV is 82's list and one pair more.
  for (int language : {kEnglish, kGerman})
    EXPECT_EQ(GetResString(171, language).rfind(GetResString(82, language) + "|", 0), 0u) << language;
  EXPECT_EQ(FormatResString(113, kGerman, {"/data/wing.pol", "14"}), "/data/wing.pol, Zeile 14");
  EXPECT_EQ(FormatResString(104, kEnglish, {"50% wing.pol"}), "File not found: 50% wing.pol")
      << "arguments stay as they are";
  EXPECT_EQ(DialogTitle(GetResString(193, kGerman)), "Grafiken speichern unter");
  EXPECT_EQ(DialogTitle("Flap && Slot &Points"), "Flap & Slot Points");
  // 99 lies between the blocks; language 0, a broken setting, addresses ids 0 to 92.
  for (auto [id, language] : {std::pair{93, kEnglish}, {99, kGerman}, {-1, kEnglish}, {3, 0}, {3, 3}})
    EXPECT_THROW(GetResString(id, language), ResourceError) << id << " " << language;
  EXPECT_THROW(GetResString(3, 3000000), OverflowError);
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
      EXPECT_EQ(ErrorText(error, kEnglish), c.english);
      EXPECT_EQ(error.what(), c.english);
      if (!c.german.empty()) {
        EXPECT_EQ(ErrorText(error, kGerman), c.german);
      }
    }
  }
}

}  // namespace
}  // namespace tavilo
