#include "problem/RowBounds.h"

#include <gtest/gtest.h>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::failureText;
using test::problemFrom;
using test::textOf;

template <class T>
class RowBoundsOver : public testing::Test {
 protected:
  static Vanu<T> inequation(const std::string& bounds) {
    return problemFrom<T>("[ ] [ ] [ ] [ ] [ ] [ [ 2 -3 ] ] " + bounds +
                          " [ 0 0 ] [ 0 1 ] [ 5 4 ]");
  }
  static Vanu<T> equation(const std::string& value) {
    auto problem = problemFrom<T>("[ ] [ ] [ [ 1 ] [ 2 ] ] [ 3 " + value +
                                  " ] [ ] [ ] [ ] [ ] [ 0 ] [ -1 ] [ 4 ]");
    problem.optFile = "a.opt";
    return problem;
  }
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(RowBoundsOver, NumberTypes);

// 2 x - 3 y is between -12 and 7.
TYPED_TEST(RowBoundsOver, TightensInequations) {
  auto problem = this->inequation("[ -100 ] [ 100 ]");
  checkRows(problem, RowKind::inequations);
  EXPECT_EQ(textOf(problem.lu), "[ -12 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 7 ]");
}

TYPED_TEST(RowBoundsOver, LeavesTighterInequations) {
  auto problem = this->inequation("[ -11 ] [ 6 ]");
  checkRows(problem, RowKind::inequations);
  EXPECT_EQ(textOf(problem.lu), "[ -11 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 6 ]");
}

TYPED_TEST(RowBoundsOver, TightensARowOfOneVariableToItsBounds) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 0 ] [ 100 ] [ 0 ] [ 0 ] [ 5 ]");
  checkRows(problem, RowKind::inequations);
  EXPECT_EQ(textOf(problem.ru), "[ 5 ]");
}

TYPED_TEST(RowBoundsOver, TightensNothingAgainstFreeVariables) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 1 -1 ] ] [ -50 ] [ 100 ] [ 0 0 ] [ 0 0 ] [ inf inf ]");
  checkRows(problem, RowKind::inequations);
  EXPECT_EQ(textOf(problem.lu), "[ -50 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 100 ]");
}

TYPED_TEST(RowBoundsOver, AcceptsAnInequationWithOneValueLeft) {
  auto problem = this->inequation("[ 7 ] [ 100 ]");
  checkRows(problem, RowKind::inequations);
  EXPECT_EQ(textOf(problem.lu), "[ 7 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 7 ]");
}

TYPED_TEST(RowBoundsOver, EmptyInequationHasNoSolution) {
  auto problem = this->inequation("[ 8 ] [ 100 ]");
  problem.optFile = "a.opt";
  EXPECT_EXIT(checkRows(problem, RowKind::inequations), testing::ExitedWithCode(1),
              testing::StrEq("a.opt: Inequality #1, this->lu = 8, this->ru = 7\n" +
                             failureText("Unfulfillable inequality detected --> NO SOLUTIONS!")));
}

TYPED_TEST(RowBoundsOver, EquationBeyondItsRowHasNoSolution) {
  auto problem = this->equation("9");
  EXPECT_EXIT(checkRows(problem, RowKind::equations), testing::ExitedWithCode(1),
              testing::StrEq("a.opt: Equality #2, lg = -2, this->bg = 9, rg = 8\n" +
                             failureText("Unfulfillable equality detected --> NO SOLUTIONS!")));
  problem = this->equation("-3");
  EXPECT_EXIT(checkRows(problem, RowKind::equations), testing::ExitedWithCode(1),
              testing::StrEq("a.opt: Equality #2, lg = -2, this->bg = -3, rg = 8\n" +
                             failureText("Unfulfillable equality detected --> NO SOLUTIONS!")));
}

TYPED_TEST(RowBoundsOver, EquationAtTheEndOfItsRowPasses) {
  for (const char* value : {"8", "-2"}) {
    auto problem = this->equation(value);
    checkRows(problem, RowKind::equations);
    EXPECT_EQ(textOf(problem.bg), std::string("[ 3 ") + value + " ]");
  }
}

TYPED_TEST(RowBoundsOver, ModulusColumnIsUnbounded) {
  auto problem = this->equation("9");
  problem.Ag.resize(2, 2, false);
  problem.Ag[2][2] = TypeParam(5);
  checkRows(problem, RowKind::equations);
  EXPECT_EQ(textOf(problem.bg), "[ 3 9 ]");
}

TYPED_TEST(RowBoundsOver, EquationWithoutVariablesNeedsTheValueZero) {
  Vanu<TypeParam> problem;
  problem.Ag.resize(1, 0, false);
  problem.bg = Vector<TypeParam>{TypeParam(0)};
  checkRows(problem, RowKind::equations);
  problem.bg[1] = TypeParam(1);
  EXPECT_EXIT(checkRows(problem, RowKind::equations), testing::ExitedWithCode(1),
              testing::StrEq(": Equality #1, lg = 0, this->bg = 1, rg = 0\n" +
                             failureText("Unfulfillable equality detected --> NO SOLUTIONS!")));
}

}  // namespace
}  // namespace starsift
