#include <gtest/gtest.h>

#include <set>

#include "model/errors.h"
#include "strings/captions.h"
#include "strings/string_table.h"

namespace tavilo {
namespace {

TEST(StringTable, TextsStandExactlyAsTheProgramShowsThem) {
  const struct {
    int id;
    const char* english;
    const char* german;
  } cases[] = {
      {0, "-----ENGLISH-----", "-----DEUTSCH-----"},
      {3, "Ready.", "Bereit."},
      {34, "Please select one airfoil and press the OK button.",
       "Bitte wählen Sie ein Profil  und dann die Schaltfläche OK."},
      {42, "Stall Cd at Cl Max:", "Stall Cw bei Ca Max:"},
      {69, "The Tavilo can...\"", "Der Tavilo kann...\""},
      {72, "This is no valid XML file!", "Dies ist keine gültige XML Polarendatei !"},
      {73, "Unknown File Format!", "Umbekanntes Dateiformat!"},
      {87, "Prints all active polars.", "Druckt all aktiven Polaren."},
      {90, "Mach number", "Machzahl:"},
      {91, "sort on Reynolds number", "nach &Reynoldszahl sortieren"},
      {92, "sort on &Mach number", "nach &Machzahl sortieren"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GetResString(c.id, kEnglish), c.english) << c.id;
    EXPECT_EQ(GetResString(c.id, kGerman), c.german) << c.id;
  }
  EXPECT_EQ(ErrorTitle(kGerman), "Tavilo: Fehler");
  EXPECT_EQ(ResourceString(2073), "Umbekanntes Dateiformat!");
  EXPECT_EQ(GetResString(62, kGerman).substr(0, 44), "Polar Exchange Format (*.xml)|*.xml|Polar Ex");
  EXPECT_EQ(ErrorTitle(kEnglish), "Tavilo: Error");
  EXPECT_EQ(GetResString(82, kEnglish),
            "Polar Exchange File (*.xml)|*.xml|Polar Exchange File (*.pef)|*.pef|Xfoil Polar File "
            "(*.pol)|*.pol|Mses Polar File (polar.*)|polar.*|Eppler Input File (*.epp)|*.epp");
  // The export filter with CSV is 82's list and one pair more.
  for (int language : {kEnglish, kGerman})
    EXPECT_EQ(GetResString(171, language).rfind(GetResString(82, language) + "|", 0), 0u) << language;
}

TEST(StringTable, IdsOutsideTheTableFail) {
  EXPECT_THROW(GetResString(93, kEnglish), ResourceError);
  EXPECT_THROW(GetResString(-1, kEnglish), ResourceError);
  for (int n = 0; n <= 92; ++n) EXPECT_FALSE(ResourceString(1000 + n).empty() || ResourceString(2000 + n).empty()) << n;
  // A broken setting: language 0 addresses ids 0 to 92, which do not exist.
  EXPECT_THROW(GetResString(3, 0), ResourceError);
  EXPECT_THROW(GetResString(3, 3), ResourceError);
  EXPECT_THROW(GetResString(3, 3000000), OverflowError);
}

TEST(StringTable, LaterTextsStandInBothLanguagesAndTakeArguments) {
  for (auto [first, last] : {std::pair(100, 118), std::pair(120, 124), std::pair(210, 239)}) {
    for (int n = first; n <= last; ++n)
      EXPECT_FALSE(ResourceString(1000 + n).empty() || ResourceString(2000 + n).empty()) << n;
  }
  EXPECT_THROW(GetResString(99, kGerman), ResourceError) << "no text between the blocks";
  EXPECT_EQ(FormatResString(113, kGerman, {"/data/wing.pol", "14"}), "/data/wing.pol, Zeile 14");
  EXPECT_EQ(FormatResString(104, kEnglish, {"50% wing.pol"}), "File not found: 50% wing.pol") << "arguments stay as they are";
}

TEST(StringTable, CaptionListsNameEachControlOnceWithValidIds) {
  for (auto list : {MainWindowCaptions(), AirfoilSelectCaptions(), AboutCaptions(),
                    OptionsCaptions(), ApproxCaptions()}) {
    std::set<std::pair<std::string, int>> seen;
    for (const Caption& c : list) {
      EXPECT_TRUE(seen.insert({std::string(c.element), c.item}).second) << c.element;
      EXPECT_NO_THROW(GetResString(c.id, kEnglish)) << c.element;
    }
    EXPECT_EQ(list.front().target, CaptionTarget::WindowTitle);
  }
  EXPECT_EQ(MainWindowCaptions().size(), 37u);
  EXPECT_EQ(ApproxCaptions().size(), 14u);
  EXPECT_EQ(AirfoilSelectCaptions().front().id, 32);
}

TEST(StringTable, AboutTextListsFormatsAndGraphsInTheCurrentLanguage) {
  std::string english = AboutText(kEnglish);
  EXPECT_EQ(english.rfind("Version ", 0), 0u);
  EXPECT_NE(english.find("\r\nThe Tavilo can...\"\r\n...read, display and print\r\n"), std::string::npos);
  EXPECT_NE(english.find("   .TXT, .MWK, .CSV\tpolar table in columns"), std::string::npos);
  EXPECT_NE(english.find("...export to:\r\n   .XML\tPolar Exchange Format\r\n   .PEF\tolder Polar Exchange Format\r\n"
                         "   .POL\tXfoil 5.4 polar file\r\n   .CSV\tpolar table that Tavilo reads back\r\n"),
            std::string::npos);
  EXPECT_EQ(english.find(".EPP"), std::string::npos) << "no Eppler input writer yet";
  EXPECT_NE(english.find("the Tavilo authors"), std::string::npos);
  std::string german = AboutText(kGerman);
  EXPECT_NE(german.find("...exportieren nach:\r\n   .XML\tPolaren-Austauschformat"), std::string::npos);
  EXPECT_NE(german.find("   Lift Coefficient vs. Drag Coefficient"), std::string::npos)
      << "the fixed lines stay English";
}

}  // namespace
}  // namespace tavilo
