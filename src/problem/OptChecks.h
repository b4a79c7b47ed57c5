// The conditions on the items of a .opt file. Each check is fatal with its own
// text; they are listed in the order in which the reader makes them.
#pragma once

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift::optchecks {

/// kt is as long as dt.
void thresholds(const Vanu<QQ>& problem);
/// One target row per goal.
void targetRows(const Vanu<QQ>& problem);
/// One right-hand side per equation.
void equationRows(const Vanu<QQ>& problem);
/// No modulus at all, or a finite one per equation.
void moduli(const Vanu<QQ>& problem);
/// All matrices that have columns have n of them, n > 0. Returns n.
Index columns(const Vanu<QQ>& problem);
/// No infinity in the matrices and right-hand sides.
void finiteEntries(const Vanu<QQ>& problem);
/// One lower bound per inequation.
void inequationRows(const Vanu<QQ>& problem);
/// One upper bound per lower bound and not below it; not -inf together with +inf.
void inequationBounds(const Vanu<QQ>& problem);
/// n bounds and decimal places, each upper bound at least its lower bound.
void variables(const Vanu<QQ>& problem, Index n);

}  // namespace starsift::optchecks
