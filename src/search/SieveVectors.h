// Short vectors that shorten each other.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Gauss sieve of the short vectors of the lattice: multiples of each are subtracted from the
/// others until no two can be shortened in this way. Every vector that results is checked like a
/// row and offered to the collection. Ends early with the search.
///
/// D. Micciancio, P. Voulgaris, SODA 2010.
template <class T, class R>
void sieveVectors(Lattice<T, R>& lattice);

extern template void sieveVectors(Lattice<long double, long double>&);

}  // namespace starsift
