// Renders Tools > Run XFOIL... while it runs and the polars it added to the
// graphs, to PNG files for a look by eye:
//   tavilo_xfoil_screenshots <coordinate file> <out-prefix>
// It runs the real xfoil and uses a private settings store.
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <iostream>

#include "app/pef_form.h"

namespace {

void Save(QWidget* widget, const QString& path) {
  widget->grab().save(path);
  std::cout << path.toStdString() << '\n';
}

void Type(QDialog* dialog, const char* field, const char* text) {
  auto* edit = dialog->findChild<QLineEdit*>(field);
  edit->setText(QString::fromUtf8(text));
  emit edit->editingFinished();
}

// Lets the event loop run until `done` holds or `ms` have passed.
template <class Condition>
void WaitFor(Condition done, int ms) {
  for (int waited = 0; !done() && waited < ms; waited += 50) QTest::qWait(50);
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir settingsHome;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsHome.path());
  QApplication app(argc, argv);
  if (argc < 3) {
    std::cerr << "usage: tavilo_xfoil_screenshots <coordinate file> <output prefix>\n";
    return 2;
  }
  const QString prefix = QString::fromLocal8Bit(argv[2]);
  tavilo::PEFForm window;
  window.resize(1280, 860);
  window.show();
  window.findChild<QAction*>("mnuToolsRunXfoil")->trigger();
  auto* dialog = window.findChild<QDialog*>("frmXfoil");
  dialog->move(window.x() + 700, window.y() + 80);
  Type(dialog, "txtAirfoil", argv[1]);
  Type(dialog, "txtReynolds", "1e5, 2e5, 3e5, 5e5, 1e6");
  Type(dialog, "txtAlphaFrom", "-6");
  Type(dialog, "txtAlphaTo", "16");
  Type(dialog, "txtAlphaStep", "0.5");
  dialog->findChild<QPushButton*>("cmdRun")->click();
  auto* progress = dialog->findChild<QProgressBar*>("prgRun");
  WaitFor([&] { return progress->value() * 3 > progress->maximum(); }, 120000);
  Save(dialog, prefix + "-running.png");
  WaitFor([&] { return dialog->findChild<QPushButton*>("cmdRun")->isEnabled(); }, 600000);
  QApplication::processEvents();
  Save(dialog, prefix + "-done.png");
  dialog->hide();
  QApplication::processEvents();
  Save(&window, prefix + "-graphs.png");
  return 0;
}
