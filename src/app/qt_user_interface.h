#pragma once
// The desktop's side of UserInterface: message boxes, file dialogs, the
// airfoil choice, the status bar, the title, the airfoil name label, the
// busy pointer and the system clipboard.

#include <QString>
#include <functional>

#include "ui/user_interface.h"

class QLabel;
class QMainWindow;
class QStatusBar;
class QWidget;

namespace tavilo {

// A "|"-joined list of description and pattern pairs as a Qt dialog filter:
// "Xfoil (*.pol)|*.pol|MSES|polar.*" gives "Xfoil (*.pol);;MSES (polar.*)".
// Several patterns of one entry, joined by ";", become blank-separated.
QString QtFileFilter(const std::string& pairs);

// The extension a Qt name filter stands for: "xml" for "Polar Exchange
// File (*.xml)", none for "Mses Polar File (polar.*)".
QString DefaultSuffixOf(const QString& nameFilter);

class QtUserInterface : public UserInterface {
 public:
  // Answers the file dialog in place of the platform's; tests use it.
  using FileChooser = std::function<std::string(const FileDialogRequest&, const QString& qtFilter)>;
  // Answers a dialog of several files; without it, a FileChooser answers
  // with one file.
  using FilesChooser = std::function<std::vector<std::string>(const FileDialogRequest&, const QString& qtFilter)>;
  // Answers the input box in place of the user; tests use it.
  using InputAnswerer = std::function<QString(const QString& prompt, const QString& title, const QString& value)>;

  QtUserInterface(QMainWindow* window, QStatusBar* status, QLabel* airfoilName);

  void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon) override;
  // The same box in front of `owner`, a window of its own beside the main
  // one (a points table), which it would otherwise open behind.
  void ShowMessageIn(QWidget* owner, const std::string& text, const std::string& title, MessageIcon icon);
  std::string ChooseFile(const FileDialogRequest& request) override;
  // Qt's open dialog with several files to pick.
  std::vector<std::string> ChooseFiles(const FileDialogRequest& request) override;
  int ChooseAirfoil(const std::vector<std::string>& entries) override;
  void SetStatusText(const std::string& text) override;
  // The window's own: the core reads files but names none in the title.
  void SetWindowTitle(const std::string& title);
  void SetAirfoilName(const std::string& name);
  void SetBusy(bool busy) override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;

  // Shows `text` in the status bar for `milliseconds`, then "Ready." again,
  // unless the program has shown another text meanwhile.
  void FlashStatusText(const std::string& text, int milliseconds = 5000);

  // An input box with `prompt`, `title` and the default text `value`: the
  // text entered, or "" when the user cancelled.
  QString InputBox(const QString& prompt, const QString& title, const QString& value);

  void SetFileChooser(FileChooser chooser) { fileChooser_ = std::move(chooser); }
  void SetFilesChooser(FilesChooser chooser) { filesChooser_ = std::move(chooser); }
  void SetInputAnswerer(InputAnswerer answerer) { inputAnswerer_ = std::move(answerer); }
  // Where the file dialogs open: the directory the browser shows.
  void SetDialogDirectory(std::function<QString()> directory) { dialogDirectory_ = std::move(directory); }

 private:
  QMainWindow* window_;
  QStatusBar* status_;
  QLabel* airfoilName_;
  // The platform's file dialog, for one file or several.
  std::vector<std::string> RunFileDialog(const FileDialogRequest& request, bool several);

  FileChooser fileChooser_;
  FilesChooser filesChooser_;
  InputAnswerer inputAnswerer_;
  std::function<QString()> dialogDirectory_;
  int busyDepth_ = 0;
};

}  // namespace tavilo
