// Points of a problem on their way to the variables of its normal form and back.
#pragma once

#include <optional>

#include "problem/Vanu.h"

namespace starsift {

// Everywhere `problem` is in normal form, n = problem.rx.dimension(), and `hom` the factor
// of a homogeneous point: right-hand sides count so often. All results are exact; a
// PrecisionException where T can't hold one.

/// row * z; where one of them has more entries they count as 0.
template <class T>
T rowValue(const Vector<T>& row, const Vector<T>& z);

/// The point x of the problem as read in the first variables of the normal form, problem.
/// originalCount() of them: without constants, in steps, negated where only an upper bound
/// was, moved to start at 0. A point that is too short is fatal, "removeComponent: invalid
/// index", where a constant shows it.
template <class T>
Vector<T> originalVariables(const Vanu<T>& problem, const Vector<T>& x);

/// Appends slacks and deviations, each in its unit, so that the lifted equations hold; z
/// then has n entries. Of two deviations at least one is 0. A point without `hom` is one of
/// the problem, hom = 1, and must leave no slack negative: fatal, "slack variable
/// inconsistency, s should be >= 0". With `hom` a slack is what it is.
template <class T>
void appendSlacks(const Vanu<T>& problem, Vector<T>& z, const std::optional<T>& hom);

/// Ag * z - hom * bg, an entry per equation; z has n entries or also those of the moduli.
template <class T>
Vector<T> equationResiduals(const Vanu<T>& problem, const Vector<T>& z, const T& hom);

/// Appends to z, of n entries, the factor of each modulus that brings the residual of its
/// congruence nearest to 0 from its own side, and `residuals` become what is left.
template <class T>
void appendModulusFactors(const Vanu<T>& problem, Vector<T>& z, Vector<T>& residuals);

/// Throws ModuloException "modulo equation inconsistency" where the residual of a congruence
/// isn't a multiple of its modulus, within the tolerance of T.
template <class T>
void checkCongruences(const Vanu<T>& problem, const Vector<T>& residuals);

/// The way back from z, originalCount() entries or n of them: in the units of the user,
/// slacks and deviations divided by theirs, with the constants where `insert` is set.
/// PrecisionException "opt_vec overflow1" beyond the safe range of T. Fatal,
/// "insertComponent: invalid index": a constant with a place behind the end.
template <class T>
Vector<T> pointAsRead(const Vanu<T>& problem, Vector<T> z, bool insert);

}  // namespace starsift
