// RapidCheck generator of unimodular matrices.
#pragma once

#include <rapidcheck.h>

#include "numbers/VectorQQ.h"

namespace starsift::test {

/// The product of `steps` row operations: a multiple of one row, by a factor of `factors`,
/// goes to another, which then changes places with the first.
inline Matrix<QQ> arbitraryUnimodular(Index order, int steps, const rc::Gen<QQ>& factors) {
  Matrix<QQ> matrix = Matrix<QQ>::identity(order);
  for (int step = 0; step < steps && order > 1; ++step) {
    const auto i = *rc::gen::inRange<Index>(1, order + 1);
    const auto j = *rc::gen::inRange<Index>(1, order + 1);
    if (i == j) continue;
    const QQ factor = *factors;
    for (Index c = 1; c <= order; ++c) matrix[i][c] += factor * matrix[j][c];
    matrix.swapRows(1, i);
  }
  return matrix;
}

}  // namespace starsift::test
