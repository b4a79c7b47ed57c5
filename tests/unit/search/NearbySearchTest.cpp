#include "search/NearbySearch.h"

#include <gtest/gtest.h>

#include "support/fixtures/BasisRows.h"
#include "support/fixtures/CheckVectors.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::LatticeStage;
using test::textOf;

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr const char* band = "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// 5 x - 4 y between 0 and 2, x + y from 3 to 9, both from 0 to 5: from 0 no step of x or y alone
// leads nearer.
constexpr const char* channel =
    "[ ] [ ] [ ] [ ] [ ] [ [ 5 -4 ] [ 1 1 ] ] [ 0 3 ] [ 2 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// x + 2 y largest, x + y from 0 to 4, both from 0 to 4.
constexpr const char* climb =
    "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 0 ] [ 4 ] [ 0 0 ] [ 0 0 ] [ 4 4 ]";
// 2 x + 7 y to be 53 and x - y to be 7, both from 0 to 9: best at (9, 5).
constexpr const char* aim =
    "[ 53 7 ] [ [ 2 7 ] [ 1 -1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]";

/// Ends the search ahead of a step, and counts on.
template <class T>
class CountingStopper : public ReductionObserver {
 public:
  CountingStopper(Lattice<T, long double>& lattice, Index last) : lattice_(&lattice), last_(last) {}
  void onStep(const PassCounts& /*counts*/) override {
    if (++steps == last_) lattice_->run.runVariables[MainMutexVariable::runState].set("stopped");
  }

  Index steps = 0;

 private:
  Lattice<T, long double>* lattice_;
  Index last_;
};

template <class T>
class NearbySearchOver : public test::LatticeOfProblem<T> {
 protected:
  /// The generated basis: the constants, then a vector per variable.
  void use(const char* problem) {
    this->normalise(problem);
    generateByHand(this->live, LatticeStage::full);
    endAtFirst();
  }
  void endAtFirst() {
    this->live.params.sol = 1;
    this->live.params.stopping = true;
    this->live.run.terminationSwitch = true;
  }
  void goOn() { this->live.params.sol = 0; }

  /// A pass over the first vector, which swaps nothing, and the search beside it.
  void passOverFirst() {
    this->consoleOf([this] {
      this->live.lllPass(1, 1, 1);
      NearbySearch(this->live).run();
    });
  }

  std::string found(Index i) const { return textOf(this->pointOf(this->live.found.solutions[i])); }
};
TYPED_TEST_SUITE(NearbySearchOver, test::LatticeNumbers);

TYPED_TEST(NearbySearchOver, StepsOfTheBasisLeadIntoTheBox) {
  this->use(band);
  this->passOverFirst();
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(this->found(1), "[ 1 1 ]");
}

TYPED_TEST(NearbySearchOver, StepsAreTriedBackwardsToo) {
  this->use(band);
  test::setRow(this->live, 1, this->image({TypeParam(5), TypeParam(5)}));
  this->passOverFirst();
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(textOf(this->pointOf(this->live.basis.B()[1])), "[ 5 5 ]");
}

TYPED_TEST(NearbySearchOver, TwoStepsTogetherLeadOnWhereNoneAloneDoes) {
  this->use(channel);
  this->passOverFirst();
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(this->found(1), "[ 2 2 ]");
}

// From (0, 5) neither x nor y alone leads nearer.
TYPED_TEST(NearbySearchOver, DifferenceOfTwoVectorsIsAStep) {
  this->use("[ ] [ ] [ ] [ ] [ ] [ [ 5 4 ] [ 1 -1 ] ] [ 20 -3 ] [ 22 2 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  test::setRow(this->live, 1, this->image({TypeParam(0), TypeParam(5)}));
  this->passOverFirst();
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
}

// Each vector of the basis has the constants in it, in sums and differences of two as well.
TYPED_TEST(NearbySearchOver, InhomogeneousVectorsBecomeSteps) {
  this->use(band);
  auto& lattice = this->live;
  for (const Index k : {2, 3}) {
    test::setRow(lattice, k, lattice.basis.B()[k] + lattice.basis.B()[1]);
    test::setRow(lattice, k, lattice.basis.B()[k] + lattice.basis.B()[1]);
  }
  this->passOverFirst();
  EXPECT_EQ(lattice.found.solutions.dimension(), 1);
}

TYPED_TEST(NearbySearchOver, WalkGoesOnFromTheBestVector) {
  this->use(band);
  auto& lattice = this->live;
  lattice.offerBest(this->image({TypeParam(5), TypeParam(3)}), 1);
  // No vector of the basis is a start.
  test::setRow(lattice, 1, lattice.basis.B()[1] + lattice.basis.B()[1] + lattice.basis.B()[1]);
  this->passOverFirst();
  EXPECT_EQ(lattice.found.solutions.dimension(), 1);
}

TYPED_TEST(NearbySearchOver, OneSolutionLeadsToOthersWhereSeveralAreAskedFor) {
  this->use(band);
  this->live.params.sol = 1000;
  this->passOverFirst();
  const Index count = this->live.found.solutions.dimension();
  EXPECT_GE(count, 5);
  // The walk ends where all solutions a step away are filed.
  const Vector<TypeParam> last = this->pointOf(this->live.found.solutions[count]);
  for (int x = -1; x <= 1; ++x)
    for (int y = -1; y <= 1; ++y)
      this->live.checkSolution(this->image({last[1] + TypeParam(x), last[2] + TypeParam(y)}),
                               Space::raw, 0, Announce::silent);
  EXPECT_EQ(this->live.found.solutions.dimension(), count);
}

TYPED_TEST(NearbySearchOver, OneSolutionLeadsNowhereWithoutANumberToReach) {
  this->use(band);
  this->goOn();
  this->passOverFirst();
  EXPECT_EQ(this->live.found.solutions.dimension(), 1);
}

TYPED_TEST(NearbySearchOver, OneSolutionLeadsToOthersWithinANumberOfPasses) {
  this->use(band);
  this->goOn();
  this->live.params.iters = 3;
  this->passOverFirst();
  EXPECT_GE(this->live.found.solutions.dimension(), 5);
}

TYPED_TEST(NearbySearchOver, OneSolutionLeadsToOthersWithinATime) {
  this->use(band);
  this->goOn();
  this->live.params.rtime = 60;
  this->passOverFirst();
  EXPECT_GE(this->live.found.solutions.dimension(), 5);
}

// x + 2 y from 14990 to 15000, both from 0 to 10000: one at a time it takes thousands of steps.
TYPED_TEST(NearbySearchOver, StepsThatLeadOnGrow) {
  this->use("[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 14990 ] [ 15000 ] [ 0 0 ] [ 0 0 ] [ 10000 10000 ]");
  this->passOverFirst();
  EXPECT_EQ(this->live.found.solutions.dimension(), 1);
}

// x + 2 y between 2 and 9, x largest: with x = 5 there are several.
TYPED_TEST(NearbySearchOver, SolutionsNoBetterThanTheBestAreNotLookedFor) {
  this->use("[ inf ] [ [ 1 0 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  this->goOn();
  this->live.checkSolution(this->image({TypeParam(5), TypeParam(0)}), Space::raw, 0,
                           Announce::silent);
  this->live.run.restarts = 1;
  this->passOverFirst();
  EXPECT_EQ(this->live.found.solutions.dimension(), 1);
}

TYPED_TEST(NearbySearchOver, BetterAndBetterSolutionsEndAtTheBest) {
  this->use(climb);
  this->goOn();
  this->passOverFirst();
  EXPECT_EQ(this->live.found.bestTarget.targetNorm, TypeParam(-8));
  EXPECT_EQ(textOf(this->pointOf(this->live.found.bestTarget)), "[ 0 4 ]");
}

TYPED_TEST(NearbySearchOver, BestOfAPreparedProblemIsFoundByOnePass) {
  this->prepare(climb);
  this->goOn();
  this->live.lllPass(1, 0, 0);
  NearbySearch(this->live).run();
  EXPECT_EQ(this->live.found.bestTarget.targetNorm, TypeParam(-8));
}

// A step may take from both deviations of a goal what only one of them has.
TYPED_TEST(NearbySearchOver, DeviationsFollowFromTheirDifference) {
  this->prepare(aim);
  this->live.resize(this->live.basis.n, 0, Vectors::discard);
  this->goOn();
  this->passOverFirst();
  EXPECT_EQ(this->live.found.bestTarget.targetNorm, TypeParam(3));
  EXPECT_EQ(textOf(this->pointOf(this->live.found.bestTarget)), "[ 9 5 ]");
}

// 5 x - 4 y from 0 to 1 and x + y from 3 to 9 at (4, 5) only: from 0 the walk ends at (1, 1).
constexpr const char* island =
    "[ ] [ ] [ ] [ ] [ ] [ [ 5 -4 ] [ 1 1 ] ] [ 0 3 ] [ 1 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

TYPED_TEST(NearbySearchOver, RestartsThatVaryBeginElsewhere) {
  this->use(island);
  auto& lattice = this->live;
  lattice.params.variate = true;
  this->passOverFirst();
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  for (lattice.run.restarts = 1; lattice.run.restarts < 50 && !lattice.stopped();
       ++lattice.run.restarts)
    this->passOverFirst();
  ASSERT_EQ(lattice.found.solutions.dimension(), 1);
  EXPECT_EQ(this->found(1), "[ 4 5 ]");
}

TYPED_TEST(NearbySearchOver, RestartsThatVaryNothingBeginAtTheSamePlace) {
  this->use(island);
  auto& lattice = this->live;
  lattice.params.variate = false;
  for (lattice.run.restarts = 1; lattice.run.restarts < 50; ++lattice.run.restarts)
    this->passOverFirst();
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
}

TYPED_TEST(NearbySearchOver, StoppedSearchEndsTheWalk) {
  this->use(band);
  // The first step is that of the pass, (1, 0) the second one.
  CountingStopper<TypeParam> stopper(this->live, 3);
  this->live.run.observer = &stopper;
  this->passOverFirst();
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
  EXPECT_LE(stopper.steps, 4);
}

// The search ends with the number that the walk onwards reaches; the walk from elsewhere, which
// comes next after a restart, would begin at another solution.
TYPED_TEST(NearbySearchOver, StoppedSearchBeginsNoOtherWalk) {
  for (Index count = 2; count <= 60; ++count) {
    this->use("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 1 ] ] [ 0 ] [ 9 ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]");
    this->live.run.runVariables[MainMutexVariable::runState].set("");
    this->live.params.sol = count;
    this->live.params.variate = true;
    this->live.run.restarts = count;
    this->passOverFirst();
    ASSERT_TRUE(this->live.stopped());
    EXPECT_EQ(this->live.found.solutions.dimension(), count);
  }
}

TYPED_TEST(NearbySearchOver, ObserverHearsOfEachStep) {
  this->use(band);
  this->goOn();
  CountingStopper<TypeParam> counter(this->live, 0);
  this->live.run.observer = &counter;
  this->passOverFirst();
  // All steps, forth and back, were in vain at the end: two vectors, sum and difference.
  EXPECT_GE(counter.steps, 1 + 8);
}

TYPED_TEST(NearbySearchOver, EmptyPassFilesNothing) {
  this->use(band);
  auto& lattice = this->live;
  lattice.run.swapBudget = 150;
  EXPECT_EQ(lattice.lllPass(2, 1, 2), 2);
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  EXPECT_FALSE(lattice.found.bestVector.isSet());
  EXPECT_EQ(lattice.run.swapBudget, 149);
}

TYPED_TEST(NearbySearchOver, EquationLatticeIsNotSearched) {
  this->normalise("[ ] [ ] [ [ 1 1 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 3 3 ]");
  generateByHand(this->live, LatticeStage::equations);
  this->endAtFirst();
  CountingStopper<TypeParam> counter(this->live, 0);
  this->live.run.observer = &counter;
  this->passOverFirst();
  EXPECT_EQ(counter.steps, 1);
}

TYPED_TEST(NearbySearchOver, WalkLeavesTheBasisAlone) {
  this->use(band);
  this->goOn();
  const Matrix<TypeParam> before(this->live.basis.B());
  this->passOverFirst();
  EXPECT_TRUE(identical(this->live.basis.B(), before));
  EXPECT_TRUE(identical(this->live.basis.B_save, before));
}

// 3 x to be -2: a vector that meets the goal leaves the bounds of x.
TYPED_TEST(NearbySearchOver, PointsWithinTheBoundsAreCheckedBehindAPass) {
  this->prepare("[ -2 ] [ [ 3 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 2 ] [ 0 ] [ 0.02 ]");
  this->live.params.sol = 0;
  this->live.lllPass(1, 1, 0);
  NearbySearch(this->live).run();
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(this->found(1), "[ 0 ]");
}

TYPED_TEST(NearbySearchOver, PointsBesideAnInequationAreNoSolutions) {
  this->prepare("[ ] [ ] [ ] [ ] [ ] [ [ 7 -6 ] ] [ 51 ] [ 55 ] [ 0 0 ] [ 0 0 ] [ 9 1 ]");
  this->live.params.sol = 0;
  this->live.lllPass(1, 1, 0);
  NearbySearch(this->live).run();
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
}

}  // namespace
}  // namespace starsift
