#pragma once
// Just enough of an XFOIL polar save file for drawing tests: the name, the
// Mach and Reynolds numbers and the columns alpha, CL, CD, CM, Top_Xtr and
// Bot_Xtr of every line under the dashes.

#include <cmath>
#include <string>

#include "formats/file_text.h"
#include "formats/number_text.h"
#include "model/airfoil.h"

namespace tavilo::testing {

inline PolarPtr ReadXfoilPolar(const std::string& path, std::string* name = nullptr) {
  std::string bytes = ReadFileBytes(path);
  auto polar = std::make_shared<Polar>();
  polar->Selected = true;
  bool inTable = false;
  size_t start = 0;
  while (start < bytes.size()) {
    size_t end = bytes.find('\n', start);
    if (end == std::string::npos) end = bytes.size();
    std::string_view line(bytes.data() + start, end - start);
    start = end + 1;
    if (auto at = line.find("polar for:"); at != std::string_view::npos && name)
      *name = std::string(TrimBlanks(line.substr(at + 10)));
    if (auto at = line.find("Mach ="); at != std::string_view::npos) {
      polar->MachNumber = LeadingNumber(line.substr(at + 6));
      size_t re = line.find("Re =");
      std::string_view rest = line.substr(re + 4);
      double mantissa = LeadingNumber(rest);
      size_t e = rest.find(" e ");
      polar->ReynoldsNumber = mantissa * std::pow(10.0, LeadingNumber(rest.substr(e + 3)));
    }
    if (line.find("------") != std::string_view::npos) {
      inTable = true;
      continue;
    }
    if (!inTable || TrimBlanks(line).empty()) continue;
    double column[7];
    std::string_view rest = line;
    for (double& value : column) {
      value = LeadingNumber(rest);
      rest = RestAfterFirstBlank(TrimLeadingBlanks(rest));
    }
    PolarPoint point;
    point.Alfa = column[0];
    point.Cl = column[1];
    point.Cd = column[2];
    point.Cm = column[4];
    point.TU = column[5];
    point.TL = column[6];
    polar->AddPoint(point);
  }
  return polar;
}

}  // namespace tavilo::testing
