#pragma once
// The keyed lookup of a PEF file done the slow, literal way: the text is read
// line by line from the top for every value. The fast index must answer
// exactly like it.

#include <optional>
#include <string>
#include <string_view>

#include "formats/line_reader.h"

namespace tavilo::testing {

// The raw rest of the first matching key line, or nothing.
inline std::optional<std::string> ReferencePefScan(std::string_view text, std::string_view section,
                                                   std::string_view key) {
  LineReader lines(text);
  std::string_view line;
  bool inSection = false;
  while (!inSection && lines.Next(line))
    inSection = line.substr(0, 1) == "[" && line.substr(1, section.size()) == section;
  if (!inSection) return std::nullopt;
  while (lines.Next(line)) {
    if (line.substr(0, key.size()) == key) {
      std::string value = key.size() + 1 > line.size() ? "" : std::string(line.substr(key.size() + 1));
      while (!value.empty() && (value[0] == ' ' || value[0] == '=')) value.erase(0, 1);
      return value;
    }
    if (line.substr(0, 1) == "[") return std::nullopt;
  }
  return std::nullopt;
}

inline std::string ReferencePefValue(std::string_view text, std::string_view section, std::string_view key) {
  std::string value = ReferencePefScan(text, section, key).value_or("");
  value.erase(value.find_last_not_of(' ') + 1);
  if (!value.empty() && value.back() == '\0') value.pop_back();
  return value.erase(value.find_last_not_of(' ') + 1);
}

}  // namespace tavilo::testing
