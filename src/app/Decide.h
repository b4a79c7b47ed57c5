// The complete search of a command: the decision of its problem, with its limits, its solution
// file and its status line.
#pragma once

#include <optional>

#include "app/SearchWatch.h"
#include "app/SeekArguments.h"
#include "app/StarStore.h"
#include "lattice/YLattice.h"
#include "search/decide/Decider.h"

namespace starsift {

/// Solutions go to the store with the data of the run, as those of the lattice do.
class Decide : private DecisionListener {
 public:
  /// The exact lattice is live and has the problem as read, which is copied. Parameters and
  /// options say what is looked for: with targets the best solution, unless a number of
  /// solutions is given without a norm to reach; else `sol` solutions, or all.
  Decide(YLattice<long double>& lattice, SearchWatch& watch, StarStore& store,
         const SeekOptions& options);

  /// Still to be made.
  bool isDue() const { return !isMade_ && options_.prove.value_or(true); }
  /// The best solution is looked for.
  bool wantsBest() const { return settings_.aim == Aim::best; }

  /// Decides the problem if that takes not too long. True if the search is over: there is a
  /// proof, or what was asked for was found. Throws SearchEnded by a signal or the clock.
  bool run();

  const Decided& result() const { return result_; }
  /// The first solutions that it has found, as many as a status shows, and the number of further
  /// ones.
  const Array<Star<QQ>>& firstStars() const { return firstStars_; }
  Index furtherStars() const { return furtherStars_; }
  Index starCount() const { return firstStars_.dimension() + furtherStars_; }

 private:
  Step found(const Star<QQ>& judged) override;
  Step progress(double share, std::uint64_t nodes) override;
  std::optional<QQ> leastKnownNorm() const;

  YLattice<long double>& lattice_;
  SearchWatch& watch_;
  StarStore& store_;
  SeekOptions options_;
  Decision decision_;
  DeciderSettings settings_;
  Decided result_;
  bool isMade_ = false;
  /// A solution reached tnorm or snorm.
  bool meetsNorms_ = false;
  /// What ended a walk.
  std::optional<SearchEnd> ended_;
  Array<Star<QQ>> firstStars_;
  Index furtherStars_ = 0;
};

}  // namespace starsift
