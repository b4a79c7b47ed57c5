// The searches on the short vectors of a lattice, and the trimmed reduction.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>

#include "algorithms/reduction/SizeReduce.h"
#include "certificates/LatticeEquality.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "search/PairVectors.h"
#include "search/ProjectedSieve.h"
#include "search/ReinsertBest.h"
#include "search/SampleVectors.h"
#include "search/SieveVectors.h"
#include "search/TrimLattice.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

// Ten weights, of which five sum to 2493: the only solution.
constexpr const char* subset =
    "[ ] [ ] [ [ 366 983 105 642 779 214 541 830 397 158 ] ] [ 2493 ] [ ] [ ] [ ] [ ] "
    "[ 0 0 0 0 0 0 0 0 0 0 ] [ 0 0 0 0 0 0 0 0 0 0 ] [ 1 1 1 1 1 1 1 1 1 1 ]";
// No equation, and a row that the bounds imply.
constexpr const char* plane =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 1 ] ] [ 0 ] [ 12 ] [ 0 0 0 ] [ 0 0 0 ] [ 4 4 4 ]";

/// A text n times, in brackets.
std::string row(std::size_t n, const char* text) {
  std::string result = "[";
  for (std::size_t i = 0; i < n; ++i) result += std::string(" ") + text;
  return result + " ]";
}

constexpr const char* noTarget = "[ ] [ ] ";
/// The greatest sum of some variables of forty, 2 at least.
constexpr const char* greatestSum =
    "[ inf ] = [ 2 ] [ [ 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 "
    "0 0 1 ] ] ";

/// Forty variables that are 0 or 1, and two sums of weights of 20 bits, which some variables have.
std::string longSubset(std::uint32_t seed, const std::string& target = noTarget) {
  constexpr std::size_t n = 40;
  std::mt19937 random(seed);
  std::array<bool, n> chosen{};
  for (bool& one : chosen) one = random() % 2 == 1;
  std::string rows;
  std::string sums;
  for (int i = 0; i < 2; ++i) {
    std::uint32_t sum = 0;
    rows += "[ ";
    for (const bool one : chosen) {
      const std::uint32_t weight = random() % (1U << 20);
      rows += std::to_string(weight) + ' ';
      if (one) sum += weight;
    }
    rows += "] ";
    sums += std::to_string(sum) + ' ';
  }
  return target + "[ " + rows + "] [ " + sums + "] [ ] [ ] [ ] [ ] " + row(n, "0") + row(n, "0") +
         row(n, "1");
}

template <class T>
class ShortVectorSearchOver : public test::LatticeOfProblem<T> {
 protected:
  /// A reduced basis and an empty collection.
  void use(const char* problem, std::size_t limit = 100) {
    this->prepare(problem);
    this->live.params.sol = 0;
    this->live.reduce(0);
    this->live.found.shortVectors.open(limit, this->live.frame.firstChecked(this->live));
  }
  void offerRows() {
    const Matrix<T> rows = this->live.basis.untransformed();
    for (const Vector<T>& row : rows) this->live.found.shortVectors.offer(row);
  }
  const auto& entries() const { return this->live.found.shortVectors.entries(); }
  std::string content() const {
    std::string text;
    for (const auto& entry : entries()) text += test::textOf(*entry.vector) + '\n';
    return text;
  }
  bool isInLattice(const Vector<T>& vector) const {
    Matrix<T> rows = this->live.basis.B_save;
    rows.resize(rows.rowCount() + 1, rows.columnCount(), false);
    rows[rows.rowCount()] = vector;
    return sameLattice(rows, this->live.basis.B_save);
  }
  void expectAllInLattice() const {
    for (const auto& entry : entries()) EXPECT_TRUE(isInLattice(*entry.vector)) << *entry.vector;
  }
  bool keepsLattice() const {
    return sameLattice(this->live.basis.untransformed(), this->live.basis.B_save);
  }
  void stop() { this->live.run.runVariables[MainMutexVariable::runState].set("stopped"); }
};
TYPED_TEST_SUITE(ShortVectorSearchOver, test::LatticeNumbers);

TYPED_TEST(ShortVectorSearchOver, CertificateRejectsAVectorOutsideTheLattice) {
  this->use(subset);
  Vector<TypeParam> vector = this->live.basis.B_save[1];
  EXPECT_TRUE(this->isInLattice(vector));
  vector[1] += TypeParam(1);
  EXPECT_FALSE(this->isInLattice(vector));
}

TYPED_TEST(ShortVectorSearchOver, RowsOfAReductionAreCollected) {
  this->use(subset);
  this->live.basis.replace(this->live.basis.B());
  this->live.reduce(0);
  EXPECT_GE(static_cast<Index>(this->entries().size()), this->live.basis.n);
  this->expectAllInLattice();
}

TYPED_TEST(ShortVectorSearchOver, SolutionThatTheReductionMissesIsFoundByAProjectedSieve) {
  // Each is as long as a vector in the box can be: rounding must not make it longer.
  for (const std::uint32_t seed : {1, 3, 4, 6, 9}) {
    this->use(longSubset(seed).c_str());
    auto& lattice = this->live;
    ASSERT_EQ(lattice.found.solutions.dimension(), 0) << seed;
    sieveProjection(lattice);
    EXPECT_GE(lattice.found.solutions.dimension(), 1) << seed;
    EXPECT_TRUE(this->keepsLattice());
  }
}

TYPED_TEST(ShortVectorSearchOver, ProjectedSieveLeavesRoomForTheTargetInASolution) {
  for (const std::uint32_t seed : {1, 4, 9}) {
    this->use(longSubset(seed, greatestSum).c_str());
    auto& lattice = this->live;
    ASSERT_EQ(lattice.frame.firstChecked(lattice), 2);
    ASSERT_EQ(lattice.found.solutions.dimension(), 0) << seed;
    sieveProjection(lattice);
    EXPECT_GE(lattice.found.solutions.dimension(), 1) << seed;
  }
}

TYPED_TEST(ShortVectorSearchOver, ProjectedSieveDoesNothingWhereASolutionIsNoShortVector) {
  this->use(plane);
  sieveProjection(this->live);
  EXPECT_TRUE(this->entries().empty());
}

TYPED_TEST(ShortVectorSearchOver, ProjectedSieveOffersVectorsOfTheLattice) {
  this->use(longSubset(1).c_str());
  sieveProjection(this->live);
  EXPECT_FALSE(this->entries().empty());
  this->expectAllInLattice();
}

TYPED_TEST(ShortVectorSearchOver, ProjectedSieveDoesNothingWithoutAFiniteBox) {
  this->use("[ ] [ ] [ [ 3 5 7 ] ] [ 11 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 -inf ] [ 9 9 inf ]");
  this->live.found.discard();
  sieveProjection(this->live);
  EXPECT_TRUE(this->entries().empty());
}

TYPED_TEST(ShortVectorSearchOver, ProjectedSieveEndsWithTheSearch) {
  this->use(longSubset(1).c_str());
  this->stop();
  sieveProjection(this->live);
  EXPECT_EQ(this->live.found.solutions.dimension(), 0);
}

TYPED_TEST(ShortVectorSearchOver, NothingIsCollectedByDefaultOfALattice) {
  this->use(subset, 0);
  this->live.basis.replace(this->live.basis.B());
  this->live.reduce(0);
  EXPECT_TRUE(this->entries().empty());
}

TYPED_TEST(ShortVectorSearchOver, DifferenceOfLongVectorsIsCollected) {
  this->use(plane);
  const Vector<TypeParam> row = this->live.basis.untransformed()[1];
  Vector<TypeParam> longer = row;
  for (int i = 0; i < 6; ++i) longer += row;
  this->live.found.shortVectors.offer(longer);
  this->live.found.shortVectors.offer(longer + row);
  pairVectors(this->live);
  const bool isShortened = this->live.found.shortVectors.supNormOf(*this->entries()[0].vector) <
                           this->live.found.shortVectors.supNormOf(longer);
  EXPECT_TRUE(isShortened);
  this->expectAllInLattice();
}

TYPED_TEST(ShortVectorSearchOver, PairThatIsASolutionIsFiled) {
  this->use(plane);
  auto& lattice = this->live;
  const Vector<TypeParam> corner = this->image({TypeParam(7), TypeParam(0), TypeParam(0)});
  const Vector<TypeParam> step = this->image({TypeParam(5), TypeParam(0), TypeParam(0)}) -
                                 this->image({TypeParam(0), TypeParam(0), TypeParam(0)});
  lattice.found.discard();
  lattice.found.shortVectors.offer(corner);
  lattice.found.shortVectors.offer(step);
  pairVectors(lattice);
  ASSERT_EQ(lattice.found.solutions.dimension(), 1);
  EXPECT_EQ(test::textOf(this->pointOf(lattice.found.solutions[1])), "[ 2 0 0 ]");
}

class StepCounter : public ReductionObserver {
 public:
  void onStep(const PassCounts& /*counts*/) override { ++steps; }
  int steps = 0;
};

TYPED_TEST(ShortVectorSearchOver, LongVectorIsNotPairedDownToAShortOneInOneCall) {
  this->use(plane);
  auto& lattice = this->live;
  const Vector<TypeParam> row = lattice.basis.untransformed()[1];
  Vector<TypeParam> longOne = row;
  for (int doubling = 0; doubling < 20; ++doubling) longOne = longOne + longOne;
  lattice.found.shortVectors.offer(row);
  lattice.found.shortVectors.offer(longOne);
  StepCounter counter;
  lattice.run.observer = &counter;
  pairVectors(lattice);
  lattice.run.observer = nullptr;
  // Sum and difference of any two of ten.
  EXPECT_GE(counter.steps, 2);
  EXPECT_LE(counter.steps, 2 * 10 * 10);
}

TYPED_TEST(ShortVectorSearchOver, PairLimitBoundsTheVectorsThatArePaired) {
  this->use(subset);
  this->offerRows();
  this->live.params.pairLimit = 3UL;
  pairVectors(this->live);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(this->entries()[i].isPaired);
  this->live.params.pairLimit = 0UL;
  this->live.found.shortVectors.clear();
  this->offerRows();
  pairVectors(this->live);
  EXPECT_FALSE(this->entries()[0].isPaired);
}

TYPED_TEST(ShortVectorSearchOver, SieveLeavesNoPairThatShortensAnother) {
  this->use(plane);
  auto& collection = this->live.found.shortVectors;
  const Matrix<TypeParam> rows = this->live.basis.untransformed();
  Vector<TypeParam> sum = rows[1] + rows[2];
  collection.offer(sum);
  collection.offer(sum + sum + rows[1]);
  sieveVectors(this->live);
  EXPECT_TRUE(squaredNorm<long double>(*this->entries()[0].vector) <=
              squaredNorm<long double>(rows[1]));
  this->expectAllInLattice();
}

TYPED_TEST(ShortVectorSearchOver, SamplesAreVectorsOfTheLattice) {
  this->use(subset);
  this->live.params.sampleLimit = 50UL;
  sampleVectors(this->live);
  EXPECT_GT(this->entries().size(), 5U);
  this->expectAllInLattice();
}

TYPED_TEST(ShortVectorSearchOver, SeedChoosesTheSamples) {
  this->use(subset);
  this->live.params.sampleLimit = 20UL;
  const auto drawn = [this](std::uint64_t seed) {
    this->live.found.shortVectors.clear();
    this->live.run.seed = seed;
    sampleVectors(this->live);
    return this->content();
  };
  const std::string first = drawn(1);
  EXPECT_NE(drawn(2), first);
  EXPECT_EQ(drawn(1), first);
}

TYPED_TEST(ShortVectorSearchOver, EnoughSamplesFindTheSubset) {
  this->use(subset);
  this->live.found.discard();
  this->live.params.sampleLimit = 400UL;
  sampleVectors(this->live);
  ASSERT_EQ(this->live.found.solutions.dimension(), 1);
  EXPECT_EQ(test::textOf(this->pointOf(this->live.found.solutions[1])), "[ 1 1 1 1 0 0 0 0 1 0 ]");
}

TYPED_TEST(ShortVectorSearchOver, ShortVectorComesBackIntoALongerBasis) {
  this->use(subset);
  auto& lattice = this->live;
  this->offerRows();
  lattice.basis.subtract(2, {{1, 3}});
  lattice.basis.swap(1, 2, RowStatus::forget);
  lattice.basis.forgetFrom(1);
  lattice.modifiedOrthogonalise(1, lattice.basis.n, OnDependency::report, LqCache::bypass);
  EXPECT_GT(reinsertBest(lattice), 0);
  EXPECT_TRUE(this->keepsLattice());
  EXPECT_EQ(reinsertBest(lattice), 0);
}

TYPED_TEST(ShortVectorSearchOver, TrackedInsertionsKeepTheTransformation) {
  this->use(subset);
  auto& lattice = this->live;
  this->offerRows();
  lattice.verifyTransformation(LatticeKind::full, Announce::silent);
  lattice.params.consistency = true;
  lattice.basis.subtract(2, {{1, 3}});
  lattice.basis.swap(1, 2, RowStatus::forget);
  lattice.basis.forgetFrom(1);
  lattice.modifiedOrthogonalise(1, lattice.basis.n, OnDependency::report, LqCache::bypass);
  EXPECT_GT(reinsertBest(lattice), 0);
  EXPECT_TRUE(lattice.verifyTransformation(LatticeKind::full, Announce::silent));
}

TYPED_TEST(ShortVectorSearchOver, TrimmingEndsWithoutScaleAndTranslation) {
  this->use(subset);
  auto& lattice = this->live;
  lattice.params.scale = true;
  lattice.params.translate = true;
  trimLattice(lattice);
  for (const TypeParam& factor : lattice.basis.scale) EXPECT_TRUE(factor == TypeParam(1));
  for (const TypeParam& entry : lattice.basis.translation) EXPECT_TRUE(entry == TypeParam());
  EXPECT_TRUE(this->keepsLattice());
}

TYPED_TEST(ShortVectorSearchOver, StoppedSearchesMakeNothing) {
  this->use(subset);
  this->offerRows();
  const std::string before = this->content();
  this->stop();
  pairVectors(this->live);
  sieveVectors(this->live);
  sampleVectors(this->live);
  EXPECT_EQ(reinsertBest(this->live), 0);
  this->live.params.scale = true;
  trimLattice(this->live);
  EXPECT_EQ(this->content(), before);
  EXPECT_TRUE(this->keepsLattice());
}

TYPED_TEST(ShortVectorSearchOver, CollectionStaysWhenTheLatticeIsMadeAnew) {
  this->use(subset);
  this->offerRows();
  const std::string before = this->content();
  this->live.regenerateLattice();
  EXPECT_EQ(this->content(), before);
  this->expectAllInLattice();
}

// The inhomogeneous row minus once or twice the other one.
TEST(SampleVectors, LongDoubleThatMayOverflowIsNotRounded) {
  const Matrix<long double> rows{{2e18L, 0}, {2.8e18L, 1}};
  Lattice<long double, long double> lattice(&rows);
  lattice.modifiedOrthogonalise(1, 2, OnDependency::report, LqCache::bypass);
  EXPECT_THROW(sampleVectors(lattice), PrecisionException);
}

}  // namespace
}  // namespace starsift
