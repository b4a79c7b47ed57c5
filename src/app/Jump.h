// The walks of a command beside its lattice: for problems that reduction alone doesn't solve.
#pragma once

#include <chrono>
#include <optional>

#include "app/DirectStars.h"
#include "app/SearchWatch.h"
#include "lattice/YLattice.h"
#include "search/jump/JumpThreads.h"

namespace starsift {

class Jump : private JumpListener {
 public:
  /// `problem` as read. `wantsBest`: the best solution is looked for, else one. `threads` is at
  /// least 1.
  Jump(const YLattice<long double>& lattice, const Vanu<QQ>& problem, SearchWatch& watch,
       DirectStars& stars, bool wantsBest, unsigned threads)
      : lattice_(lattice),
        problem_(problem),
        watch_(watch),
        stars_(stars),
        wantsBest_(wantsBest),
        threads_(threads) {}

  /// Walks for some time. True if the search is over: what was asked for was found. Throws
  /// SearchEnded by a signal or the clock.
  bool run(std::chrono::duration<double> time);

 private:
  using Clock = std::chrono::steady_clock;

  Step found(const Star<QQ>& judged) override;
  Step progress() override;

  const YLattice<long double>& lattice_;
  const Vanu<QQ>& problem_;
  SearchWatch& watch_;
  DirectStars& stars_;
  bool wantsBest_;
  unsigned threads_;
  /// Made when it is first needed.
  std::optional<JumpThreads> search_;
  Clock::time_point end_;
  bool isOver_ = false;
  /// What ended the search in the middle of a walk.
  std::optional<SearchEnd> ended_;
};

}  // namespace starsift
