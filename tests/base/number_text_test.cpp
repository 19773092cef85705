#include "base/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <random>
#include <string>
#include <tuple>

#include "base/errors.h"
#include "base/fixed_number.h"

namespace tavilo {
namespace {

TEST(LeadingNumber, TakesTheLongestLeadingNumber) {
  // clang-format off
  const std::pair<const char*, double> cases[] = {
      {"0.5", 0.5},   {"  \t-2.25abc", -2.25}, {"+3", 3.0},   {".5", 0.5},       {"-.25", -0.25}, {"1.", 1.0},
      {"1.2.3", 1.2}, {"1E3", 1000.0},   {"1e-2", 0.01}, {"2.5D2", 250.0},  {"2.5d-1", 0.25}, {"1.5E", 1.5},
      {"1.5E+", 1.5}, {"4E2x", 400.0},   {"12 34", 12.0}, {"1 000", 1.0},   {"", 0.0},       {"   ", 0.0},
      {"abc", 0.0},   {"-", 0.0},        {".", 0.0},     {"- 5", 0.0},      {"0,5", 0.0},    {"1e-400", 0.0},
      {"00012", 12.0}, {"0.00912", 0.00912}, {"500000", 500000.0}};
  for (const auto& [text, value] : cases) EXPECT_EQ(LeadingNumber(text), value) << '"' << text << '"';
}

// Short numbers take a shortcut past from_chars; the result must still match it bit for bit.
TEST(LeadingNumber, ReadsEveryDigitStringAsFromCharsDoes) {
  std::mt19937_64 random(7);
  for (int n = 0; n < 200000; ++n) {
    const int digits = 1 + int(random() % 20), period = int(random() % (digits + 1));
    std::string text;
    for (int d = 0; d < digits; ++d) text += (d == period ? "." : "") + std::string(1, char('0' + random() % 10));
    double expected = 0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    const bool negative = random() % 2;
    ASSERT_EQ(std::bit_cast<uint64_t>(LeadingNumber((negative ? "-" : "") + text)),
              std::bit_cast<uint64_t>(negative ? -expected : expected))
        << text;
  }
}

TEST(LeadingNumber, NumbersBeyondTheDoubleRangeOverflow) {
  for (const std::string& text : {std::string("1e400"), std::string("-9D999"), "1" + std::string(400, '0')})
    EXPECT_THROW(LeadingNumber(text), OverflowError) << text;
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(LeadingNumber("0.001e-330"), 0.0);
}

TEST(FormatNumber, RoundsAsTheDecimalTextShowsIt) {
  const std::tuple<double, const char*, const char*> cases[] = {
      {0.2385, "0.000", "0.239"},      // binary 0.23849999... but its text ends in 5
      {2.5, "0", "3"},  {-2.5, "0", "-3"},  {0.6, "0", "1"},  {250000.4, "0", "250000"},  {7, "00", "07"},
      {-0.0004, "0.000", "0.000"},  {-0.0, "0.000", "0.000"},  // no minus on a zero
      {-0.0005, "0.000", "-0.001"}, {-99.999, "0.00000", "-99.99900"}, {-99.999, "0.000", "-99.999"},
      {0.00912, "0.00000", "0.00912"}, {-0.0871, "0.0000", "-0.0871"}, {123, "00", "123"}, {0, "0.0", "0.0"},
      {1e6, "0.0", "1000000.0"}, {0.99995, "0.0000", "1.0000"}, {9.9996, "0.000", "10.000"},
      {1.5e6 / 1e6, "0.000", "1.500"}, {1e20, "0", "100000000000000000000"},
      {1.23456789012345678, "0.00000", "1.23457"}, {0.000049, "0.0000", "0.0000"}, {0.00005, "0.0000", "0.0001"},
  };
  for (const auto& [value, pattern, text] : cases)
    EXPECT_EQ(FormatNumber(value, pattern), text) << value << " with " << pattern;
}

TEST(NumberText, PutsABlankBeforeNonNegativeNumbers) {
  const std::pair<double, const char*> cases[] = {
      {1, " 1"},        {500000, " 500000"},   {-2.5, "-2.5"},      {0, " 0"},
      {0.5, " 0.5"},    {1.25e-3, " 0.00125"}, {1e15, " 1E+15"},    {123456789012345, " 123456789012345"},
      {1e-5, " 1E-05"}, {-3.5e20, "-3.5E+20"}, {0.1 + 0.2, " 0.3"}, {1000000, " 1000000"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(NumberText(value), text) << value;
}

TEST(RestAfterFirstBlank, SkipsTheFirstFieldAndTheBlanksAfterIt) {
  const std::pair<std::string, std::string> cases[] = {
      {"4.000   0.812   0.00912", "0.812   0.00912"}, {"0.00912", ""}, {"1.0   ", ""}, {" lead", "lead"},
      {"a\tb c", "c"},  // only a blank separates
      {std::string(32766, 'x') + " y", "y"}, {std::string(40000, 'x'), ""}};
  for (const auto& [line, rest] : cases) EXPECT_EQ(RestAfterFirstBlank(line), rest) << line.substr(0, 20);
  EXPECT_THROW(RestAfterFirstBlank(std::string(32767, 'x') + " y"), OverflowError);
}

TEST(ShortestNumberText, ReadsBackExactlyInTheShorterForm) {
  const std::pair<double, const char*> cases[] = {{2, "2"}, {0.0065, "0.0065"}, {-1.25e-05, "-1.25e-05"},
      {200000, "2e+05"}, {-1.1, "-1.1"}, {0.1 + 0.2, "0.30000000000000004"}, {1234.5, "1234.5"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(ShortestNumberText(value), text) << text;
}

TEST(SignificantNumberText, RoundsToTheDigitsAndDropsTrailingZeros) {
  const std::tuple<double, int, const char*> cases[] = {
      {7.999999999999351, 6, "8"}, {0.04242293801386134, 3, "0.0424"}, {-1.2500049e-05, 6, "-1.25e-05"},
      {0.0999996, 3, "0.1"},       {123456789, 6, "1.23457e+08"},      {-2.1, 6, "-2.1"}};
  for (const auto& [value, digits, text] : cases) EXPECT_EQ(SignificantNumberText(value, digits), text) << text;
}
// clang-format on

TEST(WholeNumber, TakesOnlyAWholeFinitePeriodNumber) {
  const std::pair<const char*, double> numbers[] = {{"1.5", 1.5}, {" -2e-3 ", -0.002}, {"+3", 3}, {".5", 0.5}};
  for (const auto& [text, value] : numbers) EXPECT_EQ(WholeNumber(text), value) << text;
  for (const char* text : {"", " ", "1,5", "1.5x", "x1", "inf", "nan", "+-1", "1e400", "1 2"})
    EXPECT_FALSE(WholeNumber(text)) << '"' << text << '"';
}

// The fast formatter must match FormatNumber, also next to the halves where rounding could part.
void ExpectSameText(double value, int decimals) {
  std::string fast;
  AppendFixedNumber(fast, value, decimals);
  ASSERT_EQ(fast, FormatNumber(value, decimals == 0 ? "0" : "0." + std::string(decimals, '0')))
      << NumberText(value) << " to " << decimals;
}

TEST(AppendFixedNumber, MatchesFormatNumberOnChosenAndRandomValuesAndNearHalves) {
  for (double value : {0.0, -0.0, 0.2385, -2.5, -0.0004, -0.0005, 1.0005, -99.999, 1e-300, 99999999.5, 1e15, -1e20,
                       0.375, 4.4445, std::nan(""), HUGE_VAL, -HUGE_VAL})
    for (int decimals = 0; decimals <= 5; ++decimals) ExpectSameText(value, decimals);
  std::mt19937_64 random(42);
  std::uniform_real_distribution<double> magnitude(-8, 9);
  for (int i = 0; i < 200000; ++i) {
    int d = static_cast<int>(random() % 6);
    double value = std::pow(10.0, magnitude(random)) * (random() % 2 ? 1 : -1);
    ExpectSameText(value, d);
    double half = (std::floor(std::fabs(value) * std::pow(10.0, d)) + 0.5) / std::pow(10.0, d);
    for (double near : {half, std::nextafter(half, 0.0), std::nextafter(half, 1e300)}) ExpectSameText(near, d);
  }
}

}  // namespace
}  // namespace tavilo
