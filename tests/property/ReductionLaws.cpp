// Reduced bases, judged in exact arithmetic by other algorithms.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "algorithms/exact/IndependentRows.h"
#include "algorithms/reduction/SizeReduce.h"
#include "certificates/LatticeEquality.h"
#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "numbers/QQFunctions.h"
#include "support/fixtures/ReducedBasis.h"
#include "support/generators/LatticeGenerators.h"

namespace starsift {
namespace {

template <class T>
Matrix<T> converted(const Matrix<QQ>& rows) {
  Matrix<T> result;
  result.convertFrom(rows, true);
  return result;
}

/// The reduced rows span the lattice of the given ones; those in front are reduced, the others
/// depend on them.
template <class T>
void checkReduction(const Matrix<QQ>& rows, bool deep = false) {
  const auto basis = converted<T>(rows);
  Lattice<T, long double> lattice(&basis);
  test::allowChecks(lattice);
  lattice.params.deep = deep;
  RC_ASSERT(lattice.reduce(0));
  RC_ASSERT(test::isReduced(lattice.basis.B(), test::firstCompared(deep)));
  RC_ASSERT(sameLattice(lattice.basis.B(), basis));
}

void checkBothReductions(const Matrix<QQ>& rows, bool deep = false) {
  checkReduction<long double>(rows, deep);
  checkReduction<QQ>(rows, deep);
}

/// Entries below 2^bits.
Matrix<QQ> arbitraryEntries(Index rows, Index columns, unsigned bits) {
  constexpr unsigned most = 30;
  Matrix<QQ> matrix(rows, columns);
  for (Vector<QQ>& row : matrix) {
    for (QQ& entry : row) {
      for (unsigned rest = bits; rest > 0; rest -= std::min(rest, most)) {
        const std::int64_t range = std::int64_t{1} << std::min(rest, most);
        entry *= QQ(range);
        entry += QQ(*rc::gen::resize(1000, rc::gen::inRange(-range + 1, range)));
      }
    }
  }
  return matrix;
}

RC_GTEST_PROP(Reduction, ReducesRowsOfEveryRank, ()) {
  const auto rows = *rc::gen::inRange<Index>(0, 7);
  const auto columns = *rc::gen::inRange<Index>(1, 7);
  const auto rank = test::arbitraryIndex(3);
  checkBothReductions(
      test::matrixFrom<QQ>(*rc::gen::oneOf(test::arbitraryRows(rows, columns, 9),
                                           test::arbitraryDependentRows(rows, columns, rank)),
                           columns));
}

RC_GTEST_PROP(Reduction, ReducesLongIntegers, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 9);
  checkBothReductions(arbitraryEntries(rows, rows, *rc::gen::element(8U, 16U, 29U)));
}

RC_GTEST_PROP(Reduction, ReducesHugeIntegersInTheExactLattice, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 7);
  checkReduction<QQ>(arbitraryEntries(rows, rows, *rc::gen::element(60U, 120U, 200U)));
}

// The minima of such a lattice lie far apart, so that long rows meet short ones at nearly right
// angles; combinations hide that.
RC_GTEST_PROP(Reduction, ReducesRowsOfVeryDifferentLengthsInTheExactLattice, ()) {
  const auto count = *rc::gen::inRange<Index>(2, 13);
  const QQ factor(*rc::gen::element<std::int64_t>(3, 64, 1000, 65537));
  Matrix<QQ> rows = arbitraryEntries(count, count, 4);
  for (Index i = 2; i <= count; ++i)
    for (QQ& entry : rows[i]) entry *= pow(factor, QQ(i));
  for (Index i = count; i >= 2; --i)
    for (Index j = 1; j < i; ++j) subtractMultiple(rows[j], rows[i], QQ(test::arbitraryIndex(3)));
  RC_PRE(!independentRows(rows).empty());
  checkReduction<QQ>(rows);
}

RC_GTEST_PROP(Reduction, ReducesLongIntegersByDeepInsertionsToo, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 8);
  checkBothReductions(arbitraryEntries(rows, rows, *rc::gen::element(8U, 16U, 24U)), true);
}

// More vectors than coordinates, so that some come to depend on others on the way. A squared
// length still has digits behind the tolerance of a dependency.
RC_GTEST_PROP(Reduction, ReducesTooManyLongIntegers, ()) {
  const auto rows = *rc::gen::inRange<Index>(2, 7);
  const auto columns = *rc::gen::inRange<Index>(1, rows);
  checkBothReductions(arbitraryEntries(rows, columns, *rc::gen::element(4U, 8U, 12U)));
}

// A unit matrix beside a column of weights, as equations make them.
RC_GTEST_PROP(Reduction, ReducesKnapsacks, ()) {
  const auto rows = *rc::gen::inRange<Index>(2, 12);
  Matrix<QQ> basis = arbitraryEntries(rows, rows + 1, 28);
  for (Index i = 1; i <= rows; ++i)
    for (Index j = 1; j <= rows; ++j) basis[i][j] = QQ(i == j ? 1 : 0);
  checkBothReductions(basis);
}

RC_GTEST_PROP(Reduction, LeavesReducedRowsAlone, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 7);
  const Matrix<QQ> basis = arbitraryEntries(rows, rows, 12);
  Lattice<QQ, long double> lattice(&basis);
  test::allowChecks(lattice);
  RC_ASSERT(lattice.reduce(0));
  RC_PRE(lattice.basis.vecStatus[rows] != ST_DEPENDENT);
  const Matrix<QQ> reduced(lattice.basis.B());
  Lattice<QQ, long double> again(&reduced);
  test::allowChecks(again);
  RC_ASSERT(again.reduce(0));
  RC_ASSERT(again.run.lastPass.tests == rows);
  for (Index k = 1; k <= rows; ++k) RC_ASSERT(identical(again.basis.B()[k], reduced[k]));
}

// Only the order of tests differs, so both end reduced; the first vectors are what a pass is for.
RC_GTEST_PROP(Reduction, IsReachedThroughPassesOfAnyBudget, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 7);
  const Matrix<QQ> basis = arbitraryEntries(rows, rows, 12);
  Lattice<QQ, long double> lattice(&basis);
  test::allowChecks(lattice);
  lattice.run.swapBudget = *rc::gen::inRange<Index>(1, 20);
  const auto deep = *rc::gen::arbitrary<bool>();
  lattice.params.deep = deep;
  RC_ASSERT(lattice.reduce(0));
  RC_ASSERT(sameLattice(lattice.basis.B(), basis));
  RC_ASSERT(test::isReduced(lattice.basis.B(), test::firstCompared(deep)));
}

}  // namespace
}  // namespace starsift
