#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <streambuf>
#include <string>

#include "core/Matrix.h"
#include "support/fixtures/MatrixTextSuite.h"

namespace starsift {

namespace test {
INSTANTIATE_TYPED_TEST_SUITE_P(LongDouble, MatrixTextOver, long double);
}  // namespace test

namespace {

using test::matrixIn;
using M = Matrix<long double>;

/// Keeps the text and notes with an '!' where the stream was flushed.
class FlushBuffer : public std::stringbuf {
 protected:
  int sync() override {
    sputc('!');
    return 0;
  }
};

TEST(MatrixText, FlushesBehindEachLineFeed) {
  FlushBuffer buffer;
  std::ostream stream(&buffer);
  stream << M{{1}, {2}};
  EXPECT_EQ(buffer.str(), "[\n![ 1 ]\n![ 2 ]\n!]");
}

TEST(MatrixText, WritesInTheNumberFormatOfTheStream) {
  std::ostringstream stream;
  stream << std::setprecision(fileDigits) << M{{1.0L / 3}};
  EXPECT_EQ(stream.str(), "[\n[ 0.33333333333333333 ]\n]");
}

TEST(MatrixText, RefusesTextThatEndsInsideARow) {
  EXPECT_FAILS_WITH(matrixIn<long double>("[ [ 1"), "Vector: bad input");
  EXPECT_FAILS_WITH(matrixIn<long double>("[ ["), "Vector: bad input");
}

TEST(MatrixText, RefusesAMegabyteOfBrackets) {
  EXPECT_FAILS_WITH(matrixIn<long double>(std::string(1'000'000, '[')), "Vector: bad input");
}

TEST(MatrixText, ReadsAMegabyteOfEmptyRows) {
  std::string text = "[";
  for (int i = 0; i < 500'000; ++i) text += "[]";
  EXPECT_FALSE(test::readFrom<M>(text + "]").isSet());
}

TEST(MatrixText, ReadsOneLongRow) {
  std::string text = "[[";
  for (int i = 0; i < 1'000'000; ++i) text += "1 ";
  const auto matrix = test::readFrom<M>(text + "]]");
  EXPECT_EQ(matrix.columnCount(), 1'000'000);
}

}  // namespace
}  // namespace starsift
