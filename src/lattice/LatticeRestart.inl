// Lattice: what a search does when it has found what it looked for, or gets no further.
#pragma once

#include <csignal>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "lattice/Lattice.h"
#include "lattice/StarsAside.h"
#include "system/Console.h"

namespace starsift {

namespace latticerestart {

/// What the run state says once a search has ended.
constexpr std::string_view stoppedText = "stopped";

/// Shuffles repeat from run to run.
constexpr std::uint64_t shuffleSeed = 20240229;

inline void openBlock(bool verbose, std::string_view title) {
  if (!verbose) return;
  std::cout << openStamp(false) << ' ' << title << endLine();
  stampOutputTime();
}

inline void closeBlock(bool verbose) {
  if (!verbose) return;
  std::cout << endLine() << closeStamp(true);
  stampOutputTime();
}

}  // namespace latticerestart

template <class T, class R>
void Lattice<T, R>::restartHandling(bool finished) {
  const bool verbose = params.verb == 2;
  latticerestart::openBlock(verbose, "Restart / termination handling ...");
  if (outputSwitch) writeResults();
  if (!terminationSwitch) {
    latticerestart::closeBlock(verbose);
    return;
  }
  if (verbose || finished) {
    std::cout << statusText();
    stampOutputTime();
    std::cout << endLine();
    stampOutputTime();
  }
  if (!finished && restarts != params.iters) {
    regenerateLattice();
    ++restarts;
    if (outputSwitch) writeResults();
    latticerestart::closeBlock(verbose);
    throw RestartException("Lattice was regenerated");
  }
  if (params.stopping)
    runVariables[MainMutexVariable::runState].set(std::string(latticerestart::stoppedText));
  else
    std::raise(SIGTERM);
}

template <class T, class R>
bool Lattice<T, R>::stopped() const {
  return runVariables.find(MainMutexVariable::runState)->copied() == latticerestart::stoppedText;
}

template <class T, class R>
void Lattice<T, R>::writeResults() {
  writeSolFile(false);
  if (n > 0 && latticeKind == LatticeKind::full) verifyTransformation(false, false);
}

template <class T, class R>
void Lattice<T, R>::regenerateLattice() {
  latticerestart::openBlock(params.verb == 2, "Regenerating lattice ...");
  {
    const StarsAside<T> aside(file.stars);
    auto next = std::make_unique<Lattice>();
    next->assignFrom(*this, false);
    next->observer = observer;
    next->makeAnew();
    next->outputSwitch = outputSwitch;
    next->terminationSwitch = terminationSwitch;
    assignFrom(*next, true);
    // Tracking that the former lattice had turned on ended with it.
    setTracking(next->params.consistency);
  }
  writeSolFile(false);
  writeLatFile();
  latticerestart::closeBlock(params.verb == 2);
}

template <class T, class R>
void Lattice<T, R>::makeAnew() {
  VectorBackup<T, R> backup = backupVectors(BackupMode::points);
  outputSwitch = false;
  terminationSwitch = false;
  reset(nullptr, false);
  this->normalise(false, false);
  prepareLattice();
  restoreVectors(std::move(backup), BackupMode::points);
  if (params.variate) shuffleBasis();
}

template <class T, class R>
void Lattice<T, R>::shuffleBasis() {
  std::mt19937_64 random(latticerestart::shuffleSeed + static_cast<std::uint64_t>(restarts));
  for (Index i = n; i >= 2; --i) {
    const auto j = static_cast<Index>(random() % static_cast<std::uint64_t>(i)) + 1;
    swapBasisVectors(i, j, false);
  }
}

}  // namespace starsift
