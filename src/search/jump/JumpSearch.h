// A search for good solutions by walks that change one variable at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "numbers/QQ.h"
#include "problem/Vanu.h"
#include "search/decide/IntegerProblem.h"
#include "search/enumeration/Enumeration.h"
#include "search/jump/JumpWalk.h"
#include "stars/Star.h"
#include "stars/StarCheck.h"

namespace starsift {

/// Is called by a search.
class JumpListener {
 public:
  virtual ~JumpListener() = default;

  /// A solution, judged by the check of stars; target values and norms are set. With targets each
  /// one has less target norm than all before it and than the known ones.
  virtual Step found(const Star<QQ>& star) = 0;
  /// Called every some milliseconds.
  virtual Step progress() = 0;

 protected:
  JumpListener() = default;
  JumpListener(const JumpListener&) = default;
  JumpListener& operator=(const JumpListener&) = default;
};

/// Rows with few variables and bounds near each other are no obstacle for such walks, where a
/// lattice that reduction can't make short is of no use; long numbers and equations that few
/// points satisfy are the opposite case. Proves nothing.
class JumpSearch {
 public:
  /// `problem` as read, which must outlive the search. Bounds are narrowed as a decision does.
  JumpSearch(const Vanu<QQ>& problem, std::uint64_t seed);

  /// There is something to walk on, and for: rows and bounds don't contradict each other at first
  /// sight, numbers have at most 52 bits, no walk has come to sums beyond that, and there is an
  /// objective or no solution was found.
  bool isReady() const { return walk_.has_value() && !isOver_; }
  /// The least objective is looked for, and not any solution. Only if isReady().
  bool hasObjective() const { return integers_.objective.has_value(); }

  /// A search in the same problem that begins anywhere. Only if isReady().
  JumpSearch twin(std::uint64_t seed) const;

  /// From now on only solutions with less target norm count. With targets only.
  void setKnown(const QQ& norm);

  /// Walks from random points until a solution is found, and then, with targets, from points near
  /// the best one; until the listener stops it, or, without targets, after the first solution. Goes
  /// on where it was when it is called again. Only if isReady().
  void run(JumpListener& listener);

 private:
  void advance();
  void arrive();
  void restart();
  std::uint64_t patience() const;
  /// Tells of the best solution, if it is new and wasn't followed by better ones in the last turn.
  Step tellIfSettled(JumpListener& listener);
  Step tell(JumpListener& listener);
  /// The walk looks for objectives of at most `most`.
  void demand(const ZZ& most);

  StarChecker<QQ> checker_;
  IntegerProblem integers_;
  std::optional<JumpWalk> walk_;
  std::mt19937_64 random_;
  /// The best solution found; empty before.
  std::vector<double> best_;
  std::vector<ZZ> bestVariables_;
  /// Greatest objective that counts, once a solution is known.
  std::optional<ZZ> most_;
  /// By how much the next solution of this descent has to be better: twice as much as the one
  /// before, so that objectives with long numbers fall in few steps.
  ZZ descent_ = ZZ::one();
  /// The listener doesn't know it.
  bool isNew_ = false;
  bool isOfThisTurn_ = false;
  /// Since the listener was told.
  int turnsUntold_ = 0;
  bool isOver_ = false;
  std::uint64_t restarts_ = 0;
  /// Steps since the last restart or solution.
  std::uint64_t fruitless_ = 0;
};

}  // namespace starsift
