// A lattice in two precisions. The code above sees one lattice: a step runs in
// long double as long as that works and is repeated in exact rationals when it
// throws PrecisionException.
#pragma once

#include <chrono>
#include <concepts>
#include <iosfwd>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "files/SolWriter.h"
#include "lattice/Lattice.h"
#include "numbers/QQ.h"
#include "system/Console.h"
#include "system/Exceptions.h"

namespace starsift {

/// What a step leaves of the lattice when it throws.
enum class OnFailure {
  /// Anything: the wrapper takes a snapshot before the step and restores it.
  restore,
  /// The state from before the step: a snapshot would only cost time and memory.
  unchanged,
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

  /// Makes the exact lattice the live one. Nothing when it is already.
  void useExtendedPrecision();

  /// Makes the standard lattice the live one. Throws PrecisionException where it
  /// can't hold a number; the exact lattice stays live then. Nothing when it is
  /// live already.
  void useStandardPrecision();

  /// The same, staying in the exact lattice without a word where it has to.
  void tryStandardPrecision();

  /// Runs `step(lattice)`, a generic callable, on the live lattice and returns its
  /// result. After a run on the exact lattice tries to come back.
  ///
  /// A PrecisionException of the standard lattice repeats the step in the exact
  /// one on the restored state; what the first run printed stays printed. A
  /// DecimalPrecisionException is no such case: it leaves as a plain
  /// PrecisionException with the same message, the lattice as the step left it.
  /// All other exceptions, and those of the exact lattice, pass through.
  template <class Step>
  auto runStep(Step step, OnFailure onFailure = OnFailure::restore);

  /// Runs `use(lattice)` on the live lattice; no failover.
  template <class Use>
  auto withLive(Use use) {
    return useExact_ ? use(exact_) : use(standard_);
  }
  template <class Use>
  auto withLive(Use use) const {
    return useExact_ ? use(exact_) : use(standard_);
  }

  // Steps of Lattice.
  void normalise(bool generate, bool force);
  bool prepareLattice();
  void sortBasis(Index count);
  /// What the pass did.
  PassCounts lllPass(Index from, Index to, Index kmax);
  /// RestartException passes through; the lattice in use is a new one then.
  void restartHandling(bool finished);
  /// Makes sure that the basis of the full lattice spans it and writes the lattice file.
  void saveLattice();
  bool readStarsFromSolFile(bool peek);
  bool readStarsExactly(bool peek);
  bool checkStars();
  void writeSolFile(bool complete);
  std::string solutionsText();
  /// Writes the stars to another file than that of the lattice, or to that one whatever the
  /// output switch says. Returns what is there then.
  WrittenFile writeStarsTo(const std::string& path);

  // On the live lattice: what can't lose precision.

  /// Derives the file names on the standard lattice, which must be live.
  void setFileNames(const std::string& path);
  /// Reads the problem into the exact lattice, which must be live: the numbers of
  /// a file are rationals. Fatal where it can't be read.
  void readOpt();
  /// The problem that readOpt() read has no points between the tolerance of its equations
  /// and their exact value: see Exactness.h. The exact lattice must be live, and neither
  /// narrowed nor normalised yet.
  bool equationsHoldExactly() const;
  /// Narrows the bounds of the problem that readOpt() read to what its rows allow. The exact
  /// lattice must be live, and not normalised yet.
  void tightenBounds();
  /// Sets parameters of the exact lattice, which must be live, as readArguments().
  void readParams(const std::vector<std::string>& arguments);
  /// Takes problem and paths of `other` into a fresh exact lattice.
  void takeProblem(const YLattice& other);
  /// All stars as a file has them, in exact numbers.
  std::string starsText() const;
  /// Appends stars.
  void addStars(Array<Star<QQ>> added);
  /// The solutions found as stars. In exact numbers whatever lattice is live, and beside it,
  /// so that an observer may ask in the middle of a step.
  Array<Star<QQ>> solutionStars() const;
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
  /// The problem as read says what makes one solution better than another.
  bool hasTargets() const;
  /// Those of the live lattice; snorm and tnorm, whose types differ, are in the table only.
  const Params& params() const;
  void sortStars();
  void removeDuplicates(bool compareParams);
  /// The text of solutionsText(), piece by piece.
  void writeSolutions(std::ostream& stream) const;
  /// Gates all writing of result files.
  void setOutputSwitch(bool on);

  bool usesExact() const { return useExact_; }
  Standard& standard() { return standard_; }
  Exact& exact() { return exact_; }

 private:
  void failOver(Index consoleDepth);

  /// Live while useExact_ is false.
  Standard standard_;
  /// Snapshot of standard_ from before a step.
  Standard backup_;
  /// Live while useExact_ is true.
  Exact exact_;
  bool useExact_ = false;
};

template <class R>
template <class Step>
auto YLattice<R>::runStep(Step step, OnFailure onFailure) {
  if (!useExact_) {
    const Index depth = consoleDepth();
    if (onFailure == OnFailure::restore) backup_.assignFrom(standard_, false);
    try {
      return step(standard_);
    } catch (const DecimalPrecisionException& exception) {
      throw PrecisionException(exception.message());
    } catch (const PrecisionException&) {
      if (onFailure == OnFailure::restore) standard_.assignFrom(backup_, false);
      failOver(depth);
    }
  }
  if constexpr (std::is_void_v<std::invoke_result_t<Step, Exact&>>) {
    step(exact_);
    tryStandardPrecision();
  } else {
    auto result = step(exact_);
    tryStandardPrecision();
    return result;
  }
}

extern template class YLattice<long double>;

}  // namespace starsift
