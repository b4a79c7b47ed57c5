// Matrices on one line, for comparisons.
#pragma once

#include <string>

#include "core/Matrix.h"
#include "support/TextOf.h"

namespace starsift::test {

/// The rows in their vector form, "[ 1 2 ] [ 3 4 ]"; empty without rows.
template <class T>
std::string rowsText(const Matrix<T>& matrix) {
  std::string text;
  for (const Vector<T>& row : matrix) text += (text.empty() ? "" : " ") + textOf(row);
  return text;
}

}  // namespace starsift::test
