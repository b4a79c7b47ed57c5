// The integer points that satisfy equations and congruences: a coset of a lattice.
#pragma once

#include <functional>
#include <optional>
#include <span>

#include "search/decide/IntegerProblem.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

/// Shortens basis and point of a coset that may have long numbers; the set of points stays.
/// False ends the computation.
using CosetReducer = std::function<bool(BoxCoset&)>;

enum class CosetEnd {
  /// The coset holds exactly the solutions.
  made,
  /// No integer point satisfies all equations, whatever the bounds.
  noPoint,
  /// The reducer or mayGoOn() ended the computation.
  stopped
};

/// Intersects the points of `coset`, whose box is only passed on to the reducer, with the
/// solutions of the equations. The basis of the whole space and the point 0 give all solutions.
///
/// One equation after the other: the values of its form at the basis vectors are brought to their
/// greatest common divisor by subtracting multiples of the second largest from the largest, which
/// keeps the multipliers short (B. S. Majewski, G. Havas, ANTS I, 1994). The vector that keeps
/// the divisor moves the point and leaves the basis. A modulus is one more value.
///
/// `reduce` is called when the entries of the basis have become long, mayGoOn() before each
/// equation; false ends the computation.
CosetEnd intersect(BoxCoset& coset, std::span<const IntegerEquation> equations,
                   const CosetReducer& reduce, const std::function<bool()>& mayGoOn);

}  // namespace starsift
