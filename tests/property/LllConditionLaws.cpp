// The judgement of a basis by integral Gram-Schmidt against that by rational
// Gram-Schmidt vectors over GMP.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <numeric>

#include "certificates/LllJudge.h"
#include "numbers/VectorQQ.h"
#include "support/generators/ContainerGenerators.h"
#include "support/oracles/OrthogonalCertificate.h"

namespace starsift {
namespace {

using Kind = LllViolation::Kind;
using Row = std::vector<mpq_class>;

mpq_class dot(const Row& a, const Row& b) {
  return std::inner_product(a.begin(), a.end(), b.begin(), mpq_class(0));
}

/// Part of the row along the orthogonal vector.
mpq_class along(const Row& row, const Row& vector) {
  return dot(row, vector) / dot(vector, vector);
}

Row without(Row row, const std::vector<Row>& vectors) {
  const Row original = row;
  for (const Row& vector : vectors) {
    const mpq_class mu = along(original, vector);
    for (std::size_t j = 0; j < row.size(); ++j) row[j] -= mu * vector[j];
  }
  return row;
}

std::vector<LllViolation> byRationals(const test::ExactRows& rows, const mpq_class& delta,
                                      const mpq_class& eta) {
  std::vector<LllViolation> result;
  std::vector<Row> vectors;
  std::vector<Index> numbers;
  for (const Row& row : rows) {
    const Index k = static_cast<Index>(&row - rows.data()) + 1;
    const Row rest = without(row, vectors);
    if (dot(rest, rest) == 0) {
      result.push_back({Kind::dependent, k, 0});
      continue;
    }
    for (std::size_t j = 0; j < vectors.size(); ++j)
      if (abs(along(row, vectors[j])) > eta) result.push_back({Kind::size, k, numbers[j]});
    if (!vectors.empty()) {
      const mpq_class mu = along(row, vectors.back());
      const mpq_class above = dot(vectors.back(), vectors.back());
      if (dot(rest, rest) + mu * mu * above < delta * above)
        result.push_back({Kind::exchange, k, numbers.back()});
    }
    vectors.push_back(rest);
    numbers.push_back(k);
  }
  return result;
}

/// Some of full rank, some not; with the diagonal often nearly reduced.
Matrix<QQ> arbitraryBasis() {
  const auto rows = *rc::gen::inRange<Index>(1, 7);
  const auto columns = *rc::gen::inRange<Index>(rows, 8);
  const auto entries = *rc::gen::oneOf(test::arbitraryRows(rows, columns, 4),
                                       test::arbitraryDependentRows(rows, columns, rows));
  Matrix<QQ> basis = test::matrixFrom<QQ>(entries, columns);
  const QQ diagonal(*rc::gen::element(0, 0, 6, 12));
  for (Index i = 1; i <= rows; ++i) basis[i][i] += diagonal;
  const QQ scale(*rc::gen::element(1L, 1L, 1'000'000'007L), *rc::gen::element(1L, 1L, 30L));
  for (Vector<QQ>& row : basis)
    for (QQ& entry : row) entry *= scale;
  return basis;
}

RC_GTEST_PROP(LllViolations, AreThoseByRationalGramSchmidtVectors, ()) {
  const Matrix<QQ> basis = arbitraryBasis();
  const QQ delta = *rc::gen::element(QQ(3, 4), QQ(999, 1000), QQ(1), QQ(1, 3));
  const QQ eta = *rc::gen::element(QQ(1, 2), QQ(51, 100), QQ(1));
  const std::vector<LllViolation> expected =
      byRationals(test::exactRows(basis), test::exactly(delta), test::exactly(eta));
  RC_TAG(expected.empty() ? "reduced" : "not reduced");
  RC_ASSERT(lllViolations(basis, delta, eta) == expected);
  const std::optional<LllViolation> first = firstLllViolation(basis, delta, eta);
  RC_ASSERT(first.has_value() != expected.empty());
  if (first) RC_ASSERT(*first == expected.front());
}

RC_GTEST_PROP(LllViolations, AreTheSameByIntervalsOfAnyPrecision, ()) {
  const Matrix<QQ> basis = arbitraryBasis();
  const QQ delta(*rc::gen::inRange(1L, 8L), 8);
  const QQ eta(*rc::gen::inRange(4L, 9L), 8);
  // With few bits nearly all is left to the integers, with many hardly anything.
  const long precision = *rc::gen::element(2L, 4L, 8L, 16L, 64L, 500L);
  LllJudge judge(scaledIntegers(basis).rows, delta, eta, precision);
  std::vector<LllViolation> found;
  while (judge.hasNext()) {
    const std::vector<LllViolation> row = judge.next();
    found.insert(found.end(), row.begin(), row.end());
  }
  RC_ASSERT(found == byRationals(test::exactRows(basis), test::exactly(delta), test::exactly(eta)));
}

}  // namespace
}  // namespace starsift
