#pragma once
// File > Recent Files: the last eight files opened or imported, newest
// first. Choosing one opens it as a double click in the file list does; one
// that is gone leaves the list with a message. The list is kept with the
// other settings.

#include <QObject>
#include <QStringList>
#include <functional>

class QAction;
class QMenu;

namespace tavilo {

class QtUserInterface;

class RecentFiles : public QObject {
  Q_OBJECT

 public:
  static constexpr int kMaxFiles = 8;
  using Opener = std::function<void(const QString& path)>;

  // Puts the submenu mnuFileRecent into `file` before `before`; `open`
  // opens a chosen file.
  RecentFiles(QMenu* file, QAction* before, QtUserInterface& ui, Opener open);

  const QStringList& Files() const { return files_; }
  // The list as stored, at most kMaxFiles of it.
  void SetFiles(const QStringList& files);
  // Puts `path` first, once.
  void Add(const QString& path);
  // Opens entry `index` (0-based), or drops it when its file is gone.
  void Choose(int index);

 private:
  void Rebuild();

  QMenu* menu_;
  QtUserInterface& ui_;
  Opener open_;
  QStringList files_;
};

}  // namespace tavilo
