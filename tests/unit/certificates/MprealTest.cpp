#include "certificates/Mpreal.h"

#include <gtest/gtest.h>

#include <sstream>

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

}  // namespace
}  // namespace starsift
