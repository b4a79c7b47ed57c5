#include "search/RowCombination.h"

#include <gtest/gtest.h>

#include <string>

#include "numbers/QQ.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

template <class T>
Matrix<T> twoRows() {
  Matrix<T> rows(2, 2);
  rows[1] = {T(1), T(2)};
  rows[2] = {T(0), T(1000000)};
  return rows;
}

TEST(RowCombination, SubtractsMultiplesOfRows) {
  const Matrix<QQ> rows = twoRows<QQ>();
  RowCombination<QQ> sum(rows, Vector<QQ>({QQ(5), QQ(7)}), "overflow");
  sum.subtract(1, 3.0L);
  sum.subtract(2, -1.0L);
  EXPECT_EQ(test::textOf(sum.vector()), "[ 2 1000001 ]");
}

TEST(RowCombination, OverflowHasTheTextGiven) {
  const Matrix<long double> rows = twoRows<long double>();
  RowCombination<long double> sum(rows, Vector<long double>(2), "sieve overflow");
  std::string message;
  try {
    // Each fits, and they cancel.
    for (int i = 0; i < 1000; ++i) {
      sum.subtract(2, 1e9L);
      sum.subtract(2, -1e9L);
    }
  } catch (const PrecisionException& exception) {
    message = exception.message();
  }
  EXPECT_EQ(message, "sieve overflow");
}

}  // namespace
}  // namespace starsift
