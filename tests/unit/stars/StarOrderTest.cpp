#include "stars/StarOrder.h"

#include "numbers/QQ.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::q;

template <class T>
class StarOrderOver : public testing::Test {
 protected:
  static Star<T> star() {
    Star<T> star{T(1), T(2)};
    star.targetNorm = T(5);
    star.slackNorm = T(3);
    star.time = 10;
    star.versionText = "2.4.2";
    star.paramsText = "m";
    return star;
  }

  template <class... Stars>
  static Array<Star<T>> array(const Stars&... stars) {
    Array<Star<T>> result(sizeof...(stars));
    Index next = 0;
    ((result[++next] = stars), ...);
    return result;
  }

  static void expectOrder(const Star<T>& first, const Star<T>& second) {
    EXPECT_TRUE(starLess(first, second));
    EXPECT_FALSE(starLess(second, first));
    Array<Star<T>> stars = array(second, first);
    sortStars(stars);
    EXPECT_TRUE(same(stars[1], first));
    EXPECT_TRUE(same(stars[2], second));
  }

  static bool same(const Star<T>& a, const Star<T>& b) {
    return a.dimension() == b.dimension() && identical(a.x(), b.x()) &&
           a.targetNorm == b.targetNorm && a.slackNorm == b.slackNorm && a.time == b.time &&
           a.versionText == b.versionText && a.paramsText == b.paramsText;
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(StarOrderOver, LatticeNumbers);

TYPED_TEST(StarOrderOver, SmallerTargetNormIsFirstWhateverTheRest) {
  Star<TypeParam> better = this->star();
  better.targetNorm = TypeParam(4);
  better.slackNorm = TypeParam(9);
  better.time = unknownTime;
  better.versionText = "";
  this->expectOrder(better, this->star());
}

TYPED_TEST(StarOrderOver, TargetNormsAreComparedWithoutTolerance) {
  Star<TypeParam> better = this->star();
  better.targetNorm -= TypeParam(1) / TypeParam(1'000'000'000'000);
  better.slackNorm = TypeParam(9);
  this->expectOrder(better, this->star());
}

TYPED_TEST(StarOrderOver, InfiniteNormsHaveTheirPlace) {
  Star<TypeParam> best = this->star();
  best.targetNorm = -NumberTraits<TypeParam>::infinity();
  Star<TypeParam> worst = this->star();
  worst.targetNorm = NumberTraits<TypeParam>::infinity();
  this->expectOrder(best, this->star());
  this->expectOrder(this->star(), worst);
}

TYPED_TEST(StarOrderOver, EqualInfiniteNormsLeaveItToTheNextKey) {
  Star<TypeParam> first = this->star();
  first.targetNorm = NumberTraits<TypeParam>::infinity();
  Star<TypeParam> second = first;
  second.slackNorm = TypeParam(4);
  this->expectOrder(first, second);
}

TYPED_TEST(StarOrderOver, SmallerSlackNormIsFirstWhateverComesBehind) {
  Star<TypeParam> better = this->star();
  better.slackNorm = TypeParam(2);
  better.time = unknownTime;
  better.versionText = "";
  this->expectOrder(better, this->star());
}

TYPED_TEST(StarOrderOver, EarlierTimeIsFirstWhateverComesBehind) {
  Star<TypeParam> better = this->star();
  better.time = 9;
  better.versionText = "";
  this->expectOrder(better, this->star());
}

TYPED_TEST(StarOrderOver, KnownTimeIsBeforeUnknown) {
  Star<TypeParam> unknown = this->star();
  unknown.time = unknownTime;
  unknown.versionText = "9";
  this->expectOrder(this->star(), unknown);
}

TYPED_TEST(StarOrderOver, TimeZeroIsKnown) {
  Star<TypeParam> zero = this->star();
  zero.time = 0;
  Star<TypeParam> unknown = this->star();
  unknown.time = unknownTime;
  this->expectOrder(zero, this->star());
  this->expectOrder(zero, unknown);
}

TYPED_TEST(StarOrderOver, HigherVersionIsFirstWhateverTheVector) {
  Star<TypeParam> better{TypeParam(9), TypeParam(9)};
  better.targetNorm = TypeParam(5);
  better.slackNorm = TypeParam(3);
  better.time = 10;
  better.paramsText = "m";
  better.versionText = "2.10";
  this->expectOrder(better, this->star());
}

TYPED_TEST(StarOrderOver, LongerVersionIsHigherUnlessItEndsInZeros) {
  Star<TypeParam> longer = this->star();
  longer.versionText = "2.4.2.0.1";
  this->expectOrder(longer, this->star());
}

TYPED_TEST(StarOrderOver, MissingNumbersCountAsZero) {
  Star<TypeParam> padded = this->star();
  padded.versionText = "2.4.2.0.0";
  EXPECT_FALSE(starLess(padded, this->star()));
  EXPECT_FALSE(starLess(this->star(), padded));
}

TYPED_TEST(StarOrderOver, NoVersionIsVersionZero) {
  Star<TypeParam> none = this->star();
  none.versionText = "";
  Star<TypeParam> zero = this->star();
  zero.versionText = "0.0";
  EXPECT_FALSE(starLess(none, zero));
  EXPECT_FALSE(starLess(zero, none));
}

TYPED_TEST(StarOrderOver, LettersOfVersionsAreDigits) {
  Star<TypeParam> letter = this->star();
  letter.versionText = "a";
  Star<TypeParam> number = this->star();
  number.versionText = "49";
  EXPECT_FALSE(starLess(letter, number));
  EXPECT_FALSE(starLess(number, letter));
}

TYPED_TEST(StarOrderOver, CharactersBelowZeroMakeAHugeVersion) {
  Star<TypeParam> blank = this->star();
  blank.versionText = "2. 4";
  this->expectOrder(blank, this->star());
}

TYPED_TEST(StarOrderOver, VersionNumbersWrapAt64Bits) {
  Star<TypeParam> wrapped = this->star();
  wrapped.versionText = "18446744073709551616.9";
  Star<TypeParam> zero = this->star();
  zero.versionText = "0.9";
  EXPECT_FALSE(starLess(wrapped, zero));
  EXPECT_FALSE(starLess(zero, wrapped));
}

TYPED_TEST(StarOrderOver, TextOfTheVectorDecidesByteByByte) {
  Star<TypeParam> ten = this->star();
  ten[2] = TypeParam(10);
  ten.paramsText = "z";
  this->expectOrder(ten, this->star());
}

TYPED_TEST(StarOrderOver, ShorterNumberIsBeforeItsContinuation) {
  Star<TypeParam> one = this->star();
  one[1] = TypeParam(1);
  Star<TypeParam> eleven = this->star();
  eleven[1] = TypeParam(11);
  this->expectOrder(one, eleven);
}

TYPED_TEST(StarOrderOver, MinusIsBeforeDigits) {
  Star<TypeParam> negative = this->star();
  negative[1] = TypeParam(-9);
  this->expectOrder(negative, this->star());
}

TYPED_TEST(StarOrderOver, InfinityIsBehindDigits) {
  Star<TypeParam> infinite = this->star();
  infinite[1] = NumberTraits<TypeParam>::infinity();
  this->expectOrder(this->star(), infinite);
}

TYPED_TEST(StarOrderOver, BracketIsBehindDigits) {
  Star<TypeParam> longer = this->star();
  longer.resize(3, false);
  this->expectOrder(longer, this->star());
}

TYPED_TEST(StarOrderOver, BracketIsBeforeInfinity) {
  Star<TypeParam> longer = this->star();
  longer.resize(3, false);
  longer[3] = NumberTraits<TypeParam>::infinity();
  this->expectOrder(this->star(), longer);
}

TYPED_TEST(StarOrderOver, ParametersDecideLast) {
  Star<TypeParam> first = this->star();
  first.paramsText = "M";
  this->expectOrder(first, this->star());
}

TYPED_TEST(StarOrderOver, ParametersAreComparedAsUnsignedBytes) {
  Star<TypeParam> last = this->star();
  last.paramsText = "\xC3\xA4";
  this->expectOrder(this->star(), last);
}

TYPED_TEST(StarOrderOver, ParametersDecideAgainstTheVersionToo) {
  Star<TypeParam> higher = this->star();
  higher.versionText = "3";
  higher.paramsText = "z";
  EXPECT_TRUE(starLess(higher, this->star()));
  EXPECT_TRUE(starLess(this->star(), higher));
}

TYPED_TEST(StarOrderOver, StarIsNotLessThanItself) {
  EXPECT_FALSE(starLess(this->star(), this->star()));
}

TEST(StarOrder, ExactFormOrdersRationals) {
  // "1:1/2" is before "1:1/4", where 1.25 would be before 1.5.
  EXPECT_TRUE(starLess(Star<QQ>{q("1:1/2")}, Star<QQ>{q("1:1/4")}));
  EXPECT_TRUE(starLess(Star<long double>{1.25L}, Star<long double>{1.5L}));
}

TEST(StarOrder, EighteenthDigitDecidesWhereSeventeenAgree) {
  const Star<long double> first{100000000000000001.0L};
  const Star<long double> second{100000000000000002.0L};
  EXPECT_TRUE(starLess(first, second));
  EXPECT_FALSE(starLess(second, first));
}

TEST(StarOrder, LaterComponentsDecideBeforeTheEighteenthDigit) {
  const Star<long double> first{100000000000000002.0L, 1.0L};
  const Star<long double> second{100000000000000001.0L, 2.0L};
  EXPECT_TRUE(starLess(first, second));
  EXPECT_FALSE(starLess(second, first));
}

TYPED_TEST(StarOrderOver, SortingNothingDoesNothing) {
  Array<Star<TypeParam>> stars;
  sortStars(stars);
  EXPECT_EQ(stars.dimension(), 0);
}

TYPED_TEST(StarOrderOver, SortingMovesAllOfAStar) {
  Star<TypeParam> best = this->star();
  best.targetNorm = TypeParam(-1);
  best.targetValues = Vector<TypeParam>{TypeParam(8)};
  best.fresh = true;
  Array<Star<TypeParam>> stars = this->array(this->star(), this->star(), best);
  sortStars(stars);
  ASSERT_EQ(stars.dimension(), 3);
  EXPECT_EQ(stars[1].targetNorm, TypeParam(-1));
  EXPECT_EQ(stars[1].targetValues[1], TypeParam(8));
  EXPECT_TRUE(stars[1].fresh);
  EXPECT_FALSE(stars[3].fresh);
}

TYPED_TEST(StarOrderOver, DuplicateGoesAndTheEarlierStarStays) {
  Star<TypeParam> other = this->star();
  other[1] = TypeParam(7);
  Star<TypeParam> duplicate = this->star();
  duplicate.versionText = "1";
  Array<Star<TypeParam>> stars = this->array(this->star(), other, duplicate);
  removeDuplicates(stars, true);
  ASSERT_EQ(stars.dimension(), 2);
  EXPECT_TRUE(this->same(stars[1], this->star()));
  EXPECT_TRUE(this->same(stars[2], other));
}

TYPED_TEST(StarOrderOver, StarsBehindADuplicateKeepTheirOrder) {
  Array<Star<TypeParam>> stars(9);
  for (Index i = 1; i <= 9; ++i) stars[i] = Star<TypeParam>{TypeParam(i % 2 == 0 ? 2 : i)};
  removeDuplicates(stars, true);
  ASSERT_EQ(stars.dimension(), 6);
  EXPECT_EQ(stars[1][1], TypeParam(1));
  EXPECT_EQ(stars[2][1], TypeParam(2));
  EXPECT_EQ(stars[3][1], TypeParam(3));
  EXPECT_EQ(stars[4][1], TypeParam(5));
  EXPECT_EQ(stars[5][1], TypeParam(7));
  EXPECT_EQ(stars[6][1], TypeParam(9));
}

TYPED_TEST(StarOrderOver, OtherParametersMakeAnotherStarWhereTheyCount) {
  Star<TypeParam> other = this->star();
  other.paramsText = "n";
  Array<Star<TypeParam>> stars = this->array(this->star(), other);
  removeDuplicates(stars, true);
  EXPECT_EQ(stars.dimension(), 2);
}

TYPED_TEST(StarOrderOver, OtherParametersDoNotMatterElsewhere) {
  Star<TypeParam> other = this->star();
  other.paramsText = "n";
  Array<Star<TypeParam>> stars = this->array(this->star(), other);
  removeDuplicates(stars, false);
  ASSERT_EQ(stars.dimension(), 1);
  EXPECT_EQ(stars[1].paramsText, "m");
}

TYPED_TEST(StarOrderOver, DuplicatesAreExactlyEqual) {
  Star<TypeParam> near = this->star();
  near[1] += TypeParam(1) / TypeParam(1'000'000'000'000);
  Array<Star<TypeParam>> stars = this->array(this->star(), near);
  removeDuplicates(stars, true);
  EXPECT_EQ(stars.dimension(), 2);
}

/// 600 vectors of 100 components of which every other one equals the one before;
/// all are alike but for the last digits of component `place`.
template <class T>
Array<Star<T>> pairsThatDifferIn(Index place) {
  Array<Star<T>> stars(600);
  for (Index i = 1; i <= stars.dimension(); ++i) {
    stars[i].resize(100, false);
    for (T& component : stars[i]) component = T(1000);
    const Index pair = (i + 1) / 2;
    stars[i][place] = T(pair);
  }
  return stars;
}

TYPED_TEST(StarOrderOver, LongVectorsThatDifferInOneComponentAreToldApart) {
  for (Index place = 1; place <= 100; ++place) {
    Array<Star<TypeParam>> stars = pairsThatDifferIn<TypeParam>(place);
    removeDuplicates(stars, false);
    ASSERT_EQ(stars.dimension(), 300) << place;
    for (Index i = 1; i <= 300; ++i) ASSERT_EQ(stars[i][place], TypeParam(i)) << place;
  }
}

TYPED_TEST(StarOrderOver, InfiniteComponentsAreEqual) {
  Star<TypeParam> infinite = this->star();
  infinite[2] = NumberTraits<TypeParam>::infinity();
  Star<TypeParam> negative = infinite;
  negative[2] = -infinite[2];
  Array<Star<TypeParam>> stars = this->array(infinite, negative, infinite, negative);
  removeDuplicates(stars, true);
  EXPECT_EQ(stars.dimension(), 2);
}

TYPED_TEST(StarOrderOver, StarStaysFreshWithFreshDuplicatesOnly) {
  Star<TypeParam> fresh = this->star();
  fresh.fresh = true;
  Array<Star<TypeParam>> stars = this->array(fresh, fresh, fresh);
  removeDuplicates(stars, true);
  EXPECT_TRUE(stars[1].fresh);
}

TYPED_TEST(StarOrderOver, OldDuplicateMakesAStarOld) {
  Star<TypeParam> fresh = this->star();
  fresh.fresh = true;
  Array<Star<TypeParam>> stars = this->array(fresh, this->star(), fresh);
  removeDuplicates(stars, true);
  ASSERT_EQ(stars.dimension(), 1);
  EXPECT_FALSE(stars[1].fresh);
}

TYPED_TEST(StarOrderOver, FreshDuplicateDoesNotMakeAStarFresh) {
  Star<TypeParam> fresh = this->star();
  fresh.fresh = true;
  Array<Star<TypeParam>> stars = this->array(this->star(), fresh);
  removeDuplicates(stars, true);
  EXPECT_FALSE(stars[1].fresh);
}

TYPED_TEST(StarOrderOver, StarsOfDifferentLengthsAreRefused) {
  Array<Star<TypeParam>> stars = this->array(this->star(), Star<TypeParam>{TypeParam(1)});
  EXPECT_FAILS_WITH(removeDuplicates(stars, true), "Vector: dimension mismatch9");
}

TYPED_TEST(StarOrderOver, NothingHasNoDuplicates) {
  Array<Star<TypeParam>> stars;
  removeDuplicates(stars, true);
  EXPECT_EQ(stars.dimension(), 0);
}

TYPED_TEST(StarOrderOver, ManyStarsAreSortedAndSifted) {
  constexpr long count = 20'000;
  Array<Star<TypeParam>> stars(count);
  for (Index i = 1; i <= count; ++i) {
    stars[i] = Star<TypeParam>{TypeParam(i * 7919 % 1000)};
    stars[i].targetNorm = stars[i][1];
  }
  sortStars(stars);
  removeDuplicates(stars, true);
  ASSERT_EQ(stars.dimension(), 1000);
  for (Index i = 1; i <= 1000; ++i) ASSERT_EQ(stars[i].targetNorm, TypeParam(i - 1));
}

}  // namespace
}  // namespace starsift
