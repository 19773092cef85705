#pragma once
// The actions on the one document, CurrentAirfoil: opening a file from the
// list, emptying, import, export, batch conversion and sorting. Each runs
// inside the error guard and then asks the view to show the new content.

#include <string>

#include "model/airfoil.h"
#include "ui/user_interface.h"

namespace tavilo {

// What the window does after the document changed.
class DocumentView {
 public:
  virtual ~DocumentView() = default;
  virtual void UpdateTreeView() = 0;
  virtual void RefreshPlots() = 0;
  virtual void EnableItems(bool printing) = 0;
};

class DocumentController {
 public:
  DocumentController(UserInterface& ui, DocumentView& view);

  const Airfoil& Current() const { return *current_; }
  Airfoil& Current() { return *current_; }

  // Replaces the document with the file at `path` (an unknown kind of file
  // gives an empty document after its message).
  void OpenFile(const std::string& path);
  // Deletes every set ("NEW").
  void NewAirfoil();
  void Import();
  void Export();
  void BatchConvert();
  // Adds the Cd-min envelope of the selected polars as a new set and writes
  // it to "Envelope.pef" in the working directory.
  void Envelope();
  void SortReynolds();
  void SortMach();

 private:
  void ShowChanged();
  void Sort(bool byMach);

  UserInterface& ui_;
  DocumentView& view_;
  AirfoilPtr current_;
};

}  // namespace tavilo
