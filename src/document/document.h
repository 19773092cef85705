#pragma once
// The one document, the current airfoil, and every change made to it. Each
// change of content is a step that can be undone and done again; ticking
// is view state and no step. Each doing or undoing sends one notification
// naming what changed, to which the window's tree, graphs, menus, title,
// read-outs and points tables subscribe once.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "document/command.h"
#include "document/history.h"
#include "tree/structure_tree.h"
#include "ui/user_interface.h"

namespace tavilo {

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

  // The history keeps at most `maxSteps` steps holding at most `maxBytes`.
  explicit Document(size_t maxSteps = History::kMaxSteps, size_t maxBytes = History::kMaxBytes);

  const Airfoil& Current() const { return *current_; }
  const AirfoilPtr& CurrentPtr() const { return current_; }
  // The file whose opening made the document what it is, which the title
  // names; "" at first and once that opening is undone. An import keeps it.
  const std::string& FileName() const { return fileName_; }
  const History& Steps() const { return history_; }

  // Every change reaches `listener`, in the order of subscription.
  void Subscribe(Listener listener) { listeners_.push_back(std::move(listener)); }

  // Runs `action` as a command of `kind` and notifies; one that changed
  // something becomes the newest step of the history (a Tick never does).
  // `subject` is the key of the node it acts on, for the step's name;
  // `pointsOf` the polar whose points it changes, if any. When the action
  // raises, what it changed before that stays (as the formats leave a
  // partly read file) as a step, is notified all the same, and the error
  // goes on to the caller.
  CommandPtr Execute(EditKind kind, const Action& action, std::string subject = {}, PolarPtr pointsOf = {});

  // Puts the document back as it was before the newest step done / after
  // the oldest step undone, and notifies; null when there is none.
  CommandPtr Undo();
  CommandPtr Redo();

  // The edits. Each runs one command and returns it.
  // Replaces the airfoil with the file at `path` (LoadFile). A file that
  // yields no polar with a point leaves the document as it was, after its
  // message: the command changed nothing and is no step.
  CommandPtr Open(const std::string& path, UserInterface& ui);
  // Deletes every set ("NEW"); the name stays.
  CommandPtr New();
  // File/Import: the sets of each chosen file are added, file by file, as
  // one step; null on cancel. A file that yields no polar with a point is
  // passed over after its message (an import that adds nothing is no
  // step); a file whose reading raises ends it there, the files before it
  // imported.
  CommandPtr Import(UserInterface& ui);
  // The same for files given, such as files dropped on the window.
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
  // Adds the sets of an XFOIL run's airfoil (RunAirfoil) as one step, as an
  // import does; unchanged when it holds no polar.
  CommandPtr AddXfoilRun(const Airfoil& run);
  // Gives `polar` of the current airfoil the points `points`, as a step of
  // `kind` (EditPoint, AddPoint, DeletePoints or PastePoints). OverflowError
  // past 32767 points, with nothing changed.
  CommandPtr SetPoints(EditKind kind, const PolarPtr& polar, std::vector<PolarPoint> points);
  // A left click on tree node `clicked` (ToggleNode): its mark and ticks,
  // notified as a Tick but kept out of the history.
  CommandPtr Toggle(std::vector<TreeNode>& nodes, size_t clicked);

 private:
  // Undo or Redo: the next command of the history, its state restored.
  CommandPtr Step(ChangeStep step);
  Command::State State(const PolarPtr& pointsOf) const;
  void Restore(const Command::State& state);
  void Notify(const CommandPtr& command, ChangeStep step);
  // Notes a file read by the command running now (recent files, its name).
  void ReadFile(const std::string& path);

  AirfoilPtr current_;
  std::string fileName_;
  History history_;
  CommandPtr running_;  // during Execute
  std::vector<Listener> listeners_;
};

}  // namespace tavilo
