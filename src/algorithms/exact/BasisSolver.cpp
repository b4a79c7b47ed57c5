#include "algorithms/exact/BasisSolver.h"

#include <vector>

#include "algorithms/exact/Combinations.h"
#include "algorithms/exact/IntegerMatrix.h"
#include "algorithms/exact/IntegerRow.h"
#include "numbers/Conversion.h"

namespace starsift {

namespace {

/// A row as integers without a common factor, and the factor: row == factor * line.
struct Line {
  explicit Line(const Vector<QQ>& vector)
      : row(vector), factor(row.isZero() ? QQ() : factorOf(vector, row)) {}

  IntegerRow row;
  QQ factor;
};

}  // namespace

struct BasisSolver::Prepared {
  explicit Prepared(const Matrix<QQ>& basis)
      : columns(static_cast<std::size_t>(basis.columnCount())) {
    for (const Vector<QQ>& vector : basis) {
      Line line(vector);
      rows.push_back(std::move(line.row));
      factors.push_back(std::move(line.factor));
    }
    const PrimeField field(firstPrime);
    const ModularSplit split = splitRows(rows, columns, field);
    if (split.kept.size() == rows.size()) block.emplace(rows, split, field);
  }

  std::size_t columns;
  std::vector<IntegerRow> rows;
  std::vector<QQ> factors;
  /// Empty if the rows are dependent, at least modulo the prime.
  std::optional<PivotBlock> block;
};

template <class T>
BasisSolver::BasisSolver(const Matrix<T>& basis)
    : prepared_(std::make_unique<const Prepared>(finiteRationals(basis))) {}

BasisSolver::~BasisSolver() = default;

bool BasisSolver::isIndependent() const {
  return prepared_->block.has_value();
}

template <class T>
std::optional<Vector<T>> BasisSolver::integerCoordinates(const Vector<T>& vector) const {
  if (!isIndependent()) return std::nullopt;
  Vector<QQ> exact;
  exact.convertFrom(vector, false);
  Vector<T> result(static_cast<Index>(prepared_->rows.size()));
  const Line line(exact);
  if (line.row.isZero()) return result;
  const auto found = Combinations(*prepared_->block, prepared_->columns).find(line.row);
  if (!found) return std::nullopt;
  for (Index i = 1; i <= result.dimension(); ++i) {
    const auto j = static_cast<std::size_t>(i - 1);
    const QQ coordinate =
        QQ(found->numerators[j], found->denominator) * line.factor / prepared_->factors[j];
    if (!coordinate.isInteger()) return std::nullopt;
    result[i] = NumberConversion<T, QQ>::convert(coordinate);
  }
  return result;
}

template BasisSolver::BasisSolver(const Matrix<long double>&);
template BasisSolver::BasisSolver(const Matrix<QQ>&);
template std::optional<Vector<long double>> BasisSolver::integerCoordinates(
    const Vector<long double>&) const;
template std::optional<Vector<QQ>> BasisSolver::integerCoordinates(const Vector<QQ>&) const;

}  // namespace starsift
