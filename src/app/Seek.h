// The job of the command starseek: solutions of a problem by reduction of its lattice.
#pragma once

#include <iosfwd>

#include "app/SavePace.h"
#include "app/SearchWatch.h"
#include "lattice/YLattice.h"

namespace starsift {

/// One search, from the files to the files.
///
/// Its limits are parameters of the lattice: `sol` solutions, where there are targets
/// `tnorm` and `snorm`, `iters` passes, `rtime` seconds; with none of them it ends when it
/// restarted 20 times without a new solution. A signal ends it too (see Interrupt.h).
///
/// A fatal report ends the process; what was found before is on disk then.
class Seek {
 public:
  /// `lattice` is exact, as the numbers of a problem are rationals, and has its parameters
  /// and file names. Reports go to `report`.
  Seek(YLattice<long double>& lattice, SearchWatch& watch, std::ostream& report);

  /// Reads problem and stars, searches, and writes what there is.
  SearchEnd run();

 private:
  SearchEnd search();
  void reduceLattice();
  PassCounts runPass();
  void restartLattice();
  void saveLattice();
  void conclude(SearchEnd end);
  void writeStatistics(SearchEnd end);
  void writeVerdict(bool anyStars);
  bool isOver() const;

  YLattice<long double>& lattice_;
  SearchWatch& watch_;
  std::ostream& report_;
  /// Passes that the search may make; negative: no limit.
  long passLimit_ = -1;
  /// Somebody said when to end.
  bool limited_ = false;
  /// Of the lattice file: some problems restart a thousand times a second.
  SavePace latticePace_;
  /// Restarts since the last new solution, and the solutions there were then.
  Index fruitless_ = 0;
  Index solutionsBefore_ = 0;
};

}  // namespace starsift
