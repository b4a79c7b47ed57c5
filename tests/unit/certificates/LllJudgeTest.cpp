#include "certificates/LllJudge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerMatrix;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using Kind = LllViolation::Kind;
using Products = std::vector<ZZ>;

const QQ half(1, 2);

TEST(IntervalGramSchmidt, DecidesWhereNoBoundIsNear) {
  IntervalGramSchmidt data(64);
  // 3 1, 2 3
  EXPECT_TRUE(data.add(Products{ZZ(10)}));
  EXPECT_TRUE(data.add(Products{ZZ(9), ZZ(13)}));
  EXPECT_THAT(data.isSizeReduced(0, half), Optional(false));
  EXPECT_THAT(data.isSizeReduced(0, QQ(91, 100)), Optional(true));
  EXPECT_THAT(data.mayStay(QQ(129, 100)), Optional(true));
  EXPECT_THAT(data.mayStay(QQ(131, 100)), Optional(false));
}

TEST(IntervalGramSchmidt, LeavesABoundThatIsMetOpen) {
  IntervalGramSchmidt data(64);
  EXPECT_TRUE(data.add(Products{ZZ(10)}));
  EXPECT_TRUE(data.add(Products{ZZ(9), ZZ(13)}));
  EXPECT_EQ(data.isSizeReduced(0, QQ(9, 10)), std::nullopt);
  EXPECT_EQ(data.mayStay(QQ(13, 10)), std::nullopt);
}

TEST(IntervalGramSchmidt, EndsAtADependentRow) {
  IntervalGramSchmidt data(64);
  EXPECT_TRUE(data.add(Products{ZZ(3)}));
  EXPECT_FALSE(data.add(Products{ZZ(1), ZZ(0)}));
  EXPECT_FALSE(IntervalGramSchmidt(64).add(Products{ZZ(0)}));
}

TEST(IntegralGramSchmidt, DecidesWhereABoundIsMet) {
  IntegralGramSchmidt data;
  EXPECT_TRUE(data.add(0, Products{ZZ(10)}));
  EXPECT_TRUE(data.add(1, Products{ZZ(9), ZZ(13)}));
  EXPECT_TRUE(data.isSizeReduced(0, QQ(9, 10)));
  EXPECT_FALSE(data.isSizeReduced(0, QQ(899, 1000)));
  EXPECT_TRUE(data.mayStay(QQ(13, 10)));
  EXPECT_FALSE(data.mayStay(QQ(1301, 1000)));
}

TEST(IntegralGramSchmidt, LeavesOutADependentRow) {
  IntegralGramSchmidt data;
  EXPECT_TRUE(data.add(0, Products{ZZ(4)}));
  EXPECT_FALSE(data.add(1, Products{ZZ(6), ZZ(9)}));
  EXPECT_TRUE(data.add(2, Products{ZZ(2), ZZ(5)}));
  EXPECT_THAT(data.kept(), ElementsAre(0U, 2U));
}

TEST(LllJudge, GoesOnInIntegersFromTheFirstRowThatIntervalsLeaveOpen) {
  // mu[2][1] is 1/3, and row 3 is row 2 without it.
  LllJudge judge(integerMatrix({{3, 0, 0}, {1, 3, 1}, {0, 3, 1}, {2, 0, 5}}), QQ(3, 4), QQ(1, 3));
  EXPECT_THAT(judge.next(), IsEmpty());
  EXPECT_THAT(judge.next(), IsEmpty());
  EXPECT_THAT(judge.next(), ElementsAre(LllViolation{Kind::dependent, 3, 0}));
  EXPECT_TRUE(judge.hasNext());
  EXPECT_THAT(judge.next(),
              ElementsAre(LllViolation{Kind::size, 4, 1}, LllViolation{Kind::size, 4, 2}));
  EXPECT_FALSE(judge.hasNext());
}

}  // namespace
}  // namespace starsift
