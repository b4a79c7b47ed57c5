#include "support/oracles/OrthogonalCertificate.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

using test::ExactRows;
using test::tenth;
using M = Matrix<long double>;
using V = Vector<long double>;

const ExactRows rows{{3, 4}, {4, 3}};  // mu[2][1] = 24/25, second length 49/25

TEST(OrthogonalCertificate, TakesALongDoubleForTheNumberThatItHolds) {
  EXPECT_TRUE(test::exactly(-0.75L) == mpq_class(-3, 4));
  EXPECT_TRUE(test::exactly(0.0L) == 0);
  EXPECT_FALSE(test::exactly(0.1L) == mpq_class(1, 10));
  EXPECT_TRUE(test::exactly(18446744073709551616.0L) == mpq_class("18446744073709551616"));
}

TEST(OrthogonalCertificate, AcceptsWhatIsRightUpToTheBound) {
  EXPECT_TRUE(test::isOrthogonalisation(rows, M{{1, 0}, {0.96L, 1}}, V{25, 1.96L}, tenth(18)));
  EXPECT_FALSE(test::isOrthogonalisation(rows, M{{1, 0}, {0.96L, 1}}, V{25, 1.96L}, tenth(24)));
}

TEST(OrthogonalCertificate, RefusesAWrongCoefficient) {
  EXPECT_FALSE(test::isOrthogonalisation(rows, M{{1, 0}, {0.97L, 1}}, V{25, 1.96L}, tenth(3)));
}

TEST(OrthogonalCertificate, RefusesAWrongLength) {
  EXPECT_FALSE(test::isOrthogonalisation(rows, M{{1, 0}, {0.96L, 1}}, V{25, 2}, tenth(4)));
}

TEST(OrthogonalCertificate, RefusesAMatrixThatIsNotUnitLowerTriangular) {
  EXPECT_FALSE(test::isOrthogonalisation(rows, M{{1, 1}, {0.96L, 1}}, V{25, 1.96L}, tenth(1)));
  EXPECT_FALSE(test::isOrthogonalisation(rows, M{{1, 0}, {0.96L, 2}}, V{25, 1.96L}, tenth(1)));
}

TEST(OrthogonalCertificate, RefusesVectorsThatAreNotOrthogonal) {
  EXPECT_TRUE(test::areOrthogonal({{1, 2}, {-2, 1}}, 0));
  EXPECT_FALSE(test::areOrthogonal({{1, 2}, {-2, mpq_class(11, 10)}}, tenth(3)));
}

TEST(OrthogonalCertificate, RefusesAWrongProduct) {
  EXPECT_TRUE(test::isProduct({{1, 2}}, {{1, 0}, {0, 1}}, {{1, 2}}, 0));
  EXPECT_FALSE(test::isProduct({{1, 2}}, {{1, 0}, {0, 1}}, {{1, 3}}, tenth(1)));
  EXPECT_FALSE(test::isProduct({{1, 2}}, {{1, 0}, {0, 1}}, {{1, 2}, {0, 0}}, tenth(1)));
}

TEST(OrthogonalCertificate, FindsTheOrthogonalVectors) {
  const ExactRows expected{{3, 4}, {mpq_class(28, 25), mpq_class(-21, 25)}};
  EXPECT_TRUE(test::orthogonalVectors(rows) == expected);
}

}  // namespace
}  // namespace starsift
