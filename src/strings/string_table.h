#pragma once
// Every text the user sees, in English and German. The English text of id n
// is resource 1000 + n, the German one 2000 + n, for n from 0 to 92.

#include <string>

namespace tavilo {

inline constexpr int kEnglish = 1;
inline constexpr int kGerman = 2;
inline constexpr int kLastStringId = 92;

// The text of resource `key` (1000 + n or 2000 + n), UTF-8.
// ResourceError for a key outside the table.
const std::string& ResourceString(int key);

// The text of id `id` in `language` (1 English, 2 German): resource
// language * 1000 + id. OverflowError when that leaves the 32-bit range;
// ResourceError for an id without an entry (outside 0..92, or a language
// other than 1 and 2).
const std::string& GetResString(int id, int language);

// "Tavilo: Error" in `language`: string 1, ": ", string 75.
std::string ErrorTitle(int language);

}  // namespace tavilo
