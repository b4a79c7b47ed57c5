// Orthogonalisation of awkward numbers, what it refuses, and what it says.
#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <string>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/OrthogonalWays.h"
#include "support/fixtures/Problem.h"
#include "system/Console.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::allWays;
using test::change;
using test::exactRows;
using test::expectDone;
using test::expectVectors;
using test::LatticeOver;
using test::orthogonalise;
using test::q;
using test::tenth;
using test::Way;

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
    lattice.reset(&above, LatPath::keep);
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
    EXPECT_TRUE(abs(test::exactly(lattice.gramSchmidt.cLen[2]) - exact) < exact * tenth(6));
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
  lattice.reset(&basis, LatPath::keep);
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

// Both squared lengths are too long, and what is left of the second no number.
TEST(Orthogonal, InfiniteCoefficientsAreExceptionsOfTheStandardLattice) {
  const Matrix<long double> basis{{1e2000L, 0}, {1e4000L, 1}};
  EXPECT_EQ(refusal(basis, Way::classic), "cLen-classic has infinite entry");
  EXPECT_EQ(refusal(basis, Way::modified), "mu-mod has nan entry");
  EXPECT_EQ(refusal(basis, Way::cached), "mu-mod has nan entry");
}

TEST(Orthogonal, FirstRowWithoutALengthIsAnExceptionOfTheStandardLattice) {
  const Matrix<long double> basis{{nan, 1}};
  EXPECT_EQ(refusal(basis, Way::classic), "cLen-classic has infinite entry");
  EXPECT_EQ(refusal(basis, Way::modified), "cLen-mod has infinite entry");
  EXPECT_EQ(refusal(basis, Way::cached), "cLen-mod has infinite entry");
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
  lattice.basis.vecStatus[2] = ST_MU;
  EXPECT_THROW(orthogonalise(lattice, Way::modified), DecimalPrecisionException);
  EXPECT_EQ(lattice.basis.vecStatus[2], 0);
}

/// The text of a run with a console that was last written at `time`.
std::string consoleOf(bool extended, std::time_t time) {
  const Matrix<long double> basis{{1, 0}, {0, 1}};
  LatticeOver<long double> lattice(&basis);
  consoleState() = {};
  consoleState().extendedOutput = extended;
  consoleState().lastOutputTime = time;
  testing::internal::CaptureStdout();
  lattice.modifiedOrthogonalise(1, 0, OnDependency::report, LqCache::bypass);
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
