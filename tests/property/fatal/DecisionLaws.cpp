// The decision of small problems of every feature against all points of their boxes, over GMP's
// rationals.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "FoundSolutions.h"
#include "search/decide/Decider.h"
#include "search/decide/PartWalk.h"

namespace starsift {
namespace {

using oracle::Point;
using oracle::Problem;
using test::checkOverProblems;
using test::problemCount;
using test::SmallProblem;
using test::solutionsAround;

/// Rows may close an open box far away: such trees are left before their end.
constexpr std::size_t mostPoints = 5'000;

/// Keeps what it is told of.
class Listener : public DecisionListener {
 public:
  explicit Listener(const Problem& problem) : problem_(problem) {}

  Step found(const Star<QQ>& star) override {
    const Point x = test::checkedPoint(problem_, star);
    RC_ASSERT(points.insert(oracle::pointText(x)).second);
    norms.push_back(star.targetNorm);
    return points.size() < mostPoints ? Step::goOn : Step::stop;
  }

  Step progress(double share, std::uint64_t /*nodes*/) override {
    RC_ASSERT(share >= 0);
    RC_ASSERT(share <= 1);
    return Step::goOn;
  }

  std::set<std::string> points;
  std::vector<QQ> norms;

 private:
  const Problem& problem_;
};

bool isClosed(const Problem& problem) {
  for (std::size_t j = 0; j < problem.lower.size(); ++j) {
    const oracle::Range range = oracle::rangeOf(problem, j);
    if (!range.empty && !(range.least && range.greatest)) return false;
  }
  return true;
}

std::set<std::string> textsOf(const std::vector<Point>& points) {
  std::set<std::string> texts;
  for (const Point& x : points) texts.insert(oracle::pointText(x));
  return texts;
}

std::optional<QQ> leastNorm(const Problem& problem, const std::vector<Point>& solutions) {
  std::optional<QQ> least;
  for (const Point& x : solutions) {
    QQ norm = test::toQQ(oracle::judge(problem, x)->targetNorm);
    if (!least || norm < *least) least = norm;
  }
  return least;
}

Decided decide(const SmallProblem& small, Listener& listener, DeciderSettings settings = {}) {
  Decision decision(small.record());
  settings.allowed = std::chrono::seconds(1);
  return Decider(decision, listener, settings).run();
}

/// `search(small, listener)` tells of all solutions within closed boxes, and proves it.
template <class Search>
void checkAllAreFound(const Search& search) {
  int solvable = 0;
  checkOverProblems([&](const SmallProblem& small) {
    if (!isClosed(small.problem)) return;
    const std::set<std::string> solutions = textsOf(solutionsAround(small.problem));
    Listener listener(small.problem);
    const Decided decided = search(small, listener);
    RC_ASSERT(listener.points == solutions);
    RC_ASSERT(decided.proof == (solutions.empty() ? Proof::noSolution : Proof::allFound));
    RC_ASSERT(decided.count == solutions.size());
    if (solutions.size() > 1) ++solvable;
  });
  EXPECT_GE(solvable, problemCount / 8);
}

TEST(Deciding, FindsAllSolutionsWithinClosedBoxes) {
  checkAllAreFound(
      [](const SmallProblem& small, Listener& listener) { return decide(small, listener); });
}

oracle::Bound scaled(const oracle::Bound& bound, const mpq_class& factor) {
  return {sgn(factor) * bound.infinite, bound.value * factor};
}

/// factor times one side of the row.
oracle::Inequation oneSide(const oracle::Inequation& row, bool isLower, const mpq_class& factor) {
  oracle::Inequation side{row.row, {-1, 0}, {1, 0}};
  for (mpq_class& entry : side.row) entry *= factor;
  const bool staysLower = isLower == (sgn(factor) > 0);
  (staysLower ? side.lower : side.upper) = scaled(isLower ? row.lower : row.upper, factor);
  return side;
}

/// The same problem with rows of one side each, in another order and of another length.
SmallProblem inSides(const SmallProblem& small) {
  SmallProblem result = small;
  auto& rows = result.problem.inequations;
  rows.clear();
  for (const oracle::Inequation& row : small.problem.inequations) {
    const auto add = [&](bool isLower) {
      const mpq_class factor = mpq_class(*rc::gen::element(-3, -1, 1, 2)) / 2;
      const auto place = *rc::gen::arbitrary<bool>() ? rows.begin() : rows.end();
      rows.insert(place, oneSide(row, isLower, factor));
    };
    const bool hasLower = row.lower.infinite >= 0;
    const bool hasUpper = row.upper.infinite <= 0;
    if (hasLower) add(true);
    if (hasUpper) add(false);
    if (!hasLower && !hasUpper) rows.push_back(row);
  }
  return result;
}

TEST(Deciding, FindsTheSameInRowsOfOneSideEach) {
  checkAllAreFound([](const SmallProblem& small, Listener& listener) {
    return decide(inSides(small), listener);
  });
}

TEST(Deciding, MissesNoSolutionOfAnOpenBoxThatItSaysToHaveSearched) {
  int decidedOnes = 0;
  checkOverProblems([&decidedOnes](const SmallProblem& small) {
    if (isClosed(small.problem)) return;
    Listener listener(small.problem);
    const Decided decided = decide(small, listener);
    if (!decided.isComplete()) return;
    ++decidedOnes;
    for (const std::string& solution : textsOf(solutionsAround(small.problem)))
      RC_ASSERT(listener.points.contains(solution));
  });
  EXPECT_GE(decidedOnes, problemCount / 16);
}

TEST(Deciding, FindsTheOptimum) {
  checkOverProblems([](const SmallProblem& small) {
    if (!isClosed(small.problem) || small.problem.targets.empty()) return;
    const auto least = leastNorm(small.problem, solutionsAround(small.problem));
    Listener listener(small.problem);
    DeciderSettings settings;
    settings.aim = Aim::best;
    const Decided decided = decide(small, listener, settings);
    RC_ASSERT(decided.best == least);
    RC_ASSERT(decided.proof == (least ? Proof::optimum : Proof::noSolution));
    RC_ASSERT(std::is_sorted(listener.norms.rbegin(), listener.norms.rend()));
    if (least) RC_ASSERT(decided.bound == least);
  });
}

TEST(Deciding, FindsTheOptimumInTheTreeAlone) {
  int improved = 0;
  checkOverProblems([&improved](const SmallProblem& small) {
    if (!isClosed(small.problem) || small.problem.targets.empty()) return;
    const auto least = leastNorm(small.problem, solutionsAround(small.problem));
    Listener listener(small.problem);
    Decision decision(small.record());
    const Preparation made = decision.prepare(
        Aim::best, std::nullopt, [] { return true; }, StageLimit::steps);
    RC_ASSERT(!decision.metSolution());
    if (made == Preparation::ready)
      RC_ASSERT(decision.run(listener, {}) == EnumerationEnd::complete);
    RC_ASSERT(listener.norms.empty() == !least);
    RC_ASSERT(std::is_sorted(listener.norms.rbegin(), listener.norms.rend()));
    if (least) RC_ASSERT(listener.norms.back() == *least);
    if (listener.norms.size() > 1) ++improved;
  });
  EXPECT_GE(improved, problemCount / 64);
}

/// Walks the tree once, in several threads that exchange subtrees all the time.
void walkInThreads(const SmallProblem& small, Aim aim, Listener& listener) {
  Decision decision(small.record());
  const Preparation made = decision.prepare(aim, std::nullopt, [] { return true; });
  if (made == Preparation::noSolution) return;
  RC_ASSERT(made == Preparation::ready);
  if (decision.metSolution()) listener.found(*decision.metSolution());
  EnumerationSettings settings;
  settings.threads = *rc::gen::inRange(1U, 6U);
  settings.nodesPerReport = *rc::gen::inRange<std::uint64_t>(1, 4);
  RC_ASSERT(decision.run(listener, settings) == EnumerationEnd::complete);
}

TEST(Deciding, FindsTheSameWhateverTheNumberOfThreads) {
  checkOverProblems([](const SmallProblem& small) {
    if (!isClosed(small.problem)) return;
    const std::vector<Point> solutions = solutionsAround(small.problem);
    Listener all(small.problem);
    walkInThreads(small, Aim::all, all);
    RC_ASSERT(all.points == textsOf(solutions));
    if (small.problem.targets.empty()) return;
    Listener best(small.problem);
    walkInThreads(small, Aim::best, best);
    const auto least = leastNorm(small.problem, solutions);
    RC_ASSERT(best.norms.empty() == !least);
    if (least) RC_ASSERT(best.norms.back() == *least);
  });
}

TEST(Deciding, LooksOnlyForBetterSolutionsThanTheKnownOne) {
  checkOverProblems([](const SmallProblem& small) {
    if (!isClosed(small.problem) || small.problem.targets.empty()) return;
    const std::vector<Point> solutions = solutionsAround(small.problem);
    if (solutions.empty()) return;
    const auto least = leastNorm(small.problem, solutions);
    DeciderSettings settings;
    settings.aim = Aim::best;
    settings.known = leastNorm(small.problem, {solutions.front()});
    Listener listener(small.problem);
    const Decided decided = decide(small, listener, settings);
    RC_ASSERT(decided.proof == Proof::optimum);
    RC_ASSERT(decided.best == least);
    RC_ASSERT(listener.norms.empty() == (*settings.known == *least));
    for (const QQ& norm : listener.norms) RC_ASSERT(norm < *settings.known);
  });
}

TEST(Deciding, FindsTheOptimumInOpenBoxes) {
  int proved = 0;
  int unbounded = 0;
  checkOverProblems([&](const SmallProblem& small) {
    if (isClosed(small.problem) || small.problem.targets.empty()) return;
    const std::vector<Point> solutions = solutionsAround(small.problem);
    if (solutions.empty()) return;
    DeciderSettings settings;
    settings.aim = Aim::best;
    settings.known = leastNorm(small.problem, solutions);
    Listener listener(small.problem);
    const Decided decided = decide(small, listener, settings);
    if (decided.undecided == Undecided::unbounded) ++unbounded;
    if (!decided.isComplete()) return;
    RC_ASSERT(decided.proof == Proof::optimum);
    RC_ASSERT(*decided.best <= *settings.known);
    ++proved;
  });
  EXPECT_GE(proved, problemCount / 32);
  EXPECT_GE(unbounded, problemCount / 128);
}

TEST(Deciding, FallsForEverAlongItsDirection) {
  int unbounded = 0;
  checkOverProblems([&unbounded](const SmallProblem& small) {
    if (small.problem.targets.empty()) return;
    const std::vector<Point> solutions = solutionsAround(small.problem);
    if (solutions.empty()) return;
    Decision decision(small.record());
    const QQ norm = *leastNorm(small.problem, {solutions.front()});
    if (decision.prepare(Aim::best, norm, [] { return true; }) != Preparation::noFiniteBox ||
        decision.fallingDirection().dimension() == 0)
      return;
    ++unbounded;
    const Point direction = test::pointOf(decision.fallingDirection());
    QQ before = norm;
    Point x = solutions.front();
    for (int step = 0; step < 3; ++step) {
      for (std::size_t j = 0; j < x.size(); ++j) x[j] += direction[j];
      RC_ASSERT(oracle::solves(small.problem, x));
      const QQ after = test::toQQ(oracle::judge(small.problem, x)->targetNorm);
      RC_ASSERT(after < before);
      before = after;
    }
  });
  EXPECT_GE(unbounded, problemCount / 128);
}

TEST(Deciding, LearnsFromTheLinearRelaxationOnlyWhatHolds) {
  int optimal = 0;
  int contradictions = 0;
  checkOverProblems([&](const SmallProblem& small) {
    const std::vector<Point> solutions = solutionsAround(small.problem);
    Decision decision(small.record());
    Listener listener(small.problem);
    DeciderSettings settings;
    if (!small.problem.targets.empty()) settings.aim = Aim::best;
    const auto least = leastNorm(small.problem, solutions);
    // Any solution may be known before.
    if (settings.aim == Aim::best && !solutions.empty() && *rc::gen::arbitrary<bool>())
      settings.known = leastNorm(small.problem,
                                 {solutions[*rc::gen::inRange<std::size_t>(0, solutions.size())]});
    const Decided learned = Decider(decision, listener, settings).relax();
    RC_ASSERT(learned.nodes == 0U);
    if (learned.proof == Proof::noSolution) {
      ++contradictions;
      RC_ASSERT(solutions.empty());
    }
    if (learned.bound && least) RC_ASSERT(*learned.bound <= *least);
    if (learned.proof != Proof::optimum) return;
    ++optimal;
    RC_ASSERT(learned.best == learned.bound);
    if (least) RC_ASSERT(*learned.best <= *least);
    if (least && isClosed(small.problem)) RC_ASSERT(*learned.best == *least);
  });
  EXPECT_GE(optimal, problemCount / 32);
  EXPECT_GE(contradictions, problemCount / 32);
}

TEST(Deciding, HasABoundBelowEveryNorm) {
  checkOverProblems([](const SmallProblem& small) {
    if (small.problem.targets.empty()) return;
    Decision decision(small.record());
    if (decision.prepare(Aim::best, std::nullopt, [] { return true; }) != Preparation::ready)
      return;
    const auto least = leastNorm(small.problem, solutionsAround(small.problem));
    if (least) RC_ASSERT(*decision.leastNorm() <= *least);
    const QQ before = *decision.leastNorm();
    decision.raiseBound([] { return true; }, [] { return true; });
    RC_ASSERT(*decision.leastNorm() >= before);
    if (least) RC_ASSERT(*decision.leastNorm() <= *least);
  });
}

TEST(Deciding, EndsWithAsManySolutionsAsAreWanted) {
  checkOverProblems([](const SmallProblem& small) {
    if (!isClosed(small.problem)) return;
    const std::vector<Point> solutions = solutionsAround(small.problem);
    DeciderSettings settings;
    settings.wanted = 2;
    Listener listener(small.problem);
    const Decided decided = decide(small, listener, settings);
    RC_ASSERT(listener.points.size() == std::min<std::size_t>(2, solutions.size()));
    RC_ASSERT(decided.isComplete() == (solutions.size() < 2));
    RC_ASSERT((decided.undecided == Undecided::enough) == (solutions.size() >= 2));
  });
}

/// Ends a walk after some reports, or never.
class Interrupting : public DecisionListener {
 public:
  Interrupting(Listener& listener, Aim aim) : listener_(listener), aim_(aim) {}

  Step found(const Star<QQ>& star) override {
    // What is found again after an interruption counts once.
    if (!listener_.points.contains(oracle::pointText(test::pointOf(star.x()))))
      return listener_.found(star);
    RC_ASSERT(aim_ == Aim::all);
    return Step::goOn;
  }
  Step progress(double share, std::uint64_t nodes) override {
    RC_ASSERT(listener_.progress(share, nodes) == Step::goOn);
    return reportsLeft-- == 0 ? Step::stop : Step::goOn;
  }

  int reportsLeft = -1;

 private:
  Listener& listener_;
  Aim aim_;
};

/// Walks one part, which is interrupted some times and gone on with from its state.
TreeState walkPart(const SmallProblem& small, Aim aim, const TreeState& identity,
                   Listener& listener) {
  TreeState state = identity;
  Interrupting interrupting(listener, aim);
  bool isFirst = true;
  for (int runsLeft = *rc::gen::inRange(0, 3); runsLeft >= 0; --runsLeft) {
    Decision decision(small.record());
    PartWalk walk(decision, interrupting, aim, identity);
    const Preparation made = walk.prepare([] { return true; });
    RC_ASSERT(made == Preparation::ready || made == Preparation::noSolution);
    if (!std::exchange(isFirst, false)) RC_ASSERT(walk.goOn(state));
    interrupting.reportsLeft = runsLeft > 0 ? *rc::gen::inRange(0, 20) : -1;
    const EnumerationEnd end = walk.run(std::nullopt, *rc::gen::inRange(1U, 4U));
    state = walk.state();
    RC_ASSERT(state.isComplete() || end == EnumerationEnd::stopped);
  }
  return state;
}

/// All parts of a problem, in a random number, and what they are together. `known`: target norm of
/// a solution.
Decided walkInParts(const SmallProblem& small, Aim aim, Listener& listener,
                    const std::optional<QQ>& known = std::nullopt) {
  const unsigned parts = *rc::gen::inRange(1U, 10U);
  TreeState identity;
  identity.parts = parts;
  identity.known = known;
  std::vector<TreeState> states;
  for (unsigned part = 1; part <= parts; ++part) {
    identity.part = part;
    if (aim == Aim::best) {
      // A part doesn't know what others have found.
      Listener own(small.problem);
      states.push_back(walkPart(small, aim, identity, own));
      listener.points.insert(own.points.begin(), own.points.end());
    } else {
      states.push_back(walkPart(small, aim, identity, listener));
    }
    RC_ASSERT(states.back().tree == states.front().tree);
    if (part < parts) RC_ASSERT(!joinParts(aim, states).isComplete());
  }
  return joinParts(aim, states);
}

TEST(Parts, HaveTheSolutionsOfTheWholeTogether) {
  checkAllAreFound([](const SmallProblem& small, Listener& listener) {
    return walkInParts(small, Aim::all, listener);
  });
}

TEST(Parts, HaveTheOptimumTogether) {
  checkOverProblems([](const SmallProblem& small) {
    if (!isClosed(small.problem) || small.problem.targets.empty()) return;
    const auto least = leastNorm(small.problem, solutionsAround(small.problem));
    Listener listener(small.problem);
    const Decided joined = walkInParts(small, Aim::best, listener);
    RC_ASSERT(joined.proof == (least ? Proof::optimum : Proof::noSolution));
    RC_ASSERT(joined.best == least);
    RC_ASSERT(joined.bound == least);
  });
}

TEST(Parts, OfATreeForBetterSolutionsHaveTheOptimumTogether) {
  checkOverProblems([](const SmallProblem& small) {
    if (!isClosed(small.problem) || small.problem.targets.empty()) return;
    const std::vector<Point> solutions = solutionsAround(small.problem);
    if (solutions.empty()) return;
    const auto chosen = *rc::gen::inRange<std::size_t>(0, solutions.size());
    const auto known = leastNorm(small.problem, {solutions[chosen]});
    const auto least = leastNorm(small.problem, solutions);
    Listener listener(small.problem);
    const Decided joined = walkInParts(small, Aim::best, listener, known);
    RC_ASSERT(joined.proof == Proof::optimum);
    RC_ASSERT(joined.best == least);
    RC_ASSERT(listener.points.empty() == (known == least));
  });
}

}  // namespace
}  // namespace starsift
