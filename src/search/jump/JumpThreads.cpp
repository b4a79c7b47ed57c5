#include "search/jump/JumpThreads.h"

#include <exception>
#include <mutex>
#include <optional>
#include <utility>

#include "system/HelperThreads.h"

namespace starsift {

namespace {

/// What walks tell each other.
class Exchange {
 public:
  /// A solution, unless there is one as good: news become better and better.
  void post(const Star<QQ>& star) {
    const std::lock_guard lock(mutex_);
    if (improves(star)) news_.push_back(star);
  }

  std::vector<Star<QQ>> takeNews() {
    const std::lock_guard lock(mutex_);
    return std::exchange(news_, {});
  }

  std::optional<QQ> leastNorm() {
    const std::lock_guard lock(mutex_);
    return least_;
  }

  void end() {
    const std::lock_guard lock(mutex_);
    isEnded_ = true;
  }

  void fail(std::exception_ptr exception) {
    const std::lock_guard lock(mutex_);
    if (!exception_) exception_ = std::move(exception);
    isEnded_ = true;
  }

  bool isEnded() {
    const std::lock_guard lock(mutex_);
    return isEnded_;
  }

  /// After all helpers have ended.
  void rethrow() const {
    if (exception_) std::rethrow_exception(exception_);
  }

 private:
  bool improves(const Star<QQ>& star) {
    if (least_ && !(star.targetNorm < *least_)) return false;
    least_ = star.targetNorm;
    return true;
  }

  std::mutex mutex_;
  std::vector<Star<QQ>> news_;
  std::optional<QQ> least_;
  bool isEnded_ = false;
  std::exception_ptr exception_;
};

/// A walk learns of solutions of others between its turns.
class Learner : public JumpListener {
 public:
  Learner(JumpSearch& search, Exchange& exchange, bool hasObjective)
      : search_(search), exchange_(exchange), hasObjective_(hasObjective) {}

 protected:
  Step learn() {
    if (exchange_.isEnded()) return Step::stop;
    const std::optional<QQ> least = exchange_.leastNorm();
    if (least && hasObjective_ && (!known_ || *least < *known_)) search_.setKnown(*least);
    known_ = least;
    return Step::goOn;
  }

  Exchange& exchange() { return exchange_; }

 private:
  JumpSearch& search_;
  Exchange& exchange_;
  bool hasObjective_;
  std::optional<QQ> known_;
};

class Helper : public Learner {
 public:
  using Learner::Learner;

  Step found(const Star<QQ>& star) override {
    exchange().post(star);
    return Step::goOn;
  }

  Step progress() override { return learn(); }
};

/// Passes on what all walks find.
class Caller : public Learner {
 public:
  Caller(JumpSearch& search, Exchange& exchange, bool hasObjective, JumpListener& listener)
      : Learner(search, exchange, hasObjective), listener_(listener) {}

  Step found(const Star<QQ>& star) override {
    exchange().post(star);
    passOn();
    return isEnding_ ? Step::stop : Step::goOn;
  }

  Step progress() override {
    passOn();
    isEnding_ = isEnding_ || listener_.progress() == Step::stop;
    return isEnding_ ? Step::stop : learn();
  }

  /// Tells the listener of the solutions of all walks, until it has enough. A walk tells its last
  /// one when it ends.
  void passOn() {
    for (const Star<QQ>& star : exchange().takeNews())
      if (!hasEnough_) hasEnough_ = listener_.found(star) == Step::stop;
    isEnding_ = isEnding_ || hasEnough_;
  }

 private:
  JumpListener& listener_;
  bool isEnding_ = false;
  /// The listener isn't told of further solutions.
  bool hasEnough_ = false;
};

/// Ends the helpers also after an exception of the calling thread.
class Ending {
 public:
  explicit Ending(Exchange& exchange) : exchange_(exchange) {}
  Ending(const Ending&) = delete;
  Ending& operator=(const Ending&) = delete;
  ~Ending() { exchange_.end(); }

 private:
  Exchange& exchange_;
};

}  // namespace

JumpThreads::JumpThreads(const Vanu<QQ>& problem, std::uint64_t seed, unsigned threads) {
  searches_.push_back(std::make_unique<JumpSearch>(problem, seed));
  for (unsigned i = 1; i < threads && isReady(); ++i)
    searches_.push_back(std::make_unique<JumpSearch>(searches_.front()->twin(seed + i)));
}

void JumpThreads::setKnown(const QQ& norm) {
  for (const auto& search : searches_) search->setKnown(norm);
}

void JumpThreads::run(JumpListener& listener) {
  const bool hasObjective = searches_.front()->hasObjective();
  Exchange exchange;
  const auto walk = [&](unsigned i) {
    try {
      Helper helper(*searches_[i], exchange, hasObjective);
      searches_[i]->run(helper);
    } catch (...) {
      exchange.fail(std::current_exception());
    }
  };
  Caller caller(*searches_.front(), exchange, hasObjective, listener);
  {
    HelperThreads helpers;
    const Ending ending(exchange);
    helpers.start(static_cast<unsigned>(searches_.size() - 1), walk);
    searches_.front()->run(caller);
  }
  exchange.rethrow();
  caller.passOn();
}

}  // namespace starsift
