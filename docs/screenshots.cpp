// Renders the main window with a file loaded, in English and in German, to
// PNG files for a look by eye:  tavilo_screenshots <file> <out-prefix>
// [<file to import>...]; the structure tree views import the further files.
// With --xfoil <coordinate file> <out-prefix>, the XFOIL run instead.
// It uses a private settings store, never the user's own.
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWheelEvent>
#include <iostream>
#include <string>

#include "app/pef_form.h"
#include "app/points_window.h"
#include "app/qt_user_interface.h"
#include "app/tree_controller.h"
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

// A click of `button` on the tree node `row` rows from the top.
void ClickNode(QTreeWidget* tree, int row, Qt::MouseButton button) {
  QTreeWidgetItem* item = tree->topLevelItem(0);
  for (int i = 0; i < row && item != nullptr; ++i) item = tree->itemBelow(item);
  if (item == nullptr) return;
  QWidget* viewport = tree->viewport();
  const QPointF at(tree->visualItemRect(item).center());
  const QPointF global(viewport->mapToGlobal(at));
  QMouseEvent press(QEvent::MouseButtonPress, at, global, button, button, Qt::NoModifier);
  QMouseEvent release(QEvent::MouseButtonRelease, at, global, button, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(viewport, &press);
  if (button == Qt::RightButton) {
    QContextMenuEvent menu(QContextMenuEvent::Mouse, at.toPoint(), global.toPoint());
    QApplication::sendEvent(viewport, &menu);
  }
  QApplication::sendEvent(viewport, &release);
  QApplication::processEvents();
}

// The tree with the second polar unticked, its pop-up, the properties
// dialog, then the envelope of the polars left active.
void SaveTreeViews(tavilo::PEFForm& window, const QString& prefix) {
  auto* tree = window.findChild<QTreeWidget*>("TreeView1");
  ClickNode(tree, 3, Qt::LeftButton);
  Save(&window, prefix + "-tree-en.png");
  ClickNode(tree, 2, Qt::RightButton);
  auto* menu = window.findChild<QMenu*>("mnuEditPolar");
  Save(menu, prefix + "-popup-en.png");
  menu->hide();
  auto* dialog = window.findChild<QDialog*>("frmPolarProps");
  QTimer::singleShot(50, dialog, [dialog, prefix] {
    Save(dialog, prefix + "-properties-en.png");
    dialog->reject();
  });
  window.Tree().EditName();
  window.findChild<QAction*>("mnuToolsEnvelope")->trigger();
  QApplication::processEvents();
  Save(&window, prefix + "-envelope-en.png");
}

// The lift-drag graph zoomed twice about a point near the drag bucket, and
// the lift-angle graph zoomed into a rectangle around the stall.
void SaveZoomed(tavilo::PEFForm& window, const QString& prefix) {
  QWidget* clCd = window.findChild<QWidget*>("ClCdPicture");
  const QPointF at(clCd->width() * 0.35, clCd->height() * 0.45);
  QWheelEvent wheel(at, clCd->mapToGlobal(at), QPoint(), QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(clCd, &wheel);
  QWidget* clAlfa = window.findChild<QWidget*>("ClAlfaPicture");
  const QPoint from(int(clAlfa->width() * 0.55), int(clAlfa->height() * 0.05));
  const QPoint to(int(clAlfa->width() * 0.98), int(clAlfa->height() * 0.45));
  QTest::mousePress(clAlfa, Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(clAlfa, to);
  QTest::mouseRelease(clAlfa, Qt::LeftButton, Qt::NoModifier, to);
  QApplication::processEvents();
  Save(&window, prefix + "-zoom-en.png");
  // The zoomed graphs as File > Save Graphs As writes them.
  const std::string picture = (prefix + "-graphs.png").toStdString();
  window.UserInterfaceImpl().SetFileChooser(
      [picture](const tavilo::FileDialogRequest&, const QString&) { return picture; });
  window.findChild<QAction*>("mnuFileSaveGraphs")->trigger();
  std::cout << picture << '\n';
}

// Chooses the graphs' ranges, as the range lists show them.
void SetRanges(tavilo::PEFForm& window, const char* clMax, const char* clMin, const char* cdMax, const char* alfaMax) {
  const char* names[] = {"cbClMax", "cbClMin", "cbCdMax", "cbAlfaMax"};
  const char* values[] = {clMax, clMin, cdMax, alfaMax};
  for (int i = 0; i < 4; ++i) window.findChild<QComboBox*>(names[i])->setCurrentText(values[i]);
}

// The approximation fitted to the first polar and shown over the graphs,
// near the polar and over the whole range, with its dialog.
void SaveApproximation(tavilo::PEFForm& window, const QString& prefix) {
  auto* tree = window.findChild<QTreeWidget*>("TreeView1");
  tree->setCurrentItem(tree->topLevelItem(0)->child(0)->child(0));
  window.OpenApproximation();
  auto* dialog = window.findChild<QDialog*>("frmApprox");
  dialog->findChild<QPushButton*>("btnFit")->click();
  SetRanges(window, "2.0", "-1.5", "0.05", "30.0");
  dialog->findChild<QPushButton*>("btnShow")->click();
  QApplication::processEvents();
  Save(&window, prefix + "-approx-en.png");
  Save(dialog, prefix + "-approx-dialog-en.png");
  SetRanges(window, "2.0", "-1.5", "2.0", "90.0");
  dialog->findChild<QPushButton*>("btnShow")->click();
  QApplication::processEvents();
  Save(&window, prefix + "-approx-wide-en.png");
  dialog->hide();
  SetRanges(window, "1.5", "-0.5", "0.025", "15.0");
}

// The approximation fitted to polar `polar` (0-based) of `file` and shown
// over the graphs at the given ranges.
void SaveApproximationOf(tavilo::PEFForm& window, const QString& name, const std::string& file, int polar,
                         const char* clMax, const char* clMin, const char* cdMax, const char* alfaMax) {
  window.Document().OpenFile(file);
  auto* tree = window.findChild<QTreeWidget*>("TreeView1");
  tree->setCurrentItem(tree->topLevelItem(0)->child(0)->child(polar));
  window.OpenApproximation();
  auto* dialog = window.findChild<QDialog*>("frmApprox");
  dialog->findChild<QPushButton*>("btnFit")->click();
  SetRanges(window, clMax, clMin, cdMax, alfaMax);
  dialog->findChild<QPushButton*>("btnShow")->click();
  QApplication::processEvents();
  Save(&window, name + ".png");
  Save(dialog, name + "-dialog.png");
  dialog->hide();
}

// The approximation's report after a fit to a polar that leaves most
// values to estimate, in German, whose texts are the longest: it must wrap
// and show in full at the dialog's own size.
void SaveApproximationReport(tavilo::PEFForm& window, const QString& prefix, const std::string& file) {
  window.SetLanguage(tavilo::Language::German);
  window.Document().OpenFile(file);
  auto* tree = window.findChild<QTreeWidget*>("TreeView1");
  tree->setCurrentItem(tree->topLevelItem(0)->child(0)->child(0));
  auto* dialog = window.findChild<QDialog*>("frmApprox");
  dialog->resize(dialog->sizeHint());
  window.OpenApproximation();
  dialog->findChild<QPushButton*>("btnFit")->click();
  QApplication::processEvents();
  Save(dialog, prefix + "-approx-report-de.png");
  dialog->hide();
  window.SetLanguage(tavilo::Language::English);
}

// The points table of the first polar over the window with one cell
// edited, then the Edit menu naming the step an undo would take, in both
// languages; under a real display (xvfb-run) the whole screen as well.
void SavePointsAndUndo(tavilo::PEFForm& window, const QString& prefix) {
  window.move(0, 0);
  window.Points().Show("c 1|p 1");
  QApplication::processEvents();
  auto* edit = window.findChild<QMenu*>("mnuMainEdit");
  for (tavilo::PointsWindow* points : window.Points().Windows()) {
    points->move(window.width() - points->width() - 20, 190);
    auto* cells = points->findChild<QTableView*>("grdPoints");
    cells->model()->setData(cells->model()->index(4, 2), "0.0102");
    cells->setCurrentIndex(cells->model()->index(4, 2));
    QApplication::processEvents();
    Save(points, prefix + "-points-en.png");
    window.activateWindow();
    window.menuBar()->setActiveAction(edit->menuAction());
    QApplication::processEvents();
    QTest::qWait(300);
    const QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
    if (!screen.isNull() && QGuiApplication::platformName() != "offscreen") {
      screen.copy(0, 0, window.frameGeometry().width(), window.frameGeometry().height())
          .save(prefix + "-undo-points-en.png");
      std::cout << (prefix + "-undo-points-en.png").toStdString() << '\n';
    }
    edit->hide();
  }
  for (const tavilo::Language language : {tavilo::Language::English, tavilo::Language::German}) {
    window.SetLanguage(language);
    edit->popup(window.mapToGlobal(QPoint(60, 30)));
    QApplication::processEvents();
    Save(edit, prefix + "-undo-" + (language == tavilo::Language::English ? "en" : "de") + ".png");
    edit->hide();
  }
  window.SetLanguage(tavilo::Language::English);
}

// The box that a file without polars brings up, naming the file, in both
// languages: a text file named as an XFOIL polar, imported.
void SaveErrorBoxes(tavilo::PEFForm& window, const QString& prefix) {
  QTemporaryDir scratch;
  const QString path = scratch.filePath("notes.pol");
  QFile notes(path);
  if (!notes.open(QIODevice::WriteOnly)) return;
  notes.write("Measured on Tuesday; the table follows by mail.\n");
  notes.close();
  for (const tavilo::Language language : {tavilo::Language::English, tavilo::Language::German}) {
    window.SetLanguage(language);
    const QString name = prefix + "-error-names-file-" + (language == tavilo::Language::English ? "en" : "de") + ".png";
    QTimer grabber;
    QObject::connect(&grabber, &QTimer::timeout, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      QTest::qWait(100);
      Save(box, name);
      box->accept();
    });
    grabber.start(20);
    window.Document().ImportFiles({path.toStdString()});
  }
  window.SetLanguage(tavilo::Language::English);
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

// Tools > Run XFOIL... while it runs (the real xfoil), its report and the
// polars it added to the graphs.
void SaveXfoilRun(const char* coordinates, const QString& prefix) {
  tavilo::PEFForm window;
  window.resize(1280, 860);
  window.show();
  window.findChild<QAction*>("mnuToolsRunXfoil")->trigger();
  auto* dialog = window.findChild<QDialog*>("frmXfoil");
  dialog->move(window.x() + 700, window.y() + 80);
  Type(dialog, "txtAirfoil", coordinates);
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
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir settingsHome;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsHome.path());
  QApplication app(argc, argv);
  if (argc == 4 && std::string(argv[1]) == "--xfoil") {
    SaveXfoilRun(argv[2], QString::fromLocal8Bit(argv[3]));
    return 0;
  }
  if (argc < 3) {
    std::cerr << "usage: tavilo_screenshots <polar file> <output prefix> [<file to import>...]\n"
                 "       tavilo_screenshots --xfoil <coordinate file> <output prefix>\n";
    return 2;
  }
  const QFileInfo file(QString::fromLocal8Bit(argv[1]));
  const QString prefix = QString::fromLocal8Bit(argv[2]);
  QDir::setCurrent(file.absolutePath());

  tavilo::PEFForm window;
  window.resize(1280, 860);
  window.show();
  for (const tavilo::Language language : {tavilo::Language::English, tavilo::Language::German}) {
    window.SetLanguage(language);
    window.Document().OpenFile(file.absoluteFilePath().toStdString());
    PointAt(window.findChild<QWidget*>("ClCdPicture"), QPointF(0.4, 0.3));
    PointAt(window.findChild<QWidget*>("ClAlfaPicture"), QPointF(0.45, 0.55));
    QApplication::processEvents();
    const QString suffix = language == tavilo::Language::English ? "en" : "de";
    Save(&window, prefix + "-main-" + suffix + ".png");
    auto* tabs = window.findChild<QTabWidget*>("theTabStrip");
    for (int tab = 1; tab < tabs->count(); ++tab) {
      tabs->setCurrentIndex(tab);
      QApplication::processEvents();
      Save(&window, prefix + "-tab" + QString::number(tab) + "-" + suffix + ".png");
    }
    tabs->setCurrentIndex(0);
    for (const char* name : {"frmAbout", "frmOptions"}) {
      auto* dialog = window.findChild<QDialog*>(name);
      dialog->show();
      QApplication::processEvents();
      Save(dialog, prefix + "-" + QString(name).mid(3).toLower() + "-" + suffix + ".png");
      dialog->hide();
    }
  }
  window.SetLanguage(tavilo::Language::English);
  window.Document().OpenFile(file.absoluteFilePath().toStdString());
  // The smallest window: every control and graph must stay usable.
  window.resize(window.minimumSize());
  QApplication::processEvents();
  Save(&window, prefix + "-minimum-en.png");
  // Zoomed at that size: the numbers thin out, the title keeps clear of them.
  QWidget* clCd = window.findChild<QWidget*>("ClCdPicture");
  const QPointF at(clCd->width() * 0.3, clCd->height() * 0.5);
  QWheelEvent wheel(at, clCd->mapToGlobal(at), QPoint(), QPoint(0, 360), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(clCd, &wheel);
  QApplication::processEvents();
  Save(&window, prefix + "-zoomed-minimum-en.png");
  window.findChild<QAction*>("mnuViewResetZoom")->trigger();
  window.resize(1280, 860);
  QApplication::processEvents();
  SaveZoomed(window, prefix);
  window.findChild<QAction*>("mnuViewResetZoom")->trigger();
  for (int i = 3; i < argc; ++i) {
    const std::string imported = QFileInfo(QString::fromLocal8Bit(argv[i])).absoluteFilePath().toStdString();
    window.UserInterfaceImpl().SetFileChooser(
        [imported](const tavilo::FileDialogRequest&, const QString&) { return imported; });
    window.Document().Import();
  }
  // Every polar of the imported files: a crowded legend over the curves.
  if (argc > 3) {
    QApplication::processEvents();
    Save(&window, prefix + "-legend-en.png");
    QAction* readable = window.findChild<QAction*>("mnuViewReadableColors");
    readable->trigger();
    Save(&window, prefix + "-legend-readable-en.png");
    readable->trigger();
  }
  SaveApproximation(window, prefix);
  SaveTreeViews(window, prefix);
  SavePointsAndUndo(window, prefix);
  SaveApproximationReport(window, prefix, std::string(TAVILO_TEST_DATA) + "/uiuc/E387A.DRG");
  SaveApproximationOf(window, prefix + "-approx-low-re-en", std::string(TAVILO_TEST_DATA) + "/xfoil/naca2408_re60k.pol",
                      0, "1.5", "-0.5", "0.1", "15.0");
  SaveApproximationOf(window, prefix + "-approx-uiuc-en", std::string(TAVILO_TEST_DATA) + "/uiuc/e387_tf_drg.txt", 1,
                      "1.5", "-0.5", "0.1", "15.0");
  SaveErrorBoxes(window, prefix);
  return 0;
}
