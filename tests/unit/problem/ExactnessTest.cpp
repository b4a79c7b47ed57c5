#include "problem/Exactness.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::problemFrom;

bool isExact(std::string_view text) {
  return equationsHoldExactly(problemFrom(text));
}

/// `row` x = `value` modulo `modulus`, x in steps of 10^-`decimals` from 0 to 5.
bool isExact(const std::string& row, const std::string& value, const std::string& modulus,
             const std::string& decimals) {
  return isExact("[ ] [ ] [ [ " + row + " ] ] [ " + value + " ] [ " + modulus +
                 " ] [ ] [ ] [ ] [ " + decimals + " ] [ 0 ] [ 5 ]");
}

TEST(Exactness, IsThatOfProblemsWithoutEquations) {
  EXPECT_TRUE(
      isExact("[ inf ] [ [ 1/3000000000 ] ] [ ] [ ] [ ] [ [ 1/3000000000 ] ] [ 0 ] [ 1 ] "
              "[ 0 ] [ 0 ] [ 5 ]"));
}

TEST(Exactness, IsThatOfIntegerEquations) {
  EXPECT_TRUE(isExact("12345678901234567890", "7", "", "0"));
}

TEST(Exactness, EndsWithNineDecimalsOfACoefficient) {
  EXPECT_TRUE(isExact("0.33333333", "1", "", "0"));
  EXPECT_FALSE(isExact("0.333333333", "1", "", "0"));
  EXPECT_FALSE(isExact("0.3333333333", "1", "", "0"));
}

TEST(Exactness, EndsWithNineDecimalsOfARightHandSide) {
  EXPECT_TRUE(isExact("1", "0.00000001", "", "0"));
  EXPECT_FALSE(isExact("1", "0.000000001", "", "0"));
}

TEST(Exactness, EndsWithNineDecimalsOfAModulus) {
  EXPECT_TRUE(isExact("1", "0", "0.00000003", "0"));
  EXPECT_FALSE(isExact("1", "0", "0.000000003", "0"));
}

TEST(Exactness, EndsWithTheLeastCommonMultipleOfAllDenominators) {
  EXPECT_TRUE(isExact("1/31627", "1/31627", "", "0"));
  EXPECT_TRUE(isExact("1/31627", "1/31607", "", "0"));   // 999,634,589
  EXPECT_FALSE(isExact("1/31627", "1/31643", "", "0"));  // 1,000,773,161
}

TEST(Exactness, CountsVariablesInTheirSteps) {
  EXPECT_TRUE(isExact("1", "1", "", "8"));
  EXPECT_FALSE(isExact("1", "1", "", "9"));
  EXPECT_TRUE(isExact("10", "1", "", "9"));
}

TEST(Exactness, IsThatOfEveryEquation) {
  EXPECT_FALSE(
      isExact("[ ] [ ] [ [ 1 ] [ 0.3333333333 ] [ 1 ] ] [ 1 1 1 ] [ ] [ ] [ ] [ ] "
              "[ 0 ] [ 0 ] [ 5 ]"));
}

TEST(Exactness, LeavesOutVariablesThatARowHasNot) {
  EXPECT_TRUE(isExact("[ ] [ ] [ [ 1 0 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 40 ] [ 0 0 ] [ 5 5 ]"));
}

TEST(Exactness, TakesAConstantAsANumber) {
  const auto withConstant = [](const std::string& coefficient, const std::string& constant) {
    return isExact("[ ] [ ] [ [ 1 " + coefficient + " ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 40 ] [ 0 " +
                   constant + " ] [ 5 " + constant + " ]");
  };
  EXPECT_TRUE(withConstant("1", "3"));
  EXPECT_TRUE(withConstant("30", "1/3000000000"));
  EXPECT_FALSE(withConstant("3", "1/3000000000"));
}

TEST(Exactness, IsNotKnownOfStepsThatAreRefused) {
  EXPECT_TRUE(isExact("0", "0", "", "1000"));
  EXPECT_FALSE(isExact("0", "0", "", "1001"));
  EXPECT_FALSE(isExact("0", "0", "", "0.5"));
  EXPECT_FALSE(isExact("0", "0", "", "-1"));
}

}  // namespace
}  // namespace starsift
