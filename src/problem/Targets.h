// Transforms targets to normal form: finite goals become equations with deviations, and all
// targets are summed in one row.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

/// Turns every target with a finite goal into the equation row * x + d - e = goal with
/// two deviations d, e >= 0 and the target to minimise d + e. The equations are appended,
/// and so are the deviations, in the order of the targets, which are moved after the targets
/// to maximise and minimise; deviationCount is the number of deviations. A finite threshold of
/// such a target becomes -inf.
template <class T>
void liftFiniteTargets(Vanu<T>& problem);

/// atu := sum of the target rows, each times its sign: the quantity that all targets together
/// maximise. PrecisionException "atu overflow".
template <class T>
void aggregateTargets(Vanu<T>& problem);

/// If every target has a finite threshold: setTargetRange() with the sum of the thresholds,
/// each times the sign of its target. To be called once atu is valid.
template <class T>
void addTargetThreshold(Vanu<T>& problem);

/// Restricts the search to values of atu * x from `least` on: ltu = least, rtu = the greatest
/// value within the bounds of the variables, atuValid is set. No effect if that value is infinite
/// or below `least`. Throws PrecisionException if T can't hold the greatest value.
template <class T>
void setTargetRange(Vanu<T>& problem, const T& least);

}  // namespace starsift
