// Integer coordinates over independent rows, by lifting.
#include <gtest/gtest.h>

#include "algorithms/exact/BasisSolver.h"
#include "algorithms/exact/ExactProduct.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/TextOf.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::q;
using test::textOf;

template <class T>
class BasisSolverOver : public testing::Test {
 protected:
  static std::string coordinates(const BasisSolver& solver, const Vector<T>& vector) {
    const auto found = solver.integerCoordinates(vector);
    return found ? textOf(*found) : "none";
  }
};
using SolverNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(BasisSolverOver, SolverNumbers);

TYPED_TEST(BasisSolverOver, FindsTheCoordinates) {
  const BasisSolver solver(Matrix<TypeParam>{{2, 0, 4}, {0, 3, 6}});
  ASSERT_TRUE(solver.isIndependent());
  EXPECT_EQ(this->coordinates(solver, {2, -3, -2}), "[ 1 -1 ]");
  EXPECT_EQ(this->coordinates(solver, {0, 0, 0}), "[ 0 0 ]");
}

TYPED_TEST(BasisSolverOver, RefusesFractionsAndVectorsOffTheSpan) {
  const BasisSolver solver(Matrix<TypeParam>{{2, 0, 4}, {0, 3, 6}});
  EXPECT_EQ(this->coordinates(solver, {1, 0, 2}), "none");
  EXPECT_EQ(this->coordinates(solver, {2, 0, 5}), "none");
}

TYPED_TEST(BasisSolverOver, TakesFractionsInTheBasis) {
  const TypeParam half = TypeParam(1) / TypeParam(2);
  const BasisSolver solver(Matrix<TypeParam>{{half, 1}, {0, half}});
  EXPECT_EQ(this->coordinates(solver, {half, half}), "[ 1 -1 ]");
}

TYPED_TEST(BasisSolverOver, HasNoAnswersOverDependentRows) {
  const BasisSolver solver(Matrix<TypeParam>{{1, 2}, {2, 4}});
  EXPECT_FALSE(solver.isIndependent());
  EXPECT_EQ(this->coordinates(solver, {1, 2}), "none");
}

TYPED_TEST(BasisSolverOver, HasOneVectorOverNoRows) {
  const BasisSolver solver(Matrix<TypeParam>(0, 2));
  EXPECT_EQ(this->coordinates(solver, {0, 0}), "[ ]");
  EXPECT_EQ(this->coordinates(solver, {0, 1}), "none");
}

TEST(BasisSolver, FindsLongCoordinates) {
  const QQ large = q("123456789012345678901234567890");
  const Matrix<QQ> basis{{large, QQ(1), QQ(0)}, {QQ(7), large, QQ(3)}};
  const Vector<QQ> wanted{large, -large};
  const auto found = BasisSolver(basis).integerCoordinates(exactProduct(wanted, basis));
  ASSERT_TRUE(found);
  EXPECT_EQ(textOf(*found), textOf(wanted));
}

TEST(BasisSolver, ThrowsWhereLongDoubleCannotHoldACoordinate) {
  const BasisSolver solver(Matrix<QQ>{{q("1/10000000000")}});
  EXPECT_THROW(solver.integerCoordinates(Vector<long double>{1e12L}), PrecisionException);
}

}  // namespace
}  // namespace starsift
