#include "problem/Rows.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::rowsText;
using test::textOf;

/// The numbers 1 to 6 without `count` from `position` on.
std::string without(Index position, Index count) {
  Vector<long double> numbers{1, 2, 3, 4, 5, 6};
  removeElements(numbers, position, count);
  return textOf(numbers);
}

TEST(Rows, ElementsAreRemovedAtBothEndsAndBetween) {
  EXPECT_EQ(without(1, 2), "[ 3 4 5 6 ]");
  EXPECT_EQ(without(3, 1), "[ 1 2 4 5 6 ]");
  EXPECT_EQ(without(2, 4), "[ 1 6 ]");
  EXPECT_EQ(without(5, 2), "[ 1 2 3 4 ]");
}

TEST(Rows, AllElementsOrNoneMayBeRemoved) {
  EXPECT_EQ(without(1, 6), "[ ]");
  EXPECT_EQ(without(1, 0), "[ 1 2 3 4 5 6 ]");
  EXPECT_EQ(without(7, 0), "[ 1 2 3 4 5 6 ]");
}

TEST(Rows, RemainingElementsAreMoved) {
  Array<std::string> texts(3);
  for (Index i = 1; i <= 3; ++i)
    texts[i] = "a text too long for a short place " + std::to_string(i);
  const char* const last = texts[3].data();
  removeElements(texts, 2, 1);
  ASSERT_EQ(texts.dimension(), 2);
  EXPECT_EQ(texts[2].data(), last);
}

/// The rows {1 .. 4} and {5 .. 8} without columns.
std::string columnsLeft(Index rowCount, Index position, Index count) {
  const Matrix<long double> rows{{1, 2, 3, 4}, {5, 6, 7, 8}};
  return rowsText(withoutColumns(rows, rowCount, position, count));
}

TEST(Rows, ColumnsAreLeftOutAtBothEndsAndBetween) {
  EXPECT_EQ(columnsLeft(2, 1, 1), "[ 2 3 4 ] [ 6 7 8 ]");
  EXPECT_EQ(columnsLeft(2, 2, 2), "[ 1 4 ] [ 5 8 ]");
  EXPECT_EQ(columnsLeft(2, 4, 1), "[ 1 2 3 ] [ 5 6 7 ]");
  EXPECT_EQ(columnsLeft(2, 1, 0), "[ 1 2 3 4 ] [ 5 6 7 8 ]");
}

TEST(Rows, OnlyTheFirstRowsAreKept) {
  EXPECT_EQ(columnsLeft(1, 3, 1), "[ 1 2 4 ]");
  EXPECT_EQ(columnsLeft(0, 3, 1), "");
}

TEST(Rows, NoRowsStillHaveColumns) {
  const Matrix<long double> rows{{1, 2, 3, 4}, {5, 6, 7, 8}};
  EXPECT_EQ(withoutColumns(rows, 0, 3, 1).columnCount(), 3);
}

}  // namespace
}  // namespace starsift
