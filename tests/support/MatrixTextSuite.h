// The text form of matrices over every number type, from both kinds of source.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/Matrix.h"
#include "support/ExpectFails.h"
#include "support/TextOf.h"

namespace starsift::test {

/// The matrix in the text; both kinds of source must agree on it.
template <class T>
Matrix<T> matrixIn(const std::string& text) {
  Matrix<T> fromText;
  TextCursor source(text);
  readMatrix(source, fromText);
  const auto fromStream = readFrom<Matrix<T>>(text);
  EXPECT_EQ(textOf(fromStream), textOf(fromText));
  EXPECT_EQ(fromStream.columnCount(), fromText.columnCount());
  return fromText;
}

template <class T>
class MatrixTextOver : public ::testing::Test {};
TYPED_TEST_SUITE_P(MatrixTextOver);

TYPED_TEST_P(MatrixTextOver, WritesOneLineARow) {
  Matrix<TypeParam> matrix(2, 2);
  matrix[1][1] = TypeParam(1);
  matrix[2][2] = TypeParam(-4);
  matrix[0][1] = TypeParam(9);
  EXPECT_EQ(textOf(matrix), "[\n[ 1 0 ]\n[ 0 -4 ]\n]");
}

TYPED_TEST_P(MatrixTextOver, WritesNothingButTheFrameWithoutRows) {
  EXPECT_EQ(textOf(Matrix<TypeParam>()), "[\n]");
  EXPECT_EQ(textOf(Matrix<TypeParam>(0, 3)), "[\n]");
}

TYPED_TEST_P(MatrixTextOver, ReadsWhatItWrote) {
  EXPECT_EQ(textOf(matrixIn<TypeParam>("[\n[ 1 0 ]\n[ 0 -4 ]\n]")), "[\n[ 1 0 ]\n[ 0 -4 ]\n]");
}

TYPED_TEST_P(MatrixTextOver, ReadsOverCommentsWhereverWhiteSpaceMayStand) {
  EXPECT_EQ(textOf(matrixIn<TypeParam>("/**/[// a\n[1/**/2]/* b */[3 4]// c\n]")),
            "[\n[ 1 2 ]\n[ 3 4 ]\n]");
}

TYPED_TEST_P(MatrixTextOver, PadsAShortRowInTheMiddle) {
  EXPECT_EQ(textOf(matrixIn<TypeParam>("[\n[ 1 2 ]\n[ 3 ]\n[ 4 5 ]\n]")),
            "[\n[ 1 2 ]\n[ 3 0 ]\n[ 4 5 ]\n]");
}

TYPED_TEST_P(MatrixTextOver, PadsAShortLastRow) {
  const auto matrix = matrixIn<TypeParam>("[ [ 1 2 ] [ 3 ] ]");
  EXPECT_EQ(textOf(matrix), "[\n[ 1 2 ]\n[ 3 0 ]\n]");
  EXPECT_EQ(matrix[2].dimension(), 2);
}

TYPED_TEST_P(MatrixTextOver, TakesTheColumnsFromTheFirstRowThatHasSome) {
  const auto matrix = matrixIn<TypeParam>("[ [ ] [ 1 2 ] [ ] ]");
  EXPECT_EQ(textOf(matrix), "[\n[ 0 0 ]\n[ 1 2 ]\n[ 0 0 ]\n]");
  EXPECT_EQ(matrix.columnCount(), 2);
}

TYPED_TEST_P(MatrixTextOver, CountsNoRowsOfNothing) {
  EXPECT_EQ(matrixIn<TypeParam>("[ ]").rowCount(), 0);
  EXPECT_EQ(matrixIn<TypeParam>("[\n[ ]\n]").rowCount(), 0);
  EXPECT_EQ(matrixIn<TypeParam>("[[][][]]").rowCount(), 0);
  EXPECT_EQ(matrixIn<TypeParam>("[ [ ] ]").columnCount(), 0);
}

/// A row of ones and short ones below it.
inline std::string paddedText(Index rows, Index columns) {
  std::string text = "[[";
  for (Index j = 1; j <= columns; ++j) text += "1 ";
  text += "]";
  for (Index i = 2; i <= rows; ++i) text += "[]";
  return text + "]";
}

TYPED_TEST_P(MatrixTextOver, PadsToFourMillionEntries) {
  const auto matrix = readFrom<Matrix<TypeParam>>(paddedText(2048, 2048));
  EXPECT_EQ(matrix.rowCount(), 2048);
  EXPECT_TRUE(matrix[2048][2048] == TypeParam(0));
  EXPECT_FAILS_WITH(readFrom<Matrix<TypeParam>>(paddedText(2049, 2048)),
                    "Matrix: too many short rows");
  EXPECT_FAILS_WITH(readFrom<Matrix<TypeParam>>(paddedText(1'000'000, 1'000'000)),
                    "Matrix: too many short rows");
}

TYPED_TEST_P(MatrixTextOver, PadsBeyondThatToSixtyFourTimesWhatIsWritten) {
  constexpr Index columns = Index{1} << 17;
  EXPECT_EQ(readFrom<Matrix<TypeParam>>(paddedText(64, columns)).rowCount(), 64);
  EXPECT_FAILS_WITH(readFrom<Matrix<TypeParam>>(paddedText(65, columns)),
                    "Matrix: too many short rows");
}

TYPED_TEST_P(MatrixTextOver, HasASlotZeroAsWideAsItsRows) {
  EXPECT_EQ(matrixIn<TypeParam>("[ [ 1 2 ] ]").element(0).dimension(), 2);
}

TYPED_TEST_P(MatrixTextOver, StaysEmptyWhereNoBracketStands) {
  EXPECT_FALSE(matrixIn<TypeParam>("xyz").isSet());
  EXPECT_EQ(restBehind<Matrix<TypeParam>>(" xyz"), "xyz");
  EXPECT_FALSE(matrixIn<TypeParam>("").isSet());
}

TYPED_TEST_P(MatrixTextOver, ForgetsRowsAndColumnsItHeldBefore) {
  Matrix<TypeParam> matrix(2, 2);
  matrix[2][2] = TypeParam(5);
  std::istringstream none("x");
  none >> matrix;
  EXPECT_EQ(matrix.rowCount(), 0);
  EXPECT_EQ(matrix.columnCount(), 0);
  matrix.resize(2, 2, false);
  matrix[2][1] = TypeParam(5);
  std::istringstream two("[ [ 1 ] [ ] ]");
  two >> matrix;
  EXPECT_EQ(textOf(matrix), "[\n[ 1 ]\n[ 0 ]\n]");
}

TYPED_TEST_P(MatrixTextOver, LeavesWhatStandsBehindTheBracket) {
  EXPECT_EQ(restBehind<Matrix<TypeParam>>("[ [ 1 ] ] [ 7 ]"), " [ 7 ]");
  EXPECT_EQ(restBehind<Matrix<TypeParam>>("[ ] [ 7 ]"), " [ 7 ]");
}

TYPED_TEST_P(MatrixTextOver, RefusesARowThatIsLongerThanTheOthers) {
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[\n[ 1 2 ]\n[ 3 4 5 ]\n]"),
                    "Matrix row dimension mismatch");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ [ ] [ 1 ] [ 1 2 ] ]"), "Matrix row dimension mismatch");
}

TYPED_TEST_P(MatrixTextOver, RefusesAFailedStream) {
  std::istringstream failed("[ [ 1 ] ]");
  failed.setstate(std::ios_base::failbit);
  std::istringstream bad("[ [ 1 ] ]");
  bad.setstate(std::ios_base::badbit);
  Matrix<TypeParam> matrix;
  EXPECT_FAILS_WITH(failed >> matrix, "Matrix: bad stream");
  EXPECT_FAILS_WITH(bad >> matrix, "Matrix: bad stream");
}

TYPED_TEST_P(MatrixTextOver, TakesTheEndOfFileStateAloneForNoFailure) {
  std::istringstream stream;
  stream.setstate(std::ios_base::eofbit);
  Matrix<TypeParam> matrix(1, 1);
  stream >> matrix;
  EXPECT_EQ(matrix.rowCount(), 0);
}

TYPED_TEST_P(MatrixTextOver, RefusesAnythingButABracketWhereARowIsDue) {
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ 1 2 ]"), "Matrix: bad input");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ [ 1 ] 2 ]"), "Matrix: bad input");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ [ 1 ], [ 2 ] ]"), "Matrix: bad input");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>(std::string("[ \0 ]", 5)), "Matrix: bad input");
}

TYPED_TEST_P(MatrixTextOver, RefusesTextThatEndsBetweenRows) {
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("["), "Matrix: bad input");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ [ 1 ]"), "Matrix: bad input");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ [ 1 ] // ]"), "Matrix: bad input");
  EXPECT_FAILS_WITH(matrixIn<TypeParam>("[ [ 1 ] /* ]"), "comment is not closed");
}

TYPED_TEST_P(MatrixTextOver, ReadsHundredThousandsOfRows) {
  std::string text = "[";
  for (int i = 0; i < 200'000; ++i) text += "[1 2]/**/";
  text += "]";
  const auto matrix = readFrom<Matrix<TypeParam>>(text);
  EXPECT_EQ(matrix.rowCount(), 200'000);
  EXPECT_TRUE(matrix[200'000][2] == TypeParam(2));
}

REGISTER_TYPED_TEST_SUITE_P(MatrixTextOver, WritesOneLineARow, WritesNothingButTheFrameWithoutRows,
                            ReadsWhatItWrote, ReadsOverCommentsWhereverWhiteSpaceMayStand,
                            PadsAShortRowInTheMiddle, PadsAShortLastRow,
                            TakesTheColumnsFromTheFirstRowThatHasSome, CountsNoRowsOfNothing,
                            PadsToFourMillionEntries, PadsBeyondThatToSixtyFourTimesWhatIsWritten,
                            HasASlotZeroAsWideAsItsRows, StaysEmptyWhereNoBracketStands,
                            ForgetsRowsAndColumnsItHeldBefore, LeavesWhatStandsBehindTheBracket,
                            RefusesARowThatIsLongerThanTheOthers, RefusesAFailedStream,
                            TakesTheEndOfFileStateAloneForNoFailure,
                            RefusesAnythingButABracketWhereARowIsDue,
                            RefusesTextThatEndsBetweenRows, ReadsHundredThousandsOfRows);

}  // namespace starsift::test
