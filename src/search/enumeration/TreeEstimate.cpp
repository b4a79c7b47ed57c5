#include "search/enumeration/TreeEstimate.h"

#include <cmath>

#include "algorithms/reduction/LogGamma.h"

namespace starsift {

// Sum over the levels of the volume of a ball, in the space of the levels chosen, over the volume
// of a cell of the projected lattice. The squared radius is that of the box, less the part of the
// point that no row changes.
double gaussianNodes(const BoxCoset& coset, const CosetDirections& data) {
  double radius = 0;
  BigFloat number(64);
  for (std::size_t j = 0; j < coset.point.size(); ++j) {
    number = coset.upper[j] - coset.lower[j];
    const double side = number.toDouble() * data.scale[j] / 2;
    const double rest = data.rest[j].toDouble() / data.scale[j];
    radius += side * side - rest * rest;
  }
  if (!(radius > 0)) return 0;
  constexpr double log2Pi = 1.6514961294723187;
  double sum = 0;
  double cells = 0;
  for (std::size_t m = 1; m <= data.squaredLengths.size(); ++m) {
    const auto dimension = static_cast<double>(m);
    cells += data.squaredLengths[data.squaredLengths.size() - m].log2() / 2;
    const double ball =
        dimension / 2 * (log2Pi + std::log2(radius)) - logGamma(dimension / 2 + 1) / std::log(2.0);
    sum += std::exp2(ball - cells);
  }
  return sum;
}

}  // namespace starsift
