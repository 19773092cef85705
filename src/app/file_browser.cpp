#include "file_browser.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QKeyEvent>
#include <QListWidget>
#include <QStorageInfo>
#include <QStyle>

#include "fileio/formats_table.h"

namespace tavilo {

namespace {

constexpr int kPathRole = Qt::UserRole;

bool IsEnter(QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

FileBrowser::FileBrowser(QWidget* parent) : QObject(parent) {
  drives_ = new QComboBox(parent);
  drives_->setObjectName("Laufwerk1");
  directories_ = new QListWidget(parent);
  directories_->setObjectName("Verzeichnis1");
  files_ = new QListWidget(parent);
  files_->setObjectName("Datei1");
  for (QListWidget* list : {directories_, files_}) {
    list->setUniformItemSizes(true);
    list->setIconSize(QSize(16, 16));
    list->installEventFilter(this);
  }
  files_->setSortingEnabled(false);
  // Files written by an export, a batch run or another program appear
  // without the user having to leave and re-enter the directory.
  watcher_ = new QFileSystemWatcher(this);
  connect(watcher_, &QFileSystemWatcher::directoryChanged, this, [this](const QString& changed) {
    if (changed == path_) FillFiles();
  });

  connect(drives_, &QComboBox::activated, this, [this](int index) {
    // A drive that cannot be entered (an unmounted medium) leaves the lists
    // as they are, and the list goes back to the current directory's drive.
    if (!SetPath(drives_->itemData(index, kPathRole).toString())) SelectDrive();
  });
  connect(directories_, &QListWidget::itemDoubleClicked, this, &FileBrowser::EnterDirectory);
  connect(files_, &QListWidget::itemDoubleClicked, this, [this] { emit FileOpened(); });
  FillDrives();
}

bool FileBrowser::eventFilter(QObject* watched, QEvent* event) {
  if (IsEnter(event)) {
    if (watched == directories_) {
      EnterDirectory(directories_->currentItem());
      return true;
    }
    if (watched == files_) {
      if (files_->currentItem() != nullptr) emit FileOpened();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

bool FileBrowser::SetPath(const QString& path) {
  const QFileInfo info(path);
  if (path.isEmpty() || !info.isDir() || !info.isReadable()) return false;
  if (!path_.isEmpty()) watcher_->removePath(path_);
  path_ = QDir::cleanPath(info.absoluteFilePath());
  watcher_->addPath(path_);
  SelectDrive();
  FillDirectories();
  files_->clear();
  FillFiles();
  return true;
}

QString FileBrowser::Path() const { return QDir::toNativeSeparators(path_); }

QString FileBrowser::SelectedFile() const {
  const QListWidgetItem* item = files_->currentItem();
  if (item == nullptr || !item->isSelected()) return {};
  return QDir::toNativeSeparators(QDir(path_).filePath(item->text()));
}

void FileBrowser::Refresh() {
  FillDrives();
  if (!SetPath(path_)) SelectDrive();
}

void FileBrowser::FillDrives() {
  drives_->clear();
  QStringList roots;
  for (const QFileInfo& drive : QDir::drives()) roots << drive.absoluteFilePath();
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    if (volume.isValid() && volume.isReady() && !roots.contains(volume.rootPath())) roots << volume.rootPath();
  }
  roots.sort();
  const QIcon icon = DriveIcon();
  for (const QString& root : roots) {
    drives_->addItem(icon, QDir::toNativeSeparators(root));
    drives_->setItemData(drives_->count() - 1, root, kPathRole);
  }
}

QIcon FileBrowser::DriveIcon() const {
  return QIcon::fromTheme("drive-harddisk", drives_->style()->standardIcon(QStyle::SP_DriveHDIcon));
}

void FileBrowser::SelectDrive() {
  if (path_.isEmpty()) return;
  const QString root = QStorageInfo(path_).rootPath();
  int index = drives_->findData(root, kPathRole);
  if (index < 0 && !root.isEmpty()) {
    drives_->addItem(DriveIcon(), QDir::toNativeSeparators(root));
    index = drives_->count() - 1;
    drives_->setItemData(index, root, kPathRole);
  }
  drives_->setCurrentIndex(index);
}

void FileBrowser::FillDirectories() {
  directories_->clear();
  // Like a classic directory list: the way down from the root, each level
  // indented, then the sub-directories one level deeper.
  QStringList ancestors;
  for (QDir dir(path_);;) {
    ancestors.prepend(dir.absolutePath());
    if (!dir.cdUp()) break;
  }
  const QIcon open = QIcon::fromTheme("folder-open", directories_->style()->standardIcon(QStyle::SP_DirOpenIcon));
  const QIcon closed = QIcon::fromTheme("folder", directories_->style()->standardIcon(QStyle::SP_DirClosedIcon));
  int depth = 0;
  for (const QString& ancestor : ancestors) {
    const QString name = depth == 0 ? QDir::toNativeSeparators(ancestor) : QFileInfo(ancestor).fileName();
    auto* item = new QListWidgetItem(open, QString(depth * 2, ' ') + name, directories_);
    item->setData(kPathRole, ancestor);
    ++depth;
  }
  directories_->setCurrentRow(directories_->count() - 1);
  const QDir current(path_);
  const QStringList children = current.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
  for (const QString& child : children) {
    auto* item = new QListWidgetItem(closed, QString(depth * 2, ' ') + child, directories_);
    item->setData(kPathRole, current.filePath(child));
  }
}

void FileBrowser::FillFiles() {
  const QString highlighted = files_->currentItem() != nullptr ? files_->currentItem()->text() : QString();
  files_->clear();
  const QStringList patterns = QString::fromLatin1(kFileListPattern).split(';');
  const QDir dir(path_);
  const QStringList names = dir.entryList(patterns, QDir::Files, QDir::Name | QDir::IgnoreCase);
  files_->addItems(names);
  const QList<QListWidgetItem*> again = files_->findItems(highlighted, Qt::MatchExactly);
  if (!highlighted.isEmpty() && !again.isEmpty()) files_->setCurrentItem(again.first());
}

void FileBrowser::EnterDirectory(QListWidgetItem* item) {
  if (item == nullptr) return;
  const QString target = item->data(kPathRole).toString();
  SetPath(target);
}

}  // namespace tavilo
