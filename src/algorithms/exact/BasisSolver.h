// Coordinates of vectors over independent rows, exactly.
#pragma once

#include <memory>
#include <optional>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// A basis prepared for any number of vectors. While CoordinateSolver eliminates in the
/// number type, which rounds in long double and makes rationals grow, this class lifts a
/// solution modulo a prime and verifies it by multiplication.
class BasisSolver {
 public:
  /// basis  n x m; entries are converted to rationals exactly, an infinite one is fatal
  ///
  /// O(n^2 m) machine operations.
  template <class T>
  explicit BasisSolver(const Matrix<T>& basis);
  BasisSolver(const BasisSolver&) = delete;
  BasisSolver& operator=(const BasisSolver&) = delete;
  ~BasisSolver();

  /// True if the rows are proven independent; otherwise no coordinates can be computed.
  bool isIndependent() const;

  /// The n coordinates of a vector of m entries; empty if it isn't in the lattice of
  /// the rows. O(n^2 + n m) operations for each 30 bits of the coordinates.
  /// PrecisionException if T can't hold a coordinate.
  template <class T>
  std::optional<Vector<T>> integerCoordinates(const Vector<T>& vector) const;

 private:
  struct Prepared;

  std::unique_ptr<const Prepared> prepared_;
};

extern template BasisSolver::BasisSolver(const Matrix<long double>&);
extern template BasisSolver::BasisSolver(const Matrix<QQ>&);
extern template std::optional<Vector<long double>> BasisSolver::integerCoordinates(
    const Vector<long double>&) const;
extern template std::optional<Vector<QQ>> BasisSolver::integerCoordinates(const Vector<QQ>&) const;

}  // namespace starsift
