// A sieve of the last directions of a lattice, whose vectors are lifted to all of them.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Sieves the lattice projected on the last directions of the basis, which block reduction has left
/// with valid Gram-Schmidt data, lifts every short vector by the nearest planes, and checks those
/// that aren't longer than a solution like rows.
///
/// A solution is found, most probably, if its projection is among the short vectors: with as many
/// directions as that takes, a few less before, and some more, up to 66 at least. Does nothing
/// where that would be more than 70, and two more for each restart up to 76, as the time grows by a
/// quarter with each and the memory up to 150 MB for each thread; nor without a finite box. The
/// seed of the search and the number of restarts choose the vectors. Ends early with the search.
/// PrecisionException "sieve overflow" if T can't be sure to hold a vector.
///
/// L. Ducas, EUROCRYPT 2018.
template <class T, class R>
void sieveProjection(Lattice<T, R>& lattice);

extern template void sieveProjection(Lattice<long double, long double>&);

}  // namespace starsift
