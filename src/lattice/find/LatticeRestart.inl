// Lattice: the end of a search that has met its goal, and the restart of one that hasn't.
#pragma once

#include <csignal>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "lattice/Lattice.h"
#include "lattice/make/StarsAside.h"
#include "system/Console.h"

namespace starsift {

namespace latticerestart {

/// Text of the run state once a search has ended.
constexpr std::string_view stoppedText = "stopped";

/// Rows that are added to or subtracted from a row in a random change, at most.
constexpr int maxMixedRows = 3;

inline void openBlock(bool verbose, std::string_view title) {
  if (!verbose) return;
  reportStream() << openStamp(false) << ' ' << title << endLine();
  stampOutputTime();
}

inline void closeBlock(bool verbose) {
  if (!verbose) return;
  reportStream() << endLine() << closeStamp(true);
  stampOutputTime();
}

/// An index from 1 to `count`.
inline Index randomIndex(std::mt19937_64& random, Index count) {
  return static_cast<Index>(random() % static_cast<std::uint64_t>(count)) + 1;
}

template <class T, class R>
void shuffleBasis(Basis<T, R>& basis, std::mt19937_64& random) {
  for (Index i = basis.n; i >= 2; --i) basis.swap(i, randomIndex(random, i), RowStatus::forget);
}

/// Makes a random unimodular change of the basis, another one after each restart: an order alone
/// leaves the rows as they are, and reduction takes it to much the same basis. The entries grow
/// by a factor of 1 + maxMixedRows at most, as a row is changed after all rows that it is added
/// to.
template <class T, class R>
void variateBasis(Lattice<T, R>& lattice) {
  Basis<T, R>& basis = lattice.basis;
  std::mt19937_64 random(lattice.run.seed + static_cast<std::uint64_t>(lattice.run.restarts));
  shuffleBasis(basis, random);
  for (Index k = basis.n; k >= 2; --k)
    for (int mixed = 0; mixed < maxMixedRows; ++mixed)
      basis.subtract(k, {{randomIndex(random, k - 1), random() % 2 == 0 ? R(1) : R(-1)}});
  basis.forgetFrom(1);
  shuffleBasis(basis, random);
}

/// What the coordinates of the raw vectors of a lattice mean, beside the problem.
template <class T, class R>
struct Meaning {
  explicit Meaning(const Lattice<T, R>& lattice)
      : c(lattice.frame.c),
        l(lattice.frame.l),
        r(lattice.frame.r),
        targetShift(lattice.atuValid ? T(lattice.ltu + lattice.rtu) : T()) {}

  bool operator==(const Meaning& other) const {
    return c.dimension() == other.c.dimension() && identical(c, other.c) && identical(l, other.l) &&
           identical(r, other.r) && targetShift == other.targetShift;
  }

  Vector<T> c;
  Vector<T> l;
  Vector<T> r;
  T targetShift;
};

/// Regenerates a lattice without stars; clears the switches.
template <class T, class R>
void makeAnew(Lattice<T, R>& lattice) {
  const Meaning<T, R> before(lattice);
  ShortVectors<T> shortVectors = std::move(lattice.found.shortVectors);
  VectorBackup<T, R> backup = lattice.backupVectors(BackupMode::points);
  lattice.run.outputSwitch = false;
  lattice.run.terminationSwitch = false;
  lattice.reset(nullptr, LatPath::keep);
  lattice.normalise(TargetRange::omit, From::lifted);
  lattice.prepareLattice();
  lattice.restoreVectors(std::move(backup), BackupMode::points);
  // The same lattice as before, of which another basis is looked for.
  if (Meaning<T, R>(lattice) == before) lattice.found.shortVectors = std::move(shortVectors);
  if (lattice.params.variate) variateBasis(lattice);
}

}  // namespace latticerestart

template <class T, class R>
void Lattice<T, R>::restartHandling(Outcome outcome) {
  const bool finished = outcome == Outcome::finished;
  const bool verbose = params.verb == 2;
  latticerestart::openBlock(verbose, "Restart / termination handling ...");
  if (run.outputSwitch) writeResults();
  if (!run.terminationSwitch) {
    latticerestart::closeBlock(verbose);
    return;
  }
  if (verbose || finished) {
    reportStream() << statusText();
    stampOutputTime();
    reportStream() << endLine();
    stampOutputTime();
  }
  if (!finished && run.restarts != params.iters) {
    regenerateLattice();
    ++run.restarts;
    if (run.outputSwitch) writeResults();
    latticerestart::closeBlock(verbose);
    throw RestartException("Lattice was regenerated");
  }
  if (params.stopping)
    run.runVariables[MainMutexVariable::runState].set(std::string(latticerestart::stoppedText));
  else
    std::raise(SIGTERM);
}

template <class T, class R>
bool Lattice<T, R>::stopped() const {
  return run.runVariables.find(MainMutexVariable::runState)->copied() ==
         latticerestart::stoppedText;
}

template <class T, class R>
void Lattice<T, R>::writeResults() {
  writeSolFile(Stars::withSolutions);
  if (basis.n > 0 && frame.latticeKind == LatticeKind::full)
    verifyTransformation(LatticeKind::full, Announce::full);
}

template <class T, class R>
void Lattice<T, R>::regenerateLattice() {
  latticerestart::openBlock(params.verb == 2, "Regenerating lattice ...");
  {
    const StarsAside<T> aside(file.stars);
    auto next = std::make_unique<Lattice>();
    next->assignFrom(*this, Settings::copy);
    next->run.observer = run.observer;
    latticerestart::makeAnew(*next);
    next->run.outputSwitch = run.outputSwitch;
    next->run.terminationSwitch = run.terminationSwitch;
    assignFrom(*next, Settings::keep);
    // Tracking that the former lattice had turned on by itself ends with that lattice.
    setTracking(next->params.consistency);
  }
  writeSolFile(Stars::withSolutions);
  writeLatFile();
  latticerestart::closeBlock(params.verb == 2);
}

}  // namespace starsift
