// Gram-Schmidt data of a basis, three ways to it.
//
// Q has one owner at a time. The full factorisation and the reduced one with its cache both
// write it from the row on where they restart; the rows behind lose the bits that spoke of it
// first, so that neither finds the other's rows there, and a run that throws leaves nothing
// that seems valid. The reduced one without cache keeps its factors to itself.
#pragma once

#include "algorithms/reduction/Reflectors.h"
#include "lattice/state/Basis.h"

namespace starsift {

/// What the factorisations keep for the next run over unchanged rows.
template <class R>
struct LqFactors {
  /// Work rows of the reduced factorisation, one matrix a step.
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

/// mu, cLen and bSq of the rows of a basis. Which rows are valid is told by the status words of
/// the basis: those with ST_MU.
///
/// The ways to them work on the rows from..to of B, 1 <= from; `to` of 0 stands for n. A row
/// depends on those before it when its squared orthogonal length is not above eps; its status
/// word is ST_DEPENDENT then, and the rows behind it are left. In the exact lattice rows whose
/// squared length long double can't hold are fatal, "numbers too large for the reduction".
template <class R>
class GramSchmidtData {
 public:
  /// Gram-Schmidt coefficients, n x n.
  Matrix<R> mu;
  /// Squared lengths of the orthogonalised rows, n entries.
  Vector<R> cLen;
  /// Squared lengths of the rows, n entries.
  Vector<R> bSq;
  /// Orthogonalised rows where ST_Q is set.
  Matrix<R> Q;
  LqFactors<R> factors;

  /// For n rows; new entries are 0, the factors are emptied.
  void resize(Index n);
  /// Lengths become 0.
  void clearLengths();
  /// Empties Q and the factors. The status words that speak of them are the caller's.
  void clearFactors();

  /// The last row up to which all rows are valid.
  template <class T>
  Index validUpTo(const Basis<T, R>& basis) const;

  /// Row by row, rows before `from` taken as done and rows with ST_MU skipped; sets ST_MU.
  /// False at a dependent row. Throws as classicGramSchmidt().
  template <class T>
  bool orthogonaliseClassic(Basis<T, R>& basis, Index from, Index to);
  /// By lq_reduced(), from the first row on that isn't ST_CACHED_ROW; the words of the rows
  /// become that with LqCache::use, else ST_MU. Returns 0 or the first dependent row, which
  /// with OnDependency::fail is fatal: "Linear dependency detected - remove these first!".
  /// Throws as lq_reduced(), or DecimalPrecisionException "mu-mod has nan entry" or "cLen-mod
  /// has infinite entry".
  template <class T>
  Index orthogonaliseModified(Basis<T, R>& basis, Index from, Index to, OnDependency reaction,
                              LqCache cache);
  /// By lq_full(), from the first row on that isn't ST_FULL_ROW, which the words of the rows
  /// become; the rows of Q are the Gram-Schmidt vectors. Returns 0 or the first dependent row,
  /// m + 1 at most; with OnDependency::fail it is fatal: "Linear dependency detected - remove
  /// first!". Throws as lq_full().
  template <class T>
  Index orthogonaliseFull(Basis<T, R>& basis, Index from, Index to, OnDependency reaction);

 private:
  /// Rows first..last of mu, cLen and bSq from factors that reach row `last`; `word` becomes
  /// their status. 0 or the dependent row.
  template <class T>
  Index storeFromReduced(Basis<T, R>& basis, const Matrix<R>& triangle, const Vector<R>& lengths,
                         Index first, Index last, StatusWord word);
  /// The same from L and Q, which were computed anew from row `restart` on.
  template <class T>
  Index storeFromFull(Basis<T, R>& basis, Index restart, Index first, Index last);
  /// bSq[k] and cLen[k]; true, with the status set, for a dependent row. The row of mu is not
  /// valid yet.
  bool storeLengths(StatusWord& word, Index k, const R& rowLength, const R& orthogonalLength);
};

extern template class GramSchmidtData<long double>;

}  // namespace starsift
