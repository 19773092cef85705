#include "formats/pol.h"

#include <gtest/gtest.h>

#include <tuple>

#include "base/errors.h"
#include "formats/airfoil_summary.h"
#include "formats/expected_table.h"
#include "formats/file_text.h"
#include "support/model_builders.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::AirfoilOf;
using testing::ExpectAirfoilMatchesTable;
using testing::MakePolar;
using testing::SetOf;

const std::string kXfoilData = std::string(TAVILO_TEST_DATA) + "/xfoil/";

// Real files: the two sample saves and the XFOIL 6.99 runs of tests/data/xfoil/*.cmd.
class RealXfoilFile : public ::testing::TestWithParam<const char*> {};

TEST_P(RealXfoilFile, ReadsEveryValue) {
  const std::string path = kXfoilData + GetParam();
  Airfoil airfoil;
  ReadFromPOL(airfoil, path);
  ExpectAirfoilMatchesTable(airfoil, path + ".expected");
  EXPECT_EQ(airfoil.Configuration(1)->Name, "");
}

INSTANTIATE_TEST_SUITE_P(XfoilSaves, RealXfoilFile,
                         ::testing::Values("xfoil697_blade.c130.Re30000k.M0.8.pol", "naca2412_re500k_m0.pol",
                                           "xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol",
                                           "naca0012_re3m_m05.pol", "naca4412_re50k_stall.pol",
                                           "naca4412_re50k_none.pol", "naca23012_re12m_m02.pol",
                                           "naca4412_re1m_sweep.pol", "naca0012_re300k_sweep.pol"));

std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
  for (size_t p = text.find(from); p != std::string::npos; p = text.find(from, p + to.size()))
    text.replace(p, from.size(), to);
  return text;
}

std::string Read(const std::string& text) {
  Airfoil airfoil;
  ReadFromPOLText(airfoil, text);
  return testing::Summary(airfoil);
}

// The sample has LF line ends and no final empty line; no variation may lose a value.
TEST(PolReader, LineEndsAndBlanksDoNotChangeWhatIsRead) {
  const std::string name = kXfoilData + "xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol";
  const std::string lf = ReadFileBytes(name);
  for (const std::string& text : {ReplaceAll(lf, "\n", "\r\n"), ReplaceAll(lf, "\n", "\r"),
                                  ReplaceAll(lf, "\n", "   \n") + "  ", lf + "\r\n  \r\n\r\n"})
    EXPECT_EQ(Read(text), Read(lf));
}

TEST(PolReader, SeveralPolarsInOneFileEachWithItsHeading) {
  Airfoil airfoil;
  ReadFromPOLText(airfoil, ReadFileBytes(kXfoilData + "naca2412_re500k_m0.pol") +
                               ReadFileBytes(kXfoilData + "naca4412_re50k_stall.pol") +
                               ReadFileBytes(kXfoilData + "naca0012_re3m_m05.pol"));
  std::string read = airfoil.Name;  // the last heading names the airfoil
  for (const PolarPtr& polar : airfoil.Configuration(1)->Polars())
    read += " | " + testing::NumberOf(polar->ReynoldsNumber) + " " + testing::NumberOf(polar->MachNumber) + " " +
            std::to_string(polar->PointCount());
  EXPECT_EQ(read, "NACA 0012 | 500000 0 5 | 50000 0 1 | 3000000 0.5 4");
}

// A block in the layout the writer uses, with `points` after the heading.
std::string Block(std::string_view name, std::string_view machLine, std::string_view points) {
  return std::string("\r\n       XFOIL         Version 5.4\r\n\r\n Calculated polar for: ") + std::string(name) +
         "\r\n\r\n 1  Reynolds number fixed\r\n\r\n xtrf = ...\r\n" + std::string(machLine) +
         "\r\n\r\n   alpha ...\r\n  ------- ...\r\n" + std::string(points);
}

constexpr std::string_view kMachLine = " Mach =   0.200     Re =     1.500 e 6     Ncrit =   9.000";

TEST(PolReader, PointFieldsWalkWithTheFourthSkippedAndMachAndReFromFixedColumns) {
  const std::pair<std::string, const char*> cases[] = {
      {Block("A", kMachLine, "   1.5   0.25   0.008   99   -0.05   0.4   0.6   7   8\r\n   2.0   0.30\r\n\r\n"),
       "A | : Re 1500000 Ma 0.2 (1.5 0.25 0.008 -0.05 0.4 0.6, 2 0.3 0 0 0 0)"},  // missing fields read 0
      {Block("A", " Mach =   0.800     Re =    30.000 e 6     Ncrit =   9.000", ""), "A | : Re 30000000 Ma 0.8 ()"},
      {Block("A", " Mach =   0.000     Re =     2.500 e 5     Ncrit =   9.000", ""), "A | : Re 250000 Ma 0 ()"},
      // One column to the right: the exponent leaves its columns and is lost, silently.
      {Block("A", " Mach =    0.200     Re =     1.500 e 6", ""), "A | : Re 1.5 Ma 0.2 ()"},
      {Block("A", " Mach =", ""), "A | : Re 0 Ma 0 ()"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Read(text), expected) << text;
}

// The heading of a polar names the airfoil at once, before its points.
TEST(PolReader, CutShortOrForeignInputKeepsWhatWasRead) {
  const std::string good = Block("First", kMachLine, "1 0.1 0.01 0 0 0.5 0.5\r\n\r\n");
  const std::string first = "Second | : Re 1500000 Ma 0.2 (1 0.1 0.01 0 0.5 0.5)";
  const std::pair<std::string, std::string> cases[] = {
      {good + Block("Second", "", "").substr(0, 80), first},                     // header ends before the Mach line
      {good + Block("Second", kMachLine, ""), first + " Re 1500000 Ma 0.2 ()"},  // ends after the dashes
      {good + Block("Second", kMachLine, "1 2 3 4 5 1e999 7\r\n"), first},
      {"", " | :"},
      {std::string("\177ELF\2\1\1\0\0\0\377\376\r\r\n\0", 16), " | :"},
      {"[Airfoil]\r\nName=NACA 0012\r\n[Set1]\r\nDescription1=x\r\n", " | :"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Read(text), expected) << text.substr(0, 10);
}

TEST(PolReader, SetNameIsTheFirstHeadingAndAMissingFileRaises) {
  testing::TempDir dir;
  EXPECT_EQ(ReadSetNameFromPOL(kXfoilData + "naca2412_re500k_m0.pol"), "NACA 2412");
  EXPECT_EQ(
      ReadSetNameFromPOL(dir.Write("a.pol", "x\r\n Calculated polar for: One  \r\n" + Block("Two", kMachLine, ""))),
      "One");
  EXPECT_EQ(ReadSetNameFromPOL(dir.Write("b.pol", "no heading\r\n")), "");
  EXPECT_THROW(ReadSetNameFromPOL(dir.File("none.pol")), FileNotFoundError);
}

Airfoil SampleAirfoil() {
  const std::vector<PolarPoint> points = {{2.5, 0.61234, 0.0081234, -0.05, 0.45, -1, 0, 0},
                                          {-1.25, -0.1, 0.01, 0.0, -0.05, -0.1, 0, 0}};
  return AirfoilOf(
      "Test Foil",
      {SetOf("ignored", {MakePolar(1500000, 0.2, true, points), MakePolar(3e6, 0, false, {{1, 1, 1, 1, 1, 1, 1, 1}})}),
       SetOf("", {MakePolar(1e5, 0, false, {})}),
       SetOf("", {MakePolar(60000, 0, true, {{12, 1.2, 0.05, -0.1, kNoValue, 1.0, 0, 0}})})});
}

// Transition values outside 0..1 or missing are written as 1.
TEST(PolWriter, WritesSelectedPolarsInFixedColumnsAndReadsBackToTheWrittenDecimals) {
  const std::string golden = ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.pol");
  EXPECT_EQ(PolText(SampleAirfoil()), golden);
  testing::TempDir dir;
  WriteToPOL(SampleAirfoil(), dir.Write("round.pol", "old content"));
  Airfoil read, wide;
  ReadFromPOL(read, dir.File("round.pol"));
  EXPECT_EQ(PolText(read), golden);
  EXPECT_EQ(read.Configuration(1)->Polar(2)->Point(1), (PolarPoint{12, 1.2, 0.05, -0.1, 1.0, 1.0, kNoValue, kNoValue}));
  wide.AddConfiguration(std::make_shared<Configuration>());
  wide.Configuration(1)->AddPolar(MakePolar(2e10, 12.5, true, {{-1234.5, 0, 0, 0, 0, 0, 0, 0}}));
  const std::string text = PolText(wide);  // overlong values are not cut
  EXPECT_NE(text.find(" Mach =   12.500     Re =   20000.000 e 6"), std::string::npos);
  EXPECT_NE(text.find("\r\n-1234.500   0.0000   0.0000020000.00000"), std::string::npos);
  wide.Configuration(1)->SetSelected(false);
  EXPECT_EQ(PolText(wide), "");
}

}  // namespace
}  // namespace tavilo
