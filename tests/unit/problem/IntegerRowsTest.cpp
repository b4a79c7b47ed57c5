#include "problem/IntegerRows.h"

#include <gtest/gtest.h>

#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::q;
using test::rowsText;
using test::textOf;

template <class T>
class IntegerRowsOver : public testing::Test {};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(IntegerRowsOver, NumberTypes);

TYPED_TEST(IntegerRowsOver, ModuliBecomeColumns) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] [ [ 1 1 ] ] [ [ 1 2 ] [ 3 4 ] ] [ 5 6 ] [ 5 0 ] [ [ 7 8 ] ] [ 0 ] [ 9 ] "
      "[ 0 0 ] [ 0 0 ] [ 5 5 ]");
  addModulusColumns(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 5 0 ] [ 3 4 0 0 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 7 8 0 0 ]");
  EXPECT_EQ(rowsText(problem.At), "[ 1 1 ]");
  EXPECT_EQ(problem.rx.dimension(), 2);
}

TYPED_TEST(IntegerRowsOver, PlainEquationsGetNoColumns) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ [ 1 2 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  addModulusColumns(problem);
  dropZeroModulusColumns(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 2 ]");
}

TYPED_TEST(IntegerRowsOver, ColumnsOfPlainEquationsAreDropped) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 1 ] [ 2 ] [ 3 ] ] [ 5 6 7 ] [ 0 11 13 ] [ [ 4 ] ] [ 0 ] [ 9 ] [ 0 ] [ 0 ] [ 5 "
      "]");
  addModulusColumns(problem);
  dropZeroModulusColumns(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 0 0 ] [ 2 11 0 ] [ 3 0 13 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 4 0 0 ]");
  EXPECT_EQ(textOf(problem.qg), "[ 0 11 13 ]");
}

TYPED_TEST(IntegerRowsOver, VariableWithoutCoefficientsKeepsItsColumn) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ [ 1 0 ] ] [ 5 ] [ 3 ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  addModulusColumns(problem);
  dropZeroModulusColumns(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 0 3 ]");
}

TYPED_TEST(IntegerRowsOver, IntegersStay) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] = [ 3 ] [ [ 4 6 ] ] [ [ 2 4 ] ] [ 6 ] [ ] [ [ 8 2 ] ] [ 0 ] [ 9 ] "
      "[ 0 0 ] [ 0 0 ] [ 5 5 ]");
  problem.ltu = TypeParam(7);
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.At), "[ 4 6 ]");
  EXPECT_EQ(textOf(problem.kt), "[ 3 ]");
  EXPECT_EQ(problem.ltu, TypeParam(7));
  EXPECT_EQ(rowsText(problem.Ag), "[ 2 4 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 6 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 8 2 ]");
  EXPECT_EQ(textOf(problem.slackUnit), "[ 1 1 ]");
}

TEST(IntegerRows, ThirdsAndHalvesMeetInSixths) {
  auto problem =
      problemFrom("[ ] [ ] [ [ 1/2 1/3 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 3 2 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 6 ]");
}

TYPED_TEST(IntegerRowsOver, RightHandSideTakesPartInTheFactorOfAnEquation) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ [ 1 2 ] ] [ 0.5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 2 4 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 1 ]");
}

TYPED_TEST(IntegerRowsOver, ModulusTakesPartInTheFactorOfItsEquation) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 1 ] [ 1 ] ] [ 1 1 ] [ 0.5 0.1 ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  addModulusColumns(problem);
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 2 1 0 ] [ 10 0 1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 2 10 ]");
  EXPECT_EQ(problem.qg[1] * TypeParam(2), TypeParam(1));
  EXPECT_EQ(problem.qg[2] * TypeParam(10), TypeParam(1));
}

TEST(IntegerRows, TargetsAreLookedAtFirst) {
  auto problem = problemFrom<long double>(
      "[ inf ] [ [ 1 0.0000000001 ] ] [ [ 1 0.0000000001 ] ] [ 1 ] [ ] [ ] [ ] [ ] "
      "[ 0 0 ] [ 0 0 ] [ 5 5 ]");
  try {
    toIntegerRows(problem);
    FAIL() << "nothing thrown";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "iMFFT overflow");
  }
}

TEST(IntegerRows, BoundsOfInequationsAreRoundedInwardsBehindTheFactor) {
  auto problem = problemFrom("[ ] [ ] [ ] [ ] [ ] [ [ 1/2 ] ] [ 1/3 ] [ 5/4 ] [ 0 ] [ 0 ] [ 5 ]");
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Au), "[ 1 ]");
  EXPECT_EQ(textOf(problem.lu), "[ 1 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 2 ]");
}

TYPED_TEST(IntegerRowsOver, BoundsOfIntegerInequationsAreRoundedToo) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 3 ] [ 4 ] ] [ -0.5 -inf ] [ 7.5 6.5 ] [ 0 ] [ 0 ] [ 5 ]");
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Au), "[ 3 ] [ 4 ]");
  EXPECT_EQ(textOf(problem.lu), "[ 0 -inf ]");
  EXPECT_EQ(textOf(problem.ru), "[ 7 6 ]");
}

TYPED_TEST(IntegerRowsOver, TargetsShareOneFactor) {
  auto problem = problemFrom<TypeParam>(
      "[ inf -inf 2.5 ] = [ 0.2 inf 3 ] [ [ 1 0.5 ] [ 0.25 4 ] [ 1 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
      "[ 0 0 ] [ 0 0 ] [ 5 5 ]");
  problem.ltu = TypeParam(3);
  problem.rtu = TypeParam(5);
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.At), "[ 20 10 ] [ 5 80 ] [ 20 20 ]");
  EXPECT_EQ(textOf(problem.dt), "[ inf -inf 50 ]");
  EXPECT_EQ(textOf(problem.kt), "[ 4 inf 60 ]");
  EXPECT_EQ(problem.ltu, TypeParam(60));
  EXPECT_EQ(problem.rtu, TypeParam(100));
}

// Otherwise an integer slack would stand for multiples of a half only, and x = 1 with
// the slack 1/2 would be lost.
TYPED_TEST(IntegerRowsOver, SlackCountsInPartsOfTheFactor) {
  auto problem = problemFrom<TypeParam>(
      "[ ] [ ] [ [ 7 0 ] [ 0.5 -1 ] ] [ 14 0 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 inf ]");
  problem.slackCount = 1;
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 7 0 ] [ 1 -1 ]");
  EXPECT_EQ(textOf(problem.slackUnit), "[ 1 2 ]");
}

TYPED_TEST(IntegerRowsOver, DeviationsCountInPartsOfTheFactorAndKeepTheirWeight) {
  auto problem = problemFrom<TypeParam>(
      "[ inf -inf -inf ] [ [ 1 0 0 0 0 0 ] [ 0 0 1 1 0 0 ] [ 0 0 0 0 1 1 ] ] "
      "[ [ 1 -1 0 0 0 0 ] [ 0.5 0 1 -1 0 0 ] [ 0.2 0 0 0 1 -1 ] ] [ 0 3 1 ] [ ] [ ] [ ] [ ] "
      "[ 0 0 0 0 0 0 ] [ 0 0 0 0 0 0 ] [ 5 inf inf inf inf inf ]");
  problem.slackCount = 1;
  problem.deviationCount = 4;
  toIntegerRows(problem);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 -1 0 0 0 0 ] [ 1 0 1 -1 0 0 ] [ 1 0 0 0 1 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 0 6 5 ]");
  EXPECT_EQ(textOf(problem.slackUnit), "[ 1 1 2 2 5 5 ]");
  // A deviation of 1/2 and one of 1/5 weigh 5 : 2, and 10 times as much as before.
  EXPECT_EQ(rowsText(problem.At), "[ 10 0 0 0 0 0 ] [ 0 0 5 5 0 0 ] [ 0 0 0 0 2 2 ]");
}

}  // namespace
}  // namespace starsift
