#include "search/enumeration/BoxCoset.h"

namespace starsift {

bool isInBox(const BoxCoset& coset, const std::vector<ZZ>& x) {
  for (std::size_t j = 0; j < x.size(); ++j)
    if (x[j] < coset.lower[j] || x[j] > coset.upper[j]) return false;
  return true;
}

bool isEmptyBox(const BoxCoset& coset) {
  for (std::size_t j = 0; j < coset.point.size(); ++j)
    if (coset.lower[j] > coset.upper[j]) return true;
  return false;
}

}  // namespace starsift
