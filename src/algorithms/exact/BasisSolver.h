// Coordinates of vectors over independent rows, exactly.
#pragma once

#include <memory>
#include <optional>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// A basis prepared for any number of vectors. Where CoordinateSolver eliminates in the
/// number type, which rounds in long double and makes rationals grow, this lifts a
/// solution modulo a prime and multiplies it out.
class BasisSolver {
 public:
  /// basis  n x m; entries are taken as the rationals that they convert to, an infinite one
  ///        is fatal
  ///
  /// O(n^2 m) machine operations.
  template <class T>
  explicit BasisSolver(const Matrix<T>& basis);
  BasisSolver(const BasisSolver&) = delete;
  BasisSolver& operator=(const BasisSolver&) = delete;
  ~BasisSolver();

  /// The rows are known to be independent; without that there are no answers.
  bool isIndependent() const;

  /// The n coordinates of a vector of m entries; nothing where it isn't in the lattice of
  /// the rows. O(n^2 + n m) operations for each 30 bits of the coordinates.
  /// PrecisionException where T can't hold one.
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
