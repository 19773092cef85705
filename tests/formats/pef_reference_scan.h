#pragma once
// The keyed lookup of a PEF file done the slow, literal way: the text is read
// line by line from the top for every value. The fast index must answer
// exactly like it.

#include <algorithm>
#include <string>
#include <string_view>

#include "formats/line_reader.h"

namespace tavilo::testing {

// The rest of the first matching key line, trimmed and without one final NUL, or "".
inline std::string ReferencePefValue(std::string_view text, std::string_view section, std::string_view key) {
  LineReader lines(text);
  std::string_view line;
  bool inSection = false;
  while (!inSection && lines.Next(line))
    inSection = line.substr(0, 1) == "[" && line.substr(1, section.size()) == section;
  while (inSection && lines.Next(line)) {
    if (line.substr(0, key.size()) == key) {
      std::string value(line.substr(std::min(line.size(), key.size() + 1)));
      value.erase(0, value.find_first_not_of(" ="));
      value.erase(value.find_last_not_of(' ') + 1);
      if (!value.empty() && value.back() == '\0') value.pop_back();
      return value.erase(value.find_last_not_of(' ') + 1);
    }
    if (line.substr(0, 1) == "[") break;
  }
  return "";
}

}  // namespace tavilo::testing
