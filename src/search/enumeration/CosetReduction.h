// The reduction of a coset's basis before an enumeration.
//
// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994), for the deep insertions.
#pragma once

#include <functional>

#include "lattice/reduce/BlockReduction.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

/// Brings the basis to LLL-reduced form in the scaling of the enumeration, in which each
/// coordinate is divided by its range, and the point near the middle of the box. The coset stays
/// the same set. An LLL reduction comes first, then one with deep insertions, which makes the
/// tree several times smaller.
///
/// `mayGoOn` is called before every step; false ends the reduction. Returns false in this case,
/// or if the reduction gave up; the point may be as before, and the basis spans the same lattice
/// then, but need not be reduced.
bool reduceCoset(BoxCoset& coset, const std::function<bool()>& mayGoOn);

/// reduceCoset() of the basis alone; the point stays.
bool reduceBasis(BoxCoset& coset, const std::function<bool()>& mayGoOn);

/// Block reduction, in blocks of `size` rows, of a basis that reduceBasis() has reduced, in the
/// same scaling; the point stays. Returns false if it was ended, gave up, or if long double can't
/// hold the rows, which stay then.
bool reduceBlocks(BoxCoset& coset, Index size, const BlockSettings& settings,
                  const std::function<bool()>& mayGoOn);

}  // namespace starsift
