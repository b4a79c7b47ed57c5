// One pass of a search, between two checks of its limits.
#pragma once

#include "lattice/YLattice.h"

namespace starsift {

/// Makes one pass of the reduction over all rows of the lattice, then checks the vectors next to
/// its basis. Returns the counts of the pass.
///
/// Both are one step: if long double loses precision in either, both are repeated over rationals.
PassCounts searchPass(YLattice<long double>& lattice);

/// Behind searchPass(): block reduction by the parameters, in blocks of beta rows and at last 20
/// more, then the vectors next to the basis again, and a sieve of its last directions. Does nothing
/// with the parameter eenum off or beta below 2.
void searchBlocks(YLattice<long double>& lattice);

/// searchBlocks() takes seconds, where trees of so many rows may take hours and lattices of more
/// rows take long to reduce, and it may end the search: one for some solutions, not for all of them
/// or the best one.
bool isWorthBlocksFirst(const YLattice<long double>& lattice);

/// Behind both: reductions of the lattice trimmed towards the box by the parameters scale and
/// translate; see trimLattice(). Does nothing with both off.
void searchTrimmed(YLattice<long double>& lattice);

/// Behind all three: the next lattice, made from the problem anew and changed at random, with the
/// files that the lattice is told to write. As long double if that holds its numbers.
void makeNextLattice(YLattice<long double>& lattice);

}  // namespace starsift
