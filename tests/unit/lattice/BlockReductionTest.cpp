#include "lattice/reduce/BlockReduction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "certificates/LatticeEquality.h"
#include "certificates/LllViolations.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/QAryBasis.h"

namespace starsift {
namespace {

using std::chrono::milliseconds;
using ::testing::IsEmpty;

/// Counts steps; ends the reduction before one of them.
class Counter : public RowVisitor {
 public:
  void onRow(Index /*k*/) override { ++rows; }
  bool mayStep(const PassStatus& /*status*/) override { return ++steps <= mostSteps; }
  void onStepped(const PassStatus& /*status*/) override {}

  long rows = 0;
  long steps = 0;
  long mostSteps = std::numeric_limits<long>::max();
};

/// The modulus of the q-ary lattices.
constexpr long q = 1009;

template <class T>
class BlockReductionOver : public testing::Test {
 protected:
  void use(const Matrix<T>& rows) {
    basis.reset(&rows, T(1));
    data.resize(basis.n);
    counter = {};
  }
  BlockEnd reduce(Index size) {
    LllReduction<T, long double> lll(basis, data, counter, {});
    BlockReduction<T, long double> blocks(basis, data, counter, lll, settings);
    const BlockEnd end = blocks.run(basis.n, size);
    insertions = blocks.insertions();
    return end;
  }
  /// LLL-reduced, up to rounding: vectors are inserted last, and LLL reduction follows.
  void expectReduced(const Matrix<T>& rows) {
    const QQ rounding(1, 1'000'000'000);
    EXPECT_THAT(lllViolations(basis.B(), QQ(1) - rounding - rounding, QQ(1, 2) + rounding),
                IsEmpty());
    EXPECT_TRUE(sameLattice(basis.B(), rows));
  }
  T firstLength() const { return basis.B()[1] * basis.B()[1]; }

  Basis<T, long double> basis;
  GramSchmidtData<long double> data;
  Counter counter;
  BlockSettings settings;
  std::uint64_t insertions = 0;
};

using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(BlockReductionOver, Numbers);

TYPED_TEST(BlockReductionOver, LargerBlocksLeaveAShorterFirstRow) {
  const auto rows = test::qAryBasis<TypeParam>(30, q);
  this->use(rows);
  EXPECT_EQ(this->reduce(2), BlockEnd::reduced);
  this->expectReduced(rows);
  const TypeParam pairs = this->firstLength();
  EXPECT_EQ(this->reduce(30), BlockEnd::reduced);
  this->expectReduced(rows);
  EXPECT_GT(this->insertions, 0U);
  EXPECT_LT(this->firstLength(), pairs);
}

TYPED_TEST(BlockReductionOver, EveryPruningKeepsTheLattice) {
  const auto rows = test::qAryBasis<TypeParam>(24, q);
  for (const BlockPruning pruning :
       {BlockPruning::linear, BlockPruning::strong, BlockPruning::extreme}) {
    this->use(rows);
    this->settings.pruning = pruning;
    EXPECT_EQ(this->reduce(16), BlockEnd::reduced);
    this->expectReduced(rows);
  }
}

TYPED_TEST(BlockReductionOver, DeepInsertionsKeepTheLattice) {
  const auto rows = test::qAryBasis<TypeParam>(30, q);
  this->use(rows);
  this->settings.deep = true;
  EXPECT_EQ(this->reduce(10), BlockEnd::reduced);
  this->expectReduced(rows);
  EXPECT_GT(this->insertions, 0U);
}

TYPED_TEST(BlockReductionOver, RowsAfterTheCountStay) {
  const auto rows = test::qAryBasis<TypeParam>(20, q);
  this->use(rows);
  LllReduction<TypeParam, long double> lll(this->basis, this->data, this->counter, {});
  BlockReduction<TypeParam, long double> blocks(this->basis, this->data, this->counter, lll,
                                                this->settings);
  EXPECT_EQ(blocks.run(10, 10), BlockEnd::reduced);
  for (Index k = 11; k <= 20; ++k) EXPECT_TRUE(this->basis.B()[k] == rows[k]);
}

TYPED_TEST(BlockReductionOver, FewRowsAreReducedAtOnce) {
  this->use(Matrix<TypeParam>{{2, 1}});
  EXPECT_EQ(this->reduce(20), BlockEnd::reduced);
  this->use(Matrix<TypeParam>());
  EXPECT_EQ(this->reduce(20), BlockEnd::reduced);
}

TYPED_TEST(BlockReductionOver, RowsSpanTheirLatticeWhereverItIsStopped) {
  const auto rows = test::qAryBasis<TypeParam>(14, q);
  this->use(rows);
  this->reduce(14);
  const long all = this->counter.steps;
  for (long steps = 1; steps < all; steps += all / 20 + 1) {
    this->use(rows);
    this->counter.mostSteps = steps;
    EXPECT_EQ(this->reduce(14), BlockEnd::stopped);
    EXPECT_LE(this->counter.steps, steps + 2);
    EXPECT_TRUE(sameLattice(this->basis.B(), rows));
  }
}

TYPED_TEST(BlockReductionOver, EndsWhenTheTimeOfAllEnumerationsIsOver) {
  const auto rows = test::qAryBasis<TypeParam>(30, q);
  this->use(rows);
  this->settings.totalTime = milliseconds(0);
  EXPECT_EQ(this->reduce(30), BlockEnd::time);
  this->expectReduced(rows);
}

// The first thousand nodes of a block take no time.
TYPED_TEST(BlockReductionOver, BlocksThatTakeTooLongAreLeft) {
  const auto rows = test::qAryBasis<TypeParam>(34, q);
  this->use(rows);
  this->settings.blockTime = milliseconds(0);
  EXPECT_EQ(this->reduce(34), BlockEnd::reduced);
  this->expectReduced(rows);
  const TypeParam hurried = this->firstLength();
  this->settings.blockTime.reset();
  EXPECT_EQ(this->reduce(34), BlockEnd::reduced);
  EXPECT_LE(this->firstLength(), hurried);
}

TYPED_TEST(BlockReductionOver, EveryRowThatChangesIsShown) {
  this->use(test::qAryBasis<TypeParam>(20, q));
  this->reduce(2);
  this->counter = {};
  this->reduce(20);
  EXPECT_GE(this->counter.rows, static_cast<long>(this->insertions));
}

}  // namespace
}  // namespace starsift
