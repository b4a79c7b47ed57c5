#include <gtest/gtest.h>

#include "numbers/QQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

constexpr long smallBound = 1L << 62;
const QQ huge(ZZ("123456789012345678901234567890", 10));
const QQ inf = QQ::infinity();

TEST(QQAddition, Fractions) {
  EXPECT_EQ(QQ(1, 2) + QQ(1, 3), QQ(5, 6));
  EXPECT_EQ(QQ(1, 2) + QQ(1, 2), QQ(1));
  EXPECT_EQ(QQ(1, 6) - QQ(2, 3), QQ(-1, 2));
  EXPECT_EQ(QQ(1, 3) - QQ(1, 3), QQ(0));
}

TEST(QQAddition, LeavesTheSmallShapeAndReturns) {
  const QQ sum = QQ(smallBound - 1) + QQ(smallBound - 1);
  EXPECT_EQ(sum.numerator(), ZZ("9223372036854775806", 10));
  EXPECT_EQ(sum - QQ(smallBound - 1), QQ(smallBound - 1));
  const QQ difference = QQ(-smallBound + 1) - QQ(smallBound - 1);
  EXPECT_EQ(difference.numerator(), ZZ("-9223372036854775806", 10));
}

TEST(QQAddition, OfGreatestFractionsDoesNotOverflow) {
  const QQ a(smallBound - 1, 0xFFFFFFFFL);
  const QQ b(smallBound - 1, 0xFFFFFFFEL);
  EXPECT_EQ(a + b - b, a);
  EXPECT_EQ(a + b - a, b);
}

TEST(QQAddition, WithInfinityGivesTheInfinity) {
  EXPECT_EQ(-inf + QQ(1), -inf);
  EXPECT_EQ(QQ(1) + inf, inf);
  EXPECT_EQ(huge - inf, -inf);
  EXPECT_EQ(inf - huge, inf);
  EXPECT_EQ(inf + inf, inf);
  EXPECT_EQ(-inf - inf, -inf);
  EXPECT_EQ(inf - -inf, inf);
}

TEST(QQAddition, OfOppositeInfinitiesFails) {
  constexpr const char* text = "INF - INF is not defined";
  EXPECT_FAILS_WITH(inf - inf, text);
  EXPECT_FAILS_WITH(-inf - -inf, text);
  EXPECT_FAILS_WITH(inf + -inf, text);
  EXPECT_FAILS_WITH(-inf + inf, text);
}

TEST(QQMultiplication, Fractions) {
  EXPECT_EQ(QQ(2, 3) * QQ(3, 4), QQ(1, 2));
  EXPECT_EQ(QQ(-2, 3) * QQ(3), QQ(-2));
  EXPECT_EQ(QQ(-2, 3) * QQ(-3, 2), QQ(1));
  EXPECT_EQ(QQ(0) * QQ(1, 3), QQ(0));
}

TEST(QQMultiplication, BeyondAWord) {
  const QQ factor(3'000'000'019L);
  const QQ square = factor * factor;
  EXPECT_EQ(square.numerator(), ZZ("9000000114000000361", 10));
  EXPECT_EQ(square * factor / factor, square);
}

TEST(QQMultiplication, OfInfinityTakesTheProductOfTheSigns) {
  EXPECT_EQ(inf * QQ(-1, 2), -inf);
  EXPECT_EQ(QQ(-3) * -inf, inf);
  EXPECT_EQ(-inf * -inf, inf);
  EXPECT_EQ(inf * -inf, -inf);
}

TEST(QQMultiplication, OfZeroAndInfinityFails) {
  EXPECT_FAILS_WITH(QQ(0) * inf, "qq: 0 * INF is not defined!");
  EXPECT_FAILS_WITH(QQ(0) * -inf, "qq: 0 * INF is not defined!");
  EXPECT_FAILS_WITH(inf * QQ(0), "qq: INF * 0 is not defined!");
  EXPECT_FAILS_WITH(-inf * QQ(0), "qq: INF * 0 is not defined!");
}

TEST(QQDivision, Fractions) {
  EXPECT_EQ(QQ(1, 2) / QQ(1, 3), QQ(3, 2));
  EXPECT_EQ(QQ(6) / QQ(-4), QQ(-3, 2));
  EXPECT_EQ(QQ(-6) / QQ(-3), QQ(2));
  EXPECT_EQ(QQ(0) / QQ(-3), QQ(0));
  EXPECT_EQ(QQ(1) / QQ(smallBound - 1) * QQ(smallBound - 1), QQ(1));
}

TEST(QQDivision, ByBigNumbers) {
  EXPECT_EQ(huge / huge, QQ(1));
  EXPECT_EQ(QQ(1) / -huge * huge, QQ(-1));
}

TEST(QQDivision, ByZeroIsTheInfinityOfTheDividend) {
  EXPECT_EQ(QQ(5) / QQ(0), inf);
  EXPECT_EQ(QQ(-5) / QQ(0), -inf);
  EXPECT_EQ(-huge / QQ(0), -inf);
}

TEST(QQDivision, WithInfinities) {
  EXPECT_EQ(inf / QQ(-2), -inf);
  EXPECT_EQ(-inf / QQ(1, 2), -inf);
  EXPECT_EQ(-inf / QQ(0), -inf);
  EXPECT_EQ(QQ(5) / -inf, QQ(0));
  EXPECT_EQ(QQ(0) / inf, QQ(0));
  EXPECT_TRUE((huge / -inf).sign());
}

TEST(QQDivision, UndefinedQuotientsFail) {
  EXPECT_FAILS_WITH(inf / inf, "qq: oo / oo is not defined");
  EXPECT_FAILS_WITH(-inf / inf, "qq: oo / oo is not defined");
  EXPECT_FAILS_WITH(QQ(0) / QQ(0), "0 / 0 is not defined");
}

TEST(QQAliasing, OperandMayBeTheResult) {
  QQ a = huge / QQ(11);
  const QQ before = a;
  const QQ& same = a;
  a += same;
  EXPECT_EQ(a, before * QQ(2));
  a -= same;
  EXPECT_EQ(a, QQ(0));
  a = before;
  a *= same;
  EXPECT_EQ(a, before * before);
  a /= same;
  EXPECT_EQ(a, QQ(1));
}

TEST(QQNegation, KeepsZeroPositive) {
  EXPECT_TRUE((-QQ(0)).sign());
  EXPECT_EQ(-QQ(1, 2), QQ(-1, 2));
  EXPECT_EQ(-(-huge), huge);
  EXPECT_EQ(-(-inf), inf);
}

TEST(QQAddProduct, Integers) {
  QQ sum(1);
  addProduct(sum, QQ(3), QQ(-4));
  EXPECT_EQ(sum, QQ(-11));
  subtractProduct(sum, QQ(3), QQ(-4));
  EXPECT_EQ(sum, QQ(1));
}

TEST(QQAddProduct, BeyondAWordAndBack) {
  QQ sum(5);
  addProduct(sum, QQ(smallBound - 1), QQ(smallBound - 1));
  EXPECT_EQ(sum - QQ(5), QQ(smallBound - 1) * QQ(smallBound - 1));
  subtractProduct(sum, QQ(smallBound - 1), QQ(smallBound - 1));
  EXPECT_EQ(sum, QQ(5));
}

TEST(QQAddProduct, Fractions) {
  QQ sum(1, 2);
  addProduct(sum, QQ(1, 3), QQ(3, 4));
  EXPECT_EQ(sum, QQ(3, 4));
  subtractProduct(sum, huge, QQ(1, 2));
  EXPECT_EQ(sum, QQ(3, 4) - huge / QQ(2));
}

TEST(QQAddProduct, OperandsMayBeTheSum) {
  QQ sum(3);
  addProduct(sum, sum, sum);
  EXPECT_EQ(sum, QQ(12));
  sum = huge;
  subtractProduct(sum, sum, sum);
  EXPECT_EQ(sum, huge - huge * huge);
}

TEST(QQAddProduct, ReportsWhatTheProductReports) {
  QQ sum;
  EXPECT_FAILS_WITH(addProduct(sum, QQ(0), inf), "qq: 0 * INF is not defined!");
  EXPECT_FAILS_WITH(addProduct(sum, inf, QQ(0)), "qq: INF * 0 is not defined!");
  sum = inf;
  addProduct(sum, QQ(0), QQ(5));
  EXPECT_EQ(sum, inf);
  EXPECT_FAILS_WITH(subtractProduct(sum, inf, QQ(2)), "INF - INF is not defined");
}

}  // namespace
}  // namespace starsift
