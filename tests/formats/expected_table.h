#pragma once
// Compares an airfoil read from a real file with the table that
// tests/data/make_expected.sh drew from the same file by other means.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "formats/number_text.h"
#include "model/airfoil.h"

namespace tavilo::testing {

struct ExpectedPolar {
  double reynolds = 0;
  double mach = 0;
  std::vector<std::vector<double>> points;
};

struct ExpectedTable {
  std::string name;
  std::string setName;
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
  std::string line;
  while (std::getline(in, line)) {
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
  if (table.hasSetName) {
    EXPECT_EQ(config.Name, table.setName);
  }
  ASSERT_EQ(config.PolarCount(), static_cast<int>(table.polars.size()));
  for (int j = 1; j <= config.PolarCount(); ++j) {
    SCOPED_TRACE("polar " + std::to_string(j));
    const Polar& polar = *config.Polar(j);
    const ExpectedPolar& expected = table.polars[j - 1];
    EXPECT_TRUE(polar.Selected);
    EXPECT_DOUBLE_EQ(polar.ReynoldsNumber, expected.reynolds);
    EXPECT_DOUBLE_EQ(polar.MachNumber, expected.mach);
    ASSERT_EQ(polar.PointCount(), static_cast<int>(expected.points.size()));
    for (int i = 1; i <= polar.PointCount(); ++i) {
      SCOPED_TRACE("point " + std::to_string(i));
      const PolarPoint& point = polar.Point(i);
      const std::vector<double>& row = expected.points[i - 1];
      const double read[] = {point.Alfa, point.Cl, point.Cd, point.Cm, point.TU, point.TL};
      for (size_t k = 0; k < 6; ++k) {
        if (k < row.size()) {
          EXPECT_DOUBLE_EQ(read[k], row[k]) << "column " << k;
        } else {
          EXPECT_EQ(read[k], kNoValue) << "column " << k;
        }
      }
      EXPECT_EQ(point.SU, kNoValue);
      EXPECT_EQ(point.SL, kNoValue);
    }
  }
}

inline std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

}  // namespace tavilo::testing
