// A hash index of the solutions of a lattice by their coordinates.
#pragma once

#include "core/HashedIndices.h"
#include "core/VectorHash.h"
#include "lattice/state/FiledSolution.h"

namespace starsift {

/// Finds vectors among solutions that are appended one by one; any other change of the
/// solutions must be reported by forgetAll().
template <class T>
class SolutionIndex {
 public:
  void forgetAll() {
    indices_.clear();
    known_ = 0;
  }

  /// True if one of the solutions is identical to the vector; all have its dimension.
  /// O(dimension) for the vector and for each solution appended since the last call.
  bool contains(const Array<FiledSolution<T>>& solutions, const Vector<T>& vector) {
    const auto equals = [&solutions](const Vector<T>& x) {
      return [&solutions, &x](Index i) { return identical<T>(solutions[i], x); };
    };
    while (known_ < solutions.dimension()) {
      const Vector<T>& next = solutions[++known_];
      indices_.findOrEnter(hashOf(next), known_, equals(next));
    }
    return indices_.find(hashOf(vector), equals(vector)) != 0;
  }

 private:
  HashedIndices indices_;
  /// Number of solutions entered so far.
  Index known_ = 0;
};

}  // namespace starsift
