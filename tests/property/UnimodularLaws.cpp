// Determinants by primes against fraction-free elimination, and unimodular matrices
// against what they are made from.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "algorithms/exact/Determinant.h"
#include "algorithms/exact/Unimodular.h"
#include "support/generators/LatticeGenerators.h"
#include "support/oracles/SlowDeterminant.h"

namespace starsift {
namespace {

Matrix<QQ> arbitrarySquare() {
  const auto order = *rc::gen::inRange<Index>(0, 6);
  Matrix<QQ> matrix = test::matrixFrom<QQ>(*test::arbitraryRows(order, order, 3), order);
  if (order > 0 && *rc::gen::arbitrary<bool>())
    for (QQ& entry : matrix[*rc::gen::inRange<Index>(1, order + 1)])
      entry = test::toQQ(*test::longInteger(40) + "/1");
  return matrix;
}

RC_GTEST_PROP(Determinant, IsThatOfFractionFreeElimination, ()) {
  const Matrix<QQ> matrix = arbitrarySquare();
  const mpz_class expected = test::determinantByBareiss(test::gmpRows(matrix));
  RC_ASSERT(mpz_cmp(determinant(scaledIntegers(matrix).rows).get(), expected.get_mpz_t()) == 0);
}

RC_GTEST_PROP(Unimodular, MeansADeterminantOfMagnitudeOne, ()) {
  const Matrix<QQ> matrix = arbitrarySquare();
  const bool expected = abs(test::determinantByBareiss(test::gmpRows(matrix))) == 1;
  RC_TAG(expected);
  RC_ASSERT(isUnimodular(matrix) == expected);
}

RC_GTEST_PROP(Unimodular, AreProductsOfElementarySteps, ()) {
  const auto order = *rc::gen::inRange<Index>(1, 7);
  auto [matrix, inverse] = test::arbitraryUnimodular(order, test::arbitraryInteger(12));
  RC_ASSERT(isUnimodular(matrix));
  RC_ASSERT(isUnimodular(inverse));
  const auto k = *rc::gen::inRange<Index>(1, order + 1);
  for (QQ& entry : matrix[k]) entry *= QQ(*rc::gen::element(0, 2, 3, -5, 1'000'000'007));
  RC_ASSERT(!isUnimodular(matrix));
}

}  // namespace
}  // namespace starsift
