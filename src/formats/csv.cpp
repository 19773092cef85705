#include "formats/csv.h"

#include <charconv>
#include <cmath>

#include "formats/file_text.h"
#include "formats/text_output.h"

namespace tavilo {

namespace {

void AppendNumber(std::string& out, double value) {
  char buffer[32];
  out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

// Unknown values stay empty so that no reader takes -99.999 for a value;
// nothing non-finite is written that a table reader would take for text.
void AppendValue(std::string& out, double value) {
  out += ',';
  if (value > kNoValue && std::isfinite(value)) AppendNumber(out, value);
}

// A line break in a name would end the row for every line-based reader,
// so it is written as a blank.
void AppendQuoted(std::string& out, const std::string& text) {
  out += '"';
  for (char c : text) {
    if (c == '"') out += '"';
    out += c == '\r' || c == '\n' ? ' ' : c;
  }
  out += '"';
}

}  // namespace

std::string CsvText(const Airfoil& airfoil) {
  std::string out;
  AppendLine(out, kCsvHeader);
  // Everything before the first value of a point is the same for each of
  // the polar's rows, so it is built once per polar.
  std::string polarPrefix;
  for (int s = 1; s <= airfoil.ConfigCount(); ++s) {
    const ConfigurationPtr set = airfoil.Configuration(s);
    if (!set) continue;
    for (int p = 1; p <= set->PolarCount(); ++p) {
      const PolarPtr polar = set->Polar(p);
      if (!polar || !polar->Selected) continue;
      polarPrefix.clear();
      AppendNumber(polarPrefix, s);
      polarPrefix += ',';
      AppendQuoted(polarPrefix, set->Name);
      polarPrefix += ',';
      AppendNumber(polarPrefix, p);
      polarPrefix += ',';
      AppendQuoted(polarPrefix, polar->Name);
      polarPrefix += ',';
      AppendNumber(polarPrefix, polar->ReynoldsNumber);
      polarPrefix += ',';
      AppendNumber(polarPrefix, polar->MachNumber);
      for (const PolarPoint& point : polar->Points()) {
        out += polarPrefix;
        for (double value : {point.Alfa, point.Cl, point.Cd, point.Cm, point.TU, point.TL}) AppendValue(out, value);
        out += "\r\n";
      }
    }
  }
  return out;
}

void WriteToCSV(const Airfoil& airfoil, const std::string& path) { WriteFileAtomically(path, CsvText(airfoil)); }

}  // namespace tavilo
