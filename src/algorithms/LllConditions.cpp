#include "algorithms/LllConditions.h"

#include <utility>

#include "algorithms/IntegerMatrix.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

ZZ dot(const std::vector<ZZ>& a, const std::vector<ZZ>& b) {
  ZZ sum;
  for (std::size_t j = 0; j < a.size(); ++j) mpz_addmul(sum.get(), a[j].get(), b[j].get());
  return sum;
}

/// Gram-Schmidt data in integers. With d(i) the determinant of the Gram matrix of the
/// first i independent rows, mu[k][j] is lambda(k, j) / d(j), and the squared length of
/// the orthogonalised row j is d(j) / d(j-1).
class IntegralGramSchmidt {
 public:
  explicit IntegralGramSchmidt(IntegerMatrix rows) : rows_(std::move(rows)) {}

  std::size_t rowCount() const { return rows_.size(); }

  /// Takes row k, 0-based; rows come in order. False where it depends on those before,
  /// which leaves it out.
  bool add(std::size_t k) {
    std::vector<ZZ> lambda;
    lambda.reserve(kept_.size() + 1);
    for (std::size_t j = 0; j < kept_.size(); ++j)
      lambda.push_back(projected(dot(rows_[k], rows_[kept_[j]]), lambda, lambda_[j]));
    ZZ last = projected(dot(rows_[k], rows_[k]), lambda, lambda);
    if (last.isZero()) return false;
    lambda.push_back(last);
    lambda_.push_back(std::move(lambda));
    d_.push_back(std::move(last));
    kept_.push_back(k);
    return true;
  }

  /// Independent rows so far, by their numbers among all rows.
  const std::vector<std::size_t>& kept() const { return kept_; }
  /// Of kept rows, 0-based, j < i.
  const ZZ& lambda(std::size_t i, std::size_t j) const { return lambda_[i][j]; }
  /// Of the first i kept rows; d(0) is 1.
  const ZZ& d(std::size_t i) const { return d_[i]; }

 private:
  /// `product` of two rows without what lies along the kept rows that both have entries
  /// for. Each step is one of Bareiss' elimination of the Gram matrix, so that
  /// divisions come out even.
  ZZ projected(ZZ product, const std::vector<ZZ>& a, const std::vector<ZZ>& b) const {
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
      product *= d_[i + 1];
      mpz_submul(product.get(), a[i].get(), b[i].get());
      mpz_divexact(product.get(), product.get(), d_[i].get());
    }
    return product;
  }

  IntegerMatrix rows_;
  std::vector<std::size_t> kept_;
  /// Entries of each kept row up to its diagonal, which is d.
  IntegerMatrix lambda_;
  std::vector<ZZ> d_{ZZ::one()};
};

/// a <= ratio * b.
bool atMost(const ZZ& a, const QQ& ratio, const ZZ& b) {
  return a * ratio.nenner() <= ratio.numerator() * b;
}

/// 1-based number of kept row i among all rows.
Index numberOf(const IntegralGramSchmidt& data, std::size_t i) {
  return static_cast<Index>(data.kept()[i]) + 1;
}

/// The Lovasz condition between the last two kept rows, times d(i) * d(i-1).
bool lastMayStay(const IntegralGramSchmidt& data, const QQ& delta) {
  const std::size_t i = data.kept().size() - 1;
  const ZZ& lambda = data.lambda(i, i - 1);
  const ZZ projected = data.d(i + 1) * data.d(i - 1) + lambda * lambda;
  return atMost(data.d(i) * data.d(i) * delta.numerator(), QQ(delta.nenner()), projected);
}

/// Takes row k, 0-based, and judges it.
std::vector<LllViolation> violationsOf(IntegralGramSchmidt& data, std::size_t k, const QQ& delta,
                                       const QQ& eta) {
  using Kind = LllViolation::Kind;
  const Index row = static_cast<Index>(k) + 1;
  if (!data.add(k)) return {{Kind::dependent, row, 0}};
  std::vector<LllViolation> result;
  const std::size_t i = data.kept().size() - 1;
  for (std::size_t j = 0; j < i; ++j)
    if (!atMost(abs(data.lambda(i, j)), eta, data.d(j + 1)))
      result.push_back({Kind::size, row, numberOf(data, j)});
  if (i > 0 && !lastMayStay(data, delta))
    result.push_back({Kind::exchange, row, numberOf(data, i - 1)});
  return result;
}

}  // namespace

template <class R>
bool sizeReduced(Index k, Index j, const Matrix<R>& mu, const R& eta) {
  return NumberTraits<R>::absolute(mu[k][j]) <= eta;
}

template <class R>
bool lovaszHolds(Index k, const Matrix<R>& mu, const Vector<R>& cLen, const R& delta) {
  const R& coefficient = mu[k][k - 1];
  return cLen[k] + coefficient * coefficient * cLen[k - 1] >= delta * cLen[k - 1];
}

template <class T>
std::vector<LllViolation> lllViolations(const Matrix<T>& basis, const QQ& delta, const QQ& eta) {
  IntegralGramSchmidt data(scaledIntegers(basis).rows);
  std::vector<LllViolation> result;
  for (std::size_t k = 0; k < data.rowCount(); ++k) {
    const std::vector<LllViolation> found = violationsOf(data, k, delta, eta);
    result.insert(result.end(), found.begin(), found.end());
  }
  return result;
}

template <class T>
std::optional<LllViolation> firstLllViolation(const Matrix<T>& basis, const QQ& delta,
                                              const QQ& eta) {
  IntegralGramSchmidt data(scaledIntegers(basis).rows);
  for (std::size_t k = 0; k < data.rowCount(); ++k) {
    const std::vector<LllViolation> found = violationsOf(data, k, delta, eta);
    if (!found.empty()) return found.front();
  }
  return std::nullopt;
}

template bool sizeReduced(Index, Index, const Matrix<long double>&, const long double&);
template bool lovaszHolds(Index, const Matrix<long double>&, const Vector<long double>&,
                          const long double&);
template std::vector<LllViolation> lllViolations(const Matrix<long double>&, const QQ&, const QQ&);
template std::vector<LllViolation> lllViolations(const Matrix<QQ>&, const QQ&, const QQ&);
template std::optional<LllViolation> firstLllViolation(const Matrix<long double>&, const QQ&,
                                                       const QQ&);
template std::optional<LllViolation> firstLllViolation(const Matrix<QQ>&, const QQ&, const QQ&);

}  // namespace starsift
