// Is a vector a solution, and what becomes of it?
#include <gtest/gtest.h>

#include <limits>

#include "support/fixtures/BasisRows.h"
#include "support/fixtures/CheckedLattice.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using test::filed;
using test::LatticeStage;
using test::messageOf;
using test::textOf;

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr const char* band = "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// The same with x + y largest, from 4 on.
constexpr const char* climb =
    "[ inf ] = [ 4 ] [ [ 1 1 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// x + y to be 7, both from 0 to 5.
constexpr const char* aim = "[ 7 ] [ [ 1 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// x free, y from 0 on.
constexpr const char* open =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 0 ] [ 9 ] [ 0 0 ] [ -inf 0 ] [ inf inf ]";
// x + y = 1 modulo 3 and x - y + z = 1.
constexpr const char* congruence =
    "[ ] [ ] [ [ 1 1 0 ] [ 1 -1 1 ] ] [ 1 1 ] [ 3 0 ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 5 5 5 ]";

template <class T>
using LatticeCheckOver = test::CheckedLattice<T>;
TYPED_TEST_SUITE(LatticeCheckOver, test::LatticeNumbers);

TYPED_TEST(LatticeCheckOver, NothingIsCheckedBeforeGeneration) {
  EXPECT_FAILS_WITH(this->check({TypeParam(1)}),
                    "checkSolution: You should set the check vectors!");
}

TYPED_TEST(LatticeCheckOver, EmptyVectorIsNone) {
  this->use(band);
  EXPECT_EQ(this->check({}), 0U);
}

TYPED_TEST(LatticeCheckOver, SolutionIsFiledWithItsTime) {
  this->use(band);
  EXPECT_EQ(this->check(this->image({TypeParam(1), TypeParam(4)}), 17), filed);
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(this->stored(1), "[ 1 4 ]");
  EXPECT_EQ(this->live.found.solutions[1].time, 17);
  EXPECT_FALSE(this->live.found.bestVector.isSet());
}

TYPED_TEST(LatticeCheckOver, TimeIsThatSinceTheStartUnlessGiven) {
  this->use(band);
  this->live.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  this->checkPoint(1, 4);
  EXPECT_GE(this->live.found.solutions[1].time, 1000);
  EXPECT_LE(this->live.found.solutions[1].time, 1060);
  this->live.params.bench = 2.0F;
  this->checkPoint(2, 3);
  EXPECT_GE(this->live.found.solutions[2].time, 2000);
}

TYPED_TEST(LatticeCheckOver, TimeOfABenchmarkIsTheLongestAtMost) {
  this->use(band);
  this->live.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  this->live.params.bench = std::numeric_limits<float>::infinity();
  this->checkPoint(1, 4);
  EXPECT_EQ(this->live.found.solutions[1].time, std::numeric_limits<std::int64_t>::max());
  this->live.params.bench = 1e16F;
  this->checkPoint(2, 3);
  EXPECT_EQ(this->live.found.solutions[2].time, std::numeric_limits<std::int64_t>::max());
}

TYPED_TEST(LatticeCheckOver, TimeOfNothingStaysNothingInABenchmark) {
  this->use(band);
  this->live.params.bench = std::numeric_limits<float>::infinity();
  this->checkPoint(1, 4);
  EXPECT_EQ(this->live.found.solutions[1].time, 0);
}

TYPED_TEST(LatticeCheckOver, NegativeOfASolutionIsTurned) {
  this->use(band);
  EXPECT_EQ(this->check(this->negative(this->image({TypeParam(1), TypeParam(4)}))), filed);
  EXPECT_EQ(textOf<Vector<TypeParam>>(this->live.found.solutions[1]),
            textOf(this->image({TypeParam(1), TypeParam(4)})));
}

TYPED_TEST(LatticeCheckOver, SolutionIsFiledOnce) {
  this->use(band);
  EXPECT_EQ(this->checkPoint(1, 4), filed);
  EXPECT_EQ(this->checkPoint(1, 4), CHECK_SOLUTION);
  EXPECT_EQ(this->checkPoint(2, 3), filed);
  EXPECT_EQ(this->live.found.solutions.dimension(), 2);
}

TYPED_TEST(LatticeCheckOver, VectorsOfWorkingSpaceAreTakenBack) {
  this->use(band);
  auto& lattice = this->live;
  const Vector<TypeParam> raw = this->image({TypeParam(1), TypeParam(4)});
  lattice.setScale(1, TypeParam(3));
  lattice.setScale(lattice.basis.m, TypeParam(2));
  const Vector<TypeParam> working = lattice.forwardMap(raw);
  EXPECT_EQ(lattice.checkSolution(this->negative(working), Space::working, 0, Announce::silent),
            filed);
  EXPECT_EQ(textOf<Vector<TypeParam>>(lattice.found.solutions[1]), textOf(raw));
  EXPECT_EQ(this->check(working), 0U);
}

TYPED_TEST(LatticeCheckOver, NegativeHomValueTurnsTheOtherWay) {
  this->normalise(band);
  auto& lattice = this->live;
  lattice.homValue = lattice.optOriginal.homValue = lattice.basis.homScaled = TypeParam(-1);
  generateByHand(lattice, LatticeStage::full);
  const Vector<TypeParam> raw = this->image({TypeParam(1), TypeParam(4)});
  EXPECT_EQ(raw[4], TypeParam(-1));
  EXPECT_EQ(this->check(raw) & filed, filed);
  EXPECT_EQ(this->check(this->negative(raw)) & filed, CHECK_SOLUTION);
  EXPECT_EQ(textOf<Vector<TypeParam>>(lattice.found.solutions[1]), textOf(raw));
}

TYPED_TEST(LatticeCheckOver, PointOutsideTheBoxCompetesForTheBestVector) {
  this->use(band);
  EXPECT_EQ(this->checkPoint(0, 0), 0U);
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
  EXPECT_EQ(textOf<Vector<TypeParam>>(this->live.found.bestVector),
            textOf(this->image({TypeParam(0), TypeParam(0)})));
}

TYPED_TEST(LatticeCheckOver, EachCoordinateMustLieInTheBox) {
  this->use(band);
  // Too large, too small, and a row beyond either end.
  EXPECT_EQ(this->checkPoint(6, 1), 0U);
  EXPECT_EQ(this->checkPoint(-1, 2), 0U);
  EXPECT_EQ(this->checkPoint(1, 0), 0U);
  EXPECT_EQ(this->checkPoint(5, 3), 0U);
  EXPECT_EQ(this->checkPoint(5, 2), filed);
  EXPECT_EQ(this->checkPoint(0, 1), filed);
}

TYPED_TEST(LatticeCheckOver, HomogeneousVectorIsNone) {
  this->use(band);
  Vector<TypeParam> difference = this->image({TypeParam(1), TypeParam(4)});
  difference -= this->image({TypeParam(2), TypeParam(3)});
  EXPECT_EQ(this->check(difference), 0U);
  EXPECT_FALSE(this->live.found.bestVector.isSet());
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
}

TYPED_TEST(LatticeCheckOver, FreeVariablesHaveNoBounds) {
  this->use(open);
  EXPECT_EQ(this->checkPoint(-70, 75), filed);
  EXPECT_EQ(this->checkPoint(3, -1), 0U);
  auto& lattice = this->live;
  // A kind says more than the check vectors.
  for (TypeParam& bound : lattice.frame.r)
    bound = NumberTraits<TypeParam>::isInfinite(bound) ? TypeParam(0) : bound;
  EXPECT_EQ(this->checkPoint(70, -61), 0U);
  EXPECT_EQ(this->checkPoint(-60, 65), filed);
}

TYPED_TEST(LatticeCheckOver, KindOfAVariableSaysWhichOfItsBoundsHold) {
  using enum FreedomDegree;
  struct Case {
    FreedomDegree kind;
    bool below;
    bool above;
  };
  for (const Case& x : {Case{bounded, false, false}, Case{leftFree, true, false},
                        Case{rightFree, false, true}, Case{free, true, true}}) {
    SCOPED_TRACE(static_cast<int>(x.kind));
    this->use(band);
    auto& lattice = this->live;
    lattice.fd[1] = x.kind;
    lattice.file.editProblem().lx[1] = TypeParam(-9);
    lattice.file.editProblem().rx[1] = TypeParam(9);
    EXPECT_EQ(this->checkPoint(-1, 2), x.below ? filed : 0U);
    EXPECT_EQ(this->checkPoint(6, 1), x.above ? filed : 0U);
    EXPECT_EQ(this->checkPoint(1, 1), filed);
    // The other variable and the row hold as ever.
    EXPECT_EQ(this->checkPoint(4, -1), 0U);
    EXPECT_EQ(this->checkPoint(5, 3), 0U);
  }
}

TYPED_TEST(LatticeCheckOver, VectorBesideTheLatticeIsNone) {
  this->use(band);
  Vector<TypeParam> vector = this->image({TypeParam(1), TypeParam(4)});
  vector[1] += TypeParam(2);
  EXPECT_EQ(this->check(vector), 0U);
  EXPECT_FALSE(this->live.found.bestVector.isSet());
}

TYPED_TEST(LatticeCheckOver, PointMustSolveTheProblemAsRead) {
  this->use(band);
  auto& lattice = this->live;
  for (TypeParam& bound : lattice.frame.r) bound += TypeParam(100);
  lattice.frame.r[lattice.basis.m] = TypeParam(1);
  EXPECT_EQ(this->checkPoint(5, 3), 0U);
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  EXPECT_EQ(this->checkPoint(5, 2), filed);
}

TYPED_TEST(LatticeCheckOver, EquationLatticeFilesNothing) {
  this->use(congruence, LatticeStage::equations);
  const Vector<TypeParam> vector = this->image({TypeParam(3), TypeParam(4), TypeParam(2)});
  EXPECT_EQ(this->check(vector, 5), 0U);
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
  EXPECT_EQ(textOf<Vector<TypeParam>>(this->live.found.bestVector), textOf(vector));
  EXPECT_EQ(this->live.found.bestVector.time, 5);
}

TYPED_TEST(LatticeCheckOver, TargetRejectsNothing) {
  this->use(climb);
  ASSERT_TRUE(this->live.atuValid);
  EXPECT_EQ(this->checkPoint(0, 1), filed);
  EXPECT_EQ(this->stored(1), "[ 0 1 ]");
}

TYPED_TEST(LatticeCheckOver, BestTargetIsTheBestSolution) {
  this->use(climb);
  auto& best = this->live.found.bestTarget;
  EXPECT_EQ(this->checkPoint(2, 2), filed);
  EXPECT_EQ(best.targetNorm, TypeParam(-4));
  EXPECT_EQ(this->check(this->image({TypeParam(5), TypeParam(1)}), 9), filed);
  EXPECT_EQ(best.targetNorm, TypeParam(-6));
  EXPECT_EQ(textOf(best.targetValues), "[ 6 ]");
  EXPECT_EQ(best.slackNorm, TypeParam(0));
  EXPECT_EQ(best.time, 9);
  EXPECT_EQ(textOf(this->pointOf(best)), "[ 5 1 ]");
  EXPECT_EQ(this->live.found.solutions.dimension(), 2);
}

TYPED_TEST(LatticeCheckOver, WorseThanTheBestTargetIsNotFiled) {
  this->use(climb);
  this->checkPoint(5, 1);
  EXPECT_EQ(this->checkPoint(2, 2), CHECK_SOLUTION);
  EXPECT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(this->live.found.bestTarget.targetNorm, TypeParam(-6));
}

TYPED_TEST(LatticeCheckOver, AsGoodAsTheBestTargetIsFiledBehindIt) {
  this->use(climb);
  this->checkPoint(5, 1);
  EXPECT_EQ(this->checkPoint(4, 2), filed);
  EXPECT_EQ(this->live.found.solutions.dimension(), 2);
  EXPECT_EQ(textOf(this->pointOf(this->live.found.bestTarget)), "[ 5 1 ]");
}

TYPED_TEST(LatticeCheckOver, BestTargetItselfIsTurnedAway) {
  this->use(climb);
  this->checkPoint(5, 1);
  this->live.found.solutions.clear();
  EXPECT_EQ(this->checkPoint(5, 1), CHECK_SOLUTION);
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
}

TYPED_TEST(LatticeCheckOver, WithoutTargetsThereIsNoBestTarget) {
  this->use(band);
  this->checkPoint(5, 1);
  EXPECT_FALSE(this->live.found.bestTarget.isSet());
}

TYPED_TEST(LatticeCheckOver, NothingIsCollectedWhileNoSearchReadsTheCollection) {
  this->use(band);
  auto& lattice = this->live;
  lattice.params.sieve = true;
  lattice.params.pair = true;
  this->checkPoint(1, 4);
  this->checkPoint(6, 6);
  EXPECT_EQ(lattice.found.collected.count(), 0);
  EXPECT_EQ(lattice.found.chosen.count(), 0);
}

TYPED_TEST(LatticeCheckOver, ImageOfAPointIsConsistent) {
  for (const LatticeStage stage : {LatticeStage::equations, LatticeStage::equationsGone,
                                   LatticeStage::fullWithModuli, LatticeStage::full}) {
    this->use(congruence, stage);
    const Vector<TypeParam> vector = this->image({TypeParam(3), TypeParam(4), TypeParam(2)});
    EXPECT_TRUE(this->live.isConsistent(vector, Match::tolerant));
    EXPECT_TRUE(this->live.isConsistent(vector, Match::exact));
    EXPECT_TRUE(this->live.isConsistent(this->negative(vector), Match::exact));
  }
}

TYPED_TEST(LatticeCheckOver, CoordinatesOfModuliDoNotCount) {
  this->use(congruence, LatticeStage::fullWithModuli);
  Vector<TypeParam> vector = this->image({TypeParam(3), TypeParam(4), TypeParam(2)});
  vector[4] += TypeParam(1);
  EXPECT_TRUE(this->live.isConsistent(vector, Match::exact));
}

TYPED_TEST(LatticeCheckOver, VariablesStandInFrontOfTheModuli) {
  this->use(congruence, LatticeStage::fullWithModuli);
  EXPECT_EQ(this->check(this->image({TypeParam(3), TypeParam(4), TypeParam(2)})), filed);
  // 6 is too much for x.
  EXPECT_EQ(this->check(this->image({TypeParam(6), TypeParam(10), TypeParam(5)})), 0U);
  EXPECT_EQ(this->check(this->image({TypeParam(6), TypeParam(7), TypeParam(2)})), 0U);
}

TYPED_TEST(LatticeCheckOver, CoordinatesOfEquationsCount) {
  this->use(congruence, LatticeStage::equations);
  auto& lattice = this->live;
  Vector<TypeParam> vector = this->image({TypeParam(3), TypeParam(4), TypeParam(2)});
  // A congruence only up to its modulus.
  vector[1] += TypeParam(3);
  EXPECT_TRUE(lattice.isConsistent(vector, Match::tolerant));
  vector[1] += TypeParam(1);
  EXPECT_FALSE(lattice.isConsistent(vector, Match::tolerant));
  vector[1] -= TypeParam(1);
  vector[2] += TypeParam(3);
  EXPECT_FALSE(lattice.isConsistent(vector, Match::tolerant));
}

TYPED_TEST(LatticeCheckOver, BrokenCongruenceIsInconsistent) {
  this->use(congruence, LatticeStage::full);
  // x, y, z = 0, 0, 1 in the box.
  const Vector<TypeParam> vector{-5, -5, -3, 1};
  EXPECT_FALSE(this->live.isConsistent(vector, Match::tolerant));
  EXPECT_EQ(this->check(vector), 0U);
}

TYPED_TEST(LatticeCheckOver, OnlyTheDifferenceOfTwoDeviationsCounts) {
  this->use(aim);
  auto& lattice = this->live;
  Vector<TypeParam> vector = this->image({TypeParam(3), TypeParam(2)});
  const Index first = lattice.basis.m - 2;
  const TypeParam step = TypeParam(2) * lattice.frame.c[first];
  vector[first] += step;
  EXPECT_FALSE(lattice.isConsistent(vector, Match::tolerant));
  vector[first + 1] += step;
  EXPECT_TRUE(lattice.isConsistent(vector, Match::tolerant));
  EXPECT_EQ(this->check(vector), filed);
}

TEST(LatticeCheck, ConsistencyHasATolerance) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(test::problemFrom<long double>(band));
  lattice.normalise(TargetRange::find, From::lifted);
  generateByHand(lattice, LatticeStage::full);
  Vector<long double> vector;
  lattice.opt2lat({1, 4}, vector, Space::raw, 1.0L);
  vector[1] += 1e-12L;
  EXPECT_TRUE(lattice.isConsistent(vector, Match::tolerant));
  EXPECT_FALSE(lattice.isConsistent(vector, Match::exact));
}

TEST(LatticeCheck, LargeVectorAsksForExactArithmetic) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(test::problemFrom<long double>(band));
  lattice.normalise(TargetRange::find, From::lifted);
  generateByHand(lattice, LatticeStage::full);
  Vector<long double> vector;
  lattice.opt2lat({1, 4}, vector, Space::raw, 1.0L);
  vector[1] = 2e9L;
  EXPECT_EQ(messageOf<PrecisionException>(
                [&] { lattice.checkSolution(vector, Space::raw, 0, Announce::silent); }),
            "lat_vec overflow");
}

// x from 9 * 10^8 on.
TEST(LatticeCheck, LargePointAsksForExactArithmetic) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(test::problemFrom<long double>(
      "[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 900000000 ] [ inf ]"));
  lattice.normalise(TargetRange::find, From::lifted);
  generateByHand(lattice, LatticeStage::full);
  EXPECT_EQ(messageOf<PrecisionException>([&] {
              lattice.checkSolution({999999999, 1}, Space::raw, 0, Announce::silent);
            }),
            "opt_vec overflow1");
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
}

TEST(LatticeCheck, LargeTargetValueAsksForExactArithmetic) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(test::problemFrom<long double>(
      "[ inf ] [ [ 1 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]"));
  lattice.normalise(TargetRange::find, From::lifted);
  generateByHand(lattice, LatticeStage::full);
  lattice.file.editProblem().At[1][1] = 999999999999999999.0L;
  Vector<long double> vector;
  lattice.opt2lat({5, 1}, vector, Space::raw, 1.0L);
  EXPECT_EQ(messageOf<PrecisionException>(
                [&] { lattice.checkSolution(vector, Space::raw, 0, Announce::silent); }),
            "Precision lost during check");
  EXPECT_FALSE(lattice.found.bestTarget.isSet());
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
}

// Vectors without a chance are turned away by a glance; nothing else may be.
TYPED_TEST(LatticeCheckOver, ReductionOffersItsVectors) {
  this->use(band);
  auto& lattice = this->live;
  bool strict = false;
  lattice.lllStep(1, 1, strict);
  // The inhomogeneous vector is the point 0, which the row refuses.
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  EXPECT_EQ(textOf(this->pointOf(lattice.found.bestVector)), "[ 0 0 ]");
}

TYPED_TEST(LatticeCheckOver, ReductionOffersItsVectorsUnderANegativeHomValue) {
  this->normalise(band);
  auto& lattice = this->live;
  lattice.homValue = lattice.optOriginal.homValue = lattice.basis.homScaled = TypeParam(-1);
  generateByHand(lattice, LatticeStage::full);
  lattice.params.sol = 0;
  test::setRow(lattice, 1, this->image({TypeParam(1), TypeParam(4)}));
  bool strict = false;
  lattice.lllStep(1, 1, strict);
  EXPECT_EQ(lattice.found.solutions.dimension(), 1);
}

}  // namespace
}  // namespace starsift
