#pragma once
// The one document, the current airfoil, and every change made to it. Each
// change is a command that can be undone and done again; each doing or
// undoing sends one notification naming what changed, to which the window's
// tree, graphs, menus, title and read-outs subscribe once.

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/airfoil.h"
#include "model/snapshot.h"
#include "tree/structure_tree.h"
#include "ui/user_interface.h"

namespace tavilo {

enum class EditKind {
  Open, New, Import, Paste, Delete, Rename, PolarProperties, SortReynolds, SortMach, Envelope, Tick
};

// What a change touched; a view redraws what it shows of it.
enum ChangeFlag : unsigned {
  kTicksChanged = 1,    // which polars are ticked: tree marks and graphs
  kContentChanged = 2,  // sets, polars or names: the tree is rebuilt, the menus follow
  kFileChanged = 4,     // another file came in: the title and the airfoil name label
};
unsigned ChangesOf(EditKind kind);

// One change of the document, as it was done: the states before and after.
class Command {
 public:
  EditKind Kind() const { return kind_; }
  unsigned Changes() const { return ChangesOf(kind_); }
  // False when doing it left the document as it was (nothing to paste,
  // an empty name).
  bool Changed() const { return !(before_ == after_); }

 private:
  friend class Document;
  struct State {
    AirfoilPtr airfoil;
    AirfoilSnapshot shape;
    std::string fileName;
    bool operator==(const State&) const = default;
  };
  EditKind kind_ = EditKind::New;
  State before_;
  State after_;
};
using CommandPtr = std::shared_ptr<Command>;

// How a command reached the document: done by the user for the first time,
// undone, or done again.
enum class ChangeStep { Do, Undo, Redo };

struct DocumentChange {
  const CommandPtr& command;
  ChangeStep step;
  unsigned Changes() const { return command->Changes(); }
};

class Document {
 public:
  using Listener = std::function<void(const DocumentChange& change)>;
  // A change run as a command: it may edit the airfoil in place or replace it.
  using Action = std::function<void(AirfoilPtr& airfoil)>;

  Document();

  const Airfoil& Current() const { return *current_; }
  const AirfoilPtr& CurrentPtr() const { return current_; }
  // The file last opened or imported, which the title names; "" at first.
  const std::string& FileName() const { return fileName_; }

  // Every change reaches `listener`, in the order of subscription.
  void Subscribe(Listener listener) { listeners_.push_back(std::move(listener)); }

  // Runs `action` as a command of `kind` and notifies. When the action
  // raises, what it changed before that stays (as the formats leave a
  // partly read file), is notified all the same, and the error goes on to
  // the caller.
  CommandPtr Execute(EditKind kind, const Action& action);
  // Puts the document back as it was before `command` / after it, and
  // notifies. Meant for the latest command done, or the latest undone.
  void Undo(const CommandPtr& command);
  void Redo(const CommandPtr& command);

  // The edits. Each runs one command and returns it.
  // Replaces the airfoil with the file at `path` (LoadFile).
  CommandPtr Open(const std::string& path, UserInterface& ui);
  // Deletes every set ("NEW"); the name stays.
  CommandPtr New();
  // File/Import: the sets of a chosen file are added; null on cancel.
  CommandPtr Import(UserInterface& ui);
  // The sets of each file in turn, as one change (files dropped on the
  // window); a file that cannot be read shows its messages and adds nothing.
  CommandPtr ImportFiles(const std::vector<std::string>& paths, UserInterface& ui);
  // Adds the clipboard's polar to set `setIndex` (1-based); unchanged when
  // the clipboard holds no polar with a point.
  CommandPtr Paste(int setIndex, UserInterface& ui);
  // Deletes what tree node `key` stands for (DeleteNode).
  CommandPtr Delete(std::string_view key);
  // Renames the airfoil, or set `setIndex`; an empty name changes nothing.
  CommandPtr RenameAirfoil(const std::string& name);
  CommandPtr RenameSet(int setIndex, const std::string& name);
  // Takes the polar properties dialog's texts into a polar (ApplyProperties).
  CommandPtr SetPolarProperties(int setIndex, int polarIndex, const PolarProperties& properties);
  // Sorts the polars of every set by Reynolds or by Mach number.
  CommandPtr Sort(bool byMach);
  // Adds the Cd-min envelope of the ticked polars as a new set "Envelope",
  // shows it, and then writes that set alone to `path`; unchanged when
  // nothing is ticked. A failed write raises with the set added and shown.
  CommandPtr Envelope(const std::string& path);
  // A left click on tree node `clicked` (ToggleNode): its mark and ticks.
  CommandPtr Toggle(std::vector<TreeNode>& nodes, size_t clicked);

 private:
  Command::State State() const;
  void Restore(const Command::State& state);
  void Notify(const CommandPtr& command, ChangeStep step);

  AirfoilPtr current_;
  std::string fileName_;
  std::vector<Listener> listeners_;
};

}  // namespace tavilo
