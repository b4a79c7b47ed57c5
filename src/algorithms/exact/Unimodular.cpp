#include "algorithms/exact/Unimodular.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "algorithms/exact/Determinant.h"
#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// True if all entries are integers; an infinite one is fatal.
template <class T>
bool isIntegral(const Matrix<T>& matrix) {
  for (const Vector<T>& row : matrix)
    if (std::any_of(row.begin(), row.end(), &NumberTraits<T>::isInfinite))
      fail("exact matrix: infinite entry");
  const auto isInteger = [](const T& entry) {
    return entry == T() || ExactArithmetic<T>::denominator(entry) == T(1);
  };
  return std::all_of(matrix.begin(), matrix.end(), [&](const Vector<T>& row) {
    return std::all_of(row.begin(), row.end(), isInteger);
  });
}

/// The rows of a matrix, or its columns, of which some have been removed.
struct Lines {
  explicit Lines(Index count)
      : crossings(static_cast<std::size_t>(count)),
        entriesLeft(crossings.size()),
        isLeft(crossings.size(), true) {}

  /// The indices of columns, or rows, with an entry other than 0 in each line.
  std::vector<std::vector<std::size_t>> crossings;
  /// The number of those that are left.
  std::vector<std::size_t> entriesLeft;
  std::vector<bool> isLeft;

  void add(std::size_t line, std::size_t crossing) {
    crossings[line].push_back(crossing);
    ++entriesLeft[line];
  }
};

/// Removes rows and columns of a square matrix that have a single entry, each with the column or
/// row of that entry: the determinant of the rest, times the entry, is that of the whole up to
/// the sign. Little is left of a matrix that a few moves made of an identity.
template <class T>
class Peeling {
 public:
  explicit Peeling(const Matrix<T>& matrix)
      : matrix_(matrix), lines_{Lines(matrix.rowCount()), Lines(matrix.rowCount())} {
    for (std::size_t i = 0; i < order(); ++i)
      for (std::size_t j = 0; j < order(); ++j)
        if (!(at(i, j) == T())) {
          lines_[rows].add(i, j);
          lines_[columns].add(j, i);
        }
    for (const std::size_t kind : {rows, columns})
      for (std::size_t i = 0; i < order(); ++i)
        if (lines_[kind].entriesLeft[i] == 1) single_.emplace_back(kind, i);
  }

  /// False if a single entry isn't 1 or -1.
  bool run() {
    while (!single_.empty()) {
      const auto [kind, line] = single_.back();
      single_.pop_back();
      if (lines_[kind].isLeft[line] && lines_[kind].entriesLeft[line] == 1 && !peel(kind, line))
        return false;
    }
    return true;
  }

  /// What run() has left.
  Matrix<T> rest() const {
    const std::vector<std::size_t> kept = left(rows);
    const std::vector<std::size_t> keptColumns = left(columns);
    const auto count = static_cast<Index>(kept.size());
    Matrix<T> result(count, count);
    for (std::size_t i = 0; i < kept.size(); ++i)
      for (std::size_t j = 0; j < kept.size(); ++j)
        result[static_cast<Index>(i) + 1][static_cast<Index>(j) + 1] = at(kept[i], keptColumns[j]);
    return result;
  }

 private:
  static constexpr std::size_t rows = 0;
  static constexpr std::size_t columns = 1;

  std::size_t order() const { return static_cast<std::size_t>(matrix_.rowCount()); }
  const T& at(std::size_t i, std::size_t j) const {
    return matrix_[static_cast<Index>(i) + 1][static_cast<Index>(j) + 1];
  }

  std::vector<std::size_t> left(std::size_t kind) const {
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < order(); ++i)
      if (lines_[kind].isLeft[i]) result.push_back(i);
    return result;
  }

  bool peel(std::size_t kind, std::size_t line) {
    const std::size_t other = 1 - kind;
    const std::vector<std::size_t>& crossings = lines_[kind].crossings[line];
    const std::size_t crossing = *std::find_if(
        crossings.begin(), crossings.end(), [&](std::size_t k) { return lines_[other].isLeft[k]; });
    const T& entry = kind == rows ? at(line, crossing) : at(crossing, line);
    if (!(NumberTraits<T>::absolute(entry) == T(1))) return false;
    lines_[kind].isLeft[line] = false;
    lines_[other].isLeft[crossing] = false;
    for (const std::size_t k : lines_[other].crossings[crossing])
      if (--lines_[kind].entriesLeft[k] == 1) single_.emplace_back(kind, k);
    return true;
  }

  const Matrix<T>& matrix_;
  std::array<Lines, 2> lines_;
  /// Lines, by kind and index, that had a single entry left.
  std::vector<std::pair<std::size_t, std::size_t>> single_;
};

}  // namespace

template <class T>
bool isUnimodular(const Matrix<T>& matrix) {
  if (matrix.rowCount() != matrix.columnCount()) return false;
  if (!isIntegral(matrix)) return false;
  Peeling<T> peeling(matrix);
  return peeling.run() && hasUnitDeterminant(scaledIntegers(peeling.rest()).rows);
}

template bool isUnimodular(const Matrix<long double>&);
template bool isUnimodular(const Matrix<QQ>&);

}  // namespace starsift
