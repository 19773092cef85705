#include "recent_files.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

#include "base/number_text.h"
#include "qt_user_interface.h"
#include "strings/string_table.h"

namespace tavilo {

RecentFiles::RecentFiles(QMenu* file, QAction* before, QtUserInterface& ui, Opener open)
    : QObject(file), menu_(new QMenu(file)), ui_(ui), open_(std::move(open)) {
  menu_->setObjectName("mnuFileRecent");
  file->insertMenu(before, menu_);
  Rebuild();
}

void RecentFiles::SetFiles(const QStringList& files) {
  files_ = files.mid(0, kMaxFiles);
  Rebuild();
}

void RecentFiles::Add(const QString& path) {
  const QString absolute = QFileInfo(path).absoluteFilePath();
  files_.removeAll(absolute);
  files_.prepend(absolute);
  SetFiles(files_);
}

void RecentFiles::Choose(int index) {
  if (index < 0 || index >= files_.size()) return;
  const QString path = files_[index];
  if (QFileInfo::exists(path)) {
    open_(path);
    return;
  }
  files_.removeAt(index);
  Rebuild();
  const Language language = ui_.Language();
  ui_.ShowMessage(FormatResString(Text::RecentFileGone, language, {QDir::toNativeSeparators(path).toStdString()}),
                  GetResString(Text::ProgramName, language), MessageIcon::Warning);
}

void RecentFiles::Rebuild() {
  menu_->clear();
  for (int i = 0; i < files_.size(); ++i) {
    // "&1 /data/wing.xml": the digit is the entry's key.
    const QString number = QString::fromStdString(FormatNumber(i + 1, "0"));
    QString shown = QDir::toNativeSeparators(files_[i]);
    QAction* entry = menu_->addAction("&" + number + " " + shown.replace("&", "&&"));
    entry->setObjectName("mnuFileRecent" + number);
    connect(entry, &QAction::triggered, this, [this, i] { Choose(i); });
  }
  menu_->setEnabled(!files_.isEmpty());
}

}  // namespace tavilo
