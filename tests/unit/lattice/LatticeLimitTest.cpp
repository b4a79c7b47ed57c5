// When does a checked solution end the search, and when is it written?
#include <gtest/gtest.h>

#include "support/fixtures/CheckedLattice.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::filed;

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr const char* band = "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// The same with x + y largest, from 4 on.
constexpr const char* climb =
    "[ inf ] = [ 4 ] [ [ 1 1 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// x + y to be 7, both from 0 to 5.
constexpr const char* aim = "[ 7 ] [ [ 1 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// x largest and y to be 2, both from 0 to 5.
constexpr const char* twoGoals =
    "[ inf 2 ] [ [ 1 0 ] [ 0 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

template <class T>
class LatticeLimitOver : public test::CheckedLattice<T> {
 protected:
  /// A search that ends at so many solutions.
  void searchFor(Index solutions) {
    this->use(band);
    this->live.params.sol = solutions;
    this->live.params.stopping = true;
    this->live.run.terminationSwitch = true;
  }
  /// As a reduction meets a vector, without silence.
  void meet(int x, int y) {
    this->consoleOf([&] {
      this->live.checkSolution(this->image({T(x), T(y)}), Space::raw, 0, Announce::full);
    });
  }
};
TYPED_TEST_SUITE(LatticeLimitOver, test::LatticeNumbers);

TYPED_TEST(LatticeLimitOver, NumberOfSolutionsIsLimited) {
  this->use(band);
  this->live.params.sol = 2;
  EXPECT_EQ(this->checkPoint(1, 4), filed);
  EXPECT_EQ(this->checkPoint(2, 3), filed | CHECK_LIMIT);
  EXPECT_EQ(this->checkPoint(1, 4), CHECK_SOLUTION | CHECK_LIMIT);
}

TYPED_TEST(LatticeLimitOver, EnoughSolutionsAreToldByAnyFurtherOne) {
  this->use(climb);
  this->live.params.sol = 1;
  EXPECT_EQ(this->checkPoint(5, 1), filed | CHECK_LIMIT);
  // The best target again, and a worse one.
  EXPECT_EQ(this->checkPoint(5, 1), CHECK_SOLUTION | CHECK_LIMIT);
  EXPECT_EQ(this->checkPoint(2, 2), CHECK_SOLUTION | CHECK_LIMIT);
  EXPECT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(this->checkPoint(0, 0), 0U);
}

TYPED_TEST(LatticeLimitOver, FiledSolutionThatMeetsTheGoalTellsItEachTime) {
  this->use(climb);
  this->checkPoint(5, 1);
  this->checkPoint(4, 2);
  this->live.params.tnorm = TypeParam(-6);
  EXPECT_EQ(this->checkPoint(5, 1), CHECK_SOLUTION | CHECK_LIMIT);
  EXPECT_EQ(this->checkPoint(4, 2), CHECK_SOLUTION | CHECK_LIMIT);
}

TYPED_TEST(LatticeLimitOver, SolutionThatIsNotFiledMeetsNoGoal) {
  this->use(climb);
  this->checkPoint(5, 1);
  this->live.params.tnorm = TypeParam(-4);
  EXPECT_EQ(this->checkPoint(2, 2), CHECK_SOLUTION);
  this->live.params.tnorm = TypeParam(-9);
  this->live.params.snorm = TypeParam(0);
  EXPECT_EQ(this->checkPoint(2, 2), CHECK_SOLUTION);
  EXPECT_EQ(this->checkPoint(5, 1), CHECK_SOLUTION | CHECK_LIMIT);
}

TYPED_TEST(LatticeLimitOver, GoodTargetNormIsEnough) {
  this->use(climb);
  this->live.params.tnorm = TypeParam(-6);
  EXPECT_EQ(this->checkPoint(4, 1), filed);
  EXPECT_EQ(this->checkPoint(5, 1), filed | CHECK_LIMIT);
}

TYPED_TEST(LatticeLimitOver, GoodSlackNormIsEnough) {
  this->use(aim);
  this->live.params.snorm = TypeParam(1);
  EXPECT_EQ(this->checkPoint(3, 2), filed);
  EXPECT_EQ(this->live.found.bestTarget.slackNorm, TypeParam(2));
  EXPECT_EQ(this->checkPoint(3, 3), filed | CHECK_LIMIT);
}

TYPED_TEST(LatticeLimitOver, NormsDoNotCountWithoutTargets) {
  this->use(band);
  this->live.params.tnorm = TypeParam(9);
  this->live.params.snorm = TypeParam(9);
  EXPECT_EQ(this->checkPoint(5, 1), filed);
  EXPECT_FALSE(this->live.isSatisfied());
}

TYPED_TEST(LatticeLimitOver, SearchIsSatisfiedByWhatWasFiledInSilence) {
  this->use(climb);
  EXPECT_FALSE(this->live.isSatisfied());
  EXPECT_EQ(this->checkPoint(4, 1), filed);
  EXPECT_FALSE(this->live.isSatisfied());
  this->live.params.tnorm = TypeParam(-5);
  EXPECT_TRUE(this->live.isSatisfied());
  this->live.params.tnorm = TypeParam(-6);
  EXPECT_FALSE(this->live.isSatisfied());
  this->live.params.sol = 1;
  EXPECT_TRUE(this->live.isSatisfied());
}

TYPED_TEST(LatticeLimitOver, SlackOfASolutionCountsBesideAnEquallyGoodTarget) {
  this->use(twoGoals);
  this->live.params.snorm = TypeParam(0);
  EXPECT_EQ(this->checkPoint(4, 3), filed);
  EXPECT_FALSE(this->live.isSatisfied());
  EXPECT_EQ(this->checkPoint(3, 2), filed | CHECK_LIMIT);
  EXPECT_EQ(this->live.found.bestTarget.slackNorm, TypeParam(1));
  EXPECT_TRUE(this->live.isSatisfied());
}

TYPED_TEST(LatticeLimitOver, SolutionIsWrittenUnlessSilent) {
  const test::ScratchDir scratch;
  this->use(band);
  auto& lattice = this->live;
  lattice.run.outputSwitch = true;
  lattice.file.setPaths({"", scratch.file("p.sol"), ""});
  this->checkPoint(1, 4);
  EXPECT_EQ(scratch.read("p.sol"), "<no file>");
  EXPECT_EQ(lattice.checkSolution(this->image({TypeParam(2), TypeParam(3)}), Space::raw, 0,
                                  Announce::full),
            filed);
  const std::string text = scratch.read("p.sol");
  EXPECT_NE(text.find("[ 1 4 ]"), std::string::npos) << text;
  EXPECT_NE(text.find("[ 2 3 ]"), std::string::npos) << text;
}

TYPED_TEST(LatticeLimitOver, SolutionFiledInSilenceIsWrittenWhereItIsMetAgain) {
  const test::ScratchDir scratch;
  this->use(band);
  auto& lattice = this->live;
  lattice.run.outputSwitch = true;
  lattice.file.setPaths({"", scratch.file("p.sol"), ""});
  this->checkPoint(1, 4);
  EXPECT_EQ(lattice.checkSolution(this->image({TypeParam(1), TypeParam(4)}), Space::raw, 0,
                                  Announce::full),
            CHECK_SOLUTION);
  const std::string text = scratch.read("p.sol");
  EXPECT_NE(text.find("[ 1 4 ]"), std::string::npos) << text;
}

TYPED_TEST(LatticeLimitOver, LimitReachedInSilenceEndsTheSearchWhereASolutionIsMetAgain) {
  this->searchFor(1);
  this->checkPoint(1, 4);
  this->meet(1, 4);
  EXPECT_TRUE(this->live.stopped());
}

TYPED_TEST(LatticeLimitOver, LimitEndsTheSearchUnlessSilent) {
  this->searchFor(1);
  this->checkPoint(1, 4);
  EXPECT_FALSE(this->live.stopped());
  this->meet(2, 3);
  EXPECT_TRUE(this->live.stopped());
}

TYPED_TEST(LatticeLimitOver, SearchGoesOnBelowTheLimit) {
  this->searchFor(2);
  this->meet(2, 3);
  EXPECT_FALSE(this->live.stopped());
}

}  // namespace
}  // namespace starsift
