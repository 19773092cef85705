#include "settings.h"

#include <QSettings>
#include <cmath>
#include <limits>

#include "base/errors.h"
#include "base/number_text.h"

namespace tavilo {

namespace {

// QSettings(organization) with no application name keeps one file per
// organization; the section becomes a group inside it.
QSettings OpenStore() { return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Korvend"); }

}  // namespace

int SettingNumber(const QString& text, bool truncate) {
  try {
    const double value = LeadingNumber(text.toStdString());
    if (truncate) {
      const double whole = std::trunc(value);
      if (whole < std::numeric_limits<int>::min() || whole > std::numeric_limits<int>::max()) return 0;
      return static_cast<int>(whole);
    }
    return RoundToInt16(value);
  } catch (const RuntimeError&) {
    // A value edited by hand beyond every range is treated like garbage:
    // the default behaviour of a non-number.
    return 0;
  }
}

AppSettings ReadSettings() {
  QSettings store = OpenStore();
  store.beginGroup("Tavilo");
  auto number = [&store](const char* key, const char* fallback, bool truncate) {
    return SettingNumber(store.value(key, fallback).toString(), truncate);
  };
  AppSettings settings;
  settings.language = static_cast<Language>(number("Language", "1", true));
  settings.gridShow = number("GridShow", "0", false);
  settings.legendShow = number("LegendShow", "0", false);
  settings.legendPosition1 = number("LegendPosition1", "0", false);
  settings.legendPosition2 = number("LegendPosition2", "0", false);
  settings.path = store.value("Path", QStringLiteral("./")).toString();
  settings.axisNumbers = number("AxisNumbers", "1", false);
  settings.readableColors = number("ReadableColors", "0", false);
  settings.recentFiles = store.value("RecentFiles").toStringList();
  return settings;
}

void WriteSettings(const AppSettings& settings) {
  QSettings store = OpenStore();
  store.beginGroup("Tavilo");
  store.setValue("Language", QString::number(static_cast<int>(settings.language)));
  store.setValue("GridShow", QString::number(settings.gridShow));
  store.setValue("LegendShow", QString::number(settings.legendShow));
  store.setValue("LegendPosition1", QString::number(settings.legendPosition1));
  store.setValue("LegendPosition2", QString::number(settings.legendPosition2));
  store.setValue("Path", settings.path);
  store.setValue("AxisNumbers", QString::number(settings.axisNumbers));
  store.setValue("ReadableColors", QString::number(settings.readableColors));
  store.setValue("RecentFiles", settings.recentFiles);
  store.endGroup();
  store.sync();
}

QByteArray ReadWindowGeometry() {
  QSettings store = OpenStore();
  return store.value("TaviloWindow/Geometry").toByteArray();
}

void WriteWindowGeometry(const QByteArray& geometry) {
  QSettings store = OpenStore();
  store.setValue("TaviloWindow/Geometry", geometry);
}

QMap<QString, QString> ReadXfoilFields() {
  QSettings store = OpenStore();
  store.beginGroup("TaviloXfoil");
  QMap<QString, QString> fields;
  for (const QString& key : store.childKeys()) fields[key] = store.value(key).toString();
  return fields;
}

void WriteXfoilFields(const QMap<QString, QString>& fields) {
  QSettings store = OpenStore();
  store.beginGroup("TaviloXfoil");
  for (auto field = fields.begin(); field != fields.end(); ++field) store.setValue(field.key(), field.value());
}

}  // namespace tavilo
