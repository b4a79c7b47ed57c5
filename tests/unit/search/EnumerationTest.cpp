#include "search/enumeration/Enumeration.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>

#include "search/enumeration/CosetReduction.h"
#include "support/fixtures/CollectingVisitor.h"
#include "support/fixtures/EquationCoset.h"

namespace starsift {
namespace {

using test::CollectingVisitor;
using Point = std::vector<ZZ>;
using Points = std::set<Point>;

Point point(const std::vector<long>& numbers) {
  Point result;
  for (const long number : numbers) result.emplace_back(number);
  return result;
}

bool always() {
  return true;
}

/// The reduced coset of equations with 0 <= x <= upper.
BoxCoset equations(const std::vector<std::vector<long>>& rows, const std::vector<long>& sides,
                   const std::vector<long>& upper) {
  std::vector<Point> matrix;
  for (const std::vector<long>& row : rows) matrix.push_back(point(row));
  std::optional<BoxCoset> coset =
      test::cosetOfEquations(matrix, point(sides), Point(upper.size()), point(upper));
  EXPECT_TRUE(coset.has_value());
  EXPECT_TRUE(reduceCoset(*coset, always));
  return *std::move(coset);
}

Points pointsOf(const BoxCoset& coset) {
  Enumeration enumeration(coset);
  CollectingVisitor visitor;
  EXPECT_EQ(enumeration.run(visitor, {}), EnumerationEnd::complete);
  EXPECT_FALSE(visitor.isDouble);
  return visitor.points;
}

/// Variables from 0 to 3 in one equation: thousands of solutions for 12, hundreds for 8.
BoxCoset crowd(std::size_t count = 12) {
  std::vector<long> row(count);
  std::iota(row.begin(), row.end(), 3);
  const long half = 3 * std::accumulate(row.begin(), row.end(), 0L) / 2;
  return equations({row}, {half}, std::vector<long>(count, 3));
}

/// Multiples of rows of `size` in a box of that size; walked in double, long double or rationals.
BoxCoset ofSize(const ZZ& size, std::size_t d) {
  BoxCoset coset{{}, Point(d), Point(d), Point(d, size)};
  for (std::size_t k = 0; k < d; ++k) {
    coset.basis.emplace_back(d, ZZ(1));
    coset.basis[k][k] = size;
  }
  return coset;
}

// Some hundred rows take seconds: each of them must look at the clock.
TEST(Enumeration, PreparationEndsWhereItIsEnded) {
  constexpr std::size_t d = 8;
  for (const int digits : {2, 17, 30}) {
    const BoxCoset coset = ofSize(pow(ZZ::ten(), ZZ(digits)), d);
    const auto prepare = [&coset, digits](int most) {
      int calls = 0;
      const auto mayGoOn = [&calls, most] { return ++calls <= most; };
      const std::optional<CosetDirections> data = cosetDirections(coset, mayGoOn);
      const bool isPrepared = data && Enumeration::prepared(coset, *data, mayGoOn);
      EXPECT_EQ(isPrepared, calls <= most) << digits << " digits, " << most << " calls";
      // Once ended, the work asks again which of its steps was ended, and does no other.
      EXPECT_LE(calls, most + 2);
      return calls;
    };
    const int whole = prepare(std::numeric_limits<int>::max() - 2);
    EXPECT_GE(whole, static_cast<int>(3 * d));
    for (int most = 0; most < whole; ++most) prepare(most);
  }
}

TEST(Enumeration, CosetWithoutRowsIsItsPoint) {
  EXPECT_EQ(pointsOf({{}, point({2, 3}), point({0, 3}), point({5, 3})}), Points{point({2, 3})});
  EXPECT_TRUE(pointsOf({{}, point({2, 4}), point({0, 3}), point({5, 3})}).empty());
  EXPECT_EQ(pointsOf({{}, {}, {}, {}}), Points{Point()});
}

TEST(Enumeration, OneRowGivesAnArithmeticProgression) {
  EXPECT_EQ(pointsOf({{point({3})}, point({-100}), point({1}), point({10})}),
            (Points{point({2}), point({5}), point({8})}));
}

TEST(Enumeration, FixedCoordinatesAreEquations) {
  const BoxCoset coset{
      {point({1, 0, 2}), point({0, 1, -3})}, point({0, 0, 0}), point({0, 0, 1}), point({9, 9, 1})};
  EXPECT_EQ(pointsOf(coset), (Points{point({2, 1, 1}), point({5, 3, 1}), point({8, 5, 1})}));
}

TEST(Enumeration, BoxOfOnePointIsTested) {
  EXPECT_EQ(pointsOf({{point({2, 0}), point({0, 2})}, point({0, 0}), point({4, 6}), point({4, 6})}),
            Points{point({4, 6})});
  EXPECT_TRUE(
      pointsOf({{point({2, 0}), point({0, 2})}, point({0, 0}), point({4, 5}), point({4, 5})})
          .empty());
}

TEST(Enumeration, EmptyBoxHasNoPoint) {
  EXPECT_TRUE(pointsOf({{point({1})}, point({0}), point({3}), point({2})}).empty());
}

TEST(Enumeration, CoordinateThatNoRowChangesCutsTheRoot) {
  const BoxCoset coset{{point({1, 0})}, point({0, 7}), point({0, 0}), point({1000000, 6})};
  Enumeration enumeration(coset);
  CollectingVisitor visitor;
  EXPECT_EQ(enumeration.run(visitor, {}), EnumerationEnd::complete);
  EXPECT_TRUE(visitor.points.empty());
  EXPECT_EQ(enumeration.nodes(), 0U);
}

// The solutions lie on the bounds of the cuts at up to eleven levels.
TEST(Enumeration, MarketSplitOfSixtyVariablesHasItsThreeSolutions) {
  const std::vector<std::vector<long>> rows{
      {67, 27, 35, 4,  60, 39, 25, 22, 97, 94, 89, 33, 61, 92, 99, 19, 84, 71, 25, 64,
       65, 37, 49, 84, 19, 13, 24, 38, 53, 92, 87, 92, 17, 88, 69, 83, 30, 23, 14, 10,
       8,  39, 30, 6,  3,  70, 56, 56, 36, 87, 53, 80, 56, 55, 25, 7,  43, 20, 82, 6},
      {73, 97, 72, 9,  2, 28, 92, 69, 81, 92, 35, 94, 60, 28, 57, 95, 3,  58, 97, 16,
       40, 54, 71, 10, 3, 88, 52, 26, 17, 80, 54, 54, 71, 69, 19, 90, 48, 90, 31, 92,
       20, 77, 55, 69, 1, 53, 85, 20, 51, 30, 49, 1,  74, 85, 58, 72, 62, 82, 80, 13},
      {15, 1,  36, 37, 15, 70, 90, 96, 44, 19, 71, 5,  25, 50, 31, 92, 43, 25, 84, 96,
       65, 27, 81, 52, 8,  36, 85, 87, 3,  68, 97, 86, 77, 75, 47, 40, 85, 87, 56, 75,
       92, 30, 30, 66, 45, 45, 8,  33, 87, 9,  69, 28, 3,  38, 45, 50, 15, 56, 25, 81},
      {52, 68, 27, 7,  2,  21, 82, 52, 96, 61, 64, 96, 45, 20, 73, 97, 34, 93, 85, 72,
       40, 4,  17, 85, 14, 24, 70, 89, 65, 16, 26, 82, 10, 1,  40, 48, 72, 42, 2,  20,
       5,  24, 84, 44, 93, 94, 50, 9,  43, 11, 71, 23, 60, 66, 90, 89, 4,  17, 8,  30},
      {28, 20, 91, 12, 4,  59, 79, 49, 13, 22, 21, 66, 59, 16, 95, 31, 52, 15, 56, 24,
       47, 17, 54, 24, 70, 39, 40, 35, 12, 86, 35, 91, 18, 53, 23, 34, 79, 79, 70, 32,
       53, 81, 1,  94, 47, 86, 20, 51, 41, 85, 39, 23, 30, 91, 47, 12, 95, 31, 88, 1},
      {81, 20, 70, 93, 64, 93, 25, 14, 40, 17, 59, 22, 12, 14, 29, 81, 85, 78, 99, 96,
       67, 17, 46, 5,  8,  19, 88, 95, 60, 41, 3,  77, 53, 53, 99, 42, 30, 50, 21, 5,
       43, 3,  95, 77, 1,  96, 90, 9,  52, 68, 44, 97, 73, 14, 85, 44, 13, 99, 43, 92},
      {9,  61, 72, 55, 12, 84, 48, 59, 61, 1,  28, 59, 1,  79, 37, 36, 40, 50, 20, 64,
       45, 18, 15, 76, 70, 57, 23, 37, 48, 37, 88, 97, 63, 95, 13, 36, 37, 77, 56, 46,
       68, 36, 47, 18, 51, 98, 6,  23, 61, 78, 12, 50, 63, 50, 12, 16, 7,  8,  21, 52}};
  EXPECT_EQ(pointsOf(equations(rows, {1456, 1627, 1518, 1414, 1383, 1554, 1343},
                               std::vector<long>(60, 1)))
                .size(),
            3U);
}

/// Nodes until the first solution, or the proof that there is none, of a knapsack equation.
std::uint64_t knapsackNodes(const std::vector<long>& weights, long side, std::size_t solutions) {
  std::vector<long> upper;
  for (const long weight : weights) upper.push_back(side / weight);
  Enumeration enumeration(equations({weights}, {side}, upper));
  CollectingVisitor visitor;
  visitor.enough = 1;
  enumeration.run(visitor, {});
  EXPECT_EQ(visitor.points.size(), solutions);
  return enumeration.nodes();
}

// Without linear programs these take millions of nodes.
TEST(Enumeration, FrobeniusKnapsacksAreDecidedWithinTwentyNodes) {
  const std::vector<long> five{12223, 12224, 36674, 61119, 85569};
  EXPECT_LE(knapsackNodes(five, 89643481, 0), 20U);
  EXPECT_LE(knapsackNodes(five, 89643482, 1), 20U);
  EXPECT_LE(knapsackNodes(five, 89643581, 1), 20U);
  const std::vector<long> eight{17284, 17295, 51859, 51860, 51863, 51864, 69148, 69162};
  EXPECT_LE(knapsackNodes(eight, 27256885, 0), 20U);
  EXPECT_LE(knapsackNodes(eight, 27256886, 1), 20U);
  const std::vector<long> ten{19130, 19131, 38266,  57391,  57392,
                              57401, 95657, 172201, 172203, 191338};
  EXPECT_LE(knapsackNodes(ten, 96338678, 0), 20U);
  EXPECT_LE(knapsackNodes(ten, 96338679, 1), 20U);
}

TEST(Enumeration, VisitorEndsTheRun) {
  Enumeration enumeration(crowd());
  CollectingVisitor visitor;
  visitor.enough = 5;
  EXPECT_EQ(enumeration.run(visitor, {}), EnumerationEnd::stopped);
  EXPECT_EQ(visitor.points.size(), 5U);
}

TEST(Enumeration, NodeLimitEndsTheRun) {
  Enumeration enumeration(crowd());
  CollectingVisitor visitor;
  EnumerationSettings settings;
  settings.nodeLimit = 100;
  EXPECT_EQ(enumeration.run(visitor, settings), EnumerationEnd::limit);
  EXPECT_EQ(enumeration.nodes(), 100U);
  // Each run has its own limit.
  EXPECT_EQ(enumeration.run(visitor, settings), EnumerationEnd::limit);
  EXPECT_EQ(enumeration.nodes(), 200U);
}

/// The shares that a complete walk reports.
template <class Walk>
void checkShares(Walk&& walk) {
  CollectingVisitor visitor;
  EXPECT_EQ(walk.run(visitor, {}), EnumerationEnd::complete);
  ASSERT_GE(visitor.shares.size(), 5U);
  EXPECT_LT(visitor.shares.front(), 0.5);
  EXPECT_GT(visitor.shares.back(), 0.5);
  EXPECT_LE(visitor.shares.back(), 1);
  EXPECT_TRUE(std::is_sorted(visitor.shares.begin(), visitor.shares.end()));
}

TEST(Enumeration, ShareOfTheTreeGrowsFromZeroToOne) {
  checkShares(Enumeration(crowd()));
}

TEST(Enumeration, ShareOfTheTreeInRationalsGrowsFromZeroToOne) {
  checkShares(ExactWalk(crowd(8)));
}

TEST(Enumeration, PruningThatCutsNothingIsComplete) {
  Enumeration enumeration({{point({1})}, point({0}), point({0}), point({4})});
  CollectingVisitor visitor;
  EnumerationSettings settings;
  settings.pruning = 0.3;
  EXPECT_EQ(enumeration.run(visitor, settings), EnumerationEnd::complete);
  EXPECT_EQ(visitor.points.size(), 5U);
}

TEST(Enumeration, PrunedTreeIsSmallerAndProvesNothing) {
  std::vector<long> weights;
  long side = 0;
  for (long i = 1; i <= 24; ++i) {
    weights.push_back((7919 * i * i + 104729 * i) % 9973 + 1);
    side += i % 2 * weights.back();
  }
  const BoxCoset coset = equations({weights}, {side}, std::vector<long>(weights.size(), 1));
  Enumeration complete(coset);
  Enumeration pruned(coset);
  CollectingVisitor all;
  CollectingVisitor some;
  EnumerationSettings settings;
  settings.pruning = 0.1;
  EXPECT_EQ(complete.run(all, {}), EnumerationEnd::complete);
  EXPECT_EQ(pruned.run(some, settings), EnumerationEnd::pruned);
  EXPECT_LT(pruned.nodes(), complete.nodes() / 2);
  EXPECT_LT(some.points.size(), all.points.size());
}

TEST(Enumeration, NarrowingBeforeARunLeavesTheOtherPoints) {
  Enumeration enumeration({{point({1})}, point({0}), point({0}), point({9})});
  enumeration.narrow(0, ZZ(-5), ZZ(3));
  enumeration.narrow(0, ZZ(2), ZZ(20));
  CollectingVisitor visitor;
  EXPECT_EQ(enumeration.run(visitor, {}), EnumerationEnd::complete);
  EXPECT_EQ(visitor.points, (Points{point({2}), point({3})}));
  enumeration.narrow(0, ZZ(20), ZZ(30));
  CollectingVisitor none;
  EXPECT_EQ(enumeration.run(none, {}), EnumerationEnd::complete);
  EXPECT_TRUE(none.points.empty());
}

TEST(CosetReduction, EndedReductionKeepsTheSet) {
  BoxCoset coset{{point({7, 3}), point({5, 2})}, point({50, 60}), point({0, 0}), point({2, 2})};
  EXPECT_FALSE(reduceCoset(coset, [] { return false; }));
  EXPECT_EQ(pointsOf(coset).size(), 9U);
}

TEST(CosetReduction, PointComesNearTheMiddle) {
  BoxCoset coset{{point({7, 3}), point({5, 2})},
                 {pow(ZZ::ten(), ZZ(40)), ZZ(1)},
                 point({0, 0}),
                 point({20, 20})};
  EXPECT_TRUE(reduceCoset(coset, always));
  for (const ZZ& entry : coset.point) EXPECT_LE(abs(entry - ZZ(10)), ZZ(1));
}

}  // namespace
}  // namespace starsift
