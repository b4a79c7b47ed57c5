// How far is a vector from a solution, and which one is the best so far.
#include <gtest/gtest.h>

#include "support/fixtures/CheckVectors.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::LatticeStage;
using test::textOf;

// x + 2 y between 2 and 9, both from 0 to 5; the range is 35.
constexpr const char* band = "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// The same with x + y largest, from 4 on, and the same without the 4.
constexpr const char* climb =
    "[ inf ] = [ 4 ] [ [ 1 1 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
constexpr const char* plain =
    "[ inf ] [ [ 1 1 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

template <class T>
class LatticeScoreOver : public test::LatticeOfProblem<T> {
 protected:
  void use(const char* problem) {
    this->normalise(problem);
    generateByHand(this->live, LatticeStage::full);
  }

  VectorScore<long double> scoreOf(const Vector<T>& vector, bool transformed = false) const {
    VectorScore<long double> record;
    this->live.score(record, vector, transformed ? Space::working : Space::raw);
    return record;
  }

  /// "[index amount] ..."
  std::string deviations(const Vector<T>& vector) const {
    std::string text;
    for (const auto& deviation : this->live.deviationsOf(vector))
      text += "[" + textOf(deviation.left) + " " + textOf(deviation.right) + "]";
    return text;
  }

  std::string accepted() const {
    return this->live.run.runVariables.find(MainMutexVariable::counter5)->copied();
  }
};
TYPED_TEST_SUITE(LatticeScoreOver, test::LatticeNumbers);

TYPED_TEST(LatticeScoreOver, DeviationsAreAmountsOutsideTheBox) {
  this->use(band);
  EXPECT_EQ(this->deviations({35, -35, 0, 1}), "");
  EXPECT_EQ(this->deviations({36, -37, 0, 1}), "[2 2][1 1]");
  EXPECT_EQ(this->deviations({-38, 36, 40, 1}), "[3 5][1 3][2 1]");
}

TYPED_TEST(LatticeScoreOver, EqualDeviationsStandInTheOrderOfTheirCoordinates) {
  this->use(band);
  EXPECT_EQ(this->deviations({-36, 37, 36, 1}), "[2 2][1 1][3 1]");
}

TYPED_TEST(LatticeScoreOver, LastCoordinateAndTargetDoNotDeviate) {
  this->use(climb);
  const auto m = this->live.basis.m;
  Vector<TypeParam> vector(m);
  vector[1] = TypeParam(1000);
  vector[m] = TypeParam(9);
  EXPECT_EQ(this->deviations(vector), "");
  vector[2] = TypeParam(1000);
  EXPECT_EQ(this->live.deviationsOf(vector)[1].left, 2);
}

TYPED_TEST(LatticeScoreOver, FirstCoordinateDeviatesWithoutATargetColumn) {
  this->use(plain);
  ASSERT_FALSE(this->live.atuValid);
  Vector<TypeParam> vector(this->live.basis.m);
  vector[1] = TypeParam(1000);
  EXPECT_EQ(this->live.deviationsOf(vector)[1].left, 1);
}

TYPED_TEST(LatticeScoreOver, RecordTellsTheDeviations) {
  this->use(band);
  const auto record = this->scoreOf({-38, 36, 40, 1});
  EXPECT_FALSE(record.isSolution);
  EXPECT_EQ(record.firstDeviation, 5.0L);
  EXPECT_EQ(record.deviationIndex, 3);
  EXPECT_EQ(record.deviationSum, 9.0L);
  EXPECT_EQ(record.deviations.dimension(), 3);
  EXPECT_EQ(record.squaredNorm, 38.0L * 38 + 36 * 36 + 1600 + 1);
  EXPECT_EQ(record.status, ScoreStatus::inhomogeneous);
}

TYPED_TEST(LatticeScoreOver, RecordOfASolutionHasNoDeviation) {
  this->use(band);
  const auto record = this->scoreOf({35, -35, 0, 1});
  EXPECT_TRUE(record.isSolution);
  EXPECT_EQ(record.firstDeviation, 0.0L);
  EXPECT_EQ(record.deviationIndex, 0);
  EXPECT_EQ(record.deviationSum, 0.0L);
  EXPECT_EQ(record.targetValue, 0.0L);
}

TYPED_TEST(LatticeScoreOver, RecordStartsAnew) {
  this->use(band);
  VectorScore<long double> record = this->scoreOf({-38, 36, 40, 1});
  this->live.score(record, {35, -35, 0, 1}, Space::raw);
  EXPECT_EQ(record.deviationSum, 0.0L);
  EXPECT_EQ(record.deviations.dimension(), 0);
}

TYPED_TEST(LatticeScoreOver, LastCoordinateTellsTheStatus) {
  this->use(band);
  this->live.homValue = TypeParam(2);
  EXPECT_EQ(this->scoreOf({0, 0, 0, 2}).status, ScoreStatus::inhomogeneous);
  EXPECT_EQ(this->scoreOf({0, 0, 0, -2}).status, ScoreStatus::inhomogeneous);
  EXPECT_EQ(this->scoreOf({0, 0, 0, 1}).status, ScoreStatus::homogeneous);
  EXPECT_EQ(this->scoreOf({0, 0, 0, 0}).status, ScoreStatus::homogeneous);
  EXPECT_EQ(VectorScore<long double>().status, ScoreStatus::empty);
}

TYPED_TEST(LatticeScoreOver, VectorOfWorkingSpaceIsTakenBack) {
  this->use(band);
  this->live.setScale(1, TypeParam(10));
  EXPECT_TRUE(this->scoreOf({350, -35, 0, 1}, true).isSolution);
  EXPECT_FALSE(this->scoreOf({350, -35, 0, 1}, false).isSolution);
}

TYPED_TEST(LatticeScoreOver, TargetValueIsTheNormOnTheProblemAsRead) {
  this->use(climb);
  EXPECT_EQ(this->scoreOf(this->image({TypeParam(5), TypeParam(1)})).targetValue, -6.0L);
  EXPECT_EQ(this->scoreOf(this->image({TypeParam(5), TypeParam(5)})).targetValue, 0.0L);
  this->use(plain);
  EXPECT_EQ(this->scoreOf(this->image({TypeParam(5), TypeParam(1)})).targetValue, 0.0L);
}

TYPED_TEST(LatticeScoreOver, FirstVectorIsTheBestOne) {
  this->use(band);
  EXPECT_TRUE(this->live.offerBest({40, 0, 0, 1}, 11));
  EXPECT_EQ(textOf<Vector<TypeParam>>(this->live.found.bestVector), "[ 40 0 0 1 ]");
  EXPECT_EQ(this->live.found.bestVector.time, 11);
  EXPECT_EQ(this->live.found.bestRecord.deviationSum, 5.0L);
  EXPECT_EQ(this->accepted(), "1");
}

TYPED_TEST(LatticeScoreOver, BestVectorItselfIsKept) {
  this->use(band);
  this->live.offerBest({40, 0, 0, 1}, 11);
  EXPECT_TRUE(this->live.offerBest({40, 0, 0, 1}, 12));
  EXPECT_EQ(this->live.found.bestVector.time, 11);
}

TYPED_TEST(LatticeScoreOver, BetterVectorBecomesTheBestOne) {
  this->use(band);
  this->live.offerBest({40, 0, 0, 1}, 11);
  EXPECT_TRUE(this->live.offerBest({39, 0, 0, 1}, 12));
  EXPECT_EQ(this->live.found.bestVector.time, 12);
  EXPECT_EQ(this->live.found.bestRecord.deviationSum, 4.0L);
  EXPECT_FALSE(this->live.offerBest({50, 0, 0, 1}, 13));
  EXPECT_EQ(this->live.found.bestVector.time, 12);
  EXPECT_EQ(this->accepted(), "1");
}

TYPED_TEST(LatticeScoreOver, EqualScoreIsNotBetter) {
  this->use(band);
  this->live.offerBest({40, 0, 1, 1}, 11);
  EXPECT_FALSE(this->live.offerBest({-40, 1, 0, 1}, 12));
  EXPECT_EQ(this->live.found.bestVector.time, 11);
}

TYPED_TEST(LatticeScoreOver, VectorWithAnotherLastCoordinateIsRefused) {
  this->use(band);
  EXPECT_FALSE(this->live.offerBest({0, 0, 0, 0}, 1));
  EXPECT_FALSE(this->live.offerBest({0, 0, 0, 2}, 1));
  EXPECT_FALSE(this->live.found.bestVector.isSet());
  EXPECT_TRUE(this->live.offerBest({0, 0, 0, -1}, 1));
}

TYPED_TEST(LatticeScoreOver, TimeIsThatSinceTheStartUnlessGiven) {
  this->use(band);
  this->live.offerBest({40, 0, 0, 1}, 0);
  EXPECT_EQ(this->live.found.bestVector.time, 0);
  this->live.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  this->live.offerBest({39, 0, 0, 1}, 0);
  EXPECT_GE(this->live.found.bestVector.time, 1000);
  EXPECT_LE(this->live.found.bestVector.time, 1060);
}

TYPED_TEST(LatticeScoreOver, VectorThatComesBackIsNotCounted) {
  this->use(band);
  this->live.run.restoring = true;
  EXPECT_TRUE(this->live.offerBest({40, 0, 0, 1}, 11));
  EXPECT_EQ(this->accepted(), "0");
}

TYPED_TEST(LatticeScoreOver, BestVectorWithoutARecordIsFatal) {
  this->use(band);
  this->live.found.bestVector = TimeVector<TypeParam>{40, 0, 0, 1};
  EXPECT_FAILS_WITH(this->live.offerBest({39, 0, 0, 1}, 1),
                    "Heuristic deviation is not initialized!");
}

}  // namespace
}  // namespace starsift
