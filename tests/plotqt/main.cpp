// The Qt surface needs a GUI application for its fonts; the tests run it off
// screen unless a platform is chosen.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <clocale>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  std::setlocale(LC_ALL, "");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
