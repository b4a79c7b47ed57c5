// The basis of a lattice, and the data that belong to its rows.
//
// Rows change only by the verbs below. Each of them invalidates the cached data of the rows that
// it changes and, while moves are tracked, makes the same move on the transformation.
#pragma once

#include <vector>

#include "algorithms/exact/CoordinateFactors.h"
#include "algorithms/reduction/SizeReduce.h"
#include "core/Matrix.h"
#include "lattice/state/RowImages.h"
#include "lattice/state/RowMarks.h"
#include "lattice/state/VecStatus.h"

namespace starsift {

/// Whether a swap clears the status words from the first of the two rows on.
enum class RowStatus { forget, keep };

/// The rows b_1 ... b_n of a lattice in two spaces: raw space, in which the lattice was
/// generated, and working space, which is scaled and translated. Reduction changes the rows in
/// working space; `TT` holds the transformations from the generated rows to these.
template <class T, class R>
class Basis {
 public:
  /// Number of basis vectors.
  Index n = 0;
  /// Number of coordinates.
  Index m = 0;
  /// The generated basis in raw space, n x m.
  Matrix<T> B_save;
  /// Stack of unimodular transformations, each n x n; the last one is current.
  Array<Matrix<T>> TT;
  /// Factor per coordinate from raw to working space, m entries, never 0.
  Vector<T> scale;
  /// Subtracted from the scaled coordinates of an inhomogeneous vector, m entries.
  Vector<T> translation;
  /// Value of the last coordinate of an inhomogeneous vector in working space.
  T homScaled = T(1);
  /// Bits of VecStatus.h per row, n entries; slot 0 is in use as well.
  Array<StatusWord> vecStatus;
  /// Amount that moves with each row, n entries; kept for hosts.
  Vector<R> vectorAmounts;
  /// Mark that moves with each row, n entries; kept for hosts.
  Array<Index> vectorMarks;
  /// Factors of B_save for coordinatesOverAll(), computed on first use.
  CoordinateFactors<T> savedFactors;
  /// Factors of untransformed(), computed on first use.
  CoordinateFactors<T> workingFactors;
  /// forgetFrom() keeps the status of dependent rows.
  bool keepDependent = false;
  /// Moves are made on the last matrix of TT as well; set from the parameter consistency.
  bool tracksMoves = false;
  /// The translation is applied; set from the parameter translate.
  bool isTranslated = false;

  /// The rows in working space, n x m.
  const Matrix<T>& B() const { return B_; }

  // Lifecycle

  /// Generated and working basis := the rows of `source`, none if null; one identity in TT, unit
  /// scale, no translation, all row data invalid.
  void reset(const Matrix<T>* source, const T& homValue);
  /// B := B_save, one identity in TT, unit scale, no translation.
  void startFromSaved(const T& homValue);
  /// Frees B_save, B and TT, until resize() and startFromSaved() make others. n and m stay.
  void dropRows();
  /// n := newN, m := newM; new entries are 0, new factors of scale 1. Remaining rows keep their
  /// status words. Matrices of TT grow to order newN, but don't shrink.
  void resize(Index newN, Index newM);
  /// Copies the state of `other`, numbers converted strictly; data derived from rows are
  /// recomputed on demand. PrecisionException if T can't hold a number.
  template <class U>
  void convertFrom(const Basis<U, R>& other);

  // The two spaces. The factor h of a vector is its last coordinate over the last coordinate of
  // an inhomogeneous vector, which is homValue in raw space; the translation is applied h times.

  Vector<T> toWorking(const Vector<T>& raw, const T& homValue) const;
  Vector<T> toRaw(const Vector<T>& working) const;
  Matrix<T> toWorking(const Matrix<T>& raw, const T& homValue) const;
  Matrix<T> toRaw(const Matrix<T>& working) const;
  /// The rows of B in raw space.
  Matrix<T> untransformed() const { return toRaw(B_); }

  // Verbs: the only ways to change rows of B

  /// Swaps rows i and j, 0 <= i, j <= n, and the data that move with them. With
  /// RowStatus::forget the status words from the first of them on are cleared.
  void swap(Index i, Index j, RowStatus status);
  /// b_k -= q * b_j for each multiple q, an integer, of a row j < k, in their order; the caller
  /// updates the status words.
  void subtract(Index k, const std::vector<RowMultiple<R>>& multiples);
  /// scale[i] := value, the rows mapped again; their status is cleared if they changed.
  void setScale(Index i, const T& value, const T& homValue);
  /// B := rows, n x m; all row data become invalid.
  void replace(Matrix<T> rows);
  /// Sets the translation so that this raw vector with h = 1, m entries, becomes 0 but for its last
  /// entry, which must be 0, and maps B again. Without effect on B unless isTranslated.
  void setCentre(const Vector<T>& centre, const T& homValue);
  /// Sets the scale to 1, or the translation to 0, and maps B again.
  void clearScale(const T& homValue);
  void clearTranslation(const T& homValue);

  // Validity of row data

  /// Invalidates the data of all rows.
  void forgetAll();
  /// Clears the status words from row k on and the factors of untransformed(). While
  /// keepDependent, and if k >= 2, dependent rows keep their status words.
  void forgetFrom(Index k);
  /// Invalidates the stored products of row k.
  void forgetProducts(Index k) { images_.products().forget(k); }
  void forgetAllProducts() { images_.products().forgetAll(); }
  /// Clears the bits in the status words of the rows `from`..n.
  void clearBits(Index from, StatusWord bits);
  /// Marks row k as checked; true if it was marked already and hasn't changed since.
  bool markChecked(Index k) { return checked_.mark(k); }

  /// A matrix whose rows 1..last are those of B rounded to R; valid until the next change. A
  /// squared length beyond R is fatal: "numbers too large for the reduction".
  const Matrix<R>& imagesUpTo(Index last) { return images_.of(B_, last); }
  /// Products of these rows with the Gram-Schmidt vectors.
  RowProducts<R>& products() { return images_.products(); }

 private:
  template <class U, class S>
  friend class Basis;

  Matrix<T> B_;
  RowImages<T, R> images_;
  /// Rows that were checked as vectors and haven't changed since.
  RowMarks checked_;
};

extern template class Basis<long double, long double>;

}  // namespace starsift
