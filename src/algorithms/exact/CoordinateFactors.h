// What the coordinate solver keeps of a basis between two questions.
#pragma once

#include <memory>

#include "algorithms/exact/BasisSolver.h"
#include "core/Matrix.h"

namespace starsift {

/// Empty until first needed.
template <class T>
struct CoordinateFactors {
  /// The echelon form of the transposed basis and the row operations that lead there.
  Matrix<T> echelon;
  Matrix<T> transform;
  /// For integer coordinates over independent rows; copies share it.
  std::shared_ptr<const BasisSolver> solver;

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
