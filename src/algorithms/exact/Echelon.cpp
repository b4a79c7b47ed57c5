#include "algorithms/exact/Echelon.h"

#include "core/Elimination.inl"

namespace starsift {

template <class T>
Index echelonForm(Matrix<T>& M, Matrix<T>& transform, bool reduced) {
  return elimination::toEchelon(M, transform, reduced, elimination::Exchange::once);
}

template Index echelonForm(Matrix<long double>&, Matrix<long double>&, bool);
template Index echelonForm(Matrix<QQ>&, Matrix<QQ>&, bool);

}  // namespace starsift
