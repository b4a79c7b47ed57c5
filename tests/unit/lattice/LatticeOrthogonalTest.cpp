#include <gtest/gtest.h>

#include <cmath>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/OrthogonalWays.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::allWays;
using test::change;
using test::expectDone;
using test::expectVectors;
using test::LatticeOver;
using test::orthogonalise;
using test::tenth;
using test::Way;
using test::wordOf;

template <class T>
class OrthogonalOver : public testing::Test {
 protected:
  static Matrix<T> of(std::initializer_list<std::initializer_list<int>> rows) {
    Matrix<T> matrix(static_cast<Index>(rows.size()), static_cast<Index>(rows.begin()->size()));
    Index i = 0;
    for (const auto& row : rows) std::copy(row.begin(), row.end(), matrix[++i].begin());
    return matrix;
  }

  /// Entries up to `bound`, always the same ones.
  static Matrix<T> someRows(Index rows, Index columns, int bound) {
    Matrix<T> matrix(rows, columns);
    unsigned state = 1;
    for (Vector<T>& row : matrix)
      for (T& entry : row) {
        state = state * 1664525U + 1013904223U;
        entry = T(static_cast<int>(state >> 8U) % (2 * bound + 1) - bound);
      }
    return matrix;
  }

  /// Each way on a fresh lattice says `dependent`, and is right up to there.
  static void expectAll(const Matrix<T>& basis, Index dependent, const mpq_class& bound) {
    for (const Way way : allWays) {
      LatticeOver<T> lattice(&basis);
      EXPECT_EQ(orthogonalise(lattice, way), dependent);
      const Index done = dependent == 0 ? lattice.basis.n : dependent - 1;
      expectDone(lattice, done, bound);
      expectVectors(lattice, bound);
      for (Index k = 1; k <= done; ++k) EXPECT_EQ(lattice.basis.vecStatus[k], wordOf(way));
      for (Index k = done + 2; k <= lattice.basis.n; ++k) EXPECT_EQ(lattice.basis.vecStatus[k], 0);
      if (dependent == 0) continue;
      EXPECT_EQ(lattice.basis.vecStatus[dependent], ST_DEPENDENT);
      EXPECT_LE(std::abs(lattice.gramSchmidt.cLen[dependent]), eps);
    }
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(OrthogonalOver, LatticeNumbers);

TYPED_TEST(OrthogonalOver, AllWaysOrthogonaliseIndependentRows) {
  this->expectAll(this->of({{3, 4, 0}, {4, 3, 1}, {1, 1, 7}}), 0, tenth(17));
  this->expectAll(this->someRows(8, 10, 99), 0, tenth(15));
  this->expectAll(this->of({{-5}}), 0, 0);
}

TYPED_TEST(OrthogonalOver, AllWaysFindEqualRows) {
  this->expectAll(this->of({{1, 2, 3}, {1, 2, 3}, {0, 0, 1}}), 2, tenth(17));
}

TYPED_TEST(OrthogonalOver, AllWaysFindARowThatIsASum) {
  this->expectAll(this->of({{1, 2, 3, 0}, {4, 5, 6, 1}, {5, 7, 9, 1}, {1, 0, 0, 0}}), 3, tenth(16));
}

TYPED_TEST(OrthogonalOver, AllWaysFindAZeroRow) {
  this->expectAll(this->of({{0, 0}, {1, 0}}), 1, 0);
  this->expectAll(this->of({{1, 0}, {0, 0}}), 2, 0);
  this->expectAll(this->of({{0}}), 1, 0);
}

TYPED_TEST(OrthogonalOver, AllWaysFindTheFirstRowThatHasNoColumnLeft) {
  this->expectAll(this->of({{1, 2}, {3, 4}, {5, 7}, {8, 8}}), 3, tenth(17));
}

TYPED_TEST(OrthogonalOver, AllWaysDoNothingWithoutRows) {
  LatticeOver<TypeParam> lattice;
  for (const Way way : allWays) EXPECT_EQ(orthogonalise(lattice, way), 0);
}

TYPED_TEST(OrthogonalOver, AllWaysKeepToTheirRange) {
  const Matrix<TypeParam> basis = this->someRows(5, 6, 9);
  for (const Way way : allWays) {
    LatticeOver<TypeParam> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way, 1, 2), 0);
    EXPECT_EQ(lattice.basis.vecStatus[3], 0);
    EXPECT_EQ(lattice.gramSchmidt.cLen[3], 0);
    EXPECT_EQ(orthogonalise(lattice, way, 3, 4), 0);
    expectDone(lattice, 4, tenth(16));
    expectVectors(lattice, tenth(16));
    EXPECT_EQ(lattice.basis.vecStatus[5], 0);
  }
}

TYPED_TEST(OrthogonalOver, AllWaysSeeAChangedRow) {
  const Matrix<TypeParam> basis = this->someRows(5, 6, 9);
  for (const Way way : allWays) {
    LatticeOver<TypeParam> lattice(&basis);
    orthogonalise(lattice, way);
    change(lattice, 3, Vector<TypeParam>{1, 0, 0, 0, 0, 5});
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 5, tenth(15));
    expectVectors(lattice, tenth(15));
  }
}

TYPED_TEST(OrthogonalOver, AllWaysGoOnBehindADependencyThatWasRemoved) {
  for (const Way way : allWays) {
    const Matrix<TypeParam> basis = this->of({{1, 2, 3}, {2, 4, 6}, {0, 0, 1}});
    LatticeOver<TypeParam> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way), 2);
    change(lattice, 2, Vector<TypeParam>{2, 4, 7});
    change(lattice, 3, Vector<TypeParam>{2, 5, 7});
    lattice.basis.vecStatus[2] = ST_DEPENDENT;
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 3, tenth(15));
    EXPECT_EQ(lattice.basis.vecStatus[2], wordOf(way));
  }
}

TYPED_TEST(OrthogonalOver, ClassicSkipsRowsThatAreDone) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.classicOrthogonalise(1, 0);
  lattice.gramSchmidt.cLen[1] = 7;
  lattice.classicOrthogonalise(1, 0);
  EXPECT_EQ(lattice.gramSchmidt.cLen[1], 7);
}

TYPED_TEST(OrthogonalOver, ClassicKeepsTheOtherBitsOfAWord) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.basis.vecStatus[1] = ST_SWAP_CHECKED;
  lattice.classicOrthogonalise(1, 1);
  EXPECT_EQ(lattice.basis.vecStatus[1], 0x42);
}

TYPED_TEST(OrthogonalOver, FactorisationsAssignTheWholeWord) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  for (const Way way : {Way::modified, Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    lattice.basis.vecStatus[1] = ST_SWAP_CHECKED;
    orthogonalise(lattice, way);
    EXPECT_EQ(lattice.basis.vecStatus[1], wordOf(way));
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsSkipRowsThatAreDone) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  for (const Way way : {Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    orthogonalise(lattice, way);
    lattice.gramSchmidt.cLen[1] = 7;
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    EXPECT_EQ(lattice.gramSchmidt.cLen[1], 7);
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsStoreNoRowBeforeTheFirst) {
  const Matrix<TypeParam> basis = this->someRows(4, 5, 9);
  for (const Way way : {Way::modified, Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    lattice.classicOrthogonalise(1, 2);
    lattice.gramSchmidt.cLen[2] = 7;
    EXPECT_EQ(orthogonalise(lattice, way, 3, 0), 0);
    EXPECT_EQ(lattice.gramSchmidt.cLen[2], 7);
    EXPECT_EQ(lattice.basis.vecStatus[2], ST_MU);
    EXPECT_EQ(lattice.basis.vecStatus[3], wordOf(way));
    // The rows that were not stored are made again.
    EXPECT_EQ(orthogonalise(lattice, way, 1, 0), 0);
    expectDone(lattice, 4, tenth(15));
    expectVectors(lattice, tenth(15));
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsTellADependencyBeforeTheFirstRow) {
  const Matrix<TypeParam> basis = this->of({{1, 2, 3}, {2, 4, 6}, {0, 0, 1}});
  for (const Way way : {Way::modified, Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way, 3, 0), 2);
    EXPECT_EQ(lattice.basis.vecStatus[2], ST_DEPENDENT);
    EXPECT_EQ(lattice.basis.vecStatus[3], 0);
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsMayEndTheProgramAtADependency) {
  const Matrix<TypeParam> basis = this->of({{1, 2}, {2, 4}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(1, 0, OnDependency::fail, LqCache::bypass),
                    "Linear dependency detected - remove these first!");
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(1, 0, OnDependency::fail, LqCache::use),
                    "Linear dependency detected - remove these first!");
  EXPECT_FAILS_WITH(lattice.fullOrthogonalise(1, 0, OnDependency::fail),
                    "Linear dependency detected - remove first!");
}

TYPED_TEST(OrthogonalOver, FullMayEndTheProgramAtTooManyRows) {
  const Matrix<TypeParam> basis = this->of({{1}, {2}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_EQ(lattice.fullOrthogonalise(1, 1, OnDependency::fail), 0);
  EXPECT_FAILS_WITH(lattice.fullOrthogonalise(1, 2, OnDependency::fail),
                    "Linear dependency detected - remove first!");
}

TYPED_TEST(OrthogonalOver, FactorisationsMayContinueWithoutADependency) {
  const Matrix<TypeParam> basis = this->of({{1, 2}, {2, 5}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_EQ(lattice.modifiedOrthogonalise(1, 0, OnDependency::fail, LqCache::use), 0);
  EXPECT_EQ(lattice.fullOrthogonalise(1, 0, OnDependency::fail), 0);
}

TYPED_TEST(OrthogonalOver, FullTurnsTheVectorsInTheDirectionOfTheRows) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.fullOrthogonalise(1, 0, OnDependency::report);
  EXPECT_TRUE(lattice.gramSchmidt.Q[1] == (Vector<long double>{3, 4}));
  EXPECT_TRUE(lattice.gramSchmidt.Q[2] == (Vector<long double>{1.12L, -0.84L}));
  EXPECT_EQ(lattice.gramSchmidt.Q.rowCount(), 2);
}

TYPED_TEST(OrthogonalOver, FullSizesItsFactorToTheShorterSide) {
  const Matrix<TypeParam> wide = this->of({{3, 4, 1}, {4, 3, 1}});
  LatticeOver<TypeParam> lattice(&wide);
  lattice.fullOrthogonalise(1, 0, OnDependency::report);
  EXPECT_EQ(lattice.gramSchmidt.Q.rowCount(), 2);
  EXPECT_EQ(lattice.gramSchmidt.Q.columnCount(), 3);
  const Matrix<TypeParam> tall = this->of({{1}, {2}, {3}});
  lattice.reset(&tall, LatPath::keep);
  lattice.fullOrthogonalise(1, 0, OnDependency::report);
  EXPECT_EQ(lattice.gramSchmidt.Q.rowCount(), 1);
}

TYPED_TEST(OrthogonalOver, RowsThatTheFullWayTookAreMadeAnewByTheCachedOne) {
  const Matrix<TypeParam> basis = this->someRows(6, 7, 9);
  LatticeOver<TypeParam> lattice(&basis);
  orthogonalise(lattice, Way::cached);
  orthogonalise(lattice, Way::full, 1, 3);
  EXPECT_EQ(lattice.basis.vecStatus[3], 0x0e);
  EXPECT_FALSE(carries(lattice.basis.vecStatus[4], ST_Q));
  EXPECT_TRUE(carries(lattice.basis.vecStatus[4], ST_MU));
  expectVectors(lattice, tenth(15));
  orthogonalise(lattice, Way::cached, 4, 6);
  EXPECT_EQ(lattice.basis.vecStatus[6], 0x16);
  orthogonalise(lattice, Way::cached);
  expectDone(lattice, 6, tenth(15));
  expectVectors(lattice, tenth(15));
}

TYPED_TEST(OrthogonalOver, RowsThatTheCachedWayTookAreMadeAnewByTheFullOne) {
  const Matrix<TypeParam> basis = this->someRows(6, 7, 9);
  LatticeOver<TypeParam> lattice(&basis);
  orthogonalise(lattice, Way::full);
  orthogonalise(lattice, Way::cached, 1, 3);
  EXPECT_FALSE(carries(lattice.basis.vecStatus[4], ST_Q));
  expectVectors(lattice, tenth(15));
  orthogonalise(lattice, Way::full);
  expectDone(lattice, 6, tenth(15));
  expectVectors(lattice, tenth(15));
}

TYPED_TEST(OrthogonalOver, WayWithoutCacheLeavesTheFactorsOfOthers) {
  const Matrix<TypeParam> basis = this->someRows(6, 7, 9);
  for (const Way way : {Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    orthogonalise(lattice, way, 1, 4);
    orthogonalise(lattice, Way::modified, 5, 6);
    EXPECT_EQ(lattice.basis.vecStatus[4], wordOf(way));
    EXPECT_EQ(lattice.basis.vecStatus[6], 0x02);
    expectVectors(lattice, tenth(15));
    orthogonalise(lattice, way);
    expectDone(lattice, 6, tenth(15));
    expectVectors(lattice, tenth(15));
  }
}

TYPED_TEST(OrthogonalOver, AnyMixtureOfWaysEndsRight) {
  const Matrix<TypeParam> basis = this->someRows(6, 7, 9);
  LatticeOver<TypeParam> lattice(&basis);
  unsigned state = 7;
  const auto below = [&state](Index bound) {
    state = state * 1664525U + 1013904223U;
    return static_cast<Index>(state >> 16U) % bound;
  };
  for (int round = 0; round < 200; ++round) {
    if (below(3) == 0) {
      const Index k = 1 + below(6);
      Vector<TypeParam> row(7);
      for (TypeParam& entry : row) entry = TypeParam(static_cast<int>(below(19)) - 9);
      change(lattice, k, row);
    }
    const Way way = allWays[below(4)];
    // The classic way takes the rows before the first for done.
    const Index from = way == Way::classic ? 1 : 1 + below(6);
    const Index to = from + below(7 - from);
    ASSERT_EQ(orthogonalise(lattice, way, from, to), 0);
    ASSERT_TRUE(carries(lattice.basis.vecStatus[to], ST_MU));
    expectVectors(lattice, tenth(13));
    Index done = 0;
    while (done < 6 && carries(lattice.basis.vecStatus[done + 1], ST_MU)) ++done;
    expectDone(lattice, done, tenth(13));
  }
}

TYPED_TEST(OrthogonalOver, ResizeTakesTheFactorsAndTheirBits) {
  const Matrix<TypeParam> basis = this->someRows(3, 4, 9);
  for (const Way way : {Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    orthogonalise(lattice, way);
    lattice.resize(3, 5, Vectors::keep);
    EXPECT_EQ(lattice.basis.vecStatus[1], ST_MU);
    EXPECT_EQ(lattice.gramSchmidt.factors.Ps.count(), 0);
    EXPECT_EQ(lattice.gramSchmidt.factors.lqCache.dimension(), 0);
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 3, tenth(16));
    expectVectors(lattice, tenth(16));
  }
}

TYPED_TEST(OrthogonalOver, EachChangeOfTheBasisIsSeen) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  const Matrix<TypeParam> other = this->of({{1, 2}, {5, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.classicOrthogonalise(1, 0);
  lattice.reset(&other, LatPath::keep);
  lattice.classicOrthogonalise(1, 0);
  expectDone(lattice, 2, tenth(17));
  const LatticeOver<TypeParam> source(&basis);
  lattice.assignFrom(source, Settings::copy);
  lattice.classicOrthogonalise(1, 0);
  expectDone(lattice, 2, tenth(17));
  lattice.resize(1, 2, Vectors::keep);
  lattice.resize(2, 2, Vectors::keep);
  EXPECT_FALSE(lattice.classicOrthogonalise(1, 0));
  EXPECT_EQ(lattice.gramSchmidt.bSq[2], 0);
}

TYPED_TEST(OrthogonalOver, AChangeOfTheScaleIsSeen) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.basis.scale[1] = TypeParam(2);
  lattice.classicOrthogonalise(1, 0);
  lattice.params.scale = !lattice.params.scale.get();
  EXPECT_EQ(lattice.basis.vecStatus[1], 0);
  lattice.classicOrthogonalise(1, 0);
  EXPECT_EQ(lattice.gramSchmidt.bSq[1], 18.25L);
}

TYPED_TEST(OrthogonalOver, SlotZeroOfTheStatusIsLive) {
  LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.basis.vecStatus.element(0), 0);
  lattice.resize(2, 1, Vectors::keep);
  lattice.resize(0, 1, Vectors::keep);
  EXPECT_EQ(lattice.basis.vecStatus.element(0), 0);
  EXPECT_EQ(lattice.basis.vecStatus.dimension(), 0);
  LatticeOver<TypeParam> copy;
  copy.assignFrom(lattice, Settings::copy);
  EXPECT_EQ(copy.basis.vecStatus.element(0), 0);
}

TYPED_TEST(OrthogonalOver, RowsThatAreNotThereAreRefused) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_FAILS_WITH(lattice.classicOrthogonalise(1, 3), "Array: index out of range");
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(1, 3, OnDependency::report, LqCache::use),
                    "lq_reduced: dimension mismatch");
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(3, 3, OnDependency::report, LqCache::bypass),
                    "lq_reduced: dimension mismatch");
  EXPECT_FAILS_WITH(lattice.fullOrthogonalise(1, 3, OnDependency::report),
                    "lq_full: end index overflow");
}

}  // namespace
}  // namespace starsift
