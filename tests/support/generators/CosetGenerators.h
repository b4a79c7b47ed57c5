// Random cosets in boxes small enough for brute force.
#pragma once

#include <rapidcheck.h>

#include "search/enumeration/BoxCoset.h"

namespace starsift::test {

/// Any shape: up to 5 coordinates, dimension 0 to n, entries up to 4, ranges 0 to 5 (now and then
/// empty), the basis changed by random row operations.
rc::Gen<BoxCoset> arbitraryCoset();

/// 0/1 solutions of one to three equations in 8 to 11 variables, one of them planted: all lie in
/// corners of the box. The basis isn't reduced.
rc::Gen<BoxCoset> arbitraryCornerCoset();

/// A coset with coordinate j multiplied by factors[j] >= 1, and the box too, its bounds moved by
/// less than half a factor: the points are those of the given coset, multiplied.
BoxCoset stretched(const BoxCoset& coset, const std::vector<ZZ>& factors);

/// Up to 4 coordinates, and factors with up to 30 digits.
struct StretchedCoset {
  BoxCoset small;
  std::vector<ZZ> factors;
};
rc::Gen<StretchedCoset> arbitraryStretchedCoset(int digits);

}  // namespace starsift::test
