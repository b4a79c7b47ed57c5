// The solutions of a lattice as stars.
#include <gtest/gtest.h>

#include "support/fixtures/CheckVectors.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::LatticeStage;
using test::textOf;

// x + y to be 7 and 2 x + y largest, both from 0 to 5, x + y at least 2; z is 3.
constexpr const char* aim =
    "[ 7 inf ] [ [ 1 1 0 ] [ 2 1 0 ] ] [ ] [ ] [ ] [ [ 1 1 0 ] ] [ 2 ] [ inf ] [ 0 0 0 ] "
    "[ 0 0 3 ] [ 5 5 3 ]";
// The same without targets.
constexpr const char* plain =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 0 ] ] [ 2 ] [ inf ] [ 0 0 0 ] [ 0 0 3 ] [ 5 5 3 ]";

template <class T>
class Sol2StarOver : public test::LatticeOfProblem<T> {
 protected:
  void use(const char* problem) {
    this->normalise(problem);
    generateByHand(this->live, LatticeStage::full);
    this->live.params.sol = 0;
  }
  void find(int x, int y, std::int64_t time) {
    EXPECT_NE(this->live.checkSolution(this->image({T(x), T(y), T(3)}), Space::raw, time,
                                       Announce::silent),
              0U);
  }
};
TYPED_TEST_SUITE(Sol2StarOver, test::LatticeNumbers);

TYPED_TEST(Sol2StarOver, StarSpeaksOfTheProblemAsRead) {
  this->use(aim);
  this->find(4, 2, 17);
  auto& lattice = this->live;
  lattice.sol2star();
  ASSERT_EQ(lattice.file.stars.dimension(), 1);
  const Star<TypeParam>& star = lattice.file.stars[1];
  EXPECT_EQ(textOf(star.x()), "[ 4 2 3 ]");
  EXPECT_EQ(textOf(star.targetValues), "[ 6 10 ]");
  EXPECT_EQ(star.targetNorm, TypeParam(1 - 10));
  EXPECT_EQ(star.slackNorm, TypeParam(1));
  EXPECT_EQ(star.time, 17);
  EXPECT_EQ(star.versionText, "2.4.2");
  EXPECT_EQ(star.paramsText, textOf(lattice.params));
  EXPECT_EQ(star.paramsText.find('\n'), std::string::npos);
  EXPECT_TRUE(star.fresh);
}

TYPED_TEST(Sol2StarOver, OnlyWhatWasFiledSinceIsAskedFor) {
  this->use(plain);
  this->find(4, 2, 17);
  const Index last = this->live.found.lastFiled;
  EXPECT_FALSE(this->live.starsFiledAfter(last).isSet());
  this->find(3, 2, 18);
  EXPECT_EQ(this->live.starsFiledAfter(0).dimension(), 2);
  const Array<Star<QQ>> stars = this->live.starsFiledAfter(last);
  ASSERT_EQ(stars.dimension(), 1);
  EXPECT_EQ(textOf(stars[1].x()), "[ 3 2 3 ]");
  EXPECT_EQ(stars[1].time, 18);
}

TYPED_TEST(Sol2StarOver, BestTargetAndItsSolutionAreOneJudgement) {
  this->use(aim);
  this->find(4, 2, 17);
  EXPECT_EQ(this->live.found.bestTarget.judged, this->live.found.solutions[1].judged);
  EXPECT_EQ(this->live.found.lastFiled, 1);
}

TYPED_TEST(Sol2StarOver, NumberOfASolutionIsNotTakenBack) {
  this->use(plain);
  Lattice<TypeParam, long double> before;
  before.assignFrom(this->live, Settings::copy);
  this->find(4, 2, 17);
  this->live.assignFrom(before, Settings::copy);
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
  this->find(3, 2, 18);
  EXPECT_EQ(this->live.found.solutions[1].judged->number, 2);
}

TYPED_TEST(Sol2StarOver, WithoutTargetsThereAreNoValues) {
  this->use(plain);
  this->find(4, 2, 17);
  this->live.sol2star();
  ASSERT_EQ(this->live.file.stars.dimension(), 1);
  EXPECT_EQ(textOf(this->live.file.stars[1].x()), "[ 4 2 3 ]");
  EXPECT_FALSE(this->live.file.stars[1].targetValues.isSet());
  EXPECT_EQ(this->live.file.stars[1].targetNorm, TypeParam(0));
}

TYPED_TEST(Sol2StarOver, StarsAreSorted) {
  this->use(aim);
  this->find(2, 0, 1);
  this->find(5, 2, 2);
  auto& lattice = this->live;
  lattice.file.stars.resize(1, false);
  lattice.file.stars[1] = Star<TypeParam>{3, 4, 3};
  lattice.file.stars[1].targetValues = Vector<TypeParam>{7, 10};
  lattice.file.stars[1].targetNorm = TypeParam(-10);
  lattice.sol2star();
  ASSERT_EQ(lattice.file.stars.dimension(), 3);
  EXPECT_EQ(textOf(lattice.file.stars[1].x()), "[ 5 2 3 ]");
  EXPECT_EQ(textOf(lattice.file.stars[2].x()), "[ 3 4 3 ]");
  EXPECT_EQ(textOf(lattice.file.stars[3].x()), "[ 2 0 3 ]");
}

TYPED_TEST(Sol2StarOver, StarIsMadeOnce) {
  this->use(aim);
  this->find(4, 2, 17);
  this->live.sol2star();
  this->live.sol2star();
  EXPECT_EQ(this->live.file.stars.dimension(), 1);
}

TYPED_TEST(Sol2StarOver, BenchmarksKeepStarsOfOtherParameters) {
  this->use(aim);
  this->find(4, 2, 17);
  auto& lattice = this->live;
  lattice.params.bench = 1.0F;
  lattice.sol2star();
  lattice.params.beta = 33;
  lattice.sol2star();
  EXPECT_EQ(lattice.file.stars.dimension(), 2);
  lattice.params.bench = 0.0F;
  lattice.sol2star();
  EXPECT_EQ(lattice.file.stars.dimension(), 1);
}

TYPED_TEST(Sol2StarOver, BestTargetIsAStarToo) {
  this->use(aim);
  this->find(4, 2, 17);
  this->live.found.solutions.clear();
  this->live.sol2star();
  ASSERT_EQ(this->live.file.stars.dimension(), 1);
  EXPECT_EQ(this->live.file.stars[1].time, 17);
}

TYPED_TEST(Sol2StarOver, WithoutSolutionsStarsStayAsTheyAre) {
  this->use(aim);
  auto& lattice = this->live;
  lattice.file.stars.resize(2, false);
  lattice.file.stars[1] = Star<TypeParam>{3, 4, 3};
  lattice.file.stars[2] = Star<TypeParam>{3, 4, 3};
  lattice.sol2star();
  EXPECT_EQ(lattice.file.stars.dimension(), 2);
}

TYPED_TEST(Sol2StarOver, VectorThatWasNotFiledIsFatal) {
  this->use(aim);
  this->find(4, 2, 17);
  auto& lattice = this->live;
  lattice.found.solutions[1].judged.reset();
  lattice.found.bestTarget.clear();
  EXPECT_FAILS_WITH(lattice.sol2star(), "sol2star: lat2opt can not compute x_opt");
}

}  // namespace
}  // namespace starsift
