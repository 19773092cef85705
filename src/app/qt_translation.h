#pragma once
// Qt's own texts (the buttons of message boxes and file dialogs) in the
// program's language, from Qt's translations as the system installed them.

class QTranslator;

namespace tavilo {

// Puts `translator`, loaded for `language` (1 English, 2 German), in force
// in place of what it held before; English needs none. False when the
// German translation is not installed: Qt's texts then stay English.
bool InstallQtTranslation(QTranslator& translator, int language);

}  // namespace tavilo
