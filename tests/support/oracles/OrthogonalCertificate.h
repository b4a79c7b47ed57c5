// Certificates of an orthogonalisation in exact arithmetic, which shares nothing
// with what it judges. A long double is taken for the very number that it holds.
#pragma once

#include <gmpxx.h>

#include <vector>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift::test {

using ExactRows = std::vector<std::vector<mpq_class>>;

/// Finite.
mpq_class exactly(long double value);
mpq_class exactly(const QQ& value);

template <class T>
ExactRows exactRows(const Matrix<T>& matrix) {
  ExactRows rows;
  for (const Vector<T>& row : matrix) {
    auto& copy = rows.emplace_back();
    for (const T& entry : row) copy.push_back(exactly(entry));
  }
  return rows;
}

/// The first rows.
ExactRows firstRows(const ExactRows& rows, Index count);

/// 10^-digits.
mpq_class tenth(unsigned digits);

/// The Gram-Schmidt vectors of independent rows.
ExactRows orthogonalVectors(const ExactRows& rows);

/// mu is lower triangular with ones in its diagonal, and with the vectors that it
/// takes out of the rows, v_k = b_k - sum of mu[k][j] v_j over j < k, so that mu * v
/// gives the rows back: |v_i v_j| <= bound * |b_i| |b_j| for i < j, and cLen[k] is
/// v_k v_k up to bound * |b_k|^2. Looks at as many rows as there are.
bool isOrthogonalisation(const ExactRows& rows, const Matrix<long double>& mu,
                         const Vector<long double>& cLen, const mpq_class& bound);

/// |v_i v_j| <= bound * |v_i| |v_j| for all pairs.
bool areOrthogonal(const ExactRows& vectors, const mpq_class& bound);

/// Row by row |left * right - product| <= bound * |product|.
bool isProduct(const ExactRows& left, const ExactRows& right, const ExactRows& product,
               const mpq_class& bound);

}  // namespace starsift::test
