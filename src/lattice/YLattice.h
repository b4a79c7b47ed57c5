// A lattice in two precisions: long double as long as that works, exact rationals where it
// doesn't. How a step moves from one to the other is in TwoPrecisions.h.
#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "lattice/Lattice.h"
#include "numbers/QQ.h"
#include "numbers/TwoPrecisions.h"

namespace starsift {

/// What the console shows of a change of precision: from verb 2 on.
struct SwitchReports {
  static void toExact(const auto& standard) {
    say(standard.params.verb, "Switching to extended lattice precision");
  }
  static void toStandard(const auto& standard) {
    say(standard.params.verb, "Using standard lattice precision");
  }
  /// Ends the block of the failed step.
  static void stepFailed(const auto& exact) { closeBlock(exact.params.verb); }

 private:
  static void say(long verb, const char* message);
  static void closeBlock(long verb);
};

/// R is the fast number type.
template <class R>
class YLattice {
 public:
  using Standard = Lattice<R, R>;
  using Exact = Lattice<QQ, R>;

  YLattice();
  YLattice(const YLattice&) = delete;
  YLattice& operator=(const YLattice&) = delete;
  virtual ~YLattice();

  // As in TwoPrecisions.
  void useExtendedPrecision() { lattices_.useExtended(); }
  void useStandardPrecision() { lattices_.useStandard(); }
  void tryStandardPrecision() { lattices_.tryStandard(); }
  template <class Step>
  auto runStep(Step step, OnFailure onFailure = OnFailure::restore) {
    return lattices_.runStep(std::move(step), onFailure);
  }
  template <class Use>
  auto withLive(Use use) {
    return lattices_.withLive(std::move(use));
  }
  template <class Use>
  auto withLive(Use use) const {
    return lattices_.withLive(std::move(use));
  }
  bool usesExact() const { return lattices_.usesExact(); }
  Standard& standard() { return lattices_.standard(); }
  Exact& exact() { return lattices_.exact(); }
  const Standard& standard() const { return lattices_.standard(); }
  const Exact& exact() const { return lattices_.exact(); }

  // Steps of Lattice.
  void normalise(TargetRange range, From from);
  bool prepareLattice();
  void sortBasis(Index count);
  /// What the pass did.
  PassCounts lllPass(Index from, Index to, Index kmax);
  /// RestartException passes through; the lattice in use is a new one then.
  void restartHandling(Outcome outcome);
  /// Makes sure that the basis of the full lattice spans it and writes the lattice file.
  void saveLattice();
  bool readStarsFromSolFile(StarReading reading);
  bool readStarsExactly(StarReading reading);
  bool checkStars();
  void writeSolFile(Stars what);
  std::string solutionsText();

  // On the live lattice: what can't lose precision.

  void setFileNames(const std::string& path);

  // On the exact lattice: fatal unless it is live, "The exact precision is not in use".

  /// Reads the problem: the numbers of a file are rationals. Fatal if it can't be read.
  void readOpt();
  /// The problem as read has no points between the tolerance of its equations and their exact
  /// value: see Exactness.h.
  bool equationsHoldExactly() const;
  /// Lattice::tightenBounds().
  void tightenBounds();
  /// Sets parameters, as readArguments().
  void readParams(const std::vector<std::string>& arguments);

  // Of the search in the live lattice.

  /// Lattice::starsFiledAfter(): exact whatever lattice is live, and for an observer in the
  /// middle of a step too.
  Array<Star<QQ>> starsFiledAfter(Index last) const;
  /// The last number given to a filed solution; a step that lost precision doesn't take it back.
  Index lastFiled() const;
  /// From now on `observer` hears of all reductions, and times count from the start of the
  /// process, which has been running for `elapsed`. The search ends by stopped(), never the
  /// process, and leaves the files to others.
  void beginSearch(ReductionObserver& observer, std::chrono::steady_clock::duration elapsed);
  /// Nobody hears of reductions any more.
  void endSearch();
  /// The search has ended by itself.
  bool stopped() const;
  /// What the search was to find is filed.
  bool isSatisfied() const;
  /// Solutions that are filed in the lattice itself, as opposed to its stars.
  Index solutionCount() const;
  /// Regenerations so far.
  Index restarts() const;
  bool hasStars() const;
  /// SolutionFile::problemNumber() of the problem as read.
  std::uint64_t problemNumber() const;
  /// The problem as read says what makes one solution better than another.
  bool hasTargets() const;
  /// Those of the live lattice; snorm and tnorm, whose types differ, are in the table only.
  const Params& params() const;
  void sortStars();
  void removeDuplicates(Duplicates duplicates);
  /// The text of solutionsText(), piece by piece.
  void writeSolutions(std::ostream& stream) const;
  /// Gates all writing of result files.
  void setOutputSwitch(bool on);

 private:
  TwoPrecisions<Standard, Exact, SwitchReports> lattices_;
};

extern template class YLattice<long double>;

}  // namespace starsift
