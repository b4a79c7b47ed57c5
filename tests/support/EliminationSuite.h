// Elimination over every number type, judged by certificates.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include "core/Elimination.h"
#include "support/EchelonCertificate.h"
#include "support/ExpectFails.h"

namespace starsift::test {

template <class T>
class EliminationOver : public ::testing::Test {
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
    const Index rank = eliminate(after, transform, false);
    EXPECT_TRUE(isEchelon(after));
    EXPECT_TRUE(transforms(transform, before, after));
    EXPECT_EQ(nonZeroRows(after), std::abs(rank));
    Matrix<T> reduced = before;
    EXPECT_EQ(eliminate(reduced, transform, true), rank);
    EXPECT_TRUE(isReducedEchelon(reduced));
    EXPECT_TRUE(transforms(transform, before, reduced));
    return rank;
  }
};
TYPED_TEST_SUITE_P(EliminationOver);

TYPED_TEST_P(EliminationOver, CertificateRefusesAMatrixThatIsNoEchelon) {
  EXPECT_FALSE(isEchelon(this->of({{1, 2}, {3, 4}})));
  EXPECT_FALSE(isEchelon(this->of({{0, 0}, {0, 1}})));
  EXPECT_TRUE(isEchelon(this->of({{1, 2}, {0, 4}})));
}

TYPED_TEST_P(EliminationOver, CertificateRefusesAnEchelonThatIsNotReduced) {
  EXPECT_FALSE(isReducedEchelon(this->of({{1, 2}, {0, 1}})));
  EXPECT_FALSE(isReducedEchelon(this->of({{2, 0}, {0, 1}})));
  EXPECT_TRUE(isReducedEchelon(this->of({{1, 0, 3}, {0, 1, 4}})));
}

TYPED_TEST_P(EliminationOver, CertificateRefusesAWrongTransformation) {
  const auto before = this->of({{1, 2}, {3, 4}});
  EXPECT_FALSE(transforms(this->of({{1, 0}, {1, 1}}), before, before));
  EXPECT_TRUE(transforms(this->of({{0, 1}, {1, 0}}), before, this->of({{3, 4}, {1, 2}})));
}

TYPED_TEST_P(EliminationOver, FindsTheFullRank) {
  EXPECT_EQ(this->rankOf(this->of({{2, 1}, {1, 3}})), 2);
}

TYPED_TEST_P(EliminationOver, CountsAPivotBroughtUpAsAnExchange) {
  EXPECT_EQ(this->rankOf(this->of({{0, 1}, {1, 0}})), -2);
}

TYPED_TEST_P(EliminationOver, CountsALargerPivotOfTheSameColumnAsAnExchange) {
  EXPECT_EQ(this->rankOf(this->of({{1, 3}, {2, 1}})), -2);
}

TYPED_TEST_P(EliminationOver, CountsBothKindsOfExchange) {
  // The search exchanges the last two rows, then the pivot goes up to the first.
  EXPECT_EQ(this->rankOf(this->of({{0, 1, 0}, {1, 0, 1}, {2, 0, 1}})), 3);
}

TYPED_TEST_P(EliminationOver, TakesTheFirstOfEqualPivots) {
  EXPECT_EQ(this->rankOf(this->of({{1, 0}, {-1, 1}})), 2);
}

TYPED_TEST_P(EliminationOver, FindsDependentRows) {
  EXPECT_EQ(this->rankOf(this->of({{3, 6}, {1, 2}})), 1);
  EXPECT_EQ(std::abs(this->rankOf(this->of({{1, 2, 3}, {4, 5, 6}, {5, 7, 9}}))), 2);
}

TYPED_TEST_P(EliminationOver, SkipsZeroColumns) {
  EXPECT_EQ(this->rankOf(this->of({{0, 0, 2}, {0, 0, 1}})), 1);
  EXPECT_EQ(this->rankOf(this->of({{0, 2, 1, 0}, {0, 0, 0, 3}})), 2);
}

TYPED_TEST_P(EliminationOver, HasNoRankWithoutEntries) {
  EXPECT_EQ(this->rankOf(this->of({{0, 0}, {0, 0}})), 0);
  EXPECT_EQ(this->rankOf(Matrix<TypeParam>(2, 0)), 0);
  EXPECT_EQ(this->rankOf(Matrix<TypeParam>()), 0);
}

TYPED_TEST_P(EliminationOver, HandlesMoreRowsThanColumnsAndFewer) {
  EXPECT_EQ(std::abs(this->rankOf(this->of({{1, 2}, {3, 4}, {5, 6}}))), 2);
  EXPECT_EQ(std::abs(this->rankOf(this->of({{1, 2, 3}, {4, 5, 6}}))), 2);
}

TYPED_TEST_P(EliminationOver, KeepsTheRowsOfAPermutationAsTheyAre) {
  auto a = this->of({{0, 0, 5}, {7, 0, 0}, {0, 6, 0}});
  Matrix<TypeParam> transform;
  EXPECT_EQ(eliminate(a, transform, false), 3);
  EXPECT_TRUE(a[1][1] == TypeParam(7));
  EXPECT_TRUE(a[2][2] == TypeParam(6));
  EXPECT_TRUE(a[3][3] == TypeParam(5));
  EXPECT_TRUE(transform[1][2] == TypeParam(1));
}

TYPED_TEST_P(EliminationOver, HasTheDeterminantOfSmallMatrices) {
  EXPECT_TRUE(this->of({{5}}).determinant() == TypeParam(5));
  EXPECT_TRUE(this->of({{0, 1}, {1, 0}}).determinant() == TypeParam(-1));
  EXPECT_TRUE(this->of({{1, 3}, {2, 1}}).determinant() == TypeParam(-5));
  EXPECT_TRUE(this->of({{2, 0, 0}, {0, -3, 0}, {0, 0, 4}}).determinant() == TypeParam(-24));
}

TYPED_TEST_P(EliminationOver, HasTheDeterminantZeroWithAZeroRow) {
  EXPECT_TRUE(this->of({{1, 2}, {0, 0}}).determinant() == TypeParam(0));
  EXPECT_TRUE(this->of({{0, 0}, {1, 2}}).determinant() == TypeParam(0));
  EXPECT_TRUE(this->of({{0}}).determinant() == TypeParam(0));
}

TYPED_TEST_P(EliminationOver, HasTheDeterminantZeroWithDependentRows) {
  EXPECT_TRUE(this->of({{2, 4}, {1, 2}}).determinant() == TypeParam(0));
  EXPECT_TRUE(this->of({{0, 1, 2}, {0, 3, 4}, {0, 5, 6}}).determinant() == TypeParam(0));
}

TYPED_TEST_P(EliminationOver, HasTheDeterminantZeroWithoutRows) {
  EXPECT_TRUE(Matrix<TypeParam>().determinant() == TypeParam(0));
}

TYPED_TEST_P(EliminationOver, LeavesTheMatrixOfADeterminantAlone) {
  const auto matrix = this->of({{1, 3}, {2, 1}});
  matrix.determinant();
  EXPECT_TRUE(matrix[1][1] == TypeParam(1));
  EXPECT_TRUE(matrix[2][1] == TypeParam(2));
}

TYPED_TEST_P(EliminationOver, RefusesTheDeterminantOfAMatrixThatIsNotSquare) {
  EXPECT_FAILS_WITH(Matrix<TypeParam>(2, 3).determinant(),
                    "Matrix: a non-quadratic matrix determinant is not defined");
  EXPECT_FAILS_WITH(Matrix<TypeParam>(0, 1).determinant(),
                    "Matrix: a non-quadratic matrix determinant is not defined");
}

REGISTER_TYPED_TEST_SUITE_P(EliminationOver, CertificateRefusesAMatrixThatIsNoEchelon,
                            CertificateRefusesAnEchelonThatIsNotReduced,
                            CertificateRefusesAWrongTransformation, FindsTheFullRank,
                            CountsAPivotBroughtUpAsAnExchange,
                            CountsALargerPivotOfTheSameColumnAsAnExchange,
                            CountsBothKindsOfExchange, TakesTheFirstOfEqualPivots,
                            FindsDependentRows, SkipsZeroColumns, HasNoRankWithoutEntries,
                            HandlesMoreRowsThanColumnsAndFewer, KeepsTheRowsOfAPermutationAsTheyAre,
                            HasTheDeterminantOfSmallMatrices, HasTheDeterminantZeroWithAZeroRow,
                            HasTheDeterminantZeroWithDependentRows,
                            HasTheDeterminantZeroWithoutRows, LeavesTheMatrixOfADeterminantAlone,
                            RefusesTheDeterminantOfAMatrixThatIsNotSquare);

}  // namespace starsift::test
