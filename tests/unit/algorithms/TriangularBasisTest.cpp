#include "algorithms/exact/TriangularBasis.h"

#include <gtest/gtest.h>

#include "core/VectorText.h"
#include "numbers/VectorQQ.h"

namespace starsift {
namespace {

std::string textOf(const std::optional<Vector<QQ>>& vector) {
  if (!vector) return "none";
  std::string text;
  appendText(text, *vector, 0);
  return text;
}

/// Its rows in the order 2, 3, 1, its columns in the order 3, 1, 2.
Matrix<QQ> permuted() {
  return {{0, 3, 0, 0}, {5, 7, 2, 1}, {4, 1, 0, 6}};
}

TEST(TriangularBasis, CoordinatesAreFoundInAnyOrderOfRowsAndColumns) {
  const Matrix<QQ> basis = permuted();
  const auto triangle = TriangularBasis::of(basis);
  ASSERT_TRUE(triangle);
  const Vector<QQ> z{-2, 3, 5};
  EXPECT_EQ(textOf(triangle->integerCoordinates(basis, z * basis)), "[ -2 3 5 ]");
}

TEST(TriangularBasis, FractionsAreNoCoordinates) {
  const Matrix<QQ> basis = permuted();
  const auto triangle = TriangularBasis::of(basis);
  ASSERT_TRUE(triangle);
  const Vector<QQ> z{QQ(1, 2), 3, 5};
  EXPECT_EQ(textOf(triangle->integerCoordinates(basis, z * basis)), "none");
}

TEST(TriangularBasis, IsNoBasisWithACycle) {
  EXPECT_FALSE(TriangularBasis::of(Matrix<QQ>{{1, 1, 0}, {1, 2, 0}}));
  EXPECT_FALSE(TriangularBasis::of(Matrix<QQ>{{1, 0, 0}, {0, 0, 0}}));
}

TEST(TriangularBasis, WithoutRowsHasNoCoordinates) {
  const auto triangle = TriangularBasis::of(Matrix<QQ>());
  ASSERT_TRUE(triangle);
  EXPECT_EQ(triangle->integerCoordinates(Matrix<QQ>(), Vector<QQ>())->dimension(), 0);
}

}  // namespace
}  // namespace starsift
