#pragma once
// Qt's own texts (the buttons of message boxes and file dialogs) in the
// program's language, from Qt's translations as the system installed them.

#include "strings/language.h"

class QTranslator;

namespace tavilo {

// Puts `translator`, loaded for `language`, in force in place of what it
// held before; English needs none. False when the
// German translation is not installed: Qt's texts then stay English.
bool InstallQtTranslation(QTranslator& translator, Language language);

}  // namespace tavilo
