// A problem and its stars as one record, in one number type and in two.
#include "files/SolutionFile.h"

#include <gtest/gtest.h>

#include "files/YSolutionFile.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::q;
using test::textOf;

// x + 2 y as large as it gets, both from 0 to 5.
constexpr const char* climb = "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

template <class T>
class SolutionFileOver : public testing::Test {
 protected:
  SolutionFileOver() {
    file.editProblem() = problemFrom<T>(climb);
    file.setPaths({scratch.file("p.opt"), scratch.file("p.sol"), ""});
  }

  /// The stars as they are in their file.
  std::string text() const {
    std::string text;
    for (const Star<T>& star : file.stars) text += starText(star) + '\n';
    return text;
  }
  Star<T> star(int x, int y) { return Star<T>{T(x), T(y)}; }
  void add(int x, int y) { append(file.stars, star(x, y)); }
  std::string starsText() const {
    std::string text;
    for (const Star<T>& star : file.stars) text += textOf(star.x());
    return text;
  }

  test::ScratchDir scratch;
  SolutionFile<T> file;
};
using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(SolutionFileOver, Numbers);

TYPED_TEST(SolutionFileOver, CopiesShareTheProblemUntilOneChangesIt) {
  const SolutionFile<TypeParam> copy = this->file;
  EXPECT_EQ(&copy.problem(), &this->file.problem());
  EXPECT_EQ(copy.problemNumber(), this->file.problemNumber());
  this->file.editProblem().rx[1] = TypeParam(1);
  EXPECT_EQ(copy.problem().rx[1], TypeParam(5));
  EXPECT_NE(copy.problemNumber(), this->file.problemNumber());
  EXPECT_EQ(this->file.path(), copy.path());
}

TYPED_TEST(SolutionFileOver, VerdictIsThatOfTheProblemAsItIsNow) {
  EXPECT_TRUE(this->file.judge(this->star(5, 1)).isSolution);
  EXPECT_EQ(this->file.judge(this->star(5, 1)).norms.target, TypeParam(-7));
  this->file.editProblem().rx[1] = TypeParam(4);
  EXPECT_FALSE(this->file.judge(this->star(5, 1)).isSolution);
}

TYPED_TEST(SolutionFileOver, CheckFromAStarOnLeavesThoseBefore) {
  this->add(9, 9);
  this->add(5, 1);
  this->add(8, 8);
  EXPECT_FALSE(this->file.checkStars(2));
  EXPECT_EQ(this->starsText(), "[ 9 9 ][ 5 1 ]");
  EXPECT_FALSE(this->file.stars[1].targetValues.isSet());
  EXPECT_EQ(this->file.stars[2].targetNorm, TypeParam(-7));
  EXPECT_TRUE(this->file.checkStars(3));
  EXPECT_FALSE(this->file.checkStars());
  EXPECT_EQ(this->starsText(), "[ 5 1 ]");
}

TYPED_TEST(SolutionFileOver, StarsAreAppendedInTheirOrder) {
  Array<Star<TypeParam>> added;
  append(added, this->star(1, 2));
  this->file.appendStars(added);
  append(added, this->star(3, 4));
  this->file.appendStars(std::move(added));
  this->file.appendStars({});
  EXPECT_EQ(this->starsText(), "[ 1 2 ][ 1 2 ][ 3 4 ]");
}

TYPED_TEST(SolutionFileOver, DuplicatesMayDifferInTheirParameters) {
  for (const char* params : {"a", "b", "a"}) {
    this->add(1, 2);
    this->file.stars[this->file.stars.dimension()].paramsText = params;
  }
  this->file.removeDuplicates(Duplicates::ofPointAndParams);
  EXPECT_EQ(this->file.stars.dimension(), 2);
  this->file.removeDuplicates(Duplicates::ofPoint);
  EXPECT_EQ(this->file.stars.dimension(), 1);
}

TYPED_TEST(SolutionFileOver, WrittenStarsAreReadAgain) {
  this->add(5, 1);
  this->file.checkStars();
  EXPECT_EQ(this->file.write(), Commit::written);
  EXPECT_EQ(this->scratch.read("p.sol"), this->text());
  this->file.stars.clear();
  EXPECT_TRUE(this->file.readStars(StarReading::peek));
  EXPECT_FALSE(this->file.stars.isSet());
  EXPECT_TRUE(this->file.readStarsExactly(StarReading::append));
  EXPECT_EQ(this->starsText(), "[ 5 1 ]");
}

TYPED_TEST(SolutionFileOver, FileThatWasNeverReadIsNotCurrent) {
  this->add(5, 1);
  EXPECT_EQ(this->file.writeIfCurrent(), Commit::changed);
  this->file.readStars(StarReading::append);
  EXPECT_EQ(this->file.writeIfCurrent(), Commit::written);
}

TYPED_TEST(SolutionFileOver, FileThatOthersHaveWrittenStaysUntilItIsMerged) {
  this->file.mergeFile();
  this->add(5, 1);
  this->scratch.write("p.sol", "[ 6 6 ]\n[ 1 4 ]\n");
  EXPECT_EQ(this->file.writeIfCurrent(), Commit::changed);
  EXPECT_EQ(this->scratch.read("p.sol"), "[ 6 6 ]\n[ 1 4 ]\n");
  this->file.mergeFile();
  EXPECT_EQ(this->starsText(), "[ 1 4 ][ 5 1 ]");
  EXPECT_EQ(this->file.writeIfCurrent(), Commit::written);
}

TYPED_TEST(SolutionFileOver, WriteMergesWhatOthersHaveWritten) {
  this->file.readStars(StarReading::append);
  this->add(5, 1);
  this->scratch.write("p.sol", "[ 1 4 ]\n");
  EXPECT_EQ(this->file.write(), Commit::written);
  EXPECT_EQ(this->starsText(), "[ 1 4 ][ 5 1 ]");
  EXPECT_EQ(this->scratch.read("p.sol"), this->text());
}

TYPED_TEST(SolutionFileOver, ConversionKeepsWhichFileWasRead) {
  this->file.readStars(StarReading::append);
  this->scratch.write("p.sol", "[ 1 4 ]\n");
  SolutionFile<QQ> exact;
  exact.convertFrom(this->file);
  EXPECT_EQ(exact.writeIfCurrent(), Commit::changed);
  exact.mergeFile();
  EXPECT_EQ(exact.writeIfCurrent(), Commit::written);
}

TYPED_TEST(SolutionFileOver, ConversionTakesTheProblemAndItsNumber) {
  this->add(5, 1);
  SolutionFile<QQ> exact;
  exact.convertFrom(this->file);
  EXPECT_EQ(exact.problemNumber(), this->file.problemNumber());
  EXPECT_EQ(exact.path(), this->file.path());
  ASSERT_EQ(exact.stars.dimension(), 1);
  EXPECT_EQ(exact.judge(exact.stars[1]).norms.target, QQ(-7));
  exact.release();
  EXPECT_EQ(exact.stars.capacity(), 0);
  EXPECT_FALSE(exact.problem().rx.isSet());
}

TEST(SolutionFile, StarThatLongDoubleLosesIsNotConverted) {
  SolutionFile<QQ> exact;
  append(exact.stars, Star<QQ>{q("1/3")});
  SolutionFile<long double> file;
  EXPECT_THROW(file.convertFrom(exact), PrecisionException);
}

TEST(YSolutionFile, StarsOfTheSameProblemAreAddedUnchecked) {
  SolutionFile<long double> source;
  source.editProblem() = problemFrom<long double>(climb);
  YSolutionFile file;
  file.takeProblem(source);
  Array<Star<QQ>> stars;
  append(stars, Star<QQ>{q("1/3"), q("9")});
  file.addStars(stars, source.problemNumber());
  EXPECT_EQ(file.starCount(), 1);
  std::string text;
  EXPECT_TRUE(file.writeText([&text](std::string_view piece) {
    text += piece;
    return true;
  }));
  EXPECT_EQ(text, "[ 1/3 9 ] | 0 | [ ] | 0 | -1 | \n");
  source.editProblem();
  EXPECT_FAILS_WITH(file.addStars(stars, source.problemNumber()),
                    "The stars solve another problem");
}

}  // namespace
}  // namespace starsift
