// Each bound of an enumeration is needed: with a fault planted in it, points are lost.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>

#include "search/enumeration/CosetReduction.h"
#include "support/fixtures/CollectingVisitor.h"
#include "support/fixtures/EquationCoset.h"
#include "support/generators/CosetGenerators.h"
#include "support/oracles/BoxPoints.h"

namespace starsift {
namespace {

using Geometry = TreeGeometry<double>;
using Fault = std::function<void(Geometry&)>;

/// Random cosets of a fixed seed until the fault loses a point, or `most` of them.
bool isSeen(const rc::Gen<BoxCoset>& cosets, const Fault& fault, int most = 400) {
  for (int i = 0; i < most; ++i) {
    BoxCoset coset = cosets(rc::Random(static_cast<std::uint64_t>(i)), 100).value();
    reduceCoset(coset, [] { return true; });
    if (isEmptyBox(coset)) continue;
    const auto walk = test::editedWalk<double>(coset, fault);
    test::CollectingVisitor visitor;
    walk->run(visitor, {});
    if (visitor.points != test::pointsByBruteForce(coset)) return true;
  }
  return false;
}

TEST(EnumerationFaults, NoFaultLosesNothing) {
  EXPECT_FALSE(isSeen(
      test::arbitraryCornerCoset(), [](Geometry&) {}, 50));
  EXPECT_FALSE(isSeen(
      test::arbitraryCoset(), [](Geometry&) {}, 200));
}

// Corners lie on the bounds, so that a part in a million is enough.
TEST(EnumerationFaults, NegativeSlackOfTheLengthIsSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCornerCoset(), [](Geometry& g) { g.slacks.length = -1e-6; }));
}

TEST(EnumerationFaults, NegativeSlackOfHoeldersBoundIsSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCornerCoset(), [](Geometry& g) { g.slacks.hoelder = -1e-6; }));
}

TEST(EnumerationFaults, NegatedProvenSlackOfHoeldersBoundIsSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCornerCoset(),
                     [](Geometry& g) { g.slacks.hoelder = -g.slacks.hoelder; }));
}

TEST(EnumerationFaults, CoefficientBoundsThatAreTooCloseAreSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCoset(), [](Geometry& g) {
    for (double& bound : g.least) bound += 1;
  }));
  EXPECT_TRUE(isSeen(test::arbitraryCoset(), [](Geometry& g) {
    for (double& bound : g.most) bound -= 1;
  }));
}

TEST(EnumerationFaults, WrongFinalCoordinatesAreSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCoset(), [](Geometry& g) {
    for (auto& level : g.finals)
      for (auto& final : level) final.step *= 1.5;
  }));
}

TEST(EnumerationFaults, WrongLengthsOfRowsAreSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCornerCoset(), [](Geometry& g) {
    for (double& length : g.squaredLengths) length *= 1 + 1e-6;
  }));
}

TEST(EnumerationFaults, WrongCentresAreSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCornerCoset(), [](Geometry& g) {
    for (std::size_t k = 0; k < g.dimension; ++k)
      for (std::size_t j = 0; j < g.coordinates; ++j) g.centres.at(k, j) *= 1 + 1e-5;
  }));
}

TEST(EnumerationFaults, WrongDirectionsAreSeen) {
  EXPECT_TRUE(isSeen(test::arbitraryCornerCoset(), [](Geometry& g) {
    for (std::size_t k = 0; k < g.dimension; ++k) g.directions.at(k, k % g.coordinates) *= 1 - 1e-3;
  }));
}

// The least solvable side of a knapsack has one solution, a corner of the linear programs.
TEST(EnumerationFaults, TooTightProgramsAreSeen) {
  const std::vector<ZZ> weights{ZZ(12223), ZZ(12224), ZZ(36674), ZZ(61119), ZZ(85569)};
  const std::vector<ZZ> upper{ZZ(7334), ZZ(7333), ZZ(2444), ZZ(1466), ZZ(1047)};
  auto coset = test::cosetOfEquations({weights}, {ZZ(89643482)}, std::vector<ZZ>(5), upper);
  ASSERT_TRUE(coset.has_value());
  ASSERT_TRUE(reduceCoset(*coset, [] { return true; }));
  const auto count = [&](const Fault& fault) {
    return test::pointsOf(*test::editedWalk<double>(*coset, fault)).size();
  };
  EXPECT_EQ(count([](Geometry&) {}), 1U);
  EXPECT_EQ(count([](Geometry& g) { g.slacks.program = -0.01; }), 0U);
}

}  // namespace
}  // namespace starsift
