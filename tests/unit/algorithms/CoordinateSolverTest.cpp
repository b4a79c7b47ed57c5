#include "algorithms/exact/CoordinateSolver.h"

#include <gtest/gtest.h>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/TextOf.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::textOf;

template <class T>
class CoordinateSolverOver : public testing::Test {
 protected:
  /// The coordinates as text, "none" where there are none.
  static std::string coordinates(const Matrix<T>& basis, const Vector<T>& vector,
                                 bool rounded = true) {
    Vector<T> found{T(7)};
    if (solveCoordinates(factorBasis(basis), basis, vector, rounded, found)) return textOf(found);
    EXPECT_EQ(textOf(found), "[ 7 ]");
    return "none";
  }

  /// The same, asking `factors`.
  static std::string coordinates(CoordinateFactors<T>& factors, const Matrix<T>& basis,
                                 const Vector<T>& vector, bool rounded) {
    Vector<T> found{T(7)};
    if (coordinatesOver(factors, basis, vector, rounded, found)) return textOf(found);
    EXPECT_EQ(textOf(found), "[ 7 ]");
    return "none";
  }

  const Matrix<T> basis{{T(2), T(1), T(0), T(3)}, {T(0), T(4), T(1), T(1)}};
  /// Half of the first row and the second one.
  const Vector<T> between{T(1), T(9) / T(2), T(1), T(5) / T(2)};
};
using SolverNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(CoordinateSolverOver, SolverNumbers);

TYPED_TEST(CoordinateSolverOver, FindsTheCoordinates) {
  EXPECT_EQ(this->coordinates(this->basis, {6, -5, -2, 7}), "[ 3 -2 ]");
  EXPECT_EQ(this->coordinates(this->basis, {0, 0, 0, 0}), "[ 0 0 ]");
}

TYPED_TEST(CoordinateSolverOver, RefusesAVectorOutsideTheSpan) {
  EXPECT_EQ(this->coordinates(this->basis, {6, -5, -2, 8}), "none");
  EXPECT_EQ(this->coordinates(this->basis, {6, -5, -2, 8}, false), "none");
}

TYPED_TEST(CoordinateSolverOver, RefusesAVectorBetweenThoseOfTheLattice) {
  EXPECT_EQ(this->coordinates(this->basis, this->between), "none");
}

TYPED_TEST(CoordinateSolverOver, FindsFractionsWhereTheyCount) {
  EXPECT_EQ(this->coordinates(this->basis, this->between, false),
            textOf(Vector<TypeParam>{TypeParam(1) / TypeParam(2), 1}));
}

TYPED_TEST(CoordinateSolverOver, GivesNothingToARowThatDependsOnOthers) {
  const Matrix<TypeParam> dependent{{2, 1, 0}, {4, 2, 0}, {0, 0, 0}, {0, 4, 1}};
  EXPECT_EQ(this->coordinates(dependent, {6, -5, -2}), "[ 3 0 0 -2 ]");
}

TYPED_TEST(CoordinateSolverOver, KnowsOnlyTheZeroVectorWithoutABasis) {
  EXPECT_EQ(this->coordinates(Matrix<TypeParam>(0, 2), {0, 0}), "[ ]");
  EXPECT_EQ(this->coordinates(Matrix<TypeParam>(0, 2), {0, 1}), "none");
}

TYPED_TEST(CoordinateSolverOver, HandlesMoreRowsThanColumns) {
  const Matrix<TypeParam> rows{{2, 1}, {0, 3}, {1, 1}};
  EXPECT_EQ(this->coordinates(rows, {4, 5}), "[ 2 1 0 ]");
}

TYPED_TEST(CoordinateSolverOver, VectorOfAnotherLengthIsRefused) {
  EXPECT_FAILS_WITH(this->coordinates(this->basis, {6, -5, -2}), "Vector: dimension mismatch8");
}

TYPED_TEST(CoordinateSolverOver, FactorsAnswerAllQuestionsOfTheirBasis) {
  CoordinateFactors<TypeParam> factors;
  for (int round = 1; round <= 2; ++round) {
    EXPECT_EQ(this->coordinates(factors, this->basis, {6, -5, -2, 7}, true), "[ 3 -2 ]");
    EXPECT_EQ(this->coordinates(factors, this->basis, {6, -5, -2, 8}, true), "none");
    EXPECT_EQ(this->coordinates(factors, this->basis, this->between, true), "none");
    EXPECT_EQ(this->coordinates(factors, this->basis, this->between, false),
              textOf(Vector<TypeParam>{TypeParam(1) / TypeParam(2), 1}));
    EXPECT_EQ(this->coordinates(factors, this->basis, {6, -5, -2, 8}, false), "none");
  }
}

TYPED_TEST(CoordinateSolverOver, FactorsAreMadeOnceAndAsNeeded) {
  const Matrix<TypeParam> full{{1, 1, 1}, {1, 2, 1}, {1, 1, 3}};
  CoordinateFactors<TypeParam> factors;
  EXPECT_EQ(this->coordinates(factors, full, {2, 3, 2}, true), "[ 1 1 0 ]");
  const auto solver = factors.solver;
  EXPECT_TRUE(solver);
  EXPECT_FALSE(factors.transform.isSet());
  this->coordinates(factors, full, {2, 3, 2}, false);
  EXPECT_TRUE(factors.transform.isSet());
  // The one must not cost the other.
  EXPECT_EQ(factors.solver, solver);
}

TYPED_TEST(CoordinateSolverOver, TriangularBasisNeedsNoSolver) {
  CoordinateFactors<TypeParam> factors;
  this->coordinates(factors, this->basis, {6, -5, -2, 7}, true);
  EXPECT_TRUE(factors.triangle);
  EXPECT_FALSE(factors.solver);
}

TYPED_TEST(CoordinateSolverOver, FractionsNeedNoSolverOfIntegers) {
  CoordinateFactors<TypeParam> factors;
  this->coordinates(factors, this->basis, this->between, false);
  EXPECT_FALSE(factors.solver);
}

TYPED_TEST(CoordinateSolverOver, FactorsOfDependentRowsAnswerForIntegersToo) {
  const Matrix<TypeParam> dependent{{2, 1, 0}, {4, 2, 0}, {0, 0, 0}, {0, 4, 1}};
  CoordinateFactors<TypeParam> factors;
  EXPECT_EQ(this->coordinates(factors, dependent, {6, -5, -2}, true), "[ 3 0 0 -2 ]");
  EXPECT_EQ(this->coordinates(factors, dependent, {1, 0, 0}, true), "none");
  EXPECT_TRUE(factors.transform.isSet());
}

TYPED_TEST(CoordinateSolverOver, FactorsOfAnotherBasisGiveNoCoordinates) {
  CoordinateFactors<TypeParam> factors;
  this->coordinates(factors, this->basis, {6, -5, -2, 7}, true);
  const Matrix<TypeParam> other{{2, 1, 0, 3}, {0, 4, 1, 2}};
  EXPECT_EQ(this->coordinates(factors, other, {6, -5, -2, 7}, true), "none");
  EXPECT_EQ(this->coordinates(factors, other, {2, 1, 0, 3}, true), "[ 1 0 ]");
}

TYPED_TEST(CoordinateSolverOver, EveryRowHasItsCoordinates) {
  CoordinateFactors<TypeParam> factors;
  const Matrix<TypeParam> rows{{6, -5, -2, 7}, {0, 0, 0, 0}, {0, 4, 1, 1}};
  const auto found = coordinatesOverAll(factors, this->basis, rows, true);
  ASSERT_TRUE(found);
  EXPECT_EQ(test::rowsText(*found), "[ 3 -2 ] [ 0 0 ] [ 0 1 ]");
  const auto none = coordinatesOverAll(factors, this->basis, Matrix<TypeParam>(0, 4), true);
  ASSERT_TRUE(none);
  EXPECT_EQ(none->rowCount(), 0);
}

TYPED_TEST(CoordinateSolverOver, OneRowWithoutCoordinatesLeavesNothing) {
  CoordinateFactors<TypeParam> factors;
  const Matrix<TypeParam> rows{{6, -5, -2, 7}, {6, -5, -2, 8}, {0, 4, 1, 1}};
  EXPECT_FALSE(coordinatesOverAll(factors, this->basis, rows, true));
  EXPECT_FALSE(coordinatesOverAll(factors, this->basis, rows, false));
}

// The second pivot is 1e-10.
TEST(CoordinateSolver, SmallPivotOfRationalsIsNoZero) {
  const Matrix<QQ> basis{{QQ(10'000'000'000), QQ(1)}, {QQ(9'999'999'999), QQ(1)}};
  Vector<QQ> coordinates;
  EXPECT_TRUE(
      solveCoordinates(factorBasis(basis), basis, Vector<QQ>{QQ(1), QQ(0)}, true, coordinates));
  EXPECT_EQ(textOf(coordinates), "[ 1 -1 ]");
}

TEST(CoordinateSolver, ThrowsWhereLongDoubleCannotHoldTheProduct) {
  const Matrix<long double> basis{{1e9L, 1, 0}, {-1e9L, 0, 1}};
  Vector<long double> found;
  EXPECT_THROW(solveCoordinates(factorBasis(basis), basis, {0, 1e10L, 1e10L}, true, found),
               PrecisionException);
  EXPECT_EQ(found.dimension(), 0);
}

}  // namespace
}  // namespace starsift
