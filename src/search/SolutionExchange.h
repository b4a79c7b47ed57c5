// What threads that look for one good solution, or the best one, tell each other.
#pragma once

#include <exception>
#include <mutex>
#include <optional>
#include <vector>

#include "numbers/QQ.h"
#include "stars/Star.h"

namespace starsift {

/// All functions may be called by any thread.
class SolutionExchange {
 public:
  /// A solution, unless there is one as good: news become better and better.
  void post(const Star<QQ>& star);
  /// The solutions that were posted since the last call.
  std::vector<Star<QQ>> takeNews();
  /// Least target norm posted.
  std::optional<QQ> leastNorm();

  void end();
  /// Ends by an exception of a thread; the first one is kept.
  void fail(std::exception_ptr exception);
  bool isEnded();
  /// Throws what was kept; after all threads have ended.
  void rethrow() const;

 private:
  bool improves(const QQ& norm) const { return !least_ || norm < *least_; }

  std::mutex mutex_;
  std::vector<Star<QQ>> news_;
  std::optional<QQ> least_;
  bool isEnded_ = false;
  std::exception_ptr exception_;
};

}  // namespace starsift
