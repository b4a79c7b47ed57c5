// Threads beside the calling one.
#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace starsift {

/// Threads that receive no signals: those of the process are for the calling thread. Where that
/// works for a host so do they (see HostedCall.h). `work` must not throw.
class HelperThreads {
 public:
  HelperThreads() = default;
  HelperThreads(const HelperThreads&) = delete;
  HelperThreads& operator=(const HelperThreads&) = delete;
  /// Waits for the threads.
  ~HelperThreads() { join(); }

  /// Starts threads with work(1), work(2), ... work(count), or as many of them as the system
  /// grants.
  void start(unsigned count, const std::function<void(unsigned)>& work);
  void join();

  /// Threads that were started and not joined.
  std::size_t count() const { return threads_.size(); }

 private:
  std::vector<std::thread> threads_;
};

}  // namespace starsift
