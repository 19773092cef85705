#pragma once
// The only way the core talks to the user. The Qt application implements it
// with dialogs and widgets, the command-line converter with standard error,
// and the tests with a recording fake.

#include <string>
#include <vector>

#include "strings/string_table.h"

namespace tavilo {

enum class MessageIcon { None, Information, Warning, Critical };

enum class FileDialogKind { Open, Save };

struct FileDialogRequest {
  FileDialogKind kind = FileDialogKind::Open;
  std::string title;
  std::string filter;  // description and pattern pairs joined by "|"
  bool promptOverwrite = false;
};

class UserInterface {
 public:
  virtual ~UserInterface() = default;

  // The language of every text the core shows or asks through this
  // interface.
  tavilo::Language Language() const { return language_; }
  void SetLanguage(tavilo::Language language) { language_ = language; }

  // A message box with an OK button.
  virtual void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon) = 0;

  // The chosen full path, or "" when the user cancelled.
  virtual std::string ChooseFile(const FileDialogRequest& request) = 0;
  // An open dialog in which several files can be picked: their full paths
  // in the order given, none when the user cancelled. Unless overridden,
  // the one file of ChooseFile.
  virtual std::vector<std::string> ChooseFiles(const FileDialogRequest& request);

  // The 0-based index of the entry chosen from `entries`, -1 when none.
  virtual int ChooseAirfoil(const std::vector<std::string>& entries) = 0;

  virtual void SetStatusText(const std::string& text) = 0;

  // Shows the busy pointer while `busy` and lets pending window events run.
  virtual void SetBusy(bool busy) = 0;

  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;

 private:
  tavilo::Language language_ = tavilo::Language::English;
};

// A user interface that shows nothing and answers every question with
// "cancel" or the first choice; for batch work and tests that do not look.
class SilentUserInterface : public UserInterface {
 public:
  void ShowMessage(const std::string&, const std::string&, MessageIcon) override {}
  std::string ChooseFile(const FileDialogRequest&) override { return {}; }
  int ChooseAirfoil(const std::vector<std::string>&) override { return 0; }
  void SetStatusText(const std::string&) override {}
  void SetBusy(bool) override {}
  std::string ClipboardText() override { return clipboard_; }
  void SetClipboardText(const std::string& text) override { clipboard_ = text; }

 private:
  std::string clipboard_;
};

}  // namespace tavilo
