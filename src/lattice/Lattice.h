// The central object: a problem, the lattice made from it, and its solutions.
//
// Lattice<T,R> is one record with many operations, T the element type of problem and basis, R
// that of Gram-Schmidt data and scores. Its state is in the parts below (lattice/state), each
// of which resets, resizes and converts itself; the operations follow in the order of a run.
// This file declares; the bodies are in the files named, which LatticeStandard.cpp (T = long
// double) and LatticeExact.cpp (T = QQ) instantiate. An operation that needs only matrices,
// vectors or stars is a free function on a lower floor.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>

#include "files/SolutionFile.h"
#include "lattice/Ways.h"
#include "lattice/find/CheckBits.h"
#include "lattice/find/VectorBackup.h"
#include "lattice/state/Basis.h"
#include "lattice/state/CoordinateFrame.h"
#include "lattice/state/FoundVectors.h"
#include "lattice/state/GramSchmidtData.h"
#include "lattice/state/RunState.h"
#include "params/ExtendedParams.h"
#include "problem/Vanu.h"

namespace starsift {

/// A problem (the base: its working copy in normal form) with its lattice state.
template <class T, class R>
class Lattice : public Vanu<T>, private ParamReactions {
 public:
  // Parts

  /// The rows in raw and working space, and the data that move with each row.
  Basis<T, R> basis;
  /// mu, cLen, bSq and Q of the rows of B.
  GramSchmidtData<R> gramSchmidt;
  /// The meaning of each coordinate, and the box of the solutions.
  CoordinateFrame<T> frame;
  /// Best vectors and solutions.
  FoundVectors<T, R> found;
  /// Observer, counters, budgets, switches.
  RunState run;
  /// Settings of the run; never reset.
  ExtendedParams<T> params;
  /// The problem as read and its stars, from files and searches; never reset.
  SolutionFile<T> file;
  /// The problem that lattices are made from: as read, then tightened and lifted. Empty before
  /// the first of these steps, never reset.
  Vanu<T> optOriginal;
  /// Path of the lattice file.
  std::string latFile;

  // Record and lifecycle: make/LatticeRecord.inl

  /// `source`, unless null, becomes the generated basis.
  explicit Lattice(const Matrix<T>* source = nullptr);
  Lattice(const Lattice&) = delete;
  Lattice& operator=(const Lattice&) = delete;
  ~Lattice() override;

  /// Resets to a lattice with the basis `source`, or without a basis if null, and without
  /// solutions and check vectors. Problem, parameters and stars stay.
  void reset(const Matrix<T>* source, LatPath path);
  /// Sizes everything that has an entry per basis vector (newN) or coordinate (newM; 0 keeps
  /// m); new entries are 0. With Vectors::discard best vector, best target and solutions are
  /// cleared. Otherwise stored vectors are resized without a check: it would reject every one of
  /// them, as the check vectors still have the old length. An operation that changes a lattice
  /// with stored vectors makes a backup first. A negative size does nothing.
  void resize(Index newN, Index newM, Vectors stored);
  /// Copies the whole state of `other`, every number converted strictly, and with Settings::copy
  /// the parameters. PrecisionException if T can't hold a number; the state is partly assigned
  /// then.
  template <class U>
  void assignFrom(const Lattice<U, R>& other, Settings settings);
  /// assignFrom(other, Settings::copy).
  template <class U>
  void convertFrom(const Lattice<U, R>& other);
  /// Frees the problem, as read and lifted, and the stars: for a lattice whose state is assigned
  /// from another one before its next use.
  void release();
  /// The basis does what parameters say that were set without reactions, before it has rows.
  void followParams();
  /// Sets the parameter consistency without its reaction.
  void setTracking(bool on);

  // Normal form of the problem: make/LatticeNormalise.inl

  /// Makes this record, the working copy, the normal form of the problem: integer rows,
  /// inequations with two finite bounds, independent equations, variables from 0 on or free.
  ///
  /// The first call makes optOriginal, which is lifted: inequations with one bound become
  /// equations with a slack, targets with a finite goal become equations with deviations; with
  /// TargetRange::find the range of the target value is computed as well. Later calls only rebuild
  /// the working copy, unless From::read starts again from the problem as read.
  ///
  /// A problem whose bounds prove that it has no solution is fatal, three texts that end with
  /// "--> NO SOLUTIONS!"; so are bounds that can't be used. PrecisionException if T can't hold a
  /// number safely.
  void normalise(TargetRange range, From from);
  /// The part of normalise() that brings the working copy, already lifted, to normal form. With
  /// `verbose` dependent equations are reported; with `verbose` or on the `first` call for a
  /// problem also inequations that became equations, and negated variables.
  void normaliseCopy(bool verbose, bool first);
  /// Sets the problem as if it had been read; the paths stay.
  void setProblem(Vanu<T> problem);
  /// Narrows the bounds that lattices are made from by tightenBounds(), and returns its result;
  /// stars are judged by the problem as read. Fatal after normalise(): "tightenBounds: the problem
  /// is normalised".
  bool tightenBounds() requires std::same_as<T, QQ>;

  // Mapping between the three spaces: make/LatticeMapping.inl
  //
  // Problem space has the values of the user, raw space the coordinates of B_save, working space
  // the coordinates of B. The homogenising factor h of a point is 1 unless it is given. Nothing
  // is rounded: a PrecisionException if T can't hold a result.

  /// The blocks of the present coordinates.
  CoordinateBlocks blocks() const;
  /// The vector, in `space`, of a point of the problem, constants included; `out` is unchanged
  /// after an exception. ModuloException "modulo equation inconsistency" if a congruence is
  /// violated whose modulus is no coordinate. Fatal: before generation ("opt2lat called with
  /// uninitialized check vectors!"), and without `hom` a point that violates a lifted inequation
  /// ("slack variable inconsistency, s should be >= 0").
  void opt2lat(const Vector<T>& x, Vector<T>& out, Space space,
               const std::optional<T>& hom = std::nullopt) const;
  /// Stores the point of a raw vector in `out` and returns its h: only if that is 1 is it a point
  /// of the problem. Slacks and deviations have the units of the problem; with
  /// Orientation::either a vector with h = -1 counts as its negative. PrecisionException
  /// "lat_vec overflow" or "opt_vec overflow1" if an entry or a result leaves the safe range of
  /// T; `out` is unchanged then. Fatal: before generation ("lat2opt called with uninitialized
  /// check vectors!"), a vector that is empty ("lat_vec == 0") or doesn't have m entries
  /// ("lat_vec doesn't match lattice dimension").
  T lat2opt(const Vector<T>& vector, Vector<T>& out, Constants constants, Slacks slacks,
            Orientation orientation) const;
  /// From raw to working space and back: a vector, or every row.
  Vector<T> forwardMap(const Vector<T>& vector) const;
  Vector<T> backMap(const Vector<T>& vector) const;
  Matrix<T> forwardMapAll(const Matrix<T>& rows) const;
  Matrix<T> backMapAll(const Matrix<T>& rows) const;
  /// The n coordinates of a raw vector. False, `out` unchanged, if there are none. The factors of
  /// the basis are cached: for integers over independent rows a BasisSolver, else factorBasis().
  /// Throws as these.
  bool coordinatesOf(const Vector<T>& vector, Vector<T>& out, Over over,
                     Coordinates kind = Coordinates::integer);
  /// The coordinates of every row. PrecisionException "transformation coord error" if a row has
  /// none.
  Matrix<T> coordinatesOfAll(const Matrix<T>& rows, Over over,
                             Coordinates kind = Coordinates::integer);

  // Generation: make/LatticeGenerate.inl

  /// Makes the lattice of the problem in normal form, its equations removed, ready to be reduced;
  /// stars stay. Solutions filed in the previous lattice become stars. Returns true. Fatal: "The
  /// equation system has no integer solution :(", and as generateLattice().
  bool prepareLattice();
  /// Makes B_save, B and the check vectors of the equation lattice or of the full lattice, which
  /// has inequations and target. PrecisionException "R overflow" or "B_save overflow2". Fatal:
  /// "ineq bounds error1", "ineq bounds error2", "sol bounds error".
  void generateLattice(LatticeKind kind);
  /// The half width of the box, a common multiple of the ranges of the variables and, for the
  /// full lattice, of the rows. May lower ltu. Throws and fails as generateLattice().
  T computeR(LatticeKind kind);
  /// Widens the range of variables that are free above but have bounds, towards a small multiple
  /// with rangeMultiple; with `useLcm` that becomes a multiple of all ranges.
  void extendBounds(bool useLcm);
  /// Removes `count` coordinates from `position` on: those of equations together with as many
  /// vectors at the end of the basis, or those of moduli.
  void removeColumns(ColumnsOf columns, Index count, Index position);

  // Aardal reduction: make/LatticeAardal.inl
  //
  // K. Aardal, C. A. J. Hurkens, A. K. Lenstra, Math. Oper. Res. 25 (2000).

  /// Reduces the equation lattice until its first vectors are a basis of the kernel lattice, the
  /// integer solutions of the homogeneous equations, followed by the other vectors. Returns the
  /// transformation matrices. The lattice is unchanged after an exception: the work is done on a
  /// copy.
  Array<Matrix<T>> aardalReduce();
  /// The same without a copy; the transformation matrices are basis.TT. After an exception the
  /// lattice has to be generated anew; the parameters are unchanged.
  void reduceEquations();
  /// A raw vector of the lattice with homValue, or its negative, as last coordinate; empty if
  /// there is none.
  Vector<T> extractInhomogeneous();

  // Moves of the basis: reduce/LatticeMoves.inl

  /// Basis::swap().
  void swapBasisVectors(Index i, Index j, RowStatus status);
  /// Sorts the first `count` vectors, 0 for all, by ascending length; heap sort by swaps.
  void sortBasis(Index count);
  /// Basis::setScale().
  void setScale(Index i, const T& value);

  // Orthogonalisation: reduce/LatticeOrthogonal.inl
  //
  // As the operations of GramSchmidtData.

  bool classicOrthogonalise(Index from, Index to);
  Index modifiedOrthogonalise(Index from, Index to, OnDependency reaction, LqCache cache);
  Index fullOrthogonalise(Index from, Index to, OnDependency reaction);

  // LLL reduction: reduce/LatticeLll.inl
  //
  // As the operations of LllReduction, with the parameter deep. Every row that is up to date goes
  // through checkRow().

  bool sizeReduce(Index k, bool strict);
  Index swapStep(Index k);
  Index deepInsertStep(Index k);
  Index blendDependent(Index k, Index kmax);
  bool lllStep(Index k, Index kmax, bool& strict);
  /// One pass over the vectors from..to with a budget of swapBudget Lovász tests; tests that were
  /// skipped are left to the next pass. `to` and `kmax` of 0 stand for n. Returns the lowest
  /// index reached; the counts are in run.lastPass. Ends early once the search is stopped or a
  /// dependent vector can't be moved out of the way.
  Index lllPass(Index from, Index to, Index kmax);
  /// Makes passes over the first `count` vectors, 0 for all, until they are reduced; gives up
  /// after 20 passes that gained nothing, or once the search is over. True if the vectors are
  /// reduced up to the first dependent one; no vector after that is independent then.
  bool reduce(Index count);
  /// The search has ended; always false in the equation lattice, which isn't searched.
  bool searchIsOver() const;

  // Block reduction: reduce/LatticeBlocks.inl

  /// Block reduction of the rows, which reduce() has reduced, in blocks that grow up to
  /// `largest` rows, then reduce(); by the parameters eprune, btime, etime and deep. Every row that
  /// changes goes through checkRow(). True if it came to its end: a time limit or the end of the
  /// search makes it false.
  bool reduceBlocks(Index largest);

  // Transformation of the basis: make/LatticeTransform.inl

  /// After a reduction: verifies that B spans the lattice of B_save, then makes the untransformed
  /// B the new B_save and, with Announce::full, writes the lattice file. Within an Aardal
  /// reduction (LatticeKind::equations) a new matrix is pushed onto TT, otherwise TT is reset to
  /// one identity. True if B was the tracked basis.
  ///
  /// If the lattice was lost B is rebuilt from B_save, and tracking starts by the parameter
  /// consistency until the next success. PrecisionException "base matrix overflow", "unimodular
  /// error" or "transformation overflow".
  bool verifyTransformation(LatticeKind stage, Announce announce);
  /// rows = T_k ... T_1 * rows for the matrices of TT. PrecisionException "Overflow when applying
  /// transformation".
  void applyTransformations(Matrix<T>& rows) const;
  /// Appends an identity of order n to TT, unless the last matrix is one already; with
  /// Stack::restart it becomes the only matrix.
  void pushTransformation(Stack stack);

  // Check of vectors: find/LatticeCheck.inl

  /// Is `vector` or its negative a solution of the problem? A solution is filed, `time` its
  /// discovery time (0: now); any other consistent vector competes for bestVector. Returns bits
  /// of CheckBits.h, 0 for no solution. With Announce::full writes the solution file, and ends
  /// the search once its goal is met.
  ///
  /// A solution is consistent, lies in the box of the check vectors, and its point passes the
  /// check of stars on the problem as read. Throws as lat2opt() and opt2lat(). Fatal before
  /// generation: "checkSolution: You should set the check vectors!".
  unsigned checkSolution(const Vector<T>& vector, Space space, std::int64_t time,
                         Announce announce);
  /// Offers row k of B to the short vectors, then checkSolution() of it unless isHopeless(). Does
  /// nothing for a row that is unchanged since its last check.
  void checkRow(Index k);
  /// A vector of working space can't be a solution or become bestVector, consistent or not:
  /// decided by the last coordinate, which is 0 for nearly all vectors of a basis.
  bool isHopeless(const Vector<T>& vector) const;
  /// The vector or its negative, whichever has the sign of homValue in the last coordinate, in
  /// raw space.
  Vector<T> oriented(const Vector<T>& vector, Space space) const;
  /// The raw vector is the image of the point that it stands for, within the tolerance of T, or
  /// with Match::exact exactly. Of a pair of deviations only the difference counts.
  bool isConsistent(const Vector<T>& vector, Match match) const;
  /// The star of a raw vector, its point only, if that is one of the problem. As lat2opt().
  std::optional<Star<T>> starOf(const Vector<T>& raw) const;
  /// The goal of the search is met: as many solutions as the parameter sol requires are filed, or
  /// one whose norm reaches tnorm or snorm. O(solutions).
  bool isSatisfied() const;
  /// The norms of a judged star reach tnorm or snorm; always false in a problem without targets.
  bool meetsNorms(const Star<QQ>& star) const;

  // Scores: find/LatticeScore.inl

  /// Fills the record of a vector.
  void score(VectorScore<R>& record, const Vector<T>& vector, Space space) const;
  /// The coordinates of a raw vector that leave the check vectors, largest amount first.
  Array<RightOrderPair<Index, R>> deviationsOf(const Vector<T>& vector) const;
  /// Stores a raw vector as bestVector if it is the better one; true if bestVector then equals
  /// it. `time` as for checkSolution().
  bool offerBest(const Vector<T>& vector, std::int64_t time);
  /// `time`, or for 0 the seconds since the start of the process, times params.bench in a
  /// benchmark run, at most the longest time there is.
  std::int64_t discoveryTime(std::int64_t time) const;
  /// 0 if the start was not set.
  std::int64_t secondsSinceStart() const;

  // Stored vectors across a change of the lattice: find/LatticeBackup.inl

  /// Moves best vector, best target, solutions and both collections out of the lattice, in a
  /// form that survives the change; vectors without such a form are dropped. The stars are moved
  /// as well.
  ///
  /// `count`, `position`  BackupMode::columns: coordinates to remove
  VectorBackup<T, R> backupVectors(BackupMode mode, Index count = 0, Index position = 0);
  /// Restores them through the checks of checkSolution(); a solution whose point is still the
  /// one that was judged isn't judged again. Fatal if the best target violates the problem: "This
  /// case should not happen between a backup / restore!".
  void restoreVectors(VectorBackup<T, R> backup, BackupMode mode);

  // Restart and termination: find/LatticeRestart.inl

  /// Saves the results of a search and reports; then, with terminationSwitch, ends it or, unless
  /// the search is finished, regenerates the lattice and throws RestartException "Lattice was
  /// regenerated". params.stopping decides how a search ends: stopped() becomes true, or the
  /// process gets SIGTERM.
  void restartHandling(Outcome outcome);
  /// Writes the solutions, then saves the lattice by verifyTransformation().
  void writeResults();
  /// Regenerates the lattice from the problem; stars and stored vectors stay. The lattice is
  /// unchanged after an exception.
  void regenerateLattice();
  /// restartHandling() has ended the search.
  bool stopped() const;

  // Files and stars: io/LatticeFiles.inl

  /// Derives the paths of problem, solution and lattice file from that of the solution file.
  void setFileNames(const std::string& path);
  /// Appends the stars of the solution file; with StarReading::peek stores none. Returns whether
  /// there is one.
  bool readStarsFromSolFile(StarReading reading);
  /// The same, each number read as a rational; PrecisionException if T can't hold one. The
  /// stars are unchanged then.
  bool readStarsExactly(StarReading reading);
  /// Removes the stars that violate the problem as read; true if none did.
  bool checkStars();
  /// Writes the stars to their file; with Stars::withSolutions the solutions of the lattice are
  /// added first. Does nothing while the output switch is off. PrecisionException as
  /// writeStars(); the stars are unchanged then.
  void writeSolFile(Stars what);
  /// Appends best target and solutions as stars, then sorts the stars and removes duplicates.
  /// Throws and fails as solutionStars().
  void sol2star();
  /// Best target and solutions as fresh stars. PrecisionException if T can't hold one. Fatal for
  /// a vector that no check has filed: "sol2star: lat2opt can not compute x_opt".
  Array<Star<T>> solutionStars() const;
  /// The same in exact numbers, of the solutions filed after the one with the number `last`.
  Array<Star<QQ>> starsFiledAfter(Index last) const;
  /// The parameters of this run as they stand in starsFiledAfter(). Takes a semaphore for each of
  /// them: not to be called for each star.
  std::string paramsText() const;
  /// Gives a judged star, found now without the lattice, the data of this run.
  void signStar(Star<QQ>& star, const std::string& paramsText) const;
  /// Writes the lattice to latFile, if the output switch is on. SIGINT and SIGTERM wait until the
  /// file is complete.
  void writeLatFile();

  // Console reports: io/LatticeReports.inl

  /// All stars, for the console.
  std::string solutionsText() const;
  /// The same text, written piece by piece.
  void writeSolutions(std::ostream& stream) const;
  /// One star, 1 <= i <= file.stars.dimension().
  std::string starReport(Index i) const;
  /// Best target and first solutions of the search, with solutions that were found without the
  /// lattice: `others`, judged, the first of them with their times, and `further` ones; that is
  /// less by those found in both ways, and may be negative.
  std::string statusText(const Array<Star<QQ>>& others = {}, Index further = 0) const;

 private:
  // Reactions to parameters: make/LatticeRecord.inl

  /// If turned on, tracking starts from the untransformed basis.
  void consistencyChanged(bool on) override;
  /// Maps the basis again, with unit scale.
  void scaleChanged() override;
  /// Maps the basis again, without translation.
  void translateChanged() override;
};

}  // namespace starsift
