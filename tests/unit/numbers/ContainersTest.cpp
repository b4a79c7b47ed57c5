// The containers of the lowest floor over the number types of this one.
#include <gtest/gtest.h>

#include <string>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/EliminationSuite.h"
#include "support/fixtures/MatrixSuite.h"
#include "support/fixtures/MatrixTextSuite.h"
#include "support/fixtures/VectorSuite.h"
#include "support/fixtures/VectorTextSuite.h"
#include "system/Exceptions.h"

namespace starsift {

namespace test {
using HighTypes = ::testing::Types<QQ>;
INSTANTIATE_TYPED_TEST_SUITE_P(High, VectorOver, HighTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(High, VectorTextOver, HighTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(High, MatrixOver, HighTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(High, MatrixTextOver, HighTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(High, EliminationOver, HighTypes);
}  // namespace test

namespace {

using test::matrixIn;
using test::textOf;
using test::vectorIn;

TEST(VectorOverQQ, ReadsFractionsAndShowsThemInLowestTerms) {
  EXPECT_EQ(textOf(vectorIn<QQ>("[ 3:1/4 6/4 -0.05 +7 -+1/2 +inf ]")),
            "[ 3:1/4 1:1/2 -1/20 7 -1/2 inf ]");
}

TEST(VectorOverQQ, ReadsAFractionWhoseStrokeOpensNoComment) {
  EXPECT_EQ(textOf(vectorIn<QQ>("[ 1/2/**/3/4// 5/6\n]")), "[ 1/2 3/4 ]");
}

TEST(VectorOverQQ, ReadsNoPowerOfTen) {
  EXPECT_FAILS_WITH(vectorIn<QQ>("[ 1e5 ]"), "QQ: parse error1");
}

TEST(VectorOverQQ, RefusesTextThatEndsInside) {
  EXPECT_FAILS_WITH(vectorIn<QQ>("[ 1 2"), "QQ: parse error1");
  EXPECT_FAILS_WITH(vectorIn<QQ>("["), "QQ: parse error1");
  EXPECT_FAILS_WITH(matrixIn<QQ>("[ [ 1"), "QQ: parse error1");
}

TEST(VectorOverQQ, RefusesAMegabyteOfBrackets) {
  EXPECT_FAILS_WITH(vectorIn<QQ>(std::string(1'000'000, '[')), "QQ: parse error1");
  EXPECT_FAILS_WITH(matrixIn<QQ>(std::string(1'000'000, '[')), "QQ: parse error1");
}

TEST(VectorOverQQ, RefusesANulByte) {
  EXPECT_FAILS_WITH(vectorIn<QQ>(std::string("[ 1\0 ]", 6)), "QQ: parse error1");
}

TEST(VectorOverQQ, IsEqualWithinTheTolerance) {
  EXPECT_TRUE((Vector<QQ>{QQ(1)}) == (Vector<QQ>{QQ(1'000'000'001, 1'000'000'000)}));
  EXPECT_FALSE((Vector<QQ>{QQ(1)}) == (Vector<QQ>{QQ(1'000'000'002, 1'000'000'000)}));
  EXPECT_FALSE(identical(Vector<QQ>{QQ(1)}, Vector<QQ>{QQ(1'000'000'001, 1'000'000'000)}));
}

TEST(VectorOverQQ, IsEqualInEqualInfinities) {
  EXPECT_TRUE(vectorIn<QQ>("[ inf -inf ]") == vectorIn<QQ>("[ inf -inf ]"));
  EXPECT_FALSE(vectorIn<QQ>("[ inf ]") == vectorIn<QQ>("[ 5 ]"));
  EXPECT_FALSE(vectorIn<QQ>("[ inf ]") == vectorIn<QQ>("[ -inf ]"));
}

TEST(VectorOverQQ, DividesByZeroAsItsNumbersDo) {
  EXPECT_EQ(textOf(vectorIn<QQ>("[ 5 -5 ]") /= vectorIn<QQ>("[ 0 0 ]")), "[ inf -inf ]");
}

TEST(ContainersOfBothWorlds, ConvertBothWaysWithInfinities) {
  const auto exact = vectorIn<QQ>("[ inf -inf 1/10 999999999999999999 ]");
  Vector<long double> rounded;
  rounded.convertFrom(exact, true);
  Vector<QQ> back;
  back.convertFrom(rounded, true);
  EXPECT_TRUE(identical(back, exact));
}

TEST(ContainersOfBothWorlds, TellWhatALongDoubleCannotHold) {
  Vector<long double> target{7};
  EXPECT_THROW(target.convertFrom(vectorIn<QQ>("[ 1/3 ]"), false), PostCommaPrecisionException);
  EXPECT_THROW(target.convertFrom(vectorIn<QQ>("[ 1000000000000000000 ]"), false),
               PreCommaPrecisionException);
  EXPECT_EQ(textOf(target), "[ 7 ]");
}

TEST(ContainersOfBothWorlds, TellABinaryFractionThatHasTooManyDigits) {
  const Vector<long double> source{0x1p-60L};
  Vector<QQ> target;
  EXPECT_NO_THROW(target.convertFrom(source, false));
  EXPECT_THROW(target.convertFrom(Vector<long double>{1 + 0x1p-63L}, true), PrecisionException);
}

TEST(ContainersOfBothWorlds, ConvertMatrices) {
  const auto exact = matrixIn<QQ>("[ [ 1 1/4 ] [ inf 3 ] ]");
  Matrix<long double> rounded;
  rounded.convertFrom(exact, true);
  EXPECT_EQ(textOf(rounded), "[\n[ 1 0.25 ]\n[ inf 3 ]\n]");
  EXPECT_THROW(rounded.convertFrom(matrixIn<QQ>("[ [ 1 ] [ 1/3 ] ]"), false), PrecisionException);
  EXPECT_EQ(rounded.rowCount(), 2);
  EXPECT_EQ(rounded.columnCount(), 2);
}

TEST(MatrixOverQQ, HasTheExactDeterminantOfAHilbertMatrix) {
  Matrix<QQ> hilbert(5, 5);
  for (long i = 1; i <= 5; ++i)
    for (long j = 1; j <= 5; ++j) hilbert[i][j] = QQ(1, i + j - 1);
  EXPECT_EQ(hilbert.determinant(), QQ(1, 266716800000));
}

TEST(MatrixOverQQ, EliminatesWithoutBoundOnItsFactors) {
  Matrix<QQ> matrix = matrixIn<QQ>("[ [ 1 100000000000000000000 ] [ 0 1 ] ]");
  Matrix<QQ> transform;
  EXPECT_EQ(eliminate(matrix, transform, true), 2);
  EXPECT_EQ(textOf(matrix), "[\n[ 1 0 ]\n[ 0 1 ]\n]");
}

}  // namespace
}  // namespace starsift
