#include "fileio/transfer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <tuple>

#include "base/errors.h"
#include "fileio/clipboard.h"
#include "fileio/load.h"
#include "formats/airfoil_summary.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "strings/string_table.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

// Counts umask changes: one, even for a moment, hands other threads' new files the wrong mode.
static std::atomic<int> umaskChanges{0};
extern "C" mode_t umask(mode_t mask) noexcept {
  ++umaskChanges;
  return static_cast<mode_t>(::syscall(SYS_umask, mask));
}

namespace tavilo {
namespace {

using testing::MakePoint;
using testing::RecordingUserInterface;
using testing::TempDir;

// An airfoil named `name` with one set of one selected polar of two points.
AirfoilPtr Sample(const std::string& name, double re = 200000) {
  const PolarPtr polar = testing::MakePolar(re, 0, true, {MakePoint(0, 0, 0.01), MakePoint(4, 0.4, 0.01)}, "clean");
  return std::make_shared<Airfoil>(testing::AirfoilOf(name, {testing::SetOf("", {polar})}));
}

TEST(LoadFile, ShowsProgressAndEveryReaderNamesAMissingFile) {
  TempDir dir;
  const std::string path = dir.File("clark.xml");
  WriteToXML(*Sample("Clark Y"), path);
  RecordingUserInterface ui;
  EXPECT_EQ(LoadFile(path, ui)->ConfigCount(), 1);
  EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"Reading...", "Ready."}));
  EXPECT_EQ(ui.busyChanges, (std::vector<bool>{true, false}));
  for (const char* name : {"wing.pef", "wing.xml", "wing.pol", "wing.drg", "wing.txt"}) {
    RecordingUserInterface failing;
    try {
      LoadFile(dir.File(name), failing);
      ADD_FAILURE() << name;
    } catch (const FileNotFoundError& error) {
      EXPECT_NE(std::string(error.what()).find(dir.File(name)), std::string::npos) << name;
    }
    EXPECT_EQ(failing.busyChanges.back(), false);
    EXPECT_EQ(failing.statusTexts.back(), "Ready.");
  }
}

TEST(ReadPolarFile, EachReaderReportsWhatWentWrongWithoutShowingIt) {
  TempDir dir;
  const std::string pol =
      "\n XFOIL\n\n Calculated polar for: NACA 0012\n\n 1 1\n\n xtrf\n Mach =   0.000     Re =     1.000 e 6\n"
      "\n alpha CL\n ----- --\n   0.0  0.1  0.01  0  0  1  1\n   1.0  1e999  0.01  0  0  1  1\n";
  // Name, text, the message of the one diagnostic of an error, quiet, stopped early, line.
  const std::tuple<std::string, std::string, std::optional<Text>, bool, bool, int> cases[] = {
      // XML wants its declaration exactly so, and then at least one set.
      {"wing.xml", "<polar-exchange-file/>", Text::NoValidXmlFile, false, false, 0},
      {"encoding.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<configurations/>", Text::NoValidXmlFile, false,
       false, 0},
      {"upper.xml", "<?XML version=\"1.0\"?>\n<configurations/>", Text::NoValidXmlFile, false, false, 0},
      {"wing2.xml", "<?xml version=\"1.0\"?>\r\n<polar-exchange-file/>\r\n", Text::NoDataSets, false, false, 0},
      {"wild.pol", pol, Text::Overflow, true, true, 14},
      {"notes.doc", "", Text::UnknownFileFormat, false, false, 0},
      {"cut.drg",
       "Airfoil: E387\nUIUC\n\n\n\n1\n\n\n200000\n\n2\n\n0 0.1 0.01 0.01 0.01 0.01 0.01\n",
       {},
       false,
       true,
       0},
      {"fine.pef", "[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=0\r\n", {}, false, false, 0},
      {"empty.pol", "", {}, false, false, 0},  // no points is an error only where asked
  };
  for (const auto& [name, text, messageId, quiet, stoppedEarly, line] : cases) {
    const std::string path = dir.Write(name, text);
    const ReadReport report = ReadPolarFile(path, {}).report;
    EXPECT_EQ(std::make_pair(report.HasError(), report.stoppedEarly), std::make_pair(!!messageId, stoppedEarly))
        << name;
    if (!messageId) continue;
    ASSERT_EQ(report.diagnostics.size(), 1u) << name;
    const Diagnostic& d = report.diagnostics[0];
    EXPECT_EQ(std::tie(d.messageId, d.quiet, d.file, d.line), std::tie(*messageId, quiet, path, line)) << name;
  }
  RecordingUserInterface ui;
  ShowDiagnostics(ReadPolarFile(dir.File("wild.pol"), {}).report, ui);
  EXPECT_TRUE(ui.messages.empty()) << "the window stays silent about a quiet one";
}

TEST(Import, AnEmptyAirfoilTakesTheNameAndSharesTheSetsAnotherKeepsItsName) {
  Airfoil current;
  current.Name = "old";
  AirfoilPtr imported = Sample("NACA 4412");
  ImportInto(current, *imported);
  EXPECT_EQ(current.Name, "NACA 4412");
  EXPECT_EQ(current.Configuration(1), imported->Configuration(1)) << "shared, not copied";
  ImportInto(current, *Sample("E387"));
  EXPECT_EQ(current.Name, "NACA 4412");
  EXPECT_EQ(current.ConfigCount(), 2);
}

TEST(Export, EveryWritableFormatByItsExtensionAndNothingForOthers) {
  TempDir dir;
  RecordingUserInterface ui;
  const std::pair<const char*, const char*> cases[] = {{"out.xml", "<?xml version=\"1.0\"?>\r\n"},
                                                       {"OUT.PEF", "; This is a polar exchange file (PEF)\r\n"},
                                                       {"out.Pol", "\r\n       XFOIL         Version 5.4\r\n"},
                                                       {"out.CSV", "set_no,set,polar_no,polar,re,mach"}};
  for (const auto& [name, start] : cases) {
    EXPECT_TRUE(ExportAirfoil(*Sample("SD7037"), dir.File(name), ui)) << name;
    EXPECT_EQ(dir.Read(name).rfind(start, 0), 0u) << name;
  }
  for (const char* name : {"polar.dat", "wing.epp"}) {
    EXPECT_FALSE(ExportAirfoil(*Sample("x"), dir.File(name), ui));
    EXPECT_FALSE(std::filesystem::exists(dir.File(name)));
  }
  ASSERT_EQ(ui.messages.size(), 2u);
  EXPECT_EQ(ui.messages[0].text, "Unknown File Format!\r\n'" + dir.File("polar.dat") + "'");
  ui.fileReplies.push_back(dir.File("saved.xml"));
  EXPECT_TRUE(ExportFile(*Sample("x"), ui) && std::filesystem::exists(dir.File("saved.xml")));
  EXPECT_TRUE(ui.fileRequests[0].promptOverwrite);
  EXPECT_TRUE(ui.fileRequests[0].filter.ends_with("|Polar Table (*.csv)|*.csv"));
  // Through a symbolic link the file it points to is written; the link stays.
  const std::string target = dir.Write("target.xml", "old");
  std::filesystem::create_symlink("target.xml", dir.File("link.xml"));
  EXPECT_TRUE(ExportAirfoil(*Sample("linked"), dir.File("link.xml"), ui));
  EXPECT_TRUE(std::filesystem::is_symlink(dir.File("link.xml")));
  EXPECT_NE(dir.Read("target.xml").find("<name>linked</name>"), std::string::npos);
  // A plain file where the directory should be fails even for root.
  dir.Write("not a directory", "x");
  EXPECT_THROW(ExportAirfoil(*Sample("x"), dir.File("not a directory/out.xml"), ui), FileAccessError);
}

TEST(Batch, ConvertsEveryPefFileOfTheDirectoryAndReportsEach) {
  TempDir dir;
  WriteToPEF(*Sample("B", 300000), dir.File("b wing.PEF"));
  WriteToPEF(*Sample("A"), dir.File("a.pef"));
  dir.Write("notes.txt", "not a polar");
  RecordingUserInterface ui;
  ui.fileReplies.push_back(dir.File("notes.txt"));  // any file of the directory
  EXPECT_TRUE(BatchConvert(ui));
  EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"a.pef -> a.xml", "b wing.PEF -> b wing.xml", "Ready."}));
  EXPECT_EQ(ui.busyChanges, (std::vector<bool>{true, false}));
  Airfoil back;
  ReadFromXML(back, dir.File("b wing.xml"));
  EXPECT_EQ(back.Configuration(1)->Polar(1)->ReynoldsNumber, 300000);
  EXPECT_FALSE(std::filesystem::exists(dir.File("notes.xml")));

  RecordingUserInterface quiet;
  BatchConvertDirectory(TempDir().Path().string(), quiet);
  EXPECT_EQ(quiet.statusTexts, (std::vector<std::string>{"Ready."}));
  EXPECT_THROW(BatchConvertDirectory("/nonexistent/dir", quiet), FileNotFoundError);
  EXPECT_EQ(quiet.statusTexts.back(), "Ready.");
}

TEST(Batch, TheWindowsRunGoesOnPastFailuresAndListsThemAndTheWarningsAtTheEnd) {
  const std::string noPolars = "[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=0\r\n";
  auto longPolar = Sample("Long");
  longPolar->Configuration(1)->Polar(1)->SetPoints(std::vector<PolarPoint>(1001, MakePoint(1, 0.5, 0.01)));
  // Files (a, c good; b missing; e without polars), language, message (%d: the directory), icon.
  const std::tuple<std::vector<std::string>, Language, std::string, MessageIcon> cases[] = {
      {{"e.pef"},
       Language::German,
       "1 Datei konnte nicht umgewandelt werden:\r\ne.pef: Datei enthält keine Polaren!",
       MessageIcon::Critical},
      {{"a.pef", "b.pef", "c.pef", "e.pef"},
       Language::German,
       "2 von 4 Dateien konnten nicht umgewandelt werden:\r\nb.pef: Datei nicht gefunden: %d/b.pef\r\n"
       "e.pef: Datei enthält keine Polaren!",
       MessageIcon::Critical},
      {{"long.pef", "e.pef"},
       Language::English,
       "1 of 2 files could not be converted:\r\ne.pef: File contains no polars!\r\n\r\n%d/long.xml holds a polar "
       "of more than 1000 points: readers of the XML format leave out the points past the 1000th.",
       MessageIcon::Critical},
      {{"long.pef"},
       Language::German,
       "%d/long.xml enthält eine Polare mit mehr als 1000 Punkten: Leser des XML-Formats lassen die Punkte nach "
       "dem 1000. aus.",
       MessageIcon::Warning},
  };
  for (const auto& [files, language, message, icon] : cases) {
    TempDir dir;
    const std::string d = dir.Path().string();
    SCOPED_TRACE(message);
    for (const std::string& file : files) {
      if (file == "b.pef") std::filesystem::create_symlink("nowhere.pef", dir.File(file));
      if (file == "e.pef") dir.Write(file, noPolars);
      if (file == "long.pef") WriteToPEF(*longPolar, dir.File(file));
      if (file == "a.pef" || file == "c.pef") WriteToPEF(*Sample("A"), dir.File(file));
    }
    RecordingUserInterface ui;
    ui.SetLanguage(language);
    BatchConvertDirectory(d, ui);
    for (const std::string& file : files)
      EXPECT_EQ(std::filesystem::exists(dir.File(BatchTargetName(file))), file != "b.pef" && file != "e.pef") << file;
    std::string expected = message;
    for (size_t p; (p = expected.find("%d")) != std::string::npos;) expected.replace(p, 2, d);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(std::tie(ui.messages[0].text, ui.messages[0].icon), std::tie(expected, icon));
  }
}

TEST(Batch, ParallelJobsWriteNewFilesWithoutEverSettingTheUmask) {
  TempDir dir;
  for (int k = 0; k < 40; ++k) WriteToPEF(*Sample("A"), dir.File("p" + std::to_string(k) + ".pef"));
  umaskChanges = 0;
  const int mask = static_cast<int>(::syscall(SYS_umask, 022));
  ::syscall(SYS_umask, mask);
  ConvertPefDirectory(
      dir.Path().string(), [](const std::string& path) { return ReadPolarFile(path, nullptr); },
      [](const BatchStep&) { return true; }, 8);
  EXPECT_EQ(umaskChanges, 0);
  for (int k = 0; k < 40; ++k)
    EXPECT_EQ(int(std::filesystem::status(dir.File("p" + std::to_string(k) + ".xml")).permissions()), 0666 & ~mask)
        << k;
}

TEST(Clipboard, CopyAndPasteGiveADuplicateOfThePolar) {
  AirfoilPtr airfoil = Sample("Clark Y");
  RecordingUserInterface ui;
  CopyPolar(*airfoil->Configuration(1)->Polar(1), ui);
  EXPECT_EQ(ui.clipboard.rfind("\r\n[Set1-Polar1]\r\nDescription1=clean\r\n", 0), 0u);
  PolarPtr copy = PolarFromClipboard(ui);
  ASSERT_TRUE(copy);
  EXPECT_EQ(std::make_tuple(copy->Name, copy->ReynoldsNumber, copy->Cl(2), copy->Selected),
            std::make_tuple("clean", 200000.0, 0.4, true));
  ui.clipboard = "just some text\nfrom another program";
  EXPECT_FALSE(PolarFromClipboard(ui));
  ui.clipboard = "\n[Set1-Polar1]\nReynoldsNumber=1\nNumberPoints=1\nValue01=1 2 3\n";
  PolarPtr foreign = PolarFromClipboard(ui);
  ASSERT_TRUE(foreign) << "LF-only text from another program";
  EXPECT_EQ(foreign->Cd(1), 3.0);
}

}  // namespace
}  // namespace tavilo
