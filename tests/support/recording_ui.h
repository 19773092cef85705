#pragma once
// A user interface that records what the core shows and answers questions
// from prepared replies.

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/user_interface.h"

namespace tavilo::testing {

struct ShownMessage {
  std::string text;
  std::string title;
  MessageIcon icon;
};

class RecordingUserInterface : public UserInterface {
 public:
  void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon) override {
    messages.push_back({text, title, icon});
  }
  std::string ChooseFile(const FileDialogRequest& request) override {
    fileRequests.push_back(request);
    return fileReplies.empty() ? std::string() : Next(fileReplies);
  }
  // Several files at once from `fileListReplies`, else ChooseFile's one.
  std::vector<std::string> ChooseFiles(const FileDialogRequest& request) override {
    if (fileListReplies.empty()) return UserInterface::ChooseFiles(request);
    fileRequests.push_back(request);
    return Next(fileListReplies);
  }
  int ChooseAirfoil(const std::vector<std::string>& entries) override {
    airfoilChoices.push_back(entries);
    return airfoilReply;
  }
  void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }
  void SetBusy(bool busy) override { busyChanges.push_back(busy); }
  std::string ClipboardText() override { return clipboard; }
  void SetClipboardText(const std::string& text) override { clipboard = text; }
  // The airfoil choice of a drag file, answered and recorded here.
  std::function<int(const std::vector<std::string>&)> Chooser() {
    return [this](const std::vector<std::string>& entries) { return ChooseAirfoil(entries); };
  }

  std::vector<ShownMessage> messages;
  std::vector<FileDialogRequest> fileRequests;
  std::deque<std::string> fileReplies;
  std::deque<std::vector<std::string>> fileListReplies;
  std::vector<std::vector<std::string>> airfoilChoices;
  int airfoilReply = 0;
  std::vector<std::string> statusTexts;
  std::vector<bool> busyChanges;
  std::string clipboard;

 private:
  template <class Reply>
  static Reply Next(std::deque<Reply>& replies) {
    Reply reply = std::move(replies.front());
    replies.pop_front();
    return reply;
  }
};

}  // namespace tavilo::testing
