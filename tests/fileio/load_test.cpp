#include "fileio/load.h"

#include <gtest/gtest.h>

#include "fileio/transfer.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "model/errors.h"
#include "strings/string_table.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::RecordingUserInterface;
using testing::TempDir;

TEST(LoadByName, TheNameAloneChoosesTheReader) {
  const std::pair<const char*, InputFormat> cases[] = {
      {"/data/polar.dat", InputFormat::Xfoil},     // MSES: "polar." anywhere
      {"/data/Polar.dat", InputFormat::Unknown},   // that search is case-sensitive
      {"/data/polar.xml", InputFormat::Xfoil},     // and it comes first
      {"/polar.d/wing.xml", InputFormat::Xfoil},   // directories included
      {"FOIL.POL", InputFormat::Xfoil},            // extensions compare in lower case
      {"foil.pol.bak", InputFormat::Unknown},
      {"wing.PEF", InputFormat::Pef},
      {"wing.Xml", InputFormat::Xml},
      {"e387.drg", InputFormat::Drag},
      {"model.mwk", InputFormat::WindTunnel},
      {"eppler.txt", InputFormat::EpplerOutput},
      {"pef", InputFormat::Unknown},
      {"", InputFormat::Unknown},
  };
  for (const auto& [name, format] : cases) EXPECT_EQ(InputFormatOf(name), format) << name;
}

TEST(LoadFile, ShowsProgressTitleAndNameThroughTheUserInterface) {
  TempDir dir;
  Airfoil source;
  source.Name = "Clark Y";
  auto set = std::make_shared<Configuration>();
  auto polar = std::make_shared<Polar>();
  polar->Selected = true;
  set->AddPolar(polar);
  source.AddConfiguration(set);
  const std::string path = dir.File("clark.xml");
  WriteToXML(source, path);

  RecordingUserInterface ui;
  AirfoilPtr airfoil = LoadFile(path, ui);
  EXPECT_EQ(airfoil->Name, "Clark Y");
  EXPECT_EQ(airfoil->ConfigCount(), 1);
  EXPECT_EQ(ui.windowTitle, "Tavilo - " + path);
  EXPECT_EQ(ui.airfoilName, "Clark Y");
  EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"Reading...", "Ready."}));
  EXPECT_EQ(ui.busyChanges, (std::vector<bool>{true, false}));
}

TEST(LoadFile, AnUnknownFormatGivesAnEmptyAirfoilAndTheMessage) {
  SetLanguage(kGerman);
  RecordingUserInterface ui;
  AirfoilPtr airfoil = LoadFile("/tmp/notes.doc", ui);
  SetLanguage(kEnglish);
  EXPECT_EQ(airfoil->ConfigCount(), 0);
  ASSERT_EQ(ui.messages.size(), 1u);
  EXPECT_EQ(ui.messages[0].text, "Umbekanntes Dateiformat!");
  EXPECT_EQ(ui.messages[0].title, "Tavilo: Fehler");
}

TEST(LoadFile, UnreadableFormatsLoadEmptyWithAMessage) {
  TempDir dir;
  for (const char* name : {"tunnel.mwk", "eppler.txt"}) {
    RecordingUserInterface ui;
    AirfoilPtr airfoil = LoadFile(dir.Write(name, "whatever"), ui);
    EXPECT_EQ(airfoil->ConfigCount(), 0) << name;
    ASSERT_EQ(ui.messages.size(), 1u) << name;
    EXPECT_NE(ui.messages[0].text.find("cannot be read yet"), std::string::npos);
  }
}

TEST(LoadFile, AMissingFileRaisesAndStillRestoresThePointer) {
  RecordingUserInterface ui;
  EXPECT_THROW(LoadFile("/nonexistent/wing.pef", ui), FileNotFoundError);
  EXPECT_EQ(ui.busyChanges.back(), false);
  EXPECT_EQ(ui.statusTexts.back(), "Ready.");
}

TEST(LoadFile, BadBytesNeverCrash) {
  TempDir dir;
  std::string random;
  for (int i = 0; i < 4096; ++i) random.push_back(static_cast<char>((i * 7919) % 251));
  const std::string xmlAsPef = "<?xml version=\"1.0\"?>\r\n<configurations></configurations>\r\n";
  for (const auto& [name, bytes] : std::vector<std::pair<std::string, std::string>>{
           {"empty.pef", ""}, {"empty.xml", ""}, {"empty.pol", ""}, {"empty.drg", ""},
           {"random.pef", random}, {"random.xml", random}, {"random.pol", random},
           {"random.drg", random}, {"really-xml.pef", xmlAsPef}}) {
    RecordingUserInterface ui;
    AirfoilPtr airfoil;
    try {
      airfoil = LoadFile(dir.Write(name, bytes), ui);
    } catch (const RuntimeError&) {
      continue;  // a clear error is fine, a crash is not
    }
    EXPECT_NE(airfoil, nullptr) << name;
  }
}

}  // namespace
}  // namespace tavilo
