// A combination of rows of a basis becomes one of its rows.
#pragma once

#include <vector>

#include "lattice/state/Basis.h"

namespace starsift {

/// Replaces the rows first, first + 1 ... by as many that span the same lattice, whatever rounding
/// did to the coefficients; the first one of them is the sum of the given multiples of the old
/// ones, divided by the greatest common divisor of these, or its negative.
///
/// coefficients  integers, not all 0, one for each of at most n - first + 1 rows
///
/// PrecisionException "insertion overflow" if T can't be sure to hold a row; the rows span their
/// lattice then.
template <class T, class R>
void insertCombination(Basis<T, R>& basis, Index first, std::vector<R> coefficients);

extern template void insertCombination(Basis<long double, long double>&, Index,
                                       std::vector<long double>);

}  // namespace starsift
