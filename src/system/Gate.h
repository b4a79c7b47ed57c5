// A gate for threads that another one holds up while it needs the cores itself.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace starsift {

/// Open when it is made. All functions may be called by any thread.
class Gate {
 public:
  void close() { set(State::closed); }
  void open() { set(State::open); }
  /// Nobody passes any more, or waits.
  void shut() { set(State::shut); }

  /// Waits while the gate is closed; false once it is shut. Costs next to nothing while it is open.
  bool pass();

 private:
  enum class State { open, closed, shut };

  /// A gate that is shut stays so.
  void set(State state);

  std::atomic<State> state_ = State::open;
  std::mutex mutex_;
  std::condition_variable changed_;
};

}  // namespace starsift
