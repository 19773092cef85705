#pragma once
// The table of one polar's points as the points window shows it and takes
// it back: six columns, their cell texts, what an entry in a cell means,
// and rows as tab-separated text for the clipboard. Numbers never pass
// through the locale: a period decimal in a cell whatever the language.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/polar_point.h"
#include "strings/language.h"

namespace tavilo {

// Alfa, Cl, Cd, Cm, TU, TL, in this order (0-based columns). The first
// three must hold a value; the others may be unknown (kNoValue).
inline constexpr int kPointColumns = 6;
inline constexpr int kRequiredPointColumns = 3;

std::string_view PointColumnName(int column);
double PointValue(const PolarPoint& point, int column);
void SetPointValue(PolarPoint& point, int column, double value);

// The largest magnitude a cell takes: far beyond any coefficient or angle,
// yet small enough for every graph to draw.
inline constexpr double kPointValueLimit = 1e6;

// "" for an unknown value (kNoValue and below), else the value with at
// most 15 significant digits and no trailing zeros ("0.05294" for
// 0.05294000000000001), a period decimal, an exponent only below 1e-4.
std::string PointCellText(double value);

// An entry read from a cell: its value, or why it is refused (a message
// in the language asked for) with the value left at kNoValue.
struct CellReading {
  double value = kNoValue;
  std::string refusal;
  bool Accepted() const { return refusal.empty(); }
};

// `text` typed into column `column`: a number with a period decimal
// (blanks around it do not matter); empty means unknown, which Alfa, Cl
// and Cd refuse, as they refuse a value at or below kNoValue. A magnitude
// above kPointValueLimit is refused in every column. With `decimalComma` a
// comma is taken for the period too (pasted rows), and the refusal of a
// text says so.
CellReading ReadPointCell(int column, std::string_view text, Language language, bool decimalComma = false);

// As ReadPointCell for a cell that holds `stored`; its own text, left as
// PointCellText shows it, keeps `stored` with all its digits.
CellReading ReadEditedCell(int column, std::string_view text, double stored, Language language);

// The points `rows` (0-based) of `points` as a header line of the column
// names and one line per row, fields separated by tabs, unknown values
// empty, each line ended by "\n". Each value is written in full, the
// shortest text that reads back to it, so that pasting the rows gives the
// very same values back.
std::string PointRowsText(std::span<const PolarPoint> points, std::span<const int> rows);

// Rows pasted from a spreadsheet: per line, tab-separated Alfa, Cl, Cd and
// optionally Cm, TU, TL, with a period or a comma decimal, read as cells
// are. Blank lines and lines whose first field is text (a header) are
// passed over. All rows or none: the first refusal, naming its line, or
// one saying that no row was found, leaves `points` empty.
struct PastedRows {
  std::vector<PolarPoint> points;
  std::string refusal;
};
PastedRows ReadPointRows(std::string_view text, Language language);

}  // namespace tavilo
