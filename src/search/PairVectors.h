// Sums and differences of short vectors.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Adds and subtracts any two of the first `pairLimit` short vectors of the lattice, until all
/// pairs of those that are the first ones then were made; each pair is made once as long as both
/// vectors stay in the collection. A sum or difference whose sup-norm doesn't exceed the greater
/// one of the two is checked like a row and offered to the collection. Ends early with the search.
template <class T, class R>
void pairVectors(Lattice<T, R>& lattice);

extern template void pairVectors(Lattice<long double, long double>&);

}  // namespace starsift
