// The solutions of a lattice by their coordinates.
#pragma once

#include "core/HashedIndices.h"
#include "core/VectorHash.h"
#include "lattice/state/FiledSolution.h"

namespace starsift {

/// Finds vectors among solutions that are appended one by one; whoever changes them in
/// another way says so by forgetAll().
template <class T>
class SolutionIndex {
 public:
  void forgetAll() {
    indices_.clear();
    known_ = 0;
  }

  /// One of the solutions is identical to the vector; all have its dimension. O(dimension)
  /// for it and for each solution that has come since the last question.
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
  /// Solutions that were entered.
  Index known_ = 0;
};

}  // namespace starsift
