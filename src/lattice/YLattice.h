// A lattice in two precisions: long double while it holds every number, exact rationals
// otherwise. TwoPrecisions.h describes how a step moves from one to the other.
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

/// Console reports of a change of precision, from verb 2 on.
struct SwitchReports {
  static void toExact(const auto& standard) {
    say(standard.params.verb, "Switching to extended lattice precision");
  }
  static void toStandard(const auto& standard) {
    say(standard.params.verb, "Using standard lattice precision");
  }
  /// Closes the console block of the failed step.
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
  /// Verifies that the basis of the full lattice still spans it and writes the lattice file.
  void saveLattice();
  bool readStarsFromSolFile(StarReading reading);
  bool readStarsExactly(StarReading reading);
  bool checkStars();
  void writeSolFile(Stars what);
  std::string solutionsText();

  // On the live lattice: operations that can't lose precision.

  void setFileNames(const std::string& path);

  // On the exact lattice: fatal unless it is live, "The exact precision is not in use".

  /// Reads the problem: the numbers of a file are rationals. Fatal if it can't be read.
  void readOpt();
  /// The same for a problem in memory, which is as a reader gives it.
  void takeProblem(const Vanu<QQ>& problem);
  /// The problem as read; a reference to the exact lattice.
  const Vanu<QQ>& problemAsRead() const;
  /// Lattice::tightenBounds().
  bool tightenBounds();
  /// Sets parameters, as readArguments().
  void readParams(const std::vector<std::string>& arguments);

  // Of the search in the live lattice.

  /// Lattice::starsFiledAfter(): exact whichever lattice is live; an observer may call it in the
  /// middle of a step.
  Array<Star<QQ>> starsFiledAfter(Index last) const;
  /// The last number given to a filed solution; kept when a step that lost precision is repeated.
  Index lastFiled() const;
  /// From now on `observer` is notified of all reductions, and times count from the start of the
  /// process, which has been running for `elapsed`. The end of the search makes stopped() true
  /// and never ends the process; the lattice writes no files.
  void beginSearch(ReductionObserver& observer, std::chrono::steady_clock::duration elapsed);
  /// Chooses the random changes of restarts; 1 unless it is set.
  void setSeed(std::uint64_t seed);
  std::uint64_t seed() const;
  /// With targets the parameter sol no longer ends the search.
  void seekBest();
  bool seeksBest() const;
  /// Removes the observer.
  void endSearch();
  /// The lattice has ended the search.
  bool stopped() const;
  /// Lattice::isSatisfied(), meetsNorms(), paramsText(), signStar() and statusText().
  bool isSatisfied() const;
  bool meetsNorms(const Star<QQ>& star) const;
  std::string paramsText() const;
  void signStar(Star<QQ>& star, const std::string& paramsText) const;
  std::string statusText(const Array<Star<QQ>>& others, Index further) const;
  /// Number of solutions filed in the lattice itself, as opposed to its stars.
  Index solutionCount() const;
  /// Regenerations so far.
  Index restarts() const;
  bool hasStars() const;
  /// SolutionFile::problemNumber() of the problem as read.
  std::uint64_t problemNumber() const;
  /// The problem as read has targets.
  bool hasTargets() const;
  /// Parameters of the live lattice, without snorm and tnorm, whose types depend on it.
  const Params& params() const;
  void sortStars();
  void removeDuplicates(Duplicates duplicates);
  /// The text of solutionsText(), piece by piece.
  void writeSolutions(std::ostream& stream) const;
  /// Turns the writing of result files on or off.
  void setOutputSwitch(bool on);

 private:
  TwoPrecisions<Standard, Exact, SwitchReports> lattices_;
};

extern template class YLattice<long double>;

}  // namespace starsift
