#include "algorithms/exact/IndependentRows.h"

#include <functional>
#include <set>
#include <utility>

#include "algorithms/exact/Combinations.h"
#include "algorithms/exact/IndependentRowsDetail.h"

namespace starsift {

namespace {

struct Before {
  bool operator()(const IntegerRow& a, const IntegerRow& b) const { return a < b; }
};

/// Rows that are neither zero nor a multiple of a row above, with their indices.
struct DistinctRows {
  std::vector<IntegerRow> rows;
  std::vector<Index> indices;
};

template <class T>
DistinctRows distinctRows(const Matrix<T>& matrix) {
  DistinctRows result;
  // Growth of the vector would invalidate the references.
  result.rows.reserve(static_cast<std::size_t>(matrix.rowCount()));
  std::set<std::reference_wrapper<const IntegerRow>, Before> known;
  for (Index i = 1; i <= matrix.rowCount(); ++i) {
    const IntegerRow& row = result.rows.emplace_back(matrix[i]);
    if (!row.isZero() && known.insert(row).second)
      result.indices.push_back(i);
    else
      result.rows.pop_back();
  }
  return result;
}

}  // namespace

namespace detail {

std::optional<std::vector<std::size_t>> provenSplit(std::span<const IntegerRow> rows,
                                                    std::size_t columns, const PrimeField& field) {
  ModularSplit split = splitRows(rows, columns, field);
  if (split.doubtful.empty()) return std::move(split.kept);
  const PivotBlock block(rows, split, field);
  Combinations combinations(block, columns);
  std::size_t above = 0;
  for (const std::size_t i : split.doubtful) {
    while (above < split.kept.size() && split.kept[above] < i) ++above;
    if (!combinations.findAbove(above, rows[i])) return std::nullopt;
  }
  return std::move(split.kept);
}

std::vector<std::size_t> independentIntegerRows(std::span<const IntegerRow> rows,
                                                std::size_t columns, std::uint32_t prime) {
  while (true) {
    std::optional<std::vector<std::size_t>> kept = provenSplit(rows, columns, PrimeField(prime));
    if (kept) return std::move(*kept);
    prime = nextPrime(prime);
  }
}

}  // namespace detail

template <class T>
std::vector<Index> independentRows(const Matrix<T>& rows) {
  const DistinctRows distinct = distinctRows(rows);
  std::vector<Index> result;
  for (const std::size_t i : detail::independentIntegerRows(
           distinct.rows, static_cast<std::size_t>(rows.columnCount()), firstPrime))
    result.push_back(distinct.indices[i]);
  return result;
}

template std::vector<Index> independentRows(const Matrix<long double>&);
template std::vector<Index> independentRows(const Matrix<QQ>&);

}  // namespace starsift
