// Gram-Schmidt data of a basis, computed in three ways.
//
// Q has one owner at a time. The full factorisation and the reduced one with its cache both
// write it from the row at which they restart. Before that, this row and all rows after it lose
// the bits for Q, so that neither factorisation uses rows of the other, and a run that throws
// leaves no row that seems valid. The reduced factorisation without cache stores no factors.
#pragma once

#include "algorithms/reduction/Reflectors.h"
#include "lattice/state/Basis.h"

namespace starsift {

/// Factors that are kept for the next run over unchanged rows.
template <class R>
struct LqFactors {
  /// Work rows of the reduced factorisation, one matrix per step.
  Array<Matrix<R>> lqCache;
  /// Squared lengths of the reduced factorisation.
  Vector<R> _d;
  /// Triangular factor of the reduced factorisation.
  Matrix<R> Lr;
  /// Triangular factor of the full factorisation.
  Matrix<R> L;
  /// Reflectors of the full factorisation.
  Reflectors<R> Ps;
};

enum class OnDependency { report, fail };
enum class LqCache { bypass, use };

/// mu, cLen and bSq of the rows of a basis. A row is valid if its status word in the basis has
/// ST_MU.
///
/// The orthogonalisations work on the rows from..to of B, 1 <= from; `to` of 0 stands for n. A
/// row depends on the rows before it if its squared orthogonal length is at most eps; its status
/// word becomes ST_DEPENDENT, and the rows after it are not processed. In the exact lattice rows
/// whose squared length long double can't hold are fatal, "numbers too large for the reduction".
template <class R>
class GramSchmidtData {
 public:
  /// Gram-Schmidt coefficients, n x n.
  Matrix<R> mu;
  /// Squared lengths of the Gram-Schmidt vectors, n entries.
  Vector<R> cLen;
  /// Squared lengths of the rows, n entries.
  Vector<R> bSq;
  /// Orthogonalised rows; valid for rows with ST_Q.
  Matrix<R> Q;
  LqFactors<R> factors;

  /// For n rows; new entries are 0, the factors are cleared.
  void resize(Index n);
  /// Sets cLen and bSq to 0.
  void clearLengths();
  /// Clears Q and the factors. The caller clears their bits in the status words.
  void clearFactors();

  /// The greatest k such that rows 1..k are valid.
  template <class T>
  Index validUpTo(const Basis<T, R>& basis) const;

  /// Row by row: rows before `from` are assumed valid, rows with ST_MU are skipped; sets ST_MU.
  /// Returns false at a dependent row. Throws as classicGramSchmidt().
  template <class T>
  bool orthogonaliseClassic(Basis<T, R>& basis, Index from, Index to);
  /// By lq_reduced(), from the first row without ST_CACHED_ROW on; the status words become
  /// ST_CACHED_ROW with LqCache::use, else ST_MU. Returns 0 or the first dependent row, which
  /// with OnDependency::fail is fatal: "Linear dependency detected - remove these first!".
  /// Throws as lq_reduced(), or DecimalPrecisionException "mu-mod has nan entry" or "cLen-mod
  /// has infinite entry".
  template <class T>
  Index orthogonaliseModified(Basis<T, R>& basis, Index from, Index to, OnDependency reaction,
                              LqCache cache);
  /// By lq_full(), from the first row without ST_FULL_ROW on; the status words become
  /// ST_FULL_ROW, the rows of Q the Gram-Schmidt vectors. Returns 0 or the first dependent row,
  /// m + 1 at most; with OnDependency::fail it is fatal: "Linear dependency detected - remove
  /// first!". Throws as lq_full().
  template <class T>
  Index orthogonaliseFull(Basis<T, R>& basis, Index from, Index to, OnDependency reaction);

 private:
  /// Stores rows first..last of mu, cLen and bSq from factors of the rows 1..last; their status
  /// becomes `word`. Returns 0 or the first dependent row.
  template <class T>
  Index storeFromReduced(Basis<T, R>& basis, const Matrix<R>& triangle, const Vector<R>& lengths,
                         Index first, Index last, StatusWord word);
  /// The same from L and Q, which were recomputed from row `restart` on.
  template <class T>
  Index storeFromFull(Basis<T, R>& basis, Index restart, Index first, Index last);
  /// Stores bSq[k] and cLen[k]; returns true, with the status set, if the row is dependent. The
  /// row of mu is not valid yet.
  bool storeLengths(StatusWord& word, Index k, const R& rowLength, const R& orthogonalLength);
};

extern template class GramSchmidtData<long double>;

}  // namespace starsift
