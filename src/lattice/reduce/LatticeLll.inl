// Lattice: the LLL reduction of its basis, by LllReduction. Every row that was brought up to
// date is checked as a vector.
#pragma once

#include <algorithm>
#include <limits>
#include <ostream>
#include <string>

#include "lattice/Lattice.h"
#include "lattice/reduce/LllReduction.h"
#include "system/Console.h"

namespace starsift {

namespace latticelll {

/// Passes of one reduction that may gain nothing.
constexpr int maxFruitlessPasses = 20;

/// Checks the rows of a lattice, notifies its observer, and ends passes once the search is over.
template <class T, class R>
class RowChecker : public RowVisitor {
 public:
  explicit RowChecker(Lattice<T, R>& lattice) : lattice_(lattice) {}

  void onRow(Index k) override { lattice_.checkRow(k); }

  bool mayStep(const PassStatus& status) override {
    if (lattice_.run.observer != nullptr) lattice_.run.observer->onStep(status.counts);
    return !lattice_.searchIsOver();
  }

  void onStepped(const PassStatus& status) override {
    if (lattice_.params.verb != 2 || !consoleWasSilent()) return;
    report(reportStream(),
           "lll status: k = " + std::to_string(status.k) + " (m = " + std::to_string(status.to) +
               "), strict = " + std::to_string(static_cast<int>(status.strict)) + ", swaps = " +
               std::to_string(status.counts.tests) + " / " + std::to_string(status.budget));
  }

 private:
  Lattice<T, R>& lattice_;
};

/// A reduction of the basis of a lattice by its parameters.
template <class T, class R>
class Reduction {
 public:
  explicit Reduction(Lattice<T, R>& lattice)
      : lattice_(lattice),
        checker_(lattice),
        lll_(lattice.basis, lattice.gramSchmidt, checker_, settings(lattice)) {}
  Reduction(const Reduction&) = delete;
  Reduction& operator=(const Reduction&) = delete;
  ~Reduction() { lattice_.run.deepInsertions += lll_.deepInsertions(); }

  LllReduction<T, R>* operator->() { return &lll_; }

 private:
  static LllSettings<R> settings(const Lattice<T, R>& lattice) {
    LllSettings<R> result;
    result.deep = lattice.params.deep;
    // A lattice that was made anew was reduced before, from another basis: it can be made again.
    result.lossIsFatal = lattice.run.restarts == 0;
    return result;
  }

  Lattice<T, R>& lattice_;
  RowChecker<T, R> checker_;
  LllReduction<T, R> lll_;
};

}  // namespace latticelll

template <class T, class R>
bool Lattice<T, R>::sizeReduce(Index k, bool strict) {
  return latticelll::Reduction<T, R>(*this)->sizeReduce(k, strict);
}

template <class T, class R>
Index Lattice<T, R>::swapStep(Index k) {
  return latticelll::Reduction<T, R>(*this)->swapStep(k);
}

template <class T, class R>
Index Lattice<T, R>::deepInsertStep(Index k) {
  return latticelll::Reduction<T, R>(*this)->deepInsertStep(k);
}

template <class T, class R>
Index Lattice<T, R>::blendDependent(Index k, Index kmax) {
  return latticelll::Reduction<T, R>(*this)->blendDependent(k, kmax);
}

template <class T, class R>
bool Lattice<T, R>::lllStep(Index k, Index kmax, bool& strict) {
  return latticelll::Reduction<T, R>(*this)->step(k, kmax, strict);
}

template <class T, class R>
Index Lattice<T, R>::lllPass(Index from, Index to, Index kmax) {
  PassStatus status{from, to == 0 ? basis.n : to, kmax == 0 ? basis.n : kmax, run.swapBudget};
  latticelll::Reduction<T, R>(*this)->pass(status);
  run.swapBudget = nextBudget(run.swapBudget, run.swapBudgetFloor, status.counts);
  run.lastPass = status.counts;
  return std::min(status.k, from);
}

template <class T, class R>
bool Lattice<T, R>::reduce(Index count) {
  if (count == 0) count = basis.n;
  if (params.deep) sortBasis(count);
  latticelll::Reduction<T, R> reduction(*this);
  R before = NumberTraits<R>::infinity();
  for (int fruitless = 0; fruitless < latticelll::maxFruitlessPasses;) {
    // With a budget the rows behind the last test would be size-reduced by data of rows in which
    // lengths are lost by cancellation, as in any basis that is far from reduced.
    PassStatus status{1, count, count, std::numeric_limits<Index>::max()};
    reduction->pass(status);
    run.lastPass = status.counts;
    if (searchIsOver()) return false;
    if (reduction->renewLongData(count) && reduction->isReduced(count)) return true;
    const R after = reduction->potential(count);
    // Rounding errors can cause the same swaps again and again, which gain nothing.
    if (run.lastPass.swaps == 0 || !(after < before)) ++fruitless;
    before = after;
    reduction->unmarkUnreduced(count);
  }
  return false;
}

template <class T, class R>
bool Lattice<T, R>::searchIsOver() const {
  return frame.latticeKind != LatticeKind::equations && stopped();
}

}  // namespace starsift
