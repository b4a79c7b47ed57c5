#include "stars/StarCheck.h"

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::q;

/// The text of a problem of one variable within 0..inf; a test adds the rows.
struct ProblemText {
  std::string goals = "[ ]";
  std::string targets = "[ ]";
  std::string equations = "[ ] [ ] [ ]";
  std::string inequations = "[ ] [ ] [ ]";
  std::string variables = "[ 0 ] [ 0 ] [ inf ]";

  std::string text() const { return goals + targets + equations + inequations + variables; }
};

template <class T>
bool isSolutionOf(const ProblemText& text, const Vector<T>& x) {
  const Vanu<T> problem = problemFrom<T>(text.text());
  Star<T> star;
  star.Vector<T>::operator=(x);
  return StarChecker<T>(problem).check(star);
}

template <class T>
class StarCheckOver : public testing::Test {
 protected:
  static T inf() { return NumberTraits<T>::infinity(); }

  /// A component from its text.
  static T n(std::string_view text) { return NumberConversion<T, QQ>::convert(q(text)); }

  static bool isSolution(const ProblemText& text, const Vector<T>& x) {
    return isSolutionOf(text, x);
  }

  /// Of one variable.
  static bool isSolution(const ProblemText& text, std::string_view x) {
    return isSolutionOf(text, Vector<T>{n(x)});
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(StarCheckOver, LatticeNumbers);

const ProblemText box{.equations = "[ [ 0 ] ] [ 0 ] [ ]", .variables = "[ 0 ] [ 0.3 ] [ 7/10 ]"};

TYPED_TEST(StarCheckOver, BoundsBelongToTheBox) {
  EXPECT_TRUE(this->isSolution(box, "0.3"));
  EXPECT_TRUE(this->isSolution(box, "0.7"));
}

TYPED_TEST(StarCheckOver, BoundsHaveNoTolerance) {
  EXPECT_FALSE(this->isSolution(box, "0.299999999999999999"));
  EXPECT_FALSE(this->isSolution(box, "0.700000000000000001"));
}

TYPED_TEST(StarCheckOver, EveryVariableHasItsBox) {
  const ProblemText text{.equations = "[ [ 0 0 ] ] [ 0 ] [ ]",
                         .variables = "[ 0 0 ] [ 0 0 ] [ 5 5 ]"};
  EXPECT_TRUE(this->isSolution(text, Vector<TypeParam>{TypeParam(5), TypeParam(5)}));
  EXPECT_FALSE(this->isSolution(text, Vector<TypeParam>{TypeParam(5), TypeParam(6)}));
  EXPECT_FALSE(this->isSolution(text, Vector<TypeParam>{TypeParam(-1), TypeParam(5)}));
}

TYPED_TEST(StarCheckOver, StarOfAnotherLengthIsFatal) {
  EXPECT_FAILS_WITH(this->isSolution(box, Vector<TypeParam>{TypeParam(0), TypeParam(0)}),
                    "Vector: dimension mismatch10");
}

TYPED_TEST(StarCheckOver, RowOfAnotherLengthIsFatal) {
  Vanu<TypeParam> problem = problemFrom<TypeParam>(box.text());
  problem.Ag.resize(1, 2, false);
  Star<TypeParam> star{this->n("0.5")};
  EXPECT_FAILS_WITH(StarChecker<TypeParam>(problem).check(star),
                    "Matrix: mat-vec multiplication dimension mismatch");
}

TYPED_TEST(StarCheckOver, EquationHasATolerance) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 7 ] [ ]"};
  EXPECT_TRUE(this->isSolution(text, "7"));
  EXPECT_TRUE(this->isSolution(text, "7.000000001"));
  EXPECT_TRUE(this->isSolution(text, "6.999999999"));
}

TYPED_TEST(StarCheckOver, ToleranceOfAnEquationIsExact) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 7 ] [ ]"};
  EXPECT_FALSE(this->isSolution(text, "7.00000000100000001"));
  EXPECT_FALSE(this->isSolution(text, "6.99999999899999999"));
}

TYPED_TEST(StarCheckOver, EveryEquationCounts) {
  const ProblemText text{.equations = "[ [ 1 ] [ 2 ] ] [ 7 15 ] [ ]"};
  EXPECT_FALSE(this->isSolution(text, "7"));
}

TYPED_TEST(StarCheckOver, CongruenceTakesMultiplesOfItsModulus) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 2 ] [ 5 ]"};
  EXPECT_TRUE(this->isSolution(text, "2"));
  EXPECT_TRUE(this->isSolution(text, "12"));
  EXPECT_FALSE(this->isSolution(text, "11"));
}

TYPED_TEST(StarCheckOver, CongruenceHasATolerance) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 2 ] [ 5 ]"};
  EXPECT_TRUE(this->isSolution(text, "7.000000001"));
  EXPECT_FALSE(this->isSolution(text, "7.00000000100000001"));
}

TYPED_TEST(StarCheckOver, RemainderHasTheSignOfTheDifference) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 2 ] [ 5 ]",
                         .variables = "[ 0 ] [ -inf ] [ inf ]"};
  EXPECT_TRUE(this->isSolution(text, "-3"));
  EXPECT_TRUE(this->isSolution(text, "-3.000000001"));
  EXPECT_FALSE(this->isSolution(text, "-2.999999999"));
  EXPECT_FALSE(this->isSolution(text, "11.999999999"));
}

TYPED_TEST(StarCheckOver, ModulusOfZeroMakesAPlainEquation) {
  const ProblemText text{.equations = "[ [ 1 ] [ 1 ] ] [ 7 1 ] [ 0 2 ]"};
  EXPECT_TRUE(this->isSolution(text, "7"));
  EXPECT_FALSE(this->isSolution(text, "9"));
}

TYPED_TEST(StarCheckOver, ModulusWithinTheToleranceIsZero) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 7 ] [ 0.000000001 ]"};
  EXPECT_TRUE(this->isSolution(text, "7"));
  EXPECT_FALSE(this->isSolution(text, "8"));
}

TYPED_TEST(StarCheckOver, ModulusBeyondTheToleranceIsOne) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 7 ] [ 0.000000002 ]"};
  EXPECT_TRUE(this->isSolution(text, "8"));
}

TYPED_TEST(StarCheckOver, ModulusMayBeAFractionOrNegative) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 0 ] [ -1.5 ]"};
  EXPECT_TRUE(this->isSolution(text, "4.5"));
  EXPECT_FALSE(this->isSolution(text, "4"));
}

TYPED_TEST(StarCheckOver, RangedRowHasNoTolerance) {
  const ProblemText text{.inequations = "[ [ 3 ] ] [ 3.6 ] [ 9.3 ]"};
  EXPECT_TRUE(this->isSolution(text, "1.2"));
  EXPECT_TRUE(this->isSolution(text, "3.1"));
  EXPECT_FALSE(this->isSolution(text, "1.19999999999999999"));
  EXPECT_FALSE(this->isSolution(text, "3.10000000000000001"));
}

TYPED_TEST(StarCheckOver, EveryRangedRowCounts) {
  const ProblemText text{.inequations = "[ [ 1 ] [ -1 ] ] [ 0 -3 ] [ inf inf ]"};
  EXPECT_TRUE(this->isSolution(text, "3"));
  EXPECT_FALSE(this->isSolution(text, "4"));
}

TYPED_TEST(StarCheckOver, SumOfDecimalsDoesNotRound) {
  const ProblemText text{.inequations = "[ [ 0.3 0.7 ] ] [ -inf ] [ 120 ]",
                         .variables = "[ 0 0 ] [ 0 0 ] [ inf inf ]"};
  EXPECT_TRUE(this->isSolution(text, Vector<TypeParam>{TypeParam(400), TypeParam(0)}));
  EXPECT_TRUE(this->isSolution(text, Vector<TypeParam>{TypeParam(120), TypeParam(120)}));
  EXPECT_FALSE(this->isSolution(text, Vector<TypeParam>{TypeParam(121), TypeParam(120)}));
}

TYPED_TEST(StarCheckOver, CancellationOfLongProductsDoesNotRound) {
  const ProblemText text{.equations = "[ [ 999999999999 -999999999999 ] ] [ 999999999999 ] [ ]",
                         .variables = "[ 0 0 ] [ 0 0 ] [ inf inf ]"};
  EXPECT_TRUE(this->isSolution(
      text, Vector<TypeParam>{this->n("999999999999999"), this->n("999999999999998")}));
  EXPECT_FALSE(this->isSolution(
      text, Vector<TypeParam>{this->n("999999999999999"), this->n("999999999999999")}));
}

TYPED_TEST(StarCheckOver, ValuesAndNormsOfASolutionAreStored) {
  const auto problem = problemFrom<TypeParam>(
      "[ inf -inf 4 ] [ [ 1 2 ] [ 0.1 0 ] [ 1 -1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 "
      "]");
  Star<TypeParam> star{TypeParam(3), TypeParam(1)};
  star.time = 12;
  star.paramsText = "p";
  star.versionText = "v";
  EXPECT_TRUE(StarChecker<TypeParam>(problem).check(star));
  EXPECT_TRUE(
      identical(star.targetValues, Vector<TypeParam>{TypeParam(5), this->n("0.3"), TypeParam(2)}));
  EXPECT_EQ(star.targetNorm, this->n("-2.7"));
  EXPECT_EQ(star.slackNorm, TypeParam(2));
  EXPECT_EQ(star.time, 12);
  EXPECT_EQ(star.paramsText, "p");
  EXPECT_EQ(star.versionText, "v");
}

TYPED_TEST(StarCheckOver, StarThatIsNoSolutionStaysAsItWas) {
  const auto problem = problemFrom<TypeParam>(
      "[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ [ 1 ] ] [ 0 ] [ 3 ] [ 0 ] [ 0 ] [ 9 ]");
  Star<TypeParam> star{TypeParam(4)};
  star.targetNorm = TypeParam(77);
  star.slackNorm = TypeParam(78);
  star.targetValues = Vector<TypeParam>{TypeParam(79)};
  EXPECT_FALSE(StarChecker<TypeParam>(problem).check(star));
  EXPECT_EQ(star.targetNorm, TypeParam(77));
  EXPECT_EQ(star.slackNorm, TypeParam(78));
  EXPECT_EQ(star.targetValues[1], TypeParam(79));
}

TYPED_TEST(StarCheckOver, ProblemWithoutTargetsLeavesTheNormsOfTheStar) {
  const auto problem = problemFrom<TypeParam>(box.text());
  Star<TypeParam> star{this->n("0.5")};
  star.targetNorm = TypeParam(77);
  star.targetValues = Vector<TypeParam>{TypeParam(79)};
  EXPECT_TRUE(StarChecker<TypeParam>(problem).check(star));
  EXPECT_EQ(star.targetNorm, TypeParam(77));
  EXPECT_EQ(star.targetValues[1], TypeParam(79));
}

TYPED_TEST(StarCheckOver, OneCheckerTakesManyStars) {
  const auto problem =
      problemFrom<TypeParam>("[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 9 ]");
  StarChecker<TypeParam> checker(problem);
  Star<TypeParam> fraction{this->n("0.5")};
  Star<TypeParam> integer{TypeParam(4)};
  Star<TypeParam> wrong{TypeParam(10)};
  EXPECT_TRUE(checker.check(fraction));
  EXPECT_TRUE(checker.check(integer));
  EXPECT_FALSE(checker.check(wrong));
  EXPECT_TRUE(checker.check(fraction));
  EXPECT_EQ(fraction.targetNorm, this->n("-0.5"));
  EXPECT_EQ(integer.targetNorm, TypeParam(-4));
}

// Infinite components.

TYPED_TEST(StarCheckOver, InfiniteComponentNeedsAnInfiniteBound) {
  const ProblemText open{.inequations = "[ [ 1 ] ] [ 0 ] [ inf ]"};
  const ProblemText closed{.inequations = "[ [ 1 ] ] [ 0 ] [ inf ]",
                           .variables = "[ 0 ] [ 0 ] [ 9 ]"};
  EXPECT_TRUE(this->isSolution(open, Vector<TypeParam>{this->inf()}));
  EXPECT_FALSE(this->isSolution(closed, Vector<TypeParam>{this->inf()}));
}

TYPED_TEST(StarCheckOver, InfiniteRowIsWithinAnOpenRangeOnly) {
  const ProblemText text{.inequations = "[ [ 1 ] ] [ 0 ] [ 99 ]"};
  EXPECT_FALSE(this->isSolution(text, Vector<TypeParam>{this->inf()}));
}

TYPED_TEST(StarCheckOver, InfiniteRowFulfilsNoEquation) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 3 ] [ ]"};
  EXPECT_FALSE(this->isSolution(text, Vector<TypeParam>{this->inf()}));
}

TYPED_TEST(StarCheckOver, InfiniteRowFulfilsNoEquationAmongCongruences) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 3 ] [ 0 ]"};
  EXPECT_FALSE(this->isSolution(text, Vector<TypeParam>{this->inf()}));
}

TYPED_TEST(StarCheckOver, InfiniteValuesHaveInfiniteNorms) {
  const auto problem = problemFrom<TypeParam>(
      "[ -inf 4 ] [ [ 2 1 ] [ -1 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ inf 9 ]");
  Star<TypeParam> star{this->inf(), TypeParam(3)};
  EXPECT_TRUE(StarChecker<TypeParam>(problem).check(star));
  EXPECT_EQ(star.targetValues[1], this->inf());
  EXPECT_EQ(star.targetValues[2], -this->inf());
  EXPECT_EQ(star.targetNorm, this->inf());
  EXPECT_EQ(star.slackNorm, this->inf());
}

const ProblemText zeroTimesInfinity{.equations = "[ [ 0 1 ] ] [ 3 ] [ ]",
                                    .variables = "[ 0 0 ] [ 0 0 ] [ inf 9 ]"};
const ProblemText differenceOfInfinities{.inequations = "[ [ 1 -1 ] ] [ -inf ] [ 9 ]",
                                         .variables = "[ 0 0 ] [ 0 0 ] [ inf inf ]"};

TEST(StarCheck, InfinityOverZeroIsFatalInRationals) {
  EXPECT_FAILS_WITH(isSolutionOf(zeroTimesInfinity, Vector<QQ>{QQ::infinity(), 3}),
                    "qq: 0 * INF is not defined!");
}

TEST(StarCheck, InfinityOverZeroIsNoSolutionInLongDouble) {
  EXPECT_FALSE(isSolutionOf(zeroTimesInfinity, Vector<long double>{HUGE_VALL, 3.0L}));
}

const ProblemText infiniteResidue{.equations = "[ [ 1 ] ] [ 3 ] [ 2 ]"};

TEST(StarCheck, ResidueOfInfinityIsFatalInRationals) {
  EXPECT_FAILS_WITH(isSolutionOf(infiniteResidue, Vector<QQ>{QQ::infinity()}),
                    "INF - INF is not defined");
}

TEST(StarCheck, ResidueOfInfinityIsNoSolutionInLongDouble) {
  EXPECT_FALSE(isSolutionOf(infiniteResidue, Vector<long double>{HUGE_VALL}));
}

TEST(StarCheck, DifferenceOfInfinitiesIsFatalInRationals) {
  EXPECT_FAILS_WITH(
      isSolutionOf(differenceOfInfinities, Vector<QQ>{QQ::infinity(), QQ::infinity()}),
      "INF - INF is not defined");
}

TEST(StarCheck, DifferenceOfInfinitiesIsNoSolutionInLongDouble) {
  EXPECT_FALSE(isSolutionOf(differenceOfInfinities, Vector<long double>{HUGE_VALL, HUGE_VALL}));
}

TEST(StarCheck, TargetValueThatIsNoNumberIsNoSolution) {
  const ProblemText text{
      .goals = "[ -inf ]", .targets = "[ [ 0 1 ] ]", .variables = "[ 0 0 ] [ 0 0 ] [ inf 9 ]"};
  EXPECT_FALSE(isSolutionOf(text, Vector<long double>{HUGE_VALL, 3.0L}));
}

TEST(StarCheck, NormThatIsNoNumberIsNoSolution) {
  const ProblemText text{.goals = "[ -inf inf ]", .targets = "[ [ 1 ] [ 1 ] ]"};
  EXPECT_FALSE(isSolutionOf(text, Vector<long double>{HUGE_VALL}));
}

TEST(StarCheck, NormThatIsNoNumberIsFatalInRationals) {
  const ProblemText text{.goals = "[ -inf inf ]", .targets = "[ [ 1 ] [ 1 ] ]"};
  EXPECT_FAILS_WITH(isSolutionOf(text, Vector<QQ>{QQ::infinity()}), "INF - INF is not defined");
}

TEST(StarCheck, NanIsNoSolution) {
  const ProblemText text{.equations = "[ [ 1 ] ] [ 0 ] [ ]", .variables = "[ 0 ] [ -inf ] [ inf ]"};
  EXPECT_FALSE(
      isSolutionOf(text, Vector<long double>{std::numeric_limits<long double>::quiet_NaN()}));
}

// Results that long double can't hold.

/// One variable, its tenfold maximised, at most `most`.
Vanu<long double> tenfold(const std::string& most) {
  return problemFrom<long double>("[ inf ] [ [ 10 ] ] [ ] [ ] [ ] [ [ 1 ] ] [ 0 ] [ " + most +
                                  " ] [ 0 ] [ 0 ] [ inf ]");
}

template <class Step>
void expectLostCheck(Step step) {
  try {
    step();
    FAIL() << "no exception";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "Precision lost during check");
  }
}

TEST(StarCheck, ValueOfNineteenDigitsLosesPrecision) {
  const Vanu<long double> problem = tenfold("inf");
  Star<long double> star{999999999999999999.0L};
  expectLostCheck([&] { StarChecker<long double>(problem).check(star); });
  EXPECT_EQ(star.targetValues.dimension(), 0);
  EXPECT_EQ(star.targetNorm, 0.0L);
}

TEST(StarCheck, ValueOfEighteenDigitsFits) {
  const Vanu<long double> problem = tenfold("inf");
  Star<long double> star{99999999999999999.0L};
  EXPECT_TRUE(StarChecker<long double>(problem).check(star));
  EXPECT_EQ(star.targetNorm, -999999999999999990.0L);
}

TEST(StarCheck, StarThatIsNoSolutionNeverLosesPrecision) {
  const Vanu<long double> problem = tenfold("5");
  Star<long double> star{999999999999999999.0L};
  EXPECT_FALSE(StarChecker<long double>(problem).check(star));
}

TEST(StarCheck, LongProductsOfRowsLoseNoPrecision) {
  const auto problem = problemFrom<long double>(
      "[ ] [ ] [ ] [ ] [ ] [ [ 999999999 ] ] [ 0 ] [ inf ] [ 0 ] [ 0 ] [ inf ]");
  Star<long double> star{999999999999999999.0L};
  EXPECT_TRUE(StarChecker<long double>(problem).check(star));
}

TEST(StarCheck, DecimalOfTooManyDigitsLosesPrecision) {
  const auto problem = problemFrom<long double>(
      "[ -inf ] [ [ 0.0123456789123 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ inf ]");
  Star<long double> star{0.01234567891L};
  expectLostCheck([&] { StarChecker<long double>(problem).check(star); });
}

TEST(StarCheck, NormAloneMayLosePrecision) {
  const auto problem = problemFrom<long double>(
      "[ -inf -inf ] [ [ 1 ] [ 9 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ inf ]");
  Star<long double> star{100000000000000000.0L};
  expectLostCheck([&] { StarChecker<long double>(problem).check(star); });
}

TEST(StarCheck, ExactProductOfTooManyDigitsLosesPrecision) {
  const auto problem = problemFrom<long double>(
      "[ -inf ] [ [ 0.000003814697265625 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ inf ]");
  Star<long double> star{0.000003814697265625L};
  expectLostCheck([&] { StarChecker<long double>(problem).check(star); });
}

// The check of all stars.

template <class T>
Array<Star<T>> starsAt(std::initializer_list<long> points) {
  Array<Star<T>> stars(static_cast<Index>(points.size()));
  Index next = 0;
  for (const long point : points) stars[++next] = Star<T>{T(point)};
  return stars;
}

template <class T>
Vanu<T> evenUpToEight() {
  return problemFrom<T>("[ inf ] [ [ 3 ] ] [ [ 1 ] ] [ 0 ] [ 2 ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 8 ]");
}

TYPED_TEST(StarCheckOver, RightStarsAllStay) {
  auto stars = starsAt<TypeParam>({4, 2, 8});
  EXPECT_TRUE(checkStars(evenUpToEight<TypeParam>(), stars));
  ASSERT_EQ(stars.dimension(), 3);
  EXPECT_EQ(stars[2].targetNorm, TypeParam(-6));
  EXPECT_EQ(stars[3].targetNorm, TypeParam(-24));
}

TYPED_TEST(StarCheckOver, WrongStarsGoAndTheOthersKeepTheirOrder) {
  auto stars = starsAt<TypeParam>({1, 4, 3, 10, 2, 8, 9});
  EXPECT_FALSE(checkStars(evenUpToEight<TypeParam>(), stars));
  ASSERT_EQ(stars.dimension(), 3);
  EXPECT_EQ(stars[1][1], TypeParam(4));
  EXPECT_EQ(stars[2][1], TypeParam(2));
  EXPECT_EQ(stars[3][1], TypeParam(8));
  EXPECT_EQ(stars[1].targetNorm, TypeParam(-12));
  EXPECT_EQ(stars[2].targetNorm, TypeParam(-6));
  EXPECT_EQ(stars[3].targetNorm, TypeParam(-24));
}

TYPED_TEST(StarCheckOver, WrongStarsMayBeAll) {
  auto stars = starsAt<TypeParam>({1, 3});
  EXPECT_FALSE(checkStars(evenUpToEight<TypeParam>(), stars));
  EXPECT_EQ(stars.dimension(), 0);
}

TYPED_TEST(StarCheckOver, NoStarsAreAllRight) {
  Array<Star<TypeParam>> stars;
  EXPECT_TRUE(checkStars(evenUpToEight<TypeParam>(), stars));
}

TEST(CheckStars, ExceptionLeavesAllStarsAsTheyWere) {
  auto stars = starsAt<long double>({-1, 3, 999999999999999999, 4});
  stars[2].targetNorm = 77.0L;
  expectLostCheck([&] { checkStars(tenfold("inf"), stars); });
  ASSERT_EQ(stars.dimension(), 4);
  EXPECT_EQ(stars[1][1], -1.0L);
  EXPECT_EQ(stars[2].targetNorm, 77.0L);
  EXPECT_EQ(stars[2].targetValues.dimension(), 0);
}

TYPED_TEST(StarCheckOver, ManyStarsAreChecked) {
  Array<Star<TypeParam>> stars(20'000);
  for (Index i = 1; i <= 20'000; ++i) stars[i] = Star<TypeParam>{TypeParam(i % 9)};
  EXPECT_FALSE(checkStars(evenUpToEight<TypeParam>(), stars));
  EXPECT_EQ(stars.dimension(), 11'111);
}

}  // namespace
}  // namespace starsift
