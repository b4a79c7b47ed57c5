#include "lattice/state/CoordinateFrame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::textOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<Index> coordinates(const CoordinateBlock& block) {
  return {block.begin(), block.end()};
}

/// Three equations, one a congruence, two inequations, a target, five variables of which two
/// are deviations.
Vanu<long double> problem() {
  Vanu<long double> result;
  result.Ag = Matrix<long double>(3, 6);
  result.bg = Vector<long double>(3);
  result.qg = Vector<long double>{0, 7, 0};
  result.Au = Matrix<long double>(2, 6);
  result.rx = Vector<long double>(5);
  result.lx = Vector<long double>(5);
  result.fd.resize(5, false);
  for (FreedomDegree& kind : result.fd) kind = FreedomDegree::bounded;
  result.deviationCount = 2;
  result.atuValid = true;
  return result;
}

TEST(CoordinateFrame, EquationLatticeHasEquationsVariablesAndModuli) {
  CoordinateFrame<long double> frame;
  frame.latticeKind = LatticeKind::equations;
  frame.equationsRemoved = false;
  frame.modsInLattice = true;
  const CoordinateBlocks blocks = frame.blocks(problem(), 10);
  EXPECT_THAT(coordinates(blocks.equations), ElementsAre(1, 2, 3));
  EXPECT_THAT(coordinates(blocks.target), IsEmpty());
  EXPECT_THAT(coordinates(blocks.inequations), IsEmpty());
  EXPECT_THAT(coordinates(blocks.variables), ElementsAre(4, 5, 6, 7, 8));
  EXPECT_THAT(coordinates(blocks.deviations), ElementsAre(7, 8));
  EXPECT_THAT(coordinates(blocks.moduli), ElementsAre(9));
}

TEST(CoordinateFrame, FullLatticeHasRowsVariablesAndNoEquations) {
  CoordinateFrame<long double> frame;
  frame.latticeKind = LatticeKind::full;
  const CoordinateBlocks blocks = frame.blocks(problem(), 9);
  EXPECT_THAT(coordinates(blocks.equations), IsEmpty());
  EXPECT_THAT(coordinates(blocks.target), ElementsAre(1));
  EXPECT_THAT(coordinates(blocks.inequations), ElementsAre(2, 3));
  EXPECT_THAT(coordinates(blocks.variables), ElementsAre(4, 5, 6, 7, 8));
  EXPECT_THAT(coordinates(blocks.deviations), ElementsAre(7, 8));
  EXPECT_THAT(coordinates(blocks.moduli), IsEmpty());
  EXPECT_EQ(blocks.variables.at(2), 5);
}

TEST(CoordinateFrame, LatticeToBeGeneratedHasItsModuli) {
  const auto full = CoordinateFrame<long double>::generated(problem(), LatticeKind::full);
  EXPECT_THAT(coordinates(full.moduli), ElementsAre(9));
  const auto equations = CoordinateFrame<long double>::generated(problem(), LatticeKind::equations);
  EXPECT_THAT(coordinates(equations.equations), ElementsAre(1, 2, 3));
  EXPECT_THAT(coordinates(equations.moduli), ElementsAre(9));
}

TEST(CoordinateFrame, TargetIsNotPartOfTheBox) {
  CoordinateFrame<long double> frame;
  frame.latticeKind = LatticeKind::full;
  frame.resize(9);
  for (Index j = 1; j <= 9; ++j) {
    frame.l[j] = -3;
    frame.r[j] = 3;
  }
  EXPECT_EQ(frame.firstChecked(problem()), 2);
  EXPECT_TRUE(frame.liesInBox(problem(), {99, 3, -3, 3, 0, 0, 0, 0, 1}));
  EXPECT_FALSE(frame.liesInBox(problem(), {0, 4, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_FALSE(frame.liesInBox(problem(), {0, 0, 0, 0, 0, 0, 0, -4, 1}));
  EXPECT_FALSE(frame.liesInBox(problem(), {0, 0, 0, 0, 0, 0, 0, 0, 4}));
}

TEST(CoordinateFrame, FreeSidesOfVariablesAreNoBounds) {
  Vanu<long double> free = problem();
  free.fd[1] = FreedomDegree::free;
  free.fd[2] = FreedomDegree::leftFree;
  free.fd[3] = FreedomDegree::rightFree;
  CoordinateFrame<long double> frame;
  frame.latticeKind = LatticeKind::full;
  frame.resize(9);
  EXPECT_TRUE(frame.liesInBox(free, {0, 0, 0, 9, -9, 9, 0, 0, 0}));
  EXPECT_TRUE(frame.liesInBox(free, {0, 0, 0, -9, -9, 9, 0, 0, 0}));
  EXPECT_FALSE(frame.liesInBox(free, {0, 0, 0, 0, 9, 0, 0, 0, 0}));
  EXPECT_FALSE(frame.liesInBox(free, {0, 0, 0, 0, 0, -9, 0, 0, 0}));
}

TEST(CoordinateFrame, RemovedCoordinatesLeaveAllVectors) {
  CoordinateFrame<long double> frame;
  frame.resize(4);
  for (Index j = 1; j <= 4; ++j) frame.l[j] = frame.r[j] = frame.c[j] = static_cast<long double>(j);
  frame.recordBounds();
  EXPECT_TRUE(frame.lEqualsR);
  EXPECT_EQ(frame.supLimit, 90);
  frame.remove(2, 2);
  EXPECT_EQ(textOf(frame.l), "[ 1 4 ]");
  EXPECT_EQ(textOf(frame.c), "[ 1 4 ]");
  EXPECT_EQ(textOf(frame.rSave), "[ 1 4 ]");
  EXPECT_EQ(frame.supLimit, 51);
}

TEST(CoordinateFrame, ConvertsStrictly) {
  CoordinateFrame<QQ> exact;
  exact.resize(1);
  exact.latticeKind = LatticeKind::full;
  exact.rangeMultiple = QQ(12);
  exact.l[1] = QQ(-5);
  CoordinateFrame<long double> standard;
  standard.convertFrom(exact);
  EXPECT_EQ(standard.latticeKind, LatticeKind::full);
  EXPECT_EQ(standard.rangeMultiple, 12);
  EXPECT_EQ(standard.l[1], -5);
  exact.c[1] = QQ(1, 3);
  EXPECT_THROW(standard.convertFrom(exact), PrecisionException);
}

}  // namespace
}  // namespace starsift
