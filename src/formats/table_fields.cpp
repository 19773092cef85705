#include "formats/table_fields.h"

#include <charconv>
#include <cstring>

namespace tavilo {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsWordChar(char c) { return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

bool EqualsIgnoringCase(std::string_view text, std::string_view lower) {
  if (text.size() != lower.size()) return false;
  for (size_t i = 0; i < text.size(); ++i)
    if (LowerAscii(text[i]) != lower[i]) return false;
  return true;
}

std::string_view TrimBlanksAndTabs(std::string_view text) {
  size_t begin = 0, end = text.size();
  while (begin < end && IsBlank(text[begin])) ++begin;
  while (end > begin && IsBlank(text[end - 1])) --end;
  return text.substr(begin, end - begin);
}

// Past the closing quote of the quoted text opening at `pos`; the line's
// end when it is never closed.
size_t PastQuoted(std::string_view line, size_t pos) {
  for (++pos; pos < line.size(); ++pos) {
    if (line[pos] != '"') continue;
    if (pos + 1 < line.size() && line[pos + 1] == '"') {
      ++pos;
      continue;
    }
    return pos + 1;
  }
  return line.size();
}

// The number at the start of `text` as text: sign, digits, a decimal point
// (or comma where allowed) and an exponent, also XFOIL's "0.200 e 6" with
// blanks around the "e". Copied into `buffer` so that from_chars sees one
// period-decimal token; false when no digit stands there.
bool NumberTokenAt(std::string_view text, char (&buffer)[64], size_t& length) {
  size_t i = 0, out = 0;
  auto put = [&](char c) {
    if (out < sizeof buffer) buffer[out++] = c;
  };
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
    if (text[i] == '-') put('-');
    ++i;
  }
  bool digits = false, point = false;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (IsDigit(c)) {
      put(c);
      digits = true;
    } else if ((c == '.' || c == ',') && !point && i + 1 < text.size() && IsDigit(text[i + 1])) {
      put('.');
      point = true;
    } else if (c == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (!digits) return false;
  size_t e = i;
  while (e < text.size() && text[e] == ' ') ++e;
  if (e < text.size() && (text[e] == 'e' || text[e] == 'E')) {
    size_t k = e + 1;
    while (k < text.size() && text[k] == ' ') ++k;
    size_t signAt = k;
    if (k < text.size() && (text[k] == '-' || text[k] == '+')) ++k;
    if (k < text.size() && IsDigit(text[k])) {
      put('e');
      if (text[signAt] == '-') put('-');
      while (k < text.size() && IsDigit(text[k])) put(text[k++]);
    }
  }
  length = out;
  return out < sizeof buffer;
}

// The number after "=" or ":" (blanks around it allowed) at `text`.
bool StatedNumber(std::string_view text, double& value) {
  size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  if (i >= text.size() || (text[i] != '=' && text[i] != ':')) return false;
  ++i;
  while (i < text.size() && IsBlank(text[i])) ++i;
  char buffer[64];
  size_t length = 0;
  if (!NumberTokenAt(text.substr(i), buffer, length)) return false;
  double parsed = 0;
  auto [end, error] = std::from_chars(buffer, buffer + length, parsed);
  if (error != std::errc() || end != buffer + length) return false;
  value = parsed;
  return true;
}

}  // namespace

Separator SeparatorOf(std::string_view line) {
  bool tab = false, comma = false;
  for (size_t i = 0; i < line.size();) {
    const char c = line[i];
    if (c == '"') {
      i = PastQuoted(line, i);
      continue;
    }
    if (c == ';') return Separator::Semicolon;
    tab = tab || c == '\t';
    comma = comma || c == ',';
    ++i;
  }
  return tab ? Separator::Tab : comma ? Separator::Comma : Separator::Blanks;
}

bool FieldCursor::Next(std::string_view& field) {
  if (separator_ == Separator::Blanks) {
    while (pos_ < line_.size() && IsBlank(line_[pos_])) ++pos_;
    if (pos_ >= line_.size()) return false;
    const size_t begin = pos_;
    if (line_[pos_] == '"') pos_ = PastQuoted(line_, pos_);
    while (pos_ < line_.size() && !IsBlank(line_[pos_])) ++pos_;
    field = line_.substr(begin, pos_ - begin);
    return true;
  }
  if (done_) return false;
  const char separator = separator_ == Separator::Semicolon ? ';' : separator_ == Separator::Tab ? '\t' : ',';
  size_t i = pos_;
  while (i < line_.size() && line_[i] == ' ') ++i;
  if (i < line_.size() && line_[i] == '"') i = PastQuoted(line_, i);
  const void* found = i < line_.size() ? std::memchr(line_.data() + i, separator, line_.size() - i) : nullptr;
  const size_t end = found ? static_cast<size_t>(static_cast<const char*>(found) - line_.data()) : line_.size();
  field = TrimBlanksAndTabs(line_.substr(pos_, end - pos_));
  done_ = end >= line_.size();
  pos_ = end + 1;
  return true;
}

std::string UnquotedText(std::string_view field) {
  if (field.empty() || field[0] != '"') return std::string(field);
  std::string text;
  for (size_t i = 1; i < field.size(); ++i) {
    if (field[i] != '"') {
      text += field[i];
    } else if (i + 1 < field.size() && field[i + 1] == '"') {
      text += '"';
      ++i;
    } else {
      break;
    }
  }
  return text;
}

FieldValue ReadFieldNumber(std::string_view field, bool decimalComma, double& value) {
  if (field.empty()) return FieldValue::Empty;
  size_t start = field[0] == '+' || field[0] == '-' ? 1 : 0;
  // from_chars would take "inf" and "nan", which no table means.
  if (start >= field.size() || !(IsDigit(field[start]) || field[start] == '.')) return FieldValue::Text;
  if (field[0] == '+') field.remove_prefix(1);
  const char* first = field.data();
  char buffer[64];
  if (decimalComma && field.find(',') != std::string_view::npos) {
    if (field.size() > sizeof buffer) return FieldValue::Text;
    for (size_t i = 0; i < field.size(); ++i) buffer[i] = field[i] == ',' ? '.' : field[i];
    first = buffer;
  }
  auto [end, error] = std::from_chars(first, first + field.size(), value);
  return error == std::errc() && end == first + field.size() ? FieldValue::Number : FieldValue::Text;
}

Column ColumnOfName(std::string_view name) {
  struct Alias {
    std::string_view name;
    Column column;
  };
  static constexpr Alias kAliases[] = {
      {"alpha", Column::Alfa},     {"alfa", Column::Alfa},      {"aoa", Column::Alfa},
      {"\xCE\xB1", Column::Alfa},  {"cl", Column::Cl},          {"ca", Column::Cl},
      {"cd", Column::Cd},          {"cw", Column::Cd},          {"cm", Column::Cm},
      {"top_xtr", Column::TopXtr}, {"xtr_top", Column::TopXtr}, {"xtr1", Column::TopXtr},
      {"bot_xtr", Column::BotXtr}, {"xtr_bot", Column::BotXtr}, {"xtr2", Column::BotXtr},
      {"re", Column::Re},          {"mach", Column::Mach},      {"ma", Column::Mach},
      {"set_no", Column::SetNo},   {"set", Column::Set},        {"polar_no", Column::PolarNo},
      {"polar", Column::Polar},
  };
  for (const Alias& alias : kAliases)
    if (EqualsIgnoringCase(name, alias.name)) return alias.column;
  return Column::None;
}

bool ReadHeader(std::string_view line, TableHeader& header) {
  header.separator = SeparatorOf(line);
  header.columns.clear();
  header.fieldOf.fill(-1);
  FieldCursor cursor(line, header.separator);
  std::string_view field;
  while (cursor.Next(field)) {
    std::string name = UnquotedText(field);
    // Between blanks a unit stands as a field of its own ("alpha [deg]"):
    // it belongs to the name before it and takes no column.
    if (header.separator == Separator::Blanks && !header.columns.empty() && !name.empty() &&
        (name[0] == '[' || name[0] == '('))
      continue;
    const size_t unit = name.find_first_of("[(");
    const Column column = ColumnOfName(TrimBlanksAndTabs(std::string_view(name).substr(0, unit)));
    auto& at = header.fieldOf[static_cast<size_t>(column)];
    if (column != Column::None && at < 0) at = static_cast<int>(header.columns.size());
    header.columns.push_back(column);
  }
  return header.fieldOf[static_cast<size_t>(Column::Alfa)] >= 0 && header.fieldOf[static_cast<size_t>(Column::Cl)] >= 0;
}

void ReadFlowNumbers(std::string_view line, double& reynolds, bool& hasReynolds, double& mach, bool& hasMach) {
  for (size_t i = 0; i < line.size();) {
    if (!IsWordChar(line[i])) {
      ++i;
      continue;
    }
    size_t end = i;
    while (end < line.size() && IsWordChar(line[end])) ++end;
    const std::string_view word = line.substr(i, end - i);
    // "Re" only as written: "RE" and "re" stand in too many other words and
    // abbreviations; the long forms are safe in any case.
    const bool isReynolds = word == "Re" || EqualsIgnoringCase(word, "reynolds");
    const bool isMach = word == "Ma" || EqualsIgnoringCase(word, "mach");
    double value = 0;
    if ((isReynolds || isMach) && StatedNumber(line.substr(end), value)) {
      if (isReynolds) {
        reynolds = value;
        hasReynolds = true;
      } else {
        mach = value;
        hasMach = true;
      }
    }
    i = end;
  }
}

std::string_view AirfoilNameOf(std::string_view line) {
  line = TrimBlanksAndTabs(line);
  if (line.starts_with("//"))
    line.remove_prefix(2);
  else if (!line.empty() && (line[0] == '#' || line[0] == '%' || line[0] == '!'))
    line.remove_prefix(1);
  line = TrimBlanksAndTabs(line);
  for (std::string_view key : {"airfoil:", "profil:", "name:"}) {
    if (line.size() > key.size() && EqualsIgnoringCase(line.substr(0, key.size()), key))
      return TrimBlanksAndTabs(line.substr(key.size()));
  }
  return {};
}

bool IsCommentLine(std::string_view line) {
  size_t i = 0;
  while (i < line.size() && IsBlank(line[i])) ++i;
  if (i >= line.size()) return false;
  const char c = line[i];
  return c == '#' || c == '%' || c == '!' || (c == '/' && i + 1 < line.size() && line[i + 1] == '/');
}

bool IsBlankLine(std::string_view line) {
  for (char c : line)
    if (!IsBlank(c)) return false;
  return true;
}

}  // namespace tavilo
