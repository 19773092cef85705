// The points table's texts: what a cell shows, what an entry means or why
// it is refused, and rows to and from the clipboard. The suite runs under a
// comma-decimal locale too, where none of this may change.
#include "document/points_table.h"

#include <gtest/gtest.h>

#include "strings/string_table.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

using testing::MakePoint;

TEST(PointsTable, CellsShowAtMostFifteenDigitsAndUnknownAsEmpty) {
  const std::pair<double, const char*> cases[] = {{0.05294000000000001, "0.05294"},
                                                  {0.1 + 0.2, "0.3"},
                                                  {123456.789012345678, "123456.789012346"},
                                                  {-0.5, "-0.5"},
                                                  {200000, "200000"},
                                                  {1e-7, "1e-07"},
                                                  {kNoValue, ""},
                                                  {-120, ""},
                                                  {-99.998, "-99.998"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(PointCellText(value), text) << value;
}

TEST(PointsTable, EntriesAreNumbersWithAPeriodAndOnlyCmTuTlMayBeEmpty) {
  constexpr int kAlfa = 0, kCd = 2, kCm = 3, kTL = 5;
  // Column, text, comma allowed, value when accepted, start of the English refusal or "" when accepted.
  const std::tuple<int, const char*, bool, double, std::string> cases[] = {
      {kAlfa, " 4.5 ", false, 4.5, ""},
      {kCd, "1.2e-2", false, 0.012, ""},
      {kTL, "", false, kNoValue, ""},
      {kCm, "-150", false, kNoValue, ""},
      {kCm, "1e6", false, 1e6, ""},
      {kCm, "-1000000", false, kNoValue, ""},
      {kCm, "1.0000001e6", false, 0, "Cm must lie between -1000000 and 1000000, not 1.0000001e6."},
      {kCd, "0,25", true, 0.25, ""},
      {kCd, "0,25", false, 0, "'0,25' is not a number. Enter numbers with a period"},
      {kAlfa, "abc", true, 0, "'abc' is not a number. A period or a comma may separate the decimals"},
      {kCm, "1e999", false, 0, "'1e999' is not a number."},
      {kCm, "nan", false, 0, "'nan' is not a number."},
      {kAlfa, "", false, 0, "Alfa needs a value above -99.999"},
      {kCd, "-99.999", false, 0, "Cd needs a value above -99.999"},
  };
  for (const auto& [column, text, comma, value, refusal] : cases) {
    const CellReading reading = ReadPointCell(column, text, Language::English, comma);
    EXPECT_EQ(reading.refusal.substr(0, refusal.size()), refusal) << text;
    EXPECT_EQ(reading.Accepted(), refusal.empty()) << text;
    EXPECT_EQ(reading.Accepted() ? reading.value : value, value) << text;
  }
  EXPECT_EQ(ReadPointCell(1, "", Language::German).refusal.rfind("Cl braucht einen Wert über -99.999", 0), 0u);
}

TEST(PointsTable, SpreadsheetRowsTakeEitherDecimalAndAreRefusedWhole) {
  const std::vector<PolarPoint> copied = {MakePoint(4, 0.6, 0.0125, -0.04, 0.5, 0.75),
                                          MakePoint(2, 0.1 + 0.2, 0.05294000000000001)};
  const int rows[] = {0, 1};
  EXPECT_EQ(ReadPointRows(PointRowsText(copied, rows), Language::English).points, copied)
      << "copied rows come back exactly";
  const PastedRows pasted =
      ReadPointRows("alpha\tCL\tCD\r\n\r\n-2,5\t0,1\t0,009\r\n3\t0.5\t0.01\t-0.1\t\t0.9", Language::English);
  ASSERT_EQ(pasted.refusal, "");
  EXPECT_EQ(pasted.points,
            (std::vector<PolarPoint>{MakePoint(-2.5, 0.1, 0.009), MakePoint(3, 0.5, 0.01, -0.1, kNoValue, 0.9)}));
  const std::pair<const char*, const char*> refused[] = {
      {"1\t0.1\t0.01\n2\t0.2\n", "Line 2 of the clipboard: Cd needs a value"},
      {"1\t0.1\t0.01\n2\t0.2\tx\n", "Line 2 of the clipboard: 'x' is not a number. A period or a comma"},
      {"1\t1e10\t0.01\n", "Line 1 of the clipboard: Cl must lie between -1000000 and 1000000, not 1e10."},
      {"Alfa\tCl\tCd\n", "The clipboard holds no rows of points"},
      {"",
       "The clipboard holds no rows of points: each needs Alfa, Cl and Cd, in this order, separated by tabs; "
       "a period or a comma may separate the decimals."},
  };
  for (const auto& [text, refusal] : refused) {
    const PastedRows rows = ReadPointRows(text, Language::English);
    EXPECT_EQ(rows.refusal.rfind(refusal, 0), 0u) << rows.refusal;
    EXPECT_TRUE(rows.points.empty()) << text;
  }
}

}  // namespace
}  // namespace tavilo
