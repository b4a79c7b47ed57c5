#include "problem/SearchedPoints.h"

#include <gtest/gtest.h>

#include <string_view>

#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::problemFrom;

bool contain(std::string_view problem, const Vector<QQ>& x) {
  const Vanu<QQ> read = problemFrom(problem);
  return SearchedPoints(read).contain(x);
}

TEST(SearchedPoints, LieOnStepsUnlessTheyAreConstant) {
  constexpr std::string_view problem =
      "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 1 ] ] [ 0 ] [ 99 ] [ 0 1 0 ] [ 0 0 1/3 ] [ 9 9 1/3 ]";
  const QQ third(QQ(1) / QQ(3));
  EXPECT_TRUE(contain(problem, {QQ(2), QQ(5) / QQ(2), third}));
  EXPECT_FALSE(contain(problem, {QQ(5) / QQ(2), QQ(2), third}));
  EXPECT_FALSE(contain(problem, {QQ(2), QQ(9) / QQ(4), third}));
}

TEST(SearchedPoints, SatisfyEquationsExactly) {
  constexpr std::string_view problem =
      "[ ] [ ] [ [ 1 1/1000000000000 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]";
  EXPECT_TRUE(contain(problem, {QQ(3), QQ(0)}));
  EXPECT_FALSE(contain(problem, {QQ(3), QQ(1)}));
}

TEST(SearchedPoints, SatisfyCongruencesExactly) {
  constexpr std::string_view problem =
      "[ ] [ ] [ [ 1 1/1000000000000 ] ] [ 1 ] [ 4 ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]";
  EXPECT_TRUE(contain(problem, {QQ(5), QQ(0)}));
  EXPECT_FALSE(contain(problem, {QQ(5), QQ(1)}));
}

TEST(SearchedPoints, AreAllWhereStepsAreUnknown) {
  EXPECT_TRUE(
      contain("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 0 ] [ 9 ] [ 1/2 ] [ 0 ] [ 9 ]", {QQ(1) / QQ(3)}));
}

}  // namespace
}  // namespace starsift
