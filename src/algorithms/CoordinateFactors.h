// What the coordinate solver keeps of a basis between two questions.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// The echelon form of a transposed basis and the row operations that lead there;
/// empty until they are first needed.
template <class T>
struct CoordinateFactors {
  Matrix<T> echelon;
  Matrix<T> transform;

  void clear() { *this = CoordinateFactors(); }

  void convertFrom(const CoordinateFactors& source) { *this = source; }
  /// Factors over another number type would bring its rounding along, or be more than T
  /// holds: they are left to be made anew.
  template <class U>
  void convertFrom(const CoordinateFactors<U>& /*source*/) {
    clear();
  }
};

}  // namespace starsift
