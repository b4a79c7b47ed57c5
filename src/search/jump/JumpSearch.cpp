#include "search/jump/JumpSearch.h"

#include <utility>

#include "numbers/VectorQQ.h"
#include "problem/TightenBounds.h"
#include "search/jump/JumpProblem.h"

namespace starsift {

namespace {

/// Between two calls of the listener; some milliseconds.
constexpr std::uint64_t effortOfTurn = 200'000;

/// Turns in a row that may bring better solutions before the listener is told of one: each is
/// filed, and where an objective has long numbers there are thousands on the way.
constexpr int mostUntold = 25;

/// Steps without a better solution before a restart: this, and so many a column. Until there is a
/// solution, more: weights that have grown are worth more than another start.
constexpr std::uint64_t leastPatience = 1000;
constexpr std::uint64_t patiencePerColumn = 10;
constexpr std::uint64_t patienceBefore = 30;

/// Every so many restarts one is from anywhere.
constexpr std::uint64_t anywherePeriod = 4;

/// At a restart near the best solution two coordinates are changed, and up to this part of all.
constexpr std::size_t kickedPart = 10;

ZZ integer(double value) {
  ZZ result;
  mpz_set_d(result.get(), value);
  return result;
}

}  // namespace

JumpSearch::JumpSearch(const Vanu<QQ>& problem, std::uint64_t seed)
    : checker_(problem), random_(seed) {
  Vanu<QQ> narrowed(problem);
  if (implyBounds(narrowed) != BoundsImplied::narrowed) return;
  std::optional<IntegerProblem> integers = integerProblem(narrowed);
  if (!integers || integers->variableCount() == 0) return;
  for (const IntegerRange& range : integers->box)
    if (range.isEmpty()) return;
  integers_ = std::move(*integers);
  std::optional<JumpProblem> rows = jumpProblem(integers_);
  if (rows) walk_.emplace(std::move(*rows), seed);
}

JumpSearch JumpSearch::twin(std::uint64_t seed) const {
  JumpSearch result(*this);
  result.random_.seed(seed);
  result.walk_->setSeed(seed);
  result.walk_->restart(result.walk_->kicked(walk_->point(), walk_->point().size()));
  return result;
}

void JumpSearch::setKnown(const QQ& norm) {
  const ZZ most = integers_.objective->mostBelow(norm);
  if (most_ && *most_ <= most) return;
  most_ = most;
  demand(most);
}

void JumpSearch::demand(const ZZ& most) {
  walk_->setMostObjective(mpz_get_d(most.get()) - walk_->problem().objectiveConstant);
}

void JumpSearch::run(JumpListener& listener) {
  while (!isOver_ && listener.progress() == Step::goOn) {
    const std::uint64_t end = walk_->effort() + effortOfTurn;
    isOfThisTurn_ = false;
    while (!isOver_ && walk_->effort() < end) advance();
    if (tellIfSettled(listener) == Step::stop) return;
  }
  tell(listener);
}

void JumpSearch::advance() {
  if (walk_->hasArrived()) return arrive();
  walk_->step();
  if (++fruitless_ > patience()) restart();
}

void JumpSearch::arrive() {
  std::vector<ZZ> variables;
  for (std::size_t j = 0; j < integers_.variableCount(); ++j)
    variables.push_back(integer(walk_->point()[j]));
  // Sums that double can't hold.
  if (!isSolution(integers_, variables)) {
    isOver_ = true;
    return;
  }
  best_ = walk_->point();
  bestVariables_ = std::move(variables);
  isNew_ = true;
  isOfThisTurn_ = true;
  fruitless_ = 0;
  isOver_ = !integers_.objective;
  if (isOver_) return;
  const ZZ objective = integers_.objective->at(bestVariables_);
  most_ = objective - ZZ::one();
  demand(objective - descent_);
  descent_ += descent_;
}

std::uint64_t JumpSearch::patience() const {
  const std::uint64_t steps = leastPatience + patiencePerColumn * walk_->point().size();
  return best_.empty() ? patienceBefore * steps : steps;
}

void JumpSearch::restart() {
  fruitless_ = 0;
  ++restarts_;
  const std::size_t columns = walk_->point().size();
  if (best_.empty() || restarts_ % anywherePeriod == 0)
    walk_->restart(walk_->kicked(walk_->point(), columns));
  else
    walk_->restart(walk_->kicked(best_, 2 + random_() % (1 + columns / kickedPart)));
  descent_ = ZZ::one();
  if (most_) demand(*most_);
}

Step JumpSearch::tellIfSettled(JumpListener& listener) {
  const bool isSettled = !isOfThisTurn_ || isOver_ || ++turnsUntold_ >= mostUntold;
  return isSettled ? tell(listener) : Step::goOn;
}

Step JumpSearch::tell(JumpListener& listener) {
  if (!isNew_) return Step::goOn;
  isNew_ = false;
  turnsUntold_ = 0;
  Star<QQ> star;
  static_cast<Vector<QQ>&>(star) = integers_.pointAsRead(bestVariables_);
  return checker_.check(star) ? listener.found(star) : Step::goOn;
}

}  // namespace starsift
