// A lattice that is stretched and moved towards the box of its solutions.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Rounds of a feedback: the coordinates by which the inhomogeneous vector of the reduced basis
/// leaves the box get twice their weight with the parameter `scale`, and with `translate` another
/// centre, on the other side of the middle; then the basis is reduced, which makes another vector
/// the shortest one near the centre, and the vectors next to it are searched. Ends when the vector
/// is in the box or nothing is left to trim, after some rounds, or with the search; the
/// basis is then a reduced one without scale and translation. Throws as reduce().
template <class T, class R>
void trimLattice(Lattice<T, R>& lattice);

extern template void trimLattice(Lattice<long double, long double>&);

}  // namespace starsift
