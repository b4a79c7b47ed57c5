// Short vectors of a search as rows of its basis.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

/// Inserts the short vectors of the lattice into its basis, which a reduction has left with valid
/// Gram-Schmidt data: each one before the first row whose orthogonal length is greater than that
/// of the vector orthogonally to the same rows. The basis is reduced after each insertion. Vectors
/// that aren't shorter anywhere stay away. Ends early with the search. Throws as
/// insertCombination() and reduce(). Returns the number of insertions.
///
/// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994), for the place of the insertion.
template <class T, class R>
Index reinsertBest(Lattice<T, R>& lattice);

extern template Index reinsertBest(Lattice<long double, long double>&);

}  // namespace starsift
