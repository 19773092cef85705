#include "formats/drg.h"

#include <gtest/gtest.h>

#include "formats/expected_table.h"
#include "model/errors.h"
#include "support/recording_ui.h"

namespace tavilo {
namespace {

using testing::ExpectAirfoilMatchesTable;
using testing::FileBytes;
using testing::LoadExpectedTable;
using testing::RecordingUserInterface;

const std::string kUiucData = std::string(TAVILO_TEST_DATA) + "/uiuc/";

class RealUiucFile : public ::testing::TestWithParam<const char*> {};

// Every block ends with a "Tabulated from data ..." footer and an empty line;
// each must still read with its own Reynolds number and points.
TEST_P(RealUiucFile, ReadsEveryBlockValueForValue) {
  const std::string path = kUiucData + GetParam();
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRG(airfoil, path, ui);
  ExpectAirfoilMatchesTable(airfoil, LoadExpectedTable(path + ".expected"));
  EXPECT_TRUE(ui.airfoilChoices.empty());  // one airfoil: nobody is asked
}

INSTANTIATE_TEST_SUITE_P(UiucTests, RealUiucFile,
                         ::testing::Values("E387A.DRG", "WASP.DRG", "S1223GF1.DRG", "SG6042.DRG",
                                           "e387_tf_drg.txt"));

std::string WithoutFooters(const std::string& text) {
  std::string out;
  for (size_t start = 0; start < text.size();) {
    size_t end = text.find('\n', start);
    end = end == std::string::npos ? text.size() : end + 1;
    if (text.compare(start, 19, "Tabulated from data") != 0) out.append(text, start, end - start);
    start = end;
  }
  return out;
}

TEST(DrgReader, FileWithoutBlockFootersReadsTheSame) {
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, WithoutFooters(FileBytes(kUiucData + "E387A.DRG")), ui);
  ExpectAirfoilMatchesTable(airfoil, LoadExpectedTable(kUiucData + "E387A.DRG.expected"));
}

TEST(DrgReader, PrincetonLayout) {
  const std::string text =
      "Airfoil  SD7037   \r\n"
      "Princeton test 1\r\n"
      "2\r\n"
      "100000\r\n"
      "2\r\n"
      "0.50 0.0100 2.0\r\n"
      "  -0.1   0.0120 -3\r\n"
      "200000\r\n"
      "1\r\n"
      "0.55 0.0090 2.5\r\n";
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, text, ui);
  EXPECT_EQ(airfoil.Name, "SD7037");
  ASSERT_EQ(airfoil.ConfigCount(), 1);
  const Configuration& config = *airfoil.Configuration(1);
  EXPECT_EQ(config.Name, "Princeton, Princeton test 1");
  ASSERT_EQ(config.PolarCount(), 2);
  EXPECT_EQ(config.Polar(1)->ReynoldsNumber, 100000);
  EXPECT_EQ(config.Polar(2)->ReynoldsNumber, 200000);
  EXPECT_TRUE(config.Polar(2)->Selected);
  ASSERT_EQ(config.Polar(1)->PointCount(), 2);
  EXPECT_EQ(config.Polar(1)->Point(1), (PolarPoint{2.0, 0.5, 0.01, kNoValue, kNoValue, kNoValue,
                                                   kNoValue, kNoValue}));
  EXPECT_EQ(config.Polar(1)->Point(2).Alfa, -3);
  EXPECT_EQ(config.Polar(2)->Point(1).Cd, 0.009);
}

TEST(DrgReader, UiucLayoutWithBlanksInTheHeading) {
  const std::string text =
      "Airfoil  E374\n"
      "clean model\n"
      "Number of Reynolds numbers:\n"
      " 2\n"
      "Reynolds number:\n"
      " 100000\n"
      " 1\n"
      "  1.0  0.30  0.0100 0.0120 0 0.0110 0\n"
      "Reynolds number:\n"
      " 200000\n"
      " 1\n"
      "  3.0  0.50  0.02\n";
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, text, ui);
  const Configuration& config = *airfoil.Configuration(1);
  EXPECT_EQ(config.Name, "UIUC, clean model");
  ASSERT_EQ(config.PolarCount(), 2);
  EXPECT_EQ(config.Polar(1)->ReynoldsNumber, 100000);
  const PolarPoint& point = config.Polar(1)->Point(1);
  EXPECT_EQ(point.Alfa, 1.0);
  EXPECT_EQ(point.Cl, 0.3);
  EXPECT_DOUBLE_EQ(point.Cd, 0.011);
  EXPECT_EQ(point.Cm, kNoValue);
  EXPECT_EQ(config.Polar(2)->ReynoldsNumber, 200000);
  EXPECT_EQ(config.Polar(2)->Point(1).Cd, 0.02);
}

// One UIUC point line "alpha Cl d1 d2 d3 d4 d5" under a colon heading.
double CdOfPointLine(std::string_view pointLine) {
  const std::string text = "Airfoil: A\nB\nC\n\nN\n1\n\nR\n100000\nN\n1\nalpha\n" +
                           std::string(pointLine) + "\n";
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, text, ui);
  return airfoil.Configuration(1)->Polar(1)->Cd(1);
}

TEST(DrgReader, DragIsTheMeanOfTheReadingsAboveZero) {
  struct Case {
    const char* line;
    double cd;
  };
  const Case cases[] = {
      {" 1.0  0.30  0.0100 0.0120 0 0.0110 0", 0.011},
      {" 1.0  0.30  0.0495  0.0000   0.0000  0.0000   0.0000", 0.0495},
      {" 1.0  0.30  0.01 0.02 0.03 0.04 0.05 0.90 0.90", 0.03},  // only five readings count
      {" 1.0  0.30  0.01 -0.02 1e-17 0.03", 0.02},
      {" 1.0  0.30  0 0 0 0 0", 0.0},  // no reading: 0 instead of 0/0
      {" 1.0  0.30", 0.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_DOUBLE_EQ(CdOfPointLine(c.line), c.cd);
  }
}

const std::string kTwoAirfoils =
    FileBytes(kUiucData + "S1223GF1.DRG") + FileBytes(kUiucData + "WASP.DRG");

TEST(DrgReader, SeveralAirfoilsAskTheUserWithATrailingEmptyEntry) {
  EXPECT_EQ(DrgAirfoilNames(kTwoAirfoils), (std::vector<std::string>{"S1223", "WASP"}));
  RecordingUserInterface ui;
  ui.airfoilReply = 1;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, kTwoAirfoils, ui);
  ASSERT_EQ(ui.airfoilChoices.size(), 1u);
  EXPECT_EQ(ui.airfoilChoices[0], (std::vector<std::string>{"S1223", "WASP", ""}));
  ExpectAirfoilMatchesTable(airfoil, LoadExpectedTable(kUiucData + "WASP.DRG.expected"));
}

TEST(DrgReader, FirstOrNegativeAnswerReadsTheFirstAirfoil) {
  for (int reply : {0, -1}) {
    RecordingUserInterface ui;
    ui.airfoilReply = reply;
    Airfoil airfoil;
    ReadFromDRGText(airfoil, kTwoAirfoils, ui);
    ExpectAirfoilMatchesTable(airfoil, LoadExpectedTable(kUiucData + "S1223GF1.DRG.expected"));
  }
}

TEST(DrgReader, ChoicePastTheLastAirfoilLeavesAnEmptySet) {
  for (int reply : {2, 1000}) {
    RecordingUserInterface ui;
    ui.airfoilReply = reply;
    Airfoil airfoil;
    airfoil.Name = "old";
    ReadFromDRGText(airfoil, kTwoAirfoils, ui);
    EXPECT_EQ(airfoil.Name, "");
    ASSERT_EQ(airfoil.ConfigCount(), 1);
    EXPECT_EQ(airfoil.Configuration(1)->Name, "");
    EXPECT_EQ(airfoil.Configuration(1)->PolarCount(), 0);
  }
}

TEST(DrgReader, ColonHeadingWithoutBlankIsNoNameButStopsTheSecondPass) {
  const std::string text = "Airfoil:Sketch\nAirfoil: Real\n" +
                           FileBytes(kUiucData + "S1223GF1.DRG").substr(14);
  EXPECT_EQ(DrgAirfoilNames(text), (std::vector<std::string>{"Real"}));
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, text, ui);
  EXPECT_TRUE(ui.airfoilChoices.empty());
  EXPECT_EQ(airfoil.Name, "ketch");  // column 10 on, of the first "Airfoil" line
}

TEST(DrgReader, FileEndingEarlyKeepsWhatWasRead) {
  const std::string full = FileBytes(kUiucData + "E387A.DRG");
  struct Case {
    const char* cutBefore;  // the file ends just before this text
    int polars;
    int pointsOfLast;
  };
  const Case cases[] = {
      {"  0.81   0.433", 2, 4},        // inside the points of block 2
      {" 151600", 2, 11},            // inside the heading of block 3
      {"Number of Reynolds", 0, 0},  // inside the set's heading
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.cutBefore);
    RecordingUserInterface ui;
    Airfoil airfoil;
    ReadFromDRGText(airfoil, full.substr(0, full.find(c.cutBefore)), ui);
    ASSERT_EQ(airfoil.ConfigCount(), 1);
    const Configuration& config = *airfoil.Configuration(1);
    ASSERT_EQ(config.PolarCount(), c.polars);
    if (c.polars > 0) {
      EXPECT_EQ(config.Polar(c.polars)->PointCount(), c.pointsOfLast);
    } else {
      EXPECT_EQ(config.Name, "E387 (A)");  // the set heading was never complete
    }
  }
}

TEST(DrgReader, InputThatIsNoDragFileGivesOneEmptySet) {
  const std::string inputs[] = {
      "",
      std::string("\x7f" "ELF\x02\x01\x01\0\0\0\xff\xfe\r\r\n\0", 16),
      "[Airfoil]\r\nName=NACA 0012\r\n[Set1]\r\nDescription1=x\r\n",
      "Airfoil  \n",
  };
  for (const std::string& input : inputs) {
    RecordingUserInterface ui;
    Airfoil airfoil;
    ReadFromDRGText(airfoil, input, ui);
    ASSERT_EQ(airfoil.ConfigCount(), 1);
    EXPECT_EQ(airfoil.Configuration(1)->PolarCount(), 0);
  }
}

TEST(DrgReader, CountBeyondSixteenBitsRaisesOverflow) {
  RecordingUserInterface ui;
  Airfoil airfoil;
  EXPECT_THROW(ReadFromDRGText(airfoil, "Airfoil: A\nB\nC\n\nN\n40000\n", ui), OverflowError);
}

}  // namespace
}  // namespace tavilo
