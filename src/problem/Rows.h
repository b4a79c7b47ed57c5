// Operations on the rows and columns of a problem that several of its steps towards normal
// form use.
#pragma once

#include <algorithm>
#include <numeric>
#include <vector>

#include "problem/Vanu.h"

namespace starsift {

/// 1, 2, ..., count.
inline std::vector<Index> indicesTo(Index count) {
  std::vector<Index> indices(static_cast<std::size_t>(count));
  std::iota(indices.begin(), indices.end(), Index{1});
  return indices;
}

/// -value, but 0 instead of the -0 of long double.
template <class T>
T negated(const T& value) {
  return T() - value;
}

/// Plain equations that are to be added to a problem.
template <class T>
struct PlainEquations {
  std::vector<Vector<T>> rows;
  std::vector<T> values;

  void add(Vector<T>&& row, const T& value) {
    rows.push_back(std::move(row));
    values.push_back(value);
  }
  Index count() const { return static_cast<Index>(rows.size()); }
};

/// Extends all matrices to a column per variable, even if they have no rows; new columns are
/// zero. Not for a problem with modulus columns.
template <class T>
void fitColumns(Vanu<T>& problem) {
  for (Matrix<T>* matrix : {&problem.At, &problem.Ag, &problem.Au})
    matrix->resize(matrix->rowCount(), problem.rx.dimension(), false);
}

/// Inserts `added` before element `position` of `elements`, in order.
template <class T>
void insertElements(Array<T>& elements, Index position, std::vector<T>& added) {
  const auto count = static_cast<Index>(added.size());
  elements.resize(elements.dimension() + count, false);
  std::move_backward(elements.begin() + (position - 1), elements.end() - count, elements.end());
  std::move(added.begin(), added.end(), elements.begin() + (position - 1));
}

/// Inserts the equations before equation `position`, 1 <= position <= Ag.rowCount() + 1.
template <class T>
void insertEquations(Vanu<T>& problem, Index position, PlainEquations<T>&& added) {
  if (added.rows.empty()) return;
  if (problem.Ag.rowCount() == 0) problem.Ag.resize(0, added.rows.front().dimension(), false);
  if (problem.qg.isSet()) {
    std::vector<T> plain(added.rows.size());
    insertElements(problem.qg, position, plain);
  }
  insertElements(problem.Ag, position, added.rows);
  insertElements(problem.bg, position, added.values);
}

/// Keeps the elements with the given 1-based indices, each at most once, in that order.
template <class T>
void selectElements(Array<T>& elements, const std::vector<Index>& selected) {
  std::vector<T> kept;
  kept.reserve(selected.size());
  for (const Index j : selected) kept.push_back(std::move(elements[j]));
  elements.resize(static_cast<Index>(kept.size()), false);
  std::move(kept.begin(), kept.end(), elements.begin());
}

/// The same with the columns of every row.
template <class T>
void selectColumns(Matrix<T>& matrix, const std::vector<Index>& selected) {
  for (Vector<T>& row : matrix) selectElements(row, selected);
  matrix.resize(matrix.rowCount(), static_cast<Index>(selected.size()), false);
}

/// Removes `count` elements from `position` on, 1 <= position, position + count - 1 <=
/// dimension.
template <class T>
void removeElements(Array<T>& elements, Index position, Index count) {
  std::move(elements.begin() + (position + count - 1), elements.end(),
            elements.begin() + (position - 1));
  elements.resize(elements.dimension() - count, false);
}

/// The first `rowCount` rows without `count` columns from `position` on.
template <class T>
Matrix<T> withoutColumns(const Matrix<T>& rows, Index rowCount, Index position, Index count) {
  Matrix<T> result(rowCount, rows.columnCount() - count);
  for (Index i = 1; i <= rowCount; ++i) {
    const Vector<T>& row = rows[i];
    const auto next = std::copy_n(row.begin(), position - 1, result[i].begin());
    std::copy(row.begin() + (position + count - 1), row.end(), next);
  }
  return result;
}

}  // namespace starsift
