// The central object: a problem, the lattice made from it, and its solutions.
//
// Lattice<T,R> is one record with many operations, T the element type of problem
// and basis, R that of Gram-Schmidt data and scores. This file declares; bodies
// stand in the topic files named below, which LatticeStandard.cpp (T = long
// double) and LatticeExact.cpp (T = QQ) instantiate. What can be said on matrices,
// vectors or stars alone is a free function on a lower floor.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "algorithms/exact/CoordinateFactors.h"
#include "algorithms/reduction/Reflectors.h"
#include "core/Set.h"
#include "files/SolutionFile.h"
#include "lattice/CheckBits.h"
#include "lattice/FiledSolution.h"
#include "lattice/ReductionObserver.h"
#include "lattice/RowImages.h"
#include "lattice/RowMarks.h"
#include "lattice/SolutionIndex.h"
#include "lattice/VecStatus.h"
#include "lattice/VectorBackup.h"
#include "lattice/VectorScore.h"
#include "params/ExtendedParams.h"
#include "params/Guarded.h"
#include "problem/Vanu.h"
#include "stars/Star.h"
#include "stars/StarNorms.h"

namespace starsift {

/// What the lattice stands for.
enum class LatticeKind : std::uint8_t {
  /// No check vectors yet.
  none = 0,
  /// The equation lattice of the Aardal reduction.
  equations = 1,
  /// The full lattice.
  full = 2,
};

template <class T, class R>
class NearbySearch;

/// A problem (the base: its working copy in normal form) with its lattice state.
template <class T, class R>
class Lattice : public Vanu<T>, private ParamReactions {
 public:
  // Record and lifecycle: LatticeRecord.inl

  /// `basis`, where there is one, becomes the generated basis.
  explicit Lattice(const Matrix<T>* basis = nullptr);
  Lattice(const Lattice&) = delete;
  Lattice& operator=(const Lattice&) = delete;
  ~Lattice() override;

  /// Back to a lattice without solutions and check vectors over `basis`, or over
  /// none. Problem, parameters and stars stay. With `clearFileName` the path of
  /// the lattice file is emptied.
  void reset(const Matrix<T>* basis, bool clearFileName);

  /// Sizes everything that has an entry per basis vector (newN) or coordinate
  /// (newM; 0 keeps m); new entries are 0. With `discardVectors` best vector, best
  /// target and solutions go, else all stored vectors take the new length. A
  /// negative size does nothing.
  void resize(Index newN, Index newM, bool discardVectors);

  /// Takes the whole state of `other`, every number converted strictly; the
  /// parameters too unless `keepParams`. Nothing for the lattice itself. Throws
  /// PrecisionException where T can't hold a number; the state is partly assigned
  /// then.
  template <class U>
  void assignFrom(const Lattice<U, R>& other, bool keepParams);

  /// assignFrom(other, false).
  template <class U>
  void convertFrom(const Lattice<U, R>& other);

  /// Frees the problem, as read and lifted, and the stars, the two that grow with the
  /// files: for a lattice whose state is taken from another one before its next use.
  void release();

  // Normal form of the problem: LatticeNormalise.inl

  /// Makes this record, the working copy, the normal form of the problem: integer rows,
  /// inequations with two finite bounds, independent equations, variables from 0 on.
  ///
  /// The first call makes optOriginal, which is lifted: inequations with one bound become
  /// equations with a slack, targets to reach equations with deviations; `generate` also looks
  /// for the range of the target value. Later calls only build the working copy anew, unless
  /// `force` starts again from the problem as read.
  ///
  /// A problem that its bounds show to have no solution is fatal, three texts that end
  /// with "--> NO SOLUTIONS!"; so are bounds that can't be used. PrecisionException where
  /// T can't hold a number safely.
  void normalise(bool generate, bool force);
  /// The part of normalise() on the working copy, which is lifted: from there to normal
  /// form. With `verbose` dependent equations are reported; with that or on the `first`
  /// call for a problem also inequations that became equations, and swapped variables.
  void normaliseCopy(bool verbose, bool first);
  /// Takes a problem as if it was read; the paths stay.
  void setProblem(Vanu<T> problem);
  /// Narrows the bounds that lattices are made from by tightenBounds(); stars are judged by the
  /// problem as read. Fatal after normalise(): "tightenBounds: the problem is normalised".
  void tightenBounds() requires std::same_as<T, QQ>;

  // Mapping between the three spaces: LatticeMapping.inl
  //
  // Problem space has the values of the user, raw space the coordinates of B_save, working
  // space those of B. A point without h, its homogenising factor, has that of 1. Nothing is
  // rounded: a PrecisionException where T can't hold a result.

  /// The raw vector, with `transform` the working one, of a point of the problem, constants
  /// included; `out` is unchanged after an exception. ModuloException "modulo equation
  /// inconsistency" where a congruence is violated whose modulus is no coordinate.
  ///
  /// Fatal: before generation ("opt2lat called with uninitialized check vectors!"), and
  /// without `hom` a point that violates a lifted inequation ("slack variable
  /// inconsistency, s should be >= 0").
  void opt2lat(const Vector<T>& x, Vector<T>& out, bool transform,
               const std::optional<T>& hom = std::nullopt) const;
  /// The point of a raw vector, in `out`, and its h: only with 1 it is a point of the
  /// problem. With `insert` it has the constants, with `withSlack` slacks and deviations
  /// behind the variables, in the units of the problem. With `normalise` a vector with -1
  /// counts as its negative. PrecisionException "lat_vec overflow" or "opt_vec overflow1"
  /// where an entry or a result leaves the safe range of T; `out` is unchanged then.
  ///
  /// Fatal: before generation ("lat2opt called with uninitialized check vectors!"), a vector
  /// that is empty ("lat_vec == 0") or hasn't m entries ("lat_vec doesn't match lattice
  /// dimension").
  T lat2opt(const Vector<T>& vector, Vector<T>& out, bool insert, bool withSlack,
            bool normalise) const;

  /// The vector of m coordinates in working space; `inverse`: from there back.
  Vector<T> forwardMap(const Vector<T>& vector, bool inverse) const;
  /// forwardMap of every row.
  Matrix<T> forwardMapAll(const Matrix<T>& rows) const;
  /// Inverse forwardMap of every row.
  Matrix<T> backMapAll(const Matrix<T>& rows) const;

  /// The n coordinates of a raw vector over B_save or, without `useSaved`, over the
  /// untransformed B; only integers count with `round`. False, `out` unchanged, where there
  /// are none. Keeps what it has made of the basis for the next question: for integers over
  /// independent rows a BasisSolver, else factorBasis(). Throws as these.
  bool coordinatesOf(const Vector<T>& vector, Vector<T>& out, bool useSaved, bool round = true);
  /// The coordinates of every row. PrecisionException "transformation coord error" at a row
  /// that has none.
  Matrix<T> coordinatesOfAll(const Matrix<T>& rows, bool useSaved, bool round = true);

  // Orthogonalisation: LatticeOrthogonal.inl
  //
  // Rows of mu, entries of cLen and bSq for the rows from..to of B, 1 <= from; `to` of
  // 0 stands for n. A row depends on those before it when its squared orthogonal length
  // is not above eps; its status word is ST_DEPENDENT then, and the rows behind it are
  // left. In the exact lattice rows whose squared length long double can't hold are
  // fatal, "numbers too large for the reduction".

  /// Row by row, rows before `from` taken as done and rows with ST_MU skipped; sets
  /// ST_MU. False at a dependent row. Throws as classicGramSchmidt().
  bool classicOrthogonalise(Index from, Index to);
  /// By lq_reduced(), from the first row on that isn't ST_CACHED_ROW; the words of the
  /// rows become that with `useCache`, else ST_MU. Returns 0 or the first dependent
  /// row, which with `abortOnDependency` is fatal: "Linear dependency detected - remove
  /// these first!". Throws as lq_reduced(), or DecimalPrecisionException "mu-mod has nan
  /// entry" or "cLen-mod has infinite entry".
  Index modifiedOrthogonalise(Index from, Index to, bool abortOnDependency, bool useCache);
  /// By lq_full(), from the first row on that isn't ST_FULL_ROW, which the words of the
  /// rows become; the rows of Q are the Gram-Schmidt vectors. Returns 0 or the first
  /// dependent row, m + 1 at most; with `abortOnDependency` it is fatal: "Linear
  /// dependency detected - remove first!". Throws as lq_full().
  Index fullOrthogonalise(Index from, Index to, bool abortOnDependency);

  // Check of vectors: LatticeCheck.inl

  /// Is `vector`, of working space with `transformed`, else raw, or its negative a solution
  /// of the problem? A solution is filed, `time` its discovery time (0: now); any other
  /// consistent vector competes for bestVector. Returns bits of CheckBits.h, 0 for no
  /// solution. `silent` neither writes a file nor ends a search.
  ///
  /// A solution is consistent, lies in the box of the check vectors, and its point passes
  /// the check of stars on the problem as read. Throws as lat2opt() and opt2lat(). Fatal
  /// before generation: "checkSolution: You should set the check vectors!".
  unsigned checkSolution(const Vector<T>& vector, bool transformed, std::int64_t time, bool silent);
  /// The raw vector is the image of the point that it stands for, up to the tolerance of T,
  /// or with `exact` without any. Of a pair of deviations only the difference counts.
  bool isConsistent(const Vector<T>& vector, bool exact) const;
  /// What the search was to find is filed: as many solutions as the parameter sol says, or one
  /// with a norm that tnorm or snorm asks for. Unlike stopped() also where it was filed in
  /// silence. O(solutions).
  bool isSatisfied() const;

  // Scores: LatticeScore.inl

  /// Fills the record of a vector, given in working space with `transformed`, else raw.
  void score(VectorScore<R>& record, const Vector<T>& vector, bool transformed) const;
  /// The coordinates of a raw vector that leave the check vectors, largest amount first.
  Array<RightOrderPair<Index, R>> deviationsOf(const Vector<T>& vector) const;
  /// Takes a raw vector as bestVector where it is the better one; true when bestVector then
  /// equals it. `time` as for checkSolution().
  bool offerBest(const Vector<T>& vector, std::int64_t time);

  // Moves of the basis: LatticeMoves.inl
  //
  // Nothing else changes rows of B. A move is made on the last matrix of TT as well while
  // the parameter consistency is on.

  /// Exchanges the vectors i and j, 0 <= i, j <= n, and what travels with them. Unless
  /// `keepStatus` nothing is known any more of the vectors from the first of them on.
  void swapBasisVectors(Index i, Index j, bool keepStatus);
  /// Sorts the first `count` vectors, 0 for all, by ascending length; heap sort by
  /// swapBasisVectors().
  void sortBasis(Index count);

  // Steps of the reduction on one vector: LatticeLll.inl
  //
  // 1 <= k <= n; the Gram-Schmidt data of the vectors before k are valid.

  /// Takes integer multiples of the vectors before k off vector k until no coefficient
  /// exceeds 1/2 in magnitude; with `strict` only where that doesn't make the greatest
  /// coordinate greater. True when the vector changed. A dependent one gets the status
  /// ST_DEPENDENT. Throws as classicOrthogonalise() and modifiedOrthogonalise(); in the exact
  /// lattice a DecimalPrecisionException is fatal, "numbers too large for the reduction".
  bool sizeReduce(Index k, bool strict);
  /// Exchanges vectors k - 1 and k unless the Lovasz condition holds. Returns the next k
  /// to look at: k - 1 after an exchange, else k + 1.
  Index swapStep(Index k);
  /// Inserts vector k at the first position from 2 on where it is shorter, orthogonally,
  /// than the vector there by the factor of the Lovasz condition. Returns that position, or
  /// k + 1. C. P. Schnorr, M. Euchner, Math. Programming 66 (1994).
  Index deepInsertStep(Index k);
  /// Moves vector k out of the way when it is dependent: by deepInsertStep(), whose
  /// position is returned, or behind the last vector up to kmax that isn't dependent,
  /// which gives -k. 0 for an independent vector. DependencyException "Blending is not
  /// possible".
  Index blendDependent(Index k, Index kmax);

  // LLL reduction: LatticeLll.inl
  //
  // A pass reduces the vectors from..to as far as its budget of exchanges, swapBudget, goes;
  // what was left is for the next one. Every vector touched goes through checkSolution().

  /// One pass; `to` and `kmax` of 0 stand for n, kmax the last vector that a dependent one
  /// may be moved behind. Returns the lowest index reached; `lastPass` tells the rest. Ends
  /// early once the search is stopped or no dependent vector can be moved out of the way.
  Index lllPass(Index from, Index to, Index kmax);
  /// Brings vector k up to date: checks it, reduces its size, moves it away when it is
  /// dependent, which turns `strict` on. False where the pass can't go on.
  bool lllStep(Index k, Index kmax, bool& strict);
  /// Passes over the first `count` vectors, 0 for all, until one skips no exchange or all
  /// vectors are checked, 20 at most. True when the vectors are reduced, up to the first of
  /// them that depends on those before it; none behind is independent then.
  bool reduce(Index count);

  // Transformation of the basis: LatticeTransform.inl

  /// After a reduction: makes sure that B spans what B_save does, then makes the
  /// untransformed B the new B_save and, unless `silent`, writes the lattice file. Within an
  /// Aardal reduction (`aardal`) TT gets a new matrix, else it starts again. True when B
  /// was the tracked basis.
  ///
  /// Where the lattice got lost B is rebuilt from B_save, and tracking starts by the
  /// parameter consistency until the next success. PrecisionException "base matrix
  /// overflow", "unimodular error" or "transformation overflow".
  bool verifyTransformation(bool aardal, bool silent);
  /// rows = T_k ... T_1 * rows for the matrices of TT. PrecisionException "Overflow when
  /// applying transformation".
  void applyTransformations(Matrix<T>& rows) const;
  /// A new identity of order n behind the last matrix of TT, unless that is one already;
  /// without `checkIdentity` as the only one.
  void pushTransformation(bool checkIdentity);
  /// Sets scale[i] and maps B anew; the status words are cleared when it changed.
  void setScale(Index i, const T& value);

  // Aardal reduction: LatticeAardal.inl
  //
  // K. Aardal, C. A. J. Hurkens, A. K. Lenstra, Math. Oper. Res. 25 (2000).

  /// Reduces the equation lattice, of kind `equations`, until its first vectors are a basis
  /// of the integer vectors that solve the homogeneous equations, the others behind. Returns
  /// the matrices that lead there. The lattice is as it was after an exception.
  Array<Matrix<T>> aardalReduce();
  /// A raw vector of the lattice with homValue, or its negative, as last coordinate; empty
  /// where there is none.
  Vector<T> extractInhomogeneous();

  // Generation: LatticeGenerate.inl

  /// The lattice of the problem in normal form, its equations removed, ready to be reduced;
  /// stars stay. What a lattice prepared before has filed becomes stars. True. Fatal: "The
  /// equation system has no integer solution :(", and as generateLattice().
  bool prepareLattice();
  /// Makes B_save, B and the check vectors: with `aardal` the equation lattice, else the
  /// lattice of inequations and target. PrecisionException "R overflow" or "B_save
  /// overflow2". Fatal: "ineq bounds error1", "ineq bounds error2", "sol bounds error".
  void generateLattice(bool aardal);
  /// The half width of the box, a common multiple of the ranges of variables and, without
  /// `aardal`, of rows. May lower ltu. Throws and fails as generateLattice().
  T computeR(bool aardal);
  /// Widens the range of variables that are free above but have bounds, towards a small
  /// multiple with rangeMultiple; with `useLcm` that takes in all ranges.
  void extendBounds(bool useLcm);
  /// Removes `count` coordinates from `position` on: of the equations and as many last
  /// vectors (`ColumnsOf::equations`), or of the moduli.
  void removeColumns(ColumnsOf columns, Index count, Index position);

  // Stored vectors across a change of the lattice: LatticeBackup.inl

  /// Takes best vector, best target, solutions and both collections out of the lattice, in
  /// a form that survives the change; those that have none are dropped. The stars come
  /// along.
  ///
  /// `count`, `position`  BackupMode::columns: coordinates to remove
  VectorBackup<T, R> backupVectors(BackupMode mode, Index count = 0, Index position = 0);
  /// Brings them back through the checks of checkSolution(); a solution whose point is still
  /// the one that was judged isn't judged again. Fatal if the best target fails the problem:
  /// "This case should not happen between a backup / restore!".
  void restoreVectors(VectorBackup<T, R> backup, BackupMode mode);

  // Restart and termination: LatticeRestart.inl

  /// Saves the results of a search and reports; then, with terminationSwitch, ends it or,
  /// unless `finished`, makes the lattice anew and throws RestartException "Lattice was
  /// regenerated". params.stopping decides how a search ends: stopped() becomes true, or
  /// the process gets SIGTERM.
  void restartHandling(bool finished);
  /// Writes the solutions, then saves the lattice by verifyTransformation().
  void writeResults();
  /// Makes the lattice anew from the problem; stars and stored vectors stay. The lattice is
  /// as it was after an exception.
  void regenerateLattice();
  /// restartHandling() has ended the search.
  bool stopped() const;

  // Files and stars: LatticeFiles.inl

  /// Derives the paths of problem, solution and lattice file from that of the
  /// solution file.
  void setFileNames(const std::string& path);
  /// Appends the stars of the solution file; with `peek` only tells whether there is one.
  bool readStarsFromSolFile(bool peek);
  /// The same, each number read as a rational; PrecisionException where T can't hold
  /// one. The stars are unchanged then.
  bool readStarsExactly(bool peek);
  /// Drops the stars that violate the problem as read; true when none did.
  bool checkStars();
  /// Writes the stars to their file, unless `complete` with the solutions of the lattice; does
  /// nothing while the output switch is off. PrecisionException as writeStars(); the stars are
  /// unchanged then.
  void writeSolFile(bool complete);
  /// Appends best target and solutions as stars, then sorts the stars and drops repetitions.
  /// Throws and fails as solutionStars().
  void sol2star();
  /// Best target and solutions as fresh stars. PrecisionException if T can't hold one. Fatal
  /// for a vector that no check has filed: "sol2star: lat2opt can not compute x_opt".
  Array<Star<T>> solutionStars() const;
  /// The same in exact numbers, of the solutions filed after the one with the number `last`.
  Array<Star<QQ>> starsFiledAfter(Index last) const;
  /// Writes the lattice to latFile, if the output switch is on. SIGINT and SIGTERM wait until
  /// the file is complete.
  void writeLatFile();

  // Console reports: LatticeReports.inl

  /// All stars, for the console.
  std::string solutionsText() const;
  /// The same text, written piece by piece.
  void writeSolutions(std::ostream& stream) const;
  /// One star, 1 <= i <= file.stars.dimension().
  std::string starReport(Index i) const;
  /// Best target and first solutions of the search.
  std::string statusText() const;

  // Data

  /// homValue times the scale of the last coordinate; reset.
  T homScaled = T(1);
  /// Number of basis vectors; resize.
  Index n = 0;
  /// Number of coordinates; resize.
  Index m = 0;
  /// Path of the lattice file; emptied by reset when told to.
  std::string latFile;
  /// Writing of result files is on.
  bool outputSwitch = false;
  /// The end of a search may end the process.
  bool terminationSwitch = false;
  /// Settings of the run; never reset.
  ExtendedParams<T> params;
  /// The problem as read and its stars, from files and searches; never reset.
  SolutionFile<T> file;
  /// Best lattice vector so far, empty while there is none; reset.
  TimeVector<T> bestVector;
  /// Its score; reset.
  VectorScore<R> bestRecord;
  /// Best target vector so far, empty while there is none; reset.
  FiledSolution<T> bestTarget;
  /// Solutions found; reset.
  Array<FiledSolution<T>> solutions;
  /// The last number that was given to a filed solution; never reset, and never taken back by
  /// an assignment.
  Index lastFiled = 0;
  /// Finds vectors among the solutions: what changes those in other ways than by appending
  /// tells it.
  SolutionIndex<T> solutionIndex;
  /// Stack of transformations, the last one is current; one identity after reset.
  Array<Matrix<T>> TT;
  /// The generated basis in raw coordinates, n x m; reset.
  Matrix<T> B_save;
  /// The working basis: scaled, translated and reduced, n x m; reset.
  Matrix<T> B;
  /// The rows of B in R: what changes B tells it; resize.
  RowImages<T, R> rowImages;
  /// Rows of B that went through checkSolution() as they are; as rowImages.
  RowMarks checkedRows;
  /// Orthogonal rows where ST_Q is set; emptied by reset and resize.
  Matrix<R> Q;
  /// Gram-Schmidt coefficients, n x n; resize.
  Matrix<R> mu;
  /// Squared lengths of the rows of B, n entries; reset.
  Vector<R> bSq;
  /// Squared lengths of the orthogonalised rows, n entries; reset.
  Vector<R> cLen;
  /// Texts that the parts of a run share; reset zeroes the counters.
  MainMutexVars runVariables;
  /// What lattices are made from: the problem as read, tightened and lifted; empty before the
  /// first of that, never reset.
  Vanu<T> optOriginal;
  /// Common multiple of the bound ranges, 0 before generation; reset.
  T rangeMultiple = T();
  /// Scale factor per coordinate, m entries; reset.
  Vector<T> c;
  /// Lower bounds of the coordinates, with r the check vectors, m entries; reset.
  Vector<T> l;
  /// Upper bounds of the coordinates, m entries; reset.
  Vector<T> r;
  /// l as generated, m entries; reset.
  Vector<T> lSave;
  /// r as generated, m entries; reset.
  Vector<T> rSave;
  /// 3 times the larger squared length of l and r; reset.
  R supLimit = R();
  /// l and r are equal; generation.
  bool lEqualsR = false;
  /// The least that swapBudget may be set to; resize.
  Index swapBudgetFloor = 0;
  /// Exchanges that a pass may make; resize.
  Index swapBudget = 0;
  /// What the last pass did; reset.
  PassCounts lastPass;
  /// Hears of each step of a reduction; not owned, not copied.
  ReductionObserver* observer = nullptr;
  /// Regenerations so far; never reset.
  Index restarts = 0;
  /// Stored vectors are coming back from a backup; not copied.
  bool restoring = false;
  /// Stage of the generation; reset.
  LatticeKind latticeKind = LatticeKind::none;
  /// The equation columns are gone from the lattice; reset.
  bool equationsRemoved = true;
  /// The columns of the congruences are in the lattice; reset.
  bool modsInLattice = false;
  /// Factors of B_save; reset.
  CoordinateFactors<T> savedFactors;
  /// Factors of the untransformed B; reset.
  CoordinateFactors<T> workingFactors;
  /// Bits of VecStatus.h per basis vector, n entries; slot 0 is live; reset.
  Array<StatusWord> vecStatus;
  /// Tracking was turned on by the lattice itself; reset.
  bool consistencyForced = false;
  /// Insertions of deepInsertStep(); reset.
  Index deepInsertions = 0;
  /// Dependent vectors keep their status; reset.
  bool keepDependent = false;
  /// Work rows of the reduced factorisation, one matrix a step; reset and resize.
  Array<Matrix<R>> lqCache;
  /// Squared lengths of the reduced factorisation; reset and resize.
  Vector<R> _d;
  /// Triangular factor of the reduced factorisation; reset and resize.
  Matrix<R> Lr;
  /// Triangular factor of the full factorisation; reset and resize.
  Matrix<R> L;
  /// Reflectors of the full factorisation; reset and resize.
  Reflectors<R> Ps;
  /// Amount that travels with each basis vector, n entries; reset.
  Vector<R> vectorAmounts;
  /// Mark that travels with each basis vector, n entries; reset.
  Array<Index> vectorMarks;
  /// Heuristic collection of good vectors; reset.
  SortedSet<HeuristicVector<T, R>> collected;
  /// Vectors chosen from the collected ones; reset.
  SortedSet<HeuristicVector<T, R>> chosen;
  /// Factor per coordinate from raw to working space, m entries; ones after reset.
  Vector<T> scale;
  /// Taken off the scaled coordinates of an inhomogeneous vector while the parameter
  /// translate is on, else zero; m entries; reset.
  Vector<T> translation;

 private:
  friend class NearbySearch<T, R>;

  // Parts of the normal form: LatticeNormalise.inl

  /// Makes optOriginal or lifts it.
  void liftProblem(bool withTargetRange);

  // Parts of the mapping: LatticeMapping.inl

  /// forwardMap with or without translation, whatever the parameter says.
  Vector<T> mapped(const Vector<T>& vector, bool inverse, bool translated) const;
  /// Target and inequations at z, h times their middle taken off, in the unit of their
  /// coordinates 1, 2, ... of `out`.
  void setRowCoordinates(const Vector<T>& z, const T& h, Vector<T>& out) const;
  /// The variables z, h times the middle of their range taken off, as the last coordinates
  /// but one.
  void setVariableCoordinates(const Vector<T>& z, const T& h, Vector<T>& out) const;
  /// The first `count` variables of a raw vector with the factor h, or of its negative.
  Vector<T> variablesOf(const Vector<T>& vector, const T& h, bool negative, Index count) const;

  // Parts of the check: LatticeCheck.inl

  /// checkSolution() of vector k of B, unless it was checked as it is or can't gain
  /// anything by it.
  void checkBasisVector(Index k);
  /// The first coordinate with bounds that hold: behind the target's.
  Index firstChecked() const;
  /// `last`, the last coordinate of a vector, lies within its check vectors.
  bool hasLastInBox(const T& last) const;
  /// A vector of working space neither is a solution nor can become bestVector, whatever its
  /// consistency: decided by the last coordinate, which is 0 for nearly all vectors of a
  /// basis.
  bool isHopeless(const Vector<T>& vector) const;
  /// The heuristic collection is full of vectors that are better than any of such a squared
  /// length whose last coordinate isn't that of a solution.
  bool collectsNone(const R& squaredLength) const;
  /// Working space is raw space.
  bool hasUnitScale() const;
  /// All entries of a vector of working space are in the range in which T is safe, and so
  /// they are in raw space.
  bool isInSafeRange(const Vector<T>& vector) const;
  /// The vector or its negative, with the sign of homValue in the last coordinate, in raw
  /// space.
  Vector<T> oriented(const Vector<T>& vector, bool transformed) const;
  struct PointImage;
  /// The point that a raw vector stands for, and its image; nothing if the point violates a
  /// congruence. The image of a consistent vector is the one with one deviation of each pair at
  /// 0: any amount on top of both is as consistent, but out of the box where it is negative, and
  /// another solution for the same point where it isn't.
  std::optional<PointImage> imageOfPoint(const Vector<T>& vector) const;
  /// isConsistent() of a raw vector whose point has this image.
  bool isImage(const Vector<T>& vector, const Vector<T>& image, bool exact) const;
  /// Coordinates ahead of those of the variables.
  Index columnsBeforeVariables() const;
  /// A raw vector lies within the check vectors, as far as its variables aren't free.
  bool liesInBox(const Vector<T>& vector) const;
  /// The heuristic collection is kept, and vectors like this one stay in it.
  bool isCollectable(const Vector<T>& vector) const;
  /// Offers a consistent vector to the heuristic collection.
  void collect(const Vector<T>& vector, std::int64_t time);
  /// A vector as an element of the collections.
  HeuristicVector<T, R> scored(const Vector<T>& vector, std::int64_t time) const;
  using Judgement = std::shared_ptr<const JudgedStar>;
  /// checkSolution() in silence. `known` is what was judged of the vector before, if anything.
  unsigned checkVector(const Vector<T>& vector, bool transformed, std::int64_t time,
                       const Judgement& known);
  /// The same for a vector in the box, which stands for the point `star`.
  unsigned fileSolution(const Vector<T>& vector, const Star<T>& star, std::int64_t time,
                        const Judgement& known);
  /// The star of a raw vector, its point only, if that is one of the problem. As lat2opt().
  std::optional<Star<T>> starOf(const Vector<T>& raw) const;
  /// CHECK_LIMIT or 0, behind a solution with these norms that is filed or not.
  unsigned limitBits(const Norms<T>& norms, bool isFiled) const;
  bool hasEnough() const;
  /// A solution with these norms ends the search; none does in a problem without targets.
  bool meetsGoal(const T& targetNorm, const T& slackNorm) const;
  /// A solution with this target norm is better than the best target, if there is one, or as
  /// good but another vector.
  bool competesForTarget(const Vector<T>& vector, const T& targetNorm) const;

  // Parts of the scores: LatticeScore.inl

  /// The target norm, on the problem as read, of the point of a raw vector.
  R targetNormOf(const Vector<T>& raw) const;
  /// One more first best vector of a search.
  void countAccepted();
  /// `time`, or for 0 the seconds since the start of the process, times params.bench in a
  /// benchmark run, at most the longest time there is.
  std::int64_t discoveryTime(std::int64_t time) const;
  /// 0 where nobody has set the start.
  std::int64_t secondsSinceStart() const;

  // Parts of the moves: LatticeMoves.inl

  /// b_k -= q * b_j for an integer q, j < k; the status words are the caller's.
  void subtractBasisVector(Index k, Index j, const R& q);
  /// Clears the status words from k on, for k >= 2 and while keepDependent without those of
  /// dependent vectors, and the factors of the coordinate solver.
  void forgetFrom(Index k);

  // Parts of the steps on one vector: LatticeLll.inl

  /// Gram-Schmidt data of vector k; false where it depends on those before.
  bool orthogonaliseVector(Index k);
  /// One round of size reduction; the greatest factor, 0 where nothing changed.
  R reduceCoefficients(Index k, bool strict);

  // Parts of the transformation: LatticeTransform.inl

  /// The last matrix of TT := the coordinates of the rows over B_save; false where they have
  /// none.
  bool findTransformation(const Matrix<T>& untransformed);
  /// Asks the last matrix of TT. In exact numbers a lost lattice is only reported:
  /// "unimodularity check skipped".
  bool passesUnimodularTest();
  /// B_save := what tracking says that B is; true when it is.
  bool takeTracked(Matrix<T> untransformed);
  /// Back to B_save, with tracking on; false.
  bool restartTracking();
  /// Sets the parameter consistency without its reaction.
  void setTracking(bool on);

  // Parts of the Aardal reduction: LatticeAardal.inl

  /// Settings of the inner lattice: tracking, silence.
  void prepareAardal();
  /// The reduction itself, on the inner lattice; `verb` is that of the outer one.
  void reduceEquations(long verb);
  /// Moves those of the first `active` vectors that solve the equations behind the others of
  /// them; returns how many don't.
  Index sinkSolutions(Index active);

  // Parts of the generation: LatticeGenerate.inl

  void reportCounts() const;
  /// From the lattice of variables and equations to that of the solutions of the equations.
  void removeEquations(Array<Matrix<T>> transformations, Index equations);
  /// Coordinates of the target row, 0 or 1.
  Index targetColumns() const;
  /// Check vectors, scale factor and basis entries of one coordinate.
  void setEquationColumn(Index i);
  void setTargetColumn();
  void setInequationColumn(Index i);
  void setVariableColumn(Index column, Index i);
  /// What follows from B_save and the check vectors.
  void takeGenerated(LatticeKind kind);

  // Parts of the backup: LatticeBackup.inl

  /// What is kept of a vector; nothing where it doesn't survive.
  std::optional<Vector<T>> backupForm(const Vector<T>& vector, BackupMode mode, Index count,
                                      Index position);
  /// The raw vector of such a form, over the untransformed `basis`.
  std::optional<Vector<T>> restoredForm(const Vector<T>& form, BackupMode mode,
                                        const Matrix<T>& basis) const;
  /// The point of a raw vector is no solution of the problem as read.
  bool violatesProblem(const Vector<T>& vector) const;

  // Parts of the files: LatticeFiles.inl

  /// Appends stars, if there are any, and sorts; repetitions go.
  void joinStars(Array<Star<T>> found);

  // Parts of the restart: LatticeRestart.inl

  /// The regeneration itself, on a lattice without stars; clears the switches.
  void makeAnew();
  /// Another order of the basis, a different one after each restart.
  void shuffleBasis();

  // Parts of the reduction: LatticeLll.inl

  struct Pass;
  /// Checks vector k and reduces its size.
  void updateVector(Index k, bool strict);
  /// The exchanges of a pass, up to the vector where it ends.
  void exchangeVectors(Pass& pass);
  /// Tells the observer of the next step; false where the search is over.
  bool goesOn(const Pass& pass);
  /// The search has ended; the equation lattice is none that is searched.
  bool searchIsOver() const;
  /// A line on the console where there was none for long.
  void reportPass(const Pass& pass) const;
  /// The exchange test was made for the first `count` vectors.
  bool allChecked(Index count) const;
  /// The first `count` vectors are up to date and stay as they are, dependent ones behind the
  /// others.
  bool isReduced(Index count) const;
  /// No coefficient of vector k exceeds 1/2, but by rounding.
  bool isSizeReduced(Index k) const;
  /// Vector k isn't 0, nor marked as one that depends on those before it.
  bool seemsIndependent(Index k) const;
  /// The exchange condition that a pass asks of vector k holds.
  bool isInOrder(Index k) const;
  /// Makes the Gram-Schmidt data of the first `count` vectors anew where some are too long for R:
  /// those that modifiedOrthogonalise() made may be far off. False where the new ones are spoilt.
  bool renewLongData(Index count);
  /// The first `count` vectors span no more than those of them that aren't marked as
  /// dependent, or are 0, which are `independent`. True in long double, where the marks say all
  /// that can be known.
  bool areDependent(Index count, Index independent) const;
  /// What a pass has left of the first `count` vectors is looked at anew.
  void forgetSkipped(Index count);

  // Parts of the orthogonalisation: LatticeOrthogonal.inl

  /// Rows first..last of mu, cLen and bSq from factors that reach row `last`; `word`
  /// becomes their status. 0 or the dependent row.
  Index takeReduced(const Matrix<R>& triangle, const Vector<R>& lengths, Index first, Index last,
                    StatusWord word);
  /// The same from L and Q, which were made anew from row `restart` on.
  Index takeFull(Index restart, Index first, Index last);
  /// bSq[k] and cLen[k]; true, with the status set, for a dependent row. The row of mu
  /// is not valid yet.
  bool takeLengths(Index k, const R& rowLength, const R& orthogonalLength);
  /// The rows of the factors are no longer valid from row `from` on.
  void releaseFactors(Index from);

  // Reactions to parameters: LatticeRecord.inl

  /// Turned on: tracking starts from the untransformed basis.
  void consistencyChanged(bool on) override;
  /// The basis is mapped anew with unit scale.
  void scaleChanged() override;
  /// The basis is mapped anew without translation.
  void translateChanged() override;

  // Parts of the lifecycle: LatticeRecord.inl

  /// Empties best vector, best target and solutions.
  void discardVectors();
  /// All stored vectors get m coordinates, new ones 0.
  void fitStoredVectors();
  /// Empties all factor matrices; the status words say so.
  void clearFactors();
  /// Takes `rows` as the working basis and forgets what was known of the former.
  void replaceBasis(Matrix<T> rows);
  /// Nothing is known any more of the rows of B, which were changed.
  void forgetBasis();
};

}  // namespace starsift
