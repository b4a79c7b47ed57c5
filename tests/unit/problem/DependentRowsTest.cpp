#include "problem/DependentRows.h"

#include <gtest/gtest.h>

#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::rowsText;
using test::textOf;

template <class T>
class DependentRowsOver : public test::FreshConsole {
 protected:
  static Vanu<T> equations(const std::string& text) {
    return problemFrom<T>("[ ] [ ] " + text + " [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  }
  /// Removes dependent equations; what the console shows of it.
  static std::string removeFrom(Vanu<T>& problem, bool verbose) {
    return test::FreshConsole::consoleOf([&] { removeDependentEquations(problem, verbose); });
  }
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(DependentRowsOver, NumberTypes);

TYPED_TEST(DependentRowsOver, SecondOfTwoIdenticalEquationsGoesAndSaysSoOnce) {
  auto problem = this->equations("[ [ 1 2 ] [ 1 2 ] ] [ 3 3 ] [ ]");
  EXPECT_EQ(this->removeFrom(problem, true),
            "|-> el_dep_rows: use_exact_arithmetic = 0, dep_row_idx = 2\n"
            "|-> Linear dependencies detected and removed\n");
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 3 ]");
  EXPECT_EQ(textOf(problem.qg), "[ ]");
}

TYPED_TEST(DependentRowsOver, NothingIsSaidWithoutBeingAsked) {
  auto problem = this->equations("[ [ 1 2 ] [ 1 2 ] ] [ 3 3 ] [ ]");
  EXPECT_EQ(this->removeFrom(problem, false), "");
  EXPECT_EQ(problem.Ag.rowCount(), 1);
}

TYPED_TEST(DependentRowsOver, EqualCoefficientsWithOtherRightHandSidesStay) {
  auto problem = this->equations("[ [ 1 2 ] [ 1 2 ] ] [ 3 4 ] [ ]");
  EXPECT_EQ(this->removeFrom(problem, true), "");
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 ] [ 1 2 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 3 4 ]");
}

TYPED_TEST(DependentRowsOver, ZeroEquationGoes) {
  auto problem = this->equations("[ [ 0 0 ] [ 1 2 ] ] [ 0 4 ] [ ]");
  this->removeFrom(problem, false);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 4 ]");
}

TYPED_TEST(DependentRowsOver, ContradictionStays) {
  auto problem = this->equations("[ [ 0 0 ] ] [ 1 ] [ ]");
  this->removeFrom(problem, false);
  EXPECT_EQ(problem.Ag.rowCount(), 1);
}

TYPED_TEST(DependentRowsOver, RowsThatStayAreNeitherChangedNorMoved) {
  auto problem = this->equations("[ [ 2 4 ] [ 1 2 ] [ 0 5 ] [ 3 11 ] [ 7 1 ] ] [ 6 3 1 10 9 ] [ ]");
  this->removeFrom(problem, false);
  EXPECT_EQ(rowsText(problem.Ag), "[ 2 4 ] [ 0 5 ] [ 7 1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 6 1 9 ]");
}

TYPED_TEST(DependentRowsOver, DroppedRowTakesItsModulusAlong) {
  auto problem = this->equations("[ [ 1 0 ] [ 2 0 ] [ 0 1 ] ] [ 1 2 3 ] [ 0 0 7 ]");
  problem.Ag.resize(3, 3, false);
  problem.Ag[3][3] = TypeParam(7);
  this->removeFrom(problem, false);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 0 0 ] [ 0 1 7 ]");
  EXPECT_EQ(textOf(problem.qg), "[ 0 7 ]");
}

TYPED_TEST(DependentRowsOver, CongruencesOfOneModulusAreIndependent) {
  auto problem = this->equations("[ [ 1 2 ] [ 1 2 ] ] [ 3 3 ] [ 5 5 ]");
  problem.Ag.resize(2, 4, false);
  problem.Ag[1][3] = TypeParam(5);
  problem.Ag[2][4] = TypeParam(5);
  this->removeFrom(problem, false);
  EXPECT_EQ(problem.Ag.rowCount(), 2);
}

TYPED_TEST(DependentRowsOver, NothingHappensWithoutEquations) {
  Vanu<TypeParam> problem;
  EXPECT_EQ(this->removeFrom(problem, true), "");
}

// A tolerance would take these two for one.
TYPED_TEST(DependentRowsOver, NearlyEqualRowsAreIndependent) {
  Matrix<TypeParam> rows{{TypeParam(1000000000), TypeParam(999999999)},
                         {TypeParam(999999999), TypeParam(999999998)}};
  EXPECT_EQ(el_dep_rows(rows, false), (std::vector<Index>{1, 2}));
}

TEST(DependentRows, ExactRowsMayBeLong) {
  const QQ big = QQ::parse("123456789012345678901234567890");
  const Matrix<QQ> rows{{big, QQ(1)}, {big * QQ(2), QQ(2)}, {big, QQ(2)}};
  EXPECT_EQ(el_dep_rows(rows, false), (std::vector<Index>{1, 3}));
}

TEST(DependentRows, StandardRowsMustBeSafe) {
  auto problem = problemFrom<long double>(
      "[ ] [ ] [ [ 1 2000000000 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  try {
    removeDependentEquations(problem, false);
    FAIL() << "nothing thrown";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "row overflow");
  }
}

}  // namespace
}  // namespace starsift
