// What reductions make of the basis of a complete search, as lengths to be looked at.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/Index.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

/// One basis: |b*_1| ... |b*_d|, orthogonalised in the scaling in which the box is a cube of
/// side 1.
struct ProfileCurve {
  std::string name;
  /// Logarithms to base 10.
  std::vector<double> lengths;
};

/// The basis as it is, after LLL reduction with deep insertions, and after block reduction by steps
/// of 10 up to blocks of `largestBlock` rows, as before a walk of the tree; without the last one if
/// long double can't hold the rows, or the basis has fewer than 3 rows. The box isn't empty and the
/// rows are independent. Ended by mayGoOn(), which is called before every step: the curves that are
/// there.
std::vector<ProfileCurve> reductionProfile(BoxCoset coset, Index largestBlock,
                                           const std::function<bool()>& mayGoOn);

}  // namespace starsift
