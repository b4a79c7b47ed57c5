#include "support/oracles/BoxPoints.h"

#include <cstddef>
#include <utility>

namespace starsift::test {

namespace {

using IntegerRow = std::vector<ZZ>;

ZZ floorQuotient(const ZZ& a, const ZZ& b) {
  ZZ result;
  mpz_fdiv_q(result.get(), a.get(), b.get());
  return result;
}

void subtractMultiple(IntegerRow& row, const ZZ& factor, const IntegerRow& other) {
  for (std::size_t j = 0; j < row.size(); ++j) row[j] -= factor * other[j];
}

/// Rows of the same lattice, each with its first entry other than 0 right of the one above.
class Echelon {
 public:
  explicit Echelon(std::vector<IntegerRow> rows) : rows_(std::move(rows)) {
    std::size_t top = 0;
    for (std::size_t j = 0; top < rows_.size() && j < rows_[0].size(); ++j)
      if (clearBelow(top, j)) {
        columns_.push_back(j);
        ++top;
      }
  }

  bool contains(IntegerRow point) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::size_t j = columns_[i];
      subtractMultiple(point, floorQuotient(point[j], rows_[i][j]), rows_[i]);
    }
    for (const ZZ& entry : point)
      if (!entry.isZero()) return false;
    return true;
  }

 private:
  /// Euclid's algorithm in column j on the rows from `top` on; false if all entries are 0.
  bool clearBelow(std::size_t top, std::size_t j) {
    for (std::size_t i = top + 1; i < rows_.size(); ++i) {
      while (!rows_[i][j].isZero()) {
        if (!rows_[top][j].isZero())
          subtractMultiple(rows_[top], floorQuotient(rows_[top][j], rows_[i][j]), rows_[i]);
        rows_[top].swap(rows_[i]);
      }
    }
    return !rows_[top][j].isZero();
  }

  std::vector<IntegerRow> rows_;
  std::vector<std::size_t> columns_;
};

}  // namespace

std::set<std::vector<ZZ>> pointsByBruteForce(const BoxCoset& coset) {
  std::set<std::vector<ZZ>> result;
  if (isEmptyBox(coset)) return result;
  const Echelon echelon(coset.basis);
  std::vector<ZZ> x(coset.lower);
  while (true) {
    std::vector<ZZ> difference(x);
    for (std::size_t j = 0; j < x.size(); ++j) difference[j] -= coset.point[j];
    if (echelon.contains(difference)) result.insert(x);
    std::size_t j = 0;
    while (j < x.size() && x[j] == coset.upper[j]) {
      x[j] = coset.lower[j];
      ++j;
    }
    if (j == x.size()) return result;
    x[j] += ZZ(1);
  }
}

}  // namespace starsift::test
