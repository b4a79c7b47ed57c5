// What the containers ask of QQ, and vectors and matrices over it.
#include <gtest/gtest.h>

#include <sstream>

#include "numbers/QQText.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using Traits = NumberTraits<QQ>;
const QQ inf = QQ::infinity();
const QQ huge(ZZ("123456789012345678901234567890", 10));

TEST(QQTraits, ToleranceIsExactlyABillionth) {
  EXPECT_EQ(Traits::tolerance(), QQ(1, 1'000'000'000));
  EXPECT_TRUE(Traits::isZero(QQ(-1, 1'000'000'000)));
  EXPECT_FALSE(Traits::isZero(QQ(1, 999'999'999)));
  EXPECT_TRUE(Traits::isZero(QQ(0)));
  EXPECT_FALSE(Traits::isZero(QQ(1)));
  EXPECT_FALSE(Traits::isZero(-inf));
}

TEST(QQTraits, EqualWithinTheTolerance) {
  EXPECT_TRUE(Traits::equal(huge, huge + QQ(1, 1'000'000'000)));
  EXPECT_FALSE(Traits::equal(huge, huge + QQ(1, 999'999'999)));
  EXPECT_FALSE(Traits::equal(QQ(1), QQ(2)));
  EXPECT_TRUE(Traits::equal(inf, QQ::infinity()));
  EXPECT_FALSE(Traits::equal(inf, -inf));
  EXPECT_FALSE(Traits::equal(inf, huge));
}

TEST(QQTraits, RemainderHasTheSignOfTheDividend) {
  EXPECT_EQ(Traits::remainder(QQ(-7), QQ(2)), QQ(-1));
  EXPECT_EQ(Traits::remainder(QQ(7), QQ(-2)), QQ(1));
  EXPECT_EQ(Traits::remainder(QQ(-7, 2), QQ(1)), QQ(-1, 2));
  EXPECT_EQ(Traits::remainder(huge, QQ(1000)), QQ(890));
}

TEST(QQTraits, NeverOverflows) {
  EXPECT_FALSE(Traits::overflowCheck(huge));
  EXPECT_FALSE(Traits::overflowCheck(inf));
}

TEST(QQTraits, EqualValuesHaveEqualHashes) {
  EXPECT_EQ(Traits::hash(QQ(2, 4)), Traits::hash(QQ(1, 2)));
  EXPECT_EQ(Traits::hash(huge - huge + QQ(1)), Traits::hash(QQ(1)));
  EXPECT_NE(Traits::hash(QQ(1)), Traits::hash(QQ(-1)));
  EXPECT_NE(Traits::hash(QQ(1)), Traits::hash(inf));
  EXPECT_NE(Traits::hash(inf), Traits::hash(-inf));
  EXPECT_NE(Traits::hash(QQ(2)), Traits::hash(QQ(1, 2)));
}

TEST(QQTraits, TextHasNoPrecision) {
  std::string text;
  Traits::append(text, huge, 3);
  EXPECT_EQ(text, "123456789012345678901234567890");
}

TEST(QQTraits, MachineIntegersAreTaken) {
  std::int64_t value = 0;
  EXPECT_TRUE(Traits::toInteger(QQ(-9), value));
  EXPECT_EQ(value, -9);
  EXPECT_FALSE(Traits::toInteger(QQ(1, 2), value));
}

TEST(VectorOverQQ, ReadsWhatItWrites) {
  const Vector<QQ> vector{QQ(1, 2), -inf, QQ(-7, 3), huge};
  std::stringstream stream;
  stream << vector;
  EXPECT_EQ(stream.str(), "[ 1/2 -inf -2:1/3 123456789012345678901234567890 ]");
  Vector<QQ> back;
  stream >> back;
  EXPECT_TRUE(identical(back, vector));
}

TEST(VectorOverQQ, ReadsInfinitiesAndComments) {
  std::istringstream stream("[ 1 -inf inf /* c */ 2 // d\n 3 ]");
  Vector<QQ> vector;
  stream >> vector;
  EXPECT_TRUE(identical(vector, Vector<QQ>{QQ(1), -inf, inf, QQ(2), QQ(3)}));
}

TEST(VectorOverQQ, SignOfTheVectorStandsBeforeThatOfTheNumber) {
  std::istringstream stream("[ --5 ]");
  Vector<QQ> vector;
  stream >> vector;
  EXPECT_TRUE(identical(vector, Vector<QQ>{QQ(5)}));
}

TEST(VectorOverQQ, OpenVectorHasAnEmptyNumber) {
  std::istringstream stream("[ 1 ");
  Vector<QQ> vector;
  EXPECT_FAILS_WITH(stream >> vector, "QQ: parse error1");
}

TEST(VectorOverQQ, DotProduct) {
  EXPECT_EQ((Vector<QQ>{QQ(1, 2), QQ(3)} * Vector<QQ>{QQ(4), QQ(1, 3)}), QQ(3));
}

TEST(MatrixOverQQ, Determinant) {
  const Matrix<QQ> hilbert{
      {QQ(1), QQ(1, 2), QQ(1, 3)}, {QQ(1, 2), QQ(1, 3), QQ(1, 4)}, {QQ(1, 3), QQ(1, 4), QQ(1, 5)}};
  EXPECT_EQ(hilbert.determinant(), QQ(1, 2160));
}

TEST(MatrixOverQQ, EliminationCollectsItsTransformation) {
  const Matrix<QQ> before{{QQ(2), QQ(1), QQ(1, 3)}, {QQ(4), QQ(2), QQ(7)}};
  Matrix<QQ> echelon(before);
  Matrix<QQ> transform;
  EXPECT_EQ(std::abs(eliminate(echelon, transform, true)), 2);
  const Matrix<QQ> product = transform * before;
  for (Index i = 1; i <= 2; ++i) EXPECT_TRUE(identical(product[i], echelon[i]));
  EXPECT_EQ(echelon[1][1], QQ(1));
  EXPECT_EQ(echelon[1][3], QQ(0));
  EXPECT_EQ(echelon[2][3], QQ(1));
}

}  // namespace
}  // namespace starsift
