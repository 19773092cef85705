#include "formats/pef.h"

#include <gtest/gtest.h>

#include <tuple>

#include "base/errors.h"
#include "base/number_text.h"
#include "fileio/load.h"
#include "formats/airfoil_summary.h"
#include "formats/file_text.h"
#include "strings/product.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::MakePolar;
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
  const std::string noSets = "|File contains no data sets!|Tavilo: Error";  // the one message shown
  const std::tuple<std::string, int, std::string> cases[] = {
      {"2.5", 2, ""}, {"3.5", 4, ""}, {"1e1", 10, ""}, {"0.5", 0, noSets}, {"-2", -2, noSets}, {"none", 0, noSets}};
  for (const auto& [value, configCount, shown] : cases) {
    RecordingUserInterface ui;
    Airfoil airfoil = ReadText("[Airfoil]\r\nDescription1=A\r\nNumberSets=" + value + "\r\n", ui);
    std::string messages;
    for (const auto& m : ui.messages) messages += "|" + m.text + "|" + m.title;
    EXPECT_EQ(std::to_string(airfoil.ConfigCount()) + messages, std::to_string(configCount) + shown) << value;
  }
  RecordingUserInterface ui;
  EXPECT_THROW(ReadText("[Airfoil]\r\nNumberSets=40000\r\n", ui), OverflowError);
}

// Items the counts ask for and the file lacks read empty (a polar ticked).
TEST(PefReader, ItemsAreFoundByKeyAndMissingOnesReadEmpty) {
  const std::pair<std::string, const char*> cases[] = {
      {"[Airfoil]\r\nNumberSets=2\r\n[Set1]\r\nDescription1=one\r\nNumberPolars=2\r\n[Set1-Polar2]\r\n"
       "ReynoldsNumber=1e5\r\n",
       "unknown airfoil | one: Re 0 Ma 0 () Re 100000 Ma 0 () | :"},
      {OnePolarFile("NumberPoints=3\r\nValue03=3 0 0\r\nValue01=1 0 0\r\nValues=Alpha Cl Cd\r\nValue04=4 0 0\r\n"),
       "A | : Re 0 Ma 0 (1 0 0, 0 0 0, 3 0 0)"},
  };
  for (const auto& [text, expected] : cases) {
    RecordingUserInterface ui;
    const Airfoil airfoil = ReadText(text, ui);
    EXPECT_EQ(testing::Summary(airfoil), expected);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_TRUE(airfoil.Configuration(1)->Polar(1)->Selected);
  }
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

// Each set asks for 1000 polars and the polar for 100 points, none of which exists.
TEST(PefReader, HugeCountsAreBounded) {
  std::string text = "[Airfoil]\r\nNumberSets=3\r\n";
  for (int i = 1; i <= 3; ++i) text += "[Set" + std::to_string(i) + "]\r\nNumberPolars=1000\r\n";
  Airfoil huge, points;
  ReadFromPEFText(huge, text, 1500);
  EXPECT_EQ(huge.Configuration(1)->PolarCount() + huge.Configuration(2)->PolarCount(), 1500);
  EXPECT_EQ(huge.Configuration(3)->PolarCount(), 0);
  ReadFromPEFText(points, OnePolarFile("NumberPoints=100\r\nValue50=5 5 5\r\n"), 10);
  EXPECT_EQ(points.Configuration(1)->Polar(1)->PointCount(), 10);
}

TEST(PefReader, ItemsTheCountsAskForButTheFileLacksWarnQuietly) {
  const std::pair<std::string, bool> cases[] = {
      {ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.pef"), false},
      {OnePolarFile("NumberPoints=2\r\nValue01=1 2 3\r\n"), true},  // cut after a point
      {OnePolarFile("NumberPoints=2\r\nValue02=4 5 6\r\n"), true},  // a point missing in between
      {"[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=2\r\n[Set1-Polar1]\r\n", true},  // a polar
      {"[Airfoil]\r\nNumberSets=2\r\n[Set1]\r\nNumberPolars=0\r\n", true},                   // a set
      {OnePolarFile("NumberPoints=100\r\n"), true},  // past the limit of missing items
  };
  for (const auto& [text, warned] : cases) {
    Airfoil airfoil;
    const ReadReport report = ReadFromPEFText(airfoil, text, 10);
    ASSERT_EQ(report.diagnostics.size(), warned ? 1u : 0u) << text;
    for (const Diagnostic& d : report.diagnostics)
      EXPECT_TRUE(d.quiet && d.severity == Severity::Warning && d.messageId == Text::ShortOfCounts);
  }
}

// Set 1 named, own Description2, one of two polars ticked; set 2 none ticked; set 3 unnamed.
Airfoil SampleAirfoil() {
  const std::vector<PolarPoint> points = {{4.0, 0.8123, 0.009123, -0.08712, 0.4118, 1.0, 0.5, 0.5}, {}};
  auto first = testing::SetOf(
      "Flap 0", {MakePolar(1, 0, false, {}, "left out"), MakePolar(250000.4, 0.3, true, points, "Re 250k")});
  first->Origin = "Wind tunnel";
  first->Description2 = "smooth";
  return testing::AirfoilOf("Clark Y", {first, testing::SetOf("", {MakePolar(1, 0, false, {}, "hidden")}),
                                        testing::SetOf("", {MakePolar(1e6, 0.6, true, {}, "")})});
}

// The notice stands first among a set's descriptions and names an unnamed set, whose origin is Tavilo.
TEST(PefWriter, WritesTheWholeFileLineForLineAndReadsItBack) {
  const std::string written = ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.pef");
  TempDir dir;
  WriteToPEF(SampleAirfoil(), dir.Write("out.pef", std::string(100000, 'x')));  // a longer file is replaced
  EXPECT_EQ(dir.Read("out.pef"), written);
  Airfoil read;
  EXPECT_TRUE(ReadFromPEFText(read, written).diagnostics.empty());
  EXPECT_EQ(read.Configuration(1)->Description2, kCopyrightNotice);
  EXPECT_EQ(read.Configuration(2)->Name + "|" + read.Configuration(2)->Origin,
            std::string(kCopyrightNotice) + "|Tavilo");
  read.Configuration(1)->Description2 = "smooth";  // the writer adds its notice again
  read.Configuration(2)->Name = "";
  EXPECT_EQ(PefText(read), written);
  for (int i = 1; i <= read.ConfigCount(); ++i) read.Configuration(i)->SetSelected(false);
  EXPECT_TRUE(PefText(read).ends_with("[Airfoil]\r\nDescription1=Clark Y\r\nNumberSets=0\r\n\r\n"));
  // Keys have at least two digits, and more where needed.
  std::vector<PolarPoint> hundred(100, {1, 2, 3, 4, 5, 6, 7, 8});
  hundred[99].Alfa = 100;
  Polar back;
  ReadPolarFromPEFText(back, PolarPefText(*MakePolar(0, 0, true, hundred, "p"), 1, 1), 1, 1);
  EXPECT_EQ(back.Point(100).Alfa + back.Point(100).TL, 106);
}

TEST(PefFile, OnlyFilesWithoutAnyCarriageReturnAreConverted) {
  const std::pair<std::string, std::string> cases[] = {
      {"a\nb", "a\r\nb\r\n"},      {"ab", "ab"}, {"", ""}, {"a\r\nb\n", "a\r\nb\n"}, {"a\rb\n", "a\rb\n"},
      {"a\nb\n", "a\r\nb\r\n\r\n"}};  // a final LF gains an empty last line
  TempDir dir;
  for (const auto& [before, after] : cases) {
    ConvertLfOnlyFile(dir.Write("f.pef", before));
    EXPECT_EQ(dir.Read("f.pef"), after) << before;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);  // no temporary left
}

TEST(PefFile, LfOnlyFileIsRewrittenOrIfThatFailsReadAsItIs) {
  TempDir dir;
  const std::string text =
      "[Airfoil]\nDescription1=LF\nNumberSets=1\n[Set1]\nNumberPolars=1\n"
      "[Set1-Polar1]\nNumberPoints=1\nValue01=1 2 3\n";
  // A read-only file and one too long a name for a temporary beside it (even for root) read unchanged.
  const std::string readOnly = dir.Write("ro.pef", text);
  std::filesystem::permissions(readOnly, std::filesystem::perms::owner_read);
  const std::string longName = dir.Write(std::string(248, 'n') + ".pef", text);
  EXPECT_THROW(ConvertLfOnlyFile(longName), FileAccessError);
  for (const std::string& path : {dir.Write("lf.pef", text), readOnly, longName}) {
    RecordingUserInterface ui;
    Airfoil airfoil;
    ShowDiagnostics(ReadFromPEF(airfoil, path), ui);
    EXPECT_EQ(testing::Summary(airfoil), "LF | : Re 0 Ma 0 (1 2 3)") << path;
    EXPECT_EQ(ReadPefValue("Set1-Polar1", "Value01", path), "1 2 3");
  }
  EXPECT_EQ(dir.Read("lf.pef"), CrLfText(text));
  EXPECT_EQ(dir.Read("ro.pef"), text);
}

}  // namespace
}  // namespace tavilo
