// One call of the reduction goes on as long as its passes gain something.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "certificates/LatticeEquality.h"
#include "numbers/Conversion.h"
#include "support/fixtures/QAryBasis.h"
#include "support/fixtures/ReducedBasis.h"

namespace starsift {
namespace {

/// A knapsack of n numbers with so many digits, as a lattice of its zeros.
Matrix<QQ> knapsackBasis(Index n, int digits) {
  std::mt19937_64 random(7);
  Matrix<QQ> basis(n, n + 1);
  for (Index i = 1; i <= n; ++i) {
    basis[i][i] = QQ(1);
    std::string number(1, '1');
    while (static_cast<int>(number.size()) < digits)
      number += static_cast<char>('0' + random() % 10);
    basis[i][n + 1] = QQ::parse(number);
  }
  return basis;
}

template <class T>
void expectReducedInOneCall(const Matrix<T>& basis) {
  Lattice<T, long double> lattice(&basis);
  test::allowChecks(lattice);
  EXPECT_TRUE(lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(lattice.basis.B()));
  EXPECT_TRUE(sameLattice(lattice.basis.B(), basis));
}

TEST(Reduce, QAryBasesOfSixtyVectorsNeedOneCall) {
  for (const Index d : {20, 40, 60}) {
    SCOPED_TRACE(d);
    expectReducedInOneCall(test::qAryBasis<long double>(d, 1009));
  }
}

TEST(Reduce, QAryBasesNeedOneCallInExactNumbersToo) {
  expectReducedInOneCall(test::qAryBasis<QQ>(40, 1009));
}

TEST(Reduce, KnapsacksOfFortyDigitsNeedOneCall) {
  expectReducedInOneCall(knapsackBasis(20, 40));
  expectReducedInOneCall(knapsackBasis(40, 40));
}

// b2* is 210 / (9 10^8) long, so that its square is far below the tolerance.
TEST(Reduce, RowsWithALostOrthogonalLengthAreReduced) {
  expectReducedInOneCall(Matrix<long double>{{900000007, 3}, {899999937, 3}});
  expectReducedInOneCall(Matrix<QQ>{{900000007, 3}, {899999937, 3}});
}

TEST(Reduce, LongRowsWithALostOrthogonalLengthAreReduced) {
  const QQ far = QQ::parse("100000000000000000000000000000");
  expectReducedInOneCall(Matrix<QQ>{{far + QQ(7), 1}, {far - QQ(12), 1}});
  expectReducedInOneCall(
      Matrix<QQ>{{far + QQ(7), 1, 0}, {far - QQ(12), 1, 5}, {far * QQ(3) + QQ(1), 2, 5}});
}

TEST(Reduce, LongRowsWithALostOrthogonalLengthAreReducedByDeepInsertionsToo) {
  const QQ far = QQ::parse("100000000000000000000000000000");
  const Matrix<QQ> basis{{1, 0, 0}, {far + QQ(7), 1, 0}, {far - QQ(12), 1, 5}};
  Lattice<QQ, long double> lattice(&basis);
  test::allowChecks(lattice);
  lattice.params.deep = true;
  EXPECT_TRUE(lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(lattice.basis.B(), test::firstCompared(true)));
  EXPECT_TRUE(sameLattice(lattice.basis.B(), basis));
}

// Rounding leaves a multiple of a long row a length of its own.
TEST(Reduce, LongDependentRowsGoLast) {
  const QQ far = QQ::parse("100000000000000000039");
  const Matrix<QQ> basis{
      {far, far + QQ(90)}, {far * QQ(7), far * QQ(7) + QQ(630)}, {far - QQ(2), 1}};
  Lattice<QQ, long double> lattice(&basis);
  test::allowChecks(lattice);
  EXPECT_TRUE(lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(lattice.basis.B()));
  EXPECT_EQ(lattice.basis.B()[3], Vector<QQ>(2));
}

}  // namespace
}  // namespace starsift
