// Kernel bases against what they are made from, against all minors, and against all
// short solutions.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "certificates/Kernel.h"
#include "support/generators/LatticeGenerators.h"
#include "support/oracles/SlowDeterminant.h"
#include "support/oracles/SlowHermite.h"

namespace starsift {
namespace {

using test::arbitraryIndex;
using test::IntegerRows;

struct Kernel {
  Matrix<QQ> rows;
  Matrix<QQ> equations;
};

/// With x = y * U the first entries of y are zero exactly when those of x * U^-1 are, so
/// that the last rows of U are a basis of the solutions.
Kernel arbitraryKernel(Index columns, int digits) {
  const auto [matrix, inverse] = test::arbitraryUnimodular(columns, test::arbitraryInteger(digits));
  const auto rank = *rc::gen::inRange<Index>(0, columns + 1);
  Kernel result{Matrix<QQ>(columns - rank, columns), Matrix<QQ>(rank, columns)};
  for (Index i = 1; i <= columns; ++i)
    for (Index j = 1; j <= columns; ++j) {
      if (j <= rank) result.equations[j][i] = inverse[i][j];
      if (i > rank) result.rows[i - rank][j] = matrix[i][j];
    }
  return result;
}

/// The greatest common divisor of all minors as high as there are rows, by all choices
/// of columns from `from` on.
mpz_class commonMinor(const IntegerRows& columns, std::size_t from, IntegerRows& chosen,
                      std::size_t rows) {
  if (chosen.size() == rows) return abs(test::determinantByBareiss(chosen));
  mpz_class result = 0;
  for (std::size_t j = from; j < columns.size(); ++j) {
    chosen.push_back(columns[j]);
    result = gcd(result, commonMinor(columns, j + 1, chosen, rows));
    chosen.pop_back();
  }
  return result;
}

bool isSaturatedByMinors(const Matrix<QQ>& matrix) {
  IntegerRows columns(static_cast<std::size_t>(matrix.columnCount()));
  for (const auto& row : test::gmpRows(matrix))
    for (std::size_t j = 0; j < columns.size(); ++j) columns[j].push_back(row[j]);
  IntegerRows chosen;
  return commonMinor(columns, 0, chosen, static_cast<std::size_t>(matrix.rowCount())) == 1;
}

mpz_class dot(const std::vector<mpz_class>& a, const std::vector<mpz_class>& b) {
  mpz_class sum = 0;
  for (std::size_t j = 0; j < a.size(); ++j) sum += a[j] * b[j];
  return sum;
}

/// All vectors of entries up to 2 that solve the equations.
IntegerRows shortSolutions(const IntegerRows& equations, std::size_t columns) {
  IntegerRows result;
  std::vector<mpz_class> x(columns, -2);
  while (true) {
    bool solves = true;
    for (const auto& equation : equations) solves = solves && dot(equation, x) == 0;
    if (solves) result.push_back(x);
    std::size_t j = 0;
    while (j < columns && x[j] == 2) x[j++] = -2;
    if (j == columns) return result;
    x[j] += 1;
  }
}

RC_GTEST_PROP(KernelBasis, IsPartOfAUnimodularMatrix, ()) {
  const auto columns = arbitraryIndex(7);
  Kernel kernel = arbitraryKernel(columns, 12);
  RC_ASSERT(isKernelBasis(kernel.rows, kernel.equations));
  if (kernel.rows.rowCount() == 0) return;
  Matrix<QQ> scaled = kernel.rows;
  for (QQ& entry : scaled[arbitraryIndex(scaled.rowCount())])
    entry *= QQ(*rc::gen::element(0, 2, 3, 1'000'000'007));
  RC_ASSERT(!isKernelBasis(scaled, kernel.equations));
  Matrix<QQ> fewer = kernel.rows;
  fewer.removeRow(arbitraryIndex(fewer.rowCount()));
  RC_ASSERT(!isKernelBasis(fewer, kernel.equations));
}

RC_GTEST_PROP(KernelBasis, IsASublatticeOnlyByAUnimodularMatrix, ()) {
  const Kernel kernel = arbitraryKernel(arbitraryIndex(5), 2);
  const Index count = kernel.rows.rowCount();
  const Matrix<QQ> change = test::matrixFrom<QQ>(*test::arbitraryRows(count, count, 2), count);
  const mpz_class determinant = test::determinantByBareiss(test::gmpRows(change));
  RC_TAG(abs(determinant) == 1);
  RC_ASSERT(isKernelBasis(change * kernel.rows, kernel.equations) == (abs(determinant) == 1));
}

RC_GTEST_PROP(SaturatedBasis, HasMinorsWithoutCommonFactor, ()) {
  const auto columns = arbitraryIndex(5);
  const auto count = arbitraryIndex(columns);
  const Matrix<QQ> rows = test::matrixFrom<QQ>(*test::arbitraryRows(count, columns, 4), columns);
  const bool expected = isSaturatedByMinors(rows);
  RC_TAG(expected);
  RC_ASSERT(isSaturatedBasis(rows) == expected);
}

RC_GTEST_PROP(KernelBasis, MayConsistOfShortSolutions, ()) {
  const auto columns = arbitraryIndex(4);
  const auto size = static_cast<std::size_t>(columns);
  const auto count = *rc::gen::inRange<Index>(1, 3);
  const IntegerRows equations =
      test::gmpRows(test::matrixFrom<QQ>(*test::arbitraryRows(count, columns, 2), columns));
  const IntegerRows solutions = shortSolutions(equations, size);
  const IntegerRows span = test::hermiteByEuclid(solutions, size);
  Matrix<QQ> rows(static_cast<Index>(span.size()), columns);
  Matrix<QQ> exact(count, columns);
  for (Index j = 1; j <= columns; ++j) {
    const auto column = static_cast<std::size_t>(j - 1);
    for (std::size_t i = 0; i < span.size(); ++i)
      rows[static_cast<Index>(i) + 1][j] = test::toQQ(mpq_class(span[i][column]));
    for (std::size_t i = 0; i < equations.size(); ++i)
      exact[static_cast<Index>(i) + 1][j] = test::toQQ(mpq_class(equations[i][column]));
  }
  // There may be solutions that need entries beyond 2: then the short ones span less.
  const std::size_t rank = test::independentRowsByBareiss(equations).size();
  const bool expected = span.size() + rank == size && isSaturatedByMinors(rows);
  RC_TAG(expected);
  RC_ASSERT(isKernelBasis(rows, exact) == expected);
}

}  // namespace
}  // namespace starsift
