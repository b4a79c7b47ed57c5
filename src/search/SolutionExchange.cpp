#include "search/SolutionExchange.h"

#include <utility>

namespace starsift {

void SolutionExchange::post(const Star<QQ>& star) {
  const std::lock_guard lock(mutex_);
  if (!improves(star.targetNorm)) return;
  least_ = star.targetNorm;
  news_.push_back(star);
}

std::vector<Star<QQ>> SolutionExchange::takeNews() {
  const std::lock_guard lock(mutex_);
  return std::exchange(news_, {});
}

std::optional<QQ> SolutionExchange::leastNorm() {
  const std::lock_guard lock(mutex_);
  return least_;
}

void SolutionExchange::end() {
  const std::lock_guard lock(mutex_);
  isEnded_ = true;
}

void SolutionExchange::fail(std::exception_ptr exception) {
  const std::lock_guard lock(mutex_);
  if (!exception_) exception_ = std::move(exception);
  isEnded_ = true;
}

bool SolutionExchange::isEnded() {
  const std::lock_guard lock(mutex_);
  return isEnded_;
}

void SolutionExchange::rethrow() const {
  if (exception_) std::rethrow_exception(exception_);
}

}  // namespace starsift
