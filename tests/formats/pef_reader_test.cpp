// The PEF reader on the model, its round trips, and the LF-only rewrite.
#include <gtest/gtest.h>

#include "base/errors.h"
#include "base/number_text.h"
#include "fileio/load.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "strings/product.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::RecordingUserInterface;
using testing::TempDir;
constexpr double N = kNoValue;

Airfoil ReadText(const std::string& text, RecordingUserInterface& ui) {
  Airfoil airfoil;
  ShowDiagnostics(ReadFromPEFText(airfoil, text), ui);
  return airfoil;
}

std::string OnePolarFile(const std::string& polarLines) {
  return "[Airfoil]\r\nDescription1=A\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=1\r\n[Set1-Polar1]\r\n" + polarLines;
}

TEST(PefReader, AirfoilNameFallsBackToAirfoilnameThenUnknown) {
  const std::pair<std::string, std::string> cases[] = {
      {"Description1=Clark Y\r\nAirfoilname=other\r\n", "Clark Y"},
      {"Description1=\r\nAirfoilname=E387\r\n", "E387"},
      {"Description1=  \r\n", "unknown airfoil"},
      {"Description1=Caf\xE9\r\n", "Caf\xC3\xA9"},  // legacy 8-bit name read as Windows-1252
  };
  for (const auto& [keys, name] : cases) {
    RecordingUserInterface ui;
    EXPECT_EQ(ReadText("[Airfoil]\r\n" + keys + "NumberSets=1\r\n", ui).Name, name) << keys;
  }
}

TEST(PefReader, NumberSetsIsRoundedHalfToEvenAndReportedWhenNotPositive) {
  const struct {
    const char* value;
    int configCount;
    bool reported;
  } cases[] = {{"2.5", 2, false}, {"3.5", 4, false}, {"1e1", 10, false},
               {"0.5", 0, true},  {"-2", -2, true},  {"none", 0, true}};
  for (const auto& c : cases) {
    RecordingUserInterface ui;
    Airfoil airfoil = ReadText("[Airfoil]\r\nDescription1=A\r\nNumberSets=" + std::string(c.value) + "\r\n", ui);
    EXPECT_EQ(airfoil.ConfigCount(), c.configCount) << c.value;
    ASSERT_EQ(ui.messages.size(), c.reported ? 1u : 0u) << c.value;
    if (c.reported) {
      EXPECT_EQ(ui.messages[0].text + "|" + ui.messages[0].title, "File contains no data sets!|Tavilo: Error");
    }
  }
  RecordingUserInterface ui;
  EXPECT_THROW(ReadText("[Airfoil]\r\nNumberSets=40000\r\n", ui), OverflowError);
}

TEST(PefReader, MissingSetsAndPolarsReadEmpty) {
  RecordingUserInterface ui;
  Airfoil airfoil = ReadText("[Airfoil]\r\nNumberSets=2\r\n[Set1]\r\nDescription1=one\r\nOrigin=XFOIL\r\n"
                             "NumberPolars=2\r\n[Set1-Polar2]\r\nReynoldsNumber=1e5\r\n", ui);
  ASSERT_EQ(airfoil.ConfigCount(), 2);
  const Configuration& first = *airfoil.Configuration(1);
  EXPECT_EQ(first.Name + "|" + first.Origin, "one|XFOIL");
  ASSERT_EQ(first.PolarCount(), 2);
  EXPECT_TRUE(first.Polar(1)->Selected && first.Polar(1)->PointCount() == 0);
  EXPECT_EQ(first.Polar(2)->ReynoldsNumber, 1e5);
  EXPECT_EQ(airfoil.Configuration(2)->PolarCount(), 0);
}

TEST(PefReader, PointValuesFollowThePairRule) {
  const std::pair<std::string, PolarPoint> cases[] = {
      {"2.0 0.5 0.01", {2, 0.5, 0.01, N, N, N, N, N}},
      {"2.0 0.5 0.01 -0.05 0.4", {2, 0.5, 0.01, -0.05, 0.4, 0, N, N}},
      {"2.0 0.5 0.01 -0.05 0.4 0.9", {2, 0.5, 0.01, -0.05, 0.4, 0.9, N, N}},
      {"2.0 0.5 0.01 -0.05 0.4 0.9 0.7", {2, 0.5, 0.01, -0.05, 0.4, 0.9, 0.7, 0}},
      {"2.0 0.5 0.01 -0.05 0.4 0.9 0.7 0.8 9", {2, 0.5, 0.01, -0.05, 0.4, 0.9, 0.7, 0.8}},
      {"", {0, 0, 0, N, N, N, N, N}},
      {"1,5 2 3", {1, 2, 3, N, N, N, N, N}},   // only the period is a decimal separator
      {"1\t2 3 4", {1, 3, 4, N, N, N, N, N}},  // a tab does not separate values
  };
  for (const auto& [value, point] : cases) {
    RecordingUserInterface ui;
    Airfoil airfoil = ReadText(OnePolarFile("NumberPoints=1\r\nValue01=" + value + "\r\n"), ui);
    EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->Point(1), point) << value;
  }
}

TEST(PefReader, PointsAreFoundByKeyAndHugeCountsAreBounded) {
  RecordingUserInterface ui;
  Airfoil airfoil = ReadText(OnePolarFile("NumberPoints=3\r\nValue03=3 0 0\r\nValue01=1 0 0\r\n"
                                          "Values=Alpha Cl Cd\r\nValue04=4 0 0\r\n"), ui);
  const Polar& polar = *airfoil.Configuration(1)->Polar(1);
  ASSERT_EQ(polar.PointCount(), 3);
  EXPECT_EQ(polar.Alfa(1) + polar.Alfa(3), 4);
  EXPECT_EQ(polar.Point(2), (PolarPoint{0, 0, 0, N, N, N, N, N}));
  // Each set asks for 1000 polars of which none exists; the reader stops at its limit.
  std::string text = "[Airfoil]\r\nNumberSets=3\r\n";
  for (int i = 1; i <= 3; ++i) text += "[Set" + std::to_string(i) + "]\r\nNumberPolars=1000\r\n";
  Airfoil huge;
  ShowDiagnostics(ReadFromPEFText(huge, text, 1500), ui);
  EXPECT_EQ(huge.Configuration(1)->PolarCount() + huge.Configuration(2)->PolarCount(), 1500);
  EXPECT_EQ(huge.Configuration(3)->PolarCount(), 0);
  Airfoil points;
  ShowDiagnostics(ReadFromPEFText(points, OnePolarFile("NumberPoints=100\r\nValue50=5 5 5\r\n"), 10), ui);
  EXPECT_EQ(points.Configuration(1)->Polar(1)->PointCount(), 10);
  EXPECT_TRUE(ui.messages.empty());
}

// Set 1 named with an origin, set 2 unnamed; three polars each.
Airfoil ModelWithTwoSets() {
  Airfoil airfoil;
  airfoil.Name = "NACA 2412";
  std::vector<PolarPoint> points;
  for (int i = 0; i < 120; ++i) points.push_back({-5 + i * 0.12345, 0.01 * i, 0.0061234 + i * 1e-5, -0.05, 0.61234, 1, N, N});
  for (const char* name : {"Flap 0", ""}) {
    auto config = std::make_shared<Configuration>();
    config->Name = config->Origin = name;
    for (int p = 0; p < 3; ++p)
      config->AddPolar(testing::MakePolar(100000.4 * (p + 1), 0.3 * p, true, points, "Re " + std::to_string(p)));
    airfoil.AddConfiguration(config);
  }
  return airfoil;
}

TEST(PefReader, ItemsTheCountsAskForButTheFileLacksWarnQuietly) {
  const std::pair<std::string, bool> cases[] = {
      {PefText(ModelWithTwoSets()), false},
      {OnePolarFile("NumberPoints=2\r\nValue01=1 2 3\r\n"), true},                 // cut after a point
      {OnePolarFile("NumberPoints=2\r\nValue02=4 5 6\r\n"), true},                 // a point missing in between
      {"[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=2\r\n[Set1-Polar1]\r\n", true},  // a polar
      {"[Airfoil]\r\nNumberSets=2\r\n[Set1]\r\nNumberPolars=0\r\n", true},                    // a set
      {OnePolarFile("NumberPoints=100\r\n"), true},  // past the limit of missing items
  };
  for (const auto& [text, warned] : cases) {
    Airfoil airfoil;
    const ReadReport report = ReadFromPEFText(airfoil, text, 10);
    ASSERT_EQ(report.diagnostics.size(), warned ? 1u : 0u) << text;
    if (!warned) continue;
    const Diagnostic& d = report.diagnostics[0];
    EXPECT_TRUE(d.quiet && d.severity == Severity::Warning && d.messageId == Text::ShortOfCounts);
  }
}

TEST(PefReader, WrittenFileReadsBackToTheWrittenText) {
  const std::string written = PefText(ModelWithTwoSets());
  RecordingUserInterface ui;
  Airfoil read = ReadText(written, ui);
  EXPECT_TRUE(ui.messages.empty());
  EXPECT_EQ(read.Configuration(1)->Description2, kCopyrightNotice);  // the first of two
  EXPECT_EQ(read.Configuration(2)->Name, kCopyrightNotice);          // an unnamed set
  EXPECT_EQ(read.Configuration(2)->Origin, "Tavilo");
  EXPECT_EQ(read.Configuration(1)->Polar(3)->MachNumber, 1);  // 0.6 written as 1
  // The writer adds its notice again.
  read.Configuration(1)->Description2 = read.Configuration(2)->Name = "";
  EXPECT_EQ(PefText(read), written);
}

TEST(PefReader, ConvertsToXmlAndBackThroughTheModel) {
  RecordingUserInterface ui;
  Airfoil fromPef = ReadText(PefText(ModelWithTwoSets()), ui);
  Airfoil fromXml;
  ShowDiagnostics(ReadFromXMLText(fromXml, XmlText(fromPef)), ui);
  Airfoil again = ReadText(PefText(fromXml), ui);
  EXPECT_TRUE(ui.messages.empty());
  // Origin and Description2 are not carried by XML; everything else is.
  for (Airfoil* airfoil : {&fromPef, &again})
    for (int s = 1; s <= airfoil->ConfigCount(); ++s) {
      airfoil->Configuration(s)->Origin.clear();
      airfoil->Configuration(s)->Description2.clear();
    }
  EXPECT_EQ(PefText(again), PefText(fromPef));
}

TEST(PefFile, OnlyFilesWithoutAnyCarriageReturnAreConverted) {
  const std::pair<std::string, std::string> cases[] = {
      {"a\nb", "a\r\nb\r\n"}, {"a\nb\n", "a\r\nb\r\n\r\n"},  // a final LF gains an empty last line
      {"ab", "ab"},           {"", ""},
      {"a\r\nb\n", "a\r\nb\n"}, {"a\rb\n", "a\rb\n"}};
  TempDir dir;
  for (const auto& [before, after] : cases) {
    ConvertLfOnlyFile(dir.Write("f.pef", before));
    EXPECT_EQ(dir.Read("f.pef"), after) << before;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);  // no temporary left
}

TEST(PefFile, LfOnlyFileIsRewrittenOrIfThatFailsReadAsItIs) {
  TempDir dir;
  const std::string text = "[Airfoil]\nDescription1=LF\nNumberSets=1\n[Set1]\nNumberPolars=1\n"
                           "[Set1-Polar1]\nNumberPoints=1\nValue01=1 2 3\n";
  // A read-only file, and a name so long that no temporary fits beside it
  // (which fails even for root), are read unchanged.
  const std::string readOnly = dir.Write("ro.pef", text);
  std::filesystem::permissions(readOnly, std::filesystem::perms::owner_read);
  const std::string longName = dir.Write(std::string(248, 'n') + ".pef", text);
  EXPECT_THROW(ConvertLfOnlyFile(longName), FileAccessError);
  for (const std::string& path : {dir.Write("lf.pef", text), readOnly, longName}) {
    RecordingUserInterface ui;
    Airfoil airfoil;
    ShowDiagnostics(ReadFromPEF(airfoil, path), ui);
    EXPECT_EQ(airfoil.Name, "LF") << path;
    EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->Cd(1), 3);
    EXPECT_EQ(ReadPefValue("Set1-Polar1", "Value01", path), "1 2 3");
  }
  EXPECT_EQ(dir.Read("lf.pef"), CrLfText(text));
  EXPECT_EQ(dir.Read("ro.pef"), text);
}

}  // namespace
}  // namespace tavilo
