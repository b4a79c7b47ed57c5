#include "lattice/reduce/LllReduction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "certificates/LatticeEquality.h"
#include "certificates/LllViolations.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"

namespace starsift {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Remembers what a reduction shows; ends the pass before a step.
class Recorder : public RowVisitor {
 public:
  void onRow(Index k) override { rows.push_back(k); }
  bool mayStep(const PassStatus& status) override {
    tests.push_back(status.counts.tests);
    return static_cast<Index>(tests.size()) <= mostSteps;
  }
  void onStepped(const PassStatus& status) override { stepped.push_back(status.k); }

  std::vector<Index> rows;
  std::vector<Index> tests;
  std::vector<Index> stepped;
  Index mostSteps = 1000000;
};

/// A reduction of a basis that no lattice owns.
template <class T>
class LllReductionOver : public testing::Test {
 protected:
  void use(const Matrix<T>& rows) {
    basis.reset(&rows, T(1));
    data.resize(basis.n);
  }
  LllReduction<T, long double> reduction() { return {basis, data, recorder, settings}; }
  /// Passes until none skips a test.
  void reduceAll() {
    PassStatus status;
    do {
      status = {1, basis.n, basis.n, 1000};
      reduction().pass(status);
    } while (status.counts.skipped > 0);
  }

  Basis<T, long double> basis;
  GramSchmidtData<long double> data;
  Recorder recorder;
  LllSettings<long double> settings;
};

using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LllReductionOver, Numbers);

TYPED_TEST(LllReductionOver, ReducesABasisThatBelongsToNoLattice) {
  const Matrix<TypeParam> rows{
      {1, 0, 0, 0, 345}, {0, 1, 0, 0, 213}, {0, 0, 1, 0, 879}, {0, 0, 0, 1, 122}};
  this->use(rows);
  this->reduceAll();
  EXPECT_TRUE(this->reduction().isReduced(4));
  EXPECT_THAT(lllViolations(this->basis.B(), QQ(999, 1000), QQ(1, 2)), IsEmpty());
  EXPECT_TRUE(sameLattice(this->basis.B(), rows));
}

TYPED_TEST(LllReductionOver, DeltaDecidesAboutASwap) {
  this->use({{2, 0}, {1, 2}});
  // cLen[2] + mu^2 cLen[1] = 5 against delta * 4.
  PassStatus status{1, 2, 2, 10};
  this->reduction().pass(status);
  EXPECT_EQ(status.counts.swaps, 0);
  this->use({{4, 0}, {2, 3}});
  // 9 + 4 = 13 against delta * 16: 0.81.
  this->settings.delta = 0.8L;
  status = {1, 2, 2, 10};
  this->reduction().pass(status);
  EXPECT_EQ(status.counts.swaps, 0);
  this->use({{4, 0}, {2, 3}});
  this->settings.delta = 0.82L;
  status = {1, 2, 2, 10};
  this->reduction().pass(status);
  EXPECT_GE(status.counts.swaps, 1);
}

TYPED_TEST(LllReductionOver, EtaDecidesAboutSizeReduction) {
  this->use({{10, 0}, {6, 10}});
  this->settings.eta = 0.7L;
  EXPECT_FALSE(this->reduction().sizeReduce(1, false));
  EXPECT_FALSE(this->reduction().sizeReduce(2, false));
  this->use({{10, 0}, {6, 10}});
  this->settings.eta = 0.5L;
  EXPECT_FALSE(this->reduction().sizeReduce(1, false));
  EXPECT_TRUE(this->reduction().sizeReduce(2, false));
  EXPECT_EQ(this->basis.B()[2][1], TypeParam(-4));
}

TYPED_TEST(LllReductionOver, BudgetBoundsTheTestsNotTheWork) {
  this->use({{9, 0, 0}, {0, 6, 0}, {0, 0, 3}});
  PassStatus status{1, 3, 3, 2};
  this->reduction().pass(status);
  EXPECT_EQ(status.counts.tests, 2);
  EXPECT_GT(status.counts.skipped, 0);
  EXPECT_FALSE(this->reduction().isReduced(3));
}

TYPED_TEST(LllReductionOver, VisitorSeesEachRowOnceIfNothingChanges) {
  this->use({{1, 0, 0}, {0, 2, 0}, {0, 0, 3}});
  PassStatus status{1, 3, 3, 10};
  this->reduction().pass(status);
  EXPECT_THAT(this->recorder.rows, ElementsAre(1, 2, 3));
  EXPECT_THAT(this->recorder.stepped, ElementsAre(1, 2, 3));
  EXPECT_EQ(status.counts.tests, 3);
  EXPECT_EQ(status.counts.swaps, 0);
}

TYPED_TEST(LllReductionOver, VisitorEndsAPass) {
  this->use({{9, 0, 0}, {0, 6, 0}, {0, 0, 3}});
  this->recorder.mostSteps = 2;
  PassStatus status{1, 3, 3, 10};
  this->reduction().pass(status);
  EXPECT_EQ(status.counts.tests, 2);
}

TYPED_TEST(LllReductionOver, SwapsLowerThePotential) {
  this->use({{9, 0, 0}, {0, 6, 0}, {0, 0, 3}});
  PassStatus status{1, 3, 3, 0};
  this->reduction().pass(status);
  const long double before = this->reduction().potential(3);
  EXPECT_NEAR(static_cast<double>(before),
              std::log2(81.0) * 3 + std::log2(36.0) * 2 + std::log2(9.0), 1e-9);
  this->reduceAll();
  EXPECT_LT(this->reduction().potential(3), before);
}

TYPED_TEST(LllReductionOver, DependentRowsGoBehindTheOthers) {
  this->use({{1, 0}, {2, 0}, {0, 1}});
  this->reduceAll();
  EXPECT_TRUE(this->reduction().isReduced(3));
  EXPECT_EQ(this->basis.vecStatus[3], ST_DEPENDENT);
}

TEST(NextBudget, DoublesWhereMoreThanATenthWasSkipped) {
  EXPECT_EQ(nextBudget(100, 100, {.tests = 20, .skipped = 3, .swaps = 0}), 200);
  EXPECT_EQ(nextBudget(100, 100, {.tests = 20, .skipped = 2, .swaps = 0}), 100);
  EXPECT_EQ(nextBudget(101, 100, {.tests = 20, .skipped = 0, .swaps = 0}), 100);
  EXPECT_EQ(nextBudget(100, 100, {.tests = 20, .skipped = 0, .swaps = 0}), 100);
}

}  // namespace
}  // namespace starsift
