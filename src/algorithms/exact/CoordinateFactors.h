// What the coordinate solver stores of a basis from one vector to the next.
#pragma once

#include <memory>
#include <optional>

#include "algorithms/exact/BasisSolver.h"
#include "algorithms/exact/TriangularBasis.h"
#include "core/Matrix.h"

namespace starsift {

/// Empty until first needed.
template <class T>
struct CoordinateFactors {
  /// The echelon form of the transposed basis and the row operations that produce it.
  Matrix<T> echelon;
  Matrix<T> transform;
  /// The order for a substitution; null until it was looked for, and empty if there is none.
  std::shared_ptr<const std::optional<TriangularBasis>> triangle;
  /// Solver for integer coordinates over independent rows; shared among copies.
  std::shared_ptr<const BasisSolver> solver;

  void clear() { *this = CoordinateFactors(); }

  void convertFrom(const CoordinateFactors& source) { *this = source; }
  /// Stores nothing: factors over another number type would contain its rounding errors, or
  /// values that T can't hold, so they are computed anew.
  template <class U>
  void convertFrom(const CoordinateFactors<U>& /*source*/) {
    clear();
  }
};

}  // namespace starsift
