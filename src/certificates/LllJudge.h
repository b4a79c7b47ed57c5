// The judgement behind LllViolations.h, open to tests: how precise the intervals are
// decides how often the integers are asked.
#pragma once

#include <optional>
#include <vector>

#include "algorithms/exact/IntegerMatrix.h"
#include "certificates/Interval.h"
#include "certificates/LllViolations.h"

namespace starsift {

/// Gram-Schmidt data of the first rows, in intervals. They widen from row to row by a
/// factor that is small where the rows are size-reduced.
class IntervalGramSchmidt {
 public:
  /// `precision` in bits.
  explicit IntervalGramSchmidt(long precision) : precision_(precision) {}

  /// Takes the next row, by its products with the rows so far and with itself. False
  /// where it isn't certain to be independent of them: then there is no going on.
  bool add(const std::vector<ZZ>& products);

  /// Of the last row: the coefficient over row j, 0-based, is at most eta.
  std::optional<bool> isSizeReduced(std::size_t j, const QQ& eta) const;
  /// The Lovasz condition between the last two rows.
  std::optional<bool> mayStay(const QQ& delta) const;

 private:
  long precision_;
  /// Products of each row with the orthogonalised ones up to its own, and those before
  /// over their squared lengths.
  std::vector<std::vector<Interval>> r_;
  std::vector<std::vector<Interval>> mu_;
};

/// Gram-Schmidt data in integers. With d(i) the determinant of the Gram matrix of the
/// first i independent rows, mu[k][j] is lambda(k, j) / d(j), and the squared length of
/// the orthogonalised row j is d(j) / d(j-1). H. Cohen, A Course in Computational
/// Algebraic Number Theory, algorithm 2.6.7.
class IntegralGramSchmidt {
 public:
  /// Takes row k, 0-based, by its products with the kept rows and with itself; rows come
  /// in order. False where it depends on those before, which leaves it out.
  bool add(std::size_t k, const std::vector<ZZ>& products);

  /// Independent rows so far, by their numbers among all rows.
  const std::vector<std::size_t>& kept() const { return kept_; }
  /// Of the last row: the coefficient over kept row j, 0-based, is at most eta.
  bool isSizeReduced(std::size_t j, const QQ& eta) const;
  /// The Lovasz condition between the last two kept rows.
  bool mayStay(const QQ& delta) const;

 private:
  ZZ projected(ZZ product, const std::vector<ZZ>& a, const std::vector<ZZ>& b) const;

  std::vector<std::size_t> kept_;
  /// Entries of each kept row up to its diagonal, which is d.
  IntegerMatrix lambda_;
  std::vector<ZZ> d_{ZZ::one()};
};

/// Judges rows from the top: in intervals as long as these decide every inequality, and
/// in integers from there on.
class LllJudge {
 public:
  LllJudge(IntegerMatrix rows, QQ delta, QQ eta);
  /// With `precision` bits in the bounds of intervals.
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
  /// Until they leave something open.
  std::optional<IntervalGramSchmidt> intervals_;
  IntegralGramSchmidt integers_;
};

}  // namespace starsift
