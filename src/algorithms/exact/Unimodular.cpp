#include "algorithms/exact/Unimodular.h"

#include "algorithms/exact/Determinant.h"
#include "numbers/VectorQQ.h"

namespace starsift {

template <class T>
bool isUnimodular(const Matrix<T>& matrix) {
  if (matrix.rowCount() != matrix.columnCount()) return false;
  const ScaledIntegers integers = scaledIntegers(matrix);
  return integers.scale == ZZ::one() && hasUnitDeterminant(integers.rows);
}

template bool isUnimodular(const Matrix<long double>&);
template bool isUnimodular(const Matrix<QQ>&);

}  // namespace starsift
