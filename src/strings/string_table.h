#pragma once
// Every text the user sees, in English and German. The English text of id n
// is resource 1000 + n, the German one 2000 + n: ids 0 to 92 as the program
// always had them, and later texts from 100 on, in blocks by feature.

#include <exception>
#include <initializer_list>
#include <string>
#include <string_view>

#include "strings/language.h"
#include "strings/text_ids.h"

namespace tavilo {

class RuntimeError;

// The last of the program's own ids; later texts start at 100.
inline constexpr int kLastStringId = static_cast<int>(Text::SortOnMach);

// The text of resource `key` (1000 + n or 2000 + n), UTF-8.
// ResourceError for a key outside the table.
const std::string& ResourceString(int key);

// The text `id` in `language`: resource language * 1000 + id. OverflowError
// when that leaves the 32-bit range; ResourceError for an id without an
// entry (93 to 99 and past the later texts, or a language other than
// English and German).
const std::string& GetResString(Text id, Language language);

// GetResString with "%1", "%2" ... replaced by the arguments in order; a
// "%" followed by anything else stays.
std::string FormatResString(Text id, Language language, std::initializer_list<std::string_view> arguments);

// What went wrong, in `language`: a core run-time error by its own text and
// detail (after the file it is about, where it names one), running out of
// memory, anything else as an unexpected error. A caller that names the
// file itself leaves it out with `namingFile` false.
std::string ErrorText(const std::exception& error, Language language, bool namingFile = true);

// The text of a core run-time error: the one it carries, or its kind's.
Text MessageText(const RuntimeError& error);

// A menu caption as the title of the dialog it opens: without its
// mnemonic "&" ("&&" stands for one "&") and without a closing "...".
std::string DialogTitle(std::string_view caption);

// "Tavilo: Error" in `language`: Text::ProgramName, ": ", Text::Error.
std::string ErrorTitle(Language language);

// "Tavilo: Warning" in `language`: Text::ProgramName, ": ", Text::Warning.
std::string WarningTitle(Language language);

}  // namespace tavilo
