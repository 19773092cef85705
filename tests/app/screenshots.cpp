// Renders the main window with a file loaded, in English and in German, to
// PNG files for a look by eye:  tavilo_screenshots <file> <out-prefix>.
// It uses a private settings store, never the user's own.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
#include <QTabWidget>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <iostream>

#include "app/about_dialog.h"
#include "app/file_browser.h"
#include "app/options_dialog.h"
#include "app/pef_form.h"
#include "strings/string_table.h"

namespace {

// Shows the read-outs as a pointer resting on the graph would.
void PointAt(QWidget* graph, QPointF fraction) {
  const QPointF at(graph->width() * fraction.x(), graph->height() * fraction.y());
  QMouseEvent move(QEvent::MouseMove, at, graph->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(graph, &move);
}

void Save(QWidget* widget, const QString& path) {
  widget->grab().save(path);
  std::cout << path.toStdString() << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir settingsHome;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsHome.path());
  QApplication app(argc, argv);
  if (argc < 3) {
    std::cerr << "usage: tavilo_screenshots <polar file> <output prefix>\n";
    return 2;
  }
  const QFileInfo file(QString::fromLocal8Bit(argv[1]));
  const QString prefix = QString::fromLocal8Bit(argv[2]);
  QDir::setCurrent(file.absolutePath());

  tavilo::PEFForm window;
  window.resize(1280, 860);
  window.show();
  for (const int language : {tavilo::kEnglish, tavilo::kGerman}) {
    tavilo::SetLanguage(language);
    window.SwitchLanguage();
    window.Document().OpenFile(file.absoluteFilePath().toStdString());
    PointAt(window.findChild<QWidget*>("ClCdPicture"), QPointF(0.4, 0.3));
    PointAt(window.findChild<QWidget*>("ClAlfaPicture"), QPointF(0.45, 0.55));
    QApplication::processEvents();
    const QString suffix = language == tavilo::kEnglish ? "en" : "de";
    Save(&window, prefix + "-main-" + suffix + ".png");
    auto* tabs = window.findChild<QTabWidget*>("theTabStrip");
    for (int tab = 1; tab < tabs->count(); ++tab) {
      tabs->setCurrentIndex(tab);
      QApplication::processEvents();
      Save(&window, prefix + "-tab" + QString::number(tab) + "-" + suffix + ".png");
    }
    tabs->setCurrentIndex(0);
    auto* about = window.findChild<tavilo::AboutDialog*>("frmAbout");
    about->show();
    QApplication::processEvents();
    Save(about, prefix + "-about-" + suffix + ".png");
    about->hide();
    auto* options = window.findChild<tavilo::OptionsDialog*>("frmOptions");
    options->show();
    QApplication::processEvents();
    Save(options, prefix + "-options-" + suffix + ".png");
    options->hide();
  }
  return 0;
}
