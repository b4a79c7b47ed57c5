#include "system/Gate.h"

namespace starsift {

bool Gate::pass() {
  if (state_ == State::open) return true;
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return state_ != State::closed; });
  return state_ == State::open;
}

void Gate::set(State state) {
  {
    const std::lock_guard lock(mutex_);
    if (state_ != State::shut) state_ = state;
  }
  changed_.notify_all();
}

}  // namespace starsift
