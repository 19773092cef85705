#include "document/points_table.h"

#include <array>
#include <charconv>
#include <cmath>

#include "base/number_text.h"
#include "formats/table_fields.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

constexpr std::array<std::string_view, kPointColumns> kColumnNames = {"Alfa", "Cl", "Cd", "Cm", "TU", "TL"};
constexpr std::array<double PolarPoint::*, kPointColumns> kColumnFields = {
    &PolarPoint::Alfa, &PolarPoint::Cl, &PolarPoint::Cd, &PolarPoint::Cm, &PolarPoint::TU, &PolarPoint::TL};

std::string_view TrimBlanksAndTabs(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// "" for an unknown value; `digits` significant digits at most, or as
// many as reading the text back to the very value needs when 0.
std::string ValueText(double value, int digits) {
  if (value <= kNoValue) return {};
  char buffer[32];
  const std::to_chars_result end =
      digits > 0 ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits)
                 : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general);
  return std::string(buffer, end.ptr);
}

}  // namespace

std::string_view PointColumnName(int column) { return kColumnNames.at(static_cast<size_t>(column)); }

double PointValue(const PolarPoint& point, int column) { return point.*kColumnFields.at(static_cast<size_t>(column)); }

void SetPointValue(PolarPoint& point, int column, double value) {
  point.*kColumnFields.at(static_cast<size_t>(column)) = value;
}

// Fifteen digits hide the last bit of a computed value (a mean of rake
// readings shows as 0.05294, not 0.05294000000000001); the format's
// general style writes 200000, not 2e+05, as one would type it.
std::string PointCellText(double value) { return ValueText(value, 15); }

CellReading ReadPointCell(int column, std::string_view text, Language language, bool decimalComma) {
  const std::string_view field = TrimBlanksAndTabs(text);
  CellReading reading;
  double value = kNoValue;
  switch (ReadFieldNumber(field, decimalComma, value)) {
    case FieldValue::Text:
      reading.refusal =
          FormatResString(decimalComma ? Text::PointNoNumberEitherDecimal : Text::PointNoNumber, language, {field});
      return reading;
    case FieldValue::Empty: value = kNoValue; break;
    case FieldValue::Number: break;
  }
  // Refused rather than kept: one huge value would take its polar out of
  // every graph.
  if (std::abs(value) > kPointValueLimit) {
    reading.refusal = FormatResString(Text::PointOutOfRange, language, {PointColumnName(column), field});
    return reading;
  }
  if (column < kRequiredPointColumns && value <= kNoValue) {
    reading.refusal = FormatResString(Text::PointNeedsValue, language, {PointColumnName(column)});
    return reading;
  }
  // Every value at or below the marker means unknown; it is kept as the
  // marker itself so that writers see the one value they know.
  reading.value = value <= kNoValue ? kNoValue : value;
  return reading;
}

CellReading ReadEditedCell(int column, std::string_view text, double stored, Language language) {
  if (TrimBlanksAndTabs(text) == PointCellText(stored)) return {stored, {}};
  return ReadPointCell(column, text, language);
}

std::string PointRowsText(std::span<const PolarPoint> points, std::span<const int> rows) {
  std::string text;
  for (int column = 0; column < kPointColumns; ++column) {
    if (column > 0) text += '\t';
    text += PointColumnName(column);
  }
  text += '\n';
  for (int row : rows) {
    const PolarPoint& point = points[static_cast<size_t>(row)];
    for (int column = 0; column < kPointColumns; ++column) {
      if (column > 0) text += '\t';
      text += ValueText(PointValue(point, column), 0);
    }
    text += '\n';
  }
  return text;
}

PastedRows ReadPointRows(std::string_view text, Language language) {
  PastedRows pasted;
  int lineNumber = 0;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    ++lineNumber;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (TrimBlanksAndTabs(line).empty()) continue;
    std::array<std::string_view, kPointColumns> fields{};
    size_t start = 0;
    for (int column = 0; column < kPointColumns && start <= line.size(); ++column) {
      const size_t tab = line.find('\t', start);
      fields[static_cast<size_t>(column)] = line.substr(start, tab == std::string_view::npos ? line.npos : tab - start);
      start = tab == std::string_view::npos ? line.size() + 1 : tab + 1;
    }
    double first = 0;
    if (ReadFieldNumber(TrimBlanksAndTabs(fields[0]), true, first) == FieldValue::Text) continue;
    PolarPoint point;
    for (int column = 0; column < kPointColumns; ++column) {
      const CellReading cell = ReadPointCell(column, fields[static_cast<size_t>(column)], language, true);
      if (!cell.Accepted()) {
        const std::string where = FormatNumber(lineNumber, "0");
        return {{}, FormatResString(Text::ClipboardLine, language, {where, cell.refusal})};
      }
      SetPointValue(point, column, cell.value);
    }
    pasted.points.push_back(point);
  }
  if (pasted.points.empty()) pasted.refusal = GetResString(Text::ClipboardHoldsNoPoints, language);
  return pasted;
}

}  // namespace tavilo
