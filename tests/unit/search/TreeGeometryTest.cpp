#include "search/enumeration/TreeGeometry.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

template <class Real>
bool holds(const BoxCoset& coset) {
  return treeGeometry<Real>(coset, cosetDirections(coset)).has_value();
}

/// Two rows with entries of that size in a box of that size.
BoxCoset ofSize(const ZZ& size) {
  const ZZ one(1);
  return {{{size + one, one}, {one, size - one}}, {one, one}, {ZZ(), ZZ()}, {size, size}};
}

TEST(TreeGeometry, ShortNumbersFitDouble) {
  EXPECT_TRUE(holds<double>(ofSize(ZZ(100))));
  EXPECT_TRUE(holds<double>(ofSize(pow(ZZ::ten(), ZZ(12)))));
}

TEST(TreeGeometry, SeventeenDigitsNeedLongDouble) {
  const BoxCoset coset = ofSize(pow(ZZ::ten(), ZZ(17)));
  EXPECT_FALSE(holds<double>(coset));
  EXPECT_TRUE(holds<long double>(coset));
}

TEST(TreeGeometry, ThirtyDigitsAreRefused) {
  const BoxCoset coset = ofSize(pow(ZZ::ten(), ZZ(30)));
  EXPECT_FALSE(holds<double>(coset));
  EXPECT_FALSE(holds<long double>(coset));
}

// Coefficients of up to 10^16 make the points that a walk may reach too long.
TEST(TreeGeometry, BasisFarFromReducedIsRefused) {
  const ZZ factor = pow(ZZ::ten(), ZZ(14));
  const BoxCoset coset{
      {{ZZ(1), ZZ()}, {factor, ZZ(1)}}, {ZZ(), ZZ()}, {ZZ(-100), ZZ(-100)}, {ZZ(100), ZZ(100)}};
  EXPECT_FALSE(holds<double>(coset));
}

TEST(TreeGeometry, SlacksAreSmallAndPositive) {
  const auto geometry = treeGeometry<double>(ofSize(ZZ(5)), cosetDirections(ofSize(ZZ(5))));
  ASSERT_TRUE(geometry.has_value());
  for (const double slack : {geometry->slacks.length, geometry->slacks.hoelder}) {
    EXPECT_GT(slack, 1e-16);
    EXPECT_LT(slack, 1e-12);
  }
}

TEST(TreeGeometry, CoefficientsAreBoundedByTheBox) {
  const BoxCoset coset{{{ZZ(2), ZZ()}, {ZZ(1), ZZ(3)}}, {ZZ(), ZZ()}, {ZZ(), ZZ()}, {ZZ(8), ZZ(6)}};
  const auto geometry = treeGeometry<double>(coset, cosetDirections(coset));
  ASSERT_TRUE(geometry.has_value());
  // x_2 = 3 c_2 and x_1 = 2 c_1 + c_2.
  EXPECT_EQ(geometry->least, (std::vector<double>{-1, 0}));
  EXPECT_EQ(geometry->most, (std::vector<double>{4, 2}));
}

}  // namespace
}  // namespace starsift
