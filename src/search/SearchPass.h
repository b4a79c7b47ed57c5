// One pass of a search: what is done to the lattice between two looks at the limits.
#pragma once

#include "lattice/YLattice.h"

namespace starsift {

/// Makes one pass of the reduction over all rows of the lattice, then checks the vectors next to
/// its basis. Returns what the pass did.
///
/// Both are one step: if long double loses precision in either, both are repeated over rationals.
PassCounts searchPass(YLattice<long double>& lattice);

}  // namespace starsift
