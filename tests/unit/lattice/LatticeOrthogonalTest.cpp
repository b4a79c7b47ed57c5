#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <string>

#include "core/Console.h"
#include "core/Exceptions.h"
#include "lattice/Lattice.h"
#include "support/ExpectFails.h"
#include "support/OrthogonalCertificate.h"
#include "support/Problem.h"

namespace starsift {
namespace {

using test::exactRows;
using test::firstRows;
using test::q;
using test::tenth;

template <class T>
using LatticeOver = Lattice<T, long double>;

/// The three ways, by name.
enum class Way { classic, modified, cached, full };

constexpr Way allWays[] = {Way::classic, Way::modified, Way::cached, Way::full};

/// 0 or the first dependent row.
template <class T>
Index orthogonalise(LatticeOver<T>& lattice, Way way, Index from = 1, Index to = 0) {
  if (way == Way::full) return lattice.fullOrthogonalise(from, to, false);
  if (way != Way::classic)
    return lattice.modifiedOrthogonalise(from, to, false, way == Way::cached);
  if (lattice.classicOrthogonalise(from, to)) return 0;
  Index k = from;
  while (lattice.vecStatus[k] != ST_DEPENDENT) ++k;
  return k;
}

StatusWord wordOf(Way way) {
  if (way == Way::full) return 0x0e;
  return way == Way::cached ? 0x16 : 0x02;
}

/// Changes row k as the reduction does: it and all behind it lose their status.
template <class T>
void change(LatticeOver<T>& lattice, Index k, const Vector<T>& row) {
  lattice.B[k] = row;
  lattice.rowImages.forget(k);
  for (Index i = k; i <= lattice.n; ++i) lattice.vecStatus[i] = 0;
}

/// Rows 1..count of mu, cLen and bSq belong to those of the basis.
template <class T>
void expectDone(const LatticeOver<T>& lattice, Index count, const mpq_class& bound) {
  const test::ExactRows rows = firstRows(exactRows(lattice.B), count);
  EXPECT_TRUE(test::isOrthogonalisation(rows, lattice.mu, lattice.cLen, bound));
  for (Index k = 1; k <= count; ++k) {
    long double length = 0;
    for (const mpq_class& entry : rows[static_cast<std::size_t>(k - 1)])
      length += static_cast<long double>(entry.get_d()) * static_cast<long double>(entry.get_d());
    EXPECT_NEAR(static_cast<double>(lattice.bSq[k] / length), 1, 1e-12);
  }
}

/// The rows of Q that are valid are the Gram-Schmidt vectors.
template <class T>
void expectVectors(const LatticeOver<T>& lattice, const mpq_class& bound) {
  Index count = 0;
  while (count < lattice.n && carries(lattice.vecStatus[count + 1], ST_Q)) ++count;
  ASSERT_LE(count, lattice.Q.rowCount());
  const test::ExactRows vectors = firstRows(exactRows(lattice.Q), count);
  EXPECT_TRUE(test::areOrthogonal(vectors, bound));
  const Matrix<long double>& mu = lattice.mu;
  EXPECT_TRUE(test::isProduct(firstRows(exactRows(mu), count), vectors,
                              firstRows(exactRows(lattice.B), count), bound));
}

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
      const Index done = dependent == 0 ? lattice.n : dependent - 1;
      expectDone(lattice, done, bound);
      expectVectors(lattice, bound);
      for (Index k = 1; k <= done; ++k) EXPECT_EQ(lattice.vecStatus[k], wordOf(way));
      for (Index k = done + 2; k <= lattice.n; ++k) EXPECT_EQ(lattice.vecStatus[k], 0);
      if (dependent == 0) continue;
      EXPECT_EQ(lattice.vecStatus[dependent], ST_DEPENDENT);
      EXPECT_LE(std::abs(lattice.cLen[dependent]), eps);
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
    EXPECT_EQ(lattice.vecStatus[3], 0);
    EXPECT_EQ(lattice.cLen[3], 0);
    EXPECT_EQ(orthogonalise(lattice, way, 3, 4), 0);
    expectDone(lattice, 4, tenth(16));
    expectVectors(lattice, tenth(16));
    EXPECT_EQ(lattice.vecStatus[5], 0);
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
    lattice.vecStatus[2] = ST_DEPENDENT;
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 3, tenth(15));
    EXPECT_EQ(lattice.vecStatus[2], wordOf(way));
  }
}

TYPED_TEST(OrthogonalOver, ClassicSkipsRowsThatAreDone) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.classicOrthogonalise(1, 0);
  lattice.cLen[1] = 7;
  lattice.classicOrthogonalise(1, 0);
  EXPECT_EQ(lattice.cLen[1], 7);
}

TYPED_TEST(OrthogonalOver, ClassicKeepsTheOtherBitsOfAWord) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.vecStatus[1] = ST_SWAP_CHECKED;
  lattice.classicOrthogonalise(1, 1);
  EXPECT_EQ(lattice.vecStatus[1], 0x42);
}

TYPED_TEST(OrthogonalOver, FactorisationsAssignTheWholeWord) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  for (const Way way : {Way::modified, Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    lattice.vecStatus[1] = ST_SWAP_CHECKED;
    orthogonalise(lattice, way);
    EXPECT_EQ(lattice.vecStatus[1], wordOf(way));
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsSkipRowsThatAreDone) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  for (const Way way : {Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    orthogonalise(lattice, way);
    lattice.cLen[1] = 7;
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    EXPECT_EQ(lattice.cLen[1], 7);
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsStoreNoRowBeforeTheFirst) {
  const Matrix<TypeParam> basis = this->someRows(4, 5, 9);
  for (const Way way : {Way::modified, Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    lattice.classicOrthogonalise(1, 2);
    lattice.cLen[2] = 7;
    EXPECT_EQ(orthogonalise(lattice, way, 3, 0), 0);
    EXPECT_EQ(lattice.cLen[2], 7);
    EXPECT_EQ(lattice.vecStatus[2], ST_MU);
    EXPECT_EQ(lattice.vecStatus[3], wordOf(way));
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
    EXPECT_EQ(lattice.vecStatus[2], ST_DEPENDENT);
    EXPECT_EQ(lattice.vecStatus[3], 0);
  }
}

TYPED_TEST(OrthogonalOver, FactorisationsMayEndTheProgramAtADependency) {
  const Matrix<TypeParam> basis = this->of({{1, 2}, {2, 4}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(1, 0, true, false),
                    "Linear dependency detected - remove these first!");
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(1, 0, true, true),
                    "Linear dependency detected - remove these first!");
  EXPECT_FAILS_WITH(lattice.fullOrthogonalise(1, 0, true),
                    "Linear dependency detected - remove first!");
}

TYPED_TEST(OrthogonalOver, FullMayEndTheProgramAtTooManyRows) {
  const Matrix<TypeParam> basis = this->of({{1}, {2}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_EQ(lattice.fullOrthogonalise(1, 1, true), 0);
  EXPECT_FAILS_WITH(lattice.fullOrthogonalise(1, 2, true),
                    "Linear dependency detected - remove first!");
}

TYPED_TEST(OrthogonalOver, FactorisationsMayContinueWithoutADependency) {
  const Matrix<TypeParam> basis = this->of({{1, 2}, {2, 5}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_EQ(lattice.modifiedOrthogonalise(1, 0, true, true), 0);
  EXPECT_EQ(lattice.fullOrthogonalise(1, 0, true), 0);
}

TYPED_TEST(OrthogonalOver, FullTurnsTheVectorsInTheDirectionOfTheRows) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.fullOrthogonalise(1, 0, false);
  EXPECT_TRUE(lattice.Q[1] == (Vector<long double>{3, 4}));
  EXPECT_TRUE(lattice.Q[2] == (Vector<long double>{1.12L, -0.84L}));
  EXPECT_EQ(lattice.Q.rowCount(), 2);
}

TYPED_TEST(OrthogonalOver, FullSizesItsFactorToTheShorterSide) {
  const Matrix<TypeParam> wide = this->of({{3, 4, 1}, {4, 3, 1}});
  LatticeOver<TypeParam> lattice(&wide);
  lattice.fullOrthogonalise(1, 0, false);
  EXPECT_EQ(lattice.Q.rowCount(), 2);
  EXPECT_EQ(lattice.Q.columnCount(), 3);
  const Matrix<TypeParam> tall = this->of({{1}, {2}, {3}});
  lattice.reset(&tall, false);
  lattice.fullOrthogonalise(1, 0, false);
  EXPECT_EQ(lattice.Q.rowCount(), 1);
}

TYPED_TEST(OrthogonalOver, RowsThatTheFullWayTookAreMadeAnewByTheCachedOne) {
  const Matrix<TypeParam> basis = this->someRows(6, 7, 9);
  LatticeOver<TypeParam> lattice(&basis);
  orthogonalise(lattice, Way::cached);
  orthogonalise(lattice, Way::full, 1, 3);
  EXPECT_EQ(lattice.vecStatus[3], 0x0e);
  EXPECT_FALSE(carries(lattice.vecStatus[4], ST_Q));
  EXPECT_TRUE(carries(lattice.vecStatus[4], ST_MU));
  expectVectors(lattice, tenth(15));
  orthogonalise(lattice, Way::cached, 4, 6);
  EXPECT_EQ(lattice.vecStatus[6], 0x16);
  orthogonalise(lattice, Way::cached);
  expectDone(lattice, 6, tenth(15));
  expectVectors(lattice, tenth(15));
}

TYPED_TEST(OrthogonalOver, RowsThatTheCachedWayTookAreMadeAnewByTheFullOne) {
  const Matrix<TypeParam> basis = this->someRows(6, 7, 9);
  LatticeOver<TypeParam> lattice(&basis);
  orthogonalise(lattice, Way::full);
  orthogonalise(lattice, Way::cached, 1, 3);
  EXPECT_FALSE(carries(lattice.vecStatus[4], ST_Q));
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
    EXPECT_EQ(lattice.vecStatus[4], wordOf(way));
    EXPECT_EQ(lattice.vecStatus[6], 0x02);
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
    ASSERT_TRUE(carries(lattice.vecStatus[to], ST_MU));
    expectVectors(lattice, tenth(13));
    Index done = 0;
    while (done < 6 && carries(lattice.vecStatus[done + 1], ST_MU)) ++done;
    expectDone(lattice, done, tenth(13));
  }
}

TYPED_TEST(OrthogonalOver, ResizeTakesTheFactorsAndTheirBits) {
  const Matrix<TypeParam> basis = this->someRows(3, 4, 9);
  for (const Way way : {Way::cached, Way::full}) {
    LatticeOver<TypeParam> lattice(&basis);
    orthogonalise(lattice, way);
    lattice.resize(3, 5, false);
    EXPECT_EQ(lattice.vecStatus[1], ST_MU);
    EXPECT_EQ(lattice.Ps.count(), 0);
    EXPECT_EQ(lattice.lqCache.dimension(), 0);
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
  lattice.reset(&other, false);
  lattice.classicOrthogonalise(1, 0);
  expectDone(lattice, 2, tenth(17));
  const LatticeOver<TypeParam> source(&basis);
  lattice.assignFrom(source, false);
  lattice.classicOrthogonalise(1, 0);
  expectDone(lattice, 2, tenth(17));
  lattice.resize(1, 2, false);
  lattice.resize(2, 2, false);
  EXPECT_FALSE(lattice.classicOrthogonalise(1, 0));
  EXPECT_EQ(lattice.bSq[2], 0);
}

TYPED_TEST(OrthogonalOver, AChangeOfTheScaleIsSeen) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  lattice.scale[1] = TypeParam(2);
  lattice.classicOrthogonalise(1, 0);
  lattice.params.scale = !lattice.params.scale.get();
  EXPECT_EQ(lattice.vecStatus[1], 0);
  lattice.classicOrthogonalise(1, 0);
  EXPECT_EQ(lattice.bSq[1], 18.25L);
}

TYPED_TEST(OrthogonalOver, SlotZeroOfTheStatusIsLive) {
  LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.vecStatus.element(0), 0);
  lattice.resize(2, 1, false);
  lattice.resize(0, 1, false);
  EXPECT_EQ(lattice.vecStatus.element(0), 0);
  EXPECT_EQ(lattice.vecStatus.dimension(), 0);
  LatticeOver<TypeParam> copy;
  copy.assignFrom(lattice, false);
  EXPECT_EQ(copy.vecStatus.element(0), 0);
}

TYPED_TEST(OrthogonalOver, RowsThatAreNotThereAreRefused) {
  const Matrix<TypeParam> basis = this->of({{3, 4}, {4, 3}});
  LatticeOver<TypeParam> lattice(&basis);
  EXPECT_FAILS_WITH(lattice.classicOrthogonalise(1, 3), "Array: index out of range");
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(1, 3, false, true),
                    "lq_reduced: dimension mismatch");
  EXPECT_FAILS_WITH(lattice.modifiedOrthogonalise(3, 3, false, false),
                    "lq_reduced: dimension mismatch");
  EXPECT_FAILS_WITH(lattice.fullOrthogonalise(1, 3, false), "lq_full: end index overflow");
}

/// What the classic way may lose: the squares of the rows cancel.
TEST(Orthogonal, NearDependenceIsFoundIndependent) {
  // The second row is 1e-3 off the first; the squared length is 1e-6.
  const Matrix<QQ> basis{{q("1"), q("1"), q("1")}, {q("1"), q("1"), q("1001/1000")}};
  for (const Way way : allWays) {
    LatticeOver<QQ> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 2, tenth(17));
  }
}

TEST(Orthogonal, DistanceOfABillionthIsADependence) {
  const Matrix<QQ> basis{{q("1"), q("1")}, {q("1"), q("1000000001/1000000000")}};
  for (const Way way : allWays) {
    LatticeOver<QQ> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way), 2);
  }
}

TEST(Orthogonal, SquaredLengthOfABillionthPartsDependenceFromIndependence) {
  // Of the second row half the square of the difference is left.
  const Matrix<QQ> below{{q("1"), q("1")}, {q("1"), q("1.000044")}};
  const Matrix<QQ> above{{q("1"), q("1")}, {q("1"), q("1.000046")}};
  for (const Way way : allWays) {
    LatticeOver<QQ> lattice(&below);
    EXPECT_EQ(orthogonalise(lattice, way), 2);
    lattice.reset(&above, false);
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 2, tenth(17));
  }
}

TEST(Orthogonal, FactorisationsKeepDigitsThatTheClassicWayLoses) {
  // Squares of 10^16 leave nothing of a distance of 1 in the classic way.
  const Matrix<QQ> basis{{q("100000000000"), q("100000000000"), q("1")},
                         {q("100000000000"), q("100000000001"), q("1")}};
  const test::ExactRows vectors = test::orthogonalVectors(exactRows(basis));
  const mpq_class exact =
      vectors[1][0] * vectors[1][0] + vectors[1][1] * vectors[1][1] + vectors[1][2] * vectors[1][2];
  for (const Way way : {Way::modified, Way::cached, Way::full}) {
    LatticeOver<QQ> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    EXPECT_TRUE(abs(test::exactly(lattice.cLen[2]) - exact) < exact * tenth(6));
  }
}

TEST(Orthogonal, EntriesOfThirtyDigitsAreRoundedOnlyOnTheirWay) {
  const Matrix<QQ> basis{
      {q("123456789012345678901234567890"), q("-987654321098765432109876543210"), q("1")},
      {q("555555555555555555555555555555"), q("1"), q("314159265358979323846264338327")},
      {q("7"), q("271828182845904523536028747135"), q("-161803398874989484820458683436")}};
  for (const Way way : allWays) {
    LatticeOver<QQ> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 3, tenth(17));
    expectVectors(lattice, tenth(17));
  }
}

TEST(Orthogonal, ThirdsAreNoObstacle) {
  const Matrix<QQ> basis{{q("1/3"), q("2/7")}, {q("5/11"), q("-1/13")}};
  for (const Way way : allWays) {
    LatticeOver<QQ> lattice(&basis);
    EXPECT_EQ(orthogonalise(lattice, way), 0);
    expectDone(lattice, 2, tenth(17));
  }
}

TEST(Orthogonal, NumbersBeyondLongDoubleEndTheExactReduction) {
  Matrix<QQ> basis{{q("1"), q("0")}, {q("0"), q("1e2500")}};
  LatticeOver<QQ> lattice(&basis);
  EXPECT_TRUE(lattice.classicOrthogonalise(1, 1));
  for (const Way way : allWays)
    EXPECT_FAILS_WITH(orthogonalise(lattice, way), "numbers too large for the reduction");
  basis[2][2] = q("1e6000");
  lattice.reset(&basis, false);
  EXPECT_FAILS_WITH(orthogonalise(lattice, Way::classic), "numbers too large for the reduction");
}

/// The message of the exception, or what happened instead.
std::string refusal(const Matrix<long double>& basis, Way way) {
  LatticeOver<long double> lattice(&basis);
  try {
    orthogonalise(lattice, way);
  } catch (const DecimalPrecisionException& exception) {
    return exception.message();
  }
  return "orthogonalised";
}

constexpr long double nan = std::numeric_limits<long double>::quiet_NaN();

TEST(Orthogonal, NanEntriesAreExceptionsOfTheStandardLattice) {
  const Matrix<long double> basis{{1, 2}, {nan, 1}};
  EXPECT_EQ(refusal(basis, Way::classic), "mu-classic has nan entry");
  EXPECT_EQ(refusal(basis, Way::modified), "mu-mod has nan entry");
  EXPECT_EQ(refusal(basis, Way::cached), "mu-mod has nan entry");
  EXPECT_EQ(refusal(basis, Way::full), "L has nan entry");
  EXPECT_EQ(refusal({{1, nan}, {1, 1}}, Way::full), "Ps has nan entry");
}

TEST(Orthogonal, InfiniteLengthsAreExceptionsOfTheStandardLattice) {
  const Matrix<long double> basis{{1, 0}, {0, 1e2500L}};
  EXPECT_EQ(refusal(basis, Way::classic), "cLen-classic has infinite entry");
  EXPECT_EQ(refusal(basis, Way::modified), "_d has infinite entry");
  EXPECT_EQ(refusal(basis, Way::cached), "_d has infinite entry");
  EXPECT_EQ(refusal({{0, 1e2500L}, {1, 0}}, Way::full), "Ps has nan entry");
}

TEST(Orthogonal, FactorsAreRightAfterAnException) {
  const Matrix<long double> basis{{1, 0, 0}, {0, 1, 0}, {0, 0, 1e2500L}};
  LatticeOver<long double> lattice(&basis);
  EXPECT_THROW(orthogonalise(lattice, Way::cached), DecimalPrecisionException);
  expectVectors(lattice, tenth(17));
  change(lattice, 3, Vector<long double>{1, 1, 1});
  EXPECT_EQ(orthogonalise(lattice, Way::cached), 0);
  expectDone(lattice, 3, tenth(17));
}

TEST(Orthogonal, RowIsNotDoneAfterAnException) {
  const Matrix<long double> basis{{1, 2}, {nan, 1}};
  LatticeOver<long double> lattice(&basis);
  lattice.vecStatus[2] = ST_MU;
  EXPECT_THROW(orthogonalise(lattice, Way::modified), DecimalPrecisionException);
  EXPECT_EQ(lattice.vecStatus[2], 0);
}

/// The text of a run with a console that was last written at `time`.
std::string consoleOf(bool extended, std::time_t time) {
  const Matrix<long double> basis{{1, 0}, {0, 1}};
  LatticeOver<long double> lattice(&basis);
  consoleState() = {};
  consoleState().extendedOutput = extended;
  consoleState().lastOutputTime = time;
  testing::internal::CaptureStdout();
  lattice.modifiedOrthogonalise(1, 0, false, false);
  consoleState() = {};
  return testing::internal::GetCapturedStdout();
}

TEST(Orthogonal, SaysOnceAnHourWhereItIs) {
  const std::time_t now = std::time(nullptr);
  EXPECT_EQ(consoleOf(true, now - 4000), "|-> lq_reduced k = 1, mm = 2\n");
  EXPECT_EQ(consoleOf(true, now - 3500), "");
  EXPECT_EQ(consoleOf(false, now - 4000), "");
}

}  // namespace
}  // namespace starsift
