// Rows that span lattices, and other rows that span the same ones.
#pragma once

#include <utility>

#include "numbers/VectorQQ.h"
#include "support/generators/ContainerGenerators.h"
#include "support/generators/NumberGenerators.h"
#include "support/oracles/BareissRows.h"

namespace starsift::test {

/// Entries are integers.
inline IntegerRows gmpRows(const Matrix<QQ>& matrix) {
  IntegerRows rows;
  for (const Vector<QQ>& row : matrix) {
    auto& copy = rows.emplace_back();
    for (const QQ& entry : row) copy.push_back(gmpRational(entry).get_num());
  }
  return rows;
}

/// An index from 1 to `count`.
inline Index arbitraryIndex(Index count) {
  return *rc::gen::inRange<Index>(1, count + 1);
}

inline void addMultiple(Matrix<QQ>& matrix, Index i, const QQ& factor, Index k) {
  for (Index j = 1; j <= matrix.columnCount(); ++j) addProduct(matrix[i][j], factor, matrix[k][j]);
}

/// An invertible matrix of integers and its inverse, which is one of integers too.
struct Unimodular {
  Matrix<QQ> matrix;
  Matrix<QQ> inverse;
};

/// An integer of up to `digits` digits.
inline rc::Gen<QQ> arbitraryInteger(int digits) {
  return rc::gen::map(longInteger(digits),
                      [](const std::string& text) { return toQQ(text + "/1"); });
}

/// By adding multiples of rows to other rows and exchanging rows.
inline Unimodular arbitraryUnimodular(Index order, const rc::Gen<QQ>& factors) {
  Unimodular result{Matrix<QQ>::identity(order), Matrix<QQ>::identity(order)};
  // The transpose of the inverse.
  Matrix<QQ>& transpose = result.inverse;
  for (Index step = 0; step < 2 * order; ++step) {
    const Index i = arbitraryIndex(order);
    const Index k = arbitraryIndex(order);
    if (i == k) continue;
    const QQ factor = *factors;
    addMultiple(result.matrix, i, factor, k);
    addMultiple(transpose, k, -factor, i);
    result.matrix.swapRows(i, k);
    transpose.swapRows(i, k);
  }
  for (Index i = 1; i <= order; ++i)
    for (Index j = 1; j < i; ++j) std::swap(transpose[i][j], transpose[j][i]);
  return result;
}

/// Small integers, of every rank, sometimes with long ones in a row.
inline Matrix<QQ> arbitraryGenerators(Index rows, Index columns) {
  const auto rank = arbitraryIndex(3);
  Matrix<QQ> matrix = matrixFrom<QQ>(
      *rc::gen::oneOf(arbitraryRows(rows, columns, 5), arbitraryDependentRows(rows, columns, rank)),
      columns);
  if (rows > 0 && *rc::gen::inRange(0, 4) == 0)
    for (QQ& entry : matrix[arbitraryIndex(rows)]) entry = *arbitraryInteger(30);
  return matrix;
}

}  // namespace starsift::test
