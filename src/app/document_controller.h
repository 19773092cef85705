#pragma once
// The window's actions on the one document: each runs the document's edit
// inside the error guard. The window learns of every change through the
// document's notification, not from here.

#include <string>
#include <vector>

#include "document/document.h"
#include "qt_user_interface.h"

namespace tavilo {

class DocumentController {
 public:
  explicit DocumentController(QtUserInterface& ui) : ui_(ui) {}

  Document& Edits() { return document_; }
  const Airfoil& Current() const { return document_.Current(); }
  // Past the document, for tests that set up odd content; the window itself
  // changes the airfoil only through Edits().
  Airfoil& Current() { return *document_.CurrentPtr(); }

  // Replaces the document with the file at `path`; one that yields no
  // polar with a point leaves it as it was, after its message.
  void OpenFile(const std::string& path);
  // Deletes every set ("NEW").
  void NewAirfoil();
  void Import();
  // Imports each of `paths` in turn (files dropped on the window).
  void ImportFiles(const std::vector<std::string>& paths);
  void Export();
  void BatchConvert();
  // Adds the Cd-min envelope of the selected polars as a new set and writes
  // it to "Envelope.pef" in the working directory, whose full path the
  // status bar then shows for a while.
  void Envelope();
  void SortReynolds();
  void SortMach();
  // The Edit menu's Undo and Redo: the newest step done or undone.
  void Undo();
  void Redo();

  // Runs `edit(document)` inside the error guard; false when it failed.
  template <typename Edit>
  bool Run(Edit&& edit);

 private:
  QtUserInterface& ui_;
  Document document_;
};

}  // namespace tavilo

#include "error_guard.h"

namespace tavilo {

template <typename Edit>
bool DocumentController::Run(Edit&& edit) {
  return RunGuarded(ui_, [&] { edit(document_); });
}

}  // namespace tavilo
