#include "search/jump/JumpThreads.h"

#include <exception>
#include <optional>

#include "search/SolutionExchange.h"
#include "system/EndGuard.h"
#include "system/HelperThreads.h"

namespace starsift {

namespace {

/// A walk learns of solutions of others between its turns.
class Learner : public JumpListener {
 public:
  Learner(JumpSearch& search, SolutionExchange& exchange, bool hasObjective)
      : search_(search), exchange_(exchange), hasObjective_(hasObjective) {}

 protected:
  Step learn() {
    if (exchange_.isEnded()) return Step::stop;
    const std::optional<QQ> least = exchange_.leastNorm();
    if (least && hasObjective_ && (!known_ || *least < *known_)) search_.setKnown(*least);
    known_ = least;
    return Step::goOn;
  }

  SolutionExchange& exchange() { return exchange_; }

 private:
  JumpSearch& search_;
  SolutionExchange& exchange_;
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
  Caller(JumpSearch& search, SolutionExchange& exchange, bool hasObjective, JumpListener& listener)
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
  SolutionExchange exchange;
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
    const EndGuard ending(exchange);
    helpers.start(static_cast<unsigned>(searches_.size() - 1), walk);
    searches_.front()->run(caller);
  }
  exchange.rethrow();
  caller.passOn();
}

}  // namespace starsift
