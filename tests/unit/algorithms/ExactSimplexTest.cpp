#include "algorithms/programs/ExactSimplex.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

using Row = ExactSimplex::Row;

bool always() {
  return true;
}

Row row(std::vector<QQ> coefficients, std::optional<QQ> lower, std::optional<QQ> upper) {
  return {std::move(coefficients), std::move(lower), std::move(upper)};
}

/// x, y from 0 to 5 and 3 x + 2 y <= 12; the last row is the objective -x - y.
std::vector<Row> triangle() {
  return {row({1, 0}, 0, 5), row({0, 1}, 0, 5), row({3, 2}, std::nullopt, 12),
          row({-1, -1}, std::nullopt, std::nullopt)};
}

TEST(ExactSimplex, FindsTheLeastValueOfARow) {
  ExactSimplex simplex(2, triangle(), &always);
  ASSERT_EQ(simplex.makeFeasible(), SimplexEnd::reached);
  ASSERT_EQ(simplex.minimise(3, 1), SimplexEnd::reached);
  EXPECT_EQ(simplex.value(3), QQ(-17, 3));
  EXPECT_EQ(simplex.value(0), QQ(2, 3));
  EXPECT_EQ(simplex.value(1), QQ(5));
}

TEST(ExactSimplex, FindsTheGreatestValueOfARow) {
  ExactSimplex simplex(2, triangle(), &always);
  ASSERT_EQ(simplex.makeFeasible(), SimplexEnd::reached);
  ASSERT_EQ(simplex.minimise(2, -1), SimplexEnd::reached);
  EXPECT_EQ(simplex.value(2), QQ(12));
  ASSERT_EQ(simplex.minimise(2, 1), SimplexEnd::reached);
  EXPECT_EQ(simplex.value(2), QQ(0));
}

TEST(ExactSimplex, StartsOutsideOfTheBounds) {
  std::vector<Row> rows = triangle();
  rows[2].lower = QQ(11);
  ExactSimplex simplex(2, rows, &always);
  ASSERT_EQ(simplex.makeFeasible(), SimplexEnd::reached);
  ASSERT_EQ(simplex.minimise(1, 1), SimplexEnd::reached);
  EXPECT_EQ(simplex.value(1), QQ(0));
  EXPECT_GE(simplex.value(0), QQ(11, 3));
}

TEST(ExactSimplex, ProvesThatThereIsNoPoint) {
  std::vector<Row> rows = triangle();
  rows[2].lower = rows[2].upper = QQ(26);
  ExactSimplex simplex(2, rows, &always);
  EXPECT_EQ(simplex.makeFeasible(), SimplexEnd::infeasible);
}

TEST(ExactSimplex, FindsADirectionWithoutEnd) {
  // x - y <= 3 and x, y >= 0 leave -x - y unbounded, but not x - y from above.
  ExactSimplex simplex(2,
                       {row({1, 0}, 0, std::nullopt), row({0, 1}, 0, std::nullopt),
                        row({1, -1}, std::nullopt, 3), row({-1, -1}, std::nullopt, std::nullopt)},
                       &always);
  ASSERT_EQ(simplex.makeFeasible(), SimplexEnd::reached);
  ASSERT_EQ(simplex.minimise(3, 1), SimplexEnd::unbounded);
  const std::vector<QQ>& ray = simplex.ray();
  EXPECT_GE(ray[0], QQ(0));
  EXPECT_GE(ray[1], QQ(0));
  EXPECT_EQ(ray[2], ray[0] - ray[1]);
  EXPECT_LE(ray[2], QQ(0));
  EXPECT_LT(ray[3], QQ(0));
  ASSERT_EQ(simplex.minimise(2, -1), SimplexEnd::reached);
  EXPECT_EQ(simplex.value(2), QQ(3));
}

TEST(ExactSimplex, DoesNotCycleAtADegeneratePoint) {
  // E. M. L. Beale's example, which cycles by the largest coefficient.
  ExactSimplex simplex(4,
                       {row({QQ(1, 4), -60, QQ(-1, 25), 9}, std::nullopt, 0),
                        row({QQ(1, 2), -90, QQ(-1, 50), 3}, std::nullopt, 0),
                        row({0, 0, 1, 0}, 0, 1), row({1, 0, 0, 0}, 0, std::nullopt),
                        row({0, 1, 0, 0}, 0, std::nullopt), row({0, 0, 0, 1}, 0, std::nullopt),
                        row({QQ(-3, 4), 150, QQ(-1, 50), 6}, std::nullopt, std::nullopt)},
                       &always);
  ASSERT_EQ(simplex.makeFeasible(), SimplexEnd::reached);
  ASSERT_EQ(simplex.minimise(6, 1), SimplexEnd::reached);
  EXPECT_EQ(simplex.value(6), QQ(-1, 20));
}

TEST(ExactSimplex, EndsWhenItIsTold) {
  ExactSimplex simplex(2, triangle(), [] { return false; });
  ASSERT_EQ(simplex.makeFeasible(), SimplexEnd::reached);
  EXPECT_EQ(simplex.minimise(3, 1), SimplexEnd::stopped);
}

TEST(ExactSimplex, NeedsNoVariables) {
  ExactSimplex fits(0, {row({}, 0, 1)}, &always);
  EXPECT_EQ(fits.makeFeasible(), SimplexEnd::reached);
  EXPECT_EQ(fits.minimise(0, 1), SimplexEnd::reached);
  ExactSimplex contradicts(0, {row({}, 1, 1)}, &always);
  EXPECT_EQ(contradicts.makeFeasible(), SimplexEnd::infeasible);
}

}  // namespace
}  // namespace starsift
