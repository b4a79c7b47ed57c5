// The stored solution of a problem.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "stars/TimeVector.h"

namespace starsift {

/// A star: the solution x (the vector itself), the results of its check, and the
/// data of the run that found it.
template <class T>
class Star : public TimeVector<T> {
 public:
  using TimeVector<T>::TimeVector;

  const Vector<T>& x() const { return *this; }

  /// Converts every number; PrecisionException "Precision lost during conversion",
  /// or that of the conversion itself, if T can't hold one. Unchanged after an exception.
  template <class U>
  void convertFrom(const Star<U>& source, bool check) {
    Star result;
    result.TimeVector<T>::convertFrom(source, check);
    result.targetValues.convertFrom(source.targetValues, check);
    result.targetNorm = convertNumber<T>(source.targetNorm, check);
    result.slackNorm = convertNumber<T>(source.slackNorm, check);
    result.paramsText = source.paramsText;
    result.versionText = source.versionText;
    result.fresh = source.fresh;
    *this = std::move(result);
  }

  /// One value per target row, empty in a problem without targets.
  Vector<T> targetValues;
  /// Sum over the targets, maximised ones counted negatively: smaller is better.
  T targetNorm = T();
  /// Sum of the distances to the finite goals.
  T slackNorm = T();
  /// One-line text of the parameters of the run that found the star; opaque.
  std::string paramsText;
  /// Dotted version number of the solver; interpreted only by the order of stars.
  std::string versionText;
  /// True if found by this run, not read from a file.
  bool fresh = false;
};

/// Appends the elements of `added`.
template <class T>
void appendStars(Array<Star<T>>& stars, Array<Star<T>> added) {
  if (!stars.isSet()) return stars.exchange(added);
  const Index before = stars.dimension();
  stars.resize(before + added.dimension(), true);
  std::move(added.begin(), added.end(), stars.begin() + before);
}

/// Keeps the stars at `indices`, which ascend, and drops the others.
template <class T>
void keepOnly(Array<Star<T>>& stars, const std::vector<Index>& indices) {
  Index kept = 0;
  for (const Index index : indices)
    if (++kept != index) stars[kept] = std::move(stars[index]);
  stars.resize(kept, false);
}

}  // namespace starsift
