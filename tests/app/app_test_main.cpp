// Runs the application tests headless, with the settings store redirected
// to a private folder so that no test reads or writes the user's own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <clocale>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QTemporaryDir settingsHome;
  if (!settingsHome.isValid()) return 2;
  qputenv("XDG_CONFIG_HOME", settingsHome.path().toUtf8());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsHome.path());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settingsHome.path());
  QApplication app(argc, argv);
  std::setlocale(LC_ALL, "");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
