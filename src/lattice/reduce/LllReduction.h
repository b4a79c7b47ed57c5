// LLL reduction of the rows of a basis, from the steps on one row to the test whether the basis
// is reduced. It is independent of problems, solutions, files and signals.
//
// A. K. Lenstra, H. W. Lenstra, L. Lovasz, Math. Ann. 261 (1982);
// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994).
#pragma once

#include <vector>

#include "lattice/reduce/ReductionObserver.h"
#include "lattice/state/GramSchmidtData.h"

namespace starsift {

/// Parameters of the reduction.
template <class R>
struct LllSettings {
  /// Factor of the Lovász condition, 1/4 < delta < 1; a little below 1, so that equal lengths
  /// cause no swap.
  R delta = R(1) - NumberTraits<R>::tolerance();
  /// Gram-Schmidt coefficients up to this magnitude count as reduced, 1/2 <= eta < 1. A bound
  /// below 1/2 would turn 1/2 into -1/2 and back.
  R eta = R(1) / R(2);
  /// Deep insertions instead of swaps of neighbours.
  bool deep = false;
  /// In rationals a loss of precision in Gram-Schmidt data is fatal, as there is no wider type.
  bool lossIsFatal = true;
};

/// The state of a pass.
struct PassStatus {
  /// Row to process next.
  Index k;
  /// Last row of the pass.
  Index to;
  /// Last row after which a dependent row may be placed.
  Index kmax;
  /// Lovász tests that the pass may make.
  Index budget;
  /// A dependent row was moved: size reduction must not increase the greatest coordinate of any
  /// row. Never reset during a pass.
  bool strict = false;
  PassCounts counts = {};
};

/// Is called by a reduction for each row and step.
class RowVisitor {
 public:
  virtual ~RowVisitor() = default;

  /// Called with row k of the basis when its step begins, and again if size reduction changed
  /// it.
  virtual void onRow(Index k) = 0;
  /// Called before each step of a pass; false ends the pass.
  virtual bool mayStep(const PassStatus& status) = 0;
  /// Called after each step, before its Lovász test.
  virtual void onStepped(const PassStatus& status) = 0;

 protected:
  RowVisitor() = default;
  RowVisitor(const RowVisitor&) = default;
  RowVisitor& operator=(const RowVisitor&) = default;
};

/// The operations of LLL reduction on a basis and its Gram-Schmidt data.
///
/// Rows are numbered from 1; 1 <= k <= n. Throws as GramSchmidtData; in the exact lattice a
/// DecimalPrecisionException is fatal if the settings say so, "numbers too large for the
/// reduction".
template <class T, class R>
class LllReduction {
 public:
  /// Basis, data and visitor must live as long as this object.
  LllReduction(Basis<T, R>& basis, GramSchmidtData<R>& data, RowVisitor& visitor,
               const LllSettings<R>& settings)
      : basis_(basis), data_(data), visitor_(visitor), settings_(settings) {}

  // Steps on one row; the Gram-Schmidt data of the rows before k must be valid.

  /// Size reduction: subtracts integer multiples of the rows before k from row k until no
  /// Gram-Schmidt coefficient exceeds eta in magnitude; with `strict` only multiples that don't
  /// increase the greatest coordinate. True if the row changed. A dependent row, decided exactly
  /// in doubt, gets the status ST_DEPENDENT; it may have been reduced before.
  bool sizeReduce(Index k, bool strict);
  /// Swaps rows k - 1 and k unless the Lovász condition holds. Returns the next k to process:
  /// k - 1 after a swap, else k + 1.
  Index swapStep(Index k);
  /// Deep insertion: inserts row k at the first position j >= 2 at which the squared length of
  /// its projection orthogonal to rows 1..j-1 is below delta * cLen[j]. Returns that position, or
  /// k + 1 if there is none.
  Index deepInsertStep(Index k);
  /// Moves row k away if it is dependent: by deepInsertStep(), and then returns its position, or
  /// to the place of the last independent row up to kmax, and then returns -k. Returns 0 for an
  /// independent row. DependencyException "Blending is not possible" if there is no such row.
  Index blendDependent(Index k, Index kmax);
  /// Brings row k up to date: passes it to the visitor, size-reduces it, moves it away if it is
  /// dependent; a move towards the end sets `strict`. False if the pass can't go on.
  bool step(Index k, Index kmax, bool& strict);

  // Passes

  /// One pass over the rows status.k..status.to: Lovász tests and swaps up to the budget, then
  /// brings the remaining rows up to date. The caller sets the first four fields; on return `k`
  /// is the row at which the swaps ended, and `counts` are final.
  void pass(PassStatus& status);

  // State of the first `count` rows

  /// The Lovász test was made for all of these rows since they changed.
  bool allTested(Index count) const;
  /// These rows are reduced and their data valid, with dependent rows after the others.
  bool isReduced(Index count) const;
  /// Recomputes the Gram-Schmidt data of these rows if some are too long for R: data computed by
  /// orthogonaliseModified() may be far off then. False if the new data fail.
  bool renewLongData(Index count);
  /// Clears the marks of size reduction and Lovász test of rows that aren't reduced.
  void unmarkUnreduced(Index count);
  /// The LLL potential, which each swap lowers: the sum over rows k of (count + 1 - k) log2 of
  /// the squared orthogonal length. Dependent rows and rows without valid data count 0.
  R potential(Index count) const;

  /// Number of insertions made by deepInsertStep().
  Index deepInsertions() const { return deepInsertions_; }

 private:
  /// Computes the Gram-Schmidt data of row k by the classic way; false if it seems to depend on
  /// the rows before it.
  bool orthogonalise(Index k);
  /// A Gram-Schmidt coefficient of row k is so large that rounding errors of the row may exceed
  /// its orthogonal length.
  bool hasLargeCoefficient(Index k) const;
  /// Decides whether row k is independent of the rows before it, and computes its Gram-Schmidt
  /// data if it is: by the modified way and, if that finds no length, exactly. The first
  /// dependent row gets the status ST_DEPENDENT.
  bool isIndependent(Index k);
  /// The first of the rows 1..count that depends on the rows before it, decided exactly; else 0.
  Index firstDependent(Index count) const;
  /// Computes the data of an independent row whose orthogonal length may be below what R
  /// resolves: it becomes at least the square of the tolerance, which is shorter than any length
  /// that was resolved, so that a Lovász test moves the row forward.
  void acceptShort(Index k);
  /// The result of the step; in the exact lattice a DecimalPrecisionException may be fatal.
  template <class Step>
  auto withFallback(Step step) -> decltype(step());
  /// Row k, k >= 2, is independent, but the orthogonal length is below what R resolves.
  bool isTooShort(Index k) const;
  /// One round of size reduction; returns the greatest factor, 0 if nothing changed.
  R reduceCoefficients(Index k, bool strict);
  /// Reduces coefficient j of row k by a multiple of row j, and with it those from `first` on.
  void findMultiple(Index k, Index j, Index first, bool strict);
  /// Subtracts the multiples that wait from row k.
  void subtractMultiples(Index k);
  /// The tests and swaps of a pass, up to the row at which it ends.
  void exchangeRows(PassStatus& status);
  /// No Gram-Schmidt coefficient of row k exceeds eta by more than the tolerance.
  bool isSizeReduced(Index k) const;
  /// Row k is neither 0 nor marked as dependent.
  bool seemsIndependent(Index k) const;
  /// The Lovász condition holds for row k, if a pass tests that row.
  bool isInOrder(Index k) const;
  /// Rows 1..count have rank `rank`, decided exactly; always true over long double.
  bool haveRank(Index count, Index rank) const;

  Basis<T, R>& basis_;
  GramSchmidtData<R>& data_;
  RowVisitor& visitor_;
  LllSettings<R> settings_;
  Index deepInsertions_ = 0;
  /// Of the row that is reduced, to be subtracted together.
  std::vector<RowMultiple<R>> multiples_;
};

/// The budget of the pass after one with these counts: doubled if the skipped tests exceed a
/// tenth of the tests made; if none were skipped, reduced by 1, but not below `floor`.
Index nextBudget(Index budget, Index floor, const PassCounts& counts);

extern template class LllReduction<long double, long double>;

}  // namespace starsift
