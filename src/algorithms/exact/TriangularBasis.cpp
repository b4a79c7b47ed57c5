#include "algorithms/exact/TriangularBasis.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numbers/ExactArithmetic.h"

namespace starsift {

namespace {

/// The indices of the entries of each line that aren't 0, by the 1-based index of the line.
using Crossings = std::vector<std::vector<Index>>;

Crossings linesOf(Index count) {
  return Crossings(static_cast<std::size_t>(count) + 1);
}

std::vector<Index>& lineOf(Crossings& lines, Index line) {
  return lines[static_cast<std::size_t>(line)];
}

}  // namespace

template <class T>
std::optional<TriangularBasis> TriangularBasis::of(const Matrix<T>& basis) {
  Crossings rows = linesOf(basis.rowCount());
  Crossings columns = linesOf(basis.columnCount());
  for (Index i = 1; i <= basis.rowCount(); ++i)
    for (Index j = 1; j <= basis.columnCount(); ++j) {
      if (basis[i][j] == T()) continue;
      lineOf(rows, i).push_back(j);
      lineOf(columns, j).push_back(i);
    }
  std::vector<Index> open;
  std::vector<std::size_t> left;
  for (const std::vector<Index>& column : columns) left.push_back(column.size());
  for (Index j = 1; j <= basis.columnCount(); ++j)
    if (left[static_cast<std::size_t>(j)] == 1) open.push_back(j);
  std::vector<bool> isOrdered(rows.size(), false);
  const auto ordered = [&isOrdered](Index i) { return isOrdered[static_cast<std::size_t>(i)]; };
  TriangularBasis result;
  while (!open.empty()) {
    const Index column = open.back();
    open.pop_back();
    std::vector<Index>& entries = lineOf(columns, column);
    const auto last = std::find_if_not(entries.begin(), entries.end(), ordered);
    if (last == entries.end()) continue;
    const Index row = *last;
    entries.erase(last);
    result.pivots_.push_back({row, column, std::move(entries)});
    entries.clear();
    isOrdered[static_cast<std::size_t>(row)] = true;
    for (const Index j : lineOf(rows, row))
      if (--left[static_cast<std::size_t>(j)] == 1) open.push_back(j);
  }
  if (static_cast<Index>(result.pivots_.size()) < basis.rowCount()) return std::nullopt;
  return result;
}

template <class T>
std::optional<Vector<T>> TriangularBasis::integerCoordinates(const Matrix<T>& basis,
                                                             const Vector<T>& vector) const {
  Vector<T> result(basis.rowCount());
  for (const Pivot& pivot : pivots_) {
    T rest = vector[pivot.column];
    for (const Index i : pivot.earlier)
      if (!(result[i] == T()))
        ExactArithmetic<T>::subtractProduct(rest, result[i], basis[i][pivot.column]);
    if (rest == T()) continue;
    const T& divisor = basis[pivot.row][pivot.column];
    // It was another number in the basis that the order belongs to.
    if (divisor == T()) return std::nullopt;
    const T quotient = ExactArithmetic<T>::quotient(rest, divisor);
    if (!(ExactArithmetic<T>::rounded(quotient) == quotient)) return std::nullopt;
    result[pivot.row] = quotient;
  }
  return result;
}

template std::optional<TriangularBasis> TriangularBasis::of(const Matrix<long double>&);
template std::optional<TriangularBasis> TriangularBasis::of(const Matrix<QQ>&);
template std::optional<Vector<long double>> TriangularBasis::integerCoordinates(
    const Matrix<long double>&, const Vector<long double>&) const;
template std::optional<Vector<QQ>> TriangularBasis::integerCoordinates(const Matrix<QQ>&,
                                                                       const Vector<QQ>&) const;

}  // namespace starsift
