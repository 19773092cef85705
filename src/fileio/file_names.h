#pragma once
// The name tests by which files are read and written: the last four
// characters, compared without regard to case (ASCII letters only); and how
// a directory and a file name are joined.

#include <algorithm>
#include <string>
#include <string_view>

namespace tavilo {

inline std::string AsciiUpper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : char(c); });
  return upper;
}

// The last four characters of `name` in upper case (all of it when shorter).
inline std::string UpperExtension(std::string_view name) {
  return AsciiUpper(name.size() < 4 ? name : name.substr(name.size() - 4));
}

// `directory` ending in '/', ready for a file name to follow; "" stays "",
// the current directory.
inline std::string DirectoryPrefix(const std::string& directory) {
  return directory.empty() || directory.back() == '/' ? directory : directory + '/';
}

}  // namespace tavilo
