#include "algorithms/exact/Echelon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "support/oracles/EchelonCertificate.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

template <class T>
class EchelonOver : public testing::Test {
 protected:
  static Matrix<T> of(std::initializer_list<std::initializer_list<int>> rows) {
    Matrix<T> matrix(static_cast<Index>(rows.size()), static_cast<Index>(rows.begin()->size()));
    Index i = 0;
    for (const auto& row : rows) std::copy(row.begin(), row.end(), matrix[++i].begin());
    return matrix;
  }

  /// The signed rank; every certificate is checked on the way, in both forms.
  static Index rankOf(const Matrix<T>& before) {
    Matrix<T> after = before;
    Matrix<T> transform(7, 7);
    const Index rank = echelonForm(after, transform, false);
    EXPECT_TRUE(test::isEchelon(after));
    EXPECT_TRUE(test::transforms(transform, before, after));
    EXPECT_EQ(test::nonZeroRows(after), std::abs(rank));
    Matrix<T> reduced = before;
    EXPECT_EQ(echelonForm(reduced, transform, true), rank);
    EXPECT_TRUE(test::isReducedEchelon(reduced));
    EXPECT_TRUE(test::transforms(transform, before, reduced));
    return rank;
  }
};

using EchelonNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(EchelonOver, EchelonNumbers);

TYPED_TEST(EchelonOver, FindsTheRankWithTheSignOfItsExchanges) {
  EXPECT_EQ(this->rankOf(this->of({{2, 1}, {1, 3}})), 2);
  EXPECT_EQ(this->rankOf(this->of({{0, 1}, {1, 0}})), -2);
  EXPECT_EQ(this->rankOf(this->of({{3, 6}, {1, 2}})), 1);
  EXPECT_EQ(std::abs(this->rankOf(this->of({{1, 2, 3}, {4, 5, 6}, {5, 7, 9}}))), 2);
}

TYPED_TEST(EchelonOver, HandlesAnyShape) {
  EXPECT_EQ(std::abs(this->rankOf(this->of({{1, 2}, {3, 4}, {5, 6}}))), 2);
  EXPECT_EQ(std::abs(this->rankOf(this->of({{0, 0, 1, 2}, {0, 3, 4, 0}}))), 2);
  EXPECT_EQ(this->rankOf(this->of({{0, 0}, {0, 0}})), 0);
  EXPECT_EQ(this->rankOf(Matrix<TypeParam>()), 0);
}

TYPED_TEST(EchelonOver, ExchangesTheBestRowOnce) {
  // In the first column 1, 2 and 3 would be three exchanges on sight.
  EXPECT_EQ(this->rankOf(this->of({{0, 0, 1}, {1, 0, 0}, {2, 1, 0}, {3, 0, 0}})), -3);
  auto matrix = this->of({{1, 0, 0}, {2, 1, 0}, {3, 0, 1}});
  Matrix<TypeParam> transform;
  EXPECT_EQ(echelonForm(matrix, transform, false), -3);
  // Rows 1 and 3 changed places; row 2 stayed where it was.
  EXPECT_TRUE(transform[1][3] == TypeParam(1));
  EXPECT_TRUE(transform[2][2] == TypeParam(1));
  EXPECT_TRUE(transform[3][1] == TypeParam(1));
}

TYPED_TEST(EchelonOver, TakesTheFirstOfEqualPivots) {
  EXPECT_EQ(this->rankOf(this->of({{1, 0}, {-1, 1}})), 2);
}

TEST(Echelon, TakesEntriesUpToTheToleranceForZero) {
  Matrix<long double> matrix{{1e-9L, 1}, {1, 0}};
  Matrix<long double> transform;
  EXPECT_EQ(echelonForm(matrix, transform, false), -2);
}

/// The message of the exception, or what happened instead.
std::string refusal(Matrix<long double> matrix, bool reduced) {
  Matrix<long double> transform;
  try {
    echelonForm(matrix, transform, reduced);
  } catch (const PrecisionException& exception) {
    return exception.message();
  }
  return "echelon";
}

TEST(Echelon, ThrowsForAFactorBeyondTheSafeBound) {
  EXPECT_EQ(refusal({{1, 2e9L}, {0, 1}}, true), "q overflow");
  EXPECT_EQ(refusal({{1, 2e9L}, {0, 1}}, false), "echelon");
}

TEST(Echelon, ThrowsForAPivotBeyondTheSafeBound) {
  EXPECT_EQ(refusal({{2e9L}}, true), "q2 overflow");
  EXPECT_EQ(refusal({{2e9L}}, false), "echelon");
}

}  // namespace
}  // namespace starsift
