// The decision procedure of LllViolations.h, accessible to tests: the precision of the
// intervals determines how often the computation with integers is needed.
#pragma once

#include <optional>
#include <vector>

#include "algorithms/exact/IntegerMatrix.h"
#include "certificates/Interval.h"
#include "certificates/LllViolations.h"

namespace starsift {

/// Gram-Schmidt data of the first rows, in intervals, which widen from row to row by a
/// factor that is small if the rows are size-reduced.
class IntervalGramSchmidt {
 public:
  /// `precision` of the bounds in bits.
  explicit IntervalGramSchmidt(long precision) : precision_(precision) {}

  /// Adds the next row, given its products with the rows so far and with itself. False
  /// if it isn't certain to be independent of them: then no further row can be added.
  bool add(const std::vector<ZZ>& products);

  /// True if the coefficient of the last row over row j, 0-based, is at most eta in magnitude.
  std::optional<bool> isSizeReduced(std::size_t j, const QQ& eta) const;
  /// The Lovasz test for the last two rows.
  std::optional<bool> mayStay(const QQ& delta) const;

 private:
  long precision_;
  /// Products of each row with the orthogonalised rows up to its own; mu_ holds the products
  /// before the diagonal divided by the squared lengths of these rows.
  std::vector<std::vector<Interval>> r_;
  std::vector<std::vector<Interval>> mu_;
};

/// Gram-Schmidt data in integers. With d(i) the determinant of the Gram matrix of the
/// first i independent rows, mu[k][j] is lambda(k, j) / d(j), and the squared length of
/// the orthogonalised row j is d(j) / d(j-1). H. Cohen, A Course in Computational
/// Algebraic Number Theory, algorithm 2.6.7.
class IntegralGramSchmidt {
 public:
  /// Adds row k, 0-based, given its products with the kept rows and with itself; rows come
  /// in order. False if it depends on the rows before it; it isn't kept then.
  bool add(std::size_t k, const std::vector<ZZ>& products);

  /// Indices of the independent rows so far, among all rows.
  const std::vector<std::size_t>& kept() const { return kept_; }
  /// True if the coefficient of the last row over kept row j, 0-based, is at most eta in
  /// magnitude.
  bool isSizeReduced(std::size_t j, const QQ& eta) const;
  /// The Lovasz test for the last two kept rows.
  bool mayStay(const QQ& delta) const;

 private:
  ZZ projected(ZZ product, const std::vector<ZZ>& a, const std::vector<ZZ>& b) const;

  std::vector<std::size_t> kept_;
  /// Entries of each kept row up to its diagonal, which is d.
  IntegerMatrix lambda_;
  std::vector<ZZ> d_{ZZ::one()};
};

/// Tests rows from the top: with intervals as long as these decide every inequality, and
/// with integers from there on.
class LllJudge {
 public:
  LllJudge(IntegerMatrix rows, QQ delta, QQ eta);
  /// `precision`: bits in the bounds of the intervals.
  LllJudge(IntegerMatrix rows, QQ delta, QQ eta, long precision);

  bool hasNext() const { return next_ < rows_.size(); }
  /// The violations of the next row.
  std::vector<LllViolation> next();

 private:
  std::optional<std::vector<LllViolation>> byIntervals(std::size_t k);
  std::vector<LllViolation> byIntegers(std::size_t k);
  bool addToIntegers(std::size_t k);

  IntegerMatrix rows_;
  QQ delta_;
  QQ eta_;
  std::size_t next_ = 0;
  /// Empty once an inequality was left undecided.
  std::optional<IntervalGramSchmidt> intervals_;
  IntegralGramSchmidt integers_;
};

}  // namespace starsift
