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

struct ExpectedPolar {
  double reynolds = 0, mach = 0;
  std::vector<std::vector<double>> points;
};

struct ExpectedTable {
  std::string name, setName;
  bool hasSetName = false;
  std::vector<ExpectedPolar> polars;
};

inline std::vector<double> NumbersOf(std::string_view line) {
  std::vector<double> numbers;
  for (std::string_view rest = TrimLeadingBlanks(line); !rest.empty(); rest = RestAfterFirstBlank(rest))
    numbers.push_back(LeadingNumber(rest));
  return numbers;
}

inline ExpectedTable LoadExpectedTable(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in) << "missing " << path;
  ExpectedTable table;
  for (std::string line; std::getline(in, line);) {
    if (line.rfind("name ", 0) == 0) {
      table.name = line.substr(5);
    } else if (line.rfind("set ", 0) == 0) {
      table.setName = line.substr(4);
      table.hasSetName = true;
    } else if (line.rfind("polar ", 0) == 0) {
      std::vector<double> values = NumbersOf(std::string_view(line).substr(6));
      table.polars.push_back({values.at(0), values.at(1), {}});
    } else if (!line.empty()) {
      table.polars.back().points.push_back(NumbersOf(line));
    }
  }
  return table;
}

// Point columns of the table: Alfa Cl Cd [Cm TU TL]; the fields a table
// lacks must still hold the no-value marker.
inline void ExpectAirfoilMatchesTable(const Airfoil& airfoil, const ExpectedTable& table) {
  EXPECT_EQ(airfoil.Name, table.name);
  ASSERT_EQ(airfoil.ConfigCount(), 1);
  const Configuration& config = *airfoil.Configuration(1);
  EXPECT_EQ(config.Name, table.hasSetName ? table.setName : config.Name);
  ASSERT_EQ(config.PolarCount(), static_cast<int>(table.polars.size()));
  for (int j = 1; j <= config.PolarCount(); ++j) {
    const Polar& polar = *config.Polar(j);
    const ExpectedPolar& expected = table.polars[j - 1];
    EXPECT_TRUE(polar.Selected);
    EXPECT_DOUBLE_EQ(polar.ReynoldsNumber, expected.reynolds) << "polar " << j;
    EXPECT_DOUBLE_EQ(polar.MachNumber, expected.mach) << "polar " << j;
    ASSERT_EQ(polar.PointCount(), static_cast<int>(expected.points.size())) << "polar " << j;
    for (int i = 1; i <= polar.PointCount(); ++i) {
      const PolarPoint& p = polar.Point(i);
      const std::vector<double>& row = expected.points[i - 1];
      const double read[] = {p.Alfa, p.Cl, p.Cd, p.Cm, p.TU, p.TL, p.SU, p.SL};
      for (size_t k = 0; k < 8; ++k)
        EXPECT_DOUBLE_EQ(read[k], k < row.size() ? row[k] : kNoValue) << "polar " << j << " point " << i << " column " << k;
    }
  }
}

}  // namespace tavilo::testing
