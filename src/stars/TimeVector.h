// Vectors that the solver found, kept with the moment of their discovery.
#pragma once

#include "core/Vector.h"

namespace starsift {

/// Discovery time of a vector whose time isn't known.
constexpr std::int64_t unknownTime = -1;

/// A vector with the seconds from the start of a run until it was found. The text
/// form is that of the vector; the time is not part of it.
template <class T>
class TimeVector : public Vector<T> {
 public:
  using Vector<T>::Vector;

  /// Also resets the time.
  void clear() override {
    this->resize(0, false);
    time = unknownTime;
  }

  template <class U>
  void convertFrom(const TimeVector<U>& source, bool check) {
    Vector<T>::convertFrom(source, check);
    time = source.time;
  }

  /// Seconds, or unknownTime.
  std::int64_t time = unknownTime;
};

/// A vector kept for its target values.
template <class T>
class TargetVector : public TimeVector<T> {
 public:
  using TimeVector<T>::TimeVector;

  /// Converts every number; see Star. Unchanged after an exception.
  template <class U>
  void convertFrom(const TargetVector<U>& source, bool check) {
    TargetVector result;
    result.TimeVector<T>::convertFrom(source, check);
    result.targetValues.convertFrom(source.targetValues, check);
    result.targetNorm = convertNumber<T>(source.targetNorm, check);
    result.slackNorm = convertNumber<T>(source.slackNorm, check);
    *this = std::move(result);
  }

  /// One value per target row of the problem as it was read.
  Vector<T> targetValues;
  /// +infinity if there is no vector.
  T targetNorm = NumberTraits<T>::infinity();
  T slackNorm = T();
};

/// A vector that is being transformed by a change of the lattice.
template <class T>
class BackupVector : public TimeVector<T> {
 public:
  using TimeVector<T>::TimeVector;
};

}  // namespace starsift
