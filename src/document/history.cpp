#include "document/history.h"

namespace tavilo {

void History::Push(CommandPtr command) {
  for (size_t k = done_; k < steps_.size(); ++k) bytes_ -= steps_[k].bytes;
  steps_.resize(done_);
  const size_t bytes = command->Bytes();
  steps_.push_back({std::move(command), bytes});
  bytes_ += bytes;
  size_t dropped = 0;
  while (dropped < steps_.size() && (steps_.size() - dropped > maxSteps_ || bytes_ > maxBytes_)) {
    bytes_ -= steps_[dropped++].bytes;
  }
  steps_.erase(steps_.begin(), steps_.begin() + static_cast<std::ptrdiff_t>(dropped));
  done_ = steps_.size();
}

}  // namespace tavilo
