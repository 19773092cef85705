#include "document/document.h"

#include "fileio/clipboard.h"
#include "fileio/load.h"
#include "fileio/transfer.h"
#include "tools/envelope.h"

namespace tavilo {

Document::Document(size_t maxSteps, size_t maxBytes)
    : current_(std::make_shared<Airfoil>()), history_(maxSteps, maxBytes) {}

Command::State Document::State(const PolarPtr& pointsOf) const {
  Command::State state{current_, TakeSnapshot(*current_), fileName_, {}};
  if (pointsOf) state.points.push_back({pointsOf, {pointsOf->Points().begin(), pointsOf->Points().end()}});
  return state;
}

void Document::Restore(const Command::State& state) {
  current_ = state.airfoil;
  RestoreSnapshot(*current_, state.shape);
  fileName_ = state.fileName;
  for (const Command::PointsState& points : state.points) points.polar->SetPoints(points.points);
}

void Document::Notify(const CommandPtr& command, ChangeStep step) {
  const DocumentChange change{command, step};
  for (const Listener& listener : listeners_) listener(change);
}

void Document::ReadFile(const std::string& path) {
  if (running_) running_->files_.push_back(path);
}

CommandPtr Document::Execute(EditKind kind, const Action& action, std::string subject, PolarPtr pointsOf) {
  auto command = std::make_shared<Command>();
  command->kind_ = kind;
  command->subject_ = std::move(subject);
  command->before_ = State(pointsOf);
  auto finish = [&] {
    running_.reset();
    command->after_ = State(pointsOf);
    if (!command->Changed()) return false;
    if (kind != EditKind::Tick) history_.Push(command);
    return true;
  };
  running_ = command;
  try {
    action(current_);
  } catch (...) {
    // The views must show what the failed action left behind.
    if (finish()) Notify(command, ChangeStep::Do);
    throw;
  }
  finish();
  Notify(command, ChangeStep::Do);
  return command;
}

CommandPtr Document::Undo() { return Step(ChangeStep::Undo); }

CommandPtr Document::Redo() { return Step(ChangeStep::Redo); }

CommandPtr Document::Step(ChangeStep step) {
  const bool undo = step == ChangeStep::Undo;
  CommandPtr command = undo ? history_.NextUndo() : history_.NextRedo();
  if (!command) return nullptr;
  undo ? history_.StepBack() : history_.StepForward();
  Restore(undo ? command->before_ : command->after_);
  Notify(command, step);
  return command;
}

CommandPtr Document::Open(const std::string& path, UserInterface& ui) {
  return Execute(EditKind::Open, [&](AirfoilPtr& airfoil) {
    AirfoilPtr loaded = LoadFile(path, ui);
    if (!loaded) return;
    airfoil = std::move(loaded);
    fileName_ = path;
    ReadFile(path);
  });
}

CommandPtr Document::New() {
  return Execute(EditKind::New, [](AirfoilPtr& airfoil) {
    const int count = airfoil->ConfigCount();
    for (int i = 0; i < count; ++i) airfoil->DeleteConfiguration(1);
  });
}

CommandPtr Document::Import(UserInterface& ui) { return ImportFiles(ChooseImportFiles(ui), ui); }

CommandPtr Document::ImportFiles(const std::vector<std::string>& paths, UserInterface& ui) {
  if (paths.empty()) return nullptr;
  return Execute(EditKind::Import, [&](AirfoilPtr& airfoil) {
    for (const std::string& path : paths) {
      // A file with nothing to add has said so; the others still come in.
      if (AirfoilPtr loaded = LoadFile(path, ui)) {
        ImportInto(*airfoil, *loaded);
        ReadFile(path);
      }
    }
  });
}

CommandPtr Document::Paste(int setIndex, UserInterface& ui) {
  return Execute(EditKind::Paste, [&](AirfoilPtr& airfoil) {
    ConfigurationPtr set = airfoil->Configuration(setIndex);
    if (!set) return;
    if (PolarPtr polar = PolarFromClipboard(ui)) set->AddPolar(polar);
  });
}

CommandPtr Document::Delete(std::string_view key) {
  return Execute(
      EditKind::Delete, [&](AirfoilPtr& airfoil) { DeleteNode(*airfoil, key); }, std::string(key));
}

CommandPtr Document::RenameAirfoil(const std::string& name) {
  return Execute(
      EditKind::Rename,
      [&](AirfoilPtr& airfoil) {
        if (!name.empty()) airfoil->Name = name;
      },
      "r");
}

CommandPtr Document::RenameSet(int setIndex, const std::string& name) {
  return Execute(
      EditKind::Rename,
      [&](AirfoilPtr& airfoil) {
        ConfigurationPtr set = airfoil->Configuration(setIndex);
        if (set && !name.empty()) set->Name = name;
      },
      NodeKey(setIndex));
}

CommandPtr Document::SetPolarProperties(int setIndex, int polarIndex, const PolarProperties& properties) {
  return Execute(
      EditKind::PolarProperties,
      [&](AirfoilPtr& airfoil) {
        ConfigurationPtr set = airfoil->Configuration(setIndex);
        if (PolarPtr polar = set ? set->Polar(polarIndex) : nullptr) ApplyProperties(*polar, properties);
      },
      NodeKey(setIndex, polarIndex));
}

CommandPtr Document::Sort(bool byMach) {
  return Execute(byMach ? EditKind::SortMach : EditKind::SortReynolds,
                 [&](AirfoilPtr& airfoil) { SortAllSets(*airfoil, byMach); });
}

CommandPtr Document::Envelope(const std::string& path) {
  ConfigurationPtr set;
  CommandPtr command = Execute(EditKind::Envelope, [&](AirfoilPtr& airfoil) { set = AddEnvelopeSet(*airfoil); });
  // Written once the user sees the new set, so that a failed write cannot
  // leave the tree behind the document.
  if (set) WriteSetToPEF(current_->Name, set, path);
  return command;
}

CommandPtr Document::AddXfoilRun(const Airfoil& run) {
  return Execute(EditKind::XfoilRun, [&](AirfoilPtr& airfoil) {
    if (run.ConfigCount() > 0 && run.Configuration(1)->PolarCount() > 0) ImportInto(*airfoil, run);
  });
}

CommandPtr Document::SetPoints(EditKind kind, const PolarPtr& polar, std::vector<PolarPoint> points) {
  return Execute(
      kind, [&](AirfoilPtr&) { polar->SetPoints(std::move(points)); }, KeyOfPolar(*current_, polar.get()), polar);
}

CommandPtr Document::Toggle(std::vector<TreeNode>& nodes, size_t clicked) {
  return Execute(EditKind::Tick, [&](AirfoilPtr& airfoil) { ToggleNode(*airfoil, nodes, clicked); });
}

}  // namespace tavilo
