#include "document/document.h"

#include "fileio/clipboard.h"
#include "fileio/load.h"
#include "fileio/transfer.h"
#include "tools/envelope.h"

namespace tavilo {

unsigned ChangesOf(EditKind kind) {
  switch (kind) {
    case EditKind::Tick:
      return kTicksChanged;
    case EditKind::Open:
    case EditKind::Import:
      return kContentChanged | kTicksChanged | kFileChanged;
    default:
      return kContentChanged | kTicksChanged;
  }
}

Document::Document() : current_(std::make_shared<Airfoil>()) {}

Command::State Document::State() const { return {current_, TakeSnapshot(*current_), fileName_}; }

void Document::Restore(const Command::State& state) {
  current_ = state.airfoil;
  RestoreSnapshot(*current_, state.shape);
  fileName_ = state.fileName;
}

void Document::Notify(const CommandPtr& command, ChangeStep step) {
  const DocumentChange change{command, step};
  for (const Listener& listener : listeners_) listener(change);
}

CommandPtr Document::Execute(EditKind kind, const Action& action) {
  auto command = std::make_shared<Command>();
  command->kind_ = kind;
  command->before_ = State();
  try {
    action(current_);
  } catch (...) {
    // The views must show what the failed action left behind.
    command->after_ = State();
    if (command->Changed()) Notify(command, ChangeStep::Do);
    throw;
  }
  command->after_ = State();
  Notify(command, ChangeStep::Do);
  return command;
}

void Document::Undo(const CommandPtr& command) {
  Restore(command->before_);
  Notify(command, ChangeStep::Undo);
}

void Document::Redo(const CommandPtr& command) {
  Restore(command->after_);
  Notify(command, ChangeStep::Redo);
}

CommandPtr Document::Open(const std::string& path, UserInterface& ui) {
  return Execute(EditKind::Open, [&](AirfoilPtr& airfoil) {
    AirfoilPtr loaded = LoadFile(path, ui);
    airfoil = std::move(loaded);
    fileName_ = path;
  });
}

CommandPtr Document::New() {
  return Execute(EditKind::New, [](AirfoilPtr& airfoil) {
    const int count = airfoil->ConfigCount();
    for (int i = 0; i < count; ++i) airfoil->DeleteConfiguration(1);
  });
}

CommandPtr Document::Import(UserInterface& ui) {
  const std::string path = ChooseImportFile(ui);
  if (path.empty()) return nullptr;
  return Execute(EditKind::Import, [&](AirfoilPtr& airfoil) {
    ImportInto(*airfoil, *LoadFile(path, ui));
    fileName_ = path;
  });
}

CommandPtr Document::ImportFiles(const std::vector<std::string>& paths, UserInterface& ui) {
  if (paths.empty()) return nullptr;
  return Execute(EditKind::Import, [&](AirfoilPtr& airfoil) {
    for (const std::string& path : paths) {
      ImportInto(*airfoil, *LoadFile(path, ui));
      fileName_ = path;
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
  return Execute(EditKind::Delete, [&](AirfoilPtr& airfoil) { DeleteNode(*airfoil, key); });
}

CommandPtr Document::RenameAirfoil(const std::string& name) {
  return Execute(EditKind::Rename, [&](AirfoilPtr& airfoil) {
    if (!name.empty()) airfoil->Name = name;
  });
}

CommandPtr Document::RenameSet(int setIndex, const std::string& name) {
  return Execute(EditKind::Rename, [&](AirfoilPtr& airfoil) {
    ConfigurationPtr set = airfoil->Configuration(setIndex);
    if (set && !name.empty()) set->Name = name;
  });
}

CommandPtr Document::SetPolarProperties(int setIndex, int polarIndex, const PolarProperties& properties) {
  return Execute(EditKind::PolarProperties, [&](AirfoilPtr& airfoil) {
    ConfigurationPtr set = airfoil->Configuration(setIndex);
    if (PolarPtr polar = set ? set->Polar(polarIndex) : nullptr) ApplyProperties(*polar, properties);
  });
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

CommandPtr Document::Toggle(std::vector<TreeNode>& nodes, size_t clicked) {
  return Execute(EditKind::Tick, [&](AirfoilPtr& airfoil) { ToggleNode(*airfoil, nodes, clicked); });
}

}  // namespace tavilo
