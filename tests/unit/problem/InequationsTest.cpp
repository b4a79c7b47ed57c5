#include "problem/Inequations.h"

#include <gtest/gtest.h>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::rowsText;
using test::textOf;

template <class T>
class InequationsOver : public test::FreshConsole {};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(InequationsOver, NumberTypes);

TYPED_TEST(InequationsOver, UselessOnesGoAndSaySo) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 1 ] [ 2 ] [ 3 ] [ 4 ] ] [ 1 1 1 1 ] [ 9 9 9 9 ] [ 0 ] [ 0 ] [ 5 ]");
  const TypeParam infinity = NumberTraits<TypeParam>::infinity();
  for (const Index i : {1, 4}) {
    problem.lu[i] = -infinity;
    problem.ru[i] = infinity;
  }
  EXPECT_EQ(this->consoleOf([&] { dropUselessInequations(problem); }),
            "|-> Useless inequation (-inf <= ... <= inf) detected\n"
            "|-> Useless inequation (-inf <= ... <= inf) detected\n");
  EXPECT_EQ(rowsText(problem.Au), "[ 2 ] [ 3 ]");
  EXPECT_EQ(problem.lu.dimension(), 2);
  EXPECT_EQ(problem.ru.dimension(), 2);
}

TYPED_TEST(InequationsOver, UsefulOnesStayWithoutAWord) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 1 ] [ 2 ] [ 3 ] ] [ 1 -inf 1 ] [ 9 9 inf ] [ 0 ] [ 0 ] [ 5 ]");
  EXPECT_EQ(this->consoleOf([&] { dropUselessInequations(problem); }), "");
  EXPECT_EQ(rowsText(problem.Au), "[ 1 ] [ 2 ] [ 3 ]");
}

TYPED_TEST(InequationsOver, EqualitiesBecomeEquationsInOrder) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 1 1 ] ] [ 4 ] [ ] [ [ 1 2 ] [ 3 4 ] [ 5 6 ] ] [ 7 0 8 ] [ 7 9 8 ] "
      "[ 0 0 ] [ 0 0 ] [ 5 5 ]");
  std::string console;
  console = this->consoleOf([&] { EXPECT_EQ(transferFakeInequations(problem, true), 2); });
  EXPECT_EQ(console,
            "|-> Fake inequation detected and transfered\n"
            "|-> Fake inequation detected and transfered\n");
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 1 ] [ 1 2 ] [ 5 6 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 4 7 8 ]");
  EXPECT_EQ(textOf(problem.qg), "[ ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 3 4 ]");
  EXPECT_EQ(textOf(problem.lu), "[ 0 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 9 ]");
}

TYPED_TEST(InequationsOver, EqualitiesBecomeEquationsWithoutAWordWhenNotVerbose) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ ] [ ] [ ] [ [ 2 3 ] ] [ 7 ] [ 7 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  std::string console;
  console = this->consoleOf([&] { EXPECT_EQ(transferFakeInequations(problem, false), 1); });
  EXPECT_EQ(console, "");
  EXPECT_EQ(rowsText(problem.Ag), "[ 2 3 ]");
}

TYPED_TEST(InequationsOver, EqualitiesJoinCongruencesAsPlainEquations) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 1 ] ] [ 4 ] [ 3 ] [ [ 2 ] ] [ 7 ] [ 7 ] [ 0 ] [ 0 ] [ 5 ]");
  this->consoleOf([&] { transferFakeInequations(problem, true); });
  EXPECT_EQ(textOf(problem.qg), "[ 3 0 ]");
}

TYPED_TEST(InequationsOver, EqualitiesNeedNoEquationsBefore) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ ] [ ] [ ] [ [ 2 3 ] ] [ 7 ] [ 7 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  this->consoleOf([&] { transferFakeInequations(problem, true); });
  EXPECT_EQ(rowsText(problem.Ag), "[ 2 3 ]");
  EXPECT_EQ(problem.Ag.columnCount(), 2);
  EXPECT_EQ(textOf(problem.bg), "[ 7 ]");
}

// All variables may be fixed by then.
TYPED_TEST(InequationsOver, EqualitiesWithoutVariablesJoinTheEquations) {
  Vanu<TypeParam> problem;
  problem.Ag.resize(1, 0, false);
  problem.bg = Vector<TypeParam>{TypeParam(5)};
  problem.Au.resize(1, 0, false);
  problem.lu = problem.ru = Vector<TypeParam>{TypeParam(0)};
  this->consoleOf([&] { transferFakeInequations(problem, true); });
  EXPECT_EQ(problem.Ag.rowCount(), 2);
  EXPECT_EQ(textOf(problem.bg), "[ 5 0 ]");
}

TYPED_TEST(InequationsOver, EqualitiesStandBeforeLiftedEquations) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 1 0 0 0 ] [ 1 -1 0 0 ] [ 1 0 1 -1 ] ] [ 4 5 6 ] [ ] [ [ 2 0 0 0 ] ] [ 7 ] [ 7 ] "
      "[ 0 0 0 0 ] [ 0 0 0 0 ] [ 5 inf inf inf ]");
  problem.slackCount = 1;
  problem.deviationCount = 2;
  this->consoleOf([&] { transferFakeInequations(problem, true); });
  EXPECT_EQ(textOf(problem.bg), "[ 4 7 5 6 ]");
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 0 0 0 ] [ 2 0 0 0 ] [ 1 -1 0 0 ] [ 1 0 1 -1 ]");
}

TYPED_TEST(InequationsOver, InfiniteEqualityHasNoSolution) {
  for (const char* bound : {"inf", "-inf"}) {
    auto problem = problemFrom<TypeParam>(std::string("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ ") + bound +
                                          " ] [ " + bound + " ] [ 0 ] [ 0 ] [ 5 ]");
    EXPECT_FAILS_WITH(transferFakeInequations(problem, true),
                      "Unfulfillable infinite inequation detected --> NO SOLUTIONS!");
  }
}

TYPED_TEST(InequationsOver, LowerBoundBecomesAnEquationWithSlack) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] [ [ 1 1 ] ] [ [ 1 2 ] ] [ 4 ] [ ] [ [ 3 4 ] ] [ 5 ] [ inf ] [ 1 0 ] [ 0 0 ] [ 5 5 "
      "]");
  liftOneSidedInequations(problem);
  EXPECT_EQ(problem.slackCount, 1);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 0 ] [ 3 4 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 4 5 ]");
  EXPECT_EQ(rowsText(problem.At), "[ 1 1 0 ]");
  EXPECT_EQ(problem.Au.rowCount(), 0);
  EXPECT_EQ(problem.Au.columnCount(), 3);
  EXPECT_EQ(textOf(problem.lu), "[ ]");
  EXPECT_EQ(textOf(problem.ru), "[ ]");
  EXPECT_EQ(textOf(problem.lx), "[ 0 0 0 ]");
  EXPECT_EQ(textOf(problem.rx), "[ 5 5 inf ]");
  EXPECT_EQ(textOf(problem.dx), "[ 1 0 0 ]");
  EXPECT_EQ(problem.fd[3], FreedomDegree::rightFree);
}

TYPED_TEST(InequationsOver, UpperBoundIsNegatedFirst) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 3 -4 ] ] [ -inf ] [ 5 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  liftOneSidedInequations(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ -3 4 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ -5 ]");
  EXPECT_EQ(textOf(problem.qg), "[ ]");
}

TYPED_TEST(InequationsOver, LiftedOnesJoinCongruencesAsPlainEquations) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 1 ] ] [ 4 ] [ 3 ] [ [ 2 ] [ 3 ] ] [ 7 -inf ] [ inf 8 ] [ 0 ] [ 0 ] [ 5 ]");
  liftOneSidedInequations(problem);
  EXPECT_EQ(textOf(problem.qg), "[ 3 0 0 ]");
}

// Each lifted row leaves its place to the last one, which is looked at next.
TYPED_TEST(InequationsOver, LastOneTakesThePlaceOfTheLifted) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 1 ] [ 2 ] [ 3 ] [ 4 ] [ 5 ] ] [ 1 0 3 0 5 ] [ inf 9 inf 8 inf ] "
      "[ 0 ] [ 0 ] [ 9 ]");
  liftOneSidedInequations(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 -1 0 0 ] [ 5 0 -1 0 ] [ 3 0 0 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 1 5 3 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 4 0 0 0 ] [ 2 0 0 0 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 8 9 ]");
  EXPECT_EQ(problem.slackCount, 3);
}

TYPED_TEST(InequationsOver, ProblemWithoutInequationsStaysAsItIs) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ [ 1 2 ] ] [ 4 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  dropUselessInequations(problem);
  EXPECT_EQ(transferFakeInequations(problem, true), 0);
  liftOneSidedInequations(problem);
  EXPECT_EQ(problem.slackCount, 0);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 4 ]");
  EXPECT_EQ(problem.Au.rowCount(), 0);
}

TYPED_TEST(InequationsOver, TwoSidedOnesStay) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 4 ] [ 5 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  problem.slackCount = 5;
  liftOneSidedInequations(problem);
  EXPECT_EQ(problem.slackCount, 0);
  EXPECT_EQ(rowsText(problem.Au), "[ 1 2 ]");
  EXPECT_EQ(problem.Ag.rowCount(), 0);
}

}  // namespace
}  // namespace starsift
