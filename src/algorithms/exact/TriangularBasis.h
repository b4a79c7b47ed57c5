// Bases that are triangular up to the order of their rows and columns, as generated ones are:
// coordinates over them take a substitution, and no factorisation.
#pragma once

#include <optional>
#include <vector>

#include "numbers/VectorQQ.h"

namespace starsift {

/// An order of all rows, each with a column in which no later row has an entry other than 0.
class TriangularBasis {
 public:
  /// Empty if there is no such order. O(n m) for n rows of m entries.
  template <class T>
  static std::optional<TriangularBasis> of(const Matrix<T>& basis);

  /// The integers z with z * basis == vector in the columns of the order, if there are any; the
  /// others aren't looked at. `basis` is the one given to of(); the coordinates over another one of
  /// its shape are wrong. PrecisionException if T can't
  /// hold a partial sum.
  template <class T>
  std::optional<Vector<T>> integerCoordinates(const Matrix<T>& basis,
                                              const Vector<T>& vector) const;

 private:
  struct Pivot {
    Index row;
    Index column;
    /// Rows before this one in the order that have an entry in the column.
    std::vector<Index> earlier;
  };

  std::vector<Pivot> pivots_;
};

}  // namespace starsift
