#include "algorithms/exact/ExactProduct.h"

#include <gtest/gtest.h>

#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::q;
using test::rowsText;
using test::textOf;

template <class T>
class ExactProductOver : public testing::Test {};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ExactProductOver, NumberTypes);

TYPED_TEST(ExactProductOver, MultipliesRowsByColumns) {
  const Matrix<TypeParam> left{{1, 2}, {0, -1}, {3, 0}};
  const Matrix<TypeParam> right{{5, 0, 1, 2}, {1, 1, -1, 3}};
  EXPECT_EQ(rowsText(exactProduct(left, right)), "[ 7 2 -1 8 ] [ -1 -1 1 -3 ] [ 15 0 3 6 ]");
  EXPECT_EQ(textOf(exactProduct(left[1], right)), "[ 7 2 -1 8 ]");
}

TYPED_TEST(ExactProductOver, EmptyFactorsHaveAnEmptyProduct) {
  const Matrix<TypeParam> none(0, 2);
  const Matrix<TypeParam> right{{1}, {2}};
  EXPECT_EQ(exactProduct(none, right).rowCount(), 0);
  EXPECT_EQ(exactProduct(none, right).columnCount(), 1);
  EXPECT_EQ(rowsText(exactProduct(Matrix<TypeParam>(2, 0), Matrix<TypeParam>(0, 2))),
            "[ 0 0 ] [ 0 0 ]");
}

TYPED_TEST(ExactProductOver, DecimalsAreTakenAtTheirWord) {
  const Matrix<TypeParam> tenths{{NumberConversion<TypeParam, QQ>::convert(q("0.1"))}};
  EXPECT_EQ(exactProduct(Matrix<TypeParam>{{10}}, tenths)[1][1], TypeParam(1));
}

TEST(ExactProduct, ThrowsWhereLongDoubleWouldRound) {
  const Matrix<long double> large{{3037000501.0L}};
  const Matrix<long double> other{{9000000001.0L}};
  EXPECT_THROW(exactProduct(large, other), PrecisionException);
  EXPECT_EQ(exactProduct(Matrix<QQ>{{q("3037000501")}}, Matrix<QQ>{{q("9000000001")}})[1][1],
            q("27333004512037000501"));
}

TEST(ExactProduct, PartialSumsMayNotRoundEither) {
  const Vector<long double> row{3037000501.0L, -3037000501.0L};
  const Matrix<long double> columns{{9000000001.0L}, {9000000001.0L}};
  EXPECT_THROW(exactProduct(row, columns), PrecisionException);
}

}  // namespace
}  // namespace starsift
