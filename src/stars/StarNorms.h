// The norms of a star, which measure its target values.
#pragma once

#include <optional>

#include "core/Vector.h"
#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// The text of the exception if the number type can't hold a result of a check.
constexpr const char* checkLossText = "Precision lost during check";

/// Sum over the goals (smaller is better) and distance to the finite goals.
template <class T>
struct Norms {
  T target = T();
  T slack = T();
};

/// The result of the check of a star.
template <class T>
struct StarVerdict {
  bool isSolution = false;
  /// Set for a solution if the problem has targets.
  Vector<T> targetValues;
  Norms<T> norms;
};

/// Makes `least` the least norm of those seen so far, `norm` the last of them.
inline void lowerTo(std::optional<QQ>& least, const QQ& norm) {
  if (!least || norm < *least) least = norm;
}

/// The norms of target values relative to their goals, in the arithmetic of T. A
/// minimised target (-inf) counts as it is, a maximised one (+inf) negatively, a
/// finite goal by the distance to it, which is also added to the slack.
template <class T>
Norms<T> goalNorms(const Vector<T>& goals, const Vector<T>& values);

/// The norms of a point `x` with the given target values, computed exactly. In
/// a lifted problem a finite goal is fatal, "preparation inconsistency": there the
/// slack of a goal is the residual of its lifted equation at `x`, in absolute value
/// and without the slack and deviation columns. Throws PrecisionException
/// "Precision lost during check" if T can't hold a result.
template <class T>
Norms<T> computeNorms(const Vanu<T>& problem, const Vector<T>& targetValues, const Vector<T>& x);

extern template Norms<long double> goalNorms(const Vector<long double>&,
                                             const Vector<long double>&);
extern template Norms<long double> computeNorms(const Vanu<long double>&,
                                                const Vector<long double>&,
                                                const Vector<long double>&);

}  // namespace starsift
