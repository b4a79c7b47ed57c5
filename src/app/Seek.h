// The job of the command starseek: to find solutions of a problem by reducing its lattice.
#pragma once

#include <chrono>
#include <iosfwd>
#include <optional>

#include "app/Decide.h"
#include "app/DirectStars.h"
#include "app/HelperLattices.h"
#include "app/Jump.h"
#include "app/PartSearch.h"
#include "app/SavePace.h"
#include "app/SearchWatch.h"
#include "app/SeekArguments.h"
#include "app/SolutionSink.h"
#include "app/Verdict.h"
#include "lattice/YLattice.h"

namespace starsift {

/// Makes the lattice exact, as the numbers of a problem are rationals, and gives it what the
/// arguments say of a search: parameters, seed, and whether the best solution is looked for.
void applyArguments(YLattice<long double>& lattice, const SeekArguments& given);

/// One search, from reading the files to writing them.
///
/// Its limits are parameters of the lattice: `sol` solutions, with targets `tnorm` and `snorm`,
/// `iters` passes, `rtime` seconds; without any limit it ends after 20 restarts without a new
/// solution. A signal ends it too (see Interrupt.h).
///
/// A fatal report ends the process; solutions found before are on disk then.
class Seek {
 public:
  /// `lattice` is exact and has its parameters and file names. Reports go to `report`.
  Seek(YLattice<long double>& lattice, SearchWatch& watch, SeekOptions options,
       std::ostream& report);

  /// Reads problem and stars, searches, and writes the results.
  SearchEnd run();

  /// The search alone: in the problem that the exact lattice has as read. Solutions go to `sink`.
  SearchEnd search(SolutionSink& sink);

  /// What the search has found and proved, by the stars in `sink`; also after a fatal report.
  SearchResult result(const SolutionSink& sink, bool anyStars) const;

  /// All solutions that run() has found are in the solution file.
  bool starsFiled() const { return starsFiled_; }
  /// A part was to be searched, and something of it is left.
  bool leavesPart() const { return part_ && !part_->isOver(); }
  /// There are no parts of this problem.
  bool hasNoParts() const { return part_ && part_->isImpossible(); }

 private:
  void readProblem();
  /// The files of the part become those of the lattice.
  void choosePart();
  SearchEnd searchAll();
  /// Writes the state of the tree, whose solutions are on disk.
  void finishTree();
  /// The picture of --profile. It changes nothing that is searched.
  void drawPicture();
  void makeNormalForm();
  void searchLattices();
  void decide();
  void jump();
  void lookBeside();
  std::chrono::duration<double> jumpTimeLeft() const;
  void searchLattice();
  void runPass();
  void restartLattice();
  void saveLattice();
  void conclude(SearchEnd end);
  void saveLastLattice(SearchEnd end);
  bool hasMadeAllPasses() const;
  Index solutionCount() const;
  void writeStatus();
  void writeStatistics(SearchEnd end);
  bool isOver() const;

  YLattice<long double>& lattice_;
  SearchWatch& watch_;
  SeekOptions options_;
  std::ostream& report_;
  /// During search().
  SolutionSink* sink_ = nullptr;
  std::optional<DirectStars> stars_;
  std::optional<Decide> decide_;
  std::optional<Jump> jump_;
  std::optional<HelperLattices> helpers_;
  /// Instead of all others.
  std::optional<PartSearch> part_;
  /// Of the tree, or of its part; there known is the least target norm in the solution file of the
  /// problem, of points that searches look at.
  TreeFiles treeFiles_;
  std::chrono::duration<double> decideTime_{};
  std::chrono::duration<double> jumpTime_{};
  ProofScope scope_;
  /// Passes that the search may make; no limit if negative.
  long passLimit_ = -1;
  /// The parameters set a limit.
  bool limited_ = false;
  /// The rows contradict the bounds: see tightenBounds().
  bool rowsContradict_ = false;
  /// The reduction of the present lattice has lost its precision.
  bool isLost_ = false;
  /// Limits the writes of the lattice file: some problems restart a thousand times a second.
  SavePace latticePace_;
  bool starsFiled_ = true;
  /// Restarts since the last new solution, and the number of solutions then.
  Index fruitless_ = 0;
  Index solutionsBefore_ = 0;
};

}  // namespace starsift
