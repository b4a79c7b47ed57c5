// A solution as a lattice stores it: the vector, and the verdict on its point.
#pragma once

#include <cstdint>
#include <memory>

#include "numbers/QQ.h"
#include "stars/Star.h"

namespace starsift {

/// A point that was judged to be a solution. Exact in either precision, and never changed, so
/// that copies of a lattice and backups share it.
struct JudgedStar {
  /// x, target values and norms; the other fields are set when a star is made from it.
  Star<QQ> star;
  /// Number of the problem that it solves; see SolutionFile::problemNumber().
  std::uint64_t problem = 0;
  /// Numbers of a search ascend in the order of filing; each is given once, even if a step is
  /// undone and repeated.
  Index number = 0;
};

/// A raw lattice vector with its discovery time and the values of its point. `judged` is set
/// if the vector was filed by a check.
template <class T>
class FiledSolution : public TargetVector<T> {
 public:
  using TargetVector<T>::TargetVector;

  template <class U>
  void convertFrom(const FiledSolution<U>& source, bool check) {
    TargetVector<T>::convertFrom(source, check);
    judged = source.judged;
  }

  std::shared_ptr<const JudgedStar> judged;
};

}  // namespace starsift
