// Bodies of Elimination.h. Included by the files that instantiate them.
#pragma once

#include <algorithm>
#include <cstdlib>

#include "core/Elimination.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

namespace elimination {

/// True if the value counts as zero: within the tolerance of a type that rounds, exactly
/// zero for an exact type, where a small value is a valid pivot.
template <class T>
bool vanishes(const T& value) {
  return NumberTraits<T>::exact ? value == T() : NumberTraits<T>::isZero(value);
}

/// First column in which the row doesn't vanish, or columns + 1 if there is none.
template <class T>
Index leadingColumn(const Vector<T>& row) {
  Index j = 1;
  while (j <= row.dimension() && vanishes(row[j])) ++j;
  return j;
}

/// When a row that starts in the same column with a greater entry replaces the pivot
/// row: as soon as it is found, or once, by the greatest of all. The results differ in
/// the order of the rows and in the parity of the swaps.
enum class Exchange { onSight, once };

/// Row operations, applied to both the matrix and its transformation.
template <class T>
class Worker {
 public:
  Worker(Matrix<T>& a, Matrix<T>& transform, Exchange exchange)
      : a_(a), transform_(transform), exchange_(exchange) {}

  bool oddSwaps() const { return oddSwaps_; }

  /// Moves the pivot of the rows from `k` on to row k. Returns its column, or columns + 1
  /// if these rows are zero.
  Index bringPivotTo(Index k) {
    Index pivotColumn = a_.columnCount() + 1;
    Index pivotRow = 0;
    T pivotSize = T();
    for (Index i = k; i <= a_.rowCount(); ++i) {
      const Index j = leadingColumn(a_[i]);
      if (j > a_.columnCount() || j > pivotColumn) continue;
      const T size = NumberTraits<T>::absolute(a_[i][j]);
      if (j == pivotColumn && !(size > pivotSize)) continue;
      if (j == pivotColumn && exchange_ == Exchange::onSight)
        swapRows(i, pivotRow);
      else
        pivotRow = i;
      pivotColumn = j;
      pivotSize = size;
    }
    if (pivotRow != 0) swapRows(pivotRow, k);
    return pivotColumn;
  }

  /// Clears `column` in the rows from..to with row k.
  void clearColumn(Index k, Index column, Index from, Index to) {
    for (Index i = from; i <= to; ++i) {
      if (vanishes(a_[i][column])) continue;
      const T q = a_[i][column] / a_[k][column];
      if (NumberTraits<T>::overflowCheck(q)) throw PrecisionException("q overflow");
      for (Index c = column; c <= a_.columnCount(); ++c)
        NumberTraits<T>::subtractProduct(a_[i][c], a_[k][c], q);
      for (Index c = 1; c <= transform_.columnCount(); ++c)
        NumberTraits<T>::subtractProduct(transform_[i][c], transform_[k][c], q);
    }
  }

  /// Divides row k by its pivot.
  void normaliseRow(Index k, Index column) {
    const T q = a_[k][column];
    if (NumberTraits<T>::overflowCheck(q)) throw PrecisionException("q2 overflow");
    for (Index c = column; c <= a_.columnCount(); ++c) NumberTraits<T>::divide(a_[k][c], q);
    for (Index c = 1; c <= transform_.columnCount(); ++c)
      NumberTraits<T>::divide(transform_[k][c], q);
  }

  /// True if none of the rows 1..last is zero.
  bool areSet(Index last) const {
    return std::all_of(a_.begin(), a_.begin() + last, [this](const Vector<T>& row) {
      return leadingColumn(row) <= a_.columnCount();
    });
  }

 private:
  void swapRows(Index i, Index j) {
    if (i == j) return;
    a_.swapRows(i, j);
    transform_.swapRows(i, j);
    oddSwaps_ = !oddSwaps_;
  }

  Matrix<T>& a_;
  Matrix<T>& transform_;
  Exchange exchange_;
  bool oddSwaps_ = false;
};

/// Implements eliminate() and the variants that differ only in the row swaps.
template <class T>
Index toEchelon(Matrix<T>& a, Matrix<T>& transform, bool reduce, Exchange exchange) {
  transform = Matrix<T>::identity(a.rowCount());
  Worker<T> worker(a, transform, exchange);
  Index rank = 0;
  for (Index k = 1; k <= a.rowCount(); ++k) {
    const Index column = worker.bringPivotTo(k);
    if (column > a.columnCount()) break;
    worker.clearColumn(k, column, k + 1, a.rowCount());
    if (reduce) {
      worker.normaliseRow(k, column);
      worker.clearColumn(k, column, 1, k - 1);
      // A row above keeps its pivot, 1, if this pivot is further right. It is, unless
      // rounding left more than the tolerance below a former pivot: over long double that
      // takes entries above safeBound, which normaliseRow() rejects; over floats of few
      // bits without that bound it happens.
      if (!worker.areSet(k - 1)) fail("This should not happen -- check it");
    }
    ++rank;
  }
  return worker.oddSwaps() ? -rank : rank;
}

}  // namespace elimination

template <class T>
Index eliminate(Matrix<T>& a, Matrix<T>& transform, bool reduce) {
  return elimination::toEchelon(a, transform, reduce, elimination::Exchange::onSight);
}

template <class T>
T eliminationDeterminant(const Matrix<T>& matrix) {
  if (matrix.rowCount() != matrix.columnCount())
    fail("Matrix: a non-quadratic matrix determinant is not defined");
  Matrix<T> echelon(matrix);
  Matrix<T> transform;
  const Index rank = eliminate(echelon, transform, false);
  if (rank == 0) return T(0);
  T determinant = T(rank < 0 ? -1 : 1);
  // Not *=, which would keep the precision of the initial sign.
  for (Index i = 1; i <= echelon.rowCount(); ++i) determinant = determinant * echelon[i][i];
  return determinant;
}

}  // namespace starsift
