#include "algorithms/reduction/ShortRow.h"

#include <gtest/gtest.h>

#include <limits>

namespace starsift {
namespace {

using V = Vector<long double>;

ShortRow<long double> shortRow(const V& row) {
  ShortRow<long double> result;
  result.assign(row);
  return result;
}

constexpr long double limit = 9007199254740992.0L;  // 2^53

TEST(ShortRow, ProductIsThatOfTheRows) {
  EXPECT_EQ(shortRow({1, -2, 3}).product(shortRow({4, 5, -6})), -24);
  EXPECT_EQ(shortRow({1, -2, 3, 7}).product(shortRow({4, 5, -6, 2})), -10);
  EXPECT_EQ(shortRow({}).product(shortRow({})), 0);
}

TEST(ShortRow, FourProductsAreThoseOfEachRow) {
  const auto a = shortRow({1, 0, 0});
  const auto b = shortRow({0, 1, 0});
  const auto c = shortRow({0, 0, -1});
  const auto d = shortRow({1, 1, 1});
  const auto products = shortRow({7, 8, 9}).products({&a, &b, &c, &d});
  EXPECT_EQ(products, (std::array<long double, 4>{7, 8, -9, 24}));
}

TEST(ShortRow, ProductOfShortIntegersIsExact) {
  const auto row = shortRow({67108863, 1});
  EXPECT_TRUE(row.isExactWith(row));
  EXPECT_EQ(row.product(row), 67108863.0L * 67108863.0L + 1);
}

TEST(ShortRow, ProductBeyondTheIntegersOfDoubleIsNot) {
  const auto row = shortRow({67108864, 1});
  EXPECT_FALSE(row.isExactWith(row));
  EXPECT_TRUE(row.isExactWith(shortRow({1, 1})));
  EXPECT_FALSE(shortRow({limit / 2, 0}).isExactWith(shortRow({1, 0})));
}

TEST(ShortRow, ProductOfOtherNumbersIsNot) {
  const auto one = shortRow({1, 1});
  EXPECT_FALSE(shortRow({0.5L, 1}).isExactWith(one));
  EXPECT_FALSE(shortRow({limit, 0}).isExactWith(one));
  EXPECT_FALSE(one.isExactWith(shortRow({0, -limit})));
  EXPECT_FALSE(shortRow({std::numeric_limits<long double>::infinity(), 0}).isExactWith(one));
  EXPECT_FALSE(shortRow({std::numeric_limits<long double>::quiet_NaN(), 0}).isExactWith(one));
  EXPECT_FALSE(shortRow({limit, 0}).isExactWith(shortRow({0, 0})));
}

TEST(ShortRow, TakesOtherEntriesLater) {
  auto row = shortRow({0.5L});
  row.assign({3, 4});
  EXPECT_TRUE(row.isExactWith(row));
  EXPECT_EQ(row.product(row), 25);
}

// One entry in eight or fewer: products run over the entries other than 0.
TEST(ShortRow, SparseRowsHaveTheProductsOfFullOnes) {
  Vector<long double> sparse(16);
  sparse[3] = 5;
  sparse[16] = -7;
  Vector<long double> full(16);
  for (Index i = 1; i <= 16; ++i) full[i] = i;
  ShortRow<long double> a;
  ShortRow<long double> b;
  a.assign(sparse);
  b.assign(full);
  EXPECT_EQ(a.product(b), 5 * 3 - 7 * 16);
  EXPECT_EQ(b.product(a), 5 * 3 - 7 * 16);
  EXPECT_EQ(a.product(a), 25 + 49);
  EXPECT_EQ(b.products({&a, &b, &b, &a}), (std::array<long double, 4>{-97, 1496, 1496, -97}));
  // A row may become full again.
  a.assign(full);
  EXPECT_EQ(a.product(b), 1496);
}

V entries(const ShortRow<long double>& row, Index count) {
  V result(count);
  row.copyTo(result);
  return result;
}

TEST(ShortRow, MultiplesAreSubtracted) {
  const auto a = shortRow({1, 0, 2});
  const auto b = shortRow({0, 5, -1});
  auto row = shortRow({10, 20, 30});
  EXPECT_TRUE(row.subtract({{&a, 3}, {&b, -2}}));
  EXPECT_TRUE(identical(entries(row, 3), V{7, 30, 22}));
  // What is known of the entries changes with them.
  EXPECT_EQ(row.product(row), 49 + 900 + 484);
}

TEST(ShortRow, RowsBecomeSparseAndFullBySubtraction) {
  V many(16);
  for (Index i = 1; i <= 16; ++i) many[i] = i;
  const auto full = shortRow(many);
  auto row = full;
  EXPECT_TRUE(row.subtract({{&full, 1}}));
  EXPECT_TRUE(identical(entries(row, 16), V(16)));
  EXPECT_EQ(row.product(full), 0);
  V one(16);
  one[3] = 1;
  const auto sparse = shortRow(one);
  EXPECT_TRUE(row.subtract({{&sparse, -4}, {&full, 2}}));
  EXPECT_EQ(row.product(sparse), -2);
  EXPECT_EQ(row.product(full), 4 * 3 - 2 * 1496);
}

TEST(ShortRow, SumsBeyondTheIntegersOfDoubleAreRefused) {
  const auto other = shortRow({1, 2});
  auto row = shortRow({limit - 4, 1});
  EXPECT_FALSE(row.subtract({{&other, 2}}));
  EXPECT_TRUE(identical(entries(row, 2), V{limit - 4, 1}));
  EXPECT_TRUE(row.subtract({{&other, -1}}));
  EXPECT_TRUE(identical(entries(row, 2), V{limit - 3, 3}));
  const auto fraction = shortRow({0.5L, 1});
  EXPECT_FALSE(row.subtract({{&fraction, 0}}));
}

}  // namespace
}  // namespace starsift
