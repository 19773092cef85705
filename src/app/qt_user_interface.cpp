#include "qt_user_interface.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>
#include <QStringList>
#include <QTimer>

#include "airfoil_select_dialog.h"

namespace tavilo {

namespace {

QString FromUtf8(const std::string& text) { return QString::fromStdString(text); }

QMessageBox::Icon BoxIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information: return QMessageBox::Information;
    case MessageIcon::Warning: return QMessageBox::Warning;
    case MessageIcon::Critical: return QMessageBox::Critical;
    case MessageIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

QString QtFileFilter(const std::string& pairs) {
  const QStringList parts = FromUtf8(pairs).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString description = parts[i].trimmed();
    const QString patterns = parts[i + 1].split(';', Qt::SkipEmptyParts).join(' ');
    // Qt reads the patterns from the last parentheses; descriptions that
    // already show them are taken as they are to avoid "(*.xml) (*.xml)".
    if (description.endsWith("(" + patterns + ")")) {
      filters << description;
    } else {
      filters << description + " (" + patterns + ")";
    }
  }
  return filters.join(";;");
}

QtUserInterface::QtUserInterface(QMainWindow* window, QStatusBar* status, QLabel* airfoilName)
    : window_(window), status_(status), airfoilName_(airfoilName) {}

void QtUserInterface::ShowMessage(const std::string& text, const std::string& title, MessageIcon icon) {
  ShowMessageIn(window_, text, title, icon);
}

void QtUserInterface::ShowMessageIn(QWidget* owner, const std::string& text, const std::string& title,
                                    MessageIcon icon) {
  // A message must not appear under a busy pointer.
  const bool wasBusy = busyDepth_ > 0;
  if (wasBusy) QGuiApplication::restoreOverrideCursor();
  QMessageBox box(BoxIcon(icon), FromUtf8(title), FromUtf8(text), QMessageBox::Ok, owner);
  box.setObjectName("MessageBox");
  box.exec();
  if (wasBusy) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

QString DefaultSuffixOf(const QString& nameFilter) {
  const qsizetype open = nameFilter.lastIndexOf('(');
  const QString patterns = nameFilter.mid(open + 1).chopped(nameFilter.endsWith(')') ? 1 : 0);
  const QString first = patterns.section(' ', 0, 0);
  const QString suffix = first.startsWith("*.") ? first.mid(2) : QString();
  return suffix.contains('*') || suffix.contains('?') ? QString() : suffix;
}

std::string QtUserInterface::ChooseFile(const FileDialogRequest& request) {
  if (fileChooser_) return fileChooser_(request, QtFileFilter(request.filter));
  const std::vector<std::string> files = RunFileDialog(request, false);
  return files.empty() ? std::string() : files.front();
}

std::vector<std::string> QtUserInterface::ChooseFiles(const FileDialogRequest& request) {
  if (filesChooser_) return filesChooser_(request, QtFileFilter(request.filter));
  if (fileChooser_) return UserInterface::ChooseFiles(request);
  return RunFileDialog(request, true);
}

std::vector<std::string> QtUserInterface::RunFileDialog(const FileDialogRequest& request, bool several) {
  const QString filter = QtFileFilter(request.filter);
  QFileDialog dialog(window_, FromUtf8(request.title), dialogDirectory_ ? dialogDirectory_() : QString(), filter);
  dialog.setObjectName("CMDialog");
  // Qt's own dialog speaks the program's language; a native one would not.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  if (request.kind == FileDialogKind::Open) {
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
  } else {
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.promptOverwrite);
    // A name typed without an extension takes the chosen file type's, so
    // that "wing" with the PEF type selected is written as "wing.pef".
    auto follow = [&dialog](const QString& nameFilter) { dialog.setDefaultSuffix(DefaultSuffixOf(nameFilter)); };
    follow(dialog.selectedNameFilter());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
  }
  std::vector<std::string> files;
  if (dialog.exec() != QDialog::Accepted) return files;
  for (const QString& file : dialog.selectedFiles()) files.push_back(file.toStdString());
  return files;
}

QString QtUserInterface::InputBox(const QString& prompt, const QString& title, const QString& value) {
  if (inputAnswerer_) return inputAnswerer_(prompt, title, value);
  QInputDialog box(window_);
  box.setObjectName("InputBox");
  box.setWindowTitle(title);
  box.setLabelText(prompt);
  box.setTextValue(value);
  // The prompts are whole sentences; wrapped they keep the box narrow.
  if (auto* label = box.findChild<QLabel*>()) label->setWordWrap(true);
  return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

int QtUserInterface::ChooseAirfoil(const std::vector<std::string>& entries) {
  AirfoilSelectDialog dialog(window_);
  QStringList names;
  for (const std::string& entry : entries) names << FromUtf8(entry);
  return dialog.Choose(names, Language());
}

void QtUserInterface::SetStatusText(const std::string& text) { status_->showMessage(FromUtf8(text)); }

void QtUserInterface::FlashStatusText(const std::string& text, int milliseconds) {
  const QString shown = FromUtf8(text);
  status_->showMessage(shown);
  QTimer::singleShot(milliseconds, status_, [this, shown] {
    if (status_->currentMessage() == shown) SetStatusText(GetResString(Text::Ready, Language()));
  });
}

void QtUserInterface::SetWindowTitle(const std::string& title) { window_->setWindowTitle(FromUtf8(title)); }

void QtUserInterface::SetAirfoilName(const std::string& name) { airfoilName_->setText(FromUtf8(name)); }

void QtUserInterface::SetBusy(bool busy) {
  if (busy) {
    ++busyDepth_;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    // Lets the status text and the pointer show before a long read; user
    // input waits so that no second action starts in the middle.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  } else if (busyDepth_ > 0) {
    --busyDepth_;
    QGuiApplication::restoreOverrideCursor();
  }
}

std::string QtUserInterface::ClipboardText() { return QGuiApplication::clipboard()->text().toStdString(); }

void QtUserInterface::SetClipboardText(const std::string& text) {
  QClipboard* clipboard = QGuiApplication::clipboard();
  clipboard->clear();
  clipboard->setText(FromUtf8(text));
}

}  // namespace tavilo
