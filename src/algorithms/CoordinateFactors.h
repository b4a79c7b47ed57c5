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

  template <class U>
  void convertFrom(const CoordinateFactors<U>& source) {
    echelon.convertFrom(source.echelon, false);
    transform.convertFrom(source.transform, false);
  }
};

}  // namespace starsift
