#include "fileio/transfer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "fileio/clipboard.h"
#include "formats/file_text.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "model/errors.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::RecordingUserInterface;
using testing::TempDir;

// An airfoil named `name` with one set of one selected polar of two points.
AirfoilPtr Sample(const std::string& name, double re = 200000) {
  auto airfoil = std::make_shared<Airfoil>();
  airfoil->Name = name;
  auto set = std::make_shared<Configuration>();
  set->Name = name + " set";
  auto polar = std::make_shared<Polar>();
  polar->ReynoldsNumber = re;
  polar->Selected = true;
  for (double alfa : {0.0, 4.0}) {
    PolarPoint point;
    point.Alfa = alfa;
    point.Cl = 0.1 * alfa;
    point.Cd = 0.01;
    polar->AddPoint(point);
  }
  set->AddPolar(polar);
  airfoil->AddConfiguration(set);
  return airfoil;
}

TEST(Import, AnEmptyAirfoilTakesTheImportedNameAndSharesItsSets) {
  Airfoil current;
  current.Name = "old";
  AirfoilPtr imported = Sample("NACA 4412");
  ImportInto(current, *imported);
  EXPECT_EQ(current.Name, "NACA 4412");
  ASSERT_EQ(current.ConfigCount(), 1);
  EXPECT_EQ(current.Configuration(1), imported->Configuration(1)) << "shared, not copied";
}

TEST(Import, AnAirfoilWithSetsKeepsItsName) {
  AirfoilPtr current = Sample("Clark Y");
  ImportInto(*current, *Sample("NACA 4412"));
  EXPECT_EQ(current->Name, "Clark Y");
  EXPECT_EQ(current->ConfigCount(), 2);
}

TEST(Import, ThroughTheDialogAndCancel) {
  TempDir dir;
  WriteToXML(*Sample("E387"), dir.File("e387.xml"));
  RecordingUserInterface ui;
  Airfoil current;
  EXPECT_FALSE(ImportFile(current, ui)) << "cancel";
  ui.fileReplies.push_back(dir.File("e387.xml"));
  EXPECT_TRUE(ImportFile(current, ui));
  EXPECT_EQ(current.Name, "E387");
  ASSERT_EQ(ui.fileRequests.size(), 2u);
  EXPECT_EQ(ui.fileRequests[0].title, "Import to current airfoil");
  EXPECT_EQ(ui.fileRequests[0].kind, FileDialogKind::Open);
}

TEST(Export, EveryWritableFormatByItsExtensionInAnyCase) {
  TempDir dir;
  AirfoilPtr airfoil = Sample("SD7037");
  RecordingUserInterface ui;
  const std::pair<const char*, const char*> cases[] = {
      {"out.xml", "<?xml version=\"1.0\"?>\r\n"},
      {"OUT.PEF", "; This is a polar exchange file (PEF)\r\n"},
      {"out.Pol", "\r\n       XFOIL         Version 5.4\r\n"}};
  for (const auto& [name, start] : cases) {
    EXPECT_TRUE(ExportAirfoil(*airfoil, dir.File(name), ui)) << name;
    EXPECT_EQ(dir.Read(name).rfind(start, 0), 0u) << name;
  }
  EXPECT_TRUE(ui.messages.empty());
}

TEST(Export, AnUnknownExtensionWritesNothingAndNamesTheFile) {
  TempDir dir;
  RecordingUserInterface ui;
  const std::string path = dir.File("polar.dat");
  EXPECT_FALSE(ExportAirfoil(*Sample("x"), path, ui));
  EXPECT_FALSE(std::filesystem::exists(path));
  ASSERT_EQ(ui.messages.size(), 1u);
  EXPECT_EQ(ui.messages[0].text, "Unknown File Format!\r\n'" + path + "'");
  EXPECT_FALSE(ExportAirfoil(*Sample("x"), dir.File("wing.epp"), ui));
  EXPECT_FALSE(std::filesystem::exists(dir.File("wing.epp")));
}

TEST(Export, ThroughTheSaveDialog) {
  TempDir dir;
  RecordingUserInterface ui;
  ui.fileReplies.push_back(dir.File("saved.xml"));
  EXPECT_TRUE(ExportFile(*Sample("x"), ui));
  EXPECT_TRUE(std::filesystem::exists(dir.File("saved.xml")));
  EXPECT_EQ(ui.fileRequests[0].title, "Export Polar");
  EXPECT_TRUE(ui.fileRequests[0].promptOverwrite);
  EXPECT_EQ(ui.fileRequests[0].kind, FileDialogKind::Save);
}

TEST(Export, AnUnwritableDirectoryRaisesAndLeavesNoFile) {
  TempDir dir;
  RecordingUserInterface ui;
  // A plain file where the directory should be fails for root too, which
  // a read-only directory does not.
  dir.Write("not a directory", "x");
  EXPECT_THROW(ExportAirfoil(*Sample("x"), dir.File("not a directory/out.xml"), ui), FileAccessError);
  if (geteuid() != 0) {
    std::filesystem::permissions(dir.Path(), std::filesystem::perms::owner_read |
                                                 std::filesystem::perms::owner_exec);
    EXPECT_THROW(ExportAirfoil(*Sample("x"), dir.File("out.xml"), ui), FileAccessError);
    std::filesystem::permissions(dir.Path(), std::filesystem::perms::owner_all);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);
}

TEST(Batch, TargetNamesReplaceTheLastPefExtension) {
  EXPECT_EQ(BatchTargetName("wing.PEF"), "wing.xml");
  EXPECT_EQ(BatchTargetName("wing.pef"), "wing.xml");
  EXPECT_EQ(BatchTargetName("a.pef.Pef"), "a.pef.xml");
  EXPECT_EQ(BatchTargetName("Flügel mit Klappe.v2.pef"), "Flügel mit Klappe.v2.xml");
}

TEST(Batch, ConvertsEveryPefFileOfTheDirectoryAndReportsEach) {
  TempDir dir;
  WriteToPEF(*Sample("B", 300000), dir.File("b wing.PEF"));
  WriteToPEF(*Sample("A"), dir.File("a.pef"));
  dir.Write("notes.txt", "not a polar");
  RecordingUserInterface ui;
  ui.fileReplies.push_back(dir.File("notes.txt"));  // any file of the directory
  EXPECT_TRUE(BatchConvert(ui));
  std::vector<std::string> progress;
  for (const std::string& text : ui.statusTexts)
    if (text.find(" -> ") != std::string::npos) progress.push_back(text);
  EXPECT_EQ(progress, (std::vector<std::string>{"a.pef -> a.xml", "b wing.PEF -> b wing.xml"}));
  EXPECT_EQ(ui.statusTexts.back(), "Ready.");
  Airfoil back;
  ReadFromXML(back, dir.File("b wing.xml"), ui);
  EXPECT_EQ(back.Name, "B");
  EXPECT_EQ(back.Configuration(1)->Polar(1)->ReynoldsNumber, 300000);
  EXPECT_FALSE(std::filesystem::exists(dir.File("notes.xml")));
}

TEST(Batch, ADirectoryWithoutPefFilesOnlySaysReady) {
  TempDir dir;
  dir.Write("a.xml", "x");
  RecordingUserInterface ui;
  BatchConvertDirectory(dir.Path().string(), ui);
  EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"Ready."}));
  ui.statusTexts.clear();
  EXPECT_FALSE(BatchConvert(ui)) << "cancel";
  EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"Ready."}));
}

TEST(Batch, AMissingDirectoryRaisesAfterSayingReady) {
  RecordingUserInterface ui;
  EXPECT_THROW(BatchConvertDirectory("/nonexistent/dir", ui), FileNotFoundError);
  EXPECT_EQ(ui.statusTexts.back(), "Ready.");
}

TEST(Clipboard, CopyAndPasteAppendsADuplicateToTheSameSet) {
  AirfoilPtr airfoil = Sample("Clark Y");
  airfoil->Configuration(1)->Polar(1)->Name = "clean";
  airfoil->Configuration(1)->Polar(1)->MachNumber = 0.0;
  RecordingUserInterface ui;
  EXPECT_TRUE(CopyPolar(*airfoil, "c 1|p 1", ui));
  EXPECT_EQ(ui.clipboard.rfind("\r\n[Set1-Polar1]\r\nDescription1=clean\r\n", 0), 0u);
  EXPECT_TRUE(PastePolar(*airfoil, "c 1|p 1", ui));
  ASSERT_EQ(airfoil->Configuration(1)->PolarCount(), 2);
  const Polar& copy = *airfoil->Configuration(1)->Polar(2);
  EXPECT_EQ(copy.Name, "clean");
  EXPECT_EQ(copy.ReynoldsNumber, 200000);
  EXPECT_EQ(copy.PointCount(), 2);
  EXPECT_EQ(copy.Cl(2), 0.4);
  EXPECT_TRUE(copy.Selected);
}

TEST(Clipboard, NothingHappensOffPolarNodesOrWithoutPoints) {
  AirfoilPtr airfoil = Sample("x");
  RecordingUserInterface ui;
  EXPECT_FALSE(CopyPolar(*airfoil, "c 1", ui));
  EXPECT_FALSE(CopyPolar(*airfoil, "r", ui));
  EXPECT_EQ(ui.clipboard, "");
  ui.clipboard = "just some text\nfrom another program";
  EXPECT_FALSE(PastePolar(*airfoil, "c 1|p 1", ui));
  EXPECT_EQ(airfoil->Configuration(1)->PolarCount(), 1);
  ui.clipboard = "\n[Set1-Polar1]\nReynoldsNumber=1\nNumberPoints=1\nValue01=1 2 3\n";
  EXPECT_TRUE(PastePolar(*airfoil, "c 1|p 1", ui)) << "LF-only text from another program";
  EXPECT_EQ(airfoil->Configuration(1)->Polar(2)->Cd(1), 3.0);
}

}  // namespace
}  // namespace tavilo
