// The three ways to Gram-Schmidt data against exact arithmetic and each other.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "support/fixtures/OrthogonalWays.h"
#include "support/generators/ContainerGenerators.h"

namespace starsift {
namespace {

using test::allWays;
using test::exactRows;
using test::firstRows;
using test::orthogonalise;
using test::tenth;
using test::Way;

// Small enough that the squared length of an independent row stays far above the
// tolerance, being a quotient of determinants.
constexpr Index mostRows = 4;
constexpr std::int64_t largestEntry = 3;

struct Input {
  test::Rows rows;
  Index columns = 0;
};

Input arbitraryInput() {
  const auto rows = *rc::gen::inRange<Index>(1, mostRows + 1);
  const auto columns = *rc::gen::inRange<Index>(1, mostRows + 1);
  return {*test::arbitraryRows(rows, columns, largestEntry), columns};
}

/// 0 or the first row that exactly depends on those before it.
Index firstDependent(const test::ExactRows& rows) {
  for (Index k = 1; k <= static_cast<Index>(rows.size()); ++k) {
    const std::vector<mpq_class> last = test::orthogonalVectors(firstRows(rows, k)).back();
    if (std::all_of(last.begin(), last.end(), [](const mpq_class& x) { return x == 0; })) return k;
  }
  return 0;
}

RC_GTEST_PROP(Orthogonalisation, FindsTheFirstDependentRowAndIsRightBeforeIt, ()) {
  const Input input = arbitraryInput();
  const auto basis = test::matrixFrom<long double>(input.rows, input.columns);
  const test::ExactRows rows = exactRows(basis);
  const Index expected = firstDependent(rows);
  const Index done = expected == 0 ? basis.rowCount() : expected - 1;
  for (const Way way : allWays) {
    Lattice<long double, long double> lattice(&basis);
    RC_ASSERT(orthogonalise(lattice, way) == expected);
    RC_ASSERT(test::isOrthogonalisation(firstRows(rows, done), lattice.gramSchmidt.mu,
                                        lattice.gramSchmidt.cLen, tenth(15)));
  }
}

RC_GTEST_PROP(Orthogonalisation, OfIntegersIsTheSameInBothLattices, ()) {
  const Input input = arbitraryInput();
  const auto basis = test::matrixFrom<long double>(input.rows, input.columns);
  const auto exactBasis = test::matrixFrom<QQ>(input.rows, input.columns);
  const auto way = *rc::gen::elementOf(allWays);
  Lattice<long double, long double> standard(&basis);
  Lattice<QQ, long double> exact(&exactBasis);
  RC_ASSERT(orthogonalise(standard, way) == orthogonalise(exact, way));
  RC_ASSERT(identical(standard.gramSchmidt.cLen, exact.gramSchmidt.cLen));
  RC_ASSERT(identical(standard.gramSchmidt.bSq, exact.gramSchmidt.bSq));
  for (Index k = 1; k <= standard.basis.n; ++k) {
    RC_ASSERT(identical(standard.gramSchmidt.mu[k], exact.gramSchmidt.mu[k]));
    RC_ASSERT(standard.basis.vecStatus[k] == exact.basis.vecStatus[k]);
  }
}

/// Rows of up to thirty digits, far from dependent.
Matrix<QQ> longRows(Index rows) {
  Matrix<QQ> basis(rows, rows);
  for (Index i = 1; i <= rows; ++i) {
    for (QQ& entry : basis[i]) {
      entry = QQ(*rc::gen::inRange(-1000000000L, 1000000000L));
      entry *= QQ(*rc::gen::inRange(-1000000000L, 1000000000L));
      entry *= QQ(*rc::gen::inRange(-1000000000L, 1000000000L));
    }
    basis[i][i] += QQ::parse("10000000000000000000000000000");
  }
  return basis;
}

RC_GTEST_PROP(Orthogonalisation, OfThirtyDigitsIsRight, ()) {
  const Matrix<QQ> basis = longRows(*rc::gen::inRange<Index>(1, 7));
  for (const Way way : allWays) {
    Lattice<QQ, long double> lattice(&basis);
    RC_ASSERT(orthogonalise(lattice, way) == 0);
    RC_ASSERT(test::isOrthogonalisation(exactRows(basis), lattice.gramSchmidt.mu,
                                        lattice.gramSchmidt.cLen, tenth(16)));
  }
}

}  // namespace
}  // namespace starsift
