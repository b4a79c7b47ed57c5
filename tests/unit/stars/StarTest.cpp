#include "stars/Star.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/LossyConversion.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::textOf;

Star<long double> filledStar() {
  Star<long double> star{1, -2};
  star.time = 17;
  star.targetValues = {4, 5};
  star.targetNorm = -9;
  star.slackNorm = 2;
  star.paramsText = "--verb=1";
  star.versionText = "1.2.3";
  star.fresh = true;
  return star;
}

/// Every field of a star made by filledStar(), in whatever number type.
template <class T>
void expectFilled(const Star<T>& star) {
  EXPECT_EQ(textOf(star.x()), "[ 1 -2 ]");
  EXPECT_EQ(star.time, 17);
  EXPECT_EQ(textOf(star.targetValues), "[ 4 5 ]");
  EXPECT_EQ(star.targetNorm, -9);
  EXPECT_EQ(star.slackNorm, 2);
  EXPECT_EQ(star.paramsText, "--verb=1");
  EXPECT_EQ(star.versionText, "1.2.3");
  EXPECT_TRUE(star.fresh);
}

TEST(Star, StartsEmpty) {
  const Star<long double> star;
  EXPECT_EQ(star.x().dimension(), 0);
  EXPECT_EQ(star.time, -1);
  EXPECT_EQ(star.targetValues.dimension(), 0);
  EXPECT_EQ(star.targetNorm, 0);
  EXPECT_EQ(star.slackNorm, 0);
  EXPECT_EQ(star.paramsText, "");
  EXPECT_EQ(star.versionText, "");
  EXPECT_FALSE(star.fresh);
}

TEST(Star, HasTheTextOfItsVector) {
  EXPECT_EQ(textOf(filledStar()), "[ 1 -2 ]");
}

TEST(Star, IsItsOwnX) {
  Star<long double> star = filledStar();
  star[1] = 7;
  EXPECT_EQ(star.x()[1], 7);
}

TEST(Star, CopiesEveryField) {
  const Star<long double> star = filledStar();
  Star<long double> copy;
  copy = star;
  expectFilled(copy);
  expectFilled(star);
}

TEST(Star, MovesEveryField) {
  Star<long double> star = filledStar();
  const Star<long double> moved(std::move(star));
  expectFilled(moved);
}

TEST(Star, ForgetsSolutionAndTimeWhenItIsCleared) {
  Star<long double> star = filledStar();
  star.clear();
  EXPECT_EQ(star.dimension(), 0);
  EXPECT_EQ(star.time, -1);
}

TEST(Star, ConvertsEveryField) {
  Star<long> star;
  star.convertFrom(filledStar(), true);
  expectFilled(star);
  Star<long double> back;
  back.convertFrom(star, true);
  expectFilled(back);
}

/// The message of the conversion of a star with one field changed.
template <class Change>
std::string conversionOf(Change change) {
  Star<long double> source = filledStar();
  change(source);
  Star<long> target;
  target.convertFrom(filledStar(), true);
  try {
    target.convertFrom(source, true);
  } catch (const PrecisionException& exception) {
    expectFilled(target);
    return exception.message();
  }
  return "converted";
}

TEST(Star, TellsALossInAnyNumberAndStaysAsItWas) {
  const std::string loss = "Precision lost during conversion";
  EXPECT_EQ(conversionOf([](Star<long double>&) {}), "converted");
  EXPECT_EQ(conversionOf([](Star<long double>& star) { star[1] = 0.5L; }), loss);
  EXPECT_EQ(conversionOf([](Star<long double>& star) { star.targetValues[2] = 0.5L; }), loss);
  EXPECT_EQ(conversionOf([](Star<long double>& star) { star.targetNorm = 0.5L; }), loss);
  EXPECT_EQ(conversionOf([](Star<long double>& star) { star.slackNorm = 0.5L; }), loss);
}

TEST(Star, PassesTheExceptionOfANumberOnAndStaysAsItWas) {
  EXPECT_EQ(conversionOf([](Star<long double>& star) { star.slackNorm = 1e19L; }), "too long");
}

TEST(Star, LosesSilentlyWithoutCheck) {
  Star<long double> source = filledStar();
  source.slackNorm = 2.5L;
  Star<long> target;
  target.convertFrom(source, false);
  expectFilled(target);
}

TEST(Star, ConvertsBetweenTheNumberTypes) {
  Star<QQ> exact{QQ(1), QQ(2)};
  exact.time = 5;
  exact.targetNorm = QQ(-1, 4);
  Star<long double> rounded;
  rounded.convertFrom(exact, true);
  EXPECT_EQ(rounded.time, 5);
  EXPECT_EQ(rounded.targetNorm, -0.25L);
  exact.slackNorm = QQ(1, 3);
  EXPECT_THROW(rounded.convertFrom(exact, true), PostCommaPrecisionException);
  EXPECT_EQ(rounded.slackNorm, 0);
}

}  // namespace
}  // namespace starsift
