#include "lattice/state/VectorScore.h"

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using Score = VectorScore<long double>;

/// The margin of every comparison.
constexpr long double eps = 1e-9L;

Score score(ScoreStatus status) {
  Score result;
  result.status = status;
  return result;
}

Score inhomogeneous() {
  return score(ScoreStatus::inhomogeneous);
}
Score homogeneous() {
  return score(ScoreStatus::homogeneous);
}

void expectBetter(const Score& a, const Score& b) {
  EXPECT_TRUE(better(a, b));
  EXPECT_FALSE(better(b, a));
  EXPECT_FALSE(sameScore(a, b));
  EXPECT_FALSE(sameScore(b, a));
}

void expectSame(const Score& a, const Score& b) {
  EXPECT_FALSE(better(a, b));
  EXPECT_FALSE(better(b, a));
  EXPECT_TRUE(sameScore(a, b));
}

TEST(VectorScore, IsNotBetterThanItself) {
  const Score empty;
  EXPECT_FALSE(better(empty, empty));
  EXPECT_TRUE(sameScore(empty, empty));
}

TEST(VectorScore, EmptyRecordsAreTheSame) {
  expectSame(Score(), Score());
}

TEST(VectorScore, EmptyRecordCanNotBeComparedWithAFilledOne) {
  EXPECT_FAILS_WITH(better(Score(), homogeneous()), "Heuristic deviation is not initialized!");
  EXPECT_FAILS_WITH(better(inhomogeneous(), Score()), "Heuristic deviation is not initialized!");
}

TEST(VectorScore, EmptyRecordIsNotTheSameAsAFilledOneButFatal) {
  EXPECT_FAILS_WITH(sameScore(Score(), inhomogeneous()), "Heuristic deviation is not initialized!");
}

TEST(VectorScore, InhomogeneousIsBetterWhateverTheRest) {
  Score good = homogeneous();
  good.isSolution = true;
  Score bad = inhomogeneous();
  bad.squaredNorm = 99;
  bad.deviationIndex = 7;
  expectBetter(bad, good);
}

TEST(VectorScore, NormsDecideFirstBetweenHomogeneousOnes) {
  Score shorter = homogeneous();
  shorter.squaredNorm = 4;
  shorter.deviationIndex = 9;
  Score longer = homogeneous();
  longer.squaredNorm = 5;
  longer.isSolution = true;
  expectBetter(shorter, longer);
}

TEST(VectorScore, EqualNormsOfHomogeneousOnesLeaveItToTheRest) {
  Score solution = homogeneous();
  solution.isSolution = true;
  solution.squaredNorm = 4 + eps / 2;
  Score other = homogeneous();
  other.squaredNorm = 4;
  expectBetter(solution, other);
}

TEST(VectorScore, SolutionIsBetterThanAnyOther) {
  Score solution = inhomogeneous();
  solution.isSolution = true;
  solution.squaredNorm = 99;
  solution.targetValue = 99;
  expectBetter(solution, inhomogeneous());
}

TEST(VectorScore, SmallerTargetValueIsBetterBetweenSolutions) {
  Score a = inhomogeneous();
  a.isSolution = true;
  a.targetValue = -3;
  a.squaredNorm = 99;
  Score b = a;
  b.targetValue = -2;
  b.squaredNorm = 1;
  expectBetter(a, b);
}

TEST(VectorScore, NothingComesBehindTheTargetValuesOfSolutions) {
  Score a = inhomogeneous();
  a.isSolution = true;
  Score b = a;
  b.squaredNorm = 99;
  b.deviationIndex = 3;
  expectSame(a, b);
}

TEST(VectorScore, TargetValueDoesNotMatterWithoutASolution) {
  Score a = inhomogeneous();
  a.targetValue = 5;
  expectSame(a, inhomogeneous());
}

TEST(VectorScore, SmallerDeviationIndexIsBetter) {
  Score a = inhomogeneous();
  a.deviationIndex = 2;
  a.firstDeviation = 9;
  Score b = inhomogeneous();
  b.deviationIndex = 3;
  b.firstDeviation = 1;
  expectBetter(a, b);
}

TEST(VectorScore, SmallerFirstDeviationIsBetterBeforeTheSum) {
  Score a = inhomogeneous();
  a.firstDeviation = 1;
  a.deviationSum = 9;
  Score b = inhomogeneous();
  b.firstDeviation = 2;
  b.deviationSum = 2;
  expectBetter(a, b);
}

TEST(VectorScore, SmallerSumIsBetterBeforeTheNorm) {
  Score a = inhomogeneous();
  a.deviationSum = 1;
  a.squaredNorm = 9;
  Score b = inhomogeneous();
  b.deviationSum = 2;
  b.squaredNorm = 1;
  expectBetter(a, b);
}

TEST(VectorScore, SmallerNormIsBetterAtLast) {
  Score a = inhomogeneous();
  a.squaredNorm = 1;
  Score b = inhomogeneous();
  b.squaredNorm = 2;
  expectBetter(a, b);
}

TEST(VectorScore, DifferenceOfTheMarginIsNone) {
  Score a = inhomogeneous();
  Score b = inhomogeneous();
  b.firstDeviation = eps;
  expectSame(a, b);
}

TEST(VectorScore, DifferenceBeyondTheMarginCounts) {
  Score a = inhomogeneous();
  Score b = inhomogeneous();
  b.firstDeviation = eps * 1.001L;
  expectBetter(a, b);
}

TEST(VectorScore, CollectionsOrderTheirVectorsByScore) {
  HeuristicVector<long double, long double> a;
  a.score = inhomogeneous();
  HeuristicVector<long double, long double> b;
  b.score = homogeneous();
  EXPECT_TRUE(better(a, b));
  EXPECT_FALSE(better(b, a));
}

}  // namespace
}  // namespace starsift
