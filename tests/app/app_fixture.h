#pragma once
// Shared helpers of the application tests: a main window started in a
// scratch directory with an empty settings store, input events sent to
// widgets, and a catcher that answers message boxes.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <QWheelEvent>

#include "app/file_browser.h"
#include "app/options_dialog.h"
#include "app/pef_form.h"
#include "app/qt_user_interface.h"
#include "formats/xml.h"
#include "model/airfoil.h"
#include "strings/string_table.h"
#include "support/model_builders.h"
#include "support/temp_dir.h"

namespace tavilo::testing {

// An XML polar file with one set holding `polars` polars of three points.
inline std::string WritePolarFile(const TempDir& dir, const std::string& name, const std::string& airfoilName,
                                  int polars = 1) {
  Airfoil airfoil;
  airfoil.Name = airfoilName;
  auto set = std::make_shared<Configuration>();
  set->Name = "clean";
  for (int p = 0; p < polars; ++p) {
    set->AddPolar(
        MakePolar(100000.0 * (p + 1), 0.0, true,
                  {MakePoint(0, 0.2, 0.01, -0.05), MakePoint(2, 0.4, 0.011, -0.05), MakePoint(4, 0.6, 0.012, -0.05)}));
  }
  airfoil.AddConfiguration(set);
  const std::string path = dir.File(name);
  WriteToXML(airfoil, path);
  return path;
}

// Answers every message box that opens while it lives with OK and keeps
// its title, text and the window it stands in front of.
class MessageBoxCatcher {
 public:
  struct Seen {
    QString title, text;
    QMessageBox::Icon icon;
    const QWidget* owner;
  };

  MessageBoxCatcher() {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      seen.push_back({box->windowTitle(), box->text(), box->icon(), box->parentWidget()});
      box->accept();
    });
    timer_.start(5);
  }

  std::vector<Seen> seen;

 private:
  QTimer timer_;
};

// Drops `paths` on `target` as the window system would.
inline void Drop(QWidget* target, const QStringList& paths, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QMimeData data;
  QList<QUrl> urls;
  for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
  data.setUrls(urls);
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, modifiers);
  QApplication::sendEvent(target, &enter);
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, modifiers);
  QApplication::sendEvent(target, &drop);
}

inline void Wheel(QWidget* widget, QPointF at, int notches) {
  QWheelEvent wheel(at, widget->mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget, &wheel);
}

// A main window on an empty settings store whose working directory is a
// fresh scratch folder.
class MainWindowTest : public ::testing::Test {
 protected:
  static QSettings Store() { return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Korvend"); }
  static QString StoredSetting(const char* key) { return Store().value(QStringLiteral("Tavilo/") + key).toString(); }
  static void StoreSetting(const char* key, const QString& v) { Store().setValue(QStringLiteral("Tavilo/") + key, v); }
  static QDir DirOf(const TempDir& dir) { return QDir(QString::fromStdString(dir.Path().string())); }

  void SetUp() override {
    Store().clear();
    previousDirectory_ = QDir::currentPath();
    QDir::setCurrent(QString::fromStdString(dir.Path().string()));
  }

  void TearDown() override {
    window.reset();
    QDir::setCurrent(previousDirectory_);
    Store().clear();
  }

  // With `size` empty the window keeps the size it chose itself.
  PEFForm& Start(QSize size = QSize(1200, 860)) {
    window = std::make_unique<PEFForm>();
    if (!size.isEmpty()) window->resize(size);
    window->show();
    QApplication::processEvents();
    return *window;
  }

  // Starts with "wing.xml" open: one set "clean" with `polars` polars.
  PEFForm& StartWith(int polars) {
    WritePolarFile(dir, "wing.xml", "Wing", polars);
    PEFForm& form = Start();
    form.Document().OpenFile(dir.File("wing.xml"));
    return form;
  }

  // Closes the window as the user would, which saves the settings.
  void Exit() {
    window->close();
    window.reset();
  }

  template <typename T = QWidget>
  T* Find(const char* name) {
    T* found = window->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  QAction* Action(const char* name) { return Find<QAction>(name); }

  QListWidget* FileList() { return Find<QListWidget>("Datei1"); }

  QTreeWidgetItem* Node(const char* key) {
    for (QTreeWidgetItemIterator it(Find<QTreeWidget>("TreeView1")); *it != nullptr; ++it)
      if ((*it)->data(0, Qt::UserRole).toString() == QLatin1String(key)) return *it;
    ADD_FAILURE() << "no node " << key;
    return nullptr;
  }

  // Makes tree node `key` the selected one without a click's toggling.
  void SelectNode(const char* key) { Find<QTreeWidget>("TreeView1")->setCurrentItem(Node(key)); }

  // The active window gets the keys, and its shortcuts count.
  static void Activate(QWidget* window) {
    window->activateWindow();
    QApplication::setActiveWindow(window);
  }

  // A key press as the window system sends it: to the focused widget of
  // `window`, made the active window first.
  static void PressKeys(QWidget* window, const QKeySequence& keys) {
    Activate(window);
    QWidget* target = window->focusWidget() != nullptr ? window->focusWidget() : window;
    QTest::keySequence(target, keys);
    QApplication::processEvents();
  }

  void Highlight(QListWidget* list, const QString& text) {
    const QList<QListWidgetItem*> items = list->findItems(text, Qt::MatchExactly);
    ASSERT_EQ(items.size(), 1) << text.toStdString();
    list->setCurrentItem(items.first());
  }

  TempDir dir;
  std::unique_ptr<PEFForm> window;

 private:
  QString previousDirectory_;
};

}  // namespace tavilo::testing
