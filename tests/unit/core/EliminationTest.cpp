#include "core/Elimination.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/fixtures/EliminationSuite.h"
#include "system/Exceptions.h"

namespace starsift {

namespace test {
INSTANTIATE_TYPED_TEST_SUITE_P(LongDouble, EliminationOver, long double);
}  // namespace test

namespace {

using M = Matrix<long double>;

/// The message of the exception of this type, or what happened instead.
template <class Exception>
std::string refusal(M matrix, bool reduce) {
  M transform;
  try {
    eliminate(matrix, transform, reduce);
  } catch (const Exception& exception) {
    return exception.message();
  }
  return "eliminated";
}

TEST(Elimination, TakesEntriesWithinTheToleranceForZero) {
  M matrix{{1e-9L, 1}, {1, 0}};
  M transform;
  EXPECT_EQ(eliminate(matrix, transform, false), -2);
  EXPECT_EQ(matrix[2][1], 1e-9L);
}

TEST(Elimination, TakesEntriesBeyondTheToleranceForPivots) {
  M matrix{{2e-9L}};
  M transform;
  EXPECT_EQ(eliminate(matrix, transform, false), 1);
}

TEST(Elimination, ThrowsForAFactorBeyondTheSafeBound) {
  // In reduced form the pivot row clears the large entry above it.
  EXPECT_EQ(refusal<PrecisionException>({{1, 2e9L}, {0, 1}}, true), "q overflow");
  EXPECT_EQ(refusal<PrecisionException>({{1, 1e9L}, {0, 1}}, true), "eliminated");
}

TEST(Elimination, ThrowsForAPivotBeyondTheSafeBound) {
  EXPECT_EQ(refusal<PrecisionException>({{2e9L}}, true), "q2 overflow");
  EXPECT_EQ(refusal<PrecisionException>({{1e9L}}, true), "eliminated");
}

TEST(Elimination, RefusesAPivotThatWouldLeaveMoreThanTheToleranceBelow) {
  // With q = b / a, a * q misses b by 6e-8: a second pivot in the same column.
  const M rows{{10005000000012.0L}, {1000000000001.0L}};
  M matrix(rows);
  M transform;
  EXPECT_EQ(eliminate(matrix, transform, false), 2);
  EXPECT_EQ(refusal<PrecisionException>(rows, true), "q2 overflow");
}

TEST(Elimination, DividesByNoPivotWhereNothingIsReduced) {
  EXPECT_EQ(refusal<PrecisionException>({{2e9L}}, false), "eliminated");
  EXPECT_EQ(refusal<PrecisionException>({{1, 2e9L}, {0, 1}}, false), "eliminated");
}

TEST(Elimination, ThrowsTheFatalKindBeyondTheFatalBound) {
  const std::string message =
      "FatalPrecisionException exception: Uncorrectable precision overflow detected - probably "
      "more overflow / precision checks are needed ...";
  EXPECT_EQ(refusal<FatalPrecisionException>({{2e18L}}, true), message);
  EXPECT_EQ(refusal<FatalPrecisionException>({{1, 2e18L}, {0, 1}}, true), message);
}

TEST(Elimination, KeepsFactorsBelowThePivotSmall) {
  // The larger entry of the column is the pivot, so that no factor exceeds 1.
  EXPECT_EQ(refusal<PrecisionException>({{1e-8L, 1}, {1e9L, 1}}, false), "eliminated");
}

TEST(Elimination, HasTheDiagonalForDeterminantWhereOnlyTheLastPivotVanishes) {
  EXPECT_EQ((M{{1, 0}, {0, 1e-10L}}).determinant(), 1e-10L);
}

TEST(Elimination, HasTheDeterminantZeroWhereAllVanishes) {
  EXPECT_EQ((M{{1e-10L}}).determinant(), 0);
}

TEST(Elimination, PassesANanOn) {
  EXPECT_TRUE(std::isnan((M{{std::numeric_limits<long double>::quiet_NaN()}}).determinant()));
}

}  // namespace
}  // namespace starsift
