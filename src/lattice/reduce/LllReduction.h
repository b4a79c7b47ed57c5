// LLL reduction of the rows of a basis, from the steps on one row up to the question whether
// the basis is reduced. It knows no problem, no solution, no file and no signal.
//
// A. K. Lenstra, H. W. Lenstra, L. Lovasz, Math. Ann. 261 (1982);
// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994).
#pragma once

#include "lattice/reduce/ReductionObserver.h"
#include "lattice/state/GramSchmidtData.h"

namespace starsift {

/// How far a basis is to be reduced.
template <class R>
struct LllSettings {
  /// Factor of the Lovász condition, 1/4 < delta < 1; a little below 1, so that equal lengths
  /// cause no swap.
  R delta = R(1) - NumberTraits<R>::tolerance();
  /// Coefficients up to this magnitude count as reduced, 1/2 <= eta < 1. At exactly 1/2 one
  /// would go to -1/2 and back.
  R eta = R(1) / R(2);
  /// Rows are inserted at the first position where they fit, not swapped with a neighbour.
  bool deep = false;
};

/// Where a pass is.
struct PassStatus {
  /// Row to look at next.
  Index k;
  /// Last row of the pass.
  Index to;
  /// Last row that a dependent one may be moved behind.
  Index kmax;
  /// Exchange tests that the pass may make.
  Index budget;
  /// A dependent row had to be moved away: size reduction must not lengthen any row. Turns on
  /// only.
  bool strict = false;
  PassCounts counts = {};
};

/// Sees what a reduction does.
class RowVisitor {
 public:
  virtual ~RowVisitor() = default;

  /// Row k of the basis is up to date: called when the row is taken up, and again if size
  /// reduction changed it.
  virtual void onRow(Index k) = 0;
  /// Called before each step of a pass; false ends the pass.
  virtual bool mayStep(const PassStatus& status) = 0;
  /// Called after each step, before its exchange test.
  virtual void onStepped(const PassStatus& status) = 0;

 protected:
  RowVisitor() = default;
  RowVisitor(const RowVisitor&) = default;
  RowVisitor& operator=(const RowVisitor&) = default;
};

/// The operations of LLL reduction on a basis and its Gram-Schmidt data.
///
/// Rows are numbered from 1; 1 <= k <= n. Throws as GramSchmidtData; in the exact lattice a
/// DecimalPrecisionException is fatal, "numbers too large for the reduction".
template <class T, class R>
class LllReduction {
 public:
  /// All three must live as long as this object.
  LllReduction(Basis<T, R>& basis, GramSchmidtData<R>& data, RowVisitor& visitor,
               const LllSettings<R>& settings)
      : basis_(basis), data_(data), visitor_(visitor), settings_(settings) {}

  // Steps on one row; the Gram-Schmidt data of the rows before k are valid.

  /// Subtracts integer multiples of the rows before k from row k until no coefficient exceeds
  /// eta in magnitude; with `strict` only where that doesn't make the greatest coordinate
  /// greater. True if the row changed. A dependent row gets the status ST_DEPENDENT.
  bool sizeReduce(Index k, bool strict);
  /// Swaps rows k - 1 and k unless the Lovász condition holds. Returns the next k to look at:
  /// k - 1 after a swap, else k + 1.
  Index swapStep(Index k);
  /// Inserts row k at the first position from 2 on where it is shorter, orthogonally, than the
  /// row there by the factor of the Lovász condition. Returns that position, or k + 1.
  Index deepInsertStep(Index k);
  /// Moves row k out of the way if it is dependent: by deepInsertStep(), whose position is
  /// returned, or behind the last row up to kmax that isn't dependent, which gives -k. Returns
  /// 0 for an independent row. DependencyException "Blending is not possible".
  Index blendDependent(Index k, Index kmax);
  /// Brings row k up to date: shows it to the visitor, reduces its size, moves it away if it is
  /// dependent, which turns `strict` on. False if the pass can't go on.
  bool step(Index k, Index kmax, bool& strict);

  // Passes

  /// One pass over the rows status.k..status.to: tests and swaps up to the budget, then brings
  /// the rest up to date. The caller sets the first four fields; on return `k` is the row where
  /// the exchanges ended, and `counts` are final.
  void pass(PassStatus& status);

  // State of the first `count` rows

  /// The exchange test was made for all of them since they changed.
  bool allTested(Index count) const;
  /// They are reduced and their data valid, dependent rows behind the others.
  bool isReduced(Index count) const;
  /// Computes their Gram-Schmidt data anew if some are too long for R: data that
  /// orthogonaliseModified() computed may be far off. False if the new ones fail.
  bool renewLongData(Index count);
  /// Rows that aren't reduced lose the marks of size reduction and exchange test.
  void unmarkUnreduced(Index count);
  /// Sum over rows k of (count + 1 - k) log2 of the squared orthogonal length: what each swap
  /// lowers. Rows without valid data, or dependent ones, count 0.
  R potential(Index count) const;

  /// Insertions of deepInsertStep() so far.
  Index deepInsertions() const { return deepInsertions_; }

 private:
  /// Gram-Schmidt data of row k; false if it depends on those before.
  bool orthogonalise(Index k);
  /// One round of size reduction; the greatest factor, 0 if nothing changed.
  R reduceCoefficients(Index k, bool strict);
  /// The exchanges of a pass, up to the row where it ends.
  void exchangeRows(PassStatus& status);
  /// No coefficient of row k exceeds eta, but by rounding.
  bool isSizeReduced(Index k) const;
  /// Row k isn't 0, nor marked as dependent.
  bool seemsIndependent(Index k) const;
  /// The exchange condition of a pass holds for row k.
  bool isInOrder(Index k) const;
  /// Rows 1..count have rank `rank`, decided exactly; always true over long double.
  bool haveRank(Index count, Index rank) const;

  Basis<T, R>& basis_;
  GramSchmidtData<R>& data_;
  RowVisitor& visitor_;
  LllSettings<R> settings_;
  Index deepInsertions_ = 0;
};

/// The budget of the pass after one with these counts: doubled if more than a tenth of the tests
/// were skipped, one less, but not below `floor`, if none were.
Index nextBudget(Index budget, Index floor, const PassCounts& counts);

extern template class LllReduction<long double, long double>;

}  // namespace starsift
