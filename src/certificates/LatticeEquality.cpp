#include "certificates/LatticeEquality.h"

#include <algorithm>
#include <optional>

#include "algorithms/exact/Combinations.h"
#include "algorithms/exact/IndependentRows.h"
#include "algorithms/exact/IntegerMatrix.h"
#include "algorithms/exact/Unimodular.h"
#include "certificates/HermiteForm.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

bool isZero(const Vector<QQ>& row) {
  return std::all_of(row.begin(), row.end(), [](const QQ& entry) { return entry.isZero(); });
}

/// Independent rows that span the lattice of `rows`.
Matrix<QQ> basisOf(Matrix<QQ> rows) {
  for (Index i = rows.rowCount(); i > 0; --i)
    if (isZero(rows[i])) rows.removeRow(i);
  const auto rank = static_cast<Index>(independentRows(rows).size());
  return rank == rows.rowCount() ? rows : hermiteForm(rows);
}

/// A row as factor * line.
struct Lines {
  std::vector<IntegerRow> lines;
  std::vector<QQ> factors;

  explicit Lines(const Matrix<QQ>& rows) {
    for (const Vector<QQ>& row : rows) {
      lines.emplace_back(row);
      factors.push_back(factorOf(row, lines.back()));
    }
  }
};

/// X with X * basis == rows; empty if there is no such matrix of integers.
std::optional<Matrix<QQ>> integerCoordinates(const Matrix<QQ>& rows, const Matrix<QQ>& basis) {
  const Lines from(basis);
  const Lines to(rows);
  const auto columns = static_cast<std::size_t>(basis.columnCount());
  const PrimeField field = separatingField(from.lines, columns);
  const PivotBlock block(from.lines, splitRows(from.lines, columns, field), field);
  Combinations combinations(block, columns);
  Matrix<QQ> result(rows.rowCount(), basis.rowCount());
  for (std::size_t i = 0; i < to.lines.size(); ++i) {
    const std::optional<Coefficients> coefficients = combinations.find(to.lines[i]);
    if (!coefficients) return std::nullopt;
    const QQ factor = to.factors[i] / QQ(coefficients->denominator);
    for (std::size_t j = 0; j < from.lines.size(); ++j) {
      QQ& entry = result[static_cast<Index>(i) + 1][static_cast<Index>(j) + 1];
      entry = factor * QQ(coefficients->numerators[j]) / from.factors[j];
      if (!entry.isInteger()) return std::nullopt;
    }
  }
  return result;
}

}  // namespace

template <class T>
bool sameLattice(const Matrix<T>& a, const Matrix<T>& b) {
  if (a.columnCount() != b.columnCount()) return false;
  const Matrix<QQ> first = basisOf(finiteRationals(a));
  const Matrix<QQ> second = basisOf(finiteRationals(b));
  if (first.rowCount() != second.rowCount()) return false;
  const std::optional<Matrix<QQ>> coordinates = integerCoordinates(second, first);
  return coordinates && isUnimodular(*coordinates);
}

template bool sameLattice(const Matrix<long double>&, const Matrix<long double>&);
template bool sameLattice(const Matrix<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
