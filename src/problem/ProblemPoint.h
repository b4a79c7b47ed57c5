// Transforms points of a problem to the variables of its normal form and back.
#pragma once

#include <optional>

#include "problem/Vanu.h"

namespace starsift {

// In all functions `problem` is in normal form, n = problem.rx.dimension(), and `hom` is the
// homogenising factor of a point: right-hand sides are multiplied by it. All results are exact;
// PrecisionException if T can't hold one.

/// row * z; if one of them is shorter, its missing entries count as 0.
template <class T>
T rowValue(const Vector<T>& row, const Vector<T>& z);

/// Converts the point x of the problem as read to the first problem.originalCount() variables
/// of the normal form: without constants, in steps, negated if a variable had only an upper
/// bound, moved to start at 0. A point that is too short is fatal, "removeComponent: invalid
/// index", if a constant reveals it.
template <class T>
Vector<T> originalVariables(const Vanu<T>& problem, const Vector<T>& x);

/// Appends slacks and deviations, each in its unit, so that the lifted equations hold; z
/// then has n entries. Of two deviations at least one is 0. A point without `hom` is a point of
/// the problem, hom = 1, and must not make a slack negative: fatal, "slack variable
/// inconsistency, s should be >= 0". With `hom` a slack may have any sign.
template <class T>
void appendSlacks(const Vanu<T>& problem, Vector<T>& z, const std::optional<T>& hom);

/// Ag * z - hom * bg, an entry per equation; z has n entries or n plus one per modulus.
template <class T>
Vector<T> equationResiduals(const Vanu<T>& problem, const Vector<T>& z, const T& hom);

/// Appends to z, of n entries, the factor of each modulus that brings the residual of its
/// congruence nearest to 0 without changing its sign; `residuals` become the remainders.
template <class T>
void appendModulusFactors(const Vanu<T>& problem, Vector<T>& z, Vector<T>& residuals);

/// Throws ModuloException "modulo equation inconsistency" if the residual of a congruence
/// isn't a multiple of its modulus, within the tolerance of T.
template <class T>
void checkCongruences(const Vanu<T>& problem, const Vector<T>& residuals);

/// Transforms z, of originalCount() or n entries, back: in the units of the user, slacks and
/// deviations divided by their units, with the constants if `insert` is set.
/// PrecisionException "opt_vec overflow1" beyond the safe range of T. Fatal,
/// "insertComponent: invalid index": a constant whose index is beyond the end.
template <class T>
Vector<T> pointAsRead(const Vanu<T>& problem, Vector<T> z, bool insert);

}  // namespace starsift
