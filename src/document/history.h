#pragma once
// The steps that can be undone and redone, oldest first, within a bound on
// their number and on the memory they hold.

#include <cstddef>
#include <vector>

#include "document/command.h"

namespace tavilo {

class History {
 public:
  static constexpr size_t kMaxSteps = 100;
  static constexpr size_t kMaxBytes = size_t{256} << 20;  // 256 MiB

  explicit History(size_t maxSteps = kMaxSteps, size_t maxBytes = kMaxBytes)
      : maxSteps_(maxSteps), maxBytes_(maxBytes) {}

  // Adds a step just done: the steps undone before it can no longer be
  // redone, and the oldest go until both bounds hold again, the new step
  // too if it alone is past the memory bound.
  void Push(CommandPtr command);

  // The step an undo or a redo would take; null when there is none.
  CommandPtr NextUndo() const { return done_ > 0 ? steps_[done_ - 1].command : nullptr; }
  CommandPtr NextRedo() const { return done_ < steps_.size() ? steps_[done_].command : nullptr; }
  // Moves past the step NextUndo() / NextRedo() named, once it is undone
  // or redone.
  void StepBack() {
    if (done_ > 0) --done_;
  }
  void StepForward() {
    if (done_ < steps_.size()) ++done_;
  }

  size_t UndoCount() const { return done_; }
  size_t RedoCount() const { return steps_.size() - done_; }
  // What all kept steps hold, by Command::Bytes().
  size_t Bytes() const { return bytes_; }

 private:
  struct Step {
    CommandPtr command;
    size_t bytes;
  };
  size_t maxSteps_;
  size_t maxBytes_;
  std::vector<Step> steps_;
  size_t done_ = 0;  // steps_[0, done_) are done, the rest undone
  size_t bytes_ = 0;
};

}  // namespace tavilo
