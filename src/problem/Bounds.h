// Transforms the variables of a problem to normal form: integers from 0 on. Every change is
// recorded in the problem, so that solutions can be transformed back.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

/// Rounds the finite bounds of every variable inwards to its steps of 10^-dx. A variable
/// with lx = rx is a constant and stays, even if its value lies between two steps.
///
/// Fatal: a dx that isn't 0, 1, 2, ... ("dx has to be a non-negative integer in each of
/// its components"); lx = +inf, rx = -inf, or lx > rx after rounding ("sol bounds
/// error"); a dx above 100000 ("QQ: exponent out of range"). PrecisionException "data
/// overflow": steps that are too small for T.
template <class T>
void roundBounds(Vanu<T>& problem);

/// Substitutes the variables with lx = rx and removes them; fixedVars lists them by their
/// indices before the removal. Their contribution is subtracted from bg, lu, ru and, for
/// targets, from ltu and rtu. PrecisionException "bg overflow", "lu overflow" and so on.
template <class T>
void removeFixedVariables(Vanu<T>& problem);

/// Scales every variable to its steps, 10^dx to a unit: bounds are multiplied by 10^dx,
/// columns divided by it. Then finite bounds are rounded inwards to integers.
/// PrecisionException "rx overflow", "lx overflow", "data overflow" (an entry or 10^dx).
template <class T>
void scaleDecimalVariables(Vanu<T>& problem);

/// Negates the variables with an upper bound and no lower one; swappedVars lists them. With
/// `verbose` a console line for each: "Swapped half-free variable detected".
template <class T>
void swapHalfFreeVariables(Vanu<T>& problem, bool verbose);

/// Moves every variable with a lower bound to start at 0, by `shift`, which has an entry
/// per column of Ag. The data are integers. PrecisionException "bg overflow", "lu
/// overflow", "ru overflow" and, if atuValid, "ltu overflow", "rtu overflow".
template <class T>
void shiftLowerBounds(Vanu<T>& problem);

}  // namespace starsift
