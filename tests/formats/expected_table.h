#pragma once
// Compares an airfoil read from a real file with the table that
// tests/data/make_expected.sh drew from the same file by other means.

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "model/airfoil.h"

namespace tavilo::testing {

inline std::vector<double> NumbersOf(std::string_view line) {
  std::vector<double> numbers;
  for (std::string_view rest = TrimLeadingBlanks(line); !rest.empty(); rest = RestAfterFirstBlank(rest))
    numbers.push_back(LeadingNumber(rest));
  return numbers;
}

// Both sides as rows: "polar Re Mach" as {Re, Mach}, each point as Alfa Cl Cd
// [Cm TU TL] and the no-value marker in the fields the table lacks.
inline void ExpectAirfoilMatchesTable(const Airfoil& airfoil, const std::string& tablePath) {
  std::ifstream in(tablePath, std::ios::binary);
  EXPECT_TRUE(in) << "missing " << tablePath;
  ASSERT_EQ(airfoil.ConfigCount(), 1);
  const Configuration& set = *airfoil.Configuration(1);
  std::vector<std::vector<double>> expected, read;
  for (std::string line; std::getline(in, line);) {
    const bool polar = line.starts_with("polar ");
    if (line.starts_with("name ") || line.starts_with("set ")) {
      EXPECT_EQ(line[0] == 'n' ? airfoil.Name : set.Name, line.substr(line.find(' ') + 1));
    } else if (!line.empty()) {
      expected.push_back(NumbersOf(std::string_view(line).substr(polar ? 6 : 0)));
      if (!polar) expected.back().resize(8, kNoValue);
    }
  }
  for (const PolarPtr& polar : set.Polars()) {
    EXPECT_TRUE(polar->Selected);
    read.push_back({polar->ReynoldsNumber, polar->MachNumber});
    for (const PolarPoint& p : polar->Points()) read.push_back({p.Alfa, p.Cl, p.Cd, p.Cm, p.TU, p.TL, p.SU, p.SL});
  }
  ASSERT_EQ(read.size(), expected.size()) << tablePath;
  for (size_t row = 0; row < read.size(); ++row) {
    ASSERT_EQ(read[row].size(), expected[row].size()) << tablePath << " row " << row + 1;
    for (size_t k = 0; k < read[row].size(); ++k)
      EXPECT_DOUBLE_EQ(read[row][k], expected[row][k]) << tablePath << " row " << row + 1 << " column " << k + 1;
  }
}

}  // namespace tavilo::testing
