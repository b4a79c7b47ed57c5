// Bodies of Elimination.h. Included by the files that instantiate them.
#pragma once

#include <algorithm>
#include <cstdlib>

#include "core/Elimination.h"
#include "core/Exceptions.h"

namespace starsift {

namespace elimination {

/// First column of a row that is not zero within the tolerance, else columns + 1.
template <class T>
Index leadingColumn(const Vector<T>& row) {
  Index j = 1;
  while (j <= row.dimension() && NumberTraits<T>::isZero(row[j])) ++j;
  return j;
}

/// Row operations that go to the matrix and its transformation alike.
template <class T>
class Worker {
 public:
  Worker(Matrix<T>& a, Matrix<T>& transform) : a_(a), transform_(transform) {}

  bool oddSwaps() const { return oddSwaps_; }

  /// Moves the pivot for rows `k` and below to row k; its column, or columns + 1
  /// when the rest is zero.
  Index bringPivotTo(Index k) {
    Index pivotColumn = a_.columnCount() + 1;
    Index pivotRow = 0;
    T pivotSize = T();
    for (Index i = k; i <= a_.rowCount(); ++i) {
      const Index j = leadingColumn(a_[i]);
      if (j > a_.columnCount() || j > pivotColumn) continue;
      const T size = NumberTraits<T>::absolute(a_[i][j]);
      if (j < pivotColumn) {
        pivotColumn = j;
        pivotRow = i;
        pivotSize = size;
      } else if (size > pivotSize) {
        swapRows(i, pivotRow);
        pivotSize = size;
      }
    }
    if (pivotRow != 0) swapRows(pivotRow, k);
    return pivotColumn;
  }

  /// Clears `column` in the rows from..to against row k.
  void clearColumn(Index k, Index column, Index from, Index to) {
    for (Index i = from; i <= to; ++i) {
      if (NumberTraits<T>::isZero(a_[i][column])) continue;
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
    for (Index c = column; c <= a_.columnCount(); ++c) a_[k][c] /= q;
    for (Index c = 1; c <= transform_.columnCount(); ++c) transform_[k][c] /= q;
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
  bool oddSwaps_ = false;
};

}  // namespace elimination

template <class T>
Index eliminate(Matrix<T>& a, Matrix<T>& transform, bool reduce) {
  transform = Matrix<T>::identity(a.rowCount());
  elimination::Worker<T> worker(a, transform);
  Index rank = 0;
  for (Index k = 1; k <= a.rowCount(); ++k) {
    const Index column = worker.bringPivotTo(k);
    if (column > a.columnCount()) break;
    worker.clearColumn(k, column, k + 1, a.rowCount());
    if (reduce) {
      worker.normaliseRow(k, column);
      worker.clearColumn(k, column, 1, k - 1);
    }
    ++rank;
  }
  return worker.oddSwaps() ? -rank : rank;
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
  for (Index i = 1; i <= echelon.rowCount(); ++i) determinant *= echelon[i][i];
  return determinant;
}

}  // namespace starsift
