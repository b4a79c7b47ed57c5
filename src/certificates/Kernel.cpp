#include "certificates/Kernel.h"

#include <algorithm>

#include "algorithms/exact/Determinant.h"
#include "algorithms/exact/IndependentRows.h"
#include "algorithms/exact/ModularElimination.h"
#include "certificates/ModularHermite.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

Index rankOf(const Matrix<QQ>& rows) {
  return static_cast<Index>(independentRows(rows).size());
}

bool isIntegral(const Matrix<QQ>& rows) {
  return std::all_of(rows.begin(), rows.end(), [](const Vector<QQ>& row) {
    return std::all_of(row.begin(), row.end(), [](const QQ& entry) { return entry.isInteger(); });
  });
}

/// True if the entries of a row have no common factor: it equals its line up to sign.
bool isPrimitive(const Vector<QQ>& row, const IntegerRow& line) {
  return abs(factorOf(row, line)) == QQ::one();
}

/// A minor of the independent rows that isn't 0, up to sign.
ZZ minorOf(const std::vector<IntegerRow>& rows, std::size_t columns) {
  const ModularSplit split = splitRows(rows, columns, separatingField(rows, columns));
  IntegerMatrix entries;
  for (const IntegerRow& row : rows) {
    std::vector<ZZ>& target = entries.emplace_back();
    for (const std::size_t column : split.pivots) target.push_back(row.entry(column));
  }
  return abs(determinant(entries));
}

std::vector<IntegerRow> linesOf(const Matrix<QQ>& rows) {
  std::vector<IntegerRow> lines;
  for (const Vector<QQ>& row : rows) lines.emplace_back(row);
  return lines;
}

/// A multiple of the greatest common divisor of all minors of the independent rows: the gcd
/// of a minor in columns as far left as possible and one as far right as possible.
ZZ commonMinor(Matrix<QQ> rows) {
  const auto columns = static_cast<std::size_t>(rows.columnCount());
  ZZ left = minorOf(linesOf(rows), columns);
  if (left == ZZ::one()) return left;
  for (Vector<QQ>& row : rows) std::reverse(row.begin(), row.end());
  return gcd(left, minorOf(linesOf(rows), columns));
}

/// True if the rows, each of `columns` entries, span all integer vectors. `modulus` is a
/// multiple of the greatest common divisor of all their minors of full order.
bool spanAllIntegers(const IntegerMatrix& rows, std::size_t columns, const ZZ& modulus) {
  if (modulus == ZZ::one()) return true;
  const IntegerMatrix form = hermiteModulo(rows, columns, modulus);
  for (std::size_t j = 0; j < columns; ++j)
    if (form[j][j] != ZZ::one()) return false;
  return true;
}

bool isSaturatedRational(const Matrix<QQ>& rows) {
  if (!isIntegral(rows) || rankOf(rows) < rows.rowCount()) return false;
  for (const Vector<QQ>& row : rows)
    if (!isPrimitive(row, IntegerRow(row))) return false;
  const auto count = static_cast<std::size_t>(rows.rowCount());
  const IntegerMatrix columns =
      transposed(scaledIntegers(rows).rows, static_cast<std::size_t>(rows.columnCount()));
  return spanAllIntegers(columns, count, commonMinor(rows));
}

bool solves(const std::vector<ZZ>& row, const std::vector<ZZ>& equation) {
  ZZ sum;
  for (std::size_t j = 0; j < row.size(); ++j)
    mpz_addmul(sum.get(), row[j].get(), equation[j].get());
  return sum.isZero();
}

bool allSolve(const Matrix<QQ>& rows, const Matrix<QQ>& equations) {
  const IntegerMatrix integers = scaledIntegers(rows).rows;
  for (const std::vector<ZZ>& equation : scaledIntegers(equations).rows)
    if (!std::all_of(integers.begin(), integers.end(),
                     [&](const std::vector<ZZ>& row) { return solves(row, equation); }))
      return false;
  return true;
}

}  // namespace

template <class T>
bool isSaturatedBasis(const Matrix<T>& rows) {
  return isSaturatedRational(finiteRationals(rows));
}

template <class T>
bool isKernelBasis(const Matrix<T>& rows, const Matrix<T>& equations) {
  const Matrix<QQ> exactRows = finiteRationals(rows);
  const Matrix<QQ> exactEquations = finiteRationals(equations);
  return rows.columnCount() == equations.columnCount() && allSolve(exactRows, exactEquations) &&
         rows.rowCount() + rankOf(exactEquations) == rows.columnCount() &&
         isSaturatedRational(exactRows);
}

template bool isSaturatedBasis(const Matrix<long double>&);
template bool isSaturatedBasis(const Matrix<QQ>&);
template bool isKernelBasis(const Matrix<long double>&, const Matrix<long double>&);
template bool isKernelBasis(const Matrix<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
