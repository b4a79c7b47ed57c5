// A coset of a lattice and a box: what an enumeration walks.
#pragma once

#include <vector>

#include "numbers/ZZ.h"

namespace starsift {

/// The points x = p + c_1 b_1 + ... + c_d b_d, all c_i integers, with lower <= x <= upper in
/// every coordinate. A coordinate is anything integer and linear in c: the variables of a
/// problem, then the values of its inequation rows and of its objective.
struct BoxCoset {
  /// b_1 ... b_d, d >= 0 independent rows of n integers each.
  std::vector<std::vector<ZZ>> basis;
  /// p, n integers.
  std::vector<ZZ> point;
  /// Inclusive bounds, n integers each; lower > upper in any coordinate is an empty box.
  std::vector<ZZ> lower;
  std::vector<ZZ> upper;
};

/// lower <= x <= upper in every coordinate.
bool isInBox(const BoxCoset& coset, const std::vector<ZZ>& x);
/// lower > upper in some coordinate.
bool isEmptyBox(const BoxCoset& coset);

}  // namespace starsift
