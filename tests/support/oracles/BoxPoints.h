// All points of a coset in a small box, by testing every integer point of the box.
#pragma once

#include <set>
#include <vector>

#include "search/enumeration/BoxCoset.h"

namespace starsift::test {

/// The points, by Euclid's elimination of the basis and one test per point of the box.
std::set<std::vector<ZZ>> pointsByBruteForce(const BoxCoset& coset);

}  // namespace starsift::test
