#include "certificates/LllJudge.h"

#include <utility>

namespace starsift {

namespace {

using Kind = LllViolation::Kind;

/// An interval widens by at most two bits from row to row in a reduced basis, whose
/// lengths may decrease by another bit; the remaining bits distinguish values from bounds
/// close to them.
long sufficientPrecision(std::size_t rows) {
  return 128 + 4 * static_cast<long>(rows);
}

ZZ dot(const std::vector<ZZ>& a, const std::vector<ZZ>& b) {
  ZZ sum;
  for (std::size_t j = 0; j < a.size(); ++j) mpz_addmul(sum.get(), a[j].get(), b[j].get());
  return sum;
}

/// a <= ratio * b.
bool atMost(const ZZ& a, const QQ& ratio, const ZZ& b) {
  return a * ratio.nenner() <= ratio.numerator() * b;
}

/// `product` minus the components along the rows for which both have entries.
Interval projected(Interval product, const std::vector<Interval>& mu,
                   const std::vector<Interval>& r) {
  for (std::size_t i = 0; i < mu.size() && i < r.size(); ++i) product.subtractProduct(mu[i], r[i]);
  return product;
}

}  // namespace

bool IntervalGramSchmidt::add(const std::vector<ZZ>& products) {
  std::vector<Interval> r;
  std::vector<Interval> mu;
  for (std::size_t j = 0; j < r_.size(); ++j) {
    r.push_back(projected(Interval(products[j], precision_), mu_[j], r));
    mu.push_back(r.back());
    mu.back() /= r_[j][j];
  }
  r.push_back(projected(Interval(products.back(), precision_), mu, r));
  if (!r.back().isPositive()) return false;
  r_.push_back(std::move(r));
  mu_.push_back(std::move(mu));
  return true;
}

std::optional<bool> IntervalGramSchmidt::isSizeReduced(std::size_t j, const QQ& eta) const {
  return atMost(abs(mu_.back()[j]), Interval(eta, precision_));
}

std::optional<bool> IntervalGramSchmidt::mayStay(const QQ& delta) const {
  const std::size_t k = r_.size() - 1;
  Interval factor(delta, precision_);
  factor.subtractProduct(mu_[k][k - 1], mu_[k][k - 1]);
  Interval rest = r_[k][k];
  rest.subtractProduct(factor, r_[k - 1][k - 1]);
  return atMost(Interval(ZZ::zero(), precision_), rest);
}

bool IntegralGramSchmidt::add(std::size_t k, const std::vector<ZZ>& products) {
  std::vector<ZZ> lambda;
  lambda.reserve(kept_.size() + 1);
  for (std::size_t j = 0; j < kept_.size(); ++j)
    lambda.push_back(projected(products[j], lambda, lambda_[j]));
  ZZ last = projected(products.back(), lambda, lambda);
  if (last.isZero()) return false;
  lambda.push_back(last);
  lambda_.push_back(std::move(lambda));
  d_.push_back(std::move(last));
  kept_.push_back(k);
  return true;
}

bool IntegralGramSchmidt::isSizeReduced(std::size_t j, const QQ& eta) const {
  return atMost(abs(lambda_.back()[j]), eta, d_[j + 1]);
}

bool IntegralGramSchmidt::mayStay(const QQ& delta) const {
  // Multiplied by d(i) * d(i-1).
  const std::size_t i = kept_.size() - 1;
  const ZZ& lambda = lambda_[i][i - 1];
  const ZZ projected = d_[i + 1] * d_[i - 1] + lambda * lambda;
  return delta.numerator() * d_[i] * d_[i] <= projected * delta.nenner();
}

/// `product` of two rows minus the components along the kept rows for which both have
/// entries. Each step is a step of Bareiss' elimination of the Gram matrix, so that
/// divisions are exact.
ZZ IntegralGramSchmidt::projected(ZZ product, const std::vector<ZZ>& a,
                                  const std::vector<ZZ>& b) const {
  for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
    product *= d_[i + 1];
    mpz_submul(product.get(), a[i].get(), b[i].get());
    mpz_divexact(product.get(), product.get(), d_[i].get());
  }
  return product;
}

LllJudge::LllJudge(IntegerMatrix rows, QQ delta, QQ eta)
    : rows_(std::move(rows)),
      delta_(std::move(delta)),
      eta_(std::move(eta)),
      intervals_(sufficientPrecision(rows_.size())) {}

LllJudge::LllJudge(IntegerMatrix rows, QQ delta, QQ eta, long precision)
    : rows_(std::move(rows)),
      delta_(std::move(delta)),
      eta_(std::move(eta)),
      intervals_(precision) {}

std::vector<LllViolation> LllJudge::next() {
  const std::size_t k = next_++;
  if (intervals_) {
    if (std::optional<std::vector<LllViolation>> found = byIntervals(k)) return std::move(*found);
    intervals_.reset();
    for (std::size_t i = 0; i < k; ++i) addToIntegers(i);
  }
  return byIntegers(k);
}

std::optional<std::vector<LllViolation>> LllJudge::byIntervals(std::size_t k) {
  const Index row = static_cast<Index>(k) + 1;
  std::vector<ZZ> products;
  for (std::size_t j = 0; j <= k; ++j) products.push_back(dot(rows_[k], rows_[j]));
  if (!intervals_->add(products)) return std::nullopt;
  std::vector<LllViolation> result;
  for (std::size_t j = 0; j < k; ++j) {
    const std::optional<bool> isReduced = intervals_->isSizeReduced(j, eta_);
    if (!isReduced) return std::nullopt;
    if (!*isReduced) result.push_back({Kind::size, row, static_cast<Index>(j) + 1});
  }
  if (k == 0) return result;
  const std::optional<bool> mayStay = intervals_->mayStay(delta_);
  if (!mayStay) return std::nullopt;
  if (!*mayStay) result.push_back({Kind::exchange, row, row - 1});
  return result;
}

bool LllJudge::addToIntegers(std::size_t k) {
  std::vector<ZZ> products;
  for (const std::size_t j : integers_.kept()) products.push_back(dot(rows_[k], rows_[j]));
  products.push_back(dot(rows_[k], rows_[k]));
  return integers_.add(k, products);
}

std::vector<LllViolation> LllJudge::byIntegers(std::size_t k) {
  const Index row = static_cast<Index>(k) + 1;
  if (!addToIntegers(k)) return {{Kind::dependent, row, 0}};
  const auto number = [&](std::size_t i) { return static_cast<Index>(integers_.kept()[i]) + 1; };
  std::vector<LllViolation> result;
  const std::size_t above = integers_.kept().size() - 1;
  for (std::size_t j = 0; j < above; ++j)
    if (!integers_.isSizeReduced(j, eta_)) result.push_back({Kind::size, row, number(j)});
  if (above > 0 && !integers_.mayStay(delta_))
    result.push_back({Kind::exchange, row, number(above - 1)});
  return result;
}

}  // namespace starsift
