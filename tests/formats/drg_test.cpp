#include "formats/drg.h"

#include <gtest/gtest.h>

#include <tuple>

#include "base/errors.h"
#include "fileio/load.h"
#include "formats/airfoil_summary.h"
#include "formats/expected_table.h"
#include "formats/file_text.h"
#include "support/recording_ui.h"

namespace tavilo {
namespace {

using testing::ExpectAirfoilMatchesTable;
using testing::RecordingUserInterface;
using testing::Summary;

const std::string kUiucData = std::string(TAVILO_TEST_DATA) + "/uiuc/";

Airfoil Read(const std::string& text, int reply = 0) {
  RecordingUserInterface ui;
  ui.airfoilReply = reply;
  Airfoil airfoil;
  airfoil.Name = "old";
  ReadFromDRGText(airfoil, text, ui.Chooser());
  return airfoil;
}

class RealUiucFile : public ::testing::TestWithParam<const char*> {};

// Each block, footer and all, reads with its own Re; a drag file saved as text goes via the table reader.
TEST_P(RealUiucFile, ReadsEveryBlockValueForValue) {
  const std::string path = kUiucData + GetParam();
  RecordingUserInterface ui;
  const LoadResult read = ReadPolarFile(path, ui.Chooser());
  ExpectAirfoilMatchesTable(*read.airfoil, path + ".expected");
  EXPECT_TRUE(ui.airfoilChoices.empty());  // one airfoil: nobody is asked
}

INSTANTIATE_TEST_SUITE_P(UiucTests, RealUiucFile,
                         ::testing::Values("E387A.DRG", "WASP.DRG", "S1223GF1.DRG", "SG6042.DRG", "e387_tf_drg.txt"));

TEST(DrgReader, PrincetonAndUiucLayouts) {
  EXPECT_EQ(Summary(Read("Airfoil  SD7037   \r\nPrinceton test 1\r\n2\r\n100000\r\n2\r\n0.50 0.0100 2.0\r\n"
                         "  -0.1   0.0120 -3\r\n200000\r\n1\r\n0.55 0.0090 2.5\r\n")),
            "SD7037 | Princeton, Princeton test 1: Re 100000 Ma 0 (2 0.5 0.01, -3 -0.1 0.012)"
            " Re 200000 Ma 0 (2.5 0.55 0.009)");
  EXPECT_EQ(Summary(Read("Airfoil  E374\nclean model\nNumber of Reynolds numbers:\n 2\nReynolds number:\n"
                         " 100000\n 1\n  1.0  0.30  0.0110 0 0 0 0\nReynolds number:\n 200000\n"
                         " 1\n  3.0  0.50  0.02\n")),
            "E374 | UIUC, clean model: Re 100000 Ma 0 (1 0.3 0.011) Re 200000 Ma 0 (3 0.5 0.02)");
}

TEST(DrgReader, DragIsTheMeanOfTheReadingsAboveZero) {
  const std::pair<const char*, double> cases[] = {
      {" 1.0  0.30  0.0100 0.0120 0 0.0110 0", 0.011},
      {" 1.0  0.30  0.01 0.02 0.03 0.04 0.05 0.90 0.90", 0.03},  // only five readings count
      {" 1.0  0.30  0.01 -0.02 1e-17 0.03", 0.02},
      {" 1.0  0.30  0 0 0 0 0", 0.0},  // no reading: 0 instead of 0/0
      {" 1.0  0.30", 0.0},
  };
  for (const auto& [line, cd] : cases) {
    Airfoil airfoil = Read("Airfoil: A\nB\nC\n\nN\n1\n\nR\n100000\nN\n1\nalpha\n" + std::string(line) + "\n");
    EXPECT_DOUBLE_EQ(airfoil.Configuration(1)->Polar(1)->Cd(1), cd) << line;
  }
}

TEST(DrgReader, SeveralAirfoilsAskTheUserWithATrailingEmptyEntry) {
  const std::string two = ReadFileBytes(kUiucData + "S1223GF1.DRG") + ReadFileBytes(kUiucData + "WASP.DRG");
  EXPECT_EQ(DrgAirfoilNames(two), (std::vector<std::string>{"S1223", "WASP"}));
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromDRGText(airfoil, two, ui.Chooser());
  EXPECT_EQ(ui.airfoilChoices, (std::vector<std::vector<std::string>>{{"S1223", "WASP", ""}}));
  for (auto [reply, table] : {std::pair{1, "WASP"}, {0, "S1223GF1"}, {-1, "S1223GF1"}})
    ExpectAirfoilMatchesTable(Read(two, reply), kUiucData + table + ".DRG.expected");
  for (int reply : {2, 1000}) EXPECT_EQ(Summary(Read(two, reply)), " | :") << "past the last airfoil: an empty set";
}

TEST(DrgReader, CutOrForeignInputKeepsWhatWasRead) {
  const std::string full = ReadFileBytes(kUiucData + "E387A.DRG");
  auto before = [&full](const char* text) { return full.substr(0, full.find(text)); };
  const std::tuple<std::string, int, int> cases[] = {
      // text, polars, points of the last
      {before("  0.81   0.433"), 2, 4},
      {before(" 151600"), 2, 11},
      {before("Number of Reynolds"), 0, 0},
      {"", 0, 0},
      {std::string("\177ELF\2\1\1\0\0\0\377\376\r\r\n\0", 16), 0, 0},
      {"[Airfoil]\r\nName=NACA 0012\r\n", 0, 0},
      {"Airfoil  \n", 0, 0},
  };
  for (const auto& [text, polars, pointsOfLast] : cases) {
    Airfoil airfoil = Read(text);
    ASSERT_EQ(airfoil.ConfigCount(), 1);
    const Configuration& config = *airfoil.Configuration(1);
    ASSERT_EQ(config.PolarCount(), polars) << text.substr(0, 40);
    EXPECT_EQ(polars ? config.Polar(polars)->PointCount() : 0, pointsOfLast) << text.substr(0, 40);
  }
  EXPECT_THROW(Read("Airfoil: A\nB\nC\n\nN\n40000\n"), OverflowError);
}

}  // namespace
}  // namespace tavilo
