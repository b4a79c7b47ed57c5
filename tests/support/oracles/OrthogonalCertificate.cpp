#include "support/oracles/OrthogonalCertificate.h"

#include <numeric>

#include "support/oracles/GmpRational.h"

namespace starsift::test {

namespace {

using ExactRow = std::vector<mpq_class>;

mpq_class dot(const ExactRow& a, const ExactRow& b) {
  return std::inner_product(a.begin(), a.end(), b.begin(), mpq_class(0));
}

void subtract(ExactRow& row, const mpq_class& factor, const ExactRow& other) {
  for (std::size_t j = 0; j < row.size(); ++j) row[j] -= factor * other[j];
}

/// |x| <= bound * sqrt(a * b).
bool within(const mpq_class& x, const mpq_class& bound, const mpq_class& a, const mpq_class& b) {
  return x * x <= bound * bound * a * b;
}

bool isUnitLower(const Matrix<long double>& mu, Index rows) {
  for (Index k = 1; k <= rows; ++k) {
    if (mu[k][k] != 1) return false;
    for (Index j = k + 1; j <= mu.columnCount(); ++j)
      if (mu[k][j] != 0) return false;
  }
  return true;
}

}  // namespace

mpq_class exactly(long double value) {
  const ExtendedBits bits(value);
  mpq_class result(bits.mantissa);
  const int shift = bits.exponent() - ExtendedBits::bias - 63;
  if (shift >= 0)
    mpq_mul_2exp(result.get_mpq_t(), result.get_mpq_t(), static_cast<mp_bitcnt_t>(shift));
  else
    mpq_div_2exp(result.get_mpq_t(), result.get_mpq_t(), static_cast<mp_bitcnt_t>(-shift));
  return bits.isNegative() ? mpq_class(-result) : result;
}

mpq_class exactly(const QQ& value) {
  return gmpRational(value);
}

ExactRows firstRows(const ExactRows& rows, Index count) {
  return {rows.begin(), rows.begin() + count};
}

mpq_class tenth(unsigned digits) {
  mpz_class power;
  mpz_ui_pow_ui(power.get_mpz_t(), 10, digits);
  return {mpz_class(1), power};
}

ExactRows orthogonalVectors(const ExactRows& rows) {
  ExactRows vectors = rows;
  for (std::size_t k = 0; k < vectors.size(); ++k)
    for (std::size_t j = 0; j < k; ++j)
      subtract(vectors[k], dot(rows[k], vectors[j]) / dot(vectors[j], vectors[j]), vectors[j]);
  return vectors;
}

bool isOrthogonalisation(const ExactRows& rows, const Matrix<long double>& mu,
                         const Vector<long double>& cLen, const mpq_class& bound) {
  if (!isUnitLower(mu, static_cast<Index>(rows.size()))) return false;
  ExactRows vectors = rows;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const auto row = static_cast<Index>(k) + 1;
    const mpq_class length = dot(rows[k], rows[k]);
    for (std::size_t j = 0; j < k; ++j)
      subtract(vectors[k], exactly(mu[row][static_cast<Index>(j) + 1]), vectors[j]);
    for (std::size_t j = 0; j < k; ++j)
      if (!within(dot(vectors[k], vectors[j]), bound, length, dot(rows[j], rows[j]))) return false;
    if (abs(exactly(cLen[row]) - dot(vectors[k], vectors[k])) > bound * length) return false;
  }
  return true;
}

bool areOrthogonal(const ExactRows& vectors, const mpq_class& bound) {
  for (std::size_t k = 0; k < vectors.size(); ++k)
    for (std::size_t j = 0; j < k; ++j)
      if (!within(dot(vectors[k], vectors[j]), bound, dot(vectors[k], vectors[k]),
                  dot(vectors[j], vectors[j])))
        return false;
  return true;
}

bool isProduct(const ExactRows& left, const ExactRows& right, const ExactRows& product,
               const mpq_class& bound) {
  if (left.size() != product.size()) return false;
  for (std::size_t k = 0; k < left.size(); ++k) {
    ExactRow rest = product[k];
    for (std::size_t j = 0; j < std::min(left[k].size(), right.size()); ++j)
      subtract(rest, left[k][j], right[j]);
    if (dot(rest, rest) > bound * bound * dot(product[k], product[k])) return false;
  }
  return true;
}

}  // namespace starsift::test
