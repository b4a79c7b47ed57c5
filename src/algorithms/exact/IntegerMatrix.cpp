#include "algorithms/exact/IntegerMatrix.h"

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "system/Failure.h"

namespace starsift {

namespace {

ZZ commonDenominator(const Matrix<QQ>& matrix) {
  ZZ scale = ZZ::one();
  for (const Vector<QQ>& row : matrix)
    for (const QQ& entry : row)
      if (!entry.isInteger()) scale = lcm(scale, entry.nenner());
  return scale;
}

}  // namespace

template <class T>
Matrix<QQ> finiteRationals(const Matrix<T>& matrix) {
  Matrix<QQ> result;
  result.convertFrom(matrix, false);
  for (const Vector<QQ>& row : result)
    for (const QQ& entry : row)
      if (entry.isInf()) fail("exact matrix: infinite entry");
  return result;
}

template <class T>
ScaledIntegers scaledIntegers(const Matrix<T>& matrix) {
  const Matrix<QQ> rationals = finiteRationals(matrix);
  ScaledIntegers result{{}, commonDenominator(rationals)};
  result.rows.reserve(static_cast<std::size_t>(matrix.rowCount()));
  for (const Vector<QQ>& row : rationals) {
    std::vector<ZZ>& entries = result.rows.emplace_back();
    entries.reserve(static_cast<std::size_t>(row.dimension()));
    for (const QQ& entry : row) {
      ZZ& integer = entries.emplace_back(entry.numerator());
      if (result.scale != ZZ::one()) integer *= exactQuotient(result.scale, entry.nenner());
    }
  }
  return result;
}

IntegerMatrix transposed(const IntegerMatrix& rows, std::size_t columns) {
  IntegerMatrix result(columns);
  for (std::size_t j = 0; j < columns; ++j) {
    result[j].reserve(rows.size());
    for (const std::vector<ZZ>& row : rows) result[j].push_back(row[j]);
  }
  return result;
}

std::size_t normBits(std::span<const ZZ> entries) {
  ZZ square;
  for (const ZZ& entry : entries) mpz_addmul(square.get(), entry.get(), entry.get());
  return (mpz_sizeinbase(square.get(), 2) + 1) / 2;
}

template Matrix<QQ> finiteRationals(const Matrix<long double>&);
template Matrix<QQ> finiteRationals(const Matrix<QQ>&);
template ScaledIntegers scaledIntegers(const Matrix<long double>&);
template ScaledIntegers scaledIntegers(const Matrix<QQ>&);

}  // namespace starsift
