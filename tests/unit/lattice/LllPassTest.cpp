#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <vector>

#include "certificates/LatticeEquality.h"
#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "numbers/QQFunctions.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/ReducedBasis.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::rowsText;

/// Remembers the counts ahead of each step; throws ahead of one of them.
class Recorder : public ReductionObserver {
 public:
  explicit Recorder(std::size_t last = 0) : last_(last) {}
  void onStep(const PassCounts& counts) override {
    tests.push_back(counts.tests);
    if (tests.size() == last_) throw std::runtime_error("enough");
  }

  std::vector<Index> tests;

 private:
  std::size_t last_;
};

/// Ends the search ahead of a step.
template <class T>
class Stopper : public ReductionObserver {
 public:
  Stopper(Lattice<T, long double>& lattice, Index step) : lattice_(&lattice), rest_(step) {}
  void onStep(const PassCounts& /*counts*/) override {
    if (--rest_ == 0) lattice_->run.runVariables[MainMutexVariable::runState].set("stopped");
  }

 private:
  Lattice<T, long double>* lattice_;
  Index rest_;
};

/// Swaps the first two of three vectors again before each pass makes its last step.
template <class T>
class Undoer : public ReductionObserver {
 public:
  explicit Undoer(Lattice<T, long double>& lattice) : lattice_(lattice) {}

  void onStep(const PassCounts& counts) override {
    if (counts.tests == 0) ++passes;
    if (counts.tests == 2 + 2 * counts.swaps) lattice_.swapBasisVectors(1, 2, RowStatus::forget);
  }

  Index passes = 0;

 private:
  Lattice<T, long double>& lattice_;
};

template <class T>
class LllPassOver : public test::FreshConsole {
 protected:
  void use(const Matrix<T>& basis) {
    lattice.reset(&basis, LatPath::keep);
    test::allowChecks(lattice);
  }

  void expectWord(StatusWord bits) {
    for (Index k = 1; k <= lattice.basis.n; ++k)
      EXPECT_TRUE(carries(lattice.basis.vecStatus[k], bits)) << k;
  }

  const Matrix<T> rows{{19, 2, 32, 46, 3, 33},
                       {15, 42, 11, 0, 3, 24},
                       {43, 15, 0, 24, 4, 16},
                       {20, 44, 44, 0, 18, 15},
                       {0, 48, 35, 16, 31, 31}};
  Lattice<T, long double> lattice;
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LllPassOver, NumberTypes);

TYPED_TEST(LllPassOver, PassReducesTheVectors) {
  this->use(this->rows);
  EXPECT_EQ(this->lattice.lllPass(1, 0, 0), 1);
  EXPECT_TRUE(test::isReduced(this->lattice.basis.B()));
  EXPECT_TRUE(sameLattice(this->lattice.basis.B(), this->rows));
  EXPECT_EQ(this->lattice.run.lastPass.skipped, 0);
}

TYPED_TEST(LllPassOver, PassTestsEachVectorOfAReducedBasisOnce) {
  this->use(Matrix<TypeParam>::identity(3));
  this->lattice.lllPass(1, 3, 3);
  EXPECT_EQ(this->lattice.run.lastPass.tests, 3);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 1 0 ] [ 0 0 1 ]");
  this->expectWord(ST_SIZE_REDUCED | ST_SWAP_CHECKED);
}

TYPED_TEST(LllPassOver, VectorsCheckedBeforeArePassedOver) {
  this->use({{5, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  EXPECT_TRUE(this->lattice.classicOrthogonalise(1, 3));
  this->lattice.basis.vecStatus[2] |= ST_SWAP_CHECKED;
  this->lattice.basis.vecStatus[3] |= ST_SWAP_CHECKED;
  this->lattice.lllPass(1, 3, 3);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 5 0 0 ] [ 0 1 0 ] [ 0 0 1 ]");
  EXPECT_EQ(this->lattice.run.lastPass.tests, 1);
}

TYPED_TEST(LllPassOver, PassCountsTheTestsThatEndInAnExchange) {
  this->use({{3, 0, 0}, {0, 2, 0}, {0, 0, 1}});
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 0 0 1 ] [ 0 2 0 ] [ 3 0 0 ]");
  EXPECT_EQ(this->lattice.run.lastPass.swaps, 3);
  EXPECT_GT(this->lattice.run.lastPass.tests, 3);
}

TYPED_TEST(LllPassOver, DeepInsertionCountsAsOneExchange) {
  this->use({{1, 0, 0, 0}, {0, 5, 0, 0}, {0, 0, 6, 0}, {0, 0, 0, 2}});
  this->lattice.params.deep = true;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 0 ] [ 0 0 0 2 ] [ 0 5 0 0 ] [ 0 0 6 0 ]");
  EXPECT_EQ(this->lattice.run.lastPass.swaps, 1);
}

TYPED_TEST(LllPassOver, SecondPassHasNothingToDo) {
  this->use(this->rows);
  this->lattice.lllPass(1, 0, 0);
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(this->lattice.run.lastPass.tests, 0);
  EXPECT_EQ(this->lattice.run.lastPass.skipped, 0);
}

TYPED_TEST(LllPassOver, PassLeavesVectorsBehindItsRange) {
  this->use({{5, 0, 0}, {0, 4, 0}, {7, 9, 1}});
  this->lattice.lllPass(1, 2, 2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 0 4 0 ] [ 5 0 0 ] [ 7 9 1 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[3], 0);
}

TYPED_TEST(LllPassOver, PassMayBeginFurtherBehind) {
  this->use({{1, 0, 0}, {0, 5, 0}, {0, 0, 4}});
  EXPECT_TRUE(this->lattice.classicOrthogonalise(1, 2));
  EXPECT_EQ(this->lattice.lllPass(3, 0, 0), 3);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 0 4 ] [ 0 5 0 ]");
  EXPECT_FALSE(carries(this->lattice.basis.vecStatus[1], ST_SIZE_REDUCED));
}

TYPED_TEST(LllPassOver, EmptyRangeOnlyLowersTheBudget) {
  this->use({{1, 0}, {9, 1}});
  this->lattice.run.swapBudget = 150;
  EXPECT_EQ(this->lattice.lllPass(2, 1, 2), 2);
  EXPECT_EQ(this->lattice.run.swapBudget, 149);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 ] [ 9 1 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[2], 0);
}

TYPED_TEST(LllPassOver, BudgetStaysAboveItsFloor) {
  this->use({{1, 0}, {9, 1}});
  EXPECT_EQ(this->lattice.run.swapBudget, 100);
  this->lattice.lllPass(2, 1, 2);
  EXPECT_EQ(this->lattice.run.swapBudget, 100);
}

TYPED_TEST(LllPassOver, SpentBudgetLeavesVectorsWhereTheyAre) {
  this->use({{1, 0, 0}, {4, 9, 0}, {1, 5, 1}});
  this->lattice.run.swapBudget = 1;
  this->lattice.lllPass(1, 0, 0);
  // Reduced in size, though not exchanged.
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 9 0 ] [ 0 -4 1 ]");
  EXPECT_EQ(this->lattice.run.lastPass.tests, 1);
  EXPECT_EQ(this->lattice.run.lastPass.skipped, 2);
  EXPECT_FALSE(carries(this->lattice.basis.vecStatus[2], ST_SWAP_CHECKED));
}

TYPED_TEST(LllPassOver, BudgetStaysWhileATenthIsSkipped) {
  this->use(Matrix<TypeParam>::identity(11));
  this->lattice.run.swapBudget = 10;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(this->lattice.run.lastPass.skipped, 1);
  EXPECT_EQ(this->lattice.run.swapBudget, 10);
}

TYPED_TEST(LllPassOver, BudgetDoublesWhenMoreThanATenthIsSkipped) {
  this->use(Matrix<TypeParam>::identity(12));
  this->lattice.run.swapBudget = 10;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(this->lattice.run.lastPass.skipped, 2);
  EXPECT_EQ(this->lattice.run.swapBudget, 20);
}

TYPED_TEST(LllPassOver, BudgetAboveItsFloorFallsWhenNothingIsSkipped) {
  this->use(Matrix<TypeParam>::identity(3));
  this->lattice.run.swapBudget = 102;
  this->lattice.lllPass(1, 0, 0);
  this->lattice.lllPass(1, 0, 0);
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(this->lattice.run.swapBudget, 100);
}

TYPED_TEST(LllPassOver, ZeroVectorsEndBehindTheOthers) {
  this->use({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 1 0 ] [ 0 0 1 ] [ 0 0 0 ] [ 0 0 0 ]");
}

TYPED_TEST(LllPassOver, DependentVectorsEndBehindTheOthers) {
  this->use({{1, 0, 0}, {3, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 1 0 ] [ 0 0 1 ] [ 3 0 0 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[4], ST_DEPENDENT);
}

TYPED_TEST(LllPassOver, DependentVectorsMoveNoFurtherThanTheyMay) {
  this->use({{1, 0, 0}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  this->lattice.lllPass(1, 3, 3);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 1 0 ] [ 0 0 0 ] [ 0 0 1 ]");
}

TYPED_TEST(LllPassOver, PassEndsWhereOnlyDependentVectorsFollow) {
  this->use({{1, 0}, {0, 0}, {0, 0}});
  this->lattice.run.swapBudget = 101;
  EXPECT_EQ(this->lattice.lllPass(1, 0, 0), 1);
  EXPECT_EQ(this->lattice.run.lastPass.tests, 1);
  // The budget is for the next pass, however this one ended.
  EXPECT_EQ(this->lattice.run.swapBudget, 100);
}

TYPED_TEST(LllPassOver, DependentVectorsLoseTheirProtectionWithThePass) {
  this->use({{1, 0}, {0, 0}, {0, 1}});
  this->lattice.lllPass(1, 0, 0);
  EXPECT_FALSE(this->lattice.basis.keepDependent);
}

TYPED_TEST(LllPassOver, MovedVectorMakesTheRestStrict) {
  this->use({{4, 4, 4, 0}, {0, 0, 0, 0}, {7, 7, -5, 0}});
  bool strict = false;
  EXPECT_TRUE(this->lattice.lllStep(1, 3, strict));
  EXPECT_FALSE(strict);
  EXPECT_TRUE(this->lattice.lllStep(2, 3, strict));
  EXPECT_TRUE(strict);
  // (3, 3, -9, 0) would be shorter, but has a greater coordinate.
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 4 4 4 0 ] [ 7 7 -5 0 ] [ 0 0 0 0 ]");
}

TYPED_TEST(LllPassOver, StrictnessOfAPassLastsToItsEnd) {
  const Matrix<TypeParam> dependent{{0, 0, 0, 0}, {4, 4, 4, 0}, {7, 7, -5, 0}};
  this->use(dependent);
  this->lattice.run.swapBudget = 0;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 4 4 4 0 ] [ 7 7 -5 0 ] [ 0 0 0 0 ]");
}

TYPED_TEST(LllPassOver, StepReducesAllVectorsUpToItsOwn) {
  this->use({{1, 0, 0, 0}, {0, 4, 0, 0}, {0, 2, 0, 0}});
  EXPECT_TRUE(this->lattice.classicOrthogonalise(1, 2));
  bool strict = false;
  // The dependent vector goes to position 2, and what was there depends on it.
  EXPECT_FALSE(this->lattice.lllStep(3, 3, strict));
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 0 ] [ 0 2 0 0 ] [ 0 4 0 0 ]");
  EXPECT_TRUE(carries(this->lattice.basis.vecStatus[2], ST_MU));
  EXPECT_EQ(this->lattice.basis.vecStatus[3], ST_DEPENDENT);
  EXPECT_FALSE(strict);
}

TYPED_TEST(LllPassOver, StepProtectsDependentVectorsButForTheFirst) {
  this->use({{1, 0}, {0, 1}});
  bool strict = false;
  EXPECT_TRUE(this->lattice.lllStep(1, 2, strict));
  EXPECT_FALSE(this->lattice.basis.keepDependent);
  EXPECT_TRUE(this->lattice.lllStep(2, 2, strict));
  EXPECT_TRUE(this->lattice.basis.keepDependent);
}

TYPED_TEST(LllPassOver, DeepInsertionIsUsedWhereAskedFor) {
  const Matrix<TypeParam> squares{{1, 0, 0, 0}, {0, 9, 0, 0}, {0, 0, 8, 0}, {0, 0, 0, 2}};
  this->use(squares);
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(this->lattice.run.deepInsertions, 0);
  this->use(squares);
  this->lattice.params.deep = true;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 0 ] [ 0 0 0 2 ] [ 0 0 8 0 ] [ 0 9 0 0 ]");
  EXPECT_EQ(this->lattice.run.deepInsertions, 2);
}

TYPED_TEST(LllPassOver, DeepInsertionLeavesTheFirstPositionToTheSorting) {
  const Matrix<TypeParam> squares{{9, 0, 0}, {0, 1, 0}, {0, 0, 2}};
  this->use(squares);
  this->lattice.params.deep = true;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 9 0 0 ] [ 0 1 0 ] [ 0 0 2 ]");
  this->use(squares);
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 0 1 0 ] [ 0 0 2 ] [ 9 0 0 ]");
}

TYPED_TEST(LllPassOver, ObserverHearsAheadOfEachStep) {
  this->use(Matrix<TypeParam>::identity(3));
  Recorder recorder;
  this->lattice.run.observer = &recorder;
  this->lattice.lllPass(1, 0, 0);
  EXPECT_EQ(recorder.tests, (std::vector<Index>{0, 1, 2}));
}

TYPED_TEST(LllPassOver, ObserverMayEndThePassByAnException) {
  this->use(this->rows);
  Recorder recorder(4);
  this->lattice.run.observer = &recorder;
  EXPECT_THROW(this->lattice.lllPass(1, 0, 0), std::runtime_error);
  EXPECT_EQ(recorder.tests.size(), 4U);
  EXPECT_FALSE(this->lattice.basis.keepDependent);
  EXPECT_TRUE(sameLattice(this->lattice.basis.B(), this->rows));
  this->lattice.run.observer = nullptr;
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(this->lattice.basis.B()));
}

TYPED_TEST(LllPassOver, StoppedSearchEndsThePassAtTheLowestVector) {
  this->use({{1, 0, 0}, {0, 5, 0}, {0, 0, 4}});
  EXPECT_TRUE(this->lattice.classicOrthogonalise(1, 2));
  Stopper<TypeParam> stopper(this->lattice, 2);
  this->lattice.run.observer = &stopper;
  EXPECT_EQ(this->lattice.lllPass(3, 0, 0), 2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 0 4 ] [ 0 5 0 ]");
  EXPECT_EQ(this->lattice.run.lastPass.tests, 1);
  // Nothing behind is brought up to date any more.
  EXPECT_EQ(this->lattice.basis.vecStatus[3], 0);
}

TYPED_TEST(LllPassOver, StoppedSearchEndsTheReduction) {
  this->use(this->rows);
  Stopper<TypeParam> stopper(this->lattice, 3);
  this->lattice.run.observer = &stopper;
  EXPECT_FALSE(this->lattice.reduce(0));
  EXPECT_EQ(this->lattice.run.lastPass.tests, 2);
  EXPECT_TRUE(sameLattice(this->lattice.basis.B(), this->rows));
}

TYPED_TEST(LllPassOver, PassSaysWhereItIsAfterAnHourOfSilence) {
  this->use(Matrix<TypeParam>::identity(3));
  this->lattice.params.verb = 2;
  const auto pass = [this]() { this->lattice.lllPass(1, 2, 3); };
  // The first line is the last for an hour.
  EXPECT_EQ(this->consoleOf(pass), "|-> lll status: k = 1 (m = 2), strict = 0, swaps = 0 / 100\n");
}

TYPED_TEST(LllPassOver, PassIsSilentUnlessAskedForDetails) {
  this->use(Matrix<TypeParam>::identity(3));
  this->lattice.params.verb = 1;
  const auto pass = [this]() { this->lattice.lllPass(1, 2, 3); };
  EXPECT_EQ(this->consoleOf(pass), "");
  this->lattice.params.verb = 2;
  consoleState().lastOutputTime = std::time(nullptr) - 3000;
  EXPECT_EQ(this->consoleOf(pass), "");
}

TYPED_TEST(LllPassOver, ReductionIsCompleteWhateverTheBudgetOfAPass) {
  this->use(this->rows);
  this->lattice.run.swapBudget = 1;
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(this->lattice.basis.B()));
  EXPECT_TRUE(sameLattice(this->lattice.basis.B(), this->rows));
  EXPECT_EQ(this->lattice.run.swapBudget, 1);
}

TYPED_TEST(LllPassOver, ReductionGivesUpAfterTwentyPassesThatGainNothing) {
  this->use({{1, 0, 0}, {0, 5, 0}, {0, 0, 9}});
  Undoer<TypeParam> undoer(this->lattice);
  this->lattice.run.observer = &undoer;
  EXPECT_FALSE(this->lattice.reduce(0));
  EXPECT_EQ(undoer.passes, 20);
}

TYPED_TEST(LllPassOver, ReductionOfSomeVectorsLeavesTheOthers) {
  this->use({{5, 0, 0}, {0, 4, 0}, {7, 9, 1}});
  EXPECT_TRUE(this->lattice.reduce(2));
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 0 4 0 ] [ 5 0 0 ] [ 7 9 1 ]");
}

TYPED_TEST(LllPassOver, ReductionOfDependentVectorsSucceeds) {
  this->use({{0, 0}, {1, 7}, {2, 14}, {0, 3}});
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(this->lattice.basis.B()));
}

// Once strict, a pass leaves the second vector as long as it has the smaller coordinates.
TYPED_TEST(LllPassOver, ReductionLeavesNoCoefficientBehindAStrictPass) {
  this->use({{4, 4, 4}, {0, 0, 0}, {7, 7, -5}});
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(this->lattice.basis.B())) << rowsText(this->lattice.basis.B());
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 4 4 4 ] [ 3 3 -9 ] [ 0 0 0 ]");
}

// Deep insertion leaves the first two vectors as they are sorted.
TYPED_TEST(LllPassOver, ReductionAsksAnewWhatDeepInsertionDidNot) {
  this->use({{7, 0}, {5, 5}});
  this->lattice.params.deep = true;
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_FALSE(test::isReduced(this->lattice.basis.B()));
  this->lattice.params.deep = false;
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_TRUE(test::isReduced(this->lattice.basis.B()));
}

/// f * q * (1, 2, ..., 8) and small noise in each row, for q of so many bits: nearly
/// dependent.
Matrix<QQ> nearlyDependentRows(unsigned bits, std::mt19937_64& random) {
  constexpr Index n = 8;
  const auto below = [&random](std::int64_t bound) {
    return static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(bound));
  };
  const QQ q = pow(QQ(2), QQ(static_cast<std::int64_t>(bits))) + QQ(below(1000));
  Matrix<QQ> rows(n, n);
  for (Vector<QQ>& row : rows) {
    const QQ common = QQ(1 + below(1000)) * q;
    for (Index j = 1; j <= n; ++j) row[j] = common * QQ(j) + QQ(below(7) - 3);
  }
  return rows;
}

TEST(Reduction, NearlyDependentRowsAreReducedWhereItSaysSo) {
  std::mt19937_64 random(1);
  Index reduced = 0;
  for (int i = 1; i <= 60; ++i) {
    const Matrix<QQ> rows = nearlyDependentRows(57U + static_cast<unsigned>(i % 3), random);
    Lattice<QQ, long double> lattice(&rows);
    test::allowChecks(lattice);
    if (!lattice.reduce(0)) continue;
    ++reduced;
    EXPECT_TRUE(test::isReduced(lattice.basis.B())) << i;
    EXPECT_TRUE(sameLattice(lattice.basis.B(), rows)) << i;
  }
  EXPECT_GE(reduced, 50);
}

// In long double both have the direction (1, 2).
TEST(Reduction, RowsThatOnlySeemDependentAreNotTakenForReduced) {
  const QQ large = pow(QQ(2), QQ(80));
  const Matrix<QQ> rows{{large + QQ(1), large + large}, {large, large + large + QQ(1)}};
  Lattice<QQ, long double> lattice(&rows);
  test::allowChecks(lattice);
  const bool said = lattice.reduce(0);
  EXPECT_EQ(said, test::isReduced(lattice.basis.B()));
  EXPECT_TRUE(sameLattice(lattice.basis.B(), rows));
}

// In long double the second row is (2^66, 2^66), orthogonal to the first one.
TEST(Reduction, CoefficientsOfLongRowsAreNotTakenFromRoundedOnes) {
  const QQ large = pow(QQ(2), QQ(66));
  const Matrix<QQ> rows{{QQ(1), QQ(-1)}, {large + QQ(2), large}};
  Lattice<QQ, long double> lattice(&rows);
  test::allowChecks(lattice);
  EXPECT_TRUE(lattice.reduce(0));
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 1 -1 ] [ 73786976294838206465 73786976294838206465 ]");
}

TYPED_TEST(LllPassOver, ReductionIsTrackedWhereAskedFor) {
  this->use(this->rows);
  this->lattice.params.consistency = true;
  EXPECT_TRUE(this->lattice.reduce(0));
  const Matrix<TypeParam> product = this->lattice.basis.TT[1] * this->lattice.basis.B_save;
  EXPECT_EQ(rowsText(product), rowsText(this->lattice.basis.B()));
}

TYPED_TEST(LllPassOver, EmptyBasisIsReduced) {
  this->use(Matrix<TypeParam>());
  EXPECT_TRUE(this->lattice.reduce(0));
  EXPECT_EQ(this->lattice.lllPass(1, 0, 0), 1);
}

}  // namespace
}  // namespace starsift
