#include "algorithms/exact/ModularElimination.h"

namespace starsift {

namespace {

/// The rows kept so far, each with pivot 1 and stored without the zeros before it.
class Echelon {
 public:
  Echelon(std::size_t columns, const PrimeField& field)
      : field_(field), columns_(columns), work_(field, columns) {}

  const std::vector<std::size_t>& pivots() const { return pivots_; }
  /// Product of the pivots before they were normalised to 1.
  std::uint32_t product() const { return product_; }

  /// Keeps the row, of a type that LazySum accepts, if it is independent of the rows kept so far.
  template <class Row>
  bool add(const Row& row) {
    work_.assign(row);
    for (std::size_t i = 0; i < tails_.size(); ++i) {
      const std::uint32_t factor = work_[pivots_[i]];
      if (factor != 0) work_.addMultiple(field_.negate(factor), tails_[i], pivots_[i]);
    }
    std::size_t pivot = 0;
    while (pivot < columns_ && work_[pivot] == 0) ++pivot;
    if (pivot == columns_) return false;
    keepFrom(pivot);
    return true;
  }

 private:
  void keepFrom(std::size_t pivot) {
    pivots_.push_back(pivot);
    product_ = field_.multiply(product_, work_[pivot]);
    std::vector<std::uint32_t>& tail = tails_.emplace_back();
    tail.reserve(columns_ - pivot);
    const std::uint32_t scale = field_.inverse(work_[pivot]);
    for (std::size_t j = pivot; j < columns_; ++j) tail.push_back(field_.multiply(scale, work_[j]));
  }

  PrimeField field_;
  std::size_t columns_;
  LazySum work_;
  std::vector<std::size_t> pivots_;
  std::vector<std::vector<std::uint32_t>> tails_;
  std::uint32_t product_ = 1;
};

/// True if the number of inversions is odd.
bool isOdd(std::span<const std::size_t> permutation) {
  bool isOdd = false;
  for (std::size_t i = 0; i < permutation.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      if (permutation[j] > permutation[i]) isOdd = !isOdd;
  return isOdd;
}

}  // namespace

ModularSplit splitRows(std::span<const IntegerRow> rows, std::size_t columns,
                       const PrimeField& field) {
  ModularSplit split;
  Echelon echelon(columns, field);
  for (std::size_t i = 0; i < rows.size() && split.kept.size() < columns; ++i)
    (echelon.add(rows[i]) ? split.kept : split.doubtful).push_back(i);
  split.pivots = echelon.pivots();
  return split;
}

PrimeField separatingField(std::span<const IntegerRow> rows, std::size_t columns) {
  std::uint32_t prime = firstPrime;
  while (splitRows(rows, columns, PrimeField(prime)).kept.size() < rows.size())
    prime = nextPrime(prime);
  return PrimeField(prime);
}

std::uint32_t determinant(const ModularMatrix& matrix, const PrimeField& field) {
  Echelon echelon(matrix.size(), field);
  for (const std::vector<std::uint32_t>& row : matrix)
    if (!echelon.add(row)) return 0;
  return isOdd(echelon.pivots()) ? field.negate(echelon.product()) : echelon.product();
}

void invert(ModularMatrix& matrix, const PrimeField& field) {
  for (std::size_t k = 0; k < matrix.size(); ++k) {
    std::vector<std::uint32_t>& pivotRow = matrix[k];
    const std::uint32_t scale = field.inverse(pivotRow[k]);
    pivotRow[k] = 1;
    for (std::uint32_t& entry : pivotRow) entry = field.multiply(entry, scale);
    for (std::size_t i = 0; i < matrix.size(); ++i) {
      const std::uint64_t factor = field.negate(matrix[i][k]);
      if (i == k || factor == 0) continue;
      matrix[i][k] = 0;
      for (std::size_t j = 0; j < matrix.size(); ++j)
        matrix[i][j] = field.reduce(matrix[i][j] + factor * pivotRow[j]);
    }
  }
}

}  // namespace starsift
