// Random vectors of a lattice that are probably short.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Draws `sampleLimit` vectors near the inhomogeneous row of the basis, which a reduction has left
/// with valid Gram-Schmidt data: by rounding to the nearest plane, but to the second nearest one at
/// random in the directions of some of the last rows, whose orthogonal lengths are small. Each is
/// checked like a row and offered to the collection of short vectors. The seed of the search and
/// the number of restarts choose the vectors. Ends early with the search. PrecisionException
/// "sample overflow" if T can't be sure to hold a vector.
///
/// L. Babai, Combinatorica 6 (1986); C. P. Schnorr, STACS 2003.
template <class T, class R>
void sampleVectors(Lattice<T, R>& lattice);

extern template void sampleVectors(Lattice<long double, long double>&);

}  // namespace starsift
