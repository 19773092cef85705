#include "qt_translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include "strings/string_table.h"

namespace tavilo {

bool InstallQtTranslation(QTranslator& translator, Language language) {
  QCoreApplication::removeTranslator(&translator);
  if (language != Language::German) return true;
  if (!translator.load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) return false;
  return QCoreApplication::installTranslator(&translator);
}

}  // namespace tavilo
