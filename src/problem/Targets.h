// From targets to normal form: goals to reach become equations with deviations, and all
// targets together one row.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

/// Turns every target with a finite goal into the equation row * x + d - e = goal with
/// two deviations d, e >= 0 and the target to minimise d + e. The equations come last,
/// the deviations too, in the order of the targets, which move behind those to maximise
/// and minimise; deviationCount is the number of deviations. A finite threshold of such a
/// target becomes -inf.
template <class T>
void liftFiniteTargets(Vanu<T>& problem);

/// atu := sum of the target rows, each times its sign: what all targets together try to
/// make large. PrecisionException "atu overflow".
template <class T>
void aggregateTargets(Vanu<T>& problem);

/// Where every target has a finite threshold: setTargetRange() with the thresholds, each
/// times the sign of its target. To be called once atu holds.
template <class T>
void addTargetThreshold(Vanu<T>& problem);

/// Looks for values of atu * x from `least` on: ltu = least, rtu = the greatest value
/// within the bounds of the variables, atuValid. Nothing where that is infinite or
/// below `least`. Throws PrecisionException where T can't hold the greatest value.
template <class T>
void setTargetRange(Vanu<T>& problem, const T& least);

}  // namespace starsift
