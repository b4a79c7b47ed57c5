#include "files/SolReader.h"

#include <stdexcept>

#include "files/SolWriter.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::q;

/// What readStar makes of a text, and the text behind the record.
template <class T>
struct OneRecord {
  explicit OneRecord(std::string_view text) {
    TextCursor source(text);
    isComplete = readStar(star, source);
    rest = source.rest();
  }
  Star<T> star;
  bool isComplete = false;
  std::string_view rest;
};

template <class T>
class RecordOver : public testing::Test {
 protected:
  static void expectDropped(std::string_view text, std::string_view rest) {
    const OneRecord<T> record(text);
    EXPECT_TRUE(record.isComplete);
    EXPECT_EQ(record.star.dimension(), 0);
    EXPECT_EQ(record.rest, rest);
  }

  static void expectTexts(std::string_view text, std::string_view params,
                          std::string_view version) {
    const OneRecord<T> record(text);
    EXPECT_TRUE(record.isComplete);
    EXPECT_EQ(record.star.paramsText, params);
    EXPECT_EQ(record.star.versionText, version);
    EXPECT_EQ(record.star.time, 5);
  }

  static std::int64_t timeOf(const std::string& token) {
    const std::string text = "[ 1 ] | 2 | [ 3 ] | 4 | " + token + " | p\n";
    return OneRecord<T>(text).star.time;
  }

  static void expectNoTime(const std::string& token) {
    expectDropped("[ 1 ] | 2 | [ 3 ] | 4 | " + token + " | p\n[ 2 ]", "[ 2 ]");
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(RecordOver, LatticeNumbers);

TYPED_TEST(RecordOver, OfSevenFieldsHasThemAll) {
  const OneRecord<TypeParam> record("[ 1 -2 ] | -6 | [ 7 3 ] | 1 | 12 | --beta=20 | 2.4.2\n");
  EXPECT_TRUE(record.isComplete);
  EXPECT_TRUE(identical(record.star.x(), Vector<TypeParam>{TypeParam(1), TypeParam(-2)}));
  EXPECT_EQ(record.star.targetNorm, TypeParam(-6));
  EXPECT_TRUE(identical(record.star.targetValues, Vector<TypeParam>{TypeParam(7), TypeParam(3)}));
  EXPECT_EQ(record.star.slackNorm, TypeParam(1));
  EXPECT_EQ(record.star.time, 12);
  EXPECT_EQ(record.star.paramsText, "--beta=20");
  EXPECT_EQ(record.star.versionText, "2.4.2");
  EXPECT_FALSE(record.star.fresh);
  EXPECT_EQ(record.rest, "");
}

TYPED_TEST(RecordOver, ReadsWhatTheWriterWrote) {
  Star<TypeParam> star{TypeParam(1) / TypeParam(10), -NumberTraits<TypeParam>::infinity()};
  star.targetNorm = TypeParam(-5) / TypeParam(2);
  star.targetValues = Vector<TypeParam>{TypeParam(5) / TypeParam(2)};
  star.slackNorm = TypeParam(1) / TypeParam(100000);
  star.time = 77;
  star.paramsText = "--a=b --c";
  star.versionText = "1.2";
  const std::string text = starText(star);
  EXPECT_EQ(starText(OneRecord<TypeParam>(text).star), text);
}

TYPED_TEST(RecordOver, OfTheVectorAloneIsBare) {
  const OneRecord<TypeParam> record("[ 1 0 1 ]\n\n[ 2 ]");
  EXPECT_FALSE(record.isComplete);
  EXPECT_EQ(record.star.dimension(), 3);
  EXPECT_EQ(record.star.targetNorm, TypeParam(0));
  EXPECT_EQ(record.star.time, unknownTime);
  EXPECT_EQ(record.star.paramsText, "");
  EXPECT_EQ(record.rest, "\n\n[ 2 ]");
}

TYPED_TEST(RecordOver, OfTheVectorAloneMayEndTheText) {
  EXPECT_FALSE(OneRecord<TypeParam>("[ 1 ]").isComplete);
}

TYPED_TEST(RecordOver, WithoutBlanksIsTheSame) {
  const OneRecord<TypeParam> record("[1]|2|[3]|4|5|p|v\n");
  EXPECT_EQ(record.star[1], TypeParam(1));
  EXPECT_EQ(record.star.slackNorm, TypeParam(4));
  EXPECT_EQ(record.star.time, 5);
  EXPECT_EQ(record.star.paramsText, "p");
  EXPECT_EQ(record.star.versionText, "v");
}

TYPED_TEST(RecordOver, WithoutBarsBehindTheFirstIsTheSame) {
  const OneRecord<TypeParam> record("[ 1 ] | 2 [ 3 ] 4 5\n");
  EXPECT_EQ(record.star.targetNorm, TypeParam(2));
  EXPECT_EQ(record.star.targetValues[1], TypeParam(3));
  EXPECT_EQ(record.star.slackNorm, TypeParam(4));
  EXPECT_EQ(record.star.time, 5);
}

TYPED_TEST(RecordOver, MayHaveItsBarsOnOtherLines) {
  const OneRecord<TypeParam> record("[ 1 ]\n|\n2\n|\n[ 3 ]\n|\n4\n|\n5\n| p\nq");
  EXPECT_EQ(record.star.time, 5);
  EXPECT_EQ(record.star.paramsText, "p");
  EXPECT_EQ(record.rest, "q");
}

TYPED_TEST(RecordOver, OfFiveFieldsEndsAtItsLineFeed) {
  const OneRecord<TypeParam> record("[ 1 ] | 2 | [ 3 ] | 4 | 5\n[ 9 ] | 1");
  EXPECT_TRUE(record.isComplete);
  EXPECT_EQ(record.star.time, 5);
  EXPECT_EQ(record.star.paramsText, "");
  EXPECT_EQ(record.star.versionText, "");
  EXPECT_EQ(record.rest, "[ 9 ] | 1");
}

TYPED_TEST(RecordOver, OfFiveFieldsMayEndTheText) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5", "", "");
}

TYPED_TEST(RecordOver, OfSixFieldsHasNoVersion) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p\n", "p", "");
}

TYPED_TEST(RecordOver, WithEmptyParametersLeavesTheNextLineAlone) {
  const OneRecord<TypeParam> record("[ 1 ] | 2 | [ 3 ] | 4 | 5 | \n[ 9 ] | 1");
  EXPECT_EQ(record.star.paramsText, "");
  EXPECT_EQ(record.rest, "[ 9 ] | 1");
}

TYPED_TEST(RecordOver, OfEightFieldsLosesItsVersion) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p | v | w\n", "p", "");
}

TYPED_TEST(RecordOver, WithABarAtTheVeryEndKeepsItsVersion) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p | v |\n", "p", "v");
}

TYPED_TEST(RecordOver, OfNothingBehindTheBarOfTheVersionHasNone) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p | \n", "p", "");
}

TYPED_TEST(RecordOver, WithoutParametersMayHaveAVersion) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | | v\n", "", "v");
}

TYPED_TEST(RecordOver, TrimsItsTexts) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | \t\f p  q \v | \t v w \r\n", "p  q", "v w");
}

TYPED_TEST(RecordOver, MayEndInACarriageReturn) {
  const OneRecord<TypeParam> record("[ 1 ]\r\n| 2 | [ 3 ] | 4 | 5 | p\r\n[ 2 ]\r\n");
  EXPECT_EQ(record.star.paramsText, "p");
  EXPECT_EQ(record.rest, "[ 2 ]\r\n");
}

TYPED_TEST(RecordOver, SwallowsTheRecordBehindItOnItsLine) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p [ 2 ]\n", "p [ 2 ]", "");
}

TYPED_TEST(RecordOver, TextBehindTheTimeWithoutABarIsParameterText) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 p | v\n", "p", "v");
}

TYPED_TEST(RecordOver, CommentsMayStandBeforeTheFirstFiveFields) {
  this->expectTexts(
      "/* a */ // b\n[ /* c */ 1 // d\n ] | /* e */ 2 | // f\n [ 3 ] | /* g */ /* h */ 4 | // i\n"
      " 5 | p\n",
      "p", "");
}

TYPED_TEST(RecordOver, CommentBeforeTheFirstBarHidesIt) {
  const OneRecord<TypeParam> record("[ 1 ] /* a */ | 2");
  EXPECT_FALSE(record.isComplete);
  EXPECT_EQ(record.rest, " /* a */ | 2");
}

TYPED_TEST(RecordOver, CommentBehindTheTimeIsSkipped) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 /* a */ // b\n | p\n", "p", "");
}

TYPED_TEST(RecordOver, CommentBehindTheTimeWithoutABarIsNoText) {
  const OneRecord<TypeParam> record("[ 1 ] | 2 | [ 3 ] | 4 | 5 // a\n[ 2 ]");
  EXPECT_EQ(record.star.paramsText, "");
  EXPECT_EQ(record.rest, "[ 2 ]");
}

TYPED_TEST(RecordOver, CommentsAtTheHeadOfTheParametersAreSkipped) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | /* a */ /* b | c */ p | v\n", "p", "v");
}

TYPED_TEST(RecordOver, LineCommentAtTheHeadOfTheParametersHidesTheRest) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | // p | v\n", "", "");
}

TYPED_TEST(RecordOver, CommentThatDoesNotEndOnTheLineIsParameterText) {
  const OneRecord<TypeParam> record("[ 1 ] | 2 | [ 3 ] | 4 | 5 | /* a\n*/ | v\n");
  EXPECT_EQ(record.star.paramsText, "/* a");
  EXPECT_EQ(record.rest, "*/ | v\n");
}

TYPED_TEST(RecordOver, CommentInsideTheParametersIsText) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p /* a */ q // r | v\n", "p /* a */ q // r", "v");
}

TYPED_TEST(RecordOver, CommentAtTheHeadOfTheVersionIsText) {
  this->expectTexts("[ 1 ] | 2 | [ 3 ] | 4 | 5 | p | /* a */ v\n", "p", "/* a */ v");
}

TYPED_TEST(RecordOver, UnclosedCommentBeforeAFieldIsFatal) {
  EXPECT_FAILS_WITH(OneRecord<TypeParam>("[ 1 ] | /* 2 | [ 3 ]"), "comment is not closed");
}

TYPED_TEST(RecordOver, UnclosedCommentBehindTheTimeIsFatal) {
  EXPECT_FAILS_WITH(OneRecord<TypeParam>("[ 1 ] | 2 | [ 3 ] | 4 | 5 /* | p\n"),
                    "comment is not closed");
}

TYPED_TEST(RecordOver, NumbersMayHaveExponents) {
  const OneRecord<TypeParam> record("[ 1e-05 -2E3 ] | 1.23457e+06 | [ 5e2 ] | 1e1 | 5 | \n");
  EXPECT_EQ(record.star[1], TypeParam(1) / TypeParam(100000));
  EXPECT_EQ(record.star[2], TypeParam(-2000));
  EXPECT_EQ(record.star.targetNorm, TypeParam(1234570));
  EXPECT_EQ(record.star.targetValues[1], TypeParam(500));
  EXPECT_EQ(record.star.slackNorm, TypeParam(10));
}

TYPED_TEST(RecordOver, ComponentsMayBeInfinite) {
  const OneRecord<TypeParam> record("[ inf -inf ]");
  EXPECT_EQ(record.star[1], NumberTraits<TypeParam>::infinity());
  EXPECT_EQ(record.star[2], -NumberTraits<TypeParam>::infinity());
}

TYPED_TEST(RecordOver, WithoutAVectorIsBareAndConsumesNothing) {
  const OneRecord<TypeParam> record("xyz");
  EXPECT_FALSE(record.isComplete);
  EXPECT_EQ(record.star.dimension(), 0);
  EXPECT_EQ(record.rest, "xyz");
}

TYPED_TEST(RecordOver, OfABarFirstHasNoComponents) {
  const OneRecord<TypeParam> record("| 2 | [ 3 ] | 4 | 5 | p\nq");
  EXPECT_TRUE(record.isComplete);
  EXPECT_EQ(record.star.dimension(), 0);
  EXPECT_EQ(record.rest, "q");
}

TYPED_TEST(RecordOver, TimeMayHaveASign) {
  EXPECT_EQ(this->timeOf("+7"), 7);
  EXPECT_EQ(this->timeOf("-1"), unknownTime);
}

TYPED_TEST(RecordOver, TimeIsDecimal) {
  EXPECT_EQ(this->timeOf("010"), 10);
}

TYPED_TEST(RecordOver, TimeBelowMinusOneIsNotKnown) {
  EXPECT_EQ(this->timeOf("-5"), unknownTime);
  EXPECT_EQ(this->timeOf("-9223372036854775808"), unknownTime);
}

TYPED_TEST(RecordOver, TimeMayHaveAll64Bits) {
  EXPECT_EQ(this->timeOf("9223372036854775807"), 9223372036854775807);
}

TYPED_TEST(RecordOver, TimeBeyond64BitsDropsTheRecord) {
  this->expectNoTime("9223372036854775808");
  this->expectNoTime("-9223372036854775809");
}

TYPED_TEST(RecordOver, TimeWithAPointDropsTheRecord) {
  this->expectNoTime("1.5");
}

TYPED_TEST(RecordOver, TimeWithAnExponentDropsTheRecord) {
  this->expectNoTime("1e2");
}

TYPED_TEST(RecordOver, TimeWithLettersDropsTheRecord) {
  this->expectNoTime("5sec");
}

TYPED_TEST(RecordOver, TimeInAnotherBaseDropsTheRecord) {
  this->expectNoTime("0x10");
}

TYPED_TEST(RecordOver, TimeOfASignAloneDropsTheRecord) {
  this->expectNoTime("+");
  this->expectNoTime("-");
}

TYPED_TEST(RecordOver, TimeOfTwoSignsDropsTheRecord) {
  this->expectNoTime("+-5");
  this->expectNoTime("-+5");
  this->expectNoTime("--5");
}

TYPED_TEST(RecordOver, CommentGluedToTheTimeDropsTheRecord) {
  this->expectNoTime("5/* a */");
}

TYPED_TEST(RecordOver, EmptyTimeDropsTheRecord) {
  this->expectDropped("[ 1 ] | 2 | [ 3 ] | 4 | | p\n[ 2 ]", "[ 2 ]");
}

TYPED_TEST(RecordOver, MissingTimeDropsTheRecordAtTheEnd) {
  this->expectDropped("[ 1 ] | 2 | [ 3 ] | 4", "");
}

TYPED_TEST(RecordOver, MissingTimeTakesTheNextLineForIt) {
  this->expectDropped("[ 1 ] | 2 | [ 3 ] | 4\n[ 2 ]\n[ 3 ]", "[ 3 ]");
}

TEST(RationalRecord, BadNumberIsFatal) {
  EXPECT_FAILS_WITH(OneRecord<QQ>("[ 1 ] | x | [ 3 ]"), "QQ: parse error1");
}

TEST(RationalRecord, BadComponentIsFatal) {
  EXPECT_FAILS_WITH(OneRecord<QQ>("[ 1/0 ]"), "QQ: division by zero1");
}

TEST(RationalRecord, BadValueIsFatal) {
  EXPECT_FAILS_WITH(OneRecord<QQ>("[ 1 ] | 2 | [ 3 x ] | 4 | 5 | \n"), "QQ: parse error1");
}

TEST(RationalRecord, RefusedDigitsAreAnExceptionOfTheirOwn) {
  EXPECT_THROW(OneRecord<QQ>("[ .5 ]"), std::invalid_argument);
}

TEST(RationalRecord, NumbersHaveAllFormsOfRationals) {
  const OneRecord<QQ> record("[ 3:1/4 -1/3 017 0,5 ] | -inf | [ ] | 7/4 | 5 | ");
  EXPECT_TRUE(identical(record.star.x(), Vector<QQ>{q("13/4"), q("-1/3"), q("15"), q("1/2")}));
  EXPECT_EQ(record.star.targetNorm, -QQ::infinity());
  EXPECT_EQ(record.star.slackNorm, q("7/4"));
}

TEST(LongDoubleRecord, BadComponentIsFatal) {
  EXPECT_FAILS_WITH(OneRecord<long double>("[ 1 x ]"), "Vector: bad input");
}

TEST(LongDoubleRecord, BadNumberDropsTheRecord) {
  const OneRecord<long double> dropped("[ 1 ] | x | [ 3 ] | 4 | 5 | p\n[ 2 ]");
  EXPECT_TRUE(dropped.isComplete);
  EXPECT_EQ(dropped.star.dimension(), 0);
  EXPECT_EQ(dropped.rest, "[ 2 ]");
}

}  // namespace
}  // namespace starsift
