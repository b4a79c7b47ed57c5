// Certificates of an elimination: what "echelon form" and "transform * old == new"
// mean stands here once more, in other words.
#pragma once

#include "core/Matrix.h"

namespace starsift::test {

/// Column of the first entry of the row that isn't zero within the tolerance, or
/// columns + 1.
template <class T>
Index leadOf(const Vector<T>& row) {
  Index j = 1;
  while (j <= row.dimension() && NumberTraits<T>::isZero(row[j])) ++j;
  return j;
}

/// Each row starts further right than the one above; zero rows come last.
template <class T>
bool isEchelon(const Matrix<T>& a) {
  for (Index i = 2; i <= a.rowCount(); ++i) {
    const Index lead = leadOf(a[i]);
    if (lead <= a.columnCount() && lead <= leadOf(a[i - 1])) return false;
  }
  return true;
}

/// Echelon form with pivots 1 and zeros above them.
template <class T>
bool isReducedEchelon(const Matrix<T>& a) {
  if (!isEchelon(a)) return false;
  for (Index i = 1; i <= a.rowCount(); ++i) {
    const Index lead = leadOf(a[i]);
    if (lead > a.columnCount()) continue;
    if (!NumberTraits<T>::equal(a[i][lead], T(1))) return false;
    for (Index k = 1; k < i; ++k)
      if (!NumberTraits<T>::isZero(a[k][lead])) return false;
  }
  return true;
}

/// Rows that are not zero within the tolerance.
template <class T>
Index nonZeroRows(const Matrix<T>& a) {
  Index count = 0;
  for (const Vector<T>& row : a) count += leadOf(row) <= a.columnCount() ? 1 : 0;
  return count;
}

/// transform * before == after within the tolerance, and nothing lost on the way.
template <class T>
bool transforms(const Matrix<T>& transform, const Matrix<T>& before, const Matrix<T>& after) {
  if (transform.rowCount() != before.rowCount() || transform.columnCount() != before.rowCount() ||
      after.rowCount() != before.rowCount() || after.columnCount() != before.columnCount())
    return false;
  const Matrix<T> product = transform * before;
  for (Index i = 1; i <= after.rowCount(); ++i)
    if (!(product[i] == after[i])) return false;
  return true;
}

}  // namespace starsift::test
