#include "files/SolReader.h"

#include <cmath>
#include <stdexcept>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::ScratchDir;

using LatticeNumbers = testing::Types<long double, QQ>;

/// A .sol file beside a problem of two variables, to be maximised, in 0..5.
template <class T>
class ReadStarsOver : public testing::Test {
 protected:
  bool read(std::string_view text, bool peek = false) {
    return readStars(scratch.write("p.sol", text), problem, stars, peek);
  }

  ScratchDir scratch;
  Vanu<T> problem = problemFrom<T>(
      "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 1 ] [ 6 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  Array<Star<T>> stars;
};

TYPED_TEST_SUITE(ReadStarsOver, LatticeNumbers);

TYPED_TEST(ReadStarsOver, MissingFileHasNone) {
  EXPECT_FALSE(readStars(this->scratch.file("p.sol"), this->problem, this->stars, false));
  EXPECT_EQ(this->stars.dimension(), 0);
}

TYPED_TEST(ReadStarsOver, DirectoryHasNone) {
  EXPECT_FALSE(readStars(this->scratch.path(), this->problem, this->stars, false));
}

TYPED_TEST(ReadStarsOver, FileWhoseReadingBreaksOffIsNotTakenForOneWithoutStars) {
  std::filesystem::create_symlink("/proc/self/mem", this->scratch.file("p.sol"));
  EXPECT_FAILS_WITH(readStars(this->scratch.file("p.sol"), this->problem, this->stars, false),
                    "Could not read sol file: " + this->scratch.file("p.sol"));
}

TYPED_TEST(ReadStarsOver, EmptyFileHasNone) {
  EXPECT_FALSE(this->read(""));
}

TYPED_TEST(ReadStarsOver, BlanksAndCommentsHaveNone) {
  EXPECT_FALSE(this->read(" \t\r\n// a\n/* b\n */ // c"));
  EXPECT_EQ(this->stars.dimension(), 0);
}

TYPED_TEST(ReadStarsOver, StarsAreAppendedInTheirOrder) {
  this->stars.resize(1, false);
  this->stars[1] = Star<TypeParam>{TypeParam(9), TypeParam(9)};
  this->stars[1].fresh = true;
  EXPECT_TRUE(this->read("[ 1 0 ] | 7 | [ 7 ] | 0 | 3 | p | v\n/* a */\n[ 2 0 ]\n\n[ 3 0 ]"));
  ASSERT_EQ(this->stars.dimension(), 4);
  EXPECT_EQ(this->stars[1][1], TypeParam(9));
  EXPECT_TRUE(this->stars[1].fresh);
  EXPECT_EQ(this->stars[2].paramsText, "p");
  EXPECT_EQ(this->stars[3][1], TypeParam(2));
  EXPECT_EQ(this->stars[4][1], TypeParam(3));
  EXPECT_FALSE(this->stars[4].fresh);
}

TYPED_TEST(ReadStarsOver, BareRecordIsCompleted) {
  ASSERT_TRUE(this->read("[ 1 2 ]"));
  EXPECT_TRUE(identical(this->stars[1].targetValues, Vector<TypeParam>{TypeParam(5)}));
  EXPECT_EQ(this->stars[1].targetNorm, TypeParam(-5));
  EXPECT_EQ(this->stars[1].slackNorm, TypeParam(0));
  EXPECT_EQ(this->stars[1].time, unknownTime);
}

TYPED_TEST(ReadStarsOver, CompleteRecordStaysAsItWasWritten) {
  ASSERT_TRUE(this->read("[ 1 2 ] | 8 | [ 9 ] | 1 | 3 | "));
  EXPECT_EQ(this->stars[1].targetNorm, TypeParam(8));
  EXPECT_EQ(this->stars[1].targetValues[1], TypeParam(9));
}

TYPED_TEST(ReadStarsOver, BareRecordThatIsNoSolutionIsKeptForTheCheckOfAll) {
  ASSERT_TRUE(this->read("[ 9 9 ]"));
  EXPECT_EQ(this->stars[1].targetNorm, TypeParam(0));
  EXPECT_EQ(this->stars[1].targetValues.dimension(), 0);
}

TYPED_TEST(ReadStarsOver, TwoBareRecordsMayShareALine) {
  ASSERT_TRUE(this->read("[ 1 2 ] [ 2 2 ]"));
  EXPECT_EQ(this->stars.dimension(), 2);
}

TYPED_TEST(ReadStarsOver, TextThatIsNoRecordIsFatal) {
  EXPECT_FAILS_WITH(this->read("xyz"), "Vector: dimension mismatch10");
}

TYPED_TEST(ReadStarsOver, BareRecordOfAnotherLengthIsFatal) {
  EXPECT_FAILS_WITH(this->read("[ 1 2 3 ]"), "Vector: dimension mismatch10");
}

TYPED_TEST(ReadStarsOver, BareRecordWithoutComponentsIsFatal) {
  EXPECT_FAILS_WITH(this->read("[ ]"), "Vector: dimension mismatch10");
}

TYPED_TEST(ReadStarsOver, CompleteRecordOfAnotherLengthIsRead) {
  EXPECT_TRUE(this->read("[ 1 2 3 ] | 8 | [ 9 ] | 1 | 3 | "));
  EXPECT_EQ(this->stars[1].dimension(), 3);
}

TYPED_TEST(ReadStarsOver, CompleteRecordWithoutComponentsIsNoStar) {
  EXPECT_FALSE(this->read("[ ] | 8 | [ 9 ] | 1 | 3 | "));
  EXPECT_EQ(this->stars.dimension(), 0);
}

TYPED_TEST(ReadStarsOver, MalformedRecordLeavesTheOthers) {
  ASSERT_TRUE(this->read("[ 1 2 ]\n[ 1 3 ] | 8 | [ 9 ] | 1 | x | p\n[ 1 4 ]\n"));
  ASSERT_EQ(this->stars.dimension(), 2);
  EXPECT_EQ(this->stars[2][2], TypeParam(4));
}

TYPED_TEST(ReadStarsOver, PeekFindsAStarAndStoresNone) {
  EXPECT_TRUE(this->read("[ 1 3 ] | 8 | [ 9 ] | 1 | x | p\n[ 1 2 ]\n", true));
  EXPECT_EQ(this->stars.dimension(), 0);
}

TYPED_TEST(ReadStarsOver, PeekStopsAtTheFirstStar) {
  EXPECT_TRUE(this->read("[ 1 2 ]\nxyz", true));
}

TYPED_TEST(ReadStarsOver, PeekFindsNoStarWhereThereIsNone) {
  EXPECT_FALSE(this->read("[ ] | 8 | [ 9 ] | 1 | 3 | \n// [ 1 2 ]\n", true));
}

TEST(ReadStars, ExceptionLeavesTheStarsAsTheyWere) {
  const ScratchDir scratch;
  Array<Star<QQ>> stars(1);
  stars[1] = Star<QQ>{7};
  const Vanu<QQ> problem = problemFrom("[ ] [ ] [ [ 1 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 1 ]");
  const std::string path = scratch.write("p.sol", "[ 1 ]\n[ .5 ]\n");
  EXPECT_THROW(readStars(path, problem, stars, false), std::invalid_argument);
  ASSERT_EQ(stars.dimension(), 1);
  EXPECT_EQ(stars[1][1], QQ(7));
}

TEST(ReadStars, TextThatIsNoRecordIsSkippedWhereNoCheckStumblesOverIt) {
  const ScratchDir scratch;
  Array<Star<QQ>> stars;
  const std::string path = scratch.write("p.sol", "xyz\n[ 1 ] | 0 | [ ] | 0 | -1 |\nxyz");
  EXPECT_TRUE(readStars(path, Vanu<QQ>(), stars, false));
  EXPECT_EQ(stars.dimension(), 1);
}

TEST(ReadStars, BareRecordWhoseValuesDoNotFitLosesPrecision) {
  const ScratchDir scratch;
  Array<Star<long double>> stars;
  const auto problem =
      problemFrom<long double>("[ inf ] [ [ 10 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ inf ]");
  const std::string path = scratch.write("p.sol", "[ 1 ]\n[ 999999999999999999 ]\n");
  EXPECT_THROW(readStars(path, problem, stars, false), PrecisionException);
  EXPECT_EQ(stars.dimension(), 0);
}

/// The same file, its numbers read as rationals.
template <class T>
class ReadStarsExactlyOver : public ReadStarsOver<T> {
 protected:
  bool readExactly(std::string_view text) {
    return readStarsExactly(this->scratch.write("p.sol", text), this->problem, this->stars, false);
  }
};

TYPED_TEST_SUITE(ReadStarsExactlyOver, LatticeNumbers);

TYPED_TEST(ReadStarsExactlyOver, NumbersAreRationals) {
  EXPECT_TRUE(this->readExactly("[ 5/2 1:1/4 ] | 016 | [ 1,5 ] | 3e2 | 4 | p | v\n[ 2 0 ]\n"));
  ASSERT_EQ(this->stars.dimension(), 2);
  EXPECT_EQ(this->stars[1][1], TypeParam(5) / TypeParam(2));
  EXPECT_EQ(this->stars[1][2], TypeParam(5) / TypeParam(4));
  EXPECT_EQ(this->stars[1].targetNorm, TypeParam(14));
  EXPECT_EQ(this->stars[1].targetValues[1], TypeParam(3) / TypeParam(2));
  EXPECT_EQ(this->stars[1].slackNorm, TypeParam(300));
  EXPECT_EQ(this->stars[2].targetNorm, TypeParam(-2));
}

TEST(ReadStarsExactly, MinusZeroIsZero) {
  const ScratchDir scratch;
  Array<Star<long double>> stars;
  const auto problem =
      problemFrom<long double>("[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  EXPECT_TRUE(readStarsExactly(scratch.write("p.sol", "[ -0 ]"), problem, stars, false));
  EXPECT_FALSE(std::signbit(stars[1][1]));
}

/// Text for a problem of one variable without bounds, read into long double.
class ReadStarsExactlyIntoLongDouble : public testing::Test {
 protected:
  void read(std::string_view text) {
    readStarsExactly(scratch.write("p.sol", text), problem, stars, false);
  }

  ScratchDir scratch;
  Vanu<long double> problem =
      problemFrom<long double>("[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ -inf ] [ inf ]");
  Array<Star<long double>> stars;
};

TEST_F(ReadStarsExactlyIntoLongDouble, NumberThatDoesNotFitLosesPrecision) {
  for (const char* number : {"1/3", "1234567890123456789", "1e-30000"}) {
    const std::string text(number);
    EXPECT_THROW(read("[ 1 ]\n[ " + text + " ]"), PrecisionException) << text;
    EXPECT_THROW(read("[ 1 ] | " + text + " | [ ] | 0 | 0 | p"), PrecisionException) << text;
    EXPECT_THROW(read("[ 1 ] | 0 | [ " + text + " ] | 0 | 0 | p"), PrecisionException) << text;
    EXPECT_THROW(read("[ 1 ] | 0 | [ ] | " + text + " | 0 | p"), PrecisionException) << text;
  }
  EXPECT_EQ(stars.dimension(), 0);
}

TEST_F(ReadStarsExactlyIntoLongDouble, InfiniteBareRecordIsLeftToExactArithmetic) {
  EXPECT_THROW(read("[ inf ]"), PrecisionException);
  EXPECT_THROW(read("[ -inf ]"), PrecisionException);
  read("[ inf ] | 0 | [ ] | 0 | 0 | p");
  EXPECT_EQ(stars.dimension(), 1);
}

TYPED_TEST(ReadStarsOver, ManyRecordsAreRead) {
  std::string text;
  for (int i = 0; i < 20'000; ++i) text += "[ 1 2 ] | -5 | [ 5 ] | 0 | 3 | p | v\n";
  ASSERT_TRUE(this->read(text));
  EXPECT_EQ(this->stars.dimension(), 20'000);
}

}  // namespace
}  // namespace starsift
