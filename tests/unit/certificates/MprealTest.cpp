#include "certificates/Mpreal.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using mpfr::mpreal;
using Traits = NumberTraits<mpreal>;

TEST(Mpreal, ToleranceIsABillionth) {
  EXPECT_TRUE(Traits::isZero(mpreal("-0.999999999e-9", 256)));
  EXPECT_FALSE(Traits::isZero(mpreal("1.000000001e-9", 256)));
  EXPECT_TRUE(Traits::equal(mpreal(1), mpreal(1) + mpreal("1e-10")));
}

TEST(Mpreal, NanEqualsNothing) {
  const mpreal nan = mpreal().setNan();
  EXPECT_FALSE(Traits::equal(nan, nan));
  EXPECT_FALSE(Traits::isZero(nan));
  EXPECT_FALSE(Traits::isInfinite(nan));
}

TEST(Mpreal, Infinity) {
  EXPECT_TRUE(Traits::isInfinite(-Traits::infinity()));
  EXPECT_TRUE(Traits::equal(Traits::infinity(), Traits::infinity()));
  EXPECT_FALSE(Traits::overflowCheck(mpreal("1e100")));
}

TEST(Mpreal, TakesMachineIntegers) {
  std::int64_t value = 1;
  EXPECT_TRUE(Traits::toInteger(mpreal(-12), value));
  EXPECT_EQ(value, -12);
  EXPECT_TRUE(Traits::toInteger(mpreal(0), value));
  EXPECT_EQ(value, 0);
  EXPECT_FALSE(Traits::toInteger(mpreal(0.5), value));
  EXPECT_FALSE(Traits::toInteger(mpreal("1e30"), value));
  EXPECT_FALSE(Traits::toInteger(Traits::infinity(), value));
}

TEST(Mpreal, VectorsReadAndPrintDecimals) {
  std::istringstream stream("[ 1.5 -2e3 inf ]");
  Vector<mpreal> vector;
  stream >> vector;
  ASSERT_EQ(vector.dimension(), 3);
  EXPECT_EQ(vector[1], mpreal(1.5));
  EXPECT_EQ(vector[2], mpreal(-2000));
  EXPECT_TRUE(Traits::isInfinite(vector[3]));
  std::string text;
  Traits::append(text, vector[1], 6);
  EXPECT_EQ(text, "1.5");
}

TEST(Mpreal, BadNumberIsNoNumber) {
  TextCursor cursor("1.2.3");
  mpreal value(7);
  EXPECT_FALSE(Traits::read(cursor, value));
  EXPECT_EQ(value, mpreal(7));
}

TEST(Mpreal, DeterminantHasTheDefaultPrecision) {
  const mpfr_prec_t before = mpreal::get_default_prec();
  mpreal::set_default_prec(256);
  const mpreal small("1e-5");
  const Matrix<mpreal> matrix{{mpreal(1), mpreal(1)}, {mpreal(1), mpreal(1) + small}};
  EXPECT_TRUE(mpfr::abs(matrix.determinant() - small) < mpreal("1e-60"));
  mpreal::set_default_prec(before);
}

/// Under a default precision of 53 bits, entries of 256.
class WideMpreal : public testing::Test {
 protected:
  static constexpr mpfr_prec_t bits = 256;

  WideMpreal() { mpreal::set_default_prec(53); }
  ~WideMpreal() override { mpreal::set_default_prec(before_); }

  static mpreal wide(long value) { return mpreal(value, bits); }
  /// 2^100 + 1.
  static mpreal large() { return mpfr::pow(wide(2), 100) + 1; }

 private:
  const mpfr_prec_t before_ = mpreal::get_default_prec();
};

TEST_F(WideMpreal, DotProductKeepsThePrecisionOfTheEntries) {
  const Vector<mpreal> a{wide(0), large(), wide(2)};
  const Vector<mpreal> b{wide(1), wide(3), wide(5)};
  EXPECT_EQ(a * b, 3 * large() + 10);
}

TEST_F(WideMpreal, DotProductHasThePrecisionOfTheWidestEntry) {
  // The narrow entries come first.
  const Vector<mpreal> a{mpreal(1), large()};
  const Vector<mpreal> b{mpreal(2), mpreal(1)};
  EXPECT_EQ(a * b, large() + 2);
}

TEST_F(WideMpreal, ProductsOfMatricesKeepThePrecisionOfTheEntries) {
  const Matrix<mpreal> a{{large(), wide(1)}, {wide(1), wide(1)}};
  const Vector<mpreal> x{wide(1), wide(2)};
  EXPECT_EQ((a * x)[1], large() + 2);
  EXPECT_EQ((x * a)[1], large() + 2);
  EXPECT_EQ((a * a)[2][1], large() + 1);
}

TEST_F(WideMpreal, DeterminantKeepsThePrecisionOfTheEntries) {
  EXPECT_EQ((Matrix<mpreal>{{wide(3), wide(0)}, {wide(0), large()}}).determinant(), 3 * large());
  EXPECT_EQ((Matrix<mpreal>{{wide(0), large()}, {wide(3), wide(0)}}).determinant(), -3 * large());
}

TEST_F(WideMpreal, DeterminantHasThePrecisionOfTheWidestEntry) {
  const Matrix<mpreal> matrix{{mpreal(3), mpreal(0)}, {mpreal(0), large()}};
  EXPECT_EQ(matrix.determinant(), 3 * large());
}

TEST_F(WideMpreal, ReducedEliminationKeepsThePrecisionOfTheEntries) {
  Matrix<mpreal> matrix{{wide(3), wide(1)}, {wide(1), wide(7)}};
  Matrix<mpreal> transform;
  EXPECT_EQ(eliminate(matrix, transform, true), 2);
  // The inverse, over the determinant 20.
  const mpreal rounding("1e-70", bits);
  EXPECT_LT(mpfr::abs(wide(20) * transform[1][1] - 7), rounding);
  EXPECT_LT(mpfr::abs(wide(20) * transform[1][2] + 1), rounding);
  EXPECT_LT(mpfr::abs(wide(20) * transform[2][1] + 1), rounding);
  EXPECT_LT(mpfr::abs(wide(20) * transform[2][2] - 3), rounding);
}

TEST_F(WideMpreal, NarrowEntriesAreReducedWithAWidePivot) {
  Matrix<mpreal> matrix{{wide(3), mpreal(1)}};
  Matrix<mpreal> transform;
  EXPECT_EQ(eliminate(matrix, transform, true), 1);
  EXPECT_LT(mpfr::abs(wide(3) * matrix[1][2] - 1), mpreal("1e-70", bits));
}

TEST_F(WideMpreal, RowThatRoundingMakesZeroIsFatalInReducedElimination) {
  // In 53 bits 49e12 * (2e12 / 49e12) misses 2e12 by more than the tolerance, so that the
  // second row has its pivot below that of the first.
  Matrix<mpreal> matrix{{mpreal("49e12")}, {mpreal("2e12")}};
  Matrix<mpreal> transform;
  EXPECT_FAILS_WITH(eliminate(matrix, transform, true), "This should not happen -- check it");
}

}  // namespace
}  // namespace starsift
