// Sums and differences of short vectors.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Adds and subtracts any two of the first `pairLimit` short vectors of the lattice; each pair is
/// made once as long as both vectors stay in the collection. A sum or difference whose sup-norm
/// doesn't exceed the greater one of the two is checked like a row and offered to the collection,
/// and paired with the others in its turn. A call pairs `pairLimit` vectors with the others at
/// most, as a long vector may come down to a short one in millions of steps. Ends early with the
/// search.
template <class T, class R>
void pairVectors(Lattice<T, R>& lattice);

extern template void pairVectors(Lattice<long double, long double>&);

}  // namespace starsift
