#pragma once
// The file browser at the left of the main window: the drive list
// (Laufwerk1, the system's roots and mount points), the directory list
// (Verzeichnis1, the current directory's ancestors and sub-directories) and
// the file list (Datei1, the polar files of the directory, kFileListPattern).

#include <QIcon>
#include <QObject>
#include <QString>

class QComboBox;
class QFileSystemWatcher;
class QListWidget;
class QListWidgetItem;
class QWidget;

namespace tavilo {

class FileBrowser : public QObject {
  Q_OBJECT

 public:
  // Creates the three lists as children of `parent`.
  explicit FileBrowser(QWidget* parent);

  QComboBox* Drives() const { return drives_; }
  QListWidget* Directories() const { return directories_; }
  QListWidget* Files() const { return files_; }

  // Makes `path` the current directory, selects its drive and lists its
  // files. False, with nothing changed, when it is not an existing directory.
  bool SetPath(const QString& path);
  // The current directory, absolute, in the platform's spelling.
  QString Path() const;
  // The full path of the highlighted file, "" when none.
  QString SelectedFile() const;
  // Lists the drives and the current directory afresh.
  void Refresh();

 signals:
  // A file was opened by double-click or Enter in the file list.
  void FileOpened();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QIcon DriveIcon() const;
  void FillDrives();
  void SelectDrive();
  void FillDirectories();
  void FillFiles();
  void EnterDirectory(QListWidgetItem* item);

  QComboBox* drives_;
  QListWidget* directories_;
  QListWidget* files_;
  QString path_;
  QFileSystemWatcher* watcher_;
};

}  // namespace tavilo
