#pragma once
// One change of the document as it was done: the states before and after,
// so that it can be undone and done again, and what the Edit menu calls it.

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "model/airfoil.h"
#include "model/snapshot.h"
#include "strings/language.h"

namespace tavilo {

enum class EditKind {
  Open,
  New,
  Import,
  Paste,
  Delete,
  Rename,
  PolarProperties,
  SortReynolds,
  SortMach,
  Envelope,
  Tick,
  EditPoint,
  AddPoint,
  DeletePoints,
  PastePoints,
  XfoilRun
};

// What a change touched; a view redraws what it shows of it.
enum ChangeFlag : unsigned {
  kTicksChanged = 1,    // which polars are ticked: tree marks and graphs
  kContentChanged = 2,  // sets, polars or names: the tree is rebuilt, the menus follow
  kFileChanged = 4,     // another file replaced the document: the title, the read-outs
  kPointsChanged = 8,   // the points of one polar: the graphs and its points table
};
unsigned ChangesOf(EditKind kind);

class Command {
 public:
  EditKind Kind() const { return kind_; }
  unsigned Changes() const { return ChangesOf(kind_); }
  // False when doing it left the document as it was (nothing to paste,
  // an empty name).
  bool Changed() const { return !(before_ == after_); }
  // The tree key of the node it acted on when it was done ("c 1|p 2"),
  // "" where it names none.
  const std::string& Subject() const { return subject_; }
  // The files it read, in the order read (Open, Import).
  const std::vector<std::string>& Files() const { return files_; }
  // The memory that keeping it for undo holds: its two states, and the
  // points of every polar that only its earlier state still reaches (a
  // deleted polar, the airfoil an Open replaced). Bytes, estimated.
  size_t Bytes() const;

 private:
  friend class Document;
  // The points of the one polar a points edit changes; every other edit
  // leaves points alone, so the snapshots share them.
  struct PointsState {
    PolarPtr polar;
    std::vector<PolarPoint> points;
    bool operator==(const PointsState&) const = default;
  };
  struct State {
    AirfoilPtr airfoil;
    AirfoilSnapshot shape;
    std::string fileName;
    std::vector<PointsState> points;
    bool operator==(const State&) const = default;
  };
  EditKind kind_ = EditKind::New;
  std::string subject_;
  std::vector<std::string> files_;
  State before_;
  State after_;
};
using CommandPtr = std::shared_ptr<Command>;

// The step's name in `language` as the Edit menu shows it after "Undo" or
// "Redo": "Delete Polar 2", "Import wing.xml", "Sort on Mach Number".
std::string StepName(const Command& command, Language language);

}  // namespace tavilo
