// Resizing with new entries 0, even if the storage still holds old ones.
#pragma once

#include <algorithm>

#include "core/Matrix.h"

namespace starsift {

template <class T>
void resizeFilled(Array<T>& entries, Index dimension) {
  const Index before = entries.dimension();
  entries.resize(dimension, false);
  for (Index i = before + 1; i <= dimension; ++i) entries[i] = T();
}

template <class T>
void resizeFilled(Matrix<T>& matrix, Index rows, Index columns) {
  const Index before = matrix.rowCount();
  matrix.resize(rows, columns, false);
  for (Index i = before + 1; i <= rows; ++i) std::fill(matrix[i].begin(), matrix[i].end(), T());
}

}  // namespace starsift
