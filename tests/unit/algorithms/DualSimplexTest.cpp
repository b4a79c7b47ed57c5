#include "algorithms/programs/DualSimplex.h"

#include <gtest/gtest.h>

#include <limits>

namespace starsift {
namespace {

constexpr double endless = std::numeric_limits<double>::infinity();

bool always() {
  return true;
}

/// -x - y with x, y from 0 to 5 and 3 x + 2 y <= 12.
LinearProgram triangle() {
  return {{-1, -1}, {{0, 5}, {0, 5}}, {{{0, 3}, {1, 2}}}, {{-endless, 12}}};
}

TEST(DualSimplex, FindsAVertex) {
  const ProgramEnd end = solveProgram(triangle(), &always);
  ASSERT_EQ(end.kind, ProgramEnd::Kind::least);
  EXPECT_NEAR(end.point[0], 2.0 / 3, 1e-12);
  EXPECT_NEAR(end.point[1], 5, 1e-12);
  EXPECT_NEAR(end.multipliers[0], -1.0 / 3, 1e-12);
}

TEST(DualSimplex, StaysWhereTheCostIsLeastWithoutRows) {
  const ProgramEnd end = solveProgram({{1, -1, 0}, {{-2, 7}, {-2, 7}, {3, 4}}, {}, {}}, &always);
  ASSERT_EQ(end.kind, ProgramEnd::Kind::least);
  EXPECT_EQ(end.point, (std::vector<double>{-2, 7, 3}));
}

TEST(DualSimplex, HasMultipliersOfAContradiction) {
  LinearProgram program = triangle();
  program.rowBounds[0] = {26, endless};
  const ProgramEnd end = solveProgram(program, &always);
  ASSERT_EQ(end.kind, ProgramEnd::Kind::infeasible);
  // 26 <= 3 x + 2 y <= 25
  EXPECT_GT(end.multipliers[0], 0);
}

TEST(DualSimplex, SaysNothingOfACostThatFallsWithoutEnd) {
  LinearProgram program = triangle();
  program.columns[0].upper = program.columns[1].upper = endless;
  program.rows[0][1].value = -2;
  EXPECT_EQ(solveProgram(program, &always).kind, ProgramEnd::Kind::stopped);
}

TEST(DualSimplex, HoldsFreeColumnsAtTheirRows) {
  // x free, x + y = 7, y from 1 to 2: the least x is 5.
  const ProgramEnd end =
      solveProgram({{1, 0}, {{-endless, endless}, {1, 2}}, {{{0, 1}, {1, 1}}}, {{7, 7}}}, &always);
  ASSERT_EQ(end.kind, ProgramEnd::Kind::least);
  EXPECT_NEAR(end.point[0], 5, 1e-9);
}

TEST(DualSimplex, CanBeStopped) {
  EXPECT_EQ(solveProgram(triangle(), [] { return false; }).kind, ProgramEnd::Kind::stopped);
}

}  // namespace
}  // namespace starsift
