#include "algorithms/exact/LastCoordinate.h"

#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

/// The greatest integer not above a / b; the quotient itself may not be representable in T.
template <class T>
T flooredQuotient(const T& a, const T& b) {
  T rest = NumberTraits<T>::remainder(a, b);
  if (!(rest == T()) && (rest < T()) != (b < T())) rest += b;
  return ExactArithmetic<T>::quotient(a - rest, b);
}

}  // namespace

template <class T>
bool lastIsLess(const Matrix<T>& rows, Index i, Index pick) {
  const Index m = rows.columnCount();
  const T size = NumberTraits<T>::absolute(rows[i][m]);
  if (NumberTraits<T>::isZero(size)) return false;
  return pick == 0 || size < NumberTraits<T>::absolute(rows[pick][m]);
}

template <class T>
bool reduceLast(Matrix<T>& rows, Index pick) {
  const Index m = rows.columnCount();
  bool changed = false;
  for (Index i = 1; i <= rows.rowCount(); ++i) {
    if (i == pick || NumberTraits<T>::isZero(rows[i][m])) continue;
    const T q = flooredQuotient(rows[i][m], rows[pick][m]);
    for (Index j = 1; j <= m; ++j)
      ExactArithmetic<T>::subtractProduct(rows[i][j], q, rows[pick][j]);
    changed = true;
  }
  return changed;
}

template bool lastIsLess(const Matrix<long double>&, Index, Index);
template bool lastIsLess(const Matrix<QQ>&, Index, Index);
template bool reduceLast(Matrix<long double>&, Index);
template bool reduceLast(Matrix<QQ>&, Index);

}  // namespace starsift
