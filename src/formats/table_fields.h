#pragma once
// The pieces of one line of a column table: its fields, the numbers in
// them, the columns a header names, and the Reynolds and Mach numbers a
// prose line states. Everything works on views into the line; nothing here
// allocates, so a data line costs a split and a few number conversions.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavilo {

enum class Separator : uint8_t { Blanks, Semicolon, Tab, Comma };

// The separator a header line uses: ';' if it holds one outside double
// quotes, else a tab, else ',', else runs of blanks and tabs.
Separator SeparatorOf(std::string_view line);

// Walks the fields of a line. With Blanks a field runs to the next blank or
// tab and no field is empty; otherwise fields lie between separators, may
// be empty, and lose their surrounding blanks. A field opening with '"'
// runs to its closing quote ("" inside stands for one quote), separators
// included; the quotes stay in the field (see UnquotedText).
class FieldCursor {
 public:
  FieldCursor(std::string_view line, Separator separator) : line_(line), separator_(separator) {}
  // The next field, or false when the line has no more.
  bool Next(std::string_view& field);

 private:
  std::string_view line_;
  size_t pos_ = 0;
  Separator separator_;
  bool done_ = false;
};

// A field's text without its quotes, "" turned into ", as file bytes.
std::string UnquotedText(std::string_view field);

enum class FieldValue : uint8_t { Number, Empty, Text };

// Reads a whole field as a number: an optional sign, digits with one
// decimal point, an optional exponent; a decimal comma as well where
// `decimalComma`. Empty for a field of blanks; Text for anything else, a
// number beyond the double range included.
FieldValue ReadFieldNumber(std::string_view field, bool decimalComma, double& value);

// The columns a header can name. Set and polar columns hold text.
enum class Column : uint8_t { None, Alfa, Cl, Cd, Cm, TopXtr, BotXtr, Re, Mach, SetNo, Set, PolarNo, Polar };
inline constexpr int kColumnKinds = 13;

// The column of header field `name` (quotes and a unit in brackets or
// parentheses already removed), compared without regard to ASCII case.
Column ColumnOfName(std::string_view name);

// A header line: its separator and the column of each field, in order.
struct TableHeader {
  Separator separator = Separator::Blanks;
  std::vector<Column> columns;
  // Field index of each kind, -1 when the header does not name it.
  std::array<int, kColumnKinds> fieldOf{};
};

// Reads `line` as a header; false when it does not name both the angle and
// the lift (then `header` is left in any state).
bool ReadHeader(std::string_view line, TableHeader& header);

// The Reynolds and Mach numbers a line states ("Re = 0.200 e 6",
// "Reynolds: 2.0E+05", "Mach = 0.1"); each is set only where the line
// states it.
void ReadFlowNumbers(std::string_view line, double& reynolds, bool& hasReynolds, double& mach, bool& hasMach);

// The airfoil name of a line "Airfoil:", "Profil:" or "Name:" (any case,
// after a comment mark) followed by text; "" for any other line.
std::string_view AirfoilNameOf(std::string_view line);

// Whether the line is a comment: "#", "%", "!" or "//" after blanks.
bool IsCommentLine(std::string_view line);

// Whether the line holds nothing but blanks and tabs.
bool IsBlankLine(std::string_view line);

}  // namespace tavilo
