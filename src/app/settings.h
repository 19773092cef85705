#pragma once
// The per-user settings that survive a restart: language, the print
// options, the browser's directory and the View switches. They live in the user's settings
// store under application "Korvend", section "Tavilo", every value as text.

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include "strings/language.h"

namespace tavilo {

struct AppSettings {
  Language language = Language::English;  // other values kept as read
  int gridShow = 0;                       // check box value, 0 or 1
  int legendShow = 0;                     // check box value, 0 or 1
  int legendPosition1 = 0;                // option value, -1 set, 0 clear ("lower right")
  int legendPosition2 = 0;                // option value, -1 set, 0 clear ("upper left")
  QString path = QStringLiteral("./");    // the browser's directory
  int axisNumbers = 1;                    // View > Axis Numbers, 0 or 1
  int readableColors = 0;                 // View > Readable Colours, 0 or 1
  QStringList recentFiles;                // newest first
};

// Reads every key, falling back to the default of a missing key. A value
// that is not a number reads as 0; "Language" is truncated to an integer,
// the others are rounded to 16 bits.
AppSettings ReadSettings();

// Writes every key as the text of an integer ("-1", "0", "1", ...), the
// path as it is and the recent files as a list of texts.
void WriteSettings(const AppSettings& settings);

// The main window's size and place, kept apart from the six keys above.
QByteArray ReadWindowGeometry();
void WriteWindowGeometry(const QByteArray& geometry);

// The fields of Run XFOIL... as its last run left them, text by object
// name, kept apart from the keys above.
QMap<QString, QString> ReadXfoilFields();
void WriteXfoilFields(const QMap<QString, QString>& fields);

// The numeric value of a stored text by the readers' leading-number rule;
// 0 for a text without a number or one beyond the 16-bit range.
int SettingNumber(const QString& text, bool truncate);

}  // namespace tavilo
