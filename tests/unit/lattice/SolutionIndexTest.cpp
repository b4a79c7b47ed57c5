// Solutions found again by their coordinates, in an array and in a lattice.
#include "lattice/state/SolutionIndex.h"

#include <gtest/gtest.h>

#include "support/fixtures/CheckVectors.h"
#include "support/fixtures/LatticeOfProblem.h"

namespace starsift {
namespace {

template <class T>
class SolutionIndexOver : public testing::Test {
 protected:
  bool contains(const Vector<T>& vector) { return index.contains(solutions, vector); }
  void file(const Vector<T>& vector) {
    FiledSolution<T> solution;
    static_cast<Vector<T>&>(solution) = vector;
    append(solutions, std::move(solution));
  }

  Array<FiledSolution<T>> solutions;
  SolutionIndex<T> index;
};
TYPED_TEST_SUITE(SolutionIndexOver, test::LatticeNumbers);

TYPED_TEST(SolutionIndexOver, NothingIsAmongNone) {
  EXPECT_FALSE(this->contains({1, 2}));
}

TYPED_TEST(SolutionIndexOver, AppendedSolutionsAreFound) {
  this->file({1, 2});
  EXPECT_TRUE(this->contains({1, 2}));
  EXPECT_FALSE(this->contains({2, 1}));
  this->file({2, 1});
  this->file({-1, -2});
  EXPECT_TRUE(this->contains({1, 2}));
  EXPECT_TRUE(this->contains({2, 1}));
  EXPECT_TRUE(this->contains({-1, -2}));
  EXPECT_FALSE(this->contains({-2, -1}));
}

TYPED_TEST(SolutionIndexOver, ManySolutionsAreFound) {
  for (int i = 1; i <= 300; ++i) {
    EXPECT_FALSE(this->contains({TypeParam(i), TypeParam(i % 7)}));
    this->file({TypeParam(i), TypeParam(i % 7)});
  }
  for (int i = 1; i <= 300; ++i) EXPECT_TRUE(this->contains({TypeParam(i), TypeParam(i % 7)}));
  EXPECT_FALSE(this->contains({TypeParam(1), TypeParam(2)}));
}

TYPED_TEST(SolutionIndexOver, RepeatedSolutionsDoNoHarm) {
  this->file({1, 2});
  this->file({1, 2});
  this->file({3, 4});
  EXPECT_TRUE(this->contains({1, 2}));
  EXPECT_TRUE(this->contains({3, 4}));
}

TYPED_TEST(SolutionIndexOver, OtherSolutionsAreEnteredOnceToldTo) {
  this->file({1, 2});
  this->file({3, 4});
  EXPECT_TRUE(this->contains({3, 4}));
  this->solutions.clear();
  this->file({5, 6});
  this->index.forgetAll();
  EXPECT_FALSE(this->contains({3, 4}));
  EXPECT_FALSE(this->contains({1, 2}));
  EXPECT_TRUE(this->contains({5, 6}));
}

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr const char* band = "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

template <class T>
class SolutionsOfLatticeOver : public test::LatticeOfProblem<T> {
 protected:
  SolutionsOfLatticeOver() {
    this->normalise(band);
    generateByHand(this->live, test::LatticeStage::full);
    this->live.params.sol = 0;
  }

  static unsigned check(Lattice<T, long double>& lattice, int x, int y) {
    Vector<T> vector;
    lattice.opt2lat({T(x), T(y)}, vector, Space::raw, T(1));
    return lattice.checkSolution(vector, Space::raw, 0, Announce::silent) & CHECK_STORED;
  }
  unsigned check(int x, int y) { return check(this->live, x, y); }
};
TYPED_TEST_SUITE(SolutionsOfLatticeOver, test::LatticeNumbers);

TYPED_TEST(SolutionsOfLatticeOver, ManyAreFiledOnceEach) {
  Index points = 0;
  for (int round = 1; round <= 2; ++round)
    for (int x = 0; x <= 5; ++x)
      for (int y = 0; y <= 5; ++y) {
        const bool isPoint = x + 2 * y >= 2 && x + 2 * y <= 9;
        EXPECT_EQ(this->check(x, y), isPoint && round == 1 ? CHECK_STORED : 0U) << x << ' ' << y;
        if (isPoint && round == 1) ++points;
      }
  EXPECT_EQ(this->live.found.solutions.dimension(), points);
}

TYPED_TEST(SolutionsOfLatticeOver, DiscardedOnesAreFiledAgain) {
  EXPECT_EQ(this->check(1, 4), CHECK_STORED);
  EXPECT_EQ(this->check(2, 3), CHECK_STORED);
  this->live.resize(this->live.basis.n, 0, Vectors::discard);
  generateByHand(this->live, test::LatticeStage::full);
  EXPECT_EQ(this->check(2, 3), CHECK_STORED);
  EXPECT_EQ(this->check(1, 4), CHECK_STORED);
  EXPECT_EQ(this->check(2, 3), 0U);
}

TYPED_TEST(SolutionsOfLatticeOver, OnesTakenOutByABackupAreFiledAgain) {
  this->check(1, 4);
  this->check(2, 3);
  const auto backup = this->live.backupVectors(BackupMode::vectors);
  EXPECT_EQ(this->check(2, 3), CHECK_STORED);
  EXPECT_EQ(this->check(1, 4), CHECK_STORED);
}

TYPED_TEST(SolutionsOfLatticeOver, OnesOfAnotherLatticeTakeThePlaceOfTheOwn) {
  Lattice<TypeParam, long double> other;
  other.assignFrom(this->live, Settings::copy);
  EXPECT_EQ(this->check(1, 4), CHECK_STORED);
  EXPECT_EQ(this->check(other, 2, 3), CHECK_STORED);
  EXPECT_EQ(this->check(other, 3, 3), CHECK_STORED);
  other.assignFrom(this->live, Settings::copy);
  EXPECT_EQ(this->check(other, 1, 4), 0U);
  EXPECT_EQ(this->check(other, 2, 3), CHECK_STORED);
  EXPECT_EQ(this->check(other, 3, 3), CHECK_STORED);
}

// Their hashes change with their length.
TYPED_TEST(SolutionsOfLatticeOver, OnesOfAnotherLengthAreKnownAgain) {
  auto& lattice = this->live;
  this->check(1, 4);
  EXPECT_EQ(this->check(1, 4), 0U);
  lattice.resize(lattice.basis.n, lattice.basis.m + 1, Vectors::keep);
  const Vector<TypeParam> longer(lattice.found.solutions[1]);
  EXPECT_EQ(longer.dimension(), lattice.basis.m);
  EXPECT_TRUE(lattice.found.solutionIndex.contains(lattice.found.solutions, longer));
}

}  // namespace
}  // namespace starsift
