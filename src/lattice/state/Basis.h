// The basis of a lattice, and what belongs to its rows.
//
// Rows change in one place: by the verbs below. Each of them tells all who remember something
// of a row, and, while moves are tracked, makes the same move on the transformation.
#pragma once

#include "algorithms/exact/CoordinateFactors.h"
#include "core/Matrix.h"
#include "lattice/state/RowImages.h"
#include "lattice/state/RowMarks.h"
#include "lattice/state/VecStatus.h"

namespace starsift {

/// What an exchange of rows does to the status words of the rows from there on.
enum class RowStatus { forget, keep };

/// The rows b_1 ... b_n of a lattice in two spaces: raw space, in which the lattice was
/// generated, and working space, which is scaled and translated. Reduction changes the rows of
/// working space; `TT` leads from the generated rows to them.
template <class T, class R>
class Basis {
 public:
  /// Number of basis vectors.
  Index n = 0;
  /// Number of coordinates.
  Index m = 0;
  /// The generated basis in raw space, n x m.
  Matrix<T> B_save;
  /// Stack of transformations, each n x n; the last one is current.
  Array<Matrix<T>> TT;
  /// Factor per coordinate from raw to working space, m entries, never 0.
  Vector<T> scale;
  /// Subtracted from the scaled coordinates of an inhomogeneous vector, m entries.
  Vector<T> translation;
  /// Value of the last coordinate of an inhomogeneous vector in working space.
  T homScaled = T(1);
  /// Bits of VecStatus.h per row, n entries; slot 0 is live.
  Array<StatusWord> vecStatus;
  /// Amount that travels with each row, n entries.
  Vector<R> vectorAmounts;
  /// Mark that travels with each row, n entries.
  Array<Index> vectorMarks;
  /// Factors of B_save for coordinatesOverAll(), made on first use.
  CoordinateFactors<T> savedFactors;
  /// Factors of untransformed(), made on first use.
  CoordinateFactors<T> workingFactors;
  /// Dependent rows keep their status when rows before them change.
  bool keepDependent = false;
  /// Moves are made on the last matrix of TT as well: follows the parameter consistency.
  bool tracksMoves = false;
  /// The translation is applied: follows the parameter translate.
  bool isTranslated = false;

  /// The rows in working space, n x m.
  const Matrix<T>& B() const { return B_; }

  // Lifecycle

  /// One identity in TT, the rows of `source`, or none, as generated and as working basis, unit
  /// scale, no translation, nothing known of any row.
  void reset(const Matrix<T>* source, const T& homValue);
  /// B := B_save, one identity in TT, unit scale, no translation.
  void startFromSaved(const T& homValue);
  /// n := newN, m := newM; new entries are 0, new factors of scale 1. Status words of rows that
  /// stay are kept. Matrices of TT grow to order newN, but don't shrink.
  void resize(Index newN, Index newM);
  /// Takes the state of `other`, numbers converted strictly; what is derived from rows is made
  /// anew on demand. PrecisionException where T can't hold a number.
  template <class U>
  void convertFrom(const Basis<U, R>& other);

  // The two spaces. A vector has the factor h = last coordinate / that of an inhomogeneous
  // vector, which is homValue in raw space; the translation counts h times.

  Vector<T> toWorking(const Vector<T>& raw, const T& homValue) const;
  Vector<T> toRaw(const Vector<T>& working) const;
  Matrix<T> toWorking(const Matrix<T>& raw, const T& homValue) const;
  Matrix<T> toRaw(const Matrix<T>& working) const;
  /// The rows of B in raw space.
  Matrix<T> untransformed() const { return toRaw(B_); }

  // Verbs: the only ways to change rows of B

  /// Exchanges rows i and j, 0 <= i, j <= n, and what travels with them. With
  /// RowStatus::forget the status words from the first of them on are cleared.
  void swap(Index i, Index j, RowStatus status);
  /// b_k -= q * b_j for an integer q, j < k; the status words are the caller's.
  void subtract(Index k, Index j, const R& q);
  /// scale[i] := value, the rows mapped anew; their status is cleared if they changed.
  void setScale(Index i, const T& value, const T& homValue);
  /// B := rows, n x m; nothing is known of them.
  void replace(Matrix<T> rows);
  /// The scale becomes 1 and the translation 0, B is mapped anew.
  void clearScale(const T& homValue);
  void clearTranslation(const T& homValue);

  // What is known of rows

  /// Nothing is known of any row.
  void forgetAll();
  /// Clears the status words from row k on, for k >= 2 and while keepDependent except those of
  /// dependent rows, and the factors of untransformed().
  void forgetFrom(Index k);
  /// Row k can't be trusted to have the products that are kept of it.
  void forgetProducts(Index k) { images_.products().forget(k); }
  void forgetAllProducts() { images_.products().forgetAll(); }
  /// Rows from k on no longer carry any of the bits.
  void clearBits(Index from, StatusWord bits);
  /// Marks row k as checked; true if it is marked already and hasn't changed since.
  bool markChecked(Index k) { return checked_.mark(k); }

  /// A matrix whose rows 1..last are those of B rounded to R; valid until the next change. A
  /// squared length beyond R is fatal: "numbers too large for the reduction".
  const Matrix<R>& imagesUpTo(Index last) { return images_.of(B_, last); }
  /// Products of these rows with the orthogonal vectors.
  RowProducts<R>& products() { return images_.products(); }

 private:
  template <class U, class S>
  friend class Basis;

  Matrix<T> B_;
  RowImages<T, R> images_;
  /// Rows that went through the check of vectors as they are.
  RowMarks checked_;
};

extern template class Basis<long double, long double>;

}  // namespace starsift
