#include "certificates/ModularHermite.h"

#include <utility>

namespace starsift {

namespace {

/// A triangular basis to which rows are added one by one. It starts as `modulus` times the
/// unit vectors, so the rows after the j-th always span `modulus` times the unit vectors of
/// the columns after the j-th: entries right of a pivot may be reduced by the modulus at any
/// time.
class HermiteBasis {
 public:
  HermiteBasis(std::size_t columns, const ZZ& modulus)
      : modulus_(modulus), rows_(columns, std::vector<ZZ>(columns)) {
    for (std::size_t j = 0; j < columns; ++j) rows_[j][j] = modulus;
  }

  void insert(std::vector<ZZ> row) {
    for (std::size_t j = 0; j < rows_.size(); ++j) {
      reduce(row[j]);
      if (row[j].isZero()) continue;
      if (mpz_divisible_p(row[j].get(), rows_[j][j].get()) != 0)
        subtractMultiple(row, exactQuotient(row[j], rows_[j][j]), j);
      else
        combine(row, j);
    }
  }

  /// Reduces the entries above the diagonal to their range.
  IntegerMatrix reduced() && {
    for (std::size_t i = rows_.size(); i-- > 0;)
      for (std::size_t j = i + 1; j < rows_.size(); ++j) {
        reduce(rows_[i][j]);
        ZZ quotient;
        mpz_fdiv_q(quotient.get(), rows_[i][j].get(), rows_[j][j].get());
        if (!quotient.isZero()) subtractMultiple(rows_[i], quotient, j);
      }
    return std::move(rows_);
  }

 private:
  void reduce(ZZ& entry) const { mpz_fdiv_r(entry.get(), entry.get(), modulus_.get()); }

  /// row -= factor * row j of the basis. Both factors are below the modulus; the sums are
  /// reduced only when their column is processed, since a division costs more than the product.
  void subtractMultiple(std::vector<ZZ>& row, const ZZ& factor, std::size_t j) const {
    mpz_submul(row[j].get(), factor.get(), rows_[j][j].get());
    for (std::size_t k = j + 1; k < row.size(); ++k)
      if (!rows_[j][k].isZero()) mpz_submul(row[k].get(), factor.get(), rows_[j][k].get());
  }

  /// Replaces the pivot of row j of the basis by the greatest common divisor of the pivot and
  /// row[j], and makes row[j] zero, by a transformation of the two rows with determinant 1.
  void combine(std::vector<ZZ>& row, std::size_t j) {
    std::vector<ZZ>& basis = rows_[j];
    ZZ divisor;
    ZZ u;
    ZZ v;
    mpz_gcdext(divisor.get(), u.get(), v.get(), basis[j].get(), row[j].get());
    const ZZ pivot = exactQuotient(basis[j], divisor);
    const ZZ entry = exactQuotient(row[j], divisor);
    for (std::size_t k = j + 1; k < row.size(); ++k) {
      reduce(row[k]);
      if (basis[k].isZero() && row[k].isZero()) continue;
      ZZ sum = u * basis[k];
      mpz_addmul(sum.get(), v.get(), row[k].get());
      row[k] *= pivot;
      mpz_submul(row[k].get(), entry.get(), basis[k].get());
      reduce(row[k]);
      reduce(sum);
      basis[k].swap(sum);
    }
    basis[j] = divisor;
    row[j] = ZZ::zero();
  }

  ZZ modulus_;
  IntegerMatrix rows_;
};

}  // namespace

IntegerMatrix hermiteModulo(const IntegerMatrix& rows, std::size_t columns, const ZZ& modulus) {
  HermiteBasis basis(columns, modulus);
  for (const std::vector<ZZ>& row : rows) basis.insert(row);
  return std::move(basis).reduced();
}

}  // namespace starsift
