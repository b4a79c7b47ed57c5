#include "algorithms/exact/IndependentRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "algorithms/exact/IndependentRowsDetail.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerRows;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

template <class T>
class IndependentRowsOver : public ::testing::Test {
 protected:
  /// Rows as numbers spelled by literals with 18 digits.
  static Matrix<T> of(std::initializer_list<std::initializer_list<long double>> rows) {
    Matrix<long double> matrix(static_cast<Index>(rows.size()),
                               static_cast<Index>(rows.begin()->size()));
    Index i = 0;
    for (const auto& row : rows) std::copy(row.begin(), row.end(), matrix[++i].begin());
    Matrix<T> result;
    result.convertFrom(matrix, false);
    return result;
  }
};
using NumberTypes = ::testing::Types<long double, QQ>;
TYPED_TEST_SUITE(IndependentRowsOver, NumberTypes);

TYPED_TEST(IndependentRowsOver, OfAnEmptyMatrixAreNone) {
  EXPECT_THAT(independentRows(Matrix<TypeParam>()), IsEmpty());
  EXPECT_THAT(independentRows(Matrix<TypeParam>(3, 0)), IsEmpty());
  EXPECT_THAT(independentRows(Matrix<TypeParam>(0, 3)), IsEmpty());
}

TYPED_TEST(IndependentRowsOver, AreAllWhereNoneDepends) {
  EXPECT_THAT(independentRows(this->of({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}})), ElementsAre(1, 2, 3));
}

TYPED_TEST(IndependentRowsOver, LeaveOutZeros) {
  EXPECT_THAT(independentRows(this->of({{0, 0}, {1, 2}, {0, 0}, {3, 4}})), ElementsAre(2, 4));
  EXPECT_THAT(independentRows(this->of({{0, 0}, {0, 0}})), IsEmpty());
}

TYPED_TEST(IndependentRowsOver, LeaveOutMultiples) {
  EXPECT_THAT(independentRows(this->of({{1, 2, 3}, {1, 2, 3}, {0, 1, 0}, {-0.5L, -1, -1.5L}})),
              ElementsAre(1, 3));
}

TYPED_TEST(IndependentRowsOver, LeaveOutCombinationsOfTheRowsAbove) {
  EXPECT_THAT(independentRows(this->of({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {0, 0, 1}})),
              ElementsAre(1, 2, 4));
}

TYPED_TEST(IndependentRowsOver, KeepACombinationOfTheRowsBelow) {
  EXPECT_THAT(independentRows(this->of({{5, 7, 9}, {1, 2, 3}, {4, 5, 6}})), ElementsAre(1, 2));
}

TYPED_TEST(IndependentRowsOver, LeaveOutCombinationsByFractions) {
  EXPECT_THAT(
      independentRows(this->of({{0.1L, 0.7L, 2}, {0.3L, 11, 0.01L}, {0.2L, 5.85L, 1.005L}})),
      ElementsAre(1, 2));
}

TYPED_TEST(IndependentRowsOver, KeepWhatTheLastDigitTellsApart) {
  EXPECT_THAT(independentRows(this->of({{0.1L, 0.3L}, {0.2L, 0.600000000000000001L}})),
              ElementsAre(1, 2));
  EXPECT_THAT(independentRows(this->of({{999999999999999999.L, 1}, {1e-18L, 1e-36L}})),
              ElementsAre(1, 2));
}

TYPED_TEST(IndependentRowsOver, EndBehindAsManyAsColumns) {
  EXPECT_THAT(independentRows(this->of({{1, 1}, {2, 2}, {3, 5}, {7, 1}, {0, 4}})),
              ElementsAre(1, 3));
}

TYPED_TEST(IndependentRowsOver, StandNumbersOfEverySize) {
  EXPECT_THAT(independentRows(this->of({{1e300L, 1, 0}, {1, 1e-300L, 0}, {1e300L, 1, 1e-300L}})),
              ElementsAre(1, 3));
}

TYPED_TEST(IndependentRowsOver, OfASingularSquareAreOneLess) {
  // Row i holds (i + j)^2: of rank 3 from three rows on.
  Matrix<TypeParam> squares(6, 6);
  for (Index i = 1; i <= 6; ++i)
    for (Index j = 1; j <= 6; ++j) squares[i][j] = TypeParam(static_cast<long>((i + j) * (i + j)));
  EXPECT_THAT(independentRows(squares), ElementsAre(1, 2, 3));
}

TEST(IndependentRows, OfThirtyDigitsAreExact) {
  const QQ big = QQ::parse("123456789012345678901234567890");
  Matrix<QQ> rows{{big, QQ(3), -big}, {QQ(7), big * big, QQ(1)}, {QQ(), QQ(), QQ()}};
  for (Index j = 1; j <= 3; ++j) rows[3][j] = rows[1][j] * QQ(5, 7) - rows[2][j] * big;
  EXPECT_THAT(independentRows(rows), ElementsAre(1, 2));
  rows[3][3] += QQ(1) / big;
  EXPECT_THAT(independentRows(rows), ElementsAre(1, 2, 3));
}

TEST(IndependentRows, OfCoprimeDenominatorsAreExact) {
  Matrix<QQ> rows{{QQ(1, 2), QQ(1, 3), QQ(1, 5)}, {QQ(1, 7), QQ(1, 11), QQ(1, 13)}, {0, 0, 0}};
  for (Index j = 1; j <= 3; ++j) rows[3][j] = rows[1][j] * QQ(17, 19) + rows[2][j];
  EXPECT_THAT(independentRows(rows), ElementsAre(1, 2));
}

TEST(IndependentRows, OfManyAreFoundByLongCoefficients) {
  // A product of 20 x 12 and 12 x 15: the last rows depend on the first twelve by
  // quotients of minors.
  std::mt19937_64 random(1);
  const auto entry = [&random] { return QQ(static_cast<long>(random() % 2'000'001) - 1'000'000); };
  Matrix<QQ> thin(20, 12);
  Matrix<QQ> flat(12, 15);
  for (Vector<QQ>& row : thin) std::generate(row.begin(), row.end(), entry);
  for (Vector<QQ>& row : flat) std::generate(row.begin(), row.end(), entry);
  EXPECT_THAT(independentRows(thin * flat), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST(IndependentRowsByAPrime, AreNotFoundWhereARowDependsModuloThePrimeOnly) {
  const auto rows = integerRows({{1, 0}, {1, 7}});
  EXPECT_EQ(detail::provenSplit(rows, 2, PrimeField(7)), std::nullopt);
  EXPECT_THAT(detail::provenSplit(rows, 2, PrimeField(11)), Optional(ElementsAre(0U, 1U)));
  EXPECT_THAT(detail::independentIntegerRows(rows, 2, 7), ElementsAre(0U, 1U));
}

TEST(IndependentRowsByAPrime, AreNotFoundWhereARowBelowTakesPart) {
  // Modulo 7 the second row repeats the first one; in truth the third row is needed.
  const auto rows = integerRows({{1, 0, 0}, {1, 7, 0}, {0, 1, 0}});
  EXPECT_EQ(detail::provenSplit(rows, 3, PrimeField(7)), std::nullopt);
  EXPECT_THAT(detail::independentIntegerRows(rows, 3, 7), ElementsAre(0U, 1U));
}

TEST(IndependentRowsByAPrime, AreNotFoundWhereTheRowDiffersBesideThePivots) {
  // Modulo 7 all of the second row is that of the first one, and so are its pivots.
  const auto rows = integerRows({{1, 1, 1}, {8, 8, 15}});
  EXPECT_EQ(detail::provenSplit(rows, 3, PrimeField(7)), std::nullopt);
}

TEST(IndependentRowsByAPrime, AreFoundWhenManyPrimesFail) {
  // 2 * 3 * 5 * 7 * 11 * 13
  const auto rows = integerRows({{1, 0}, {1, 30030}});
  EXPECT_THAT(detail::independentIntegerRows(rows, 2, 2), ElementsAre(0U, 1U));
}

TEST(IndependentRowsByAPrime, AreFoundByTheLeastOne) {
  const auto rows = integerRows({{1, 0, 1}, {0, 1, 1}, {3, 5, 8}, {0, 0, 1}});
  EXPECT_THAT(detail::provenSplit(rows, 3, PrimeField(2)), Optional(ElementsAre(0U, 1U, 3U)));
}

}  // namespace
}  // namespace starsift
